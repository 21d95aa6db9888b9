// tqstd-workbench [--ini FILE] [DRAWING...]: the drawings saved as DXF on screen.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <iostream>
#include <optional>

#include "qt/Fonts.hpp"
#include "qt/MainWindow.hpp"
#if TQ_HAVE_CALC
#include "calc/CalcWorkbook.hpp"
#endif

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tqstd-workbench"));
  CLI::App cli{"TQTStdInfo workbench: drawings saved as DXF on screen"};
  std::optional<std::string> ini;
  std::vector<std::string> drawings;
  std::string grab;
  std::optional<std::string> codepage;
  cli.add_option("--ini", ini, "the host settings file (else TQ_HOST_INI, else the example installation)");
  cli.add_option("--codepage", codepage, "system code page of text files (default CP932, or TQ_CODEPAGE)");
  cli.add_option("drawings", drawings, "drawings to open");
  cli.add_option("--grab", grab, "save a PNG of the window once every drawing is shown, then quit");
  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return cli.exit(e);
  }
  tq::Text hostIni;
  try {
    hostIni = tq::StandaloneHostServices::FindHostIni(ini);
  } catch (const std::exception& e) {
    std::cerr << "tqstd-workbench: " << e.what() << "\n";
    return 2;
  }
  std::string codepageName = codepage.value_or("");
  if (codepageName.empty())
    if (const char* env = std::getenv("TQ_CODEPAGE"); env && *env) codepageName = env;
  if (codepageName.empty()) codepageName = "CP932";
  tq::Result<tq::CodePage> systemCodePage = tq::CodePage::Open(codepageName);
  if (!systemCodePage) {
    std::cerr << "tqstd-workbench: " << systemCodePage.error().Describe() << "\n";
    return 2;
  }
  tq::qt::InstallFontSubstitutions();
  tq::qt::MainWindow window(hostIni, std::move(*systemCodePage));
#if TQ_HAVE_CALC
  // The size workbooks' engine: one office for the session, started at its first use.
  tq::calc::CalcEngine engine;
  tq::calc::CalcWorkbook workbook(engine);
  window.SetSizeWorkbook(&workbook);
#endif
  window.SetQuiet(!grab.empty());
  window.show();
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
