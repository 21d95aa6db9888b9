#include "base/TextFiles.hpp"

#include "base/Encoding.hpp"
#include "base/Paths.hpp"

namespace tq {

namespace {
std::optional<Text> ReadDecoded(const std::filesystem::path& path, const CodePage& systemCodePage) {
  std::optional<std::string> bytes = ReadFileBytes(path);
  if (!bytes) return std::nullopt;
  return DecodeTextFile(*bytes, systemCodePage).text;
}
}  // namespace

std::vector<Text> SplitLines(TextView text) {
  std::vector<Text> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(u'\n', start);
    size_t stop = end == TextView::npos ? text.size() : end;
    size_t contentEnd = (stop > start && text[stop - 1] == u'\r') ? stop - 1 : stop;
    lines.emplace_back(text.substr(start, contentEnd - start));
    if (end == TextView::npos) break;
    start = end + 1;
  }
  return lines;
}

TableRow SplitConfigLine(TextView line) {
  TableRow fields;
  size_t i = 0;
  for (;;) {
    Text field;
    if (i < line.size() && line[i] == u'"') {
      ++i;
      while (i < line.size()) {
        if (line[i] == u'"' && i + 1 < line.size() && line[i + 1] == u'"') field += u'"', i += 2;
        else if (line[i] == u'"') { ++i; break; }
        else field += line[i++];
      }
      while (i < line.size() && line[i] != u',') field += line[i++];  // text after the closing quote stays
    } else {
      size_t cut = line.find(u',', i);
      field = line.substr(i, cut == TextView::npos ? TextView::npos : cut - i);
      i = cut == TextView::npos ? line.size() : cut;
    }
    fields.push_back(std::move(field));
    if (i >= line.size()) return fields;
    ++i;  // past the comma: a field always follows it, empty or not
  }
}

ConfigTable ParseConfigTable(TextView text) {
  ConfigTable table;
  for (const Text& line : SplitLines(text)) table.push_back(SplitConfigLine(line));
  return table;
}

std::optional<ConfigTable> ReadConfigFile(const std::filesystem::path& path, const CodePage& systemCodePage) {
  std::optional<Text> text = ReadDecoded(path, systemCodePage);
  if (!text) return std::nullopt;
  return ParseConfigTable(*text);
}

std::vector<Text> SplitTextLines(TextView text, size_t bufferSize) {
  std::vector<Text> lines;
  const size_t limit = bufferSize - 1;
  Text chunk;
  auto flush = [&] {
    Text clean;
    for (char16_t c : chunk)
      if (c != u'\r' && c != u'\n') clean += c;
    lines.push_back(std::move(clean));
    chunk.clear();
  };
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;  // text mode reads CR LF as LF
    chunk += text[i];
    if (text[i] == u'\n' || chunk.size() == limit) flush();
  }
  if (!chunk.empty()) flush();
  return lines;
}

std::optional<std::vector<Text>> ReadTextLines(const std::filesystem::path& path, const CodePage& systemCodePage) {
  std::optional<Text> text = ReadDecoded(path, systemCodePage);
  if (!text) return std::nullopt;
  return SplitTextLines(*text);
}

}  // namespace tq
