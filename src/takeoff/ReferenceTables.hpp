#pragma once
// The code tables of the takeoff, read at every opening of the takeoff and never written.
#include <array>
#include <map>

#include "base/ColumnLists.hpp"
#include "info/AttributeIdTable.hpp"
#include "info/BMaterialTable.hpp"
#include "site/Folders.hpp"

namespace tq {

// The attribute IDs whose rows the takeoff keeps, each a group of column lists 0, 1, 2.
inline constexpr const char16_t* kAttributeGroups[] = {u"S501", u"SC01", u"SC03", u"SC04", u"SC05", u"SC06"};

// The columns the rules read of the member-name CI-NET table, the B-material use assignment
// and the construction-category table, and how many columns each keeps.
struct MemberCinetColumn {
  enum Index : size_t { kMemberName = 0, kCinetCode = 1 };
};
inline constexpr size_t kMemberCinetColumns = 2;
inline constexpr size_t kMemberFileColumns = 3;  // the second reading of the same file
struct BUseColumn {
  enum Index : size_t { kWorkItem = 1, kUseCode = 3 };
};
inline constexpr size_t kBUseColumns = 4;
struct CategoryColumn {
  enum Index : size_t { kKey = 0, kValue = 1 };
};
inline constexpr size_t kCategoryColumns = 2;
inline constexpr size_t kOutputFormatColumns = 18;

struct ReferenceTables {
  // 1–5: "CI-NETコード", "配管用CI-NETコード", "配線用CI-NETコード", "丸ダクト板厚テーブル",
  // "工事区分コードテーブル" under the host system folder's "拾い", as rows.
  std::array<ConfigTable, 5> rowTables;
  ColumnLists constructionCategory{ConfigTable(), kCategoryColumns};    // 6: key → value
  std::map<Text, ColumnLists> attributeGroups;            // 7: by attribute ID
  ColumnLists memberCinet{ConfigTable(), kMemberCinetColumns};              // 8: member → CI-NET code
  ColumnLists memberCinetFiles{ConfigTable(), kMemberFileColumns};         // 9: the same file, columns 0 to 2
  ColumnLists outputFormat{ConfigTable(), kOutputFormatColumns};            // 10
  ColumnLists bSettings{ConfigTable(), kBSettingsColumns};  // 11: the B-material settings
  ColumnLists bUse{ConfigTable(), kBUseColumns};                     // 12: the B-material use assignment
  Text stdDrawingFolder;                                  // the add-in data folder, for member files

  const ColumnLists& Group(TextView id) const;
};

// Reads every table; a table that cannot be read stays empty, without a message.
ReferenceTables LoadReferenceTables(const Folders& folders);

}  // namespace tq
