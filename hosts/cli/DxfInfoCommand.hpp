#pragma once
#include <string>

#include "cli/Cli.hpp"

namespace tq::cli {
// The exit status of `dxf-info` when the drawing holds an error (a file it cannot read at all
// is 1, as for every command).
inline constexpr int kDxfInfoFoundErrors = 3;

// `tqstd dxf-info DRAWING`: what a drawing holds and what is wrong with it.
int RunDxfInfo(const Context& context, const std::string& drawing);
}  // namespace tq::cli
