#include "qt/QtDialogWindow.hpp"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

#include "common/DialogLines.hpp"
#include "common/DialogMetrics.hpp"
#include "qt/DialogWidget.hpp"
#include "qt/Fonts.hpp"
#include "qt/ListRows.hpp"
#include "qt/QtDialogHost.hpp"

namespace tq::qt {

using dialog::ControlKind;
namespace style = dialog::style;

namespace {

constexpr uint32_t kEditMultiLine = 0x0004;  // ES_MULTILINE

QString ToQ(TextView text) { return QString::fromStdU16String(Text(text)); }
Text FromQ(const QString& text) { return text.toStdU16String(); }
int X(int units) { return dialog::DialogXToPixels(units, kStandInBaseUnits); }
int Y(int units) { return dialog::DialogYToPixels(units, kStandInBaseUnits); }

Qt::Alignment ToAlignment(ColumnAlign align) {
  switch (align) {
    case ColumnAlign::Right: return Qt::AlignRight;
    case ColumnAlign::Center: return Qt::AlignHCenter;
    case ColumnAlign::Left: break;
  }
  return Qt::AlignLeft;
}

// A static's text as Qt shows it without a buddy: "&&" is one "&", a lone "&" marks nothing.
QString WithoutMnemonic(const QString& text) {
  QString out;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == QLatin1Char('&') && i + 1 < text.size()) ++i;
    else if (text[i] == QLatin1Char('&')) continue;
    out += text[i];
  }
  return out;
}

// Counts the changes the dialog makes itself, during which the widgets' signals notify nothing.
class Programmatic {
 public:
  explicit Programmatic(int& depth) : depth_(depth) { ++depth_; }
  ~Programmatic() { --depth_; }
  Programmatic(const Programmatic&) = delete;
  Programmatic& operator=(const Programmatic&) = delete;

 private:
  int& depth_;
};

}  // namespace

struct QtDialogWindow::Control {
  const dialog::ControlTemplate* t = nullptr;
  QWidget* widget = nullptr;
  int x = 0, y = 0;  // dialog units, as moved
  bool shown = true, enabled = true;
  Text text;  // a static's or a list's own text, as set
  std::vector<ListColumn> columns;

  QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget); }
  QComboBox* combo() const { return qobject_cast<QComboBox*>(widget); }
  QLineEdit* lineEdit() const {
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) return edit;
    QComboBox* c = combo();
    return c ? c->lineEdit() : nullptr;
  }
  QPlainTextEdit* textEdit() const { return qobject_cast<QPlainTextEdit*>(widget); }
  QTreeWidget* list() const { return qobject_cast<QTreeWidget*>(widget); }
  QTreeWidgetItem* row(int item) const {
    QTreeWidget* l = list();
    return l && item >= 0 && item < l->topLevelItemCount() ? l->topLevelItem(item) : nullptr;
  }
};

QtDialogWindow::QtDialogWindow(QtDialogHost& host, const dialog::DialogTemplate& dialogTemplate, DialogEvents& events,
                               bool modal, QWidget* parent)
    : host_(host), template_(dialogTemplate), events_(events), modal_(modal), widget_(new DialogWidget(*this, parent)) {
  Build();
  host_.Register(*this);
}

QtDialogWindow::~QtDialogWindow() {
  if (IsVisible()) host_.Shown(*this, false, 0);
  host_.Unregister(*this);
  if (loop_) loop_->exit();
  // The window may go while one of its own widgets' signals is being delivered: the widgets
  // go later, deaf from now on.
  if (widget_) {
    widget_->hide();
    for (auto& [id, control] : controls_) control->widget->disconnect();
    for (QButtonGroup* group : radioGroups_) group->disconnect();
    widget_->deleteLater();
  }
}

QDialog& QtDialogWindow::widget() const { return *widget_; }

QWidget* QtDialogWindow::ControlWidget(int id) const {
  const Control* c = Find(id);
  return c ? c->widget : nullptr;
}

QWidget* QtDialogWindow::WidgetOf(const dialog::ControlTemplate& control) const {
  for (const auto& [key, c] : controls_)
    if (c->t == &control) return c->widget;
  return nullptr;
}

QtDialogWindow::Control* QtDialogWindow::Find(int id) {
  auto found = controls_.find(id);
  return found == controls_.end() ? nullptr : found->second.get();
}
const QtDialogWindow::Control* QtDialogWindow::Find(int id) const {
  auto found = controls_.find(id);
  return found == controls_.end() ? nullptr : found->second.get();
}

