#pragma once
// CMainDlg: the one modeless window of the add-in, with its three workflows.
#include "dialog/Dialog.hpp"
#include "drawing/FrameGrid.hpp"
#include "res/resource.h"

namespace tq {

class TqAddIn;

class CMainDlg : public dialog::Dialog {
 public:
  explicit CMainDlg(TqAddIn& addIn);

  void OnSet();
  void OnInfoCheck();
  void OnTakeoffCheck();

 protected:
  void OnCommand(int id, Notification code) override;

 private:
  // The standard drawing picked in the current drawing: its frame and sheet-number text.
  struct Picked {
    FramePolygon frame;
    ObjectId sheetText;
  };
  // The context of a workflow in the current drawing (LoadLayerSettings first); nothing,
  // after its message box, when the data folder is not set.
  std::optional<DrawingContext> WorkflowContext();
  // Asks for points until one lies in a frame with a sheet-number text; nothing on Escape.
  std::optional<Picked> PickStandardDrawing(const DrawingContext& context);

  TqAddIn& addIn_;
};

}  // namespace tq
