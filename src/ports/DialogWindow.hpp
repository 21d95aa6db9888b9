#pragma once
// A dialog realised by a host: the controls of its template, addressed by id. The dialogs of
// the core are written once against this; MFC, Qt and the headless host each supply it.
//
// Notifications reach the dialog only for what a person does (a click, a choice, typing);
// changes the dialog makes itself notify nothing, in every host, so that a dialog behaves
// the same whichever host runs it.
#include <memory>
#include <optional>
#include <vector>

#include "base/Text.hpp"

namespace tq::dialog {
struct DialogTemplate;
}

namespace tq {

// The notifications the dialogs handle, with the platform's codes.
enum class Notification : int {
  Clicked = 0,          // BN_CLICKED
  SelChange = 1,        // CBN_SELCHANGE
  EditChange = 5,       // CBN_EDITCHANGE
  EditTextChange = 0x300,  // EN_CHANGE
  ListClick = -2,       // NM_CLICK
  ListItemChanged = -101,  // LVN_ITEMCHANGED
};

enum class ColumnAlign { Left, Right, Center };

struct ListColumn {
  Text text;
  int width = 0;  // pixels
  ColumnAlign align = ColumnAlign::Left;
};

// Platform result codes of a dialog.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

// What a dialog hears from its host.
class DialogEvents {
 public:
  virtual ~DialogEvents() = default;
  virtual void OnCommand(int id, Notification code) = 0;  // WM_COMMAND
  virtual void OnNotify(int id, Notification code) = 0;   // WM_NOTIFY
  // The close box (Esc): as the cancel button.
  virtual void OnClose() = 0;
};

class DialogWindow {
 public:
  virtual ~DialogWindow() = default;

  // The window.
  virtual void SetCaption(TextView caption) = 0;
  virtual Text Caption() const = 0;
  virtual void Show(bool show) = 0;
  virtual bool IsVisible() const = 0;
  // Runs a modal dialog until End; the result given to it.
  virtual int RunModal() = 0;
  // Ends a modal run with `result`, or hides a modeless dialog (EndDialog).
  virtual void End(int result) = 0;
  // Client size in pixels, for layouts done in code.
  virtual void SetClientHeight(int pixels) = 0;

  // Any control.
  virtual Text GetText(int id) const = 0;
  virtual void SetText(int id, TextView text) = 0;
  virtual bool IsEnabled(int id) const = 0;
  virtual void Enable(int id, bool enable) = 0;
  virtual bool IsShown(int id) const = 0;
  virtual void ShowControl(int id, bool show) = 0;
  virtual bool IsChecked(int id) const = 0;
  virtual void SetCheck(int id, bool checked) = 0;
  // Position in dialog units of the template; moving keeps the size.
  virtual std::pair<int, int> ControlPosition(int id) const = 0;
  virtual void MoveControl(int id, int x, int y) = 0;
  virtual void SetFocus(int id) = 0;

  // Combo boxes.
  virtual void ComboReset(int id) = 0;
  virtual int ComboAdd(int id, TextView text) = 0;  // the index of the new entry
  virtual int ComboCount(int id) const = 0;
  virtual Text ComboItem(int id, int index) const = 0;
  virtual int ComboSelection(int id) const = 0;  // -1 for none
  virtual void ComboSelect(int id, int index) = 0;  // -1 clears; the edit part shows the entry

  // Report-view lists.
  virtual void ListSetColumns(int id, const std::vector<ListColumn>& columns) = 0;
  virtual std::vector<ListColumn> ListColumns(int id) const = 0;
  virtual int ListClientWidth(int id) const = 0;
  virtual void ListSetExtendedStyle(int id, bool fullRowSelect, bool gridLines) = 0;
  virtual void ListDeleteAll(int id) = 0;
  virtual void ListInsert(int id, int index, const std::vector<Text>& cells) = 0;
  virtual int ListCount(int id) const = 0;
  virtual Text ListText(int id, int item, int column) const = 0;
  virtual void ListSetText(int id, int item, int column, TextView text) = 0;
  virtual std::vector<int> ListSelection(int id) const = 0;
  virtual void ListSelect(int id, int item, bool selected) = 0;
};

// Makes the windows of dialogs from their templates.
class DialogHost {
 public:
  virtual ~DialogHost() = default;
  // `modal` says how the dialog will be run; the window starts hidden.
  virtual std::unique_ptr<DialogWindow> CreateDialogWindow(const dialog::DialogTemplate& dialogTemplate,
                                                           DialogEvents& events, bool modal) = 0;
};

}  // namespace tq
