#pragma once
// tqstd sheets, locate, check and mark: the frame grid and the standard drawings of a drawing.
#include <string>
#include <vector>

#include "cli/Cli.hpp"

namespace tq::cli {

int RunSheets(const Context& context, const std::string& drawing);
int RunLocate(const Context& context, const std::string& drawing, double x, double y);
int RunCheck(const Context& context, const std::string& drawing);

struct MarkOptions {
  bool restore = false;
  std::vector<std::string> sheets;
  std::string output;
};
int RunMark(const Context& context, const std::string& drawing, const MarkOptions& options);

}  // namespace tq::cli
