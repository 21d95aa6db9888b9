// The dialogs as Qt widgets: laid out by the Windows rule for the stand-in font, drawn in it,
// acting on script lines through the widgets as the headless host acts on them in memory.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <sstream>

#include "common/DialogMetrics.hpp"
#include "common/ScriptRunner.hpp"
#include "headless/HeadlessDialogs.hpp"
#include "qt/QtDialogHost.hpp"
#include "qt/QtUi.hpp"
#include "support/QtApp.hpp"
#include "support/TempDir.hpp"
#include "base/Paths.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::qt;

namespace {

const dialog::DialogTemplate& Template(int id) {
  const dialog::DialogTemplate* t = dialog::BuiltInResources().FindDialog(id);
  EXPECT_NE(t, nullptr) << id;
  return *t;
}

// Dialog units to pixels for 7 × 13 base units, rounded to the nearest pixel.
int PixelsX(int units) { return (units * 7 + 2) / 4; }
int PixelsY(int units) { return (units * 13 + 4) / 8; }

class Recorder : public DialogEvents {
 public:
  void OnCommand(int id, Notification code) override { Add("command", id, code); }
  void OnNotify(int id, Notification code) override { Add("notify", id, code); }
  void OnClose() override { events.push_back("close"); }
  std::vector<std::string> events;

 private:
  void Add(const char* what, int id, Notification code) {
    events.push_back(std::string(what) + " " + std::to_string(id) + " " + std::to_string(static_cast<int>(code)));
  }
};

ScriptLine Line(TextView text) {
  auto parsed = ParseScriptLine(1, text);
  EXPECT_TRUE(parsed && *parsed);
  return parsed->value();
}

// One template realised by both hosts, modeless and shown, each with its own recorder.
struct BothHosts {
  explicit BothHosts(int dialogId)
      : app(QtApp()),
        runner(u"", transcript),
        headlessDialogs(runner, transcript),
        headless(headlessDialogs.CreateDialogWindow(Template(dialogId), headlessEvents, false)),
        qt(qtDialogs.CreateDialogWindow(Template(dialogId), qtEvents, false)) {
    headless->Show(true);
    qt->Show(true);
  }
  // The same change by the dialog itself, in both.
  template <class F>
  void Both(F change) {
    change(*headless);
    change(*qt);
  }
  std::optional<Text> ApplyHeadless(TextView text) {
    bool handled = false;
    return headlessDialogs.ApplyDialogLine(Line(text), nullptr, &handled);
  }
  std::optional<Text> ApplyQt(TextView text) { return window().ApplyScriptLine(Line(text)); }
  QtDialogWindow& window() { return static_cast<QtDialogWindow&>(*qt); }

  QApplication& app;
  std::ostringstream out;
  Transcript transcript{out};
  ScriptRunner runner;
  headless::HeadlessDialogs headlessDialogs;
  QtDialogHost qtDialogs;
  Recorder headlessEvents, qtEvents;
  std::unique_ptr<DialogWindow> headless, qt;
};

void ExpectGeometryByTheWindowsRule(int dialogId) {
  QtApp();
  QtDialogHost host;
  Recorder events;
  const dialog::DialogTemplate& t = Template(dialogId);
  auto made = host.CreateDialogWindow(t, events, false);
  auto& window = static_cast<QtDialogWindow&>(*made);
  EXPECT_NEAR(window.widget().width(), PixelsX(t.cx), 1);
  EXPECT_NEAR(window.widget().height(), PixelsY(t.cy), 1);
  for (const dialog::ControlTemplate& c : t.controls) {
    QWidget* widget = window.WidgetOf(c);
    ASSERT_NE(widget, nullptr) << ToUtf8(c.symbol);
    // A combo's template height is its dropped-down list; the closed field is 12 units high.
    int height = c.kind == dialog::ControlKind::Combo ? PixelsY(12) : PixelsY(c.cy);
    QRect got = widget->geometry();
    std::string name = ToUtf8(c.symbol) + " " + ToUtf8(c.caption);
    EXPECT_NEAR(got.x(), PixelsX(c.x), 1) << name;
    EXPECT_NEAR(got.y(), PixelsY(c.y), 1) << name;
    EXPECT_NEAR(got.width(), PixelsX(c.cx), 1) << name;
    EXPECT_NEAR(got.height(), height, 1) << name;
  }
}

}  // namespace

