#include "info/AttributeIdTable.hpp"

namespace tq {

AttributeIdTable AttributeIdTable::Load(const std::filesystem::path& path, const CodePage& systemCodePage) {
  std::optional<ConfigTable> rows = ReadConfigFile(path, systemCodePage);
  return AttributeIdTable(rows ? *rows : ConfigTable());
}

ColumnLists AttributeIdTable::Group(TextView id) const {
  ConfigTable group;
  for (const TableRow& row : rows_)
    if (!row.empty() && EqualNoCase(row[AttributeColumn::kId], id)) group.push_back(row);
  return ColumnLists(group, kAttributeColumns);
}

std::vector<Text> AttributeIdTable::AllValues() const { return ColumnLists(rows_, kAttributeColumns).column(AttributeColumn::kValue); }

}  // namespace tq
