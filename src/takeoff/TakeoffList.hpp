#pragma once
// The 23 columns of the takeoff list, the defaults of empty codes (rules M, C, U, K), the
// copy of the shown texts back into the rows, and registration.
#include <array>
#include <vector>

#include "info/BMaterialTable.hpp"
#include "takeoff/ReferenceTables.hpp"
#include "takeoff/TakeoffRows.hpp"

namespace tq {

// The columns of the takeoff list, in list order; an index into an item. The supply class
// comes before the night-work class, unlike their positions in a line.
struct TakeoffColumn {
  enum Index : size_t {
    kSymbolOrUnits,
    kEquipmentName,
    kWorkItem,
    kABFlag,
    kDrawingSymbol,
    kMemberName,
    kDimension1,
    kAfterDimension1,
    kDimension2,
    kAfterDimension2,
    kDimension3,
    kAfterDimension3,
    kMaterial,
    kSpecification,
    kQuantity,
    kNominal,
    kRemarks,
    kCinetCode,
    kUseCode,
    kConstructionCode,
    kSupplyClass,
    kNightWorkClass,
    kLiningClass,
  };
};
inline constexpr size_t kTakeoffColumns = 23;
using TakeoffItem = std::array<Text, kTakeoffColumns>;

// The column headers, in column order.
const std::array<const char16_t*, kTakeoffColumns>& TakeoffColumnHeaders();

class TakeoffRules {
 public:
  explicit TakeoffRules(const ReferenceTables& tables) : t_(tables) {}

  // The item shown for a row; the CI-NET code chosen by rule C is also stored in the row.
  TakeoffItem ItemOf(CTakeoffRow& row) const;
  Text CinetCode(const CTakeoffRow& row) const;  // rule C
  Text UseCode(const CTakeoffRow& row) const;    // rule U
  // Rule K with the group and the B-material settings column of a code column.
  Text ClassCode(const CTakeoffRow& row, TextView group, BSettingsColumn::Index settingsColumn) const;

 private:
  Text Settings(const CTakeoffRow& row, BSettingsColumn::Index column) const;
  const ReferenceTables& t_;
};

// How the rows go back to the records: Shifted walks an entity's records from the last to the
// first, as the original add-in does (the rows of an entity of two or more records land in
// other places and its records swap numbers); Origin puts every row back where it was read.
enum class RowPairing { Shifted, Origin };

// The list in forward order (entity, record, line), lines from index 2; rows' CI-NET codes set.
std::vector<TakeoffItem> FillTakeoffList(TakeoffData& data, const TakeoffRules& rules);
// The items back into the rows: entities in order, records in the pairing's order (Shifted:
// from the last to the first), lines from index 2, each the next item, until the items run
// out (with Shifted an entity of two or more records thus receives items in shifted places,
// as the suite does).
void CopyBack(TakeoffData& data, const std::vector<TakeoffItem>& items, RowPairing pairing = RowPairing::Shifted);
// "登録": each entity's records from the last to the first, numbered 1, 2, …, every line
// (the two header lines too) written with the 25-field format, replacing what was stored.
// A record the drawing refuses (it would pass the per-object limit) is named in the error;
// the others are still written.
// With Origin, record n is written under number n again.
Status RegisterTakeoff(Drawing& drawing, const TakeoffData& data, RowPairing pairing = RowPairing::Shifted);
// The entities whose values a Shifted registration moves to other records or numbers: those
// of two or more records.
std::vector<ObjectId> EntitiesWhoseRowsMove(const TakeoffData& data);

}  // namespace tq
