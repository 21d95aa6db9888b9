#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QStandardPaths>

#include "base/os/Os.hpp"
#include "qt/MainWindow.hpp"
#include "qt/WorkbenchAddIn.hpp"
#include "qt/WorkbenchScript.hpp"
#include "support/QtApp.hpp"
#include "support/DxfText.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::qt;

namespace {

const std::filesystem::path kExample = std::filesystem::path(TQ_EXAMPLE_SITE) / "drawings" / "設備標準図.dxf";

struct Workbench {
  Workbench() : window(FromUtf8(TQ_EXAMPLE_SITE "/Velum.ini"), CodePage("CP932")) {
    QStandardPaths::setTestModeEnabled(true);  // the recent files go to a test store
    window.SetQuiet(true);
    window.resize(1000, 700);
    window.show();
  }
  DrawingTab* Open(const std::filesystem::path& path) {
    DrawingTab* tab = window.OpenDrawing(path);
    EXPECT_TRUE(WaitForSignal(tab, SIGNAL(loaded())));
    return tab;
  }
  // Answers the next message box with `button` once it shows; what it asked is kept.
  void AnswerNextBox(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, &window, [this, button] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      asked = box->text();
      box->button(button)->click();
    });
  }
  // A copy of the example drawing: an open drawing is locked beside its file, which must not
  // happen in the source tree that other tests copy at the same time.
  std::filesystem::path Example() {
    std::filesystem::path copy = examples.path() / "設備標準図.dxf";
    if (!std::filesystem::exists(copy)) std::filesystem::copy_file(kExample, copy);
    return copy;
  }
  QApplication& app = QtApp();
  TempDir examples;  // outlives the window and the locks of its tabs
  MainWindow window;
  QString asked;
};

// Changes the colour of the drawing's first entity, as a command would.
void ChangeSomething(DrawingTab& tab) {
  auto ids = tab.drawing()->SelectAll({});
  ASSERT_FALSE(ids.empty());
  ASSERT_EQ(tab.drawing()->SetColourIndex(ids[0], 3), EditResult::Ok);
  tab.MarkChanged();
}

}  // namespace

TEST(Workbench, ADrawingWithKindsTheViewDoesNotDrawOpensAndSaysWhatItSkipped) {
  TempDir dir;
  dir.Write("odd.dxf", R12Drawing(LineTags("A1", 0, 0, 10, 10) + Tags{{0, "WIPEOUT"}, {5, "A2"}, {8, "0"}} +
                                  Tags{{0, "SPLINE"}, {5, "A3"}, {8, "0"}} + Tags{{0, "WIPEOUT"}, {5, "A4"}, {8, "0"}}));
  Workbench w;
  DrawingTab* tab = w.Open(dir / "odd.dxf");
  ASSERT_TRUE(tab->ready());
  EXPECT_EQ(tab->view().scene()->list.primitives.size(), 1u);
  EXPECT_TRUE(w.window.panel().history().contains(QStringLiteral("Not drawn: 3 entities (SPLINE 1, WIPEOUT 2)")))
      << w.window.panel().history().toStdString();
}

TEST(Workbench, ABrokenFileSaysWhyAndLeavesNoTab) {
  TempDir dir;
  dir.Write("broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nnot a number\n");
  Workbench w;
  DrawingTab* tab = w.window.OpenDrawing(dir / "broken.dxf");
  QSignalSpy failed(&w.window, &MainWindow::drawingFailed);
  EXPECT_TRUE(WaitForSignal(tab, SIGNAL(failed(QString))));
  QApplication::processEvents();
  EXPECT_EQ(w.window.tabCount(), 0);
  EXPECT_TRUE(w.window.panel().history().contains(QStringLiteral("cannot be opened")));
}

TEST(Workbench, TwoDrawingsInTwoTabsAreIndependent) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  std::filesystem::copy_file(kExample, dir / "b.dxf");
  Workbench w;
  DrawingTab* a = w.Open(dir / "a.dxf");
  DrawingTab* b = w.Open(dir / "b.dxf");
  ASSERT_EQ(w.window.tabCount(), 2);
  EXPECT_NE(a->drawing(), b->drawing());
  EXPECT_NE(a->view().scene(), b->view().scene());
  double bScale = b->view().viewport().scale();
  a->view().ZoomWindow({0, 0}, {10, 10});
  EXPECT_EQ(b->view().viewport().scale(), bScale);
  ChangeSomething(*a);
  EXPECT_TRUE(a->modified());
  EXPECT_FALSE(b->modified());
  // Opening the same file again shows its tab rather than a second copy.
  EXPECT_EQ(w.window.OpenDrawing(dir / "a.dxf"), a);
  EXPECT_EQ(w.window.tabCount(), 2);
}

