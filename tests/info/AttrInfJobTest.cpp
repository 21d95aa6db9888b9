// "情報確認" and the attribute information dialog, driven by scripts through the headless host:
// what the transcript shows, and the records the drawing holds afterwards.
#include <gtest/gtest.h>

#include "base/Fields.hpp"
#include "info/StdInfRecord.hpp"
#include "support/ScriptRun.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::string kOpen = "command TQ_STD_INF\nclick 200:202\npoint 1000 1000\n";
const std::string kRegister = "click 1000:1\n";
const std::string kDialogShown = R"({"event":"dialog","id":1000,"caption":"属性情報の確認・編集","modal":true})";

std::string Box(const std::string& text, const std::string& icon, const std::string& buttons = "ok",
                const std::string& preset = "OK") {
  return R"({"event":"messagebox","text":")" + text + R"(","icon":")" + icon + R"(","buttons":")" + buttons +
         R"(","default":")" + preset + R"("})";
}

// A stored line: the symbol, the name, and from position 3 on `data` followed by the position.
std::string DataLine(const std::string& symbol, const std::string& name, const std::string& data) {
  std::string line = symbol + "," + name;
  for (int p = 3; p <= 25; ++p) line += "," + data + std::to_string(p);
  return line;
}

Tags RecordTags(int number, const std::vector<std::string>& lines) {
  Tags t{{1001, ToUtf8(InfoRecordName(number))}};
  // The drawing is in the system code page.
  for (const std::string& line : lines) t.push_back({1000, EncodeCodePage(FromUtf8(line), "CP932")});
  return t;
}

// Record 01 of the sheet in frame (0,0): two header lines, then AC-1 with a continuation line,
// then AC-2.
std::vector<std::string> Record01() {
  return {"h0", "h1", DataLine("AC-1", "エアコン", "a"), DataLine("", "", "b"), DataLine("AC-2", "ファン", "c")};
}

Tags Sheet(const Tags& records) { return TextTags("B1", "M-101", 26000, 1000) + records; }

// The choice files and the attribute-ID table of the site.
void WriteChoiceFiles(Site& site) {
  std::filesystem::create_directories(site.dir / "system/Addin/標準図");
  std::filesystem::create_directories(site.dir / "parts");
  auto write = [&](const std::string& name, const std::u16string& text) {
    site.dir.Write("system/Addin/標準図/" + name, EncodeCodePage(text, "CP932"));
  };
  write("A材別途.txt", u"A\r\n\r\n別途\r\n");
  write("A材-部材.txt", u"配管用炭素鋼鋼管\r\nスパイラルダクト\r\n");
  write("B材-部材.txt", u"吊りボルト\r\n保温材\r\n");
  write("A材-材質.txt", u"SGP\r\n");
  write("B材-材質.txt", u"SS400\r\nGW\r\n");
  write("A材-仕様.txt", u"白\r\n");
  write("B材-仕様.txt", u"M10\r\n");
  write("数量.txt", u"1\r\n2\r\n");
  write("呼称.txt", u"本\r\nm\r\n");
  write("備考.txt", u"保温あり\r\n");
  write("標準図用B材設定.csv", u"吊りボルト,全ねじボルト,SS400,M10,本,32010101000000\r\n保温材,グラスウール,GW,t=25,m,\r\n");
  site.dir.Write("parts/属性IDパラメータ.csv", EncodeCodePage(u"S501,給水設備,給水\r\nS501,空調設備,冷温水\r\nSC01,0,共通\r\n", "CP932"));
  site.dir.Write("data/記号サイズデータ.dat", EncodeCodePage(u"15\r\n[サイズ]\r\n20\r\n25*\r\n", "CP932"));
}

