#include "shell/MainDialog.hpp"

#include "drawing/EntityScan.hpp"
#include "info/AttrInfJob.hpp"
#include "output/RunFileOutput.hpp"
#include "shell/AddIn.hpp"
#include "takeoff/CollectInfJob.hpp"
#include "shell/TakeoffCheck.hpp"
#include "size/SizeDlg.hpp"

namespace tq {

namespace {
constexpr char16_t kOutsideFrames[] = u"\nError:標準図枠の範囲外です。\n";
constexpr char16_t kNoSheetNumber[] = u"\nｼｰﾄ番号が取得出来ません。\n";
constexpr char16_t kDrawingsWithoutInformation[] = u"情報が設定されていない標準図があります。";
}  // namespace

CMainDlg::CMainDlg(TqAddIn& addIn) : dialog::Dialog(IDD_MAIN, addIn.dialogServices()), addIn_(addIn) {}

void CMainDlg::OnCommand(int id, Notification code) {
  if (code == Notification::Clicked) {
    switch (id) {
      case IDC_SET: OnSet(); return;
      case IDC_INFO_CHECK: OnInfoCheck(); return;
      case IDC_TAKEOFF_CHECK: OnTakeoffCheck(); return;
      case IDC_RESTORE_COLOURS: return;  // "色を戻す": hidden, and bound to nothing on purpose
      default: break;
    }
  }
  dialog::Dialog::OnCommand(id, code);
}

std::optional<CMainDlg::Picked> CMainDlg::PickStandardDrawing(const DrawingContext& context) {
  for (;;) {
    Point3 point;
    if (!PickStdPoint(context.editor, point)) return std::nullopt;
    Picked picked;
    if (!LocateFrame(context, point, picked.frame)) {
      context.editor.Print(kOutsideFrames);
      continue;
    }
    if (!FindSheetNumberText(context, picked.frame, picked.sheetText)) {
      context.editor.Print(kNoSheetNumber);
      continue;
    }
    return picked;
  }
}

std::optional<DrawingContext> CMainDlg::WorkflowContext() {
  std::optional<LayerSettings> layers = addIn_.settings().LoadLayerSettings();
  if (!layers) {
    MessageBox(kNoDataFolderMessage, MessageIcon::Stop);
    return std::nullopt;
  }
  std::optional<CurrentDrawing> current = addIn_.Current();
  if (!current) return std::nullopt;
  return DrawingContext{current->document.drawing(), current->document.editor(), addIn_.settings(), *layers,
                        current->data.marking};
}

void CMainDlg::OnSet() {
  if (addIn_.sizeDialog()) return;  // one size setting dialog at a time, silently
  std::optional<DrawingContext> workflow = WorkflowContext();
  if (!workflow) return;
  const DrawingContext& context = *workflow;
  for (;;) {
    std::optional<Picked> picked = PickStandardDrawing(context);
    if (!picked) return;
    Text name;
    if (ReadSheetName(context.drawing, picked->sheetText, name)) SetDlgItemText(IDC_SHEET_NAME, name);
    auto created = std::make_unique<CSizeDlg>(context, picked->sheetText, picked->frame, addIn_.folders(),
                                              addIn_.dialogServices(), addIn_.sizeDialog());
    CSizeDlg& size = *created;
    addIn_.sizeDialog() = std::move(created);
    size.Create();
    if (size.Initialise()) {
      size.ShowWindow(true);
      return;
    }
    size.DestroyWindow();
    addIn_.sizeDialog().reset();
    context.editor.Print(u"\n");
  }
}

void CMainDlg::OnInfoCheck() {
  std::optional<DrawingContext> workflow = WorkflowContext();
  if (!workflow) return;
  const DrawingContext& context = *workflow;
  std::optional<Picked> picked = PickStandardDrawing(context);
  if (!picked) return;
  Text name;
  ReadSheetName(context.drawing, picked->sheetText, name);  // read, not shown: edit 200 changes only through "設定"
  // One standard drawing per click: the picking ends with its dialog.
  CAttrInfJob job(context.drawing, picked->sheetText, addIn_.folders(), addIn_.dialogServices());
  job.Run();
  context.editor.Print(u"\n");
}

void CMainDlg::OnTakeoffCheck() {
  std::optional<DrawingContext> workflow = WorkflowContext();
  if (!workflow) return;
  const DrawingContext& context = *workflow;
  std::optional<StandardDrawings> found = FindStandardDrawingsForTakeoff(context);
  if (!found) return;
  if (!found->without.empty()) {
    MarkFrames(context, found->without, true);
    MessageAnswer answer = MessageBox(kDrawingsWithoutInformation, MessageIcon::None, MessageButtons::OkCancel);
    MarkFrames(context, found->without, false);
    if (answer != MessageAnswer::Ok) return;
  }
  // The output line list belongs to this takeoff: a CI-NET code file writes the last build.
  OutputLineList outputLines;
  FileOutputContext output{addIn_.dialogServices(), addIn_.folders(), context.drawing, context.editor};
  CCollectInfJob job(addIn_.dialogServices(), context.drawing, context.editor, addIn_.folders(), found->with,
                     [&](const TakeoffData& data, const ReferenceTables& tables) {
                       RunFileOutput(output, data, tables, outputLines);
                     });
  job.DoModal();
}

}  // namespace tq
