#include "cli/Commands.hpp"

#include "cli/SettingsCommand.hpp"

namespace tq::cli {

std::vector<Command> RegisterCommands(CLI::App& app) {
  std::vector<Command> commands;
  CLI::App* settings = app.add_subcommand("settings", "print every folder, file path and setting of the installation");
  commands.push_back({settings, [](const Context& c) { return RunSettings(c); }});
  return commands;
}

}  // namespace tq::cli