TEST(DialogGeometry, EveryControlOfTheMainDialogLandsWhereTheWindowsRulePutsIt) { ExpectGeometryByTheWindowsRule(200); }
TEST(DialogGeometry, EveryControlOfTheTakeoffDialogLandsWhereTheWindowsRulePutsIt) { ExpectGeometryByTheWindowsRule(2000); }

TEST(DialogFont, ADialogIsDrawnInIpaPGothicWhoseBaseUnitsAreTheSharedOnes) {
  QtApp();
  QtDialogHost host;
  Recorder events;
  auto made = host.CreateDialogWindow(Template(200), events, false);
  auto& window = static_cast<QtDialogWindow&>(*made);
  QFont font = window.ControlWidget(201)->font();
  EXPECT_EQ(QFontInfo(font).family(), QStringLiteral("IPAPGothic"));
  QFontMetrics metrics(font);
  int alphabet = metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
  EXPECT_EQ(dialog::AverageCharWidth(alphabet), kBaseUnitX);
  EXPECT_EQ(metrics.height(), kBaseUnitY);
}

TEST(DialogScript, AClickOnAPlainRadioButtonRaisesWhatTheHeadlessWindowRaises) {
  BothHosts both(3000);
  EXPECT_EQ(both.ApplyHeadless(u"click 3000:3101"), std::nullopt);
  EXPECT_EQ(both.ApplyQt(u"click 3000:3101"), std::nullopt);
  EXPECT_EQ(both.qtEvents.events, both.headlessEvents.events);
  EXPECT_EQ(both.qtEvents.events, std::vector<std::string>{"command 3101 0"});
  // A plain radio button is checked by its dialog, not by the click.
  EXPECT_FALSE(both.qt->IsChecked(3101));
  EXPECT_EQ(both.qt->IsChecked(3101), both.headless->IsChecked(3101));
}

TEST(DialogScript, ChoosingAComboEntryRaisesSelChangeInBothHosts) {
  BothHosts both(3000);
  both.Both([](DialogWindow& w) {
    w.ComboAdd(3200, u"拾い");
    w.ComboAdd(3200, u"集計");
  });
  EXPECT_EQ(both.ApplyHeadless(u"select 3000:3200 集計"), std::nullopt);
  EXPECT_EQ(both.ApplyQt(u"select 3000:3200 集計"), std::nullopt);
  EXPECT_EQ(both.qtEvents.events, both.headlessEvents.events);
  EXPECT_EQ(both.qtEvents.events, std::vector<std::string>{"command 3200 1"});
  EXPECT_EQ(both.qt->ComboSelection(3200), 1);
  EXPECT_EQ(both.qt->GetText(3200), u"集計");
  EXPECT_EQ(both.ApplyQt(u"select 3000:3200 5"), both.ApplyHeadless(u"select 3000:3200 5"));
  EXPECT_EQ(both.ApplyQt(u"select 3000:3200 5"), Text(u"the combo 3000:3200 has no entry 5 (it has 2)"));
}

TEST(DialogScript, TypingInAnEditRaisesItsChangeInBothHosts) {
  BothHosts both(202);
  EXPECT_EQ(both.ApplyHeadless(u"type 202:387 2.5"), std::nullopt);
  EXPECT_EQ(both.ApplyQt(u"type 202:387 2.5"), std::nullopt);
  EXPECT_EQ(both.qtEvents.events, both.headlessEvents.events);
  EXPECT_EQ(both.qtEvents.events, std::vector<std::string>{"command 387 768"});
  EXPECT_EQ(static_cast<QLineEdit*>(both.window().ControlWidget(387))->text(), QStringLiteral("2.5"));
}

TEST(DialogScript, SelectingAListRowRaisesItemChangedThenClickInBothHosts) {
  BothHosts both(2000);
  both.Both([](DialogWindow& w) {
    w.ListSetColumns(389, {{u"記号", 60, ColumnAlign::Left}, {u"数量", 40, ColumnAlign::Right}});
    w.ListInsert(389, 0, {u"P-1", u"2"});
    w.ListInsert(389, 1, {u"P-2", u"3"});
  });
  EXPECT_EQ(both.ApplyHeadless(u"select 2000:389 1"), std::nullopt);
  EXPECT_EQ(both.ApplyQt(u"select 2000:389 1"), std::nullopt);
  EXPECT_EQ(both.qtEvents.events, both.headlessEvents.events);
  EXPECT_EQ(both.qtEvents.events, (std::vector<std::string>{"notify 389 -101", "notify 389 -2"}));
  EXPECT_EQ(both.qt->ListSelection(389), std::vector<int>{1});
}

