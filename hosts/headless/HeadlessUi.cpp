#include "headless/HeadlessUi.hpp"

#include <algorithm>

#include "base/Paths.hpp"
#include "common/PointLine.hpp"

namespace tq::headless {

namespace {

Text ButtonList(MessageButtons buttons) {
  Text list;
  for (MessageAnswer b : ButtonsOf(buttons)) list += (list.empty() ? u"" : u", ") + FromUtf8(AnswerName(b));
  return list;
}

class MessageWaiter : public Waiter {
 public:
  explicit MessageWaiter(const MessageBoxRequest& box) : box_(box) {}
  Text Describe() const override { return u"a message box waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    if (line.verb != u"answer") return u"'" + line.verb + u"' does not fit: a message box waits (" + ButtonList(box_.buttons) + u")";
    if (line.args.size() != 1) return u"'answer' takes one button: answer OK|Cancel|Yes|No";
    for (MessageAnswer b : ButtonsOf(box_.buttons))
      if (EqualNoCase(line.args[0], FromUtf8(AnswerName(b)))) {
        answer_ = b;
        return std::nullopt;
      }
    return u"the message box has no button " + line.args[0] + u": its buttons are " + ButtonList(box_.buttons);
  }
  bool Satisfied() const override { return answer_.has_value(); }
  MessageAnswer answer() const { return *answer_; }

 private:
  const MessageBoxRequest& box_;
  std::optional<MessageAnswer> answer_;
};

class SaveWaiter : public Waiter {
 public:
  Text Describe() const override { return u"a save-file dialog waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    if (line.verb == u"escape") {
      if (!line.args.empty()) return u"'escape' takes nothing";
      done_ = true;
      return std::nullopt;
    }
    if (line.verb != u"save") return u"'" + line.verb + u"' does not fit: a save-file dialog waits (save PATH or escape)";
    if (line.args.size() != 1 || line.args[0].empty()) return u"'save' takes one path: save PATH";
    path_ = line.args[0];
    done_ = true;
    return std::nullopt;
  }
  bool Satisfied() const override { return done_; }
  const std::optional<Text>& path() const { return path_; }

 private:
  bool done_ = false;
  std::optional<Text> path_;
};

class PointWaiter : public Waiter {
 public:
  Text Describe() const override { return u"a point prompt waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    Result<PickResult> pick = ReadPointLine(line);
    if (!pick) return pick.error().message;
    result_ = *pick;
    return std::nullopt;
  }
  bool Satisfied() const override { return result_.has_value(); }
  PickResult result() const { return *result_; }

 private:
  std::optional<PickResult> result_;
};

bool HasExtension(TextView path) {
  size_t slash = path.find_last_of(u"\\/");
  size_t dot = path.rfind(u'.');
  return dot != TextView::npos && (slash == TextView::npos || dot > slash) && dot + 1 < path.size();
}

}  // namespace

Text OverwriteQuestion(TextView path) { return Text(path) + u" は既に存在します。\n上書きしますか?"; }

MessageAnswer HeadlessUi::ShowMessage(const MessageBoxRequest& box) {
  transcript_.MessageBox(box);
  MessageWaiter waiter(box);
  runner_.Serve(waiter);
  return waiter.answer();
}

std::optional<Text> HeadlessUi::AskSaveFile(const SaveFileRequest& request) {
  transcript_.SaveFile(request);
  for (;;) {
    SaveWaiter waiter;
    runner_.Serve(waiter);
    if (!waiter.path()) return std::nullopt;
    Text path = *waiter.path();
    if (!HasExtension(path) && !request.extension.empty()) path += u"." + request.extension;
    path = FromFsPath(std::filesystem::absolute(ToFsPath(path)).lexically_normal());
    if (!request.overwritePrompt || !std::filesystem::exists(ToFsPath(path))) return path;
    MessageBoxRequest question{OverwriteQuestion(path), MessageIcon::Warning, MessageButtons::YesNo, 1};
    if (ShowMessage(question) == MessageAnswer::Yes) return path;
    // No: the save-file dialog asks again.
  }
}

PickResult HeadlessEditor::GetPoint(TextView prompt) {
  transcript_.Prompt(prompt);
  PointWaiter waiter;
  runner_.Serve(waiter);
  return waiter.result();
}

}  // namespace tq::headless