struct AttrScene : Scene {
  explicit AttrScene(const Tags& records = RecordTags(1, Record01())) : Scene(Sheet(records)) { WriteChoiceFiles(site); }
  ObjectId sheet() const { return Id(u"B1"); }
  ScriptRun Run(const std::string& script) { return RunScript(*drawing, *site.folders, kOpen + script); }
  std::vector<std::string> Lines(int number) const {
    std::vector<std::string> out;
    if (std::optional<XDataLines> lines = drawing->ReadXData(sheet(), InfoRecordName(number)))
      for (const Text& line : *lines) out.push_back(ToUtf8(line));
    return out;
  }
  std::vector<std::string> Fields(int number, size_t line) const { return Split(Lines(number).at(line)); }
  static std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> fields;
    for (const Text& f : SplitAtEvery(FromUtf8(line), u',')) fields.push_back(ToUtf8(f));
    return fields;
  }
};

// The JSON of control `id` in the `nth` dump of the run (from 0).
std::string Control(const ScriptRun& run, int id, size_t nth = 0) {
  size_t seen = 0;
  for (const std::string& e : run.events) {
    if (e.rfind(R"({"event":"dump")", 0) != 0 || seen++ != nth) continue;
    std::string key = "{\"id\":" + std::to_string(id) + ",";
    size_t at = e.find(key);
    if (at == std::string::npos) return "<no control>";
    int depth = 0;
    for (size_t i = at; i < e.size(); ++i) {
      if (e[i] == '{') ++depth;
      if (e[i] == '}' && --depth == 0) return e.substr(at, i - at + 1);
    }
  }
  return "<no dump>";
}

bool Enabled(const ScriptRun& run, int id, size_t nth) {
  return Control(run, id, nth).find("\"enabled\":true") != std::string::npos;
}

}  // namespace

// ---- opening

