#pragma once
// The table of tqstd commands: each adds its own options and runs with the context.
#include <CLI/CLI.hpp>

#include <functional>
#include <vector>

#include "cli/Cli.hpp"

namespace tq::cli {

struct Command {
  CLI::App* app;
  std::function<int(const Context&)> run;
};

std::vector<Command> RegisterCommands(CLI::App& app);

}  // namespace tq::cli
