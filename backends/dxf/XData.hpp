#pragma once
// Extended data as lines of text per application name.
#include <optional>
#include <vector>

#include "base/Text.hpp"
#include "dxf/DxfCodec.hpp"
#include "dxf/TagList.hpp"

namespace tq::dxf {

using XDataLines = std::vector<Text>;

// Longest group-1000 string, in bytes of the file's encoding.
inline constexpr size_t kXDataStringLimit = 255;

// The lines stored under `application` (without regard to case): each top-level group-1000
// string is a line, and the strings of a "{" … "}" group-1002 list that holds only strings are
// joined into one. Anything else (points, reals, integers, handles, other lists) is no line.
// Nothing when the entity holds no group of that name.
std::optional<XDataLines> ReadXDataLines(const std::vector<Tag>& tags, TextView application, const DxfCodec& codec);

// Whether the entity holds a group of `application`, without reading its lines.
bool HasXDataGroup(const std::vector<Tag>& tags, TextView application, const DxfCodec& codec);

// The group of `application` holding these lines: a line longer than one string may hold
// is written as several strings inside a "{" … "}" pair. With the entity's `current` tags,
// what its group holds that is no line is kept where it stands, the lines taking the places
// of the lines it held.
TagList XDataGroup(TextView application, const XDataLines& lines, const DxfCodec& codec, StringStore& store,
                   std::pmr::memory_resource* memory = std::pmr::get_default_resource(), const TagList* current = nullptr);
// Replaces the group of `application` by `group`, or appends it at the end of the entity's
// extended data.
void ReplaceXDataGroup(TagList& tags, TextView application, TagList group, const DxfCodec& codec);
// The size of the entity's other applications' groups, which a new group is added to.
size_t XDataSizeWithout(const TagList& tags, TextView application, const DxfCodec& codec);

// Removes the group; false when there was none.
bool RemoveXDataGroup(TagList& tags, TextView application, const DxfCodec& codec);

// A line in pieces of at most `limit` bytes, never cutting a character or an escape.
std::vector<std::string> SplitEncoded(TextView line, const DxfCodec& codec, size_t limit = kXDataStringLimit);

}  // namespace tq::dxf