TEST(AttrInfJob, NoRecord01ShowsTheMessageAndNeverTheGrid) {
  AttrScene s(RecordTags(2, Record01()));  // record 02 alone: reading stops at 01
  ScriptRun run = s.Run("answer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("情報が設定されていません。", "stop"))) << run.All();
  EXPECT_EQ(run.Count(R"("event":"dialog","id":1000)"), 0u) << run.All();
  EXPECT_EQ(run.events.back(), R"({"event":"print","text":"\n"})");
  EXPECT_EQ(s.Lines(2).size(), 5u);
}

TEST(AttrInfJob, OpeningShowsSeventeenColumnsWithTheirWidthsAndAlignmentsAndRecordZeroSelectedAtRowZero) {
  AttrScene s;
  ScriptRun run = s.Run("dump 1000:1001\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kDialogShown)) << run.All();
  std::string grid = Control(run, 1001);
  EXPECT_NE(grid.find(
                R"("columns":[{"text":"記号/台数","width":50,"align":"left"},{"text":"機器名称","width":80,"align":"left"},)"
                R"({"text":"工事項目","width":80,"align":"left"},{"text":"A材/別途","width":50,"align":"center"},)"
                R"({"text":"図記号","width":30,"align":"center"},{"text":"部材","width":100,"align":"left"},)"
                R"({"text":"寸法1","width":30,"align":"right"},{"text":" ","width":30,"align":"left"},)"
                R"({"text":"寸法2","width":30,"align":"right"},{"text":"","width":30,"align":"left"},)"
                R"({"text":"寸法3","width":30,"align":"right"},{"text":"","width":30,"align":"left"},)"
                R"({"text":"材質","width":20,"align":"left"},{"text":"仕様","width":20,"align":"left"},)"
                R"({"text":"数量","width":20,"align":"right"},{"text":"呼称","width":20,"align":"left"},)"
                R"({"text":"備考","width":100,"align":"left"}])"),
            std::string::npos)
      << grid;
  // Three rows: lines 2 to 4; cell 16 shows position 18.
  EXPECT_NE(grid.find(R"("items":[["AC-1","エアコン","a3","a4","a5","a6","a7","a8","a9","a10","a11","a12","a13","a14","a15","a16","a18"],)"
                      R"(["","","b3",)"),
            std::string::npos)
      << grid;
  EXPECT_NE(grid.find(R"(["AC-2","ファン","c3",)"), std::string::npos) << grid;
  EXPECT_NE(grid.find(R"("selected":[0])"), std::string::npos) << grid;
}

TEST(AttrInfJob, OpeningFillsTheSymbolComboWithOneEntryPerRecordAndTheChoiceLists) {
  AttrScene s(RecordTags(1, Record01()) + RecordTags(2, {"h0", "h1", DataLine("", "x", "d")}));
  ScriptRun run = s.Run("dump 1000\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1100).find(R"("items":["AC-1"," "],"selected":0)"), std::string::npos) << Control(run, 1100);
  EXPECT_NE(Control(run, 1101).find(R"("items":["給水","冷温水"])"), std::string::npos) << Control(run, 1101);
  EXPECT_NE(Control(run, 1102).find(R"("text":"A",)"), std::string::npos) << Control(run, 1102);
  EXPECT_NE(Control(run, 1103).find(R"("items":["配管用炭素鋼鋼管","スパイラルダクト"],"selected":0)"), std::string::npos)
      << Control(run, 1103);
  // The size data: the sizes list, its default selected; the entry above the first header is a count.
  EXPECT_NE(Control(run, 1104).find(R"("text":"25","enabled":false,"visible":true,"items":["20","25"],"selected":1)"),
            std::string::npos)
      << Control(run, 1104);
  EXPECT_NE(Control(run, 1110).find(R"("items":["保温あり"])"), std::string::npos) << Control(run, 1110);
}

TEST(AttrInfJob, PickingAnotherSymbolShowsThatRecord) {
  AttrScene s(RecordTags(1, Record01()) + RecordTags(2, {"h0", "h1", DataLine("P-1", "ポンプ", "p")}));
  ScriptRun run = s.Run("select 1000:1100 1\ndump 1000:1001\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1001).find(R"("items":[["P-1","ポンプ","p3",)"), std::string::npos) << Control(run, 1001);
  EXPECT_EQ(Control(run, 1001).find("AC-1"), std::string::npos);
}

// ---- the buttons by mode

TEST(AttrInfJob, ButtonStatesAtOpeningInEditModeInAddModeAndAfterLeavingAMode) {
  AttrScene s;
  ScriptRun run = s.Run("dump 1000\nclick 1000:1300\ndump 1000\nclick 1000:1305\ndump 1000\nclick 1000:1301\ndump 1000\n"
                        "click 1000:1305\ndump 1000\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  struct Expected {
    bool symbol, edit, add, deleteMove, back, radios, ok, fields;
    const char* editText;
    const char* addText;
  };
  const Expected states[] = {{true, true, true, true, false, false, true, false, "編集", "追加"},
                             {false, true, false, false, true, false, false, true, "保存", "追加"},
                             {true, true, true, true, false, false, true, false, "編集", "追加"},
                             {false, false, true, false, true, true, false, true, "編集", "保存"},
                             {true, true, true, true, false, false, true, false, "編集", "追加"}};
  for (size_t n = 0; n < std::size(states); ++n) {
    const Expected& e = states[n];
    EXPECT_EQ(Enabled(run, 1500, n), e.symbol) << n;
    EXPECT_EQ(Enabled(run, 1100, n), e.symbol) << n;
    EXPECT_EQ(Enabled(run, 1300, n), e.edit) << n;
    EXPECT_EQ(Enabled(run, 1301, n), e.add) << n;
    for (int id : {1302, 1303, 1304}) EXPECT_EQ(Enabled(run, id, n), e.deleteMove) << n << " " << id;
    EXPECT_EQ(Enabled(run, 1305, n), e.back) << n;
    EXPECT_EQ(Enabled(run, 1400, n), e.radios) << n;
    EXPECT_EQ(Enabled(run, 1401, n), e.radios) << n;
    EXPECT_EQ(Enabled(run, 1, n), e.ok) << n;
    for (int id : {1101, 1102, 1202, 1103, 1104, 1212, 1105, 1213, 1106, 1214, 1107, 1111, 1108, 1109, 1110, 1501, 1512})
      EXPECT_EQ(Enabled(run, id, n), e.fields) << n << " " << id;
    EXPECT_NE(Control(run, 1300, n).find(std::string("\"text\":\"") + e.editText + "\""), std::string::npos) << n;
    EXPECT_NE(Control(run, 1301, n).find(std::string("\"text\":\"") + e.addText + "\""), std::string::npos) << n;
  }
  EXPECT_NE(Control(run, 1400, 0).find("\"checked\":true"), std::string::npos);
  EXPECT_NE(Control(run, 1401, 0).find("\"checked\":false"), std::string::npos);
}

// ---- edit

TEST(AttrInfJob, EditLoadsTheSelectedRowAndANewSelectionLoadsThatRow) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1300\ndump 1000:1101\nselect 1000:1001 2\ndump 1000:1202\n"
                        "click 1000:1305\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1101, 0).find(R"("text":"b3")"), std::string::npos) << Control(run, 1101, 0);
  EXPECT_NE(Control(run, 1202, 1).find(R"("text":"c5")"), std::string::npos) << Control(run, 1202, 1);
}

TEST(AttrInfJob, AnEditedRowsRemarksAreStoredAtPosition17AndTheOldRemarksShowAgainAfterReopening) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1300\ntype 1000:1110 新備考\ntype 1000:1202 ZZ\nclick 1000:1300\n"
                        "dump 1000:1001\n" + kRegister + kOpen.substr(kOpen.find("click")) + "dump 1000:1001\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1001, 0).find(R"(["","","b3","b4","ZZ",)"), std::string::npos) << Control(run, 1001, 0);
  EXPECT_NE(Control(run, 1001, 0).find(R"("b16","新備考"])"), std::string::npos) << Control(run, 1001, 0);
  std::vector<std::string> line3 = s.Fields(1, 3);
  EXPECT_EQ(line3[4], "ZZ");
  EXPECT_EQ(line3[16], "新備考");  // position 17: the attribute key
  EXPECT_EQ(line3[17], "b18");     // position 18: the old remarks
  // The rows above the edited one take their shown remarks as their key too.
  EXPECT_EQ(s.Fields(1, 2)[16], "a18");
  EXPECT_EQ(s.Fields(1, 4)[16], "c17");  // below: untouched
  EXPECT_NE(Control(run, 1001, 1).find(R"("b16","b18"])"), std::string::npos) << Control(run, 1001, 1);
}

TEST(AttrInfJob, BackLeavesEditModeWithoutTakingOverTheFields) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1300\ntype 1000:1202 ZZ\nclick 1000:1305\ndump 1000:1001\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(Control(run, 1001).find("ZZ"), std::string::npos) << Control(run, 1001);
  EXPECT_EQ(s.Fields(1, 2)[4], "a5");
}

// ---- add

TEST(AttrInfJob, AddingWithoutAWorkItemShowsTheMessageAndStaysInAddMode) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1301\ntype 1000:1101 \" \"\nclick 1000:1301\nanswer OK\ndump 1000:1301\n"
                        "type 1000:1101 \"\"\nclick 1000:1301\nanswer OK\nclick 1000:1305\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(Box("工事項目を入力して下さい。", "stop")), 2u) << run.All();
  EXPECT_NE(Control(run, 1301).find(R"("text":"保存","enabled":true)"), std::string::npos) << Control(run, 1301);
}

TEST(AttrInfJob, AnAddedRowIsInsertedAboveTheSelectedRowWithItsRemarksAtPosition17) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1301\nselect 1000:1101 冷温水\ntype 1000:1202 NEW\n"
                        "type 1000:1110 KEYX\nclick 1000:1301\ndump 1000:1001\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> lines = s.Lines(1);
  ASSERT_EQ(lines.size(), 6u);
  std::vector<std::string> added = AttrScene::Split(lines[3]);
  EXPECT_EQ(added[0], "");
  EXPECT_EQ(added[2], "冷温水");
  EXPECT_EQ(added[4], "NEW");
  EXPECT_EQ(added[16], "KEYX");  // position 17
  EXPECT_EQ(added[17], "");      // position 18
  EXPECT_EQ(added[20], "-");     // member 20: the key is not in the table, and the row is grid row 3
  EXPECT_EQ(lines[4], DataLine("", "", "b"));
  EXPECT_NE(Control(run, 1001).find(R"("selected":[1])"), std::string::npos) << Control(run, 1001);
}

TEST(AttrInfJob, AnAddedRowIsInsertedBelowTheSelectedRowWhenBelowIsChecked) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1301\nclick 1000:1401\ndump 1000\nselect 1000:1101 給水\ntype 1000:1202 NEW\nclick 1000:1301\n" +
                        kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1401).find("\"checked\":true"), std::string::npos);
  EXPECT_NE(Control(run, 1400).find("\"checked\":false"), std::string::npos);
  std::vector<std::string> lines = s.Lines(1);
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_EQ(lines[3], DataLine("", "", "b"));
  EXPECT_EQ(AttrScene::Split(lines[4])[4], "NEW");
  EXPECT_EQ(AttrScene::Split(lines[4])[2], "給水");
}

