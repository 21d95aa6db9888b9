#pragma once
// Splitting and joining the comma-separated lines of records and tables.
#include <span>
#include <vector>

#include "base/Text.hpp"

namespace tq {

// Inner empty fields are kept; no empty field after a trailing separator; an empty text gives no fields.
std::vector<Text> SplitFields(TextView line, char16_t separator = u',');

// Every separator cuts: p separators give p + 1 pieces (an empty text gives one empty piece).
std::vector<Text> SplitAtEvery(TextView text, char16_t separator);

inline constexpr size_t kLineFieldCount = 25;

// What a line holds past its first `count` fields, from the separator that ends field `count`
// (included) to the end; empty when it holds no more. Appended to the `count` fields joined,
// it gives the line back as it was.
TextView FieldsBeyond(TextView line, size_t count, char16_t separator = u',');

// The 25 fields joined with "," and nothing else (no quoting).
Text JoinLine25(std::span<const Text, kLineFieldCount> fields);

}  // namespace tq
