#pragma once
// The symbols of a resource.h: every "#define NAME value" line, value a whole number.
#include <map>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq::dialog {

using Symbols = std::map<Text, int, std::less<>>;

// Conditionals (#ifndef … #endif) and #pragma lines are passed over: a resource header uses
// them only as guards. Fails naming the line of anything else.
Result<Symbols> ReadResourceHeader(TextView header);

// The ids the Windows headers give a resource script (IDOK, IDCANCEL, …, IDC_STATIC).
const Symbols& WindowsIds();

}  // namespace tq::dialog
