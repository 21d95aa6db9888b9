#pragma once
// A table held as one list per column: entry i of a column comes from the i-th line that
// has that column, so the lists of one table may differ in length.
#include <filesystem>
#include <vector>

#include "base/TextFiles.hpp"

namespace tq {

class ColumnLists {
 public:
  ColumnLists() = default;
  // Keeps columns 0 to columnCount − 1 of every row; a row without a column adds nothing to it.
  ColumnLists(const ConfigTable& rows, size_t columnCount);
  // Read with the configuration-table reader; empty lists when the file cannot be read.
  static ColumnLists Load(const std::filesystem::path& path, size_t columnCount);

  const std::vector<Text>& column(size_t c) const { return columns_[c]; }
  size_t columnCount() const { return columns_.size(); }
  bool empty() const;

 private:
  std::vector<std::vector<Text>> columns_;
};

}  // namespace tq