// ---- building ---------------------------------------------------------------------------

void QtDialogWindow::Build() {
  QFont font(kDialogFontFamily);
  font.setPointSize(template_.fontSize > 0 ? template_.fontSize : 9);
  widget_->setFont(font);
  widget_->setWindowTitle(ToQ(template_.caption));
  widget_->setModal(false);
  widget_->setFixedSize(X(template_.cx), Y(template_.cy));
  widget_->setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  std::vector<Control*> ordered;
  int unnamed = -1000000;  // controls no code addresses still need a key of their own
  for (const dialog::ControlTemplate& t : template_.controls) {
    int key = t.id == -1 ? unnamed-- : t.id;
    if (controls_.count(key)) continue;
    auto control = std::make_unique<Control>();
    control->t = &t;
    control->x = t.x;
    control->y = t.y;
    control->shown = t.visible();
    control->enabled = t.enabled();
    control->text = t.kind == ControlKind::Static ? t.caption : Text();
    control->widget = MakeWidget(*control);
    Place(*control);
    control->widget->setVisible(control->shown);
    control->widget->setEnabled(control->enabled);
    if (t.kind == ControlKind::Group) control->widget->lower();  // a frame behind what it frames
    ordered.push_back(control.get());
    controls_[key] = std::move(control);
  }
  for (Control* c : ordered) Listen(*c);
  OrderTabs(ordered);
  // A static's mnemonic gives the focus to the next control that takes it.
  for (size_t i = 0; i < ordered.size(); ++i)
    if (auto* label = qobject_cast<QLabel*>(ordered[i]->widget); label && ordered[i]->t->caption.find(u'&') != Text::npos)
      for (size_t j = i + 1; j < ordered.size(); ++j)
        if (ordered[j]->t->style & style::kTabStop) {
          label->setBuddy(ordered[j]->widget);
          label->setText(ToQ(ordered[i]->t->caption));
          break;
        }
}

QWidget* QtDialogWindow::MakeWidget(Control& control) {
  const dialog::ControlTemplate& t = *control.t;
  QWidget* parent = widget_;
  QString caption = ToQ(t.caption);
  switch (t.kind) {
    case ControlKind::Button: {
      auto* button = new QPushButton(caption, parent);
      button->setDefault(t.isDefaultButton());
      button->setAutoDefault(false);
      return button;
    }
    case ControlKind::Check: return new QCheckBox(caption, parent);
    case ControlKind::Radio: {
      auto* radio = new QRadioButton(caption, parent);
      radio->setAutoExclusive(false);  // the groups are the template's, made below
      return radio;
    }
    case ControlKind::Group: {
      auto* group = new QGroupBox(caption, parent);
      group->setFocusPolicy(Qt::NoFocus);
      return group;
    }
    case ControlKind::Static: {
      auto* label = new QLabel(WithoutMnemonic(caption), parent);
      Qt::Alignment align = (t.style & style::kStaticCenter) ? Qt::AlignHCenter
                            : (t.style & style::kStaticRight) ? Qt::AlignRight
                                                               : Qt::AlignLeft;
      label->setAlignment(align | Qt::AlignTop);
      label->setWordWrap(true);
      return label;
    }
    case ControlKind::Edit: {
      bool readOnly = (t.style & style::kEditReadOnly) != 0;
      if (t.style & kEditMultiLine) {
        auto* edit = new QPlainTextEdit(parent);
        edit->setReadOnly(readOnly);
        return edit;
      }
      auto* edit = new QLineEdit(parent);
      edit->setReadOnly(readOnly);
      if (t.style & style::kEditRight) edit->setAlignment(Qt::AlignRight);
      return edit;
    }
    case ControlKind::Combo: {
      auto* combo = new QComboBox(parent);
      combo->setEditable(t.comboTakesText());
      combo->setInsertPolicy(QComboBox::NoInsert);
      int rows = (Y(t.cy) - Y(kComboFieldHeight)) / std::max(1, QFontMetrics(widget_->font()).height());
      combo->setMaxVisibleItems(std::max(1, rows));
      return combo;
    }
    case ControlKind::List: {
      auto* list = new QTreeWidget(parent);
      list->setRootIsDecorated(false);
      list->setItemsExpandable(false);
      list->setUniformRowHeights(true);
      list->setSelectionBehavior(QAbstractItemView::SelectRows);
      list->setSelectionMode((t.style & style::kListSingleSel) ? QAbstractItemView::SingleSelection
                                                               : QAbstractItemView::ExtendedSelection);
      list->setColumnCount(0);
      list->header()->setStretchLastSection(false);
      list->header()->setSectionsMovable(false);
      list->setItemDelegate(new ListRowDelegate((t.style & style::kListShowSelAlways) != 0, list));
      return list;
    }
  }
  return new QWidget(parent);
}

