#pragma once
// The base of every dialog of the core, written MFC-style against control ids: its template
// gives the controls, its host realises them, and the notifications a person causes are
// routed to the handlers by id.
#include <memory>
#include <optional>
#include <vector>

#include "base/Text.hpp"
#include "dialog/DialogTemplate.hpp"
#include "ports/DialogWindow.hpp"
#include "ports/Ui.hpp"

namespace tq::dialog {

class Dialog;

// One combo box of a dialog.
class ComboBox {
 public:
  ComboBox(DialogWindow& window, int id) : w_(window), id_(id) {}
  void ResetContent() { w_.ComboReset(id_); }
  int AddString(TextView text) { return w_.ComboAdd(id_, text); }
  int GetCount() const { return w_.ComboCount(id_); }
  Text GetLBText(int index) const { return w_.ComboItem(id_, index); }
  int GetCurSel() const { return w_.ComboSelection(id_); }
  void SetCurSel(int index) { w_.ComboSelect(id_, index); }
  // CB_FINDSTRINGEXACT: without regard to case, starting after `startAfter` and wrapping round.
  int FindStringExact(int startAfter, TextView text) const;
  // The text of the edit part (a drop-down list: the selected entry's).
  Text GetWindowText() const { return w_.GetText(id_); }
  void SetWindowText(TextView text) { w_.SetText(id_, text); }

 private:
  DialogWindow& w_;
  int id_;
};

// One report-view list of a dialog.
class ListView {
 public:
  ListView(DialogWindow& window, int id) : w_(window), id_(id) {}
  void SetColumns(const std::vector<ListColumn>& columns) { w_.ListSetColumns(id_, columns); }
  std::vector<ListColumn> Columns() const { return w_.ListColumns(id_); }
  int ClientWidth() const { return w_.ListClientWidth(id_); }
  void SetExtendedStyle(bool fullRowSelect, bool gridLines) { w_.ListSetExtendedStyle(id_, fullRowSelect, gridLines); }
  void DeleteAllItems() { w_.ListDeleteAll(id_); }
  void InsertItem(int index, const std::vector<Text>& cells) { w_.ListInsert(id_, index, cells); }
  int GetItemCount() const { return w_.ListCount(id_); }
  Text GetItemText(int item, int column) const { return w_.ListText(id_, item, column); }
  void SetItemText(int item, int column, TextView text) { w_.ListSetText(id_, item, column, text); }
  std::vector<int> GetSelection() const { return w_.ListSelection(id_); }
  // The first selected item; -1 when none is.
  int GetFirstSelected() const;
  // Selects this item alone.
  void SelectOnly(int item);

 private:
  DialogWindow& w_;
  int id_;
};

// What a dialog needs of its host besides its window: the window factory and the boxes.
struct DialogServices {
  DialogHost& host;
  Ui& ui;
};

class Dialog : protected DialogEvents {
 public:
  Dialog(int templateId, DialogServices services);
  ~Dialog() override;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Modal: creates the window, initialises it, shows it and runs it until EndDialog; the
  // window is gone afterwards. The result given to EndDialog, or 0 when initialisation
  // ended the dialog before it showed.
  int DoModal();
  // Modeless: creates the window and initialises it; the dialog shows itself or is shown.
  bool Create();
  void ShowWindow(bool show);
  bool IsWindowVisible() const;
  void DestroyWindow();
  bool HasWindow() const { return window_ != nullptr; }
  // Ends a modal run with `result`; hides a modeless dialog.
  void EndDialog(int result);

  int templateId() const { return template_.id; }
  const DialogTemplate& dialogTemplate() const { return template_; }

 protected:
  virtual bool OnInitDialog() { return true; }
  // WM_COMMAND: the default sends the OK and cancel buttons to OnOK and OnCancel.
  void OnCommand(int id, Notification code) override;
  void OnNotify(int, Notification) override {}
  void OnClose() override { OnCancel(); }
  virtual void OnOK() { EndDialog(kIdOk); }
  virtual void OnCancel() { EndDialog(kIdCancel); }

  DialogWindow& window() { return *window_; }
  const DialogWindow& window() const { return *window_; }
  Ui& ui() { return services_.ui; }
  const DialogServices& services() const { return services_; }

  // CWnd-style access by control id.
  Text GetDlgItemText(int id) const { return window_->GetText(id); }
  void SetDlgItemText(int id, TextView text) { window_->SetText(id, text); }
  void EnableItem(int id, bool enable) { window_->Enable(id, enable); }
  void ShowItem(int id, bool show) { window_->ShowControl(id, show); }
  bool IsChecked(int id) const { return window_->IsChecked(id); }
  void CheckItem(int id, bool checked) { window_->SetCheck(id, checked); }
  ComboBox Combo(int id) { return ComboBox(*window_, id); }
  ListView List(int id) { return ListView(*window_, id); }
  MessageAnswer MessageBox(TextView text, MessageIcon icon, MessageButtons buttons = MessageButtons::Ok,
                           int defaultButton = 0);

 private:
  bool Realise(bool modal);
  const DialogTemplate& template_;
  DialogServices services_;
  std::unique_ptr<DialogWindow> window_;
  bool modal_ = false;
  std::optional<int> endedEarly_;  // EndDialog called during initialisation
  bool initialising_ = false;
};

}  // namespace tq::dialog
