// "設定" and the size setting dialog, driven by scripts through the headless host on the
// example drawing, with M-105's workbook in memory.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/Format.hpp"
#include "info/StdInfRecord.hpp"
#include "size/SizeDlg.hpp"
#include "support/DrawingFixture.hpp"
#include "support/SizeDialogSite.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::string kShown = R"({"event":"dialog","id":201,"caption":"M-105 - サイズ設定","modal":false})";

// The dumped state of one control, as the transcript writes it up to its text.
std::string Combo(int id, const std::string& text) {
  return "\"id\":" + std::to_string(id) + R"(,"kind":"combo","text":")" + text + "\"";
}
std::string Check(int id, bool visible, bool checked) {
  return "\"id\":" + std::to_string(id) + R"(,"kind":"check","text":"","enabled":true,"visible":)" +
         (visible ? "true" : "false") + R"(,"checked":)" + (checked ? "true" : "false");
}

// The rows' texts: symbol, number, ①, ②, ③ and count combos of rows 1 to 3.
std::string DumpRows() {
  std::string lines;
  for (int id : {395, 396, 397, 410, 411, 421, 398, 399, 400, 401, 402, 424, 425, 426, 427, 428, 429, 439})
    lines += "dump 201:" + std::to_string(id) + "\n";
  return lines;
}

// The dumps of a run, in order.
std::vector<std::string> Dumps(const ScriptRun& run) {
  std::vector<std::string> dumps;
  for (const std::string& e : run.events)
    if (e.find(R"("event":"dump")") != std::string::npos) dumps.push_back(e);
  return dumps;
}

ObjectId SheetText(Drawing& drawing, TextView name) {
  for (ObjectId id : drawing.SelectAll({}))
    if (std::optional<TextEntity> text = drawing.TextData(id); text && text->string == name) return id;
  return {};
}

}  // namespace

TEST(SizeDialog, ASheetWithoutAWorkbookSaysSoAndOpensNoDialog) {
  SizeDialogSite s;
  // M-101 (frame 0, 0) has no workbook in the data folder.
  ScriptRun run = RunScript(*s.site.drawing, s.site.folders,
                            "command TQ_STD_INF\nclick 200:201\npoint 1000 1000\nanswer OK\nescape\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("Excelﾌｧｲﾙが見つかりません.", "stop"))) << run.All();
  EXPECT_EQ(run.Count(R"("event":"dialog","id":201)"), 0u);
  EXPECT_TRUE(run.Has(R"({"event":"print","text":"\n"})"));
  EXPECT_EQ(run.Count(R"("event":"prompt")"), 2u) << "the pick starts again";
  EXPECT_EQ(s.book.initCalls, 0);
}

TEST(SizeDialog, OpensOnTheSheetWithTheDrawnTableReadBackIntoItsRows) {
  SizeDialogSite s;
  ScriptRun run = s.Run(DumpRows() + "dump 201:389\ndump 201:412\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kShown)) << run.All();
  std::vector<std::string> d = Dumps(run);
  ASSERT_EQ(d.size(), 20u);
  const char* expected[] = {"FCU", "1", "20", "20", "15", "4", "FCU", "2", "25", "20", "15", "2"};
  const int ids[] = {395, 396, 397, 410, 411, 421, 398, 399, 400, 401, 402, 424};
  for (size_t i = 0; i < 12; ++i) EXPECT_NE(d[i].find(Combo(ids[i], expected[i])), std::string::npos) << d[i];
  EXPECT_NE(d[18].find(Check(389, false, false)), std::string::npos) << "row 4 is hidden: " << d[18];
  EXPECT_NE(d[19].find(R"("enabled":false,"visible":false)"), std::string::npos) << "size ④ is unused: " << d[19];
  EXPECT_EQ(s.book.openedPath.substr(s.book.openedPath.size() - 9), u"M-105.xls");
}

TEST(SizeDialog, AddingRowsShowsThemWithTheDefaultsAndASeventhRowDoesNothing) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:324\ndump 201:425\nclick 201:324\nclick 201:324\nclick 201:324\ndump 201\n"
                        "click 201:324\ndump 201\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  ASSERT_EQ(d.size(), 3u);
  EXPECT_NE(d[0].find(Combo(425, "AC-1")), std::string::npos) << "the symbols' default: " << d[0];
  EXPECT_NE(d[1].find(Check(391, true, false)), std::string::npos) << "six rows shown";
  EXPECT_EQ(d[1], d[2]) << "a seventh row changes nothing";
}

TEST(SizeDialog, DeletingTheOnlyRowClearsItAndMakesItCurrent) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:387\nclick 201:325\ndump 201:387\nclick 201:325\ndump 201:386\n" + DumpRows());
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  EXPECT_NE(d[0].find(Check(387, false, false)), std::string::npos) << "row 2 deleted: " << d[0];
  EXPECT_NE(d[1].find(Check(386, true, true)), std::string::npos) << d[1];
  for (size_t i = 2; i < 8; ++i) EXPECT_NE(d[i].find(R"(,"kind":"combo","text":"")"), std::string::npos) << d[i];
}