// Dialog units to pixels by the Windows rule; a combo's closed field is as high as its font makes it.
void QtDialogWindow::Place(Control& control) {
  const dialog::ControlTemplate& t = *control.t;
  int height = t.kind == ControlKind::Combo ? Y(kComboFieldHeight) : Y(t.cy);
  control.widget->setGeometry(X(control.x), Y(control.y), X(t.cx), height);
}

void QtDialogWindow::Listen(Control& control) {
  const dialog::ControlTemplate& t = *control.t;
  int id = t.id;
  if (id == -1) return;
  auto quiet = [this] { return programmatic_ > 0; };
  if (QAbstractButton* button = control.button()) {
    bool plainToggle = (t.kind == ControlKind::Check || t.kind == ControlKind::Radio) && !t.isAutomatic();
    if (t.kind == ControlKind::Check || t.kind == ControlKind::Radio) button->setCheckable(true);
    QObject::connect(button, &QAbstractButton::clicked, widget_, [this, id, button, plainToggle](bool checked) {
      // A plain check box or radio button is checked by its dialog, not by the click.
      if (plainToggle) {
        Programmatic self(programmatic_);
        button->setChecked(!checked);
      }
      events_.OnCommand(id, Notification::Clicked);
    });
  } else if (QComboBox* combo = control.combo()) {
    QObject::connect(combo, &QComboBox::activated, widget_, [this, id, quiet](int) {
      if (!quiet()) events_.OnCommand(id, Notification::SelChange);
    });
    if (QLineEdit* edit = combo->lineEdit())
      QObject::connect(edit, &QLineEdit::textEdited, widget_, [this, id, quiet](const QString&) {
        if (!quiet()) events_.OnCommand(id, Notification::EditChange);
      });
  } else if (QLineEdit* edit = control.lineEdit()) {
    QObject::connect(edit, &QLineEdit::textEdited, widget_, [this, id, quiet](const QString&) {
      if (!quiet()) events_.OnCommand(id, Notification::EditTextChange);
    });
  } else if (QPlainTextEdit* text = control.textEdit()) {
    QObject::connect(text, &QPlainTextEdit::textChanged, widget_, [this, id, quiet] {
      if (!quiet()) events_.OnCommand(id, Notification::EditTextChange);
    });
  } else if (QTreeWidget* list = control.list()) {
    QObject::connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, widget_, [this, id, quiet] {
      if (!quiet()) events_.OnNotify(id, Notification::ListItemChanged);
    });
    QObject::connect(list, &QAbstractItemView::clicked, widget_, [this, id, quiet](const QModelIndex&) {
      if (!quiet()) events_.OnNotify(id, Notification::ListClick);
    });
  }
}

// Tab order and the radio groups from the template: a group starts at each WS_GROUP.
void QtDialogWindow::OrderTabs(const std::vector<Control*>& ordered) {
  QWidget* previous = nullptr;
  QButtonGroup* radios = nullptr;
  for (Control* c : ordered) {
    const dialog::ControlTemplate& t = *c->t;
    if (t.style & style::kGroup) radios = nullptr;
    if (t.kind == ControlKind::Radio && t.isAutomatic()) {
      if (!radios) radioGroups_.push_back(radios = new QButtonGroup(widget_));
      radios->addButton(c->button());
    }
    if (t.kind == ControlKind::Static || t.kind == ControlKind::Group) continue;
    if (!(t.style & style::kTabStop)) {
      c->widget->setFocusPolicy(Qt::ClickFocus);
      continue;
    }
    if (previous) QWidget::setTabOrder(previous, c->widget);
    previous = c->widget;
  }
}

// ---- the window -------------------------------------------------------------------------

void QtDialogWindow::SetCaption(TextView caption) { widget_->setWindowTitle(ToQ(caption)); }
Text QtDialogWindow::Caption() const { return FromQ(widget_->windowTitle()); }
bool QtDialogWindow::IsVisible() const { return widget_ && widget_->isVisible(); }

