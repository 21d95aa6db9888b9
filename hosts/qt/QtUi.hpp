#pragma once
// Message boxes, the save-file dialog and status-bar progress of the workbench. A script can
// answer the box or the dialog that is open through its own buttons.
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <functional>
#include <optional>

#include "common/ScriptLine.hpp"
#include "common/Transcript.hpp"
#include "ports/Ui.hpp"

class QLabel;
class QProgressBar;
class QStatusBar;
class QWidget;

namespace tq::qt {

class QtUi : public Ui {
 public:
  // `parent`: the window the boxes belong to; `statusBar`: where progress shows (may be null).
  QtUi(QWidget* parent, QStatusBar* statusBar);
  ~QtUi() override;

  MessageAnswer ShowMessage(const MessageBoxRequest& box) override;
  // The name typed gets the default extension when it has none; an existing file is asked
  // about (Yes/No, No by default) before it is chosen.
  std::optional<Text> AskSaveFile(const SaveFileRequest& request) override;
  void BeginProgress(TextView text, int range) override;
  void SetProgress(int position) override;
  void EndProgress() override;

  // "answer BUTTON" presses the button of the open message box; "save PATH" and "escape"
  // finish the open save-file dialog. The reason when the line does not fit what is open;
  // `handled` false when neither is open.
  std::optional<Text> ApplyScriptLine(const ScriptLine& line, bool* handled);
  QMessageBox* openBox() const { return box_; }
  QFileDialog* openSaveDialog() const { return save_; }
  void SetTranscript(Transcript* transcript) { transcript_ = transcript; }
  // Told when a message box or the save-file dialog is about to wait in its loop (a script
  // serves it from there).
  void SetWaitObserver(std::function<void()> observer) { waitObserver_ = std::move(observer); }

 private:
  std::optional<Text> AskOnce(const SaveFileRequest& request);

  QPointer<QWidget> parent_;
  QPointer<QLabel> progressText_;
  QPointer<QProgressBar> progress_;
  QPointer<QMessageBox> box_;
  MessageButtons boxButtons_ = MessageButtons::Ok;
  QPointer<QFileDialog> save_;
  const SaveFileRequest* saveRequest_ = nullptr;
  Transcript* transcript_ = nullptr;
  std::function<void()> waitObserver_;
};

// The platform's filter "text|pattern|…||" as Qt's name filters ("text (pattern)").
QStringList NameFilters(TextView filter);

}  // namespace tq::qt