TEST(SizeDialog, DeletingTheCurrentRowMovesTheFollowingRowsUp) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:386\nclick 201:325\n" + DumpRows() + "dump 201:386\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  EXPECT_NE(d[1].find(Combo(396, "2")), std::string::npos) << "FCU-2 is row 1 now: " << d[1];
  EXPECT_NE(d[2].find(Combo(397, "25")), std::string::npos) << d[2];
  EXPECT_NE(d[6].find(R"("visible":false)"), std::string::npos) << "one row left: " << d[6];
}

TEST(SizeDialog, DownOnTheLastRowAndUpOnTheFirstRowDoNothing) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:387\n" + DumpRows() + "click 201:393\n" + DumpRows() + "click 201:386\n" + DumpRows() +
                        "click 201:392\n" + DumpRows());
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  ASSERT_EQ(d.size(), 72u);
  for (size_t i = 0; i < 18; ++i) {
    EXPECT_EQ(d[i], d[18 + i]) << "↓ on the last row";
    EXPECT_EQ(d[36 + i], d[54 + i]) << "↑ on the first row";
  }
  EXPECT_NE(d[0].find(Combo(395, "FCU")), std::string::npos);
}

TEST(SizeDialog, MovingARowDownExchangesItWithTheNextAndTheCurrentRowFollows) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:386\nclick 201:393\ndump 201:396\ndump 201:399\ndump 201:386\ndump 201:387\n"
                        "click 201:392\ndump 201:396\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  EXPECT_NE(d[0].find(Combo(396, "2")), std::string::npos) << d[0];
  EXPECT_NE(d[1].find(Combo(399, "1")), std::string::npos) << d[1];
  EXPECT_NE(d[2].find(Check(386, true, false)), std::string::npos) << d[2];
  EXPECT_NE(d[3].find(Check(387, true, true)), std::string::npos) << d[3];
  EXPECT_NE(d[4].find(Combo(396, "1")), std::string::npos) << "and back up: " << d[4];
}

TEST(SizeDialog, CheckingARowUnchecksTheOthers) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:386\nclick 201:387\ndump 201:386\ndump 201:387\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  EXPECT_NE(d[0].find(Check(386, true, false)), std::string::npos) << d[0];
  EXPECT_NE(d[1].find(Check(387, true, true)), std::string::npos) << d[1];
}

TEST(SizeDialog, CancelClosesItAndLetsSetOpenAnother) {
  SizeDialogSite s;
  ScriptRun run = s.Run("click 201:2\nclick 200:201\npoint 29000 20000\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":201,"result":2})")) << run.All();
  EXPECT_EQ(run.Count(kShown), 2u) << run.All();
}

TEST(SizeDialog, ARowWithoutASymbolAsksBeforeRegisteringAndNoStopsIt) {
  SizeDialogSite s;
  ScriptRun run = s.Run("type 201:398 \"\"\nclick 201:322\nanswer No\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("記号が入力されていない行があります.\\nそのまま登録しますか?", "none", "yesno", "Yes"))) << run.All();
  EXPECT_EQ(s.book.initCalls, 1) << "the import only: nothing registered";
}

TEST(SizeDialog, ASizeThatIsNotANumberAsksBeforeRegistering) {
  SizeDialogSite s;
  ScriptRun run = s.Run("type 201:397 \"2O\"\nclick 201:322\nanswer No\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("サイズまたは台数で不正な値があります.\\nそのまま登録しますか?", "none", "yesno", "Yes"))) << run.All();
}

TEST(SizeDialog, BothFaultsAskWithTheJoinedQuestion) {
  SizeDialogSite s;
  ScriptRun run = s.Run("type 201:398 \"\"\ntype 201:421 \"x\"\nclick 201:322\nanswer No\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("記号が入力されていない行があります.\\nサイズまたは台数で不正な値があります.\\nそのまま登録しますか?", "none",
                          "yesno", "Yes")))
      << run.All();
}