TEST(DialogScript, WhatTheDialogChangesItselfNotifiesNothing) {
  BothHosts both(2000);
  QtDialogWindow& w = both.window();
  w.ListSetColumns(389, {{u"記号", 60, ColumnAlign::Left}});
  w.ListInsert(389, 0, {u"P-1"});
  w.ListSelect(389, 0, true);
  w.ComboAdd(2300, u"鋼管");
  w.ComboSelect(2300, 0);
  w.SetText(2300, u"銅管");
  w.SetText(2100, u"A1");
  EXPECT_TRUE(both.qtEvents.events.empty()) << both.qtEvents.events.front();
}

TEST(DialogScript, AHiddenOrDisabledControlIsRefusedWithTheHeadlessReason) {
  BothHosts both(200);
  EXPECT_EQ(both.ApplyQt(u"click 200:1"), Text(u"the control 200:1 is hidden"));
  EXPECT_EQ(both.ApplyQt(u"click 200:1"), both.ApplyHeadless(u"click 200:1"));
  both.Both([](DialogWindow& w) { w.Enable(201, false); });
  EXPECT_EQ(both.ApplyQt(u"click 200:201"), Text(u"the control 200:201 is disabled"));
  EXPECT_EQ(both.ApplyQt(u"click 200:201"), both.ApplyHeadless(u"click 200:201"));
  EXPECT_EQ(both.ApplyQt(u"click 200:999"), both.ApplyHeadless(u"click 200:999"));
  EXPECT_EQ(both.ApplyQt(u"click 200:200"), both.ApplyHeadless(u"click 200:200"));
  EXPECT_EQ(both.ApplyQt(u"click 3000:1"), both.ApplyHeadless(u"click 3000:1"));
  EXPECT_TRUE(both.qtEvents.events.empty());
}

TEST(DialogKeys, EnterPressesTheDefaultButtonAndEscCancels) {
  QtApp();
  QtDialogHost host;
  Recorder events;
  auto made = host.CreateDialogWindow(Template(202), events, false);
  auto& window = static_cast<QtDialogWindow&>(*made);
  window.Show(true);
  QWidget* edit = window.ControlWidget(387);
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(edit, &enter);
  EXPECT_EQ(events.events, std::vector<std::string>{"command 1 0"});
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(edit, &escape);
  EXPECT_EQ(events.events, (std::vector<std::string>{"command 1 0", "close"}));
}

TEST(DialogKeys, TheTabOrderIsTheTemplateOrder) {
  QtApp();
  QtDialogHost host;
  Recorder events;
  const dialog::DialogTemplate& t = Template(1000);
  auto made = host.CreateDialogWindow(t, events, false);
  auto& window = static_cast<QtDialogWindow&>(*made);
  std::vector<QWidget*> expected;
  for (const dialog::ControlTemplate& c : t.controls)
    if (c.style & dialog::style::kTabStop) expected.push_back(window.WidgetOf(c));
  ASSERT_GT(expected.size(), 10u);
  window.Show(true);
  // Tab, pressed in each control that takes it, moves the focus to the next in template order.
  auto focusedIn = [&](QWidget* control) {
    QWidget* focus = window.widget().focusWidget();
    return focus == control || control->isAncestorOf(focus);
  };
  for (size_t i = 0; i + 1 < expected.size(); ++i) {
    expected[i]->setFocus(Qt::TabFocusReason);
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(window.widget().focusWidget(), &tab);
    EXPECT_TRUE(focusedIn(expected[i + 1])) << "after " << i << " " << ToUtf8(t.controls[0].caption);
  }
}

