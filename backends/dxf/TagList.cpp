#include "dxf/TagList.hpp"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace tq::dxf {

static_assert(sizeof(EditTag) <= 32, "a drawing's edits hold hundreds of thousands of tags");

EditTag::EditTag(int code, std::string_view original, std::string_view originalValue)
    : code(static_cast<int16_t>(code)) {
  original_ = original.data();
  head_ = static_cast<uint32_t>(originalValue.data() - original.data());
  originalSize_ = static_cast<uint32_t>(originalValue.size());
  tail_ = static_cast<uint8_t>(original.size() - head_ - originalValue.size());
  SetView(originalValue);
}

void EditTag::SetView(std::string_view value) {
  value_ = value.data();
  valueSize_ = static_cast<uint32_t>(value.size());
}

void EditTag::Set(Kept value) {
  SetView(!isNew() && value.view() == originalValue() ? originalValue() : value.view());
}

TagList ParseTags(std::string_view bytes, std::pmr::memory_resource* memory) {
  TagList tags(memory);
  // Room for every pair and for the few an edit adds (a colour, a group of extended data).
  tags.reserve(static_cast<size_t>(std::count(bytes.begin(), bytes.end(), '\n')) / 2 + 4);
  Tagger tagger(bytes);
  Tag tag;
  while (tagger.Next(tag) == Tagger::Result::Tag)
    tags.emplace_back(tag.code, bytes.substr(tag.offset, tag.end - tag.offset), tag.value);
  return tags;
}

void ViewTagsInto(std::string_view bytes, std::vector<Tag>& tags) {
  tags.clear();
  Tagger tagger(bytes);
  Tag tag;
  while (tagger.Next(tag) == Tagger::Result::Tag) tags.push_back(tag);
}

namespace {
// The number right-aligned in `width` places.
void AppendPadded(std::string& out, long long value, size_t width) {
  char digits[24];
  char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  size_t n = static_cast<size_t>(end - digits);
  if (n < width) out.append(width - n, ' ');
  out.append(digits, n);
}
}  // namespace

void AppendTag(std::string& out, int code, std::string_view value, std::string_view lineEnd) {
  AppendPadded(out, code, 3);
  out += lineEnd;
  out += value;
  out += lineEnd;
}

std::string FormatTag(int code, std::string_view value, std::string_view lineEnd) {
  std::string out;
  AppendTag(out, code, value, lineEnd);
  return out;
}

void AppendSerialized(std::string& out, const TagList& tags, std::string_view lineEnd) {
  // Unchanged pairs that follow one another in the file go out as one piece.
  const char *runBegin = nullptr, *runEnd = nullptr;
  auto flushRun = [&] {
    if (runBegin) out.append(runBegin, static_cast<size_t>(runEnd - runBegin));
    runBegin = runEnd = nullptr;
  };
  for (const EditTag& tag : tags) {
    if (!tag.isChanged() && !tag.isNew()) {
      std::string_view original = tag.original();
      if (original.data() != runEnd) flushRun(), runBegin = original.data();
      runEnd = original.data() + original.size();
    } else if (!tag.isNew() && !tag.originalTail().empty()) {
      flushRun();
      out += tag.originalHead();
      out += tag.value();
      out += tag.originalTail();
    } else {
      flushRun();
      AppendTag(out, tag.code, tag.value(), lineEnd);
    }
  }
  flushRun();
}

std::string Serialize(const TagList& tags, std::string_view lineEnd) {
  std::string out;
  AppendSerialized(out, tags, lineEnd);
  return out;
}

// Short integers are written right-aligned in six places, as AutoCAD writes them.
std::string FormatInt(int code, long long value) {
  bool padded = (code >= 60 && code <= 99) || (code >= 170 && code <= 179) || (code >= 270 && code <= 289) ||
                (code >= 1060 && code <= 1071);
  std::string out;
  AppendPadded(out, value, padded ? 6 : 0);
  return out;
}

std::string FormatDouble(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.15g", value);
  std::string text(buffer);
  if (text.find_first_of(".eEn") == std::string::npos) text += ".0";
  return text;
}

std::string FormatHandle(unsigned long long handle) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%llX", handle);
  return buffer;
}

std::optional<uint64_t> ParseHandleDigits(std::string_view digits) {
  if (digits.empty()) return std::nullopt;
  uint64_t h = 0;
  for (char c : digits) {
    int d = (c >= '0' && c <= '9') ? c - '0' : (c >= 'A' && c <= 'F') ? c - 'A' + 10 : (c >= 'a' && c <= 'f') ? c - 'a' + 10 : -1;
    if (d < 0 || h > (UINT64_MAX >> 4)) return std::nullopt;
    h = h * 16 + static_cast<uint64_t>(d);
  }
  return h;
}

EditTag* FindTag(TagList& tags, int code) {
  for (EditTag& tag : tags)
    if (tag.code == code) return &tag;
  return nullptr;
}

const EditTag* FindTag(const TagList& tags, int code) {
  for (const EditTag& tag : tags)
    if (tag.code == code) return &tag;
  return nullptr;
}

void SetTagInt(EditTag& tag, long long value, StringStore& store) {
  long long original;
  if (!tag.isNew() && ParseInt(tag.originalValue(), original) && original == value) {
    tag.Revert();
    return;
  }
  // A number written in place of another keeps its way of writing: right-aligned in the
  // same width when it was, plain when it was plain.
  std::string text = std::to_string(value);
  std::string_view old = tag.value();
  size_t leading = old.find_first_not_of(' ');
  if (leading != 0 && leading != std::string_view::npos && text.size() < old.size())
    text = std::string(old.size() - text.size(), ' ') + text;
  tag.Set(store.Keep(text));
}

}  // namespace tq::dxf
