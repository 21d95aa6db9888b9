#pragma once
// Parameterised CI-NET codes: 14 characters, "&", one skipped character, then tokens that
// name the dimensions ("SSL0", "SSW0", "SSH0"), literals in double quotes, nested codes.
#include <array>

#include "base/Text.hpp"
#include "takeoff/TakeoffRows.hpp"

namespace tq {

// A parameterised code: its first 15 characters end in "&", one character is skipped, the
// tokens follow.
inline constexpr size_t kCodeHeadLength = 15;
inline constexpr size_t kParameterMark = kCodeHeadLength - 1;  // where the "&" stands
inline constexpr size_t kTokensStart = kCodeHeadLength + 1;

struct ExpansionVariant {
  std::array<Text, 3> dimensions;               // the texts of "SSL0", "SSW0", "SSH0"
  bool repeatDimensionBeforeLiterals = true;    // a dimension's value again before a later literal
  size_t nestedCodeAmpersand = kParameterMark;  // a digit token longer than this, with "&" here, is a nested code
};

// The takeoff rows' variant: the dimensions 1, 2 and 3 of the row read as integers
// ("%d"), repeated before later literals; a nested code has its "&" at the 15th character.
ExpansionVariant RowVariant(const CTakeoffRow& row);
// The dialog's variant: the dimensions as they stand in list columns 6, 8 and 10, never
// repeated; a nested code has its "&" at the 16th character.
ExpansionVariant DialogVariant(TextView dimension1, TextView dimension2, TextView dimension3);

Text ExpandCode(TextView code, const ExpansionVariant& variant);

// The tokens after the skipped 16th character: split at commas outside double quotes (the
// quotes stay in their tokens); a last token only when not empty.
std::vector<Text> SplitCodeTokens(TextView rest);

}  // namespace tq
