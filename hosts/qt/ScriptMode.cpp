#include "qt/ScriptMode.hpp"

#include <QApplication>
#include <QTimer>

#include "common/ScriptFile.hpp"
#include "common/ScriptSave.hpp"
#include "qt/MainWindow.hpp"

namespace tq::qt {

ScriptMode::ScriptMode(MainWindow& window, ScriptModeOptions options, std::ostream& out, std::ostream& err, Stop stop)
    : window_(window), options_(std::move(options)), out_(out), err_(err), stop_(std::move(stop)) {}

ScriptMode::~ScriptMode() = default;

void ScriptMode::Quit(int status) {
  QTimer::singleShot(0, qApp, [status] { QApplication::exit(status); });
}

void ScriptMode::Start() {
  Result<Text> script = ReadScriptText(options_.script, window_.systemCodePage());
  if (!script) {
    err_ << "tqstd-workbench: " << script.error().Describe() << "\n";
    return Quit(1);
  }
  session_ = std::make_unique<WorkbenchScript>(window_, *script, out_);
  if (options_.screenshots) {
    std::error_code ec;
    std::filesystem::create_directories(*options_.screenshots, ec);
    screenshots_ = std::make_unique<Screenshots>(window_, *options_.screenshots);
    session_->transcript().SetObserver([this](std::string_view kind) { screenshots_->BeforeEvent(kind); });
  }
  session_->runner().SetStopHandler([this] {
    FinishScreenshots();
    out_.flush();
    stop_();
  });
  QObject::connect(&window_, &MainWindow::drawingLoaded, &window_, [this](DrawingTab* tab) {
    QTimer::singleShot(0, tab, [this, tab] { Quit(Finish(*tab)); });
  });
  QObject::connect(&window_, &MainWindow::drawingFailed, &window_, [this](const QString& message) {
    err_ << "tqstd-workbench: " << message.toStdString() << "\n";
    Quit(1);
  });
  window_.OpenDrawing(options_.drawing);
}

int ScriptMode::Finish(DrawingTab& tab) {
  // The file the run may write is locked before the first line, as tqstd script locks it: a
  // second writer stops before anything runs, and no other writer's changes are saved over.
  ScriptOutput output{tab.path(), options_.output, options_.noSave};
  std::optional<os::LockHandle> lock = LockTarget(tab, output);
  if (!lock) return 1;
  if (!session_->Run()) return 1;  // nothing is saved after a line that could not be applied
  Status saved = SaveAfterScript(*tab.drawing(), output, session_->transcript());
  bool pictures = FinishScreenshots();
  // Windows closed as the workbench goes away are not part of the run.
  session_->transcript().End();
  if (!saved) {
    err_ << "tqstd-workbench: " << saved.error().Describe() << "\n";
    return 1;
  }
  return pictures ? 0 : 1;
}

std::optional<os::LockHandle> ScriptMode::LockTarget(const DrawingTab& tab, const ScriptOutput& output) {
  if (output.noSave) return os::LockHandle();
  std::optional<Error> refused;
  os::LockHandle held;
  if (output.target() == tab.path()) {
    refused = tab.lockError();  // the tab holds the drawing's own lock from its opening
  } else if (Result<os::LockHandle> lock = os::AcquireDrawingLock(output.target()); lock) {
    held = std::move(lock).value();
  } else {
    refused = lock.error();
  }
  if (!refused) return held;
  err_ << "tqstd-workbench: " << refused->Describe() << "; nothing was changed\n";
  return std::nullopt;
}

bool ScriptMode::FinishScreenshots() {
  if (!screenshots_) return true;
  screenshots_->Flush();
  if (screenshots_->status()) return true;
  err_ << "tqstd-workbench: " << screenshots_->status().error().Describe() << "\n";
  return false;
}

}  // namespace tq::qt
