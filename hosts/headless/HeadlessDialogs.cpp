#include "headless/HeadlessDialogs.hpp"

#include <algorithm>
#include <string>

#include "common/DialogLines.hpp"
#include "common/ModalDialogWaiter.hpp"

namespace tq::headless {

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
  ModalDialogWaiter waiter(
      window.dialogTemplate().id,
      [this, &window](const ScriptLine& line, bool* handled) { return ApplyDialogLine(line, &window, handled); },
      [&window] { return window.ended(); });
  runner_.Serve(waiter);
  return 0;
}

// The newest shown dialog of that template.
HeadlessWindow* HeadlessDialogs::OpenDialog(int templateId) {
  for (auto it = windows_.rbegin(); it != windows_.rend(); ++it)
    if ((*it)->dialogTemplate().id == templateId && (*it)->IsVisible()) return *it;
  return nullptr;
}

// The controls in memory change as a person's action would change them, then the dialog hears of it.
class HeadlessDialogs::Actions : public DialogLineActions {
 public:
  Actions(HeadlessDialogs& dialogs, HeadlessWindow& window) : dialogs_(dialogs), window_(window) {}
  void Close() override { window_.events().OnClose(); }
  void Click(const dialog::ControlTemplate& t) override;
  void SelectEntry(const dialog::ControlTemplate& t, int index) override {
    window_.ComboSelect(t.id, index);
    window_.events().OnCommand(t.id, Notification::SelChange);
  }
  void SelectRow(const dialog::ControlTemplate& t, int row) override {
    ControlState& control = *window_.Control(t.id);
    for (size_t i = 0; i < control.rowSelected.size(); ++i) control.rowSelected[i] = static_cast<int>(i) == row;
    window_.events().OnNotify(t.id, Notification::ListItemChanged);
    window_.events().OnNotify(t.id, Notification::ListClick);
  }
  void Type(const dialog::ControlTemplate& t, TextView text) override {
    window_.Control(t.id)->text = Text(text);
    window_.events().OnCommand(t.id, t.kind == dialog::ControlKind::Edit ? Notification::EditTextChange : Notification::EditChange);
  }
  void Dump(std::optional<int> control) override { dialogs_.Dump(window_, control); }

 private:
  HeadlessDialogs& dialogs_;
  HeadlessWindow& window_;
};

void HeadlessDialogs::Actions::Click(const dialog::ControlTemplate& t) {
  ControlState& control = *window_.Control(t.id);
  if (t.kind == dialog::ControlKind::Check && t.isAutomatic()) control.checked = !control.checked;
  if (t.kind == dialog::ControlKind::Radio && t.isAutomatic()) {
    // An automatic radio button checks itself and unchecks the others of its group.
    const auto& all = window_.dialogTemplate().controls;
    auto self = std::find_if(all.begin(), all.end(), [&](const auto& c) { return &c == &t; });
    auto first = self;
    while (first != all.begin() && !(first->style & dialog::style::kGroup)) --first;
    for (auto c = first; c != all.end() && (c == first || !(c->style & dialog::style::kGroup)); ++c)
      if (c->kind == dialog::ControlKind::Radio && c->isAutomatic())
        if (ControlState* other = window_.Control(c->id)) other->checked = false;
    control.checked = true;
  }
  window_.events().OnCommand(t.id, Notification::Clicked);
}

std::optional<Text> HeadlessDialogs::ApplyDialogLine(const ScriptLine& line, const HeadlessWindow* owner, bool* handled) {
  *handled = IsDialogVerb(line.verb);
  if (!*handled) return std::nullopt;
  DialogLineAddress target = AddressOf(line);
  if (target.refusal) return target.refusal;
  HeadlessWindow* window = OpenDialog(target.address->dialog);
  std::optional<int> ownerId = owner ? std::optional<int>(owner->dialogTemplate().id) : std::nullopt;
  if (std::optional<Text> why =
          DialogAccessRefusal(line, target.address->dialog, window != nullptr, window && window->modal(), ownerId))
    return why;
  Actions actions(*this, *window);
  return tq::ApplyDialogLine(line, *target.address, window->dialogTemplate(), *window, actions);
}

void HeadlessDialogs::Dump(HeadlessWindow& window, std::optional<int> control) {
  transcript_.Dump(window.dialogTemplate().id, window.Caption(), DumpControls(window.dialogTemplate(), window, control));
}

}  // namespace tq::headless
