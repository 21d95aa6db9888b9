// The script runner and the headless dialogs: what a line can and cannot do.
#include <gtest/gtest.h>

#include <sstream>

#include "headless/HeadlessDialogs.hpp"
#include "headless/HeadlessUi.hpp"
#include "support/ScriptRun.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// Dialogs of the test: the main dialog's template run modeless, the file output's run modal.
class ModelessTestDialog : public dialog::Dialog {
 public:
  using dialog::Dialog::Dialog;
  using dialog::Dialog::EnableItem;
  int clicks = 0;

 protected:
  void OnCommand(int id, Notification code) override {
    if (id == 201 && code == Notification::Clicked) ++clicks;
    dialog::Dialog::OnCommand(id, code);
  }
};

class ModalTestDialog : public dialog::Dialog {
 public:
  using dialog::Dialog::Dialog;
  std::vector<std::pair<int, Notification>> heard;

 protected:
  bool OnInitDialog() override {
    Combo(3200).AddString(u"全て");
    Combo(3200).AddString(u"A材");
    return true;
  }
  void OnCommand(int id, Notification code) override {
    heard.emplace_back(id, code);
    dialog::Dialog::OnCommand(id, code);
  }
};

// The runner and the headless host without an add-in: `body` opens dialogs and asks.
struct Harness {
  std::ostringstream out;
  Transcript transcript{out};
  ScriptRunner runner;
  headless::HeadlessDialogs dialogs{runner, transcript};
  headless::HeadlessUi ui{runner, transcript};
  explicit Harness(const std::string& script) : runner(FromUtf8(script), transcript) {}
  dialog::DialogServices services() { return {dialogs, ui}; }
  std::vector<std::string> events() const { return Lines(out.str()); }
  // Runs `body`; false when the script stopped.
  template <class Body>
  bool Run(Body body) {
    try {
      body();
      return true;
    } catch (const ScriptStopped&) {
      return false;
    }
  }
};

std::string Last(const Harness& h) { return h.events().empty() ? std::string() : h.events().back(); }

}  // namespace

