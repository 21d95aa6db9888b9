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

// A run of a group's tags: a line (a string, or the strings of a "{" … "}" list that holds
// strings only), or what no line is made of (points, reals, integers, handles, a list holding
// any of them or another list, a stray brace), which a rewrite keeps as it stands.
struct Piece {
  size_t begin, end;
  bool line;
};

template <class Tags>
std::vector<Piece> PiecesOf(const Tags& tags, size_t begin, size_t end) {
  std::vector<Piece> pieces;
  for (size_t i = begin; i < end;) {
    if (tags[i].code == 1000) {
      pieces.push_back({i, i + 1, true});
      ++i;
      continue;
    }
    if (tags[i].code != 1002 || TrimNumber(ValueOf(tags[i])) != "{") {
      pieces.push_back({i, i + 1, false});
      ++i;
      continue;
    }
    // A list ends at its matching "}", or with the group when it is left open.
    size_t j = i + 1;
    bool strings = true;
    for (int depth = 1; j < end && depth > 0; ++j) {
      if (tags[j].code == 1000) continue;
      std::string_view brace = TrimNumber(ValueOf(tags[j]));
      if (tags[j].code == 1002 && brace == "}") --depth;
      else strings = false, depth += (tags[j].code == 1002 && brace == "{") ? 1 : 0;
    }
    pieces.push_back({i, j, strings});
    i = j;
  }
  return pieces;
}

template <class Tags>
std::string JoinedStrings(const Tags& tags, const Piece& piece) {
  std::string joined;
  for (size_t i = piece.begin; i < piece.end; ++i)
    if (tags[i].code == 1000) joined += ValueOf(tags[i]);
  return joined;
}

// A line as one string, or as several inside a "{" … "}" pair when one string cannot hold it.
void AppendLine(TagList& group, TextView line, const DxfCodec& codec, StringStore& store) {
  std::string whole = codec.Encode(line);
  if (whole.size() <= kXDataStringLimit) {
    group.emplace_back(1000, store.Keep(whole));
    return;
  }
  group.emplace_back(1002, "{");
  for (const std::string& piece : SplitEncoded(line, codec)) group.emplace_back(1000, store.Keep(piece));
  group.emplace_back(1002, "}");
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
  for (const Piece& piece : PiecesOf(tags, begin + 1, end))
    if (piece.line) lines.push_back(codec.Decode(JoinedStrings(tags, piece)));
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
                   std::pmr::memory_resource* memory, const TagList* current) {
  TagList group(memory);
  group.reserve(lines.size() + 1);
  group.emplace_back(1001, store.Keep(codec.Encode(application)));
  std::vector<Piece> pieces;
  if (current) {
    auto [begin, end] = FindGroup(*current, application, codec);
    if (begin != end) pieces = PiecesOf(*current, begin + 1, end);
  }
  // The lines take the places of the old lines, in order; lines beyond them follow the last
  // old line; what is no line stays where it stood.
  size_t afterLastLine = 0, next = 0;
  for (size_t k = 0; k < pieces.size(); ++k)
    if (pieces[k].line) afterLastLine = k + 1;
  auto rest = [&] {
    while (next < lines.size()) AppendLine(group, lines[next++], codec, store);
  };
  if (afterLastLine == 0) rest();
  for (size_t k = 0; k < pieces.size(); ++k) {
    const Piece& piece = pieces[k];
    if (!piece.line) group.insert(group.end(), current->begin() + static_cast<std::ptrdiff_t>(piece.begin),
                                  current->begin() + static_cast<std::ptrdiff_t>(piece.end));
    else if (next < lines.size()) AppendLine(group, lines[next++], codec, store);
    if (k + 1 == afterLastLine) rest();
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
