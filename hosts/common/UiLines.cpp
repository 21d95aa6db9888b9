#include "common/UiLines.hpp"

#include <filesystem>

#include "base/Paths.hpp"
#include "common/Transcript.hpp"

namespace tq {

namespace {

Text ButtonList(MessageButtons buttons) {
  Text list;
  for (MessageAnswer b : ButtonsOf(buttons)) list += (list.empty() ? u"" : u", ") + FromUtf8(AnswerName(b));
  return list;
}

bool HasExtension(TextView path) {
  size_t slash = path.find_last_of(u"\\/");
  size_t dot = path.rfind(u'.');
  return dot != TextView::npos && (slash == TextView::npos || dot > slash) && dot + 1 < path.size();
}

}  // namespace

AnswerLine ReadAnswerLine(const ScriptLine& line, MessageButtons buttons) {
  if (line.verb != u"answer") return {std::nullopt, u"'" + line.verb + u"' does not fit: a message box waits (" + ButtonList(buttons) + u")"};
  if (line.args.size() != 1) return {std::nullopt, u"'answer' takes one button: answer OK|Cancel|Yes|No"};
  for (MessageAnswer b : ButtonsOf(buttons))
    if (EqualNoCase(line.args[0], FromUtf8(AnswerName(b)))) return {b, std::nullopt};
  return {std::nullopt, u"the message box has no button " + line.args[0] + u": its buttons are " + ButtonList(buttons)};
}

SaveLine ReadSaveLine(const ScriptLine& line) {
  if (line.verb == u"escape") {
    if (!line.args.empty()) return {std::nullopt, u"'escape' takes nothing"};
    return {std::nullopt, std::nullopt};
  }
  if (line.verb != u"save") return {std::nullopt, u"'" + line.verb + u"' does not fit: a save-file dialog waits (save PATH or escape)"};
  if (line.args.size() != 1 || line.args[0].empty()) return {std::nullopt, u"'save' takes one path: save PATH"};
  return {line.args[0], std::nullopt};
}

Text CompleteSavePath(TextView typed, const SaveFileRequest& request) {
  Text path(typed);
  if (!HasExtension(path) && !request.extension.empty()) path += u"." + request.extension;
  return FromFsPath(std::filesystem::absolute(ToFsPath(path)).lexically_normal());
}

Text OverwriteQuestion(TextView path) { return Text(path) + u" は既に存在します。\n上書きしますか?"; }

}  // namespace tq
