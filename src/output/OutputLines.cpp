#include "output/OutputLines.hpp"

#include "base/Fields.hpp"
#include "base/Format.hpp"
#include "base/Lookup.hpp"
#include "base/Numbers.hpp"

namespace tq {

namespace {
constexpr size_t kAggregateColumns = 16;
using P = LinePosition;

Text OrFallback(Text value, TextView fallback) { return value.empty() ? Text(fallback) : value; }
}  // namespace

Text SeparatorText(SeparatorKind kind) {
  switch (kind) {
    case SeparatorKind::Comma: return u",";
    case SeparatorKind::Pipe: return u"|";
    case SeparatorKind::Tab: return u"\t";
  }
  return Text();
}

MaterialFilter FilterOfCategory(TextView category) {
  if (EqualNoCase(category, u"A材")) return MaterialFilter::AOnly;
  if (EqualNoCase(category, u"B材")) return MaterialFilter::BOnly;
  return MaterialFilter::Both;
}

ResolvedCode ResolveCode(TextView code, const ReferenceTables& tables) {
  auto is = [&](const char16_t* name) { return EqualNoCase(code, name); };
  if (is(u"S501")) return {ResolvedCode::S501, P::kWorkItem, &tables.Group(u"S501")};
  if (is(u"&S501")) return {ResolvedCode::AmpS501, P::kWorkItem};
  if (is(u"SNET")) return {ResolvedCode::Snet, P::kCinetCode};
  if (is(u"SSL0")) return {ResolvedCode::Dimension, P::kDimension1};
  if (is(u"SSW0")) return {ResolvedCode::Dimension, P::kDimension2};
  if (is(u"SSH0")) return {ResolvedCode::Dimension, P::kDimension3};
  // "SC04" reads the supply class and "SC05" the night-work class: crosswise to their positions on purpose.
  static const std::array<std::pair<const char16_t*, LinePosition>, 5> kGroups{{{u"SC01", P::kUseCode},
                                                                               {u"SC03", P::kConstructionCode},
                                                                               {u"SC04", P::kSupplyClass},
                                                                               {u"SC05", P::kNightWorkClass},
                                                                               {u"SC06", P::kLiningClass}}};
  for (auto [group, field] : kGroups) {
    if (is(group)) return {ResolvedCode::Group, field, &tables.Group(group)};
    if (EqualNoCase(code, Text(u"&") + group)) return {ResolvedCode::AmpGroup, field};
  }
  if (is(u"S001")) return {ResolvedCode::S001, P::kSymbolOrUnits};
  if (is(u"S481")) return {ResolvedCode::S481};
  if (is(u"SNAM") || is(u"SBNM")) return {ResolvedCode::Field, P::kMemberName};
  if (is(u"SMAT")) return {ResolvedCode::Field, P::kMaterial};
  if (is(u"SPEC")) return {ResolvedCode::Field, P::kSpecification};
  if (is(u"S304")) return {ResolvedCode::S304, P::kQuantity};
  if (is(u"$S001")) return {ResolvedCode::DollarS001};
  if (is(u"#S001")) return {ResolvedCode::HashS001};
  return {};
}

Text CodeValue(const ResolvedCode& code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables) {
  const Text& field = row.field(code.field);
  switch (code.kind) {
    case ResolvedCode::S501: {
      Text category = TableLookup(field, code.group->column(AttributeColumn::kValue), code.group->column(AttributeColumn::kKey));
      return OrFallback(TableLookup(category, tables.constructionCategory.column(CategoryColumn::kKey),
                                    tables.constructionCategory.column(CategoryColumn::kValue)),
                        u" ");
    }
    case ResolvedCode::AmpS501:
    case ResolvedCode::AmpGroup:
    case ResolvedCode::Field: return OrFallback(field, u" ");
    case ResolvedCode::Snet: return OrFallback(piece < pieces.size() ? pieces[piece] : field, u" ");
    case ResolvedCode::Dimension: return OrFallback(field, u"0");
    // An empty field gives the fallback without a lookup.
    case ResolvedCode::Group:
      return OrFallback(
          field.empty() ? Text() : TableLookup(field, code.group->column(AttributeColumn::kValue), code.group->column(AttributeColumn::kKey)),
          u"0");
    case ResolvedCode::S001: return field.find(u'-') != Text::npos ? field : Text(u" ");
    case ResolvedCode::S304: return FormatQuantity(ToReal(field));
    case ResolvedCode::DollarS001: return u" ";
    case ResolvedCode::HashS001: return u"0";
    case ResolvedCode::S481:
    case ResolvedCode::Other: break;
  }
  return Text();
}

Text CodeValue(TextView code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables) {
  return CodeValue(ResolveCode(code, tables), row, pieces, piece, tables);
}

int UnitCount(const TakeoffRecord& record) {
  if (record.size() <= kUnitsLine) return 0;
  int units = ToInt(record[kUnitsLine].field(P::kSymbolOrUnits));
  if (units > 0) return units;
  int largest = 0;
  for (const CTakeoffRow& row : record) largest = std::max(largest, ToInt(row.field(P::kSymbolOrUnits)));
  return largest;
}

bool Aggregate::Add(const std::vector<Text>& codes, std::vector<Text> values) {
  size_t q = 0;  // the quantity column, from 1; 0 when none
  for (size_t k = 0; k < codes.size() && k < kAggregateColumns; ++k)
    if (codes[k] == u"S304") q = k + 1;
  // The key: every value but the quantity's, each with its length, so that no two lines
  // that differ share a key.
  Text key;
  key.reserve(256);
  for (size_t k = 0; k < values.size(); ++k) {
    if (k + 1 == q) continue;
    key += static_cast<char16_t>(values[k].size() & 0xFFFF);
    key += static_cast<char16_t>(values[k].size() >> 16);
    key += values[k];
  }
  auto [found, inserted] = index_.try_emplace(std::move(key), rows_.size());
  if (inserted) {
    rows_.push_back(std::move(values));
    return true;
  }
  if (q == 0) return false;
  Text& sum = rows_[found->second][q - 1];
  sum = FormatQuantity(ToReal(sum) + ToReal(values[q - 1]));
  return false;
}

Result<std::vector<Text>> OutputBuilder::Build(const TakeoffData& data, bool aggregate, SeparatorKind separatorKind,
                                               TextView category) const {
  Result<OutputLineList> built = BuildWithOrigins(data, aggregate, separatorKind, category);
  if (!built) return built.error();
  return std::move(built->lines);
}

Result<OutputLineList> OutputBuilder::BuildWithOrigins(const TakeoffData& data, bool aggregate,
                                                       SeparatorKind separatorKind, TextView category) const {
  OutputLineList list;
  std::vector<Text>& out = list.lines;
  Text separator = SeparatorText(separatorKind);
  MaterialFilter filter = FilterOfCategory(category);
  if (data.empty()) return list;
  std::vector<Text> headers = format_.Headers(), codes = format_.Codes();
  std::vector<ResolvedCode> resolved;
  for (const Text& code : codes) resolved.push_back(ResolveCode(code, tables_));
  if (aggregate && codes.size() < kAggregateColumns)
    return MakeError(ErrorCode::Malformed, "the output format has " + std::to_string(codes.size()) +
                                               " columns; an aggregate needs at least 16");
  Text header;
  for (const Text& h : headers) header += h + separator;
  if (!header.empty()) out.push_back(header), list.origins.emplace_back();
  Aggregate merged;
  std::vector<LineOrigin> mergedOrigins;
  std::vector<Text> codes16(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(std::min(codes.size(), kAggregateColumns)));
  for (const TakeoffEntity& entity : data)
    for (auto record = entity.rbegin(); record != entity.rend(); ++record) {
      size_t recordIndex = static_cast<size_t>(entity.rend() - record) - 1;
      int units = UnitCount(*record);
      for (int u = 0; u < units; ++u) {
        Text symbol;
        for (size_t l = 0; l < record->size(); ++l) {
          const CTakeoffRow& row = (*record)[l];
          if (l == kFirstItemLine) symbol = row.field(P::kSymbolOrUnits);
          std::vector<Text> pieces = SplitAtEvery(row.field(P::kCinetCode), u' ');
          bool bFlag = row.field(P::kABFlag).empty();
          bool excludedB = bFlag && EqualNoCase(row.field(P::kAfterDimension1), u"A") && ToReal(row.field(P::kDimension1)) == 0.0;
          bool quantity = ToReal(row.field(P::kQuantity)) != 0.0;
          bool a = IsAMaterialRow(row);
          bool makeA = a && filter != MaterialFilter::BOnly && quantity;
          bool makeB = bFlag && filter != MaterialFilter::AOnly && quantity && !excludedB;
          if (!makeA && !makeB) continue;
          for (size_t j = 0; j < pieces.size(); ++j) {
            std::vector<Text> values;
            values.reserve(resolved.size());
            for (const ResolvedCode& code : resolved)
              values.push_back(code.kind == ResolvedCode::S001 ? symbol : CodeValue(code, row, pieces, j, tables_));
            if (!aggregate) {
              Text line;
              for (const Text& v : values) line += v, line += separator;
              if (!line.empty()) out.push_back(std::move(line)), list.origins.push_back({row.entity, recordIndex, l});
              continue;
            }
            values.resize(kAggregateColumns);
            if (merged.Add(codes16, std::move(values))) mergedOrigins.push_back({row.entity, recordIndex, l});
          }
        }
      }
    }
  if (!aggregate) return list;
  for (size_t m = 0; m < merged.rows().size(); ++m) {
    Text line;
    for (const Text& v : merged.rows()[m]) line += v + separator;
    out.push_back(std::move(line));
    list.origins.push_back(mergedOrigins[m]);
  }
  return list;
}

}  // namespace tq
