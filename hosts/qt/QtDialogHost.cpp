#include "qt/QtDialogHost.hpp"

#include <algorithm>

#include "common/DialogLines.hpp"

namespace tq::qt {

std::unique_ptr<DialogWindow> QtDialogHost::CreateDialogWindow(const dialog::DialogTemplate& dialogTemplate,
                                                               DialogEvents& events, bool modal) {
  auto window = std::make_unique<QtDialogWindow>(*this, dialogTemplate, events, modal, parent_.data());
  // A dialog opens at its template position from the anchor: the main dialog, at 0, 0, over
  // the top-left corner of the drawing.
  if (anchor_ || parent_) {
    QPoint corner = anchor_ ? anchor_() : parent_->mapToGlobal(QPoint(0, 0));
    window->widget().move(corner + QPoint(dialog::DialogXToPixels(dialogTemplate.x, kStandInBaseUnits),
                                          dialog::DialogYToPixels(dialogTemplate.y, kStandInBaseUnits)));
  }
  return window;
}

void QtDialogHost::Unregister(QtDialogWindow& window) {
  windows_.erase(std::remove(windows_.begin(), windows_.end(), &window), windows_.end());
  modals_.erase(std::remove(modals_.begin(), modals_.end(), &window), modals_.end());
}

void QtDialogHost::ModalEnded(QtDialogWindow& window) {
  modals_.erase(std::remove(modals_.begin(), modals_.end(), &window), modals_.end());
}

void QtDialogHost::Shown(QtDialogWindow& window, bool shown, int result) {
  if (quiet_ || !transcript_) return;
  if (shown) transcript_->Dialog(window.dialogTemplate().id, window.Caption(), window.modal());
  else transcript_->EndDialog(window.dialogTemplate().id, result);
}

void QtDialogHost::Dump(QtDialogWindow& window, std::optional<int> control) {
  if (!transcript_) return;
  transcript_->Dump(window.dialogTemplate().id, window.Caption(), DumpControls(window.dialogTemplate(), window, control));
}

QtDialogWindow* QtDialogHost::OpenDialog(int templateId) const {
  for (auto it = windows_.rbegin(); it != windows_.rend(); ++it)
    if ((*it)->dialogTemplate().id == templateId && (*it)->IsVisible()) return *it;
  return nullptr;
}

QtDialogWindow* QtDialogHost::RunningModal() const { return modals_.empty() ? nullptr : modals_.back(); }

std::optional<Text> QtDialogHost::ApplyScriptLine(const ScriptLine& line, bool* handled) {
  *handled = IsDialogVerb(line.verb);
  if (!*handled) return std::nullopt;
  DialogLineAddress target = AddressOf(line);
  if (target.refusal) return target.refusal;
  QtDialogWindow* window = OpenDialog(target.address->dialog);
  QtDialogWindow* owner = RunningModal();
  std::optional<int> ownerId = owner ? std::optional<int>(owner->dialogTemplate().id) : std::nullopt;
  if (std::optional<Text> why =
          DialogAccessRefusal(line, target.address->dialog, window != nullptr, window && window->modal(), ownerId))
    return why;
  return window->ApplyScriptLine(line);
}

}  // namespace tq::qt
