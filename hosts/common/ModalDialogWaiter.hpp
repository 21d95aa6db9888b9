#pragma once
// A modal dialog as a script meets it: it takes the dialog lines alone until it ends. Every
// host's modal dialog waits and refuses lines alike; only how a line reaches its controls is
// the host's.
#include <functional>

#include "common/ScriptRunner.hpp"

namespace tq {

class ModalDialogWaiter : public Waiter {
 public:
  // A dialog line (click, select, type, close, dump) applied by the host; `handled` says
  // whether the verb was one of them; the reason when it cannot be applied.
  using DialogLine = std::function<std::optional<Text>(const ScriptLine& line, bool* handled)>;

  ModalDialogWaiter(int dialogId, DialogLine dialogLine, std::function<bool()> ended)
      : dialogId_(dialogId), dialogLine_(std::move(dialogLine)), ended_(std::move(ended)) {}
  Text Describe() const override;
  std::optional<Text> Apply(const ScriptLine& line) override;
  bool Satisfied() const override { return ended_(); }

 private:
  int dialogId_;
  DialogLine dialogLine_;
  std::function<bool()> ended_;
};

}  // namespace tq
