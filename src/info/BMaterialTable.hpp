#pragma once
// "標準図用B材設定.csv": twelve columns; 0 member (部材), 2 material (材質), 5 material code.
#include <filesystem>

#include "base/ColumnLists.hpp"

namespace tq {

inline constexpr char16_t kUnknownCode[] = u"Z9999999999999";

class BMaterialTable {
 public:
  BMaterialTable() = default;
  explicit BMaterialTable(ColumnLists columns) : columns_(std::move(columns)) {}
  static BMaterialTable Load(const std::filesystem::path& path, const CodePage& systemCodePage) {
    return BMaterialTable(ColumnLists::Load(path, 12, systemCodePage));
  }

  // Column 5 of the first row whose columns 0 and 2 equal the pair without regard to case
  // (searching as far as the shorter of columns 0 and 2, counting a row only where column 5
  // has an entry); "Z9999999999999" when none matches or its column 5 is empty.
  Text CodeFor(TextView member, TextView material) const;
  const ColumnLists& columns() const { return columns_; }

 private:
  ColumnLists columns_{ConfigTable(), 12};
};

}  // namespace tq
