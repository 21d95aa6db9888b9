#pragma once
// The characters a text shows: the control codes of TEXT and the formatting of MTEXT taken out.
#include <vector>

#include "base/Text.hpp"

namespace tq::view {

// TEXT: "%%d" degree, "%%p" plus-minus, "%%c" diameter, "%%%" percent; the underline and
// overline switches "%%u", "%%o" are dropped.
Text TextCharacters(TextView raw);

// MTEXT: the lines it shows, split at "\P" (and at line ends), with font, height, colour and
// the other switches removed; "\~" is a space, "\\", "\{", "\}" the characters themselves;
// stacked fractions "\S1/2;" show as "1/2". Lines are not wrapped at the reference width.
std::vector<Text> MTextLines(TextView raw);

}  // namespace tq::view
