#include "dxf/TagList.hpp"

#include <cstdio>

namespace tq::dxf {

TagList ParseTags(std::string_view bytes) {
  TagList tags;
  Tagger tagger(bytes);
  Tag tag;
  while (tagger.Next(tag) == Tagger::Result::Tag) {
    std::string raw(bytes.substr(tag.offset, tag.end - tag.offset));
    tags.push_back({tag.code, std::string(tag.value), raw, raw, std::string(tag.value)});
  }
  return tags;
}

std::vector<Tag> ViewTags(std::string_view bytes) {
  std::vector<Tag> tags;
  Tagger tagger(bytes);
  Tag tag;
  while (tagger.Next(tag) == Tagger::Result::Tag) tags.push_back(tag);
  return tags;
}

std::string FormatTag(int code, std::string_view value, std::string_view lineEnd) {
  char head[16];
  std::snprintf(head, sizeof head, "%3d", code);
  std::string out(head);
  out += lineEnd;
  out += value;
  out += lineEnd;
  return out;
}

std::string Serialize(const TagList& tags, std::string_view lineEnd) {
  std::string out;
  for (const EditTag& tag : tags) out += tag.raw.empty() ? FormatTag(tag.code, tag.value, lineEnd) : tag.raw;
  return out;
}

// Short integers are written right-aligned in six places, as AutoCAD writes them.
std::string FormatInt(int code, long long value) {
  char buffer[32];
  bool padded = (code >= 60 && code <= 99) || (code >= 170 && code <= 179) || (code >= 270 && code <= 289) ||
                (code >= 1060 && code <= 1071);
  std::snprintf(buffer, sizeof buffer, padded ? "%6lld" : "%lld", value);
  return buffer;
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

void SetTagValue(EditTag& tag, std::string value) {
  if (tag.value == value) return;
  tag.value = std::move(value);
  tag.raw = (!tag.isNew() && tag.value == tag.originalValue) ? tag.original : std::string();
}

}  // namespace tq::dxf

namespace tq::dxf {

void SetTagInt(EditTag& tag, long long value) {
  long long original;
  if (!tag.isNew() && ParseInt(tag.originalValue, original) && original == value) {
    tag.value = tag.originalValue;
    tag.raw = tag.original;
    return;
  }
  // A number written in place of another keeps its way of writing: right-aligned in the
  // same width when it was, plain when it was plain.
  std::string text = std::to_string(value);
  size_t leading = tag.value.find_first_not_of(' ');
  if (leading != 0 && leading != std::string::npos && text.size() < tag.value.size())
    text = std::string(tag.value.size() - text.size(), ' ') + text;
  SetTagValue(tag, std::move(text));
}

}  // namespace tq::dxf
