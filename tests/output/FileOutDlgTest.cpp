// The file output dialog and RunFileOutput, driven by scripts through the headless host.
#include <gtest/gtest.h>

#include "base/Fields.hpp"
#include "common/Json.hpp"
#include "drawing/FrameGrid.hpp"
#include "support/ExampleSite.hpp"
#include "support/Listing.hpp"
#include "support/ScriptRun.hpp"
#include "takeoff/TakeoffRows.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// "拾い確認" on the example drawing (after the warning box), then "ﾌｧｲﾙ 出力".
const std::string kOpenOutput = "command TQ_STD_INF\nclick 200:203\nanswer OK\nclick 2000:2200\n";
// The completion box answered, and the takeoff left without registering.
const std::string kFinish = "answer OK\nclose 2000\nanswer OK\n";
const std::string kFinished =
    R"({"event":"messagebox","text":"ファイル出力が終了しました","icon":"information","buttons":"ok","default":"OK"})";

std::string Cp932(const std::u16string& text) { return EncodeCodePage(text, "CP932"); }

std::string DumpEvent(const ScriptRun& run) {
  for (const std::string& e : run.events)
    if (e.find("\"event\":\"dump\"") != std::string::npos) return e;
  return "<no dump>";
}

// The part of a dumped radio button that tells whether it is checked.
bool Checked(const std::string& dump, int id) {
  size_t at = dump.find("{\"id\":" + std::to_string(id) + ",");
  size_t end = dump.find('}', at);
  if (at == std::string::npos || end == std::string::npos) return false;
  return dump.substr(at, end - at).find("\"checked\":true") != std::string::npos;
}

}  // namespace

TEST(FileOutDlg, FirstUseWithNoFilesChecksTakeoffAndTabAndWritesZeroTwoAndTheFirstCategory) {
  ExampleSite site;
  ASSERT_FALSE(std::filesystem::exists(site.AddinFile("ファイル出力前回値.dat")));
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "dump 3000\nclick 3000:1\nescape\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  std::string dump = DumpEvent(run);
  EXPECT_TRUE(Checked(dump, 3100)) << dump;
  EXPECT_TRUE(Checked(dump, 3305)) << dump;
  for (int other : {3101, 3102, 3303, 3304}) EXPECT_FALSE(Checked(dump, other)) << other;
  EXPECT_NE(dump.find(R"("items":["全て","A材","B材"],"selected":0)"), std::string::npos) << dump;
  EXPECT_EQ(ReadFileBytes(site.AddinFile("ファイル出力前回値.dat")), Cp932(u"0\r\n2\r\n全て\r\n"));
}

TEST(FileOutDlg, WithoutTheCategoryFileTheComboOffersOneEmptyEntryAndTheCategoryIsEmpty) {
  ExampleSite site;
  std::filesystem::remove(site.AddinFile("出力区分.txt"));
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "dump 3000:3200\nclick 3000:1\nescape\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpEvent(run).find(R"("items":[""],"selected":0)"), std::string::npos) << DumpEvent(run);
  EXPECT_EQ(ReadFileBytes(site.AddinFile("ファイル出力前回値.dat")), Cp932(u"0\r\n2\r\n\r\n"));
}

TEST(FileOutDlg, TheDefaultFileNamesOfPlanDwgPlanBackupDwgAndPlanDwgx) {
  for (auto [name, proposed] : {std::pair{"plan.dwg", "plan"}, {"plan.backup.dwg", "plan.backup"}, {"plan.dwgx", "planx"}}) {
    ExampleSite site;
    dxf::DxfDrawing drawing(dxf::Document::Read(*ReadFileBytes(site.drawingPath)).value(), site.copy.dir / name);
    ScriptRun run = RunScript(drawing, site.folders, kOpenOutput + "click 3000:1\nescape\n" + kFinish);
    ASSERT_TRUE(run.ok) << run.All();
    // The drawing's own path less its extension, as the platform writes paths.
    std::string expected = JsonString(FromFsPath(site.copy.dir / proposed));
    EXPECT_TRUE(run.Has(R"({"event":"savefile","name":)" + expected +
                        R"(,"extension":"txt","filter":"ﾃｷｽﾄﾌｧｲﾙ (*.txt)|*.txt|CSV file (*.csv)|*.csv|All files (*.*)|*.*||"})"))
        << name << "\n" << run.All();
    EXPECT_TRUE(run.Has(kFinished)) << run.All();  // the save-file dialog was cancelled
  }
}

