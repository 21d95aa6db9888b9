#pragma once
// A dialog built as Qt widgets from its template: every control placed by the Windows rule for
// the stand-in font, mapped to the widget of its class and style, and heard through the
// widgets' own signals with the notification codes the headless host raises for the same acts.
#include <QDialog>
#include <QPointer>
#include <map>
#include <memory>
#include <optional>

#include "common/ScriptLine.hpp"
#include "dialog/DialogTemplate.hpp"
#include "ports/DialogWindow.hpp"

class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QEventLoop;
class QLineEdit;
class QPlainTextEdit;
class QTreeWidget;

namespace tq::qt {

class QtDialogHost;
class DialogWidget;

class QtDialogWindow : public DialogWindow {
 public:
  QtDialogWindow(QtDialogHost& host, const dialog::DialogTemplate& dialogTemplate, DialogEvents& events, bool modal,
                 QWidget* parent);
  ~QtDialogWindow() override;

  const dialog::DialogTemplate& dialogTemplate() const { return template_; }
  DialogEvents& events() { return events_; }
  bool modal() const { return modal_; }
  bool ended() const { return ended_; }
  // The top-level widget, and the widget of a control (null for an id the template lacks).
  QDialog& widget() const;
  QWidget* ControlWidget(int id) const;
  // The widget of any control of the template, those no code addresses (-1) included.
  QWidget* WidgetOf(const dialog::ControlTemplate& control) const;

  // A script line performed through the widgets as a person would: click presses the
  // button, select chooses the combo entry (activated) or the list row (its selection model,
  // then a click), type edits the text (textEdited), close is Esc, dump writes the dialog to
  // the host's transcript. The reason, in the headless host's words, when the line does not
  // fit this dialog (another dialog, a hidden or disabled control, an unknown id, …).
  std::optional<Text> ApplyScriptLine(const ScriptLine& line);

  void SetCaption(TextView caption) override;
  Text Caption() const override;
  void Show(bool show) override;
  bool IsVisible() const override;
  int RunModal() override;
  void End(int result) override;
  void SetClientHeight(int pixels) override;

  Text GetText(int id) const override;
  void SetText(int id, TextView text) override;
  bool IsEnabled(int id) const override;
  void Enable(int id, bool enable) override;
  bool IsShown(int id) const override;
  void ShowControl(int id, bool show) override;
  bool IsChecked(int id) const override;
  void SetCheck(int id, bool checked) override;
  std::pair<int, int> ControlPosition(int id) const override;
  void MoveControl(int id, int x, int y) override;
  void SetFocus(int id) override;

  void ComboReset(int id) override;
  int ComboAdd(int id, TextView text) override;
  int ComboCount(int id) const override;
  Text ComboItem(int id, int index) const override;
  int ComboSelection(int id) const override;
  void ComboSelect(int id, int index) override;

  void ListSetColumns(int id, const std::vector<ListColumn>& columns) override;
  std::vector<ListColumn> ListColumns(int id) const override;
  int ListClientWidth(int id) const override;
  void ListSetExtendedStyle(int id, bool fullRowSelect, bool gridLines) override;
  void ListDeleteAll(int id) override;
  void ListInsert(int id, int index, const std::vector<Text>& cells) override;
  int ListCount(int id) const override;
  Text ListText(int id, int item, int column) const override;
  void ListSetText(int id, int item, int column, TextView text) override;
  std::vector<int> ListSelection(int id) const override;
  void ListSelect(int id, int item, bool selected) override;

  // Called by the widget: Esc or the close box, and Enter.
  void CloseRequested();
  void EnterPressed();

 private:
  struct Control;
  class Actions;
  Control* Find(int id);
  const Control* Find(int id) const;
  void Build();
  QWidget* MakeWidget(Control& control);
  void Listen(Control& control);
  // The controls made, in the template's order.
  void OrderTabs(const std::vector<Control*>& ordered);
  void Place(Control& control);

  QtDialogHost& host_;
  const dialog::DialogTemplate& template_;
  DialogEvents& events_;
  bool modal_;
  bool ended_ = false;
  int result_ = 0;
  QPointer<DialogWidget> widget_;
  QEventLoop* loop_ = nullptr;  // the nested loop of a modal run
  std::map<int, std::unique_ptr<Control>> controls_;
  std::vector<QButtonGroup*> radioGroups_;
  int programmatic_ = 0;  // changes the dialog makes itself notify nothing
};

}  // namespace tq::qt