TEST(AttrInfJob, AnAddedRowFollowsTheReadingRuleWithItsGridRowAsLineIndex) {
  AttrScene s;
  // A known key fills member 20 (position 21) from the attribute-ID table.
  ScriptRun run = s.Run("click 1000:1301\nselect 1000:1101 給水\ntype 1000:1110 共通\nclick 1000:1301\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> added = s.Fields(1, 2);
  EXPECT_EQ(added[16], "共通");
  EXPECT_EQ(added[20], "共通");
}

// ---- delete

TEST(AttrInfJob, DeletingARowWithDataShiftsMembers3To25AndLeavesSymbolAndName) {
  AttrScene s(RecordTags(1, {"h0", "h1", DataLine("AC-1", "エアコン", "a"), DataLine("AC-2", "ファン", "c"),
                             DataLine("", "", "b"), DataLine("", "", "d")}));
  ScriptRun run = s.Run("click 1000:1302\nanswer OK\ndump 1000:1001\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("行を削除します。よろしいですか。", "none", "okcancel", "Cancel"))) << run.All();
  std::vector<std::string> lines = s.Lines(1);
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[2], DataLine("AC-1", "エアコン", "c"));
  EXPECT_EQ(lines[3], DataLine("AC-2", "ファン", "b"));
  EXPECT_EQ(lines[4], DataLine("", "", "d"));
  EXPECT_EQ(lines[0], "h0,,,,,,,,,,,,,,,,,,,,,,,,");
  EXPECT_NE(Control(run, 1001).find(R"("selected":[0])"), std::string::npos) << Control(run, 1001);
}

TEST(AttrInfJob, DeletingTheLastRowWithDataEmptiesItsDataAndSelectsTheLastRow) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1302\nanswer OK\nselect 1000:1001 1\nclick 1000:1302\nanswer OK\n"
                        "dump 1000:1001\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> lines = s.Lines(1);
  ASSERT_EQ(lines.size(), 4u);  // the free slot went first
  EXPECT_EQ(lines[3], "AC-2,ファン,,,,,,,,,,,,,,,,,,,,,,,");
  EXPECT_NE(Control(run, 1001).find(R"("selected":[1])"), std::string::npos) << Control(run, 1001);
}

