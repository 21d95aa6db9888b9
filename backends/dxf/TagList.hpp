#pragma once
// The tags of one record (an entity or a table entry) once it is read for editing.
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Tagger.hpp"

namespace tq::dxf {

struct EditTag {
  int code = 0;
  std::string value;
  std::string raw;       // the bytes written: the original pair, or empty for a new or changed tag
  std::string original;  // the original pair, kept so that a value set back is written as it was
  std::string originalValue;
  bool isNew() const { return original.empty(); }
};

using TagList = std::vector<EditTag>;

// The tags of `bytes`, each keeping its original bytes.
TagList ParseTags(std::string_view bytes);
// The tags of `bytes` without copying: views into the bytes.
std::vector<Tag> ViewTags(std::string_view bytes);

// One pair as this backend writes it: the code right-aligned in three places.
std::string FormatTag(int code, std::string_view value, std::string_view lineEnd);
std::string Serialize(const TagList& tags, std::string_view lineEnd);

std::string FormatInt(int code, long long value);
std::string FormatDouble(double value);
std::string FormatHandle(unsigned long long handle);

// Helpers over a tag list.
EditTag* FindTag(TagList& tags, int code);
const EditTag* FindTag(const TagList& tags, int code);
void SetTagValue(EditTag& tag, std::string value);
// An integer value; the original text when it held the same number.
void SetTagInt(EditTag& tag, long long value);

}  // namespace tq::dxf
