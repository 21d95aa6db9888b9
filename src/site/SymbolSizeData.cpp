#include "site/SymbolSizeData.hpp"

#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "base/TextFiles.hpp"

namespace tq {

namespace {
SizeSection SectionOfHeader(TextView line) {
  static const std::pair<const char16_t*, SizeSection> kHeaders[] = {
      {u"記号]", SizeSection::Symbols}, {u"番号]", SizeSection::Numbers},
      {u"サイズ]", SizeSection::Sizes}, {u"台数]", SizeSection::Counts}};
  for (auto [header, section] : kHeaders)
    if (line.find(header) != TextView::npos) return section;
  return SizeSection::None;
}
}  // namespace

SymbolSizeData ParseSymbolSizeData(TextView text, SizeSection startSection) {
  SymbolSizeData data;
  SizeSection section = startSection;
  for (const Text& raw : SplitLines(text)) {
    if (raw.empty()) continue;
    Text line = Trim(raw);
    if (line.empty() || line[0] == u'#') continue;
    if (line[0] == u'[') {
      section = SectionOfHeader(line);
      continue;
    }
    if (section == SizeSection::None) continue;
    size_t s = static_cast<size_t>(section);
    if (line.back() == u'*') {
      data.defaults[s] = static_cast<int>(data.lists[s].size());  // the last marked entry wins
      line.pop_back();
    }
    data.lists[s].push_back(std::move(line));
  }
  return data;
}

SymbolSizeData LoadSymbolSizeData(TextView path, const CodePage& systemCodePage, SizeSection startSection) {
  if (path.empty()) return {};
  std::optional<std::string> bytes = ReadFileBytes(ToFsPath(path));
  if (!bytes) return {};
  return ParseSymbolSizeData(DecodeTextFile(*bytes, systemCodePage).text, startSection);
}

}  // namespace tq
