#pragma once
// A dialog's controls held in memory: the headless host's realisation of a template.
#include <functional>
#include <map>

#include "dialog/DialogTemplate.hpp"
#include "ports/DialogWindow.hpp"

namespace tq::headless {

class HeadlessDialogs;

// The state of one control.
struct ControlState {
  const dialog::ControlTemplate* control = nullptr;
  Text text;
  bool enabled = true, shown = true, checked = false;
  int x = 0, y = 0;
  std::vector<Text> items;  // combo entries
  int selected = -1;        // combo selection
  std::vector<ListColumn> columns;
  std::vector<std::vector<Text>> rows;  // list items: the cells of each
  std::vector<bool> rowSelected;
};

class HeadlessWindow : public DialogWindow {
 public:
  HeadlessWindow(HeadlessDialogs& owner, const dialog::DialogTemplate& dialogTemplate, DialogEvents& events, bool modal);
  ~HeadlessWindow() override;

  const dialog::DialogTemplate& dialogTemplate() const { return template_; }
  DialogEvents& events() { return events_; }
  bool modal() const { return modal_; }
  bool ended() const { return ended_; }
  // The control of that id; nothing when the template has none.
  ControlState* Control(int id);
  const ControlState* Control(int id) const;

  void SetCaption(TextView caption) override { caption_ = Text(caption); }
  Text Caption() const override { return caption_; }
  void Show(bool show) override;
  bool IsVisible() const override { return visible_; }
  int RunModal() override;
  void End(int result) override;
  void SetClientHeight(int pixels) override { clientHeight_ = pixels; }

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
  void SetFocus(int) override {}

  void ComboReset(int id) override;
  int ComboAdd(int id, TextView text) override;
  int ComboCount(int id) const override;
  Text ComboItem(int id, int index) const override;
  int ComboSelection(int id) const override;
  void ComboSelect(int id, int index) override;

  void ListSetColumns(int id, const std::vector<ListColumn>& columns) override;
  std::vector<ListColumn> ListColumns(int id) const override;
  int ListClientWidth(int id) const override;
  void ListSetExtendedStyle(int, bool, bool) override {}
  void ListDeleteAll(int id) override;
  void ListInsert(int id, int index, const std::vector<Text>& cells) override;
  int ListCount(int id) const override;
  Text ListText(int id, int item, int column) const override;
  void ListSetText(int id, int item, int column, TextView text) override;
  std::vector<int> ListSelection(int id) const override;
  void ListSelect(int id, int item, bool selected) override;

 private:
  HeadlessDialogs& owner_;
  const dialog::DialogTemplate& template_;
  DialogEvents& events_;
  bool modal_;
  Text caption_;
  bool visible_ = false;
  bool ended_ = false;
  int result_ = 0;
  int clientHeight_ = 0;
  std::map<int, ControlState> controls_;
};

}  // namespace tq::headless
