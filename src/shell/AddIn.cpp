#include "shell/AddIn.hpp"

#include "shell/MainDialog.hpp"

namespace tq {

TqAddIn::TqAddIn(const Folders& folders, Documents& documents, dialog::DialogServices services)
    : folders_(folders), settings_(folders), documents_(documents), services_(services), dataManager_(documents) {}

TqAddIn::~TqAddIn() = default;

std::optional<CurrentDrawing> TqAddIn::Current() {
  Document* document = documents_.Current();
  if (!document) return std::nullopt;
  return CurrentDrawing{*document, dataManager_.DocData(*document)};
}

void TqAddIn::RunCommand() {
  if (mainDialog_) {
    if (!mainDialog_->IsWindowVisible()) mainDialog_->ShowWindow(true);
    return;
  }
  mainDialog_ = std::make_unique<CMainDlg>(*this);
  mainDialog_->Create();
  mainDialog_->ShowWindow(true);
}

}  // namespace tq