void QtDialogWindow::Show(bool show) {
  if (show == IsVisible()) return;
  if (show) {
    ended_ = false;
    widget_->show();
    widget_->raise();
    widget_->activateWindow();
  } else {
    widget_->hide();
  }
  host_.Shown(*this, show, 0);
}

int QtDialogWindow::RunModal() {
  if (ended_) return result_;
  widget_->setWindowModality(Qt::ApplicationModal);
  if (!IsVisible()) Show(true);
  QEventLoop loop;
  loop_ = &loop;
  host_.ModalStarted(*this);
  loop.exec(QEventLoop::DialogExec);
  host_.ModalEnded(*this);
  loop_ = nullptr;
  return result_;
}

void QtDialogWindow::End(int result) {
  result_ = result;
  ended_ = true;
  if (IsVisible()) {
    widget_->hide();
    host_.Shown(*this, false, result);
  }
  if (loop_) loop_->exit();
}

void QtDialogWindow::SetClientHeight(int pixels) { widget_->setFixedHeight(pixels); }

void QtDialogWindow::CloseRequested() { events_.OnClose(); }

void QtDialogWindow::EnterPressed() {
  const dialog::ControlTemplate* defaultButton = nullptr;
  for (const dialog::ControlTemplate& t : template_.controls)
    if (t.isDefaultButton()) {
      defaultButton = &t;
      break;
    }
  int id = defaultButton ? defaultButton->id : kIdOk;
  if (const Control* c = Find(id); c && c->button()) {
    if (c->enabled) c->button()->click();
    return;
  }
  events_.OnCommand(id, Notification::Clicked);
}

// ---- any control ------------------------------------------------------------------------

Text QtDialogWindow::GetText(int id) const {
  const Control* c = Find(id);
  if (!c) return Text();
  switch (c->t->kind) {
    case ControlKind::Button:
    case ControlKind::Check:
    case ControlKind::Radio: return FromQ(c->button()->text());
    case ControlKind::Group: return FromQ(qobject_cast<QGroupBox*>(c->widget)->title());
    case ControlKind::Edit: return c->textEdit() ? FromQ(c->textEdit()->toPlainText()) : FromQ(c->lineEdit()->text());
    case ControlKind::Combo:
      if (QLineEdit* edit = c->lineEdit()) return FromQ(edit->text());
      return c->combo()->currentIndex() >= 0 ? FromQ(c->combo()->currentText()) : Text();
    case ControlKind::Static:
    case ControlKind::List: break;
  }
  return c->text;
}

void QtDialogWindow::SetText(int id, TextView text) {
  Control* c = Find(id);
  if (!c) return;
  Programmatic self(programmatic_);
  QString q = ToQ(text);
  switch (c->t->kind) {
    case ControlKind::Button:
    case ControlKind::Check:
    case ControlKind::Radio: c->button()->setText(q); break;
    case ControlKind::Group: qobject_cast<QGroupBox*>(c->widget)->setTitle(q); break;
    case ControlKind::Edit:
      if (c->textEdit()) c->textEdit()->setPlainText(q);
      else c->lineEdit()->setText(q);
      break;
    case ControlKind::Combo:
      if (QLineEdit* edit = c->lineEdit()) edit->setText(q);
      break;
    case ControlKind::Static: {
      auto* label = qobject_cast<QLabel*>(c->widget);
      label->setText(label->buddy() ? q : WithoutMnemonic(q));
      break;
    }
    case ControlKind::List: break;
  }
  c->text = Text(text);
  // What the dialog writes shows at once, as UpdateWindow would.
  c->widget->repaint();
}

bool QtDialogWindow::IsEnabled(int id) const {
  const Control* c = Find(id);
  return c && c->enabled;
}
void QtDialogWindow::Enable(int id, bool enable) {
  if (Control* c = Find(id)) c->widget->setEnabled(c->enabled = enable);
}
bool QtDialogWindow::IsShown(int id) const {
  const Control* c = Find(id);
  return c && c->shown;
}
void QtDialogWindow::ShowControl(int id, bool show) {
  if (Control* c = Find(id)) c->widget->setVisible(c->shown = show);
}
bool QtDialogWindow::IsChecked(int id) const {
  const Control* c = Find(id);
  return c && c->button() && c->button()->isChecked();
}
void QtDialogWindow::SetCheck(int id, bool checked) {
  Control* c = Find(id);
  if (!c || !c->button()) return;
  Programmatic self(programmatic_);
  c->button()->setCheckable(true);
  c->button()->setChecked(checked);
}
std::pair<int, int> QtDialogWindow::ControlPosition(int id) const {
  const Control* c = Find(id);
  return c ? std::pair{c->x, c->y} : std::pair{0, 0};
}
void QtDialogWindow::MoveControl(int id, int x, int y) {
  if (Control* c = Find(id)) {
    c->x = x, c->y = y;
    Place(*c);
  }
}
void QtDialogWindow::SetFocus(int id) {
  if (Control* c = Find(id)) c->widget->setFocus(Qt::OtherFocusReason);
}

