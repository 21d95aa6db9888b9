#include "headless/HeadlessWindow.hpp"

#include "common/DialogMetrics.hpp"
#include "headless/HeadlessDialogs.hpp"

namespace tq::headless {

HeadlessWindow::HeadlessWindow(HeadlessDialogs& owner, const dialog::DialogTemplate& dialogTemplate, DialogEvents& events,
                               bool modal)
    : owner_(owner), template_(dialogTemplate), events_(events), modal_(modal), caption_(dialogTemplate.caption) {
  for (const dialog::ControlTemplate& c : template_.controls) {
    if (c.id == -1 || controls_.count(c.id)) continue;
    ControlState& state = controls_[c.id];
    state.control = &c;
    state.enabled = c.enabled();
    state.shown = c.visible();
    state.x = c.x;
    state.y = c.y;
    // Buttons, statics and groups show their caption; edits, combos and lists start empty.
    if (c.kind != dialog::ControlKind::Edit && c.kind != dialog::ControlKind::Combo && c.kind != dialog::ControlKind::List)
      state.text = c.caption;
  }
  owner_.Register(*this);
}

HeadlessWindow::~HeadlessWindow() {
  if (visible_) owner_.Shown(*this, false, 0);
  owner_.Unregister(*this);
}

ControlState* HeadlessWindow::Control(int id) {
  auto found = controls_.find(id);
  return found == controls_.end() ? nullptr : &found->second;
}

const ControlState* HeadlessWindow::Control(int id) const {
  auto found = controls_.find(id);
  return found == controls_.end() ? nullptr : &found->second;
}

void HeadlessWindow::Show(bool show) {
  if (show == visible_) return;
  visible_ = show;
  if (show) ended_ = false;
  owner_.Shown(*this, show, 0);
}

int HeadlessWindow::RunModal() {
  ended_ = false;
  owner_.RunModal(*this);
  return result_;
}

void HeadlessWindow::End(int result) {
  result_ = result;
  ended_ = true;
  if (visible_) {
    visible_ = false;
    owner_.Shown(*this, false, result);
  }
}

// A control the template lacks reads as empty and ignores what it is given, as a window
// without that child would.
Text HeadlessWindow::GetText(int id) const {
  const ControlState* c = Control(id);
  if (!c) return Text();
  if (c->control->kind == dialog::ControlKind::Combo && !c->control->comboTakesText())
    return c->selected >= 0 ? c->items[static_cast<size_t>(c->selected)] : Text();
  return c->text;
}

void HeadlessWindow::SetText(int id, TextView text) {
  if (ControlState* c = Control(id)) c->text = Text(text);
}

bool HeadlessWindow::IsEnabled(int id) const {
  const ControlState* c = Control(id);
  return c && c->enabled;
}
void HeadlessWindow::Enable(int id, bool enable) {
  if (ControlState* c = Control(id)) c->enabled = enable;
}
bool HeadlessWindow::IsShown(int id) const {
  const ControlState* c = Control(id);
  return c && c->shown;
}
void HeadlessWindow::ShowControl(int id, bool show) {
  if (ControlState* c = Control(id)) c->shown = show;
}
bool HeadlessWindow::IsChecked(int id) const {
  const ControlState* c = Control(id);
  return c && c->checked;
}
void HeadlessWindow::SetCheck(int id, bool checked) {
  if (ControlState* c = Control(id)) c->checked = checked;
}
std::pair<int, int> HeadlessWindow::ControlPosition(int id) const {
  const ControlState* c = Control(id);
  return c ? std::pair{c->x, c->y} : std::pair{0, 0};
}
void HeadlessWindow::MoveControl(int id, int x, int y) {
  if (ControlState* c = Control(id)) c->x = x, c->y = y;
}

void HeadlessWindow::ComboReset(int id) {
  if (ControlState* c = Control(id)) {
    c->items.clear();
    c->selected = -1;
    c->text.clear();
  }
}
int HeadlessWindow::ComboAdd(int id, TextView text) {
  ControlState* c = Control(id);
  if (!c) return -1;
  c->items.emplace_back(text);
  return static_cast<int>(c->items.size()) - 1;
}
int HeadlessWindow::ComboCount(int id) const {
  const ControlState* c = Control(id);
  return c ? static_cast<int>(c->items.size()) : 0;
}
Text HeadlessWindow::ComboItem(int id, int index) const {
  const ControlState* c = Control(id);
  if (!c || index < 0 || index >= static_cast<int>(c->items.size())) return Text();
  return c->items[static_cast<size_t>(index)];
}
int HeadlessWindow::ComboSelection(int id) const {
  const ControlState* c = Control(id);
  return c ? c->selected : -1;
}
void HeadlessWindow::ComboSelect(int id, int index) {
  ControlState* c = Control(id);
  if (!c) return;
  if (index < 0 || index >= static_cast<int>(c->items.size())) {
    c->selected = -1;
    return;
  }
  c->selected = index;
  c->text = c->items[static_cast<size_t>(index)];
}

void HeadlessWindow::ListSetColumns(int id, const std::vector<ListColumn>& columns) {
  if (ControlState* c = Control(id)) c->columns = columns;
}
std::vector<ListColumn> HeadlessWindow::ListColumns(int id) const {
  const ControlState* c = Control(id);
  return c ? c->columns : std::vector<ListColumn>();
}
int HeadlessWindow::ListClientWidth(int id) const {
  const ControlState* c = Control(id);
  return c ? tq::ListClientWidth(c->control->cx) : 0;
}
void HeadlessWindow::ListDeleteAll(int id) {
  if (ControlState* c = Control(id)) {
    c->rows.clear();
    c->rowSelected.clear();
  }
}
void HeadlessWindow::ListInsert(int id, int index, const std::vector<Text>& cells) {
  ControlState* c = Control(id);
  if (!c) return;
  size_t at = index < 0 ? 0 : std::min(static_cast<size_t>(index), c->rows.size());
  c->rows.insert(c->rows.begin() + static_cast<std::ptrdiff_t>(at), cells);
  c->rowSelected.insert(c->rowSelected.begin() + static_cast<std::ptrdiff_t>(at), false);
}
int HeadlessWindow::ListCount(int id) const {
  const ControlState* c = Control(id);
  return c ? static_cast<int>(c->rows.size()) : 0;
}
Text HeadlessWindow::ListText(int id, int item, int column) const {
  const ControlState* c = Control(id);
  if (!c || item < 0 || item >= static_cast<int>(c->rows.size()) || column < 0) return Text();
  const std::vector<Text>& row = c->rows[static_cast<size_t>(item)];
  return static_cast<size_t>(column) < row.size() ? row[static_cast<size_t>(column)] : Text();
}
void HeadlessWindow::ListSetText(int id, int item, int column, TextView text) {
  ControlState* c = Control(id);
  if (!c || item < 0 || item >= static_cast<int>(c->rows.size()) || column < 0) return;
  std::vector<Text>& row = c->rows[static_cast<size_t>(item)];
  if (row.size() <= static_cast<size_t>(column)) row.resize(static_cast<size_t>(column) + 1);
  row[static_cast<size_t>(column)] = Text(text);
}
std::vector<int> HeadlessWindow::ListSelection(int id) const {
  std::vector<int> selected;
  if (const ControlState* c = Control(id))
    for (size_t i = 0; i < c->rowSelected.size(); ++i)
      if (c->rowSelected[i]) selected.push_back(static_cast<int>(i));
  return selected;
}
void HeadlessWindow::ListSelect(int id, int item, bool selected) {
  ControlState* c = Control(id);
  if (c && item >= 0 && item < static_cast<int>(c->rowSelected.size())) c->rowSelected[static_cast<size_t>(item)] = selected;
}

}  // namespace tq::headless
