#include "cli/Commands.hpp"

#include "cli/DxfInfoCommand.hpp"
#include "cli/FrameCommands.hpp"
#include "cli/InfoCommands.hpp"
#include "cli/TakeoffCommand.hpp"
#include "cli/ScriptCommand.hpp"
#include "cli/SettingsCommand.hpp"

namespace tq::cli {

std::vector<Command> RegisterCommands(CLI::App& app) {
  std::vector<Command> commands;
  CLI::App* settings = app.add_subcommand("settings", "print every folder, file path and setting of the installation");
  commands.push_back({settings, [](const Context& c) { return RunSettings(c); }});
  auto drawing = std::make_shared<std::string>();
  CLI::App* info = app.add_subcommand("dxf-info", "version, encoding, entities, layers, applications, extended data and the problems of a drawing");
  info->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  info->footer("Checks duplicate and non-hexadecimal handles, unbalanced \"{\" \"}\" and the 16 KB limit of extended\n"
               "data, unknown $ACADVER and $DWGCODEPAGE, invalid UTF-8 from AC1021 on and \"0 EOF\" before any section,\n"
               "each with its line. Exit status: 0 when no error is found (warnings alone do not count), 3 when\n"
               "the drawing holds an error, 1 when it cannot be read at all, 2 on a usage error.");
  commands.push_back({info, [drawing](const Context& c) { return RunDxfInfo(c, *drawing); }});

  CLI::App* sheets = app.add_subcommand("sheets", "every sheet-number text: handle, sheet name, frame row,col and record count");
  sheets->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  commands.push_back({sheets, [drawing](const Context& c) { return RunSheets(c, *drawing); }});

  auto point = std::make_shared<std::pair<double, double>>();
  CLI::App* locate = app.add_subcommand("locate", "the frame that holds a point, and its sheet-number text");
  locate->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  locate->add_option("X", point->first, "X of the point")->required();
  locate->add_option("Y", point->second, "Y of the point")->required();
  commands.push_back({locate, [drawing, point](const Context& c) { return RunLocate(c, *drawing, point->first, point->second); }});

  CLI::App* check = app.add_subcommand("check", "the standard drawings with and without information, as the takeoff check finds them");
  check->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  commands.push_back({check, [drawing](const Context& c) { return RunCheck(c, *drawing); }});

  auto mark = std::make_shared<MarkOptions>();
  CLI::App* markApp = app.add_subcommand(
      "mark", "colour the frames of the sheets named (or of every sheet without information), or restore them");
  markApp->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  markApp->add_flag("--restore", mark->restore, "restore the colours saved by marking");
  markApp->add_option("--sheet", mark->sheets, "a sheet name (repeatable)");
  markApp->add_option("-o,--output", mark->output, "where to save (default: the drawing itself, keeping a .bak)");
  commands.push_back({markApp, [drawing, mark](const Context& c) { return RunMark(c, *drawing, *mark); }});

  auto infoOptions = std::make_shared<InfoOptions>();
  CLI::App* infoApp = app.add_subcommand("info", "the information records of one standard drawing");
  infoApp->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  infoApp->add_option("--sheet", infoOptions->sheet, "the sheet name of the standard drawing");
  infoApp->add_option("--at", infoOptions->at, "a point X,Y inside its frame");
  infoApp->add_option("--handle", infoOptions->handle, "the handle of its sheet-number text");
  infoApp->add_flag("--json", infoOptions->json, "the records as JSON, members as read (fill rule applied)");
  commands.push_back({infoApp, [drawing, infoOptions](const Context& c) { return RunInfo(c, *drawing, *infoOptions); }});

  auto ab = std::make_shared<std::string>();
  CLI::App* choices = app.add_subcommand("choices", "every choice list the attribute dialog would offer, by field");
  choices->add_option("--ab", *ab, "A or B: which material files (default A)");
  commands.push_back({choices, [ab](const Context& c) { return RunChoices(c, *ab); }});

  auto takeoff = std::make_shared<TakeoffOptions>();
  CLI::App* takeoffApp = app.add_subcommand(
      "takeoff",
      "the takeoff of every standard drawing with information, written as the file output writes it: the list\n"
      "(拾い), the aggregate (集計) or the CI-NET code file, in the system code page with CR LF. Options left out\n"
      "take what the file output dialog starts with (the remembered values, else list, tab, the first category);\n"
      "the choices are remembered in \"ファイル出力前回値.dat\" as the dialog does.");
  takeoffApp->add_option("DRAWING", *drawing, "the DXF drawing")->required();
  takeoffApp->add_option("--kind", takeoff->kind, "list, aggregate or cinet");
  takeoffApp->add_option("--separator", takeoff->separator, "comma, pipe or tab");
  takeoffApp->add_option("--category", takeoff->category, "the output category (出力区分): A材, B材 or any other for both")
      ->each([takeoff](const std::string&) { takeoff->categoryGiven = true; });
  takeoffApp->add_option("-o,--output", takeoff->output, "the file to write (default: the drawing's name, .txt)");
  takeoffApp->add_flag("--register", takeoff->registerRows, "also store the rows in the drawing, as 登録 does, and save it");
  takeoffApp->add_flag("--json", takeoff->json, "print the 23-column items of the takeoff check instead of writing a file");
  commands.push_back({takeoffApp, [drawing, takeoff](const Context& c) { return RunTakeoff(c, *drawing, *takeoff); }});
  auto script = std::make_shared<ScriptOptions>();
  CLI::App* scriptApp = app.add_subcommand(
      "script",
      "run the command TQ_STD_INF and its dialogs from a script (one action a line: command, point, escape,\n"
      "answer, save, click, select, type, close, dump) and print the transcript as JSON Lines. At the end a\n"
      "drawing that changed is saved (atomically, keeping DRAWING.bak) or written to OUT; a line that cannot\n"
      "be applied ends the run with an error event, exit status 1 and nothing saved.");
  scriptApp->add_option("DRAWING", script->drawing, "the DXF drawing")->required();
  scriptApp->add_option("SCRIPT", script->script, "the script file; - or none reads standard input");
  scriptApp->add_option("-o,--output", script->output, "write a changed drawing here instead of saving it");
  scriptApp->add_flag("--no-save", script->noSave, "write nothing, whatever changed");
  commands.push_back({scriptApp, [script](const Context& c) { return RunScript(c, *script); }});
  return commands;
}

}  // namespace tq::cli
