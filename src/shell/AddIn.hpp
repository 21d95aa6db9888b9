#pragma once
// What the add-in keeps while it is loaded: the installation, the host's documents and
// dialogs, the one main dialog, the one size setting dialog, and the per-document data. The
// host owns it and hands it to the command; nothing of it is process-wide.
#include <memory>
#include <optional>

#include "dialog/Dialog.hpp"
#include "drawing/FrameGrid.hpp"
#include "ports/Documents.hpp"
#include "shell/DocData.hpp"
#include "site/Settings.hpp"

namespace tq {

class CMainDlg;

// The current drawing with what the rules of the drawing need of it.
struct CurrentDrawing {
  Document& document;
  CDocData& data;
};

class TqAddIn {
 public:
  TqAddIn(const Folders& folders, Documents& documents, dialog::DialogServices services);
  ~TqAddIn();

  // The command "TQ_STD_INF": creates and shows the main dialog, or shows it again.
  void RunCommand();

  const Folders& folders() const { return folders_; }
  const StdSettings& settings() const { return settings_; }
  dialog::DialogServices dialogServices() const { return services_; }
  // The drawing the workflows act on; nothing when no drawing is open.
  std::optional<CurrentDrawing> Current();
  AsdkDataManager<CDocData>& dataManager() { return dataManager_; }

  // `MainDialogPtr`: null until the first command.
  CMainDlg* mainDialog() { return mainDialog_.get(); }
  // `SizeDialogPtr`: the open size setting dialog; null while none is open.
  std::unique_ptr<dialog::Dialog>& sizeDialog() { return sizeDialog_; }

 private:
  const Folders& folders_;
  StdSettings settings_;
  Documents& documents_;
  dialog::DialogServices services_;
  AsdkDataManager<CDocData> dataManager_;
  std::unique_ptr<CMainDlg> mainDialog_;
  std::unique_ptr<dialog::Dialog> sizeDialog_;
};

}  // namespace tq
