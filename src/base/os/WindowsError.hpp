#pragma once
// The Windows error of the last call, in words, for the seam's messages. Included only by
// the Windows implementation, after windows.h.
#include "base/os/Os.hpp"

namespace tq::os::detail {

std::string SystemMessage(unsigned long error);
// NotFound when the last call found no such file or folder, else CannotRead.
ErrorCode ReadCode();

}  // namespace tq::os::detail
