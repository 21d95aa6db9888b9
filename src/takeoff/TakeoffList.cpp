#include "takeoff/TakeoffList.hpp"

#include <algorithm>

#include "base/Fields.hpp"
#include "base/Lookup.hpp"
#include "info/StdInfRecord.hpp"
#include "takeoff/CodeExpansion.hpp"

namespace tq {

namespace {
using P = LinePosition;
// The position a column shows and goes back to, in column order: the supply and night-work
// classes crosswise, the attribute key and the B-material key never shown.
constexpr std::array<LinePosition, kTakeoffColumns> kFieldOfColumn{
    P::kSymbolOrUnits,    P::kEquipmentName,  P::kWorkItem,        P::kABFlag,       P::kDrawingSymbol,
    P::kMemberName,       P::kDimension1,     P::kAfterDimension1, P::kDimension2,   P::kAfterDimension2,
    P::kDimension3,       P::kAfterDimension3, P::kMaterial,       P::kSpecification, P::kQuantity,
    P::kNominal,          P::kRemarks,        P::kCinetCode,       P::kUseCode,      P::kConstructionCode,
    P::kSupplyClass,      P::kNightWorkClass, P::kLiningClass};

// The code columns of rule K: the attribute group and the settings column of each.
struct ClassColumn {
  TakeoffColumn::Index column;
  const char16_t* group;
  BSettingsColumn::Index settings;
};
constexpr ClassColumn kClassColumns[] = {
    {TakeoffColumn::kConstructionCode, u"SC03", BSettingsColumn::kConstructionCode},
    {TakeoffColumn::kSupplyClass, u"SC04", BSettingsColumn::kSupplyClass},
    {TakeoffColumn::kNightWorkClass, u"SC05", BSettingsColumn::kNightWorkClass},
    {TakeoffColumn::kLiningClass, u"SC06", BSettingsColumn::kLiningClass}};

// An attribute group's key for A material.
constexpr char16_t kAMaterialKey[] = u"0";
}  // namespace

const std::array<const char16_t*, kTakeoffColumns>& TakeoffColumnHeaders() {
  static const std::array<const char16_t*, kTakeoffColumns> headers{
      u"記号/台数", u"機器名称", u"工事項目", u"A材/別途", u"図記号", u"部材",      u"寸法1",    u" ",
      u"寸法2",     u"",         u"寸法3",    u"",         u"材質",   u"仕様",      u"数量",     u"呼称",
      u"備考",      u"CI-Netｺｰﾄﾞ", u"用途ｺｰﾄﾞ", u"施工ｺｰﾄﾞ", u"支給区分", u"夜間区分", u"内張区分"};
  return headers;
}

Text TakeoffRules::Settings(const CTakeoffRow& row, BSettingsColumn::Index column) const {
  return TableLookup(row.field(P::kMemberName), t_.bSettings.column(BSettingsColumn::kMemberName), t_.bSettings.column(column));
}

// A material: the last line of the member-name table whose member matches decides (an empty
// code gives an empty code); B material: the first settings line of the B-material key (else the
// member) decides, then the parameters are expanded. The two tie-breaks differ on purpose.
Text TakeoffRules::CinetCode(const CTakeoffRow& row) const {
  if (IsAMaterialRow(row)) {
    const auto& members = t_.memberCinet.column(MemberCinetColumn::kMemberName);
    const auto& codes = t_.memberCinet.column(MemberCinetColumn::kCinetCode);
    std::optional<Text> code;
    for (size_t i = 0; i < members.size(); ++i)
      if (EqualNoCase(members[i], row.field(P::kMemberName))) code = i < codes.size() ? codes[i] : Text();
    return code ? *code : Text(kUnknownCode);
  }
  const Text& key = row.field(P::kBMaterialKey).empty() ? row.field(P::kMemberName) : row.field(P::kBMaterialKey);
  Text code = TableLookup(key, t_.bSettings.column(BSettingsColumn::kMemberName), t_.bSettings.column(BSettingsColumn::kMaterialCode));
  if (code.empty()) code = kUnknownCode;
  return ExpandCode(code, RowVariant(row));
}

Text TakeoffRules::UseCode(const CTakeoffRow& row) const {
  const ColumnLists& sc01 = t_.Group(u"SC01");
  const auto &keys = sc01.column(AttributeColumn::kKey), &values = sc01.column(AttributeColumn::kValue);
  if (IsAMaterialRow(row)) return TableLookup(kAMaterialKey, keys, values);
  Text code = TableLookup(Settings(row, BSettingsColumn::kUseCode), keys, values);
  if (code.empty() || code == u"-")
    code = TableLookup(row.field(P::kWorkItem), t_.bUse.column(BUseColumn::kWorkItem), t_.bUse.column(BUseColumn::kUseCode));
  return code.empty() ? Text(u"-") : code;
}

Text TakeoffRules::ClassCode(const CTakeoffRow& row, TextView group, BSettingsColumn::Index settingsColumn) const {
  const ColumnLists& g = t_.Group(group);
  return TableLookup(IsAMaterialRow(row) ? Text(kAMaterialKey) : Settings(row, settingsColumn),
                     g.column(AttributeColumn::kKey), g.column(AttributeColumn::kValue));
}

TakeoffItem TakeoffRules::ItemOf(CTakeoffRow& row) const {
  using C = TakeoffColumn;
  TakeoffItem item;
  for (size_t c = 0; c <= C::kRemarks; ++c) item[c] = row.field(kFieldOfColumn[c]);
  bool a = IsAMaterialRow(row);
  if (item[C::kMaterial].empty() && !a) item[C::kMaterial] = Settings(row, BSettingsColumn::kMaterial);  // rule M
  if (item[C::kSpecification].empty() && !a) item[C::kSpecification] = Settings(row, BSettingsColumn::kSpecification);
  if (row.field(P::kCinetCode).empty()) row.field(P::kCinetCode) = CinetCode(row);
  item[C::kCinetCode] = row.field(P::kCinetCode);
  item[C::kUseCode] = row.field(P::kUseCode).empty() ? UseCode(row) : row.field(P::kUseCode);
  for (const ClassColumn& k : kClassColumns) {
    const Text& stored = row.field(kFieldOfColumn[k.column]);
    item[k.column] = stored.empty() ? ClassCode(row, k.group, k.settings) : stored;
  }
  return item;
}

std::vector<TakeoffItem> FillTakeoffList(TakeoffData& data, const TakeoffRules& rules) {
  std::vector<TakeoffItem> items;
  for (TakeoffEntity& entity : data)
    for (TakeoffRecord& record : entity)
      for (size_t l = kFirstItemLine; l < record.size(); ++l) items.push_back(rules.ItemOf(record[l]));
  return items;
}

namespace {
// The records of an entity in the order a pairing walks them.
template <class Entity, class Visit>
bool WalkRecords(Entity& entity, RowPairing pairing, Visit visit) {
  if (pairing == RowPairing::Origin) {
    for (auto record = entity.begin(); record != entity.end(); ++record)
      if (!visit(*record)) return false;
  } else {
    for (auto record = entity.rbegin(); record != entity.rend(); ++record)
      if (!visit(*record)) return false;
  }
  return true;
}
}  // namespace

void CopyBack(TakeoffData& data, const std::vector<TakeoffItem>& items, RowPairing pairing) {
  size_t next = 0;
  for (TakeoffEntity& entity : data) {
    bool more = WalkRecords(entity, pairing, [&](TakeoffRecord& record) {
      for (size_t l = kFirstItemLine; l < record.size(); ++l) {
        if (next >= items.size()) return false;
        const TakeoffItem& item = items[next++];
        for (size_t c = 0; c < kTakeoffColumns; ++c) record[l].field(kFieldOfColumn[c]) = item[c];
      }
      return true;
    });
    if (!more) return;
  }
}

std::vector<ObjectId> EntitiesWhoseRowsMove(const TakeoffData& data) {
  std::vector<ObjectId> moving;
  for (const TakeoffEntity& entity : data) {
    if (entity.size() < 2) continue;
    auto held = std::find_if(entity.begin(), entity.end(), [](const TakeoffRecord& record) { return !record.empty(); });
    if (held != entity.end()) moving.push_back(held->front().entity);
  }
  return moving;
}

Status RegisterTakeoff(Drawing& drawing, const TakeoffData& data, RowPairing pairing) {
  auto lock = drawing.LockForWrite();
  Status status;
  for (const TakeoffEntity& entity : data) {
    int number = 0;
    WalkRecords(entity, pairing, [&](const TakeoffRecord& record) {
      ++number;
      XDataLines lines;
      for (const CTakeoffRow& row : record) lines.push_back(FormatTakeoffLine(row));
      if (record.empty()) return true;
      ObjectId text = record.front().entity;
      EditResult written = drawing.WriteXData(text, InfoRecordName(number), lines);
      if (written != EditResult::Ok && status)
        status = MakeError(ErrorCode::TooLarge, u"the record " + InfoRecordName(number) + u" of the text " + drawing.Handle(text) +
                                                    u" could not be written: it would pass the limit of extended data on one drawing object");
      return true;
    });
  }
  return status;
}

}  // namespace tq