TEST(FileOutDlg, WithNoTakeoffDataThereIsNoSaveDialogAndStillTheCompletionBox) {
  ExampleSite site;
  // Without the output format every line is empty: nothing to output.
  std::filesystem::remove(site.AddinFile("標準図用出力フォーマット.csv"));
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "click 3000:1\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count("\"savefile\""), 0u) << run.All();
  EXPECT_TRUE(run.Has(kFinished)) << run.All();
}

TEST(FileOutDlg, TheRememberedCinetKindChecksTheHiddenRadioAndWithoutAnEarlierBuildWritesNothing) {
  ExampleSite site;
  site.copy.dir.Write("site/system/Addin/標準図/ファイル出力前回値.dat", Cp932(u"2\r\n0\r\nA材\r\n"));
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "dump 3000\nclick 3000:1\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  std::string dump = DumpEvent(run);
  EXPECT_TRUE(Checked(dump, 3102)) << dump;
  EXPECT_NE(dump.find(R"({"id":3102,"kind":"radio","text":"CI-NETｺｰﾄﾞ","enabled":true,"visible":false)"), std::string::npos) << dump;
  EXPECT_TRUE(Checked(dump, 3303)) << dump;
  EXPECT_NE(dump.find(R"("items":["全て","A材","B材"],"selected":1)"), std::string::npos) << dump;
  EXPECT_EQ(run.Count("\"savefile\""), 0u) << run.All();
  EXPECT_TRUE(run.Has(kFinished)) << run.All();
}

TEST(FileOutDlg, TheCinetRadioCannotBeClicked) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "click 3000:3102\n");
  EXPECT_FALSE(run.ok);
  EXPECT_EQ(run.events.back(), R"({"event":"error","line":5,"text":"the control 3000:3102 is hidden"})");
}

TEST(FileOutDlg, ARememberedCategoryNoLongerListedSelectsTheFirstEntryButStaysTheOutputCategory) {
  ExampleSite site;
  site.copy.dir.Write("site/system/Addin/標準図/ファイル出力前回値.dat", Cp932(u"1\r\n0\r\n古い区分\r\n"));
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenOutput + "dump 3000:3200\nclick 3000:1\nsave " + (site.copy.dir / "a.txt").string() + "\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpEvent(run).find(R"("selected":0)"), std::string::npos) << DumpEvent(run);
  EXPECT_EQ(ReadFileBytes(site.AddinFile("ファイル出力前回値.dat")), Cp932(u"1\r\n0\r\n古い区分\r\n"));
  // A category other than "A材" and "B材" outputs both materials: the whole aggregate.
  EXPECT_EQ(site.copy.dir.Read("a.txt"), *ReadFileBytes(std::filesystem::path(TQ_FIXTURES) / "takeoff/example_aggregate_comma.txt"));
}

TEST(FileOutDlg, ARememberedCategoryIsFoundWithoutRegardToCaseAndAChosenOneReplacesIt) {
  ExampleSite site;
  site.copy.dir.Write("site/system/Addin/標準図/ファイル出力前回値.dat", Cp932(u"0\r\n1\r\nb材\r\n"));
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenOutput + "dump 3000\nselect 3000:3200 \"A材\"\nclick 3000:1\nescape\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  std::string dump = DumpEvent(run);
  EXPECT_NE(dump.find(R"("items":["全て","A材","B材"],"selected":2)"), std::string::npos) << dump;
  EXPECT_TRUE(Checked(dump, 3100) && Checked(dump, 3304)) << dump;
  EXPECT_EQ(ReadFileBytes(site.AddinFile("ファイル出力前回値.dat")), Cp932(u"0\r\n1\r\nA材\r\n"));
}

