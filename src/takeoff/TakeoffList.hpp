#pragma once
// The 23 columns of the takeoff list, the defaults of empty codes (rules M, C, U, K), the
// copy of the shown texts back into the rows, and registration.
#include <array>
#include <vector>

#include "takeoff/ReferenceTables.hpp"
#include "takeoff/TakeoffRows.hpp"

namespace tq {

inline constexpr size_t kTakeoffColumns = 23;
using TakeoffItem = std::array<Text, kTakeoffColumns>;

// The column headers, in column order.
const std::array<const char16_t*, kTakeoffColumns>& TakeoffColumnHeaders();

class TakeoffRules {
 public:
  explicit TakeoffRules(const ReferenceTables& tables) : t_(tables) {}

  // The item shown for a row; the CI-NET code chosen by rule C is also stored in field 19.
  TakeoffItem ItemOf(CTakeoffRow& row) const;
  Text CinetCode(const CTakeoffRow& row) const;  // rule C
  Text UseCode(const CTakeoffRow& row) const;    // rule U
  // Rule K with the group and the B-material settings column of a code column.
  Text ClassCode(const CTakeoffRow& row, TextView group, size_t settingsColumn) const;

 private:
  Text Settings(const CTakeoffRow& row, size_t column) const;
  const ReferenceTables& t_;
};

// The list in forward order (entity, record, line), lines from index 2; rows' field 19 set.
std::vector<TakeoffItem> FillTakeoffList(TakeoffData& data, const TakeoffRules& rules);
// The items back into the rows: entities in order, records from the last to the first,
// lines from index 2, each the next item, until the items run out (an entity of two or more
// records thus receives items in shifted places, as the suite does).
void CopyBack(TakeoffData& data, const std::vector<TakeoffItem>& items);
// "登録": each entity's records from the last to the first, numbered 1, 2, …, every line
// (the two header lines too) written with the 25-field format, replacing what was stored.
// A record the drawing refuses (it would pass the per-object limit) is named in the error;
// the others are still written.
Status RegisterTakeoff(Drawing& drawing, const TakeoffData& data);

}  // namespace tq
