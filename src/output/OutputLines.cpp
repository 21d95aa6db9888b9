#include "output/OutputLines.hpp"

#include "base/Fields.hpp"
#include "base/Format.hpp"
#include "base/Lookup.hpp"
#include "base/Numbers.hpp"

namespace tq {

namespace {
constexpr size_t kAggregateColumns = 16;

// A code looked up by name in its attribute group (column 2 → column 1); the empty field
// gives the fallback without a lookup.
Text GroupCode(const ReferenceTables& tables, TextView group, const Text& field) {
  if (field.empty()) return Text();
  const ColumnLists& g = tables.Group(group);
  return TableLookup(field, g.column(2), g.column(1));
}

Text OrFallback(Text value, TextView fallback) { return value.empty() ? Text(fallback) : value; }
}  // namespace

Text SeparatorText(int kind) {
  switch (kind) {
    case 0: return u",";
    case 1: return u"|";
    case 2: return u"\t";
    default: return Text();
  }
}

MaterialFilter FilterOfCategory(TextView category) {
  if (EqualNoCase(category, u"A材")) return MaterialFilter::AOnly;
  if (EqualNoCase(category, u"B材")) return MaterialFilter::BOnly;
  return MaterialFilter::Both;
}

Text CodeValue(TextView code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables) {
  auto is = [&](const char16_t* name) { return EqualNoCase(code, name); };
  if (is(u"S501")) {
    const ColumnLists& g = tables.Group(u"S501");
    Text category = TableLookup(row.field(3), g.column(2), g.column(1));
    return OrFallback(TableLookup(category, tables.constructionCategory.column(0), tables.constructionCategory.column(1)), u" ");
  }
  if (is(u"&S501")) return OrFallback(row.field(3), u" ");
  if (is(u"SNET")) return OrFallback(piece < pieces.size() ? pieces[piece] : row.field(19), u" ");
  if (is(u"SSL0")) return OrFallback(row.field(7), u"0");
  if (is(u"SSW0")) return OrFallback(row.field(9), u"0");
  if (is(u"SSH0")) return OrFallback(row.field(11), u"0");
  // The supply class is field 23 and the night-work class field 22: crosswise on purpose.
  static const std::array<std::pair<const char16_t*, int>, 5> kGroups{
      {{u"SC01", 20}, {u"SC03", 21}, {u"SC04", 23}, {u"SC05", 22}, {u"SC06", 24}}};
  for (auto [group, field] : kGroups) {
    if (is(group)) return OrFallback(GroupCode(tables, group, row.field(field)), u"0");
    if (EqualNoCase(code, Text(u"&") + group)) return OrFallback(row.field(field), u" ");
  }
  if (is(u"S001")) return row.field(1).find(u'-') != Text::npos ? row.field(1) : Text(u" ");
  if (is(u"S481")) return Text();
  if (is(u"SNAM") || is(u"SBNM")) return OrFallback(row.field(6), u" ");
  if (is(u"SMAT")) return OrFallback(row.field(13), u" ");
  if (is(u"SPEC")) return OrFallback(row.field(14), u" ");
  if (is(u"S304")) return Format(u"%2.1f", {ApiComn_atof(row.field(15))});
  if (is(u"$S001")) return u" ";
  if (is(u"#S001")) return u"0";
  return Text();
}

int UnitCount(const TakeoffRecord& record) {
  if (record.size() < 4) return 0;
  int units = _wtoi(record[3].field(1));
  if (units > 0) return units;
  int largest = 0;
  for (const CTakeoffRow& row : record) largest = std::max(largest, _wtoi(row.field(1)));
  return largest;
}

void Aggregate::Add(const std::vector<Text>& codes, std::vector<Text> values) {
  size_t q = 0;  // the quantity column, from 1; 0 when none
  for (size_t k = 0; k < codes.size() && k < kAggregateColumns; ++k)
    if (codes[k] == u"S304") q = k + 1;
  // The key: every value but the quantity's, each with its length, so that no two lines
  // that differ share a key.
  Text key;
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
  sum = Format(u"%2.1f", {ApiComn_atof(sum) + ApiComn_atof(values[q - 1])});
}

std::vector<Text> OutputBuilder::Build(const TakeoffData& data, bool aggregate, int separatorKind, TextView category) const {
  std::vector<Text> out;
  Text separator = SeparatorText(separatorKind);
  MaterialFilter filter = FilterOfCategory(category);
  if (data.empty()) return out;
  std::vector<Text> headers = format_.Headers(), codes = format_.Codes();
  if (aggregate && codes.size() < kAggregateColumns)
    throw OutputFormatError("the output format has " + std::to_string(codes.size()) +
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
          bool excludedB = row.field(4).empty() && EqualNoCase(row.field(8), u"A") && ApiComn_atof(row.field(7)) == 0.0;
          bool quantity = ApiComn_atof(row.field(15)) != 0.0;
          bool a = IsAMaterialRow(row);
          bool makeA = a && filter != MaterialFilter::BOnly && quantity;
          bool makeB = row.field(4).empty() && filter != MaterialFilter::AOnly && quantity && !excludedB;
          if (!makeA && !makeB) continue;
          for (size_t j = 0; j < pieces.size(); ++j) {
            std::vector<Text> values;
            Text line;
            for (const Text& code : codes) {
              values.push_back(EqualNoCase(code, u"S001") ? symbol : CodeValue(code, row, pieces, j, tables_));
              line += values.back() + separator;
            }
            if (!aggregate) {
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
