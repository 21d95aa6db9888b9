// The command "TQ_STD_INF" and the main dialog, driven by scripts through the headless host.
#include <gtest/gtest.h>

#include "support/ScriptRun.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::string kPrompt = R"({"event":"prompt","text":"\n標準図を指示: "})";
const std::string kOutside = R"({"event":"print","text":"\nError:標準図枠の範囲外です。\n"})";
const std::string kWarningBox =
    R"({"event":"messagebox","text":"情報が設定されていない標準図があります。","icon":"none","buttons":"okcancel","default":"OK"})";

// Two standard drawings in frames (0,0) and (0,1), the first with information; a line in each.
Tags TwoSheets() {
  return TextTags("B1", "M-1", 26000, 1000) + Record("TQ_STDINF01", "a") + LineTags("C1", 100, 100, 200, 200) +
         TextTags("B2", "M-2", 54000, 1000) + ColouredLine("C2", 28100, 100, 28200, 200, 3);
}

}  // namespace

TEST(MainDialog, TheCommandOpensTheModelessMainDialogAndShowsItAgainOnceClosed) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclose 200\ncommand TQ_STD_INF\ncommand TQ_STD_INF\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(R"({"event":"dialog","id":200,"caption":"標準図積算","modal":false})"), 2u) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":200,"result":2})"));
}

TEST(MainDialog, SetWhileASizeSettingDialogIsOpenGivesNoPromptAndNoMessage) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:201\n", [](headless::HeadlessSession& session) {
    // A size setting dialog is open.
    session.addIn().sizeDialog() = std::make_unique<dialog::Dialog>(201, session.addIn().dialogServices());
  });
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count("\"prompt\""), 0u);
  EXPECT_EQ(run.Count("\"messagebox\""), 0u);
  EXPECT_EQ(run.Count("\"print\""), 0u);
}

TEST(MainDialog, PickingOutsideTheGridInSetPrintsTheErrorAndPromptsAgainUntilEscape) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:201\npoint 90000 1000\nescape\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(kPrompt), 2u);
  EXPECT_EQ(run.Count(kOutside), 1u);
  EXPECT_EQ(run.events.back(), R"({"event":"input","line":4,"text":"escape"})");  // Escape ends it with no message
}

TEST(MainDialog, PickingOutsideTheGridInInfoCheckPrintsTheErrorAndPromptsAgainUntilEscape) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            "command TQ_STD_INF\nclick 200:202\npoint -5 1000\npoint 28000 1000\nescape\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(kPrompt), 3u);
  EXPECT_EQ(run.Count(kOutside), 2u);  // on the border between two frames: in neither
  EXPECT_EQ(run.events.back(), R"({"event":"input","line":5,"text":"escape"})");
}

TEST(MainDialog, AFrameWithoutASheetNumberTextPrintsItsMessageAndPromptsAgain) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:202\npoint 1000 20000\nescape\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"print","text":"\nｼｰﾄ番号が取得出来ません。\n"})")) << run.All();
  EXPECT_EQ(run.Count(kPrompt), 2u);
}

TEST(MainDialog, WithoutADataFolderEveryWorkflowStopsWithTheStopBox) {
  Scene s(TwoSheets(), u"", false);
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            "command TQ_STD_INF\nclick 200:201\nanswer OK\nclick 200:202\nanswer OK\nclick 200:203\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(R"({"event":"messagebox","text":"Excelﾌｧｲﾙのﾊﾟｽが設定されていません.","icon":"stop","buttons":"ok","default":"OK"})"), 3u);
  EXPECT_EQ(run.Count("\"prompt\""), 0u);
}

TEST(MainDialog, TakeoffCheckWhereNoStandardDrawingCarriesInformationPrintsAndColoursNothing) {
  Scene s(TextTags("B2", "M-2", 54000, 1000) + ColouredLine("C2", 28100, 100, 28200, 200, 3));
  std::string before = s.drawing->document().Serialize();
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:203\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"print","text":"\n情報設定済の標準図が見つかりません。\n"})")) << run.All();
  EXPECT_EQ(run.Count("\"messagebox\""), 0u);
  EXPECT_EQ(s.drawing->document().Serialize(), before);
}

