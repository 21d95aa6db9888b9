#pragma once
#include "cli/Cli.hpp"

namespace tq::cli {
// `tqstd settings`: every folder, file path and setting the installation resolves to.
int RunSettings(const Context& context);
}  // namespace tq::cli
