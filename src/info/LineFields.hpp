#pragma once
// The 25 positions of a stored line of an information record, the 25 members of the row that
// holds one in memory, and the lines of a record that carry a meaning of their own.
#include <cstddef>

namespace tq {

// A position of a stored line, in line order (1 to 25), named for what the rules read there.
enum class LinePosition : int {
  kSymbolOrUnits = 1,  // "記号/台数": the symbol (line 2), the number of units (line 3)
  kEquipmentName,      // "機器名称"
  kWorkItem,           // "工事項目"
  kABFlag,             // "A材/別途": "A" or "1" marks A material
  kDrawingSymbol,      // "図記号"
  kMemberName,         // "部材"
  kDimension1,         // "寸法1"
  kAfterDimension1,
  kDimension2,  // "寸法2"
  kAfterDimension2,
  kDimension3,  // "寸法3"
  kAfterDimension3,
  kMaterial,         // "材質"
  kSpecification,    // "仕様"
  kQuantity,         // "数量"
  kNominal,          // "呼称"
  kAttributeKey,     // matched against the attribute-ID table
  kRemarks,          // "備考"
  kCinetCode,        // the CI-NET code(s), blank-separated: the material code of the row
  kUseCode,          // "用途ｺｰﾄﾞ"
  kConstructionCode,  // "施工ｺｰﾄﾞ"
  kNightWorkClass,   // "夜間区分"
  kSupplyClass,      // "支給区分"
  kLiningClass,      // "内張区分"
  kBMaterialKey,     // replaces the member name for the CI-NET code of B material
};
inline constexpr size_t kLinePositionCount = 25;

constexpr int Number(LinePosition p) { return static_cast<int>(p); }
constexpr size_t IndexOf(LinePosition p) { return static_cast<size_t>(p) - 1; }
// The position at `index` (from 0) of a line.
constexpr LinePosition PositionAt(size_t index) { return static_cast<LinePosition>(index + 1); }

// A member of the row object of a line (1 to 25). Members 1 to 16 are the positions of the
// same number; the attribute key, at position 17, is member 25, and members 17 to 24 are
// positions 18 to 25.
enum class RowMember : int {
  kSymbolOrUnits = 1,
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
  kMaterialCode,     // looked up in the B-material table
  kUseCode,          // carried through
  kAttributeValue,   // filled from the attribute key on older, shorter lines
  kNightWorkClass,   // carried through
  kSupplyClass,      // carried through
  kLiningClass,      // carried through
  kBMaterialKey,     // carried through
  kAttributeKey,
};
inline constexpr size_t kRowMemberCount = 25;

constexpr int Number(RowMember m) { return static_cast<int>(m); }
constexpr size_t IndexOf(RowMember m) { return static_cast<size_t>(m) - 1; }
constexpr RowMember MemberAt(size_t index) { return static_cast<RowMember>(index + 1); }

// Lines 0 and 1 of a record are its header lines: from this one on, the lines are the rows
// shown in the lists; it also carries the symbol of the record.
inline constexpr size_t kFirstItemLine = 2;
// The line whose first position holds the number of units of a record.
inline constexpr size_t kUnitsLine = 3;

}  // namespace tq
