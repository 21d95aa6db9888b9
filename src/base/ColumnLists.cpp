#include "base/ColumnLists.hpp"

namespace tq {

ColumnLists::ColumnLists(const ConfigTable& rows, size_t columnCount) : columns_(columnCount) {
  for (size_t i = 0; i < rows.size(); ++i)
    for (size_t c = 0; c < columnCount && c < rows[i].size(); ++c) {
      columns_[c].resize(i);
      columns_[c].push_back(rows[i][c]);
    }
}

ColumnLists ColumnLists::Load(const std::filesystem::path& path, size_t columnCount, const CodePage& systemCodePage) {
  std::optional<ConfigTable> rows = ReadConfigFile(path, systemCodePage);
  return ColumnLists(rows ? *rows : ConfigTable(), columnCount);
}

bool ColumnLists::empty() const {
  for (const auto& c : columns_)
    if (!c.empty()) return false;
  return true;
}

}  // namespace tq
