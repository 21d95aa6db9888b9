#pragma once
// The script lines that answer a message box ("answer") or a save-file dialog ("save",
// "escape"), and what a save-file dialog does with the name it is given: every host reads
// them and words their refusals alike.
#include <optional>

#include "common/ScriptLine.hpp"
#include "ports/Ui.hpp"

namespace tq {

// The button an "answer" line presses, or the reason it presses none.
struct AnswerLine {
  std::optional<MessageAnswer> answer;
  std::optional<Text> refusal;
};
AnswerLine ReadAnswerLine(const ScriptLine& line, MessageButtons buttons);

// A save-file dialog's line: the path given ("save PATH"), nothing for "escape", or the reason.
struct SaveLine {
  std::optional<Text> path;
  std::optional<Text> refusal;
};
SaveLine ReadSaveLine(const ScriptLine& line);

// The full path a save-file dialog returns for a typed name: the default extension added to a
// name without one, a relative name taken from the current folder.
Text CompleteSavePath(TextView typed, const SaveFileRequest& request);
// The message a save-file dialog asks before it replaces an existing file.
Text OverwriteQuestion(TextView path);

}  // namespace tq
