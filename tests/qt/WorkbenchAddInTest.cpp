// "TQ_STD_INF" in the workbench: the add-in with the Qt dialogs, one document per tab.
#include <gtest/gtest.h>

#include <QMessageBox>
#include <QStandardPaths>

#include "qt/MainWindow.hpp"
#include "qt/WorkbenchAddIn.hpp"
#include "support/QtApp.hpp"
#include "support/TempDir.hpp"
#include "view/Colours.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::qt;

namespace {

const std::filesystem::path kExample = std::filesystem::path(TQ_EXAMPLE_SITE) / "drawings" / "設備標準図.dxf";

ScriptLine Line(TextView text) { return ParseScriptLine(1, text)->value(); }

struct Workbench {
  Workbench() : window(FromUtf8(TQ_EXAMPLE_SITE "/Velum.ini"), CodePage("CP932")) {
    QStandardPaths::setTestModeEnabled(true);
    window.SetQuiet(true);
    window.resize(1000, 700);
    window.show();
    // Whatever modal box a failing test leaves open is closed, so that the run ends.
    QTimer::singleShot(30000, &window, [] {
      if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
    });
  }
  DrawingTab* Open(const std::filesystem::path& path) {
    DrawingTab* tab = window.OpenDrawing(path);
    EXPECT_TRUE(WaitForSignal(tab, SIGNAL(loaded())));
    return tab;
  }
  std::optional<Text> Apply(TextView text) {
    bool handled = false;
    return window.addIn().dialogs().ApplyScriptLine(Line(text), &handled);
  }
  QApplication& app = QtApp();
  MainWindow window;
};

// Presses "情報確認" and cancels its point prompt; notes whether the main dialog stayed shown
// and left the input to the prompt meanwhile.
struct PromptSeen {
  bool shown = false, takesInput = true;
};
PromptSeen CancelledInfoCheck(Workbench& w) {
  PromptSeen seen;
  QTimer::singleShot(0, &w.window, [&] {
    QtDialogWindow* main = w.window.addIn().dialogs().OpenDialog(200);
    seen.shown = main && main->IsVisible();
    seen.takesInput = main && main->widget().isEnabled();
    QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, {});
    QApplication::sendEvent(&w.window.currentTab()->view(), &esc);
  });
  EXPECT_EQ(w.Apply(u"click 200:202"), std::nullopt);
  return seen;
}

}  // namespace

TEST(WorkbenchAddIn, TwoDrawingsOpenKeepSeparatePerDocumentData) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  std::filesystem::copy_file(kExample, dir / "b.dxf");
  Workbench w;
  DrawingTab* a = w.Open(dir / "a.dxf");
  DrawingTab* b = w.Open(dir / "b.dxf");
  ASSERT_EQ(w.window.currentTab(), b);
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  CancelledInfoCheck(w);
  w.window.OpenDrawing(dir / "a.dxf");  // shows a's tab again
  ASSERT_EQ(w.window.currentTab(), a);
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  CancelledInfoCheck(w);

  WorkbenchDocuments& documents = w.window.addIn().documents();
  AsdkDataManager<CDocData>& data = w.window.addIn().addIn().dataManager();
  ASSERT_NE(documents.Of(*a), nullptr);
  ASSERT_NE(documents.Of(*b), nullptr);
  EXPECT_EQ(data.RecordCount(), 2u);
  data.DocData(*documents.Of(*a)).marking.busy = true;
  EXPECT_FALSE(data.DocData(*documents.Of(*b)).marking.busy);
  // A drawing that closes takes its record with it; the other keeps its own.
  Document* bDocument = documents.Of(*b);
  ASSERT_TRUE(w.window.CloseTab(0));
  EXPECT_EQ(data.RecordCount(), 1u);
  EXPECT_TRUE(data.HasRecord(*bDocument));
}

TEST(WorkbenchAddIn, WhileAPointPromptWaitsTheMainDialogStaysShownAndLeavesTheInputToIt) {
  // A copy: an open drawing is locked beside its file, never in the source tree other tests copy.
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  w.Open(dir / "a.dxf");
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  PromptSeen seen = CancelledInfoCheck(w);
  EXPECT_TRUE(seen.shown);
  EXPECT_FALSE(seen.takesInput);
  QtDialogWindow* main = w.window.addIn().dialogs().OpenDialog(200);
  ASSERT_NE(main, nullptr);
  EXPECT_TRUE(main->widget().isEnabled());  // the prompt answered, it takes input again
}

TEST(WorkbenchAddIn, TheFramesMarkedByTheTakeoffCheckShowInTheirColourWhileTheBoxAsks) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  DrawingTab* tab = w.Open(dir / "a.dxf");
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  view::Rgb marked = view::AciToRgb(w.window.addIn().addIn().settings().ReadChangeColour().value());
  auto inMarkedColour = [&] {
    size_t n = 0;
    for (const view::Primitive& p : tab->view().scene()->list.primitives) n += p.colour == marked;
    return n;
  };
  size_t before = inMarkedColour();
  size_t whileAsked = 0;
  QString asked;
  QTimer::singleShot(0, &w.window, [&] {
    whileAsked = inMarkedColour();
    if (QMessageBox* box = w.window.addIn().ui().openBox()) asked = box->text();
    bool handled = false;
    w.window.addIn().ui().ApplyScriptLine(Line(u"answer Cancel"), &handled);
  });
  EXPECT_EQ(w.Apply(u"click 200:203"), std::nullopt);
  EXPECT_EQ(asked, QStringLiteral("情報が設定されていない標準図があります。"));
  EXPECT_GT(whileAsked, before);
  EXPECT_EQ(inMarkedColour(), before);  // the colours are back after the answer
}

TEST(WorkbenchAddIn, TheAttributeDialogRunsModalOnThePickedDrawingAndTakesInputAlone) {
  TempDir dir;
  std::filesystem::copy_file(kExample, dir / "a.dxf");
  Workbench w;
  w.Open(dir / "a.dxf");
  w.window.RunCommand(QStringLiteral("TQ_STD_INF"));
  QtDialogHost& dialogs = w.window.addIn().dialogs();
  int modal = 0;
  std::optional<Text> behind, closed;
  QTimer::singleShot(0, &w.window, [&] {
    // Frame (0,0) holds the sheet M-101; its attribute dialog opens once the point is given.
    WhenReady([&] { return dialogs.RunningModal() != nullptr; },
              [&] {
                modal = dialogs.RunningModal()->dialogTemplate().id;
                behind = w.Apply(u"click 200:201");
                // Closing asks whether to leave without registering: OK leaves.
                WhenReady([&] { return w.window.addIn().ui().openBox() != nullptr; },
                          [&] {
                            bool handled = false;
                            w.window.addIn().ui().ApplyScriptLine(Line(u"answer OK"), &handled);
                          });
                closed = w.Apply(u"close 1000");
              });
    emit w.window.panel().entered(QStringLiteral("1000,1000"));
  });
  EXPECT_EQ(w.Apply(u"click 200:202"), std::nullopt);
  EXPECT_EQ(modal, 1000);
  EXPECT_EQ(behind, Text(u"the dialog 200 is behind the modal dialog 1000"));
  EXPECT_EQ(closed, std::nullopt);
  EXPECT_EQ(dialogs.RunningModal(), nullptr);
  EXPECT_EQ(dialogs.OpenDialog(1000), nullptr);
}