TEST(MessageBoxes, EnterAnswersWithTheDefaultButtonTheRequestNames) {
  QtApp();
  QtUi ui(nullptr, nullptr);
  bool defaultIsNo = false;
  QTimer::singleShot(0, [&] {
    QMessageBox* box = ui.openBox();
    ASSERT_NE(box, nullptr);
    defaultIsNo = static_cast<QAbstractButton*>(box->defaultButton()) == box->button(QMessageBox::No);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(box, &enter);
  });
  MessageAnswer answer = ui.ShowMessage({u"上書きしますか?", MessageIcon::Warning, MessageButtons::YesNo, 1});
  EXPECT_TRUE(defaultIsNo);
  EXPECT_EQ(answer, MessageAnswer::No);
}

TEST(MessageBoxes, AScriptAnswersThroughTheBoxButtonsAndIsRefusedInTheHeadlessWords) {
  QtApp();
  QtUi ui(nullptr, nullptr);
  std::optional<Text> refused;
  QTimer::singleShot(0, [&] {
    bool handled = false;
    refused = ui.ApplyScriptLine(Line(u"answer retry"), &handled);
    ui.ApplyScriptLine(Line(u"answer cancel"), &handled);
  });
  MessageAnswer answer = ui.ShowMessage({u"続けますか?", MessageIcon::Question, MessageButtons::OkCancel, 0});
  EXPECT_EQ(answer, MessageAnswer::Cancel);
  EXPECT_EQ(refused, Text(u"the message box has no button retry: its buttons are OK, Cancel"));
}

namespace {

// Whether the rectangle holds pixels much darker than the dialog's face: text drawn there.
bool HasInk(const QImage& image, const QRect& rect) {
  QColor face = image.pixelColor(1, image.height() - 2);
  for (int y = rect.top(); y <= rect.bottom(); ++y)
    for (int x = rect.left(); x <= rect.right(); ++x)
      if (face.lightness() - image.pixelColor(x, y).lightness() > 96) return true;
  return false;
}

// The grabbed picture of a dialog; saved as DIR/dialog-ID.png when TQ_DIALOG_SHOTS names DIR.
QImage Shot(QtDialogWindow& window) {
  QImage image = window.widget().grab().toImage();
  QByteArray dir = qgetenv("TQ_DIALOG_SHOTS");
  if (!dir.isEmpty())
    image.save(QString::fromUtf8(dir) + QStringLiteral("/dialog-%1.png").arg(window.dialogTemplate().id));
  return image;
}

}  // namespace

TEST(DialogPicture, EveryCaptionOfTheMainAndSizeDialogsIsDrawn) {
  QtApp();
  for (int id : {200, 201}) {
    QtDialogHost host;
    Recorder events;
    auto made = host.CreateDialogWindow(Template(id), events, false);
    auto& window = static_cast<QtDialogWindow&>(*made);
    window.Show(true);
    QImage image = Shot(window);
    for (const dialog::ControlTemplate& c : Template(id).controls) {
      if (!c.visible() || c.caption.empty() || c.kind != dialog::ControlKind::Button) continue;
      EXPECT_TRUE(HasInk(image, window.WidgetOf(c)->geometry().adjusted(3, 3, -3, -3))) << ToUtf8(c.caption);
    }
  }
}

TEST(DialogPicture, ASelectedListRowIsPaintedInTheHighlightColour) {
  QtApp();
  QtDialogHost host;
  Recorder events;
  auto made = host.CreateDialogWindow(Template(2000), events, false);
  auto& window = static_cast<QtDialogWindow&>(*made);
  window.ListSetColumns(389, {{u"記号", 50, ColumnAlign::Left}, {u"部材", 120, ColumnAlign::Left}, {u"数量", 50, ColumnAlign::Right}});
  window.ListSetExtendedStyle(389, true, true);
  window.ListInsert(389, 0, {u"AC-1", u"配管用炭素鋼鋼管（白）ねじ接合 32A", u"3.0"});
  window.ListInsert(389, 1, {u"AC-2", u"保温", u"12"});
  window.ListSelect(389, 1, true);
  window.Show(true);
  QImage image = Shot(window);
  auto* list = static_cast<QTreeWidget*>(window.ControlWidget(389));
  QRect second = list->visualItemRect(list->topLevelItem(1));
  QPoint inRow = list->viewport()->mapTo(&window.widget(), second.center());
  EXPECT_EQ(image.pixelColor(inRow.x() - second.width() / 2 + 1, inRow.y()),
            list->palette().color(QPalette::Active, QPalette::Highlight));
}

