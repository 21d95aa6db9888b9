#pragma once
// A table held as one list per column, index-aligned: entry i of every column comes from
// line i of the file. A line without a column leaves an empty entry when a later line has
// that column, and nothing at the end, so the lists of one table may differ in length.
#include <filesystem>
#include <vector>

#include "base/TextFiles.hpp"

namespace tq {

class ColumnLists {
 public:
  ColumnLists() = default;
  // Keeps columns 0 to columnCount − 1 of every row.
  ColumnLists(const ConfigTable& rows, size_t columnCount);
  // Read with the configuration-table reader; empty lists when the file cannot be read.
  static ColumnLists Load(const std::filesystem::path& path, size_t columnCount, const CodePage& systemCodePage);

  const std::vector<Text>& column(size_t c) const { return columns_[c]; }
  size_t columnCount() const { return columns_.size(); }
  bool empty() const;

 private:
  std::vector<std::vector<Text>> columns_;
};

}  // namespace tq
