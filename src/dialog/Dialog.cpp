#include "dialog/Dialog.hpp"

#include <stdexcept>

#include "dialog/ComboSearch.hpp"

namespace tq::dialog {

int ComboBox::FindStringExact(int startAfter, TextView text) const {
  std::vector<Text> entries;
  for (int i = 0, n = GetCount(); i < n; ++i) entries.push_back(GetLBText(i));
  return dialog::FindStringExact(entries, startAfter, text);
}

int ListView::GetFirstSelected() const {
  std::vector<int> selected = GetSelection();
  return selected.empty() ? -1 : selected.front();
}

void ListView::SelectOnly(int item) {
  for (int i : GetSelection())
    if (i != item) w_.ListSelect(id_, i, false);
  if (item >= 0 && item < GetItemCount()) w_.ListSelect(id_, item, true);
}

namespace {
const DialogTemplate& TemplateOf(int templateId) {
  const DialogTemplate* found = BuiltInResources().FindDialog(templateId);
  // Every dialog of the core has its template in the program's resources.
  if (!found) throw std::logic_error("no dialog template " + std::to_string(templateId));
  return *found;
}
}  // namespace

Dialog::Dialog(int templateId, DialogServices services) : template_(TemplateOf(templateId)), services_(services) {}

Dialog::~Dialog() = default;

bool Dialog::Realise(bool modal) {
  modal_ = modal;
  endedEarly_.reset();
  window_ = services_.host.CreateDialogWindow(template_, *this, modal);
  initialising_ = true;
  bool ok = OnInitDialog();
  initialising_ = false;
  return ok;
}

int Dialog::DoModal() {
  Realise(true);
  int result = 0;
  if (endedEarly_) {
    result = *endedEarly_;
  } else {
    window_->Show(true);
    result = window_->RunModal();
  }
  window_.reset();
  return result;
}

bool Dialog::Create() { return Realise(false); }

void Dialog::ShowWindow(bool show) {
  if (window_) window_->Show(show);
}

bool Dialog::IsWindowVisible() const { return window_ && window_->IsVisible(); }

void Dialog::DestroyWindow() { window_.reset(); }

void Dialog::EndDialog(int result) {
  if (!window_) return;
  if (initialising_ && modal_) {
    endedEarly_ = result;  // the dialog closes before it is shown
    return;
  }
  window_->End(result);
}

void Dialog::OnCommand(int id, Notification code) {
  if (code != Notification::Clicked) return;
  if (id == kIdOk) OnOK();
  else if (id == kIdCancel) OnCancel();
}

MessageAnswer Dialog::MessageBox(TextView text, MessageIcon icon, MessageButtons buttons, int defaultButton) {
  return services_.ui.ShowMessage({Text(text), icon, buttons, defaultButton});
}

}  // namespace tq::dialog