TEST(Workbench, ClosingAChangedDrawingAsksAndCancelKeepsIt) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  ChangeSomething(*tab);
  w.AnswerNextBox(QMessageBox::Cancel);
  EXPECT_FALSE(w.window.CloseTab(0));
  EXPECT_EQ(w.asked, QStringLiteral("Save the changes to a.dxf?"));
  EXPECT_EQ(w.window.tabCount(), 1);
}

TEST(Workbench, NoClosesWithoutSaving) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  std::string before = dir.Read("a.dxf");
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  ChangeSomething(*tab);
  w.AnswerNextBox(QMessageBox::No);
  EXPECT_TRUE(w.window.CloseTab(0));
  EXPECT_EQ(w.window.tabCount(), 0);
  EXPECT_TRUE(dir.Read("a.dxf") == before);
  EXPECT_FALSE(std::filesystem::exists(dir / "a.dxf.bak"));
}

TEST(Workbench, YesSavesAtomicallyKeepingTheOldFileAsBak) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  std::string before = dir.Read("a.dxf");
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  ChangeSomething(*tab);
  w.AnswerNextBox(QMessageBox::Yes);
  EXPECT_TRUE(w.window.CloseTab(0));
  EXPECT_EQ(w.window.tabCount(), 0);
  EXPECT_TRUE(dir.Read("a.dxf") != before);
  EXPECT_TRUE(dir.Read("a.dxf.bak") == before);  // the file as it was, kept beside it
}

TEST(Workbench, AnOpenDrawingIsLockedUntilItsTabCloses) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  w.Open(dir / "a.dxf");
  Result<os::LockOwner> holder = os::ReadLockFile(os::LockFileOf(dir / "a.dxf"));
  ASSERT_TRUE(holder) << "the open drawing is not locked";
  EXPECT_EQ(holder->process, os::CurrentOwner().process);
  EXPECT_TRUE(w.window.CloseTab(0));
  EXPECT_FALSE(std::filesystem::exists(os::LockFileOf(dir / "a.dxf")));
}

TEST(Workbench, ADrawingAnotherWriterHeldAtOpeningIsNotSavedInPlaceAndTheHolderIsNamed) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  std::string before = dir.Read("a.dxf");
  // Another writer's lock: a live process of this host (this one, as the file tells it).
  os::LockOwner other = os::CurrentOwner();
  other.user = u"佐藤";
  dir.Write("a.dxf.lock", os::FormatLockFile(other));
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  ChangeSomething(*tab);
  Status saved = tab->Save();
  ASSERT_FALSE(saved);
  EXPECT_NE(saved.error().Describe().find("it is in use by 佐藤 on " + ToUtf8(other.host) + " (process " +
                                          std::to_string(other.process) + ", since " + other.time + ")"),
            std::string::npos)
      << saved.error().Describe();
  EXPECT_TRUE(dir.Read("a.dxf") == before);
  EXPECT_FALSE(std::filesystem::exists(dir / "a.dxf.bak"));
  // Under another name it is saved, and that file is the tab's from then on.
  Status savedAs = tab->Save(dir / "b.dxf");
  ASSERT_TRUE(savedAs) << savedAs.error().Describe();
  EXPECT_TRUE(dir.Read("b.dxf") != before);
  EXPECT_TRUE(std::filesystem::exists(os::LockFileOf(dir / "b.dxf")));
  EXPECT_TRUE(tab->Save());
}

TEST(Workbench, AnUnchangedDrawingClosesWithoutAsking) {
  Workbench w;
  w.Open(w.Example());
  EXPECT_TRUE(w.window.CloseTab(0));
  EXPECT_EQ(w.window.tabCount(), 0);
  EXPECT_TRUE(w.window.recentFiles().contains(QString::fromStdU16String(w.Example().u16string())));
}

TEST(Workbench, APointPromptIsAnsweredByAClickOnTheCanvas) {
  Workbench w;
  DrawingTab* tab = w.Open(w.Example());
  DrawingView& canvas = tab->view();
  QPointF at(200, 150);
  QTimer::singleShot(0, &canvas, [&] {
    EXPECT_TRUE(canvas.picking());
    QMouseEvent click(QEvent::MouseButtonPress, at, canvas.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&canvas, &click);
  });
  PickResult result = w.window.editor().GetPoint(u"基準点を指示: ");
  ASSERT_EQ(result.status, PickStatus::Normal);
  view::Vec2 expected = canvas.WorldAt(at);
  EXPECT_DOUBLE_EQ(result.point.x, expected.x);
  EXPECT_DOUBLE_EQ(result.point.y, expected.y);
  EXPECT_TRUE(w.window.panel().history().contains(QStringLiteral("基準点を指示: ")));
  EXPECT_FALSE(canvas.picking());
}

