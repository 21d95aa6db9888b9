#include "headless/HeadlessUi.hpp"

#include <algorithm>

#include "base/Paths.hpp"
#include "common/PointLine.hpp"
#include "common/UiLines.hpp"

namespace tq::headless {

namespace {

class MessageWaiter : public Waiter {
 public:
  explicit MessageWaiter(const MessageBoxRequest& box) : box_(box) {}
  Text Describe() const override { return u"a message box waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    AnswerLine read = ReadAnswerLine(line, box_.buttons);
    answer_ = read.answer;
    return read.refusal;
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
    SaveLine read = ReadSaveLine(line);
    if (read.refusal) return read.refusal;
    path_ = read.path;
    done_ = true;
    return std::nullopt;
  }
  bool Satisfied() const override { return done_; }
  const std::optional<Text>& path() const { return path_; }

 private:
  bool done_ = false;
  std::optional<Text> path_;
};

class PointWaiter : public PointPromptWaiter {
 public:
  bool Satisfied() const override { return result_.has_value(); }
  PickResult result() const { return *result_; }

 protected:
  void Answer(const PickResult& pick) override { result_ = pick; }

 private:
  std::optional<PickResult> result_;
};

}  // namespace

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
    Text path = CompleteSavePath(*waiter.path(), request);
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
