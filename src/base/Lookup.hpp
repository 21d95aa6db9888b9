#pragma once
// The table lookup shared by every table of the system.
#include <span>

#include "base/Text.hpp"

namespace tq {

// First key equal to `key` without regard to case; its index into `values`,
// or the empty text when no key matches or the value list is too short.
Text TableLookup(TextView key, std::span<const Text> keys, std::span<const Text> values);

}  // namespace tq
