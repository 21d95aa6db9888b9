#pragma once
// The add-in as the workbench runs it: "TQ_STD_INF" with the Qt dialogs and boxes, the
// workbench's editor and the open tabs as its documents, each with its own per-document data.
#include <memory>

#include "qt/QtDialogHost.hpp"
#include "qt/QtUi.hpp"
#include "qt/WorkbenchDocuments.hpp"
#include "shell/AddIn.hpp"
#include "site/Folders.hpp"

namespace tq::qt {

class MainWindow;

class WorkbenchAddIn {
 public:
  explicit WorkbenchAddIn(MainWindow& window);
  ~WorkbenchAddIn();

  // The command: shows the modeless main dialog (made on first use).
  void RunCommand() { addIn_->RunCommand(); }
  // While a point prompt waits the drawing has the input: the open dialogs stay shown, with
  // what they show, and take no input until the prompt is answered.
  void PromptWaiting(bool waiting);

  TqAddIn& addIn() { return *addIn_; }
  QtDialogHost& dialogs() { return dialogs_; }
  QtUi& ui() { return ui_; }
  WorkbenchDocuments& documents() { return documents_; }

 private:
  Folders folders_;
  QtDialogHost dialogs_;
  QtUi ui_;
  WorkbenchDocuments documents_;
  std::unique_ptr<TqAddIn> addIn_;
};

}  // namespace tq::qt