TEST(MainDialog, TakeoffCheckWithoutAnyStandardDrawingPrintsThatNoneIsFound) {
  Scene s(LineTags("C1", 100, 100, 200, 200));
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:203\n");
  EXPECT_TRUE(run.Has(R"({"event":"print","text":"\n標準図が見つかりません。\n"})")) << run.All();
}

TEST(MainDialog, TakeoffCheckWhereAllCarryInformationShowsNoWarningBox) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + Record("TQ_STDINF01", "a") + LineTags("C1", 100, 100, 200, 200));
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:203\nclick 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count("\"messagebox\""), 0u);
  EXPECT_TRUE(run.Has(R"({"event":"dialog","id":2000,"caption":"標準図拾い確認","modal":true})")) << run.All();
  EXPECT_EQ(s.drawing->ColourIndex(s.Id(u"C1")), 256);
}

// A drawing that notes every colour given to an entity.
class ColourLog : public dxf::DxfDrawing {
 public:
  using dxf::DxfDrawing::DxfDrawing;
  std::vector<std::pair<std::u16string, int>> given;
  EditResult SetColourIndex(ObjectId id, int colour) override {
    given.emplace_back(Handle(id), colour);
    return dxf::DxfDrawing::SetColourIndex(id, colour);
  }
};

TEST(MainDialog, TheFramesWithoutInformationAreMarkedAroundTheWarningBoxOnly) {
  Site site;
  ColourLog drawing(dxf::Document::Read(R12Drawing(TwoSheets())).value(), "t.dxf");
  ScriptRun run = RunScript(drawing, *site.folders, "command TQ_STD_INF\nclick 200:203\nanswer OK\nclick 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kWarningBox));
  // The frame without information (C2, B2) is coloured 1 and then given its colour back; the
  // frame with information is never touched.
  EXPECT_EQ(drawing.given, (std::vector<std::pair<std::u16string, int>>{{u"B2", 1}, {u"C2", 1}, {u"B2", 256}, {u"C2", 3}}));
}

TEST(MainDialog, AfterTheWarningBoxTheOldColoursAreBackWhetherOkOrCancel) {
  for (const char* answer : {"OK", "Cancel"}) {
    Scene s(TwoSheets());
    std::string before = s.drawing->document().Serialize();
    ScriptRun run = RunScript(*s.drawing, *s.site.folders, std::string("command TQ_STD_INF\nclick 200:203\nanswer ") + answer + "\n" +
                                                                     (answer == std::string("OK") ? "close 2000\nanswer OK\n" : ""));
    ASSERT_TRUE(run.ok) << run.All();
    ASSERT_TRUE(run.Has(kWarningBox)) << run.All();
    EXPECT_EQ(s.drawing->ColourIndex(s.Id(u"C2")), 3) << answer;
    EXPECT_FALSE(s.drawing->ReadXData(s.Id(u"C2"), u"TQ_STDCHECK")) << answer;
  }
}

TEST(MainDialog, TheSheetNameEditKeepsItsTextUntilTheNextSuccessfulSetPick) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            "command TQ_STD_INF\nclick 200:201\npoint 1000 1000\nanswer OK\nescape\ndump 200:200\n"
                            "click 200:201\npoint 90000 1000\nescape\ndump 200:200\n"
                            "click 200:202\npoint 29000 1000\nanswer OK\ndump 200:200\n"
                            "click 200:201\npoint 29000 1000\nanswer OK\nescape\ndump 200:200\n");
  ASSERT_TRUE(run.ok) << run.All();
  const std::string m1 = R"({"event":"dump","dialog":200,"caption":"標準図積算","controls":[{"id":200,"kind":"edit","text":"M-1","enabled":true,"visible":true}]})";
  const std::string m2 = R"({"event":"dump","dialog":200,"caption":"標準図積算","controls":[{"id":200,"kind":"edit","text":"M-2","enabled":true,"visible":true}]})";
  EXPECT_EQ(run.Count(m1), 3u) << run.All();  // kept after an escape and after "情報確認"
  EXPECT_EQ(run.Count(m2), 1u);
}

TEST(MainDialog, TheRestoreColoursButtonIsHiddenAndCannotBeClicked) {
  Scene s(TwoSheets());
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "command TQ_STD_INF\nclick 200:388\n");
  EXPECT_FALSE(run.ok);
  EXPECT_EQ(run.events.back(), R"({"event":"error","line":2,"text":"the control 200:388 is hidden"})");
}
