#include "output/RunFileOutput.hpp"

#include "base/Paths.hpp"
#include "drawing/FrameGrid.hpp"
#include "output/FileOutDlg.hpp"

namespace tq {

void RunFileOutput(const FileOutputContext& context, const TakeoffData& data, const ReferenceTables& tables,
                   OutputLineList& lines) {
  std::unique_ptr<Drawing::WriteLock> lock = context.drawing.LockForWrite();
  CFileOutDlg dialog(context.services, context.folders);
  if (dialog.DoModal() != kIdOk) return;
  OutputHooks hooks;
  hooks.choosePath = [&](TextView name) -> std::optional<std::filesystem::path> {
    std::optional<Text> chosen = context.services.ui.AskSaveFile({Text(name), u"txt", kOutputFilter, true});
    if (!chosen) return std::nullopt;
    return ToFsPath(*chosen);
  };
  hooks.sheetName = [&](ObjectId text) {
    Text name;
    ReadSheetName(context.drawing, text, name);
    return name;
  };
  hooks.warn = [&](TextView warning) { context.editor.Print(warning); };
  Result<OutputResult> result = OutputTakeoff(data, tables, context.folders, dialog.choices(), context.drawing.FileName(),
                                              lines, hooks);
  // A file that could not be made is named on the command line; the completion box follows
  // every "出力" all the same.
  if (!result) context.editor.Print(u"\nError:" + result.error().message + u"\n");
  context.services.ui.ShowMessage({kOutputFinished, MessageIcon::Information, MessageButtons::Ok, 0});
}

}  // namespace tq