TEST(AttrInfJob, DeleteWithoutASelectedRowAsksToSelectOne) {
  AttrScene s(RecordTags(1, {"h0", "h1"}));  // nothing to show, so nothing selected
  ScriptRun run = s.Run("click 1000:1302\nanswer OK\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("削除する行を選択してください。", "stop"))) << run.All();
  EXPECT_EQ(run.Count(R"("event":"messagebox")"), 2u) << run.All();  // and no confirmation
}

TEST(AttrInfJob, DeleteAnsweredWithCancelKeepsTheRow) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1302\nanswer Cancel\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> lines = s.Lines(1);
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[2], DataLine("AC-1", "エアコン", "a"));
}

// ---- move

TEST(AttrInfJob, MovingUpTheFirstRowAndDownTheLastRowShowTheirMessages) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1303\nanswer OK\nselect 1000:1001 2\nclick 1000:1304\nanswer OK\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(Box("上へのシフトはできません。", "stop"))) << run.All();
  EXPECT_TRUE(run.Has(Box("下へのシフトはできません。", "stop"))) << run.All();
}

TEST(AttrInfJob, MovingARowSwapsItsDataAndKeepsSymbolAndNameAndTheMovedRowSelected) {
  AttrScene s;
  ScriptRun run = s.Run("select 1000:1001 1\nclick 1000:1304\ndump 1000:1001\nclick 1000:1303\nclick 1000:1303\ndump 1000:1001\n" +
                        kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1001, 0).find(R"("selected":[2])"), std::string::npos) << Control(run, 1001, 0);
  EXPECT_NE(Control(run, 1001, 1).find(R"("selected":[0])"), std::string::npos) << Control(run, 1001, 1);
  std::vector<std::string> lines = s.Lines(1);
  EXPECT_EQ(lines[2], DataLine("AC-1", "エアコン", "b"));
  EXPECT_EQ(lines[3], DataLine("", "", "a"));
  EXPECT_EQ(lines[4], DataLine("AC-2", "ファン", "c"));
}

