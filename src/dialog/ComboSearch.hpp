#pragma once
// The exact-string search of a combo box, as the platform's CB_FINDSTRINGEXACT does it.
#include <vector>

#include "base/Text.hpp"

namespace tq::dialog {

// The index of the entry whose whole text equals `text` without regard to case, searching
// from the entry after `startAfter` to the end and then from the first entry round to
// `startAfter` itself (so with 0 the first entry is tried last); -1 when none matches. A
// `startAfter` of -1 searches from the first entry.
int FindStringExact(const std::vector<Text>& entries, int startAfter, TextView text);

}  // namespace tq::dialog
