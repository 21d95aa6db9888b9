#include "takeoff/TakeoffRows.hpp"

#include "base/Fields.hpp"
#include "info/ChoiceLists.hpp"
#include "info/StdInfRecord.hpp"

namespace tq {

CTakeoffRow ParseTakeoffLine(TextView line, ObjectId entity) {
  CTakeoffRow row;
  row.entity = entity;
  std::vector<Text> fields = SplitFields(line);
  for (size_t i = 0; i < fields.size() && i < row.fields.size(); ++i) row.fields[i] = std::move(fields[i]);
  row.beyond = Text(FieldsBeyond(line, kLineFieldCount));
  return row;
}

Text FormatTakeoffLine(const CTakeoffRow& row) { return JoinLine25(row.fields) + row.beyond; }

TakeoffData CollectTakeoffRows(const Drawing& drawing, const std::vector<ObjectId>& ids) {
  TakeoffData data;
  for (ObjectId id : ids) {
    TakeoffEntity& entity = data.emplace_back();
    for (int n = 1;; ++n) {
      std::optional<XDataLines> lines = drawing.ReadXData(id, InfoRecordName(n));
      if (!lines) break;
      TakeoffRecord& record = entity.emplace_back();
      for (const Text& line : *lines) record.push_back(ParseTakeoffLine(line, id));
    }
  }
  return data;
}

bool IsAMaterialRow(const CTakeoffRow& row) { return SelectsAMaterial(row.field(LinePosition::kABFlag)); }

}  // namespace tq
