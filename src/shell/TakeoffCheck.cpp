#include "shell/TakeoffCheck.hpp"

#include "drawing/EntityScan.hpp"

namespace tq {

std::optional<StandardDrawings> FindStandardDrawingsForTakeoff(const DrawingContext& context) {
  StandardDrawings found;
  if (!CollectSheetNumberTexts(context, found.with)) {
    context.editor.Print(u"\n標準図が見つかりません。\n");
    return std::nullopt;
  }
  SplitByInfoRecord(context.drawing, found.with, found.without);
  if (found.with.empty()) {
    context.editor.Print(u"\n情報設定済の標準図が見つかりません。\n");
    return std::nullopt;
  }
  return found;
}

}  // namespace tq
