#pragma once
// The layout of the output files: "標準図用出力フォーマット.csv", read again before every
// output; its first line heads the columns, its second names each column's attribute code.
#include <array>
#include <filesystem>
#include <vector>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq {

struct OutputFormat {
  static constexpr size_t kKeptLines = 4;
  std::array<std::vector<Text>, kKeptLines> lines;  // the first four lines as read; the rest ignored
  // Fields 1 to n − 3 of a line of n fields: the first field and the last two never count.
  std::vector<Text> Columns(size_t line) const;
  std::vector<Text> Headers() const { return Columns(0); }
  std::vector<Text> Codes() const { return Columns(1); }
};

// Every list empty when the file cannot be read.
OutputFormat LoadOutputFormat(const std::filesystem::path& path, const CodePage& systemCodePage);

}  // namespace tq