// ---- register and cancel

TEST(AttrInfJob, CancelAskedAndConfirmedLeavesTheDrawingsBytesUnchanged) {
  AttrScene s;
  std::string before = s.drawing->document().Serialize();
  ScriptRun run = s.Run("click 1000:1302\nanswer OK\nclose 1000\nanswer Cancel\nclick 1000:2\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(Box("編集内容を破棄します。よろしいですか。", "none", "okcancel", "Cancel")), 2u) << run.All();
  EXPECT_EQ(run.Count(R"({"event":"enddialog","id":1000,"result":2})"), 1u) << run.All();
  EXPECT_EQ(s.drawing->document().Serialize(), before);
}

TEST(AttrInfJob, RegisterWritesTheRecordsReadAndLeavesARecordBehindAGapUntouched) {
  AttrScene s(RecordTags(1, Record01()) + RecordTags(2, {"h0", "h1", "x,y"}) + RecordTags(4, {"old"}));
  ScriptRun run = s.Run(kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":1000,"result":1})")) << run.All();
  EXPECT_EQ(s.Lines(2).at(2), "x,y,,,,,,,,,,,,,,,,,,,,,,,");  // two texts: members 1 and 2, all else empty
  EXPECT_EQ(s.Lines(4), std::vector<std::string>{"old"});
  EXPECT_EQ(run.events.back(), R"({"event":"print","text":"\n"})");
}

TEST(AttrInfJob, ASeventeenFieldLineWithAnUnknownKeyGetsADashFromLineTwoOnOnly) {
  std::string seventeen = "s1,s2,s3,s4,s5,s6,s7,s8,s9,s10,s11,s12,s13,s14,s15,s16,unknown";
  AttrScene s(RecordTags(1, {seventeen, seventeen, seventeen}));
  ScriptRun run = s.Run(kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(s.Fields(1, 0)[20], "");
  EXPECT_EQ(s.Fields(1, 1)[20], "");
  EXPECT_EQ(s.Fields(1, 2)[20], "-");
}

// ---- the choice lists

TEST(AttrInfJob, PickingAnABEntryRefillsMemberMaterialAndSpecification) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1300\nselect 1000:1102 別途\ndump 1000\nselect 1000:1102 A\ndump 1000\n"
                        "click 1000:1305\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1103, 0).find(R"("items":["吊りボルト","保温材"])"), std::string::npos) << Control(run, 1103, 0);
  EXPECT_NE(Control(run, 1107, 0).find(R"("items":["SS400","GW"])"), std::string::npos);
  EXPECT_NE(Control(run, 1111, 0).find(R"("items":["M10"])"), std::string::npos);
  EXPECT_NE(Control(run, 1103, 1).find(R"("items":["配管用炭素鋼鋼管","スパイラルダクト"])"), std::string::npos);
}

TEST(AttrInfJob, PickingAMemberWhileABIsEmptyStoresItsMaterialCodeAtPosition19) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1300\nselect 1000:1102 \"\"\nselect 1000:1107 SS400\nselect 1000:1103 吊りボルト\n"
                        "click 1000:1305\nselect 1000:1001 1\nclick 1000:1300\nselect 1000:1102 \"\"\nselect 1000:1107 GW\n"
                        "select 1000:1103 保温材\nclick 1000:1305\n"
                        // With "A材/別途" set, picking a member leaves the code alone.
                        "select 1000:1001 2\nclick 1000:1300\nselect 1000:1102 A\nselect 1000:1103 スパイラルダクト\n"
                        "click 1000:1305\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(s.Fields(1, 2)[18], "32010101000000");
  EXPECT_EQ(s.Fields(1, 3)[18], "Z9999999999999");  // its column 5 is empty
  EXPECT_EQ(s.Fields(1, 4)[18], "c19");
}

