#include "headless/HeadlessDialogs.hpp"

#include <algorithm>
#include <string>

namespace tq::headless {

namespace {

Text Number(long long n) { return FromUtf8(std::to_string(n)); }

Text Address(const HeadlessWindow& window, int id) {
  return Number(window.dialogTemplate().id) + u":" + Number(id);
}

// A modal dialog takes the lines addressed to it until it ends.
class ModalWaiter : public Waiter {
 public:
  ModalWaiter(HeadlessDialogs& dialogs, HeadlessWindow& window) : dialogs_(dialogs), window_(window) {}
  Text Describe() const override { return u"the dialog " + Number(window_.dialogTemplate().id) + u" waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    bool handled = false;
    std::optional<Text> why = dialogs_.ApplyDialogLine(line, &window_, &handled);
    if (!handled) return u"'" + line.verb + u"' does not fit: the dialog " + Number(window_.dialogTemplate().id) + u" waits";
    return why;
  }
  bool Satisfied() const override { return window_.ended(); }

 private:
  HeadlessDialogs& dialogs_;
  HeadlessWindow& window_;
};

}  // namespace

std::unique_ptr<DialogWindow> HeadlessDialogs::CreateDialogWindow(const dialog::DialogTemplate& dialogTemplate,
                                                                  DialogEvents& events, bool modal) {
  return std::make_unique<HeadlessWindow>(*this, dialogTemplate, events, modal);
}

void HeadlessDialogs::Unregister(HeadlessWindow& window) {
  windows_.erase(std::remove(windows_.begin(), windows_.end(), &window), windows_.end());
}

void HeadlessDialogs::Shown(HeadlessWindow& window, bool shown, int result) {
  if (quiet_) return;
  if (shown) transcript_.Dialog(window.dialogTemplate().id, window.Caption(), window.modal());
  else transcript_.EndDialog(window.dialogTemplate().id, result);
}

int HeadlessDialogs::RunModal(HeadlessWindow& window) {
  ModalWaiter waiter(*this, window);
  runner_.Serve(waiter);
  return 0;
}

// The newest shown dialog of that template.
HeadlessWindow* HeadlessDialogs::OpenDialog(int templateId) {
  for (auto it = windows_.rbegin(); it != windows_.rend(); ++it)
    if ((*it)->dialogTemplate().id == templateId && (*it)->IsVisible()) return *it;
  return nullptr;
}

std::optional<Text> HeadlessDialogs::ApplyDialogLine(const ScriptLine& line, const HeadlessWindow* owner, bool* handled) {
  static const Text kVerbs[] = {u"click", u"select", u"type", u"close", u"dump"};
  *handled = std::find(std::begin(kVerbs), std::end(kVerbs), line.verb) != std::end(kVerbs);
  if (!*handled) return std::nullopt;
  if (line.args.empty()) return u"'" + line.verb + u"' needs a dialog or a control (D or D:ID)";
  std::optional<ControlAddress> address = ParseControlAddress(line.args[0]);
  if (!address) return u"'" + line.args[0] + u"' is not a dialog or a control (D or D:ID)";
  HeadlessWindow* window = OpenDialog(address->dialog);
  if (!window) return u"the dialog " + Number(address->dialog) + u" is not open";
  bool dump = line.verb == u"dump";
  if (!dump && owner && window != owner)
    return u"the dialog " + Number(address->dialog) + u" is behind the modal dialog " + Number(owner->dialogTemplate().id);
  if (!dump && !owner && window->modal()) return u"the dialog " + Number(address->dialog) + u" is not waiting for input";
  if (dump) {
    if (address->control && !window->Control(*address->control))
      return u"the dialog " + Number(address->dialog) + u" has no control " + Number(*address->control);
    Dump(*window, address->control);
    return std::nullopt;
  }
  if (line.verb == u"close") {
    if (line.args.size() != 1 || address->control) return u"'close' takes a dialog: close D";
    window->events().OnClose();
    return std::nullopt;
  }
  if (!address->control) return u"'" + line.verb + u"' needs a control: " + line.verb + u" D:ID";
  ControlState* control = window->Control(*address->control);
  if (!control) return u"the dialog " + Number(address->dialog) + u" has no control " + Number(*address->control);
  if (!control->shown) return u"the control " + Address(*window, *address->control) + u" is hidden";
  if (!control->enabled) return u"the control " + Address(*window, *address->control) + u" is disabled";
  if (line.verb == u"click") {
    if (line.args.size() != 1) return u"'click' takes one control: click D:ID";
    return Click(*window, *control);
  }
  if (line.args.size() != 2) return u"'" + line.verb + u"' takes a control and a value";
  if (line.verb == u"select") return Select(*window, *control, line.args[1]);
  return Type(*window, *control, line.args[1]);
}

std::optional<Text> HeadlessDialogs::Click(HeadlessWindow& window, ControlState& control) {
  const dialog::ControlTemplate& t = *control.control;
  if (t.kind != dialog::ControlKind::Button && t.kind != dialog::ControlKind::Check && t.kind != dialog::ControlKind::Radio)
    return u"the control " + Address(window, t.id) + u" is a " + FromUtf8(KindName(t.kind)) + u", which cannot be clicked";
  if (t.kind == dialog::ControlKind::Check && t.isAutomatic()) control.checked = !control.checked;
  if (t.kind == dialog::ControlKind::Radio && t.isAutomatic()) {
    // An automatic radio button checks itself and unchecks the others of its group.
    const auto& all = window.dialogTemplate().controls;
    auto self = std::find_if(all.begin(), all.end(), [&](const auto& c) { return &c == &t; });
    auto first = self;
    while (first != all.begin() && !(first->style & dialog::style::kGroup)) --first;
    for (auto c = first; c != all.end() && (c == first || !(c->style & dialog::style::kGroup)); ++c)
      if (c->kind == dialog::ControlKind::Radio && c->isAutomatic())
        if (ControlState* other = window.Control(c->id)) other->checked = false;
    control.checked = true;
  }
  window.events().OnCommand(t.id, Notification::Clicked);
  return std::nullopt;
}

std::optional<Text> HeadlessDialogs::Select(HeadlessWindow& window, ControlState& control, TextView what) {
  const dialog::ControlTemplate& t = *control.control;
  std::optional<long long> index = ParseWholeNumber(what);
  if (t.kind == dialog::ControlKind::Combo) {
    int chosen = -1;
    if (index) {
      chosen = static_cast<int>(*index);
      if (chosen < 0 || chosen >= static_cast<int>(control.items.size()))
        return u"the combo " + Address(window, t.id) + u" has no entry " + Number(*index) + u" (it has " +
               Number(static_cast<long long>(control.items.size())) + u")";
    } else {
      auto found = std::find(control.items.begin(), control.items.end(), Text(what));
      if (found == control.items.end()) return u"the combo " + Address(window, t.id) + u" has no entry \"" + Text(what) + u"\"";
      chosen = static_cast<int>(found - control.items.begin());
    }
    window.ComboSelect(t.id, chosen);
    window.events().OnCommand(t.id, Notification::SelChange);
    return std::nullopt;
  }
  if (t.kind == dialog::ControlKind::List) {
    if (!index) return u"a list item is chosen by its index: select " + Address(window, t.id) + u" INDEX";
    if (*index < 0 || *index >= static_cast<long long>(control.rows.size()))
      return u"the list " + Address(window, t.id) + u" has no item " + Number(*index) + u" (it has " +
             Number(static_cast<long long>(control.rows.size())) + u")";
    for (size_t i = 0; i < control.rowSelected.size(); ++i) control.rowSelected[i] = static_cast<long long>(i) == *index;
    window.events().OnNotify(t.id, Notification::ListItemChanged);
    window.events().OnNotify(t.id, Notification::ListClick);
    return std::nullopt;
  }
  return u"the control " + Address(window, t.id) + u" is a " + FromUtf8(KindName(t.kind)) + u", which has nothing to select";
}

std::optional<Text> HeadlessDialogs::Type(HeadlessWindow& window, ControlState& control, TextView text) {
  const dialog::ControlTemplate& t = *control.control;
  if (t.kind == dialog::ControlKind::Edit) {
    if (t.style & dialog::style::kEditReadOnly) return u"the edit " + Address(window, t.id) + u" is read-only";
    control.text = Text(text);
    window.events().OnCommand(t.id, Notification::EditTextChange);
    return std::nullopt;
  }
  if (t.kind == dialog::ControlKind::Combo && t.comboTakesText()) {
    control.text = Text(text);
    window.events().OnCommand(t.id, Notification::EditChange);
    return std::nullopt;
  }
  return u"the control " + Address(window, t.id) + u" takes no typing";
}

void HeadlessDialogs::Dump(HeadlessWindow& window, std::optional<int> control) {
  transcript_.Dump(window.dialogTemplate().id, window.Caption(), DumpControls(window.dialogTemplate(), window, control));
}

}  // namespace tq::headless
