#pragma once
// "ﾌｧｲﾙ 出力" of the takeoff check: the file output dialog, then the output it asks for, with
// the current document locked throughout.
#include "dialog/Dialog.hpp"
#include "output/FileOutput.hpp"
#include "ports/Editor.hpp"

namespace tq {

inline constexpr char16_t kOutputFinished[] = u"ファイル出力が終了しました";
inline constexpr char16_t kOutputFilter[] = u"ﾃｷｽﾄﾌｧｲﾙ (*.txt)|*.txt|CSV file (*.csv)|*.csv|All files (*.*)|*.*||";

// What the file output works on: the takeoff's drawing and the host's dialogs.
struct FileOutputContext {
  dialog::DialogServices services;
  const Folders& folders;
  Drawing& drawing;
  Editor& editor;
};

// The rows as the takeoff check holds them; `lines` is the takeoff's output line list, kept
// from one output to the next for the CI-NET code file.
void RunFileOutput(const FileOutputContext& context, const TakeoffData& data, const ReferenceTables& tables,
                   OutputLineList& lines);

}  // namespace tq
