#include "takeoff/TakeoffList.hpp"

#include "base/Fields.hpp"
#include "base/Lookup.hpp"
#include "info/BMaterialTable.hpp"
#include "info/StdInfRecord.hpp"
#include "takeoff/CodeExpansion.hpp"

namespace tq {

namespace {
// Where a column's text goes back to: columns 0–15 fields 1–16, then 18, 19, 20, 21, 23, 22, 24.
constexpr std::array<int, kTakeoffColumns> kFieldOfColumn{1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                                          13, 14, 15, 16, 18, 19, 20, 21, 23, 22, 24};
}  // namespace

const std::array<const char16_t*, kTakeoffColumns>& TakeoffColumnHeaders() {
  static const std::array<const char16_t*, kTakeoffColumns> headers{
      u"記号/台数", u"機器名称", u"工事項目", u"A材/別途", u"図記号", u"部材",      u"寸法1",    u" ",
      u"寸法2",     u"",         u"寸法3",    u"",         u"材質",   u"仕様",      u"数量",     u"呼称",
      u"備考",      u"CI-Netｺｰﾄﾞ", u"用途ｺｰﾄﾞ", u"施工ｺｰﾄﾞ", u"支給区分", u"夜間区分", u"内張区分"};
  return headers;
}

Text TakeoffRules::Settings(const CTakeoffRow& row, size_t column) const {
  return TableLookup(row.field(6), t_.bSettings.column(0), t_.bSettings.column(column));
}

// A material: the last line of the member-name table whose member matches decides (an empty
// column 1 gives an empty code); B material: the first settings line of field 25 (else the
// member) decides, then the parameters are expanded. The two tie-breaks differ on purpose.
Text TakeoffRules::CinetCode(const CTakeoffRow& row) const {
  if (IsAMaterialRow(row)) {
    const auto &members = t_.memberCinet.column(0), &codes = t_.memberCinet.column(1);
    std::optional<Text> code;
    for (size_t i = 0; i < members.size(); ++i)
      if (EqualNoCase(members[i], row.field(6))) code = i < codes.size() ? codes[i] : Text();
    return code ? *code : Text(kUnknownCode);
  }
  const Text& key = row.field(25).empty() ? row.field(6) : row.field(25);
  Text code = TableLookup(key, t_.bSettings.column(0), t_.bSettings.column(5));
  if (code.empty()) code = kUnknownCode;
  return ExpandCode(code, RowVariant(row));
}

Text TakeoffRules::UseCode(const CTakeoffRow& row) const {
  const ColumnLists& sc01 = t_.Group(u"SC01");
  if (IsAMaterialRow(row)) return TableLookup(u"0", sc01.column(1), sc01.column(2));
  Text code = TableLookup(Settings(row, 6), sc01.column(1), sc01.column(2));
  if (code.empty() || code == u"-") code = TableLookup(row.field(3), t_.bUse.column(1), t_.bUse.column(3));
  return code.empty() ? Text(u"-") : code;
}

Text TakeoffRules::ClassCode(const CTakeoffRow& row, TextView group, size_t settingsColumn) const {
  const ColumnLists& g = t_.Group(group);
  return TableLookup(IsAMaterialRow(row) ? Text(u"0") : Settings(row, settingsColumn), g.column(1), g.column(2));
}

TakeoffItem TakeoffRules::ItemOf(CTakeoffRow& row) const {
  TakeoffItem item;
  for (size_t c = 0; c < 17; ++c) item[c] = row.field(kFieldOfColumn[c]);
  bool a = IsAMaterialRow(row);
  if (item[12].empty() && !a) item[12] = Settings(row, 2);  // rule M
  if (item[13].empty() && !a) item[13] = Settings(row, 3);
  if (row.field(19).empty()) row.field(19) = CinetCode(row);
  item[17] = row.field(19);
  item[18] = row.field(20).empty() ? UseCode(row) : row.field(20);
  static const std::array<std::pair<const char16_t*, size_t>, 4> kClasses{
      {{u"SC03", 7}, {u"SC04", 9}, {u"SC05", 10}, {u"SC06", 11}}};
  for (size_t k = 0; k < 4; ++k) {
    int field = kFieldOfColumn[19 + k];
    item[19 + k] = row.field(field).empty() ? ClassCode(row, kClasses[k].first, kClasses[k].second) : row.field(field);
  }
  return item;
}

std::vector<TakeoffItem> FillTakeoffList(TakeoffData& data, const TakeoffRules& rules) {
  std::vector<TakeoffItem> items;
  for (TakeoffEntity& entity : data)
    for (TakeoffRecord& record : entity)
      for (size_t l = 2; l < record.size(); ++l) items.push_back(rules.ItemOf(record[l]));
  return items;
}

void CopyBack(TakeoffData& data, const std::vector<TakeoffItem>& items) {
  size_t next = 0;
  for (TakeoffEntity& entity : data)
    for (auto record = entity.rbegin(); record != entity.rend(); ++record)
      for (size_t l = 2; l < record->size(); ++l) {
        if (next >= items.size()) return;
        const TakeoffItem& item = items[next++];
        for (size_t c = 0; c < kTakeoffColumns; ++c) (*record)[l].field(kFieldOfColumn[c]) = item[c];
      }
}

Status RegisterTakeoff(Drawing& drawing, const TakeoffData& data) {
  auto lock = drawing.LockForWrite();
  Status status;
  for (const TakeoffEntity& entity : data) {
    int number = 0;
    for (auto record = entity.rbegin(); record != entity.rend(); ++record) {
      ++number;
      XDataLines lines;
      for (const CTakeoffRow& row : *record) lines.push_back(JoinLine25(row.fields));
      if (record->empty()) continue;
      ObjectId text = record->front().entity;
      EditResult written = drawing.WriteXData(text, InfoRecordName(number), lines);
      if (written != EditResult::Ok && status)
        status = MakeError(ErrorCode::TooLarge, u"the record " + InfoRecordName(number) + u" of the text " + drawing.Handle(text) +
                                                    u" could not be written: it would pass the limit of extended data on one drawing object");
    }
  }
  return status;
}

}  // namespace tq
