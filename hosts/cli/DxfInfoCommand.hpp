#pragma once
#include <string>

#include "cli/Cli.hpp"

namespace tq::cli {
// `tqstd dxf-info DRAWING`: what a drawing holds and what is wrong with it.
int RunDxfInfo(const Context& context, const std::string& drawing);
}  // namespace tq::cli