// ---- combo boxes ------------------------------------------------------------------------

void QtDialogWindow::ComboReset(int id) {
  Control* c = Find(id);
  if (!c || !c->combo()) return;
  Programmatic self(programmatic_);
  c->combo()->clear();
  if (QLineEdit* edit = c->lineEdit()) edit->clear();
}
int QtDialogWindow::ComboAdd(int id, TextView text) {
  Control* c = Find(id);
  if (!c || !c->combo()) return -1;
  Programmatic self(programmatic_);
  QString typed = c->lineEdit() ? c->lineEdit()->text() : QString();
  bool wasEmpty = c->combo()->count() == 0;
  c->combo()->addItem(ToQ(text));
  // Qt selects the first entry added; a Windows combo keeps no selection until one is made.
  if (wasEmpty) {
    c->combo()->setCurrentIndex(-1);
    if (QLineEdit* edit = c->lineEdit()) edit->setText(typed);
  }
  return c->combo()->count() - 1;
}
int QtDialogWindow::ComboCount(int id) const {
  const Control* c = Find(id);
  return c && c->combo() ? c->combo()->count() : 0;
}
Text QtDialogWindow::ComboItem(int id, int index) const {
  const Control* c = Find(id);
  if (!c || !c->combo() || index < 0 || index >= c->combo()->count()) return Text();
  return FromQ(c->combo()->itemText(index));
}
int QtDialogWindow::ComboSelection(int id) const {
  const Control* c = Find(id);
  return c && c->combo() ? c->combo()->currentIndex() : -1;
}
void QtDialogWindow::ComboSelect(int id, int index) {
  Control* c = Find(id);
  if (!c || !c->combo()) return;
  Programmatic self(programmatic_);
  QString typed = c->lineEdit() ? c->lineEdit()->text() : QString();
  bool valid = index >= 0 && index < c->combo()->count();
  c->combo()->setCurrentIndex(valid ? index : -1);
  // Clearing the selection leaves the edit part as it was.
  if (!valid)
    if (QLineEdit* edit = c->lineEdit()) edit->setText(typed);
}

// ---- report-view lists ------------------------------------------------------------------

