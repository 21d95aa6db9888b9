#pragma once
// UTF-16 text, the one text type inside the program.
#include <string>
#include <string_view>

namespace tq {

using Text = std::u16string;
using TextView = std::u16string_view;

// The one "equal without regard to case" comparison of the whole system.
bool EqualNoCase(TextView a, TextView b);

// UTF-8 at the edges (file names, command line, console).
std::string ToUtf8(TextView text);
Text FromUtf8(std::string_view bytes);  // invalid sequences become U+FFFD

// White space (blank, tab, CR, LF, full-width blank) removed at both ends.
Text Trim(TextView text);

bool StartsWith(TextView text, TextView prefix);
bool EndsWith(TextView text, TextView suffix);

}  // namespace tq
