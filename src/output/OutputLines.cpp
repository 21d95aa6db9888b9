#include "output/OutputLines.hpp"

#include "base/Fields.hpp"
#include "base/Format.hpp"
#include "base/Lookup.hpp"
#include "base/Numbers.hpp"

namespace tq {

namespace {
constexpr size_t kAggregateColumns = 16;

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
  if (is(u"S501")) return {ResolvedCode::S501, 3, &tables.Group(u"S501")};
  if (is(u"&S501")) return {ResolvedCode::AmpS501, 3};
  if (is(u"SNET")) return {ResolvedCode::Snet, 19};
  if (is(u"SSL0")) return {ResolvedCode::Dimension, 7};
  if (is(u"SSW0")) return {ResolvedCode::Dimension, 9};
  if (is(u"SSH0")) return {ResolvedCode::Dimension, 11};
  // The supply class is field 23 and the night-work class field 22: crosswise on purpose.
  static const std::array<std::pair<const char16_t*, int>, 5> kGroups{
      {{u"SC01", 20}, {u"SC03", 21}, {u"SC04", 23}, {u"SC05", 22}, {u"SC06", 24}}};
  for (auto [group, field] : kGroups) {
    if (is(group)) return {ResolvedCode::Group, field, &tables.Group(group)};
    if (EqualNoCase(code, Text(u"&") + group)) return {ResolvedCode::AmpGroup, field};
  }
  if (is(u"S001")) return {ResolvedCode::S001, 1};
  if (is(u"S481")) return {ResolvedCode::S481};
  if (is(u"SNAM") || is(u"SBNM")) return {ResolvedCode::Field, 6};
  if (is(u"SMAT")) return {ResolvedCode::Field, 13};
  if (is(u"SPEC")) return {ResolvedCode::Field, 14};
  if (is(u"S304")) return {ResolvedCode::S304, 15};
  if (is(u"$S001")) return {ResolvedCode::DollarS001};
  if (is(u"#S001")) return {ResolvedCode::HashS001};
  return {};
}

Text CodeValue(const ResolvedCode& code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables) {
  const Text& field = code.field ? row.field(code.field) : row.field(1);
  switch (code.kind) {
    case ResolvedCode::S501: {
      Text category = TableLookup(field, code.group->column(2), code.group->column(1));
      return OrFallback(TableLookup(category, tables.constructionCategory.column(0), tables.constructionCategory.column(1)), u" ");
    }
    case ResolvedCode::AmpS501:
    case ResolvedCode::AmpGroup:
    case ResolvedCode::Field: return OrFallback(field, u" ");
    case ResolvedCode::Snet: return OrFallback(piece < pieces.size() ? pieces[piece] : field, u" ");
    case ResolvedCode::Dimension: return OrFallback(field, u"0");
    // An empty field gives the fallback without a lookup.
    case ResolvedCode::Group: return OrFallback(field.empty() ? Text() : TableLookup(field, code.group->column(2), code.group->column(1)), u"0");
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
  if (record.size() < 4) return 0;
  int units = ToInt(record[3].field(1));
  if (units > 0) return units;
  int largest = 0;
  for (const CTakeoffRow& row : record) largest = std::max(largest, ToInt(row.field(1)));
  return largest;
}

void Aggregate::Add(const std::vector<Text>& codes, std::vector<Text> values) {
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
    return;
  }
  if (q == 0) return;
  Text& sum = rows_[found->second][q - 1];
  sum = FormatQuantity(ToReal(sum) + ToReal(values[q - 1]));
}

Result<std::vector<Text>> OutputBuilder::Build(const TakeoffData& data, bool aggregate, SeparatorKind separatorKind,
                                               TextView category) const {
  std::vector<Text> out;
  Text separator = SeparatorText(separatorKind);
  MaterialFilter filter = FilterOfCategory(category);
  if (data.empty()) return out;
  std::vector<Text> headers = format_.Headers(), codes = format_.Codes();
  std::vector<ResolvedCode> resolved;
  for (const Text& code : codes) resolved.push_back(ResolveCode(code, tables_));
  if (aggregate && codes.size() < kAggregateColumns)
    return MakeError(ErrorCode::Malformed, "the output format has " + std::to_string(codes.size()) +
                                               " columns; an aggregate needs at least 16");
  Text header;
  for (const Text& h : headers) header += h + separator;
  if (!header.empty()) out.push_back(header);
  Aggregate merged;
  std::vector<Text> codes16(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(std::min(codes.size(), kAggregateColumns)));
  for (const TakeoffEntity& entity : data)
    for (auto record = entity.rbegin(); record != entity.rend(); ++record) {
      int units = UnitCount(*record);
      for (int u = 0; u < units; ++u) {
        Text symbol;
        for (size_t l = 0; l < record->size(); ++l) {
          const CTakeoffRow& row = (*record)[l];
          if (l == 2) symbol = row.field(1);
          std::vector<Text> pieces = SplitAtEvery(row.field(19), u' ');
          bool excludedB = row.field(4).empty() && EqualNoCase(row.field(8), u"A") && ToReal(row.field(7)) == 0.0;
          bool quantity = ToReal(row.field(15)) != 0.0;
          bool a = IsAMaterialRow(row);
          bool makeA = a && filter != MaterialFilter::BOnly && quantity;
          bool makeB = row.field(4).empty() && filter != MaterialFilter::AOnly && quantity && !excludedB;
          if (!makeA && !makeB) continue;
          for (size_t j = 0; j < pieces.size(); ++j) {
            std::vector<Text> values;
            values.reserve(resolved.size());
            for (const ResolvedCode& code : resolved)
              values.push_back(code.kind == ResolvedCode::S001 ? symbol : CodeValue(code, row, pieces, j, tables_));
            if (!aggregate) {
              Text line;
              for (const Text& v : values) line += v, line += separator;
              if (!line.empty()) out.push_back(std::move(line));
              continue;
            }
            values.resize(kAggregateColumns);
            merged.Add(codes16, std::move(values));
          }
        }
      }
    }
  if (!aggregate) return out;
  for (const std::vector<Text>& row : merged.rows()) {
    Text line;
    for (const Text& v : row) line += v + separator;
    out.push_back(std::move(line));
  }
  return out;
}

}  // namespace tq