TEST(ScriptErrors, ClickingADisabledControlIsAnError) {
  Harness h("click 200:201\n");
  ModelessTestDialog main(200, h.services());
  main.Create();
  main.ShowWindow(true);
  main.EnableItem(201, false);
  class Top : public Waiter {
   public:
    explicit Top(headless::HeadlessDialogs& d) : d_(d) {}
    Text Describe() const override { return u"the command line waits"; }
    std::optional<Text> Apply(const ScriptLine& line) override {
      bool handled = false;
      return d_.ApplyDialogLine(line, nullptr, &handled);
    }
    bool Satisfied() const override { return false; }
    headless::HeadlessDialogs& d_;
  } top(h.dialogs);
  EXPECT_FALSE(h.Run([&] { h.runner.Serve(top, true); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":1,"text":"the control 200:201 is disabled"})");
  EXPECT_EQ(main.clicks, 0);
}

TEST(ScriptErrors, ALineForADialogBehindAModalOneIsAnError) {
  Harness h("select 3000:3200 \"A材\"\nclick 200:201\n");
  ModelessTestDialog main(200, h.services());
  main.Create();
  main.ShowWindow(true);
  ModalTestDialog fileOut(3000, h.services());
  EXPECT_FALSE(h.Run([&] { fileOut.DoModal(); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":2,"text":"the dialog 200 is behind the modal dialog 3000"})");
  EXPECT_EQ(main.clicks, 0);
  ASSERT_FALSE(fileOut.heard.empty());  // the first line reached the modal dialog
  EXPECT_EQ(fileOut.heard.front(), (std::pair<int, Notification>{3200, Notification::SelChange}));
}

TEST(ScriptErrors, AnAnswerThatIsNotAButtonOfTheBoxIsAnError) {
  Harness h("answer Yes\n");
  EXPECT_FALSE(h.Run([&] { h.ui.ShowMessage({u"行を削除します。よろしいですか。", MessageIcon::Question, MessageButtons::OkCancel, 1}); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":1,"text":"the message box has no button Yes: its buttons are OK, Cancel"})");
}

TEST(ScriptErrors, TheScriptEndingWhileABoxWaitsIsAnError) {
  Harness h("# nothing answers\n");
  EXPECT_FALSE(h.Run([&] { h.ui.ShowMessage({u"ファイル出力が終了しました", MessageIcon::Information, MessageButtons::Ok, 0}); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":1,"text":"the script ended while a message box waits"})");
}

TEST(ScriptErrors, TheScriptEndingWhileAModalDialogWaitsIsAnError) {
  Harness h("");
  ModalTestDialog fileOut(3000, h.services());
  EXPECT_FALSE(h.Run([&] { fileOut.DoModal(); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":0,"text":"the script ended while the dialog 3000 waits"})");
}

TEST(ScriptErrors, AQuoteLeftOpenIsAnError) {
  Harness h("answer \"OK\n");
  EXPECT_FALSE(h.Run([&] { h.ui.ShowMessage({u"x", MessageIcon::None, MessageButtons::Ok, 0}); }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":1,"text":"a quoted token is not closed"})");
}

TEST(ScriptErrors, ALineThatDoesNotFitWhatWaitsIsAnError) {
  Harness h("point 1 2\n");
  EXPECT_FALSE(h.Run([&] { h.ui.ShowMessage({u"x", MessageIcon::None, MessageButtons::YesNo, 0}); }));
  EXPECT_EQ(Last(h), R"x({"event":"error","line":1,"text":"'point' does not fit: a message box waits (Yes, No)"})x");
}

TEST(ScriptErrors, NothingIsWrittenAfterTheError) {
  Harness h("click 3000:9\n");
  // The modal dialog goes away as the run unwinds, but the error stays the last event.
  EXPECT_FALSE(h.Run([&] {
    ModalTestDialog fileOut(3000, h.services());
    fileOut.DoModal();
  }));
  EXPECT_EQ(Last(h), R"({"event":"error","line":1,"text":"the dialog 3000 has no control 9"})");
}

TEST(ScriptLines, SelectAndTypeFireTheNotificationsARealControlSends) {
  Harness h("select 3000:3200 1\nclick 3000:3304\nclose 3000\n");
  ModalTestDialog fileOut(3000, h.services());
  int result = -1;
  ASSERT_TRUE(h.Run([&] { result = fileOut.DoModal(); }));
  EXPECT_EQ(result, kIdCancel);
  ASSERT_EQ(fileOut.heard.size(), 2u);
  EXPECT_EQ(fileOut.heard[0], (std::pair<int, Notification>{3200, Notification::SelChange}));
  // A plain radio button is checked by its dialog's handler, not by the click.
  EXPECT_EQ(fileOut.heard[1], (std::pair<int, Notification>{3304, Notification::Clicked}));
  EXPECT_NE(h.out.str().find(R"({"event":"enddialog","id":3000,"result":2})"), std::string::npos);
}

TEST(ScriptLines, QuotedTokensKeepBlanksQuotesAndBackslashes) {
  std::optional<Result<ScriptLine>> line = ParseScriptLine(3, u"  TYPE 1000:1202 \"a \\\"b\\\" \\\\c\" ");
  ASSERT_TRUE(line && *line);
  EXPECT_EQ((*line)->verb, u"type");
  ASSERT_EQ((*line)->args.size(), 2u);
  EXPECT_EQ((*line)->args[1], u"a \"b\" \\c");
  EXPECT_FALSE(ParseScriptLine(4, u"   # a comment"));
  EXPECT_FALSE(ParseScriptLine(5, u"  "));
}

TEST(ScriptLines, TheSaveFileDialogAddsTheExtensionAndAsksBeforeReplacingAFile) {
  TempDir dir;
  dir.Write("plan.txt", "old");
  std::string path = (dir / "plan").string();
  Harness h("save \"" + path + "\"\nanswer No\nsave \"" + path + "\"\nanswer Yes\n");
  std::optional<Text> chosen;
  ASSERT_TRUE(h.Run([&] { chosen = h.ui.AskSaveFile({u"plan", u"txt", u"ﾃｷｽﾄﾌｧｲﾙ (*.txt)|*.txt||", true}); }));
  ASSERT_TRUE(chosen);
  EXPECT_EQ(*chosen, FromUtf8((dir / "plan.txt").string()));
  size_t boxes = 0;
  for (const std::string& e : h.events()) boxes += e.find("\"event\":\"messagebox\"") != std::string::npos;
  EXPECT_EQ(boxes, 2u);
}