TEST(AttrInfJob, AnAddedRowInTheFirstTwoGridRowsGetsNoDashForAnUnknownKey) {
  AttrScene s(RecordTags(1, {"h0", "h1"}));  // an empty grid: the new row is grid row 0
  ScriptRun run = s.Run("click 1000:1301\nselect 1000:1101 給水\ntype 1000:1110 unknown\nclick 1000:1301\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> added = s.Fields(1, 2);
  EXPECT_EQ(added[16], "unknown");
  EXPECT_EQ(added[20], "");
}

TEST(AttrInfJob, AChoiceFileOfEmptyLinesGivesThatManyEmptyEntriesAndAnEmptyFileASingleSpace) {
  AttrScene s;
  s.site.dir.Write("system/Addin/標準図/数量.txt", "\r\n\r\n");
  s.site.dir.Write("system/Addin/標準図/呼称.txt", "");
  ScriptRun run = s.Run("dump 1000\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(Control(run, 1108).find(R"("items":["",""],"selected":0)"), std::string::npos) << Control(run, 1108);
  EXPECT_NE(Control(run, 1109).find(R"("items":[" "],"selected":0)"), std::string::npos) << Control(run, 1109);
}

TEST(AttrInfJob, ABValueLowerCaseASelectsTheAFilesAnd2OrBTheBFiles) {
  AttrScene s;
  s.site.dir.Write("system/Addin/標準図/A材別途.txt", "a\r\n2\r\nB\r\n1\r\n");
  // By index: "2", "a", "B", "1".
  ScriptRun run = s.Run("click 1000:1300\nselect 1000:1102 1\ndump 1000:1103\nselect 1000:1102 0\ndump 1000:1103\n"
                        "select 1000:1102 2\ndump 1000:1103\nselect 1000:1102 3\ndump 1000:1103\nclick 1000:1305\nclose 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  const std::string a = R"("items":["配管用炭素鋼鋼管","スパイラルダクト"])", b = R"("items":["吊りボルト","保温材"])";
  EXPECT_NE(Control(run, 1103, 0).find(b), std::string::npos) << Control(run, 1103, 0);
  EXPECT_NE(Control(run, 1103, 1).find(a), std::string::npos) << Control(run, 1103, 1);
  EXPECT_NE(Control(run, 1103, 2).find(b), std::string::npos) << Control(run, 1103, 2);
  EXPECT_NE(Control(run, 1103, 3).find(a), std::string::npos) << Control(run, 1103, 3);
}

// ---- the comma

TEST(AttrInfJob, ACommaTypedIntoAFieldIsRefusedAndTheFieldKeepsItsText) {
  AttrScene s;
  ScriptRun run = s.Run("click 1000:1300\ntype 1000:1202 \"x,y\"\nanswer OK\ndump 1000:1202\ntype 1000:1110 \"a,b\"\nanswer OK\n"
                        "dump 1000:1110\nclick 1000:1300\n" + kRegister);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(Box("「,」(カンマ) は入力できません。", "stop")), 2u) << run.All();
  EXPECT_NE(Control(run, 1202, 0).find(R"("text":"a5")"), std::string::npos) << Control(run, 1202, 0);
  EXPECT_NE(Control(run, 1110, 1).find(R"("text":"a18")"), std::string::npos) << Control(run, 1110, 1);
  EXPECT_EQ(s.Fields(1, 2).size(), 25u);
}

// ---- the main dialog

TEST(AttrInfJob, InfoCheckOpensTheDialogForOneStandardDrawingPerClick) {
  AttrScene s;
  ScriptRun run = s.Run("close 1000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count(R"("event":"prompt")"), 1u) << run.All();
  EXPECT_EQ(run.events.back(), R"({"event":"print","text":"\n"})");
}
