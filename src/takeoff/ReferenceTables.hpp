#pragma once
// The code tables of the takeoff, read at every opening of the takeoff and never written.
#include <array>
#include <map>

#include "base/ColumnLists.hpp"
#include "site/Folders.hpp"

namespace tq {

// The attribute IDs whose rows the takeoff keeps, each a group of column lists 0, 1, 2.
inline constexpr const char16_t* kAttributeGroups[] = {u"S501", u"SC01", u"SC03", u"SC04", u"SC05", u"SC06"};

struct ReferenceTables {
  // 1–5: "CI-NETコード", "配管用CI-NETコード", "配線用CI-NETコード", "丸ダクト板厚テーブル",
  // "工事区分コードテーブル" under the host system folder's "拾い", as rows.
  std::array<ConfigTable, 5> rowTables;
  ColumnLists constructionCategory{ConfigTable(), 2};    // 6: key → value
  std::map<Text, ColumnLists> attributeGroups;            // 7: by attribute ID
  ColumnLists memberCinet{ConfigTable(), 2};              // 8: member → CI-NET code
  ColumnLists memberCinetFiles{ConfigTable(), 3};         // 9: the same file, columns 0 to 2
  ColumnLists outputFormat{ConfigTable(), 18};            // 10
  ColumnLists bSettings{ConfigTable(), 12};               // 11: the B-material settings
  ColumnLists bUse{ConfigTable(), 4};                     // 12: the B-material use assignment
  Text stdDrawingFolder;                                  // the add-in data folder, for member files

  const ColumnLists& Group(TextView id) const;
};

// Reads every table; a table that cannot be read stays empty, without a message.
ReferenceTables LoadReferenceTables(const Folders& folders);

}  // namespace tq
