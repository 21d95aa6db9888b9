#include "output/OutputFormat.hpp"

#include "base/TextFiles.hpp"

namespace tq {

std::vector<Text> OutputFormat::Columns(size_t line) const {
  const std::vector<Text>& fields = lines[line];
  if (fields.size() < 4) return {};
  return std::vector<Text>(fields.begin() + 1, fields.end() - 2);
}

OutputFormat LoadOutputFormat(const std::filesystem::path& path, const CodePage& systemCodePage) {
  OutputFormat format;
  std::optional<ConfigTable> rows = ReadConfigFile(path, systemCodePage);
  if (!rows) return format;
  for (size_t i = 0; i < OutputFormat::kKeptLines && i < rows->size(); ++i) format.lines[i] = (*rows)[i];
  return format;
}

}  // namespace tq
