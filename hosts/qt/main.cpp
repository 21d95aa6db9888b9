// tqstd-workbench [--ini FILE] [DRAWING...]: the drawings saved as DXF on screen;
// tqstd-workbench [--ini FILE] DRAWING --script SCRIPT: a script run through the same widgets.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <iostream>
#include <optional>

#include "qt/Fonts.hpp"
#include "qt/MainWindow.hpp"
#include "qt/ScriptMode.hpp"

#if TQ_HAVE_CALC
#include "calc/CalcWorkbook.hpp"
#endif

namespace {

std::filesystem::path PathOf(const std::string& utf8) { return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())); }

const char* const kScriptHelp =
    "With --script the workbench runs the script through its own widgets, as tqstd script runs it without\n"
    "them: a command is typed into the command line, a point is a click on the canvas where that drawing\n"
    "point shows (the view pans to it first when it lies outside), escape is Esc, and the dialogs, message\n"
    "boxes and the save-file dialog take their lines through their controls. The transcript (JSON Lines)\n"
    "goes to standard output and is the one tqstd script writes for the same script and files. At the end\n"
    "a drawing that changed is saved with DRAWING.bak, or written to -o OUT; --no-save writes nothing; a\n"
    "script that changed nothing writes nothing. Exit status: 0 when every line was applied, 1 when a line\n"
    "could not be applied (an error event names it; nothing is saved) or a file cannot be read or written,\n"
    "2 on a usage error. --screenshots DIR saves a PNG of the window, with its open dialogs over it, after\n"
    "every dialog, messagebox and dump event: DIR/001-dialog.png, DIR/002-messagebox.png, ...\n";

}  // namespace

int main(int argc, char** argv) {
  // The options first: a usage error or --help needs no display.
  CLI::App cli{"TQTStdInfo workbench: drawings saved as DXF on screen"};
  cli.footer(kScriptHelp);
  std::optional<std::string> ini;
  std::vector<std::string> drawings;
  std::string grab;
  std::optional<std::string> codepage;
  std::optional<std::string> script;
  std::string output;
  bool noSave = false;
  std::optional<std::string> screenshots;
  cli.add_option("--ini", ini, "the host settings file (else TQ_HOST_INI, else the example installation)");
  cli.add_option("--codepage", codepage, "system code page of text files (default CP932, or TQ_CODEPAGE)");
  cli.add_option("drawings", drawings, "drawings to open (one with --script)");
  cli.add_option("--grab", grab, "save a PNG of the window once every drawing is shown, then quit");
  cli.add_option("--script", script, "run this script on the drawing (- reads standard input), print the transcript, quit");
  cli.add_option("-o,--output", output, "with --script: write a changed drawing here instead of saving it");
  cli.add_flag("--no-save", noSave, "with --script: write nothing, whatever changed");
  cli.add_option("--screenshots", screenshots, "with --script: a PNG of the window after every dialog, messagebox and dump event");
  try {
    cli.parse(argc, argv);
    if (script && drawings.size() != 1) throw CLI::ValidationError("--script", "takes exactly one DRAWING");
    if (!script && (!output.empty() || noSave || screenshots))
      throw CLI::ValidationError("-o, --no-save, --screenshots", "belong to --script");
  } catch (const CLI::ParseError& e) {
    return cli.exit(e) == 0 ? 0 : 2;
  }
  tq::Text hostIni;
  try {
    hostIni = tq::StandaloneHostServices::FindHostIni(ini);
  } catch (const std::exception& e) {
    std::cerr << "tqstd-workbench: " << e.what() << "\n";
    return 1;  // a settings file that cannot be read, as for tqstd
  }
  std::string codepageName = codepage.value_or("");
  if (codepageName.empty())
    if (const char* env = std::getenv("TQ_CODEPAGE"); env && *env) codepageName = env;
  if (codepageName.empty()) codepageName = "CP932";
  tq::Result<tq::CodePage> systemCodePage = tq::CodePage::Open(codepageName);
  if (!systemCodePage) {
    std::cerr << "tqstd-workbench: " << systemCodePage.error().Describe() << "\n";
    return 1;  // a value that is wrong, as for tqstd
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tqstd-workbench"));
  tq::qt::InstallFontSubstitutions();
  tq::qt::MainWindow window(hostIni, std::move(*systemCodePage));
#if TQ_HAVE_CALC
  // The size workbooks' engine: one office for the session, started at its first use.
  tq::calc::CalcEngine engine;
  tq::calc::CalcWorkbook workbook(engine);
  window.SetSizeWorkbook(&workbook);
#endif
  window.SetQuiet(!grab.empty() || script);
  window.show();
  if (script) {
    tq::qt::ScriptModeOptions options{PathOf(drawings[0]), *script, PathOf(output), noSave,
                                      screenshots ? std::optional(PathOf(*screenshots)) : std::nullopt};
    auto stop = [&] {
#if TQ_HAVE_CALC
      engine.Shutdown();  // the office and its profile do not outlive the run
#endif
      std::_Exit(1);
    };
    tq::qt::ScriptMode mode(window, std::move(options), std::cout, std::cerr, stop);
    mode.Start();
    return QApplication::exec();
  }
  int pending = static_cast<int>(drawings.size());
  int status = 0;
  auto oneDone = [&] {
    if (--pending > 0 || grab.empty()) return;
    // The last drawing's first picture is painted before the window is grabbed.
    QTimer::singleShot(0, &window, [&] {
      if (!window.grab().save(QString::fromStdString(grab))) {
        std::cerr << "tqstd-workbench: cannot write " << grab << "\n";
        status = 1;
      }
      QApplication::exit(status);
    });
  };
  QObject::connect(&window, &tq::qt::MainWindow::drawingLoaded, &window, [&](tq::qt::DrawingTab*) { oneDone(); });
  QObject::connect(&window, &tq::qt::MainWindow::drawingFailed, &window, [&] {
    status = 1;
    oneDone();
  });
  for (const std::string& d : drawings) window.OpenDrawing(std::filesystem::path(d));
  if (!grab.empty() && drawings.empty()) QTimer::singleShot(0, &window, [&] { oneDone(); });
  int code = QApplication::exec();
  return status ? status : code;
}
