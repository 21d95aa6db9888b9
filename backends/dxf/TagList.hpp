#pragma once
// The tags of one record (an entity or a table entry) once it is read for editing. A tag
// views its value: in the file's bytes, or, new or changed, in the document's StringStore.
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/StringStore.hpp"
#include "dxf/Tagger.hpp"

namespace tq::dxf {

class EditTag {
 public:
  // A new tag.
  EditTag(int code, Kept value) : code(static_cast<int16_t>(code)) { SetView(value.view()); }
  // A tag of the file: its whole pair and its value, both viewing the file.
  EditTag(int code, std::string_view original, std::string_view originalValue);

  std::string_view value() const { return {value_, valueSize_}; }
  bool isNew() const { return original_ == nullptr; }
  bool isChanged() const { return value_ != original_ + head_ || valueSize_ != originalSize_; }
  std::string_view original() const {
    return isNew() ? std::string_view() : std::string_view(original_, head_ + originalSize_ + tail_);
  }
  std::string_view originalValue() const {
    return isNew() ? std::string_view() : std::string_view(original_ + head_, originalSize_);
  }
  // The file's code line with its line end, and the line end of its value: a changed value
  // is written between them, the pair laid out as the file laid it out.
  std::string_view originalHead() const { return isNew() ? std::string_view() : std::string_view(original_, head_); }
  std::string_view originalTail() const {
    return isNew() ? std::string_view() : std::string_view(original_ + head_ + originalSize_, tail_);
  }
  // A value set back to the file's value is written as the file wrote it.
  void Set(Kept value);
  void Revert() { SetView(originalValue()); }

 private:
  void SetView(std::string_view value);

  // Small, for a drawing's edits hold hundreds of thousands of tags: the pair in the file is
  // its code line (head_ bytes), its value and its line end (tail_ bytes).
  const char* original_ = nullptr;
  const char* value_ = nullptr;

 public:
  int16_t code = 0;  // group codes are short integers, as the reader checks

 private:
  uint8_t tail_ = 0;
  uint32_t originalSize_ = 0, valueSize_ = 0, head_ = 0;
};

// A drawing's edits take their lists from the document's memory (see Document::Edit).
using TagList = std::pmr::vector<EditTag>;

// The value of a tag read from the file or from an edit, for code that handles both.
inline std::string_view ValueOf(const Tag& tag) { return tag.value; }
inline std::string_view ValueOf(const EditTag& tag) { return tag.value(); }

// The tags of `bytes`, viewing them: `bytes` must outlive the list.
TagList ParseTags(std::string_view bytes, std::pmr::memory_resource* memory = std::pmr::get_default_resource());
// The tags of `bytes` without copying, into `tags`: views into the bytes.
void ViewTagsInto(std::string_view bytes, std::vector<Tag>& tags);

// One pair as this backend writes it: the code right-aligned in three places.
std::string FormatTag(int code, std::string_view value, std::string_view lineEnd);
void AppendTag(std::string& out, int code, std::string_view value, std::string_view lineEnd);
std::string Serialize(const TagList& tags, std::string_view lineEnd);
void AppendSerialized(std::string& out, const TagList& tags, std::string_view lineEnd);

std::string FormatInt(int code, long long value);
std::string FormatDouble(double value);
std::string FormatHandle(unsigned long long handle);
// A handle's hexadecimal digits as a number; nothing when the text is empty, holds another
// character or passes 64 bits.
std::optional<uint64_t> ParseHandleDigits(std::string_view digits);

EditTag* FindTag(TagList& tags, int code);
const EditTag* FindTag(const TagList& tags, int code);
// An integer value; the original text when it held the same number, else written the way
// the replaced number was written.
void SetTagInt(EditTag& tag, long long value, StringStore& store);

}  // namespace tq::dxf
