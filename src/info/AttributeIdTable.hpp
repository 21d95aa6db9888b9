#pragma once
// "属性IDパラメータ.csv": column 0 an attribute ID, columns 1 and 2 two texts for it.
#include <filesystem>
#include <optional>

#include "base/ColumnLists.hpp"

namespace tq {

// The columns of the table and of each group made from it.
struct AttributeColumn {
  enum Index : size_t { kId = 0, kKey = 1, kValue = 2 };
};
inline constexpr size_t kAttributeColumns = 3;

class AttributeIdTable {
 public:
  AttributeIdTable() = default;
  explicit AttributeIdTable(const ConfigTable& rows) : rows_(rows) {}
  // Empty when the file cannot be read.
  static AttributeIdTable Load(const std::filesystem::path& path, const CodePage& systemCodePage);

  // The rows whose ID equals `id` without regard to case, as the column lists of the ID, the key and the value.
  ColumnLists Group(TextView id) const;
  // The value column of every row, whatever its ID: the keys of the attribute-value fill rule.
  std::vector<Text> AllValues() const;

 private:
  ConfigTable rows_;
};

}  // namespace tq
