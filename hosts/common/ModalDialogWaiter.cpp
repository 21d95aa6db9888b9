#include "common/ModalDialogWaiter.hpp"

#include <string>

namespace tq {

Text ModalDialogWaiter::Describe() const { return u"the dialog " + FromUtf8(std::to_string(dialogId_)) + u" waits"; }

std::optional<Text> ModalDialogWaiter::Apply(const ScriptLine& line) {
  bool handled = false;
  std::optional<Text> why = dialogLine_(line, &handled);
  if (!handled) return u"'" + line.verb + u"' does not fit: " + Describe();
  return why;
}

}  // namespace tq
