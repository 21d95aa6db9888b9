#pragma once
// The tags of one record (an entity or a table entry) once it is read for editing. A tag
// views its value: in the file's bytes, or, new or changed, in the document's StringStore.
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
  EditTag(int code, Kept value) : code(code), value_(value.view()) {}
  // A tag of the file: its whole pair and its value, both viewing the file.
  EditTag(int code, std::string_view original, std::string_view originalValue)
      : code(code), original_(original), originalValue_(originalValue), value_(originalValue) {}

  int code = 0;
  std::string_view value() const { return value_; }
  bool isNew() const { return original_.empty(); }
  bool isChanged() const { return value_.data() != originalValue_.data() || value_.size() != originalValue_.size(); }
  std::string_view original() const { return original_; }
  std::string_view originalValue() const { return originalValue_; }
  // A value set back to the file's value is written as the file wrote it.
  void Set(Kept value);
  void Revert() { value_ = originalValue_; }

 private:
  std::string_view original_, originalValue_, value_;
};

using TagList = std::vector<EditTag>;

// The value of a tag read from the file or from an edit, for code that handles both.
inline std::string_view ValueOf(const Tag& tag) { return tag.value; }
inline std::string_view ValueOf(const EditTag& tag) { return tag.value(); }

// The tags of `bytes`, viewing them: `bytes` must outlive the list.
TagList ParseTags(std::string_view bytes);
// The tags of `bytes` without copying: views into the bytes.
std::vector<Tag> ViewTags(std::string_view bytes);

// One pair as this backend writes it: the code right-aligned in three places.
std::string FormatTag(int code, std::string_view value, std::string_view lineEnd);
void AppendTag(std::string& out, int code, std::string_view value, std::string_view lineEnd);
std::string Serialize(const TagList& tags, std::string_view lineEnd);
void AppendSerialized(std::string& out, const TagList& tags, std::string_view lineEnd);

std::string FormatInt(int code, long long value);
std::string FormatDouble(double value);
std::string FormatHandle(unsigned long long handle);

EditTag* FindTag(TagList& tags, int code);
const EditTag* FindTag(const TagList& tags, int code);
// An integer value; the original text when it held the same number, else written the way
// the replaced number was written.
void SetTagInt(EditTag& tag, long long value, StringStore& store);

}  // namespace tq::dxf