TEST(SizeDialog, RegisteringReplacesTheRecordsWithOnePerFilledRowFromTheWorkbook) {
  SizeDialogSite s;
  ObjectId sheet = SheetText(*s.site.drawing, u"M-105");
  ASSERT_EQ(s.site.drawing->WriteXData(sheet, u"TQ_STDINF01", {u"an older first record"}), EditResult::Ok);
  ASSERT_EQ(s.site.drawing->WriteXData(sheet, u"TQ_STDINF02", {u"an older second record"}), EditResult::Ok);
  // Row 1 FCU-1 with 20, 20, 15 and 4 units; row 2 emptied: no record.
  std::string empty;
  for (int id : {398, 399, 400, 401, 402, 424}) empty += "type 201:" + std::to_string(id) + " \"\"\n";
  ScriptRun run = s.Run(empty + "click 201:322\nanswer Yes\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("登録が完了しました。", "information"))) << run.All();
  std::optional<XDataLines> record = s.site.drawing->ReadXData(sheet, u"TQ_STDINF01");
  ASSERT_TRUE(record);
  // The first two rows unscaled, the parts rows with their quantity times the 4 units.
  EXPECT_EQ(*record, (XDataLines{u"番号,名称,工事項目,部材,数量", u"1,2,3,4,5", u"FCU,ファンコイル,冷温水,鋼管,8",
                                 u",,冷温水,保温材,8", u",,ドレン,塩ビ管,4"}));
  EXPECT_FALSE(s.site.drawing->ReadXData(sheet, u"TQ_STDINF02")) << "the old second record is gone";
  // The row went into the cells the import found; each quantity cell was restored.
  ASSERT_GE(s.book.puts.size(), 5u);
  EXPECT_EQ(std::vector(s.book.puts.begin(), s.book.puts.begin() + 5),
            (std::vector<std::pair<Text, Text>>{{u"A32", u"FCU-1"}, {u"B32", u"20"}, {u"C32", u"20"}, {u"D32", u"15"}, {u"E32", u"4"}}));
  EXPECT_EQ(s.book.Cell(u"E3"), u"2");
  EXPECT_EQ(s.book.Cell(u"E5"), u"1");
}

TEST(SizeDialog, RegisteringWritesTheRowsIntoTheDrawnTableAndRedrawsItsLines) {
  SizeDialogSite s;
  std::vector<ObjectId> before = s.site.drawing->SelectAll({});
  ScriptRun run = s.Run("click 201:322\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  size_t written = 0;
  for (ObjectId id : s.site.drawing->SelectAll({})) {
    if (std::find(before.begin(), before.end(), id) != before.end()) continue;
    if (std::optional<TextEntity> text = s.site.drawing->TextData(id)) {
      ++written;
      EXPECT_DOUBLE_EQ(text->height, 350) << ToUtf8(text->string);
      EXPECT_DOUBLE_EQ(text->widthFactor, 280.0 / 350.0) << "the stored width as a factor of the height";
    }
  }
  EXPECT_EQ(written, 10u) << "two rows of symbol, three sizes and a count";
}

TEST(SizeDialog, TheAnnotationSettingsGiveTheSpacingOfTheRedrawnRows) {
  SizeDialogSite s;
  std::vector<ObjectId> before = s.site.drawing->SelectAll({});
  ScriptRun run = s.Run("click 201:201\ntype 202:389 \"7\"\nclick 202:1\nclick 201:322\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<double> ys;
  for (ObjectId id : s.site.drawing->SelectAll({})) {
    if (std::find(before.begin(), before.end(), id) != before.end()) continue;
    if (std::optional<LineEntity> line = s.site.drawing->LineData(id)) ys.push_back(line->start.y);
  }
  ASSERT_EQ(ys.size(), 3u);
  std::sort(ys.begin(), ys.end());
  EXPECT_DOUBLE_EQ(ys[2] - ys[1], 700);
  EXPECT_DOUBLE_EQ(ys[1] - ys[0], 700);
}

TEST(SizeDialog, ADrawnTableWithOneHorizontalLineReadsNoRowAndIsRedrawnAtTheRowSpacing) {
  SizeDialogSite s;
  RecordingEditor editor;
  MarkingState marking;
  DrawingContext context{*s.site.drawing, editor, s.settings, s.settings.LoadLayerSettings().value(), marking};
  FramePolygon frame = MakeFramePolygon(FrameGrid{}, 1, 1);
  Result<DrawnSizeTable> table = LocateSizeTable(context, frame, 500);
  ASSERT_TRUE(table.ok());
  for (size_t i = 1; i < table->rowLines.size(); ++i) s.site.drawing->Erase(table->rowLines[i]);
  std::vector<ObjectId> before = s.site.drawing->SelectAll({});
  ScriptRun run = s.Run("dump 201:395\ndump 201:387\ntype 201:395 \"AC\"\ntype 201:421 \"1\"\nclick 201:322\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> d = Dumps(run);
  EXPECT_NE(d[0].find(Combo(395, "AC-1")), std::string::npos) << "the default, nothing read back: " << d[0];
  EXPECT_NE(d[1].find(Check(387, false, false)), std::string::npos) << "one row: " << d[1];
  std::vector<double> ys;
  for (ObjectId id : s.site.drawing->SelectAll({})) {
    if (std::find(before.begin(), before.end(), id) != before.end()) continue;
    if (std::optional<LineEntity> line = s.site.drawing->LineData(id)) ys.push_back(line->start.y);
  }
  std::sort(ys.begin(), ys.end());
  EXPECT_EQ(ys, (std::vector<double>{26300, 26800})) << "the top line and one row spacing (5.0) below it";
}