TEST(SaveFileDialog, OffersTheFilterNameAndExtensionAndAsksBeforeReplacingAFile) {
  QtApp();
  TempDir dir;
  dir.Write("out.txt", "old");
  QtUi ui(nullptr, nullptr);
  QStringList filters, selected;
  QString suffix, asked;
  WhenReady([&] { return ui.openSaveDialog() != nullptr; },
            [&] {
              QFileDialog* dialog = ui.openSaveDialog();
              filters = dialog->nameFilters();
              suffix = dialog->defaultSuffix();
              selected = dialog->selectedFiles();
              WhenReady([&] { return ui.openBox() != nullptr; },
                        [&] {
                          asked = ui.openBox()->text();
                          bool handled = false;
                          ui.ApplyScriptLine(Line(u"answer Yes"), &handled);
                        });
              bool handled = false;
              ui.ApplyScriptLine(Line(u"save \"" + FromFsPath(dir / "out") + u"\""), &handled);
            });
  std::optional<Text> path = ui.AskSaveFile(
      {u"図面_CI-NETコード.txt", u"txt", u"ﾃｷｽﾄﾌｧｲﾙ (*.txt)|*.txt|CSV file (*.csv)|*.csv|All files (*.*)|*.*||", true});
  EXPECT_EQ(filters, (QStringList{QStringLiteral("ﾃｷｽﾄﾌｧｲﾙ (*.txt)"), QStringLiteral("CSV file (*.csv)"),
                                  QStringLiteral("All files (*.*)")}));
  EXPECT_EQ(suffix, QStringLiteral("txt"));
  ASSERT_EQ(selected.size(), 1);
  EXPECT_TRUE(selected[0].endsWith(QStringLiteral("図面_CI-NETコード.txt"))) << selected[0].toStdString();
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(*path, FromFsPath(dir / "out.txt"));
  EXPECT_EQ(asked.toStdU16String(), FromFsPath(dir / "out.txt") + u" は既に存在します。\n上書きしますか?");
}

TEST(StatusBarProgress, ShowsTheTextAndPositionUntilTheEnd) {
  QtApp();
  QStatusBar bar;
  QtUi ui(nullptr, &bar);
  auto* progress = bar.findChild<QProgressBar*>();
  auto* text = bar.findChild<QLabel*>();
  ASSERT_NE(progress, nullptr);
  ASSERT_NE(text, nullptr);
  EXPECT_TRUE(progress->isHidden());
  ui.BeginProgress(u"拾い確認", 10);
  ui.SetProgress(4);
  EXPECT_FALSE(progress->isHidden());
  EXPECT_EQ(text->text(), QStringLiteral("拾い確認"));
  EXPECT_EQ(progress->maximum(), 10);
  EXPECT_EQ(progress->value(), 4);
  ui.EndProgress();
  EXPECT_TRUE(progress->isHidden());
}

TEST(DialogScript, AnAutomaticCheckBoxAndTypingInAComboActAsInTheHeadlessHost) {
  BothHosts both(2000);
  EXPECT_EQ(both.ApplyHeadless(u"type 2000:2300 鋼管"), std::nullopt);
  EXPECT_EQ(both.ApplyQt(u"type 2000:2300 鋼管"), std::nullopt);
  EXPECT_EQ(both.qtEvents.events, both.headlessEvents.events);
  EXPECT_EQ(both.qtEvents.events, std::vector<std::string>{"command 2300 5"});
  EXPECT_EQ(both.qt->GetText(2300), u"鋼管");

  BothHosts size(201);
  const dialog::ControlTemplate& first = *std::find_if(Template(201).controls.begin(), Template(201).controls.end(),
                                                       [](const auto& c) { return c.kind == dialog::ControlKind::Check; });
  Text line = u"click 201:" + FromUtf8(std::to_string(first.id));
  EXPECT_EQ(size.ApplyHeadless(line), std::nullopt);
  EXPECT_EQ(size.ApplyQt(line), std::nullopt);
  EXPECT_EQ(size.qtEvents.events, size.headlessEvents.events);
  EXPECT_TRUE(size.qt->IsChecked(first.id));
  EXPECT_EQ(size.qt->IsChecked(first.id), size.headless->IsChecked(first.id));
}
