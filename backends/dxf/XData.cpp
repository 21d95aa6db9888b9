#include "dxf/XData.hpp"

#include "dxf/DxfDocument.hpp"

namespace tq::dxf {

namespace {

template <class TagT>
bool IsGroupOf(const TagT& tag, TextView application, const DxfCodec& codec) {
  return tag.code == 1001 && codec.EqualsNoCase(TrimNumber(ValueOf(tag)), application);
}

// The group of `application`: [begin, end) in `tags`; begin == end when absent.
template <class Tags>
std::pair<size_t, size_t> FindGroup(const Tags& tags, TextView application, const DxfCodec& codec) {
  for (size_t i = 0; i < tags.size(); ++i) {
    if (!IsGroupOf(tags[i], application, codec)) continue;
    size_t end = i + 1;
    while (end < tags.size() && tags[end].code != 1001 && tags[end].code >= 1000) ++end;
    return {i, end};
  }
  return {tags.size(), tags.size()};
}

}  // namespace

bool HasXDataGroup(const std::vector<Tag>& tags, TextView application, const DxfCodec& codec) {
  auto [begin, end] = FindGroup(tags, application, codec);
  return begin != end;
}

std::optional<XDataLines> ReadXDataLines(const std::vector<Tag>& tags, TextView application, const DxfCodec& codec) {
  auto [begin, end] = FindGroup(tags, application, codec);
  if (begin == end) return std::nullopt;
  XDataLines lines;
  int depth = 0;
  std::string joined;
  for (size_t i = begin + 1; i < end; ++i) {
    const Tag& t = tags[i];
    if (t.code == 1002) {
      std::string_view brace = TrimNumber(t.value);
      if (brace == "{") {
        if (depth++ == 0) joined.clear();
      } else if (brace == "}" && depth > 0 && --depth == 0) {
        lines.push_back(codec.Decode(joined));
      }
    } else if (t.code == 1000) {
      if (depth == 0) lines.push_back(codec.Decode(t.value));
      else joined += t.value;
    }
  }
  if (depth > 0) lines.push_back(codec.Decode(joined));  // a brace left open ends with its group
  return lines;
}

std::vector<std::string> SplitEncoded(TextView line, const DxfCodec& codec, size_t limit) {
  std::string whole = codec.Encode(line);
  if (whole.size() <= limit) return {whole};
  std::vector<std::string> pieces(1);
  for (size_t i = 0; i < line.size(); ++i) {
    size_t units = (i + 1 < line.size() && line[i] >= 0xD800 && line[i] < 0xDC00) ? 2 : 1;
    std::string bytes = codec.Encode(line.substr(i, units));
    i += units - 1;
    if (pieces.back().size() + bytes.size() > limit) pieces.emplace_back();
    pieces.back() += bytes;
  }
  return pieces;
}

TagList XDataGroup(TextView application, const XDataLines& lines, const DxfCodec& codec, StringStore& store,
                   std::pmr::memory_resource* memory) {
  TagList group(memory);
  group.reserve(lines.size() + 1);
  group.emplace_back(1001, store.Keep(codec.Encode(application)));
  for (const Text& line : lines) {
    std::string whole = codec.Encode(line);
    if (whole.size() <= kXDataStringLimit) {
      group.emplace_back(1000, store.Keep(whole));
      continue;
    }
    std::vector<std::string> pieces = SplitEncoded(line, codec);
    group.emplace_back(1002, "{");
    for (const std::string& piece : pieces) group.emplace_back(1000, store.Keep(piece));
    group.emplace_back(1002, "}");
  }
  return group;
}

size_t XDataSizeWithout(const TagList& tags, TextView application, const DxfCodec& codec) {
  auto [begin, end] = FindGroup(tags, application, codec);
  size_t size = 0;
  bool inXData = false;
  for (size_t i = 0; i < tags.size(); ++i) {
    if ((i >= begin && i < end) || tags[i].code < 1000) continue;
    inXData = inXData || tags[i].code == 1001;
    if (inXData) size += XDataTagSize(tags[i].code, tags[i].value());
  }
  return size;
}

void ReplaceXDataGroup(TagList& tags, TextView application, TagList group, const DxfCodec& codec) {
  auto [begin, end] = FindGroup(tags, application, codec);
  if (begin != end) {
    // Tags written as they were keep their original bytes.
    for (size_t i = 0; i < group.size() && begin + i < end; ++i)
      if (tags[begin + i].code == group[i].code && tags[begin + i].value() == group[i].value()) group[i] = tags[begin + i];
    tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(begin), tags.begin() + static_cast<std::ptrdiff_t>(end));
    tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(begin), group.begin(), group.end());
    return;
  }
  // After the last extended data, or at the end of the entity's own tags (before any
  // embedded object).
  size_t at = tags.size();
  for (size_t i = 0; i < tags.size(); ++i)
    if (tags[i].code == 101) {
      at = i;
      break;
    }
  tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(at), group.begin(), group.end());
}

bool RemoveXDataGroup(TagList& tags, TextView application, const DxfCodec& codec) {
  auto [begin, end] = FindGroup(tags, application, codec);
  if (begin == end) return false;
  tags.erase(tags.begin() + static_cast<std::ptrdiff_t>(begin), tags.begin() + static_cast<std::ptrdiff_t>(end));
  return true;
}

}  // namespace tq::dxf