TEST(Workbench, EscCancelsAPointPrompt) {
  Workbench w;
  DrawingTab* tab = w.Open(w.Example());
  QTimer::singleShot(0, &tab->view(), [&] {
    QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, {});
    QApplication::sendEvent(&tab->view(), &esc);
  });
  EXPECT_EQ(w.window.editor().GetPoint(u"点: ").status, PickStatus::Cancel);
}

TEST(Workbench, TheCommandRunsTheAddInOrTheHookAttached) {
  Workbench w;
  DrawingTab* tab = w.Open(w.Example());
  w.window.RunCommand(QStringLiteral("tq_std_inf"));
  QtDialogWindow* main = w.window.addIn().dialogs().OpenDialog(200);
  ASSERT_NE(main, nullptr);
  EXPECT_FALSE(main->modal());
  EXPECT_EQ(main->Caption(), u"標準図積算");
  main->End(kIdCancel);
  DrawingTab* ranOn = nullptr;
  w.window.SetCommandRunner([&](DrawingTab& t, Editor& editor, HostServices& host) {
    ranOn = &t;
    editor.Print(host.HostIniFile() + u"\n");
  });
  w.window.RunCommand(QStringLiteral(" TQ_STD_INF "));
  EXPECT_EQ(ranOn, tab);
  EXPECT_TRUE(w.window.panel().history().contains(QStringLiteral("Velum.ini")));
}

TEST(Workbench, ZoomCommandsFromThePanel) {
  Workbench w;
  DrawingTab* tab = w.Open(w.Example());
  tab->view().ZoomWindow({0, 0}, {1, 1});
  double close = tab->view().viewport().scale();
  w.window.panel().input().setText(QStringLiteral("zoom e"));
  emit w.window.panel().input().returnPressed();
  EXPECT_LT(tab->view().viewport().scale(), close);
  w.window.RunCommand(QStringLiteral("FOO"));
  EXPECT_TRUE(w.window.panel().history().contains(QStringLiteral("Unknown command \"FOO\"")));
}

TEST(Workbench, WhatACommandChangesShowsAtOnceWhereTheViewIs) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  tab->view().ZoomWindow({0, 0}, {5000, 5000});
  double scale = tab->view().viewport().scale();
  auto ids = tab->drawing()->SelectAll({});
  ASSERT_FALSE(ids.empty());
  uint32_t record = ids[0].value - 1;
  auto colourOf = [&] {
    for (const view::Primitive& p : tab->view().scene()->list.primitives)
      if (p.source == record) return p.colour;
    return view::Rgb{0, 0, 0};
  };
  EXPECT_NE(colourOf(), (view::Rgb{255, 0, 0}));
  w.window.SetCommandRunner([&](DrawingTab& t, Editor&, HostServices&) {
    ASSERT_EQ(t.drawing()->SetColourIndex(ids[0], 1), EditResult::Ok);
  });
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  EXPECT_EQ(colourOf(), (view::Rgb{255, 0, 0}));
  EXPECT_EQ(tab->view().viewport().scale(), scale);
  EXPECT_TRUE(tab->modified());
}

TEST(Workbench, AScriptedPointIsAClickWhereThePointShowsAndPansToAPointOutsideTheView) {
  Workbench w;
  DrawingTab* tab = w.Open(kExample);
  ASSERT_TRUE(tab->ready());
  DrawingView& view = tab->view();
  view.ZoomWindow({0, 0}, {10000, 8000});
  std::vector<std::pair<double, double>> picked;
  QObject::connect(&view, &DrawingView::pointPicked, [&](double x, double y) { picked.emplace_back(x, y); });
  view.BeginPick();
  ClickDrawingPoint(view, 1234.5, 678.25);
  view.BeginPick();
  view::Vec2 centreBefore = view.viewport().centre();
  ClickDrawingPoint(view, 200000, 1000);  // far outside the window zoomed to
  ASSERT_EQ(picked.size(), 2u);
  EXPECT_NEAR(picked[0].first, 1234.5, 1e-6);
  EXPECT_NEAR(picked[0].second, 678.25, 1e-6);
  EXPECT_NEAR(picked[1].first, 200000, 1e-6);
  EXPECT_NEAR(picked[1].second, 1000, 1e-6);
  EXPECT_NE(view.viewport().centre().x, centreBefore.x);  // the view moved to show the point
}
