#pragma once
// "属性IDパラメータ.csv": column 0 an attribute ID, columns 1 and 2 two texts for it.
#include <filesystem>
#include <optional>

#include "base/ColumnLists.hpp"

namespace tq {

class AttributeIdTable {
 public:
  AttributeIdTable() = default;
  explicit AttributeIdTable(const ConfigTable& rows) : rows_(rows) {}
  // Empty when the file cannot be read.
  static AttributeIdTable Load(const std::filesystem::path& path, const CodePage& systemCodePage);

  // The rows whose ID equals `id` without regard to case, as column lists 0, 1 and 2.
  ColumnLists Group(TextView id) const;
  // Column 2 of every row, whatever its ID: the keys of the member-20 fill rule.
  std::vector<Text> AllValues() const;

 private:
  ConfigTable rows_;
};

}  // namespace tq
