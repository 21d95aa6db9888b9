#include "cli/Commands.hpp"

#include "cli/DxfInfoCommand.hpp"
#include "cli/SettingsCommand.hpp"

namespace tq::cli {

std::vector<Command> RegisterCommands(CLI::App& app) {
  std::vector<Command> commands;
  CLI::App* settings = app.add_subcommand("settings", "print every folder, file path and setting of the installation");
  commands.push_back({settings, [](const Context& c) { return RunSettings(c); }});
  auto drawing = std::make_shared<std::string>();
  CLI::App* info = app.add_subcommand("dxf-info", "version, encoding, entities, layers, applications, extended data and the problems of a drawing");
  info->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  commands.push_back({info, [drawing](const Context& c) { return RunDxfInfo(c, *drawing); }});
  return commands;
}

}  // namespace tq::cli
