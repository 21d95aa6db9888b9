#pragma once
// What base/Text.cpp asks of the platform's Unicode engine (ICU on POSIX, the Windows API on
// Windows); ToUtf8 and FromUtf8 of base/Text.hpp are the engine's as well.
#include "base/Text.hpp"

namespace tq::engine {

// Equal after case folding, for text beyond ASCII.
bool EqualFolded(TextView a, TextView b);

}  // namespace tq::engine