void QtDialogWindow::ListSetColumns(int id, const std::vector<ListColumn>& columns) {
  Control* c = Find(id);
  if (!c || !c->list()) return;
  Programmatic self(programmatic_);
  c->columns = columns;
  QTreeWidget* list = c->list();
  list->setColumnCount(static_cast<int>(columns.size()));
  QStringList labels;
  for (const ListColumn& column : columns) labels << ToQ(column.text);
  list->setHeaderLabels(labels);
  for (size_t i = 0; i < columns.size(); ++i) {
    int column = static_cast<int>(i);
    list->header()->resizeSection(column, columns[i].width);
    list->headerItem()->setTextAlignment(column, ToAlignment(columns[i].align) | Qt::AlignVCenter);
  }
}
std::vector<ListColumn> QtDialogWindow::ListColumns(int id) const {
  const Control* c = Find(id);
  return c ? c->columns : std::vector<ListColumn>();
}
int QtDialogWindow::ListClientWidth(int id) const {
  const Control* c = Find(id);
  return c ? tq::ListClientWidth(c->t->cx) : 0;
}
void QtDialogWindow::ListSetExtendedStyle(int id, bool fullRowSelect, bool gridLines) {
  Control* c = Find(id);
  if (!c || !c->list()) return;
  c->list()->setAllColumnsShowFocus(fullRowSelect);
  c->list()->setSelectionBehavior(fullRowSelect ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
  if (auto* rows = dynamic_cast<ListRowDelegate*>(c->list()->itemDelegate())) rows->SetGridLines(gridLines);
  c->list()->viewport()->update();
}
void QtDialogWindow::ListDeleteAll(int id) {
  Control* c = Find(id);
  if (!c || !c->list()) return;
  Programmatic self(programmatic_);
  c->list()->clear();
}
void QtDialogWindow::ListInsert(int id, int index, const std::vector<Text>& cells) {
  Control* c = Find(id);
  if (!c || !c->list()) return;
  Programmatic self(programmatic_);
  auto* item = new QTreeWidgetItem();
  for (size_t i = 0; i < cells.size(); ++i) item->setText(static_cast<int>(i), ToQ(cells[i]));
  for (size_t i = 0; i < c->columns.size(); ++i)
    item->setTextAlignment(static_cast<int>(i), ToAlignment(c->columns[i].align) | Qt::AlignVCenter);
  int count = c->list()->topLevelItemCount();
  c->list()->insertTopLevelItem(std::clamp(index, 0, count), item);
}
int QtDialogWindow::ListCount(int id) const {
  const Control* c = Find(id);
  return c && c->list() ? c->list()->topLevelItemCount() : 0;
}
Text QtDialogWindow::ListText(int id, int item, int column) const {
  const Control* c = Find(id);
  QTreeWidgetItem* row = c ? c->row(item) : nullptr;
  return row && column >= 0 ? FromQ(row->text(column)) : Text();
}
void QtDialogWindow::ListSetText(int id, int item, int column, TextView text) {
  Control* c = Find(id);
  QTreeWidgetItem* row = c ? c->row(item) : nullptr;
  if (!row || column < 0) return;
  Programmatic self(programmatic_);
  row->setText(column, ToQ(text));
}
std::vector<int> QtDialogWindow::ListSelection(int id) const {
  std::vector<int> selected;
  const Control* c = Find(id);
  if (!c || !c->list()) return selected;
  for (int i = 0; i < c->list()->topLevelItemCount(); ++i)
    if (c->list()->topLevelItem(i)->isSelected()) selected.push_back(i);
  return selected;
}
void QtDialogWindow::ListSelect(int id, int item, bool selected) {
  Control* c = Find(id);
  QTreeWidgetItem* row = c ? c->row(item) : nullptr;
  if (!row) return;
  Programmatic self(programmatic_);
  row->setSelected(selected);
}

// ---- script lines -----------------------------------------------------------------------

// Each line acts on the widgets as a person would; the widgets' own signals notify the dialog.
class QtDialogWindow::Actions : public DialogLineActions {
 public:
  explicit Actions(QtDialogWindow& window) : window_(window) {}
  void Close() override {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(window_.widget_, &escape);
  }
  void Click(const dialog::ControlTemplate& t) override { window_.Find(t.id)->button()->click(); }
  void SelectEntry(const dialog::ControlTemplate& t, int index) override {
    QComboBox* combo = window_.Find(t.id)->combo();
    combo->setCurrentIndex(index);
    emit combo->activated(index);
  }
  void SelectRow(const dialog::ControlTemplate& t, int row) override {
    QTreeWidget* list = window_.Find(t.id)->list();
    QModelIndex index = list->model()->index(row, 0);
    list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    emit list->clicked(index);
  }
  void Type(const dialog::ControlTemplate& t, TextView text) override {
    Control& c = *window_.Find(t.id);
    QString typed = ToQ(text);
    if (QPlainTextEdit* edit = c.textEdit()) {
      edit->selectAll();
      edit->insertPlainText(typed);
      return;
    }
    QLineEdit* edit = c.lineEdit();
    if (edit->text() == typed) {
      emit edit->textEdited(typed);  // typed over with the same text: still an edit
      return;
    }
    edit->selectAll();
    edit->insert(typed);
  }
  void Dump(std::optional<int> control) override { window_.host_.Dump(window_, control); }

 private:
  QtDialogWindow& window_;
};

std::optional<Text> QtDialogWindow::ApplyScriptLine(const ScriptLine& line) {
  if (!IsDialogVerb(line.verb)) return u"'" + line.verb + u"' does not fit: the dialog " + FromUtf8(std::to_string(template_.id)) + u" waits";
  DialogLineAddress target = AddressOf(line);
  if (target.refusal) return target.refusal;
  if (target.address->dialog != template_.id || !IsVisible())
    return DialogAccessRefusal(line, target.address->dialog, false, false, std::nullopt);
  Actions actions(*this);
  return ApplyDialogLine(line, *target.address, template_, *this, actions);
}

}  // namespace tq::qt
