#pragma once
// tqstd info and choices: the records of one standard drawing, the choice lists of an installation.
#include <optional>
#include <string>

#include "cli/Cli.hpp"

namespace tq::cli {

struct InfoOptions {
  std::string sheet, at, handle;
  bool json = false;
};
int RunInfo(const Context& context, const std::string& drawing, const InfoOptions& options);
int RunChoices(const Context& context, const std::string& ab);

}  // namespace tq::cli
