#pragma once
// "標準図用B材設定.csv": twelve columns keyed by the member (部材); the columns named below
// are the ones the rules read, the others are kept by position only.
#include <filesystem>

#include "base/ColumnLists.hpp"

namespace tq {

inline constexpr char16_t kUnknownCode[] = u"Z9999999999999";

// The columns of the B-material settings; an index into its column lists.
struct BSettingsColumn {
  enum Index : size_t {
    kMemberName = 0,
    kMaterial = 2,           // "材質"
    kSpecification = 3,      // "仕様"
    kMaterialCode = 5,       // the CI-NET code
    kUseCode = 6,            // looked up in the "SC01" group
    kConstructionCode = 7,   // in the "SC03" group
    kSupplyClass = 9,        // in the "SC04" group
    kNightWorkClass = 10,    // in the "SC05" group
    kLiningClass = 11,       // in the "SC06" group
  };
};
inline constexpr size_t kBSettingsColumns = 12;

class BMaterialTable {
 public:
  BMaterialTable() = default;
  explicit BMaterialTable(ColumnLists columns) : columns_(std::move(columns)) {}
  static BMaterialTable Load(const std::filesystem::path& path, const CodePage& systemCodePage) {
    return BMaterialTable(ColumnLists::Load(path, kBSettingsColumns, systemCodePage));
  }

  // The material code of the first row whose member and material equal the pair without
  // regard to case (searching as far as the shorter of those two columns, counting a row only
  // where the code column has an entry); "Z9999999999999" when none matches or its code is empty.
  Text CodeFor(TextView member, TextView material) const;
  const ColumnLists& columns() const { return columns_; }

 private:
  ColumnLists columns_{ConfigTable(), kBSettingsColumns};
};

}  // namespace tq