TEST(FileOutDlg, EachRadioGroupIsCheckedAgainWhenTheOtherChanges) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenOutput + "click 3000:3101\ndump 3000\nclick 3000:3303\ndump 3000\nclick 3000:1\nescape\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> dumps;
  for (const std::string& e : run.events)
    if (e.find("\"event\":\"dump\"") != std::string::npos) dumps.push_back(e);
  ASSERT_EQ(dumps.size(), 2u);
  EXPECT_TRUE(!Checked(dumps[0], 3100) && Checked(dumps[0], 3101) && Checked(dumps[0], 3305)) << dumps[0];
  EXPECT_TRUE(Checked(dumps[1], 3101) && Checked(dumps[1], 3303) && !Checked(dumps[1], 3305)) << dumps[1];
  EXPECT_EQ(ReadFileBytes(site.AddinFile("ファイル出力前回値.dat")), Cp932(u"1\r\n0\r\n全て\r\n"));
}

TEST(FileOutDlg, CancelWritesNeitherTheLastValuesNorAFile) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenOutput + "click 3000:3101\nclick 3000:2\nclose 2000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":3000,"result":2})")) << run.All();
  EXPECT_EQ(run.Count("\"savefile\""), 0u);
  EXPECT_FALSE(run.Has(kFinished));
  EXPECT_FALSE(std::filesystem::exists(site.AddinFile("ファイル出力前回値.dat")));
}

TEST(FileOutDlg, AnExistingFileIsOverwrittenOnlyAfterTheQuestion) {
  ExampleSite site;
  site.copy.dir.Write("old.txt", "old");
  std::string old = (site.copy.dir / "old.txt").string(), fresh = (site.copy.dir / "new").string();
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenOutput + "click 3000:1\nsave " + old + "\nanswer No\nsave " + fresh + "\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(R"("icon":"warning","buttons":"yesno","default":"No"})"), 1u) << run.All();
  EXPECT_EQ(site.copy.dir.Read("old.txt"), "old");
  EXPECT_EQ(site.copy.dir.Read("new.txt"), *ReadFileBytes(std::filesystem::path(TQ_FIXTURES) / "takeoff/example_list_tab.txt"));
}

TEST(FileOutDlg, ACharacterTheCodePageCannotHoldIsWarnedOfOnTheCommandLineBeforeTheFileIsWritten) {
  ExampleSite site;
  ObjectId sheet;
  for (ObjectId id : site.drawing->SelectAll({u"TEXT", u"5"}))
    if (site.drawing->ReadXData(id, u"TQ_STDINF01") && !site.drawing->ReadXData(id, u"TQ_STDINF02")) {
      sheet = id;
      break;
    }
  ASSERT_FALSE(sheet.isNull());
  XDataLines lines = *site.drawing->ReadXData(sheet, u"TQ_STDINF01");
  CTakeoffRow row = ParseTakeoffLine(lines[2], sheet);
  row.field(LinePosition::kMemberName) += u"한";  // Hangul: not in CP932
  lines[2] = JoinLine25(row.fields);
  ASSERT_EQ(site.drawing->WriteXData(sheet, u"TQ_STDINF01", lines), EditResult::Ok);
  Text name;
  ASSERT_TRUE(ReadSheetName(*site.drawing, sheet, name));
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenOutput + "click 3000:1\nsave " + (site.copy.dir / "w.txt").string() + "\n" + kFinish);
  ASSERT_TRUE(run.ok) << run.All();
  std::string warning = R"({"event":"print","text":"\nWARNING:sheet )" + ToUtf8(name) +
                        R"(, TQ_STDINF01 line 3: \"한\" (U+D55C) is not in the code page CP932 and is written as \"?\""})";
  // One warning per line of the list that holds it: the row's units give it twice.
  EXPECT_GE(run.Count(warning), 1u) << run.All();
  EXPECT_EQ(run.Count("WARNING:"), run.Count(warning)) << run.All();
  Text member = row.field(LinePosition::kMemberName).substr(0, row.field(LinePosition::kMemberName).size() - 1);
  EXPECT_NE(site.copy.dir.Read("w.txt").find(Cp932(member) + "?"), std::string::npos);
}
