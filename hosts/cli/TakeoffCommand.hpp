#pragma once
// tqstd takeoff: the takeoff list, the aggregate or the CI-NET code file of a drawing.
#include <string>

#include "cli/Cli.hpp"

namespace tq::cli {

struct TakeoffOptions {
  std::string kind, separator, category, output;
  bool categoryGiven = false;
  bool registerRows = false;
  bool json = false;
};
int RunTakeoff(const Context& context, const std::string& drawing, const TakeoffOptions& options);

}  // namespace tq::cli
