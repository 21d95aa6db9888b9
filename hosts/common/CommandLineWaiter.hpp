#pragma once
// The command line as a script meets it: "command TQ_STD_INF" runs the command, and the
// lines for the modeless dialogs that are open go to them. Every host's command line takes
// and refuses lines alike, so the transcripts agree.
#include <functional>

#include "common/ScriptRunner.hpp"

namespace tq {

class CommandLineWaiter : public Waiter {
 public:
  // Runs the command, named as the script wrote it, as the host's command line does.
  using RunCommand = std::function<void(TextView name)>;
  // A dialog line (click, select, type, close, dump) to the open modeless dialogs; `handled`
  // says whether the verb was one of them; the reason when it cannot be applied.
  using DialogLine = std::function<std::optional<Text>(const ScriptLine& line, bool* handled)>;

  CommandLineWaiter(RunCommand runCommand, DialogLine dialogLine)
      : runCommand_(std::move(runCommand)), dialogLine_(std::move(dialogLine)) {}
  Text Describe() const override { return u"the command line waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override;
  // The command line waits for ever: the end of the script ends it.
  bool Satisfied() const override { return false; }

 private:
  RunCommand runCommand_;
  DialogLine dialogLine_;
};

}  // namespace tq
