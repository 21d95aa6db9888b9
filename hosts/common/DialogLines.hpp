#pragma once
// The script lines that act on dialogs (click, select, type, close, dump): how each is read,
// when it does not fit, and the words of the reason. Every host applies them through the
// same checks and only acts in its own way once a line fits.
#include <optional>

#include "common/ScriptLine.hpp"
#include "dialog/DialogTemplate.hpp"
#include "ports/DialogWindow.hpp"

namespace tq {

// What a host does for a line that fits.
class DialogLineActions {
 public:
  virtual ~DialogLineActions() = default;
  virtual void Close() = 0;
  // A button, check box or radio button.
  virtual void Click(const dialog::ControlTemplate& control) = 0;
  virtual void SelectEntry(const dialog::ControlTemplate& combo, int index) = 0;
  virtual void SelectRow(const dialog::ControlTemplate& list, int row) = 0;
  // An edit that is not read-only, or a combo that takes text.
  virtual void Type(const dialog::ControlTemplate& control, TextView text) = 0;
  virtual void Dump(std::optional<int> control) = 0;
};

bool IsDialogVerb(TextView verb);

// The dialog (and control) a dialog line names; the reason when it names none.
struct DialogLineAddress {
  std::optional<ControlAddress> address;
  std::optional<Text> refusal;
};
DialogLineAddress AddressOf(const ScriptLine& line);

// Whether the dialog may take the line: it is open (`open`), not behind the modal dialog
// `owner` that takes input alone, and not modal while the command line waits (`owner` null).
// Dumps are taken by any open dialog. The reason when it may not.
std::optional<Text> DialogAccessRefusal(const ScriptLine& line, int dialogId, bool open, bool modal,
                                        std::optional<int> owner);

// Applies a line to an open dialog that may take it: the controls' state is read through the
// window, the action is the host's. The reason when the line does not fit the control.
std::optional<Text> ApplyDialogLine(const ScriptLine& line, const ControlAddress& address,
                                    const dialog::DialogTemplate& dialogTemplate, const DialogWindow& window,
                                    DialogLineActions& actions);

}  // namespace tq
