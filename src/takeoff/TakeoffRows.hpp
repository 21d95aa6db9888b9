#pragma once
// Takeoff rows: every stored line of the standard drawings' records, fields in line order.
#include <array>
#include <vector>

#include "base/Text.hpp"
#include "info/LineFields.hpp"
#include "ports/Drawing.hpp"

namespace tq {

struct CTakeoffRow {
  ObjectId entity;
  std::array<Text, kLinePositionCount> fields;
  // What the stored line held past its 25th field, written back after it as it was.
  Text beyond;
  Text& field(LinePosition p) { return fields[IndexOf(p)]; }
  const Text& field(LinePosition p) const { return fields[IndexOf(p)]; }
};

// Per entity (in the given order), per record ("TQ_STDINF01" first), per line.
using TakeoffRecord = std::vector<CTakeoffRow>;
using TakeoffEntity = std::vector<TakeoffRecord>;
using TakeoffData = std::vector<TakeoffEntity>;

CTakeoffRow ParseTakeoffLine(TextView line, ObjectId entity);
// The row as a stored line: the 25 fields and what the line held beyond them.
Text FormatTakeoffLine(const CTakeoffRow& row);
// Every entity gets its (possibly empty) list of records; reading stops at the first gap.
TakeoffData CollectTakeoffRows(const Drawing& drawing, const std::vector<ObjectId>& ids);

// "A" or "1" in the A/B flag, either case: A material in the list and the output.
bool IsAMaterialRow(const CTakeoffRow& row);

}  // namespace tq
