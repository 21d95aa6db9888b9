// The takeoff check dialog, driven by scripts through the headless host.
#include <gtest/gtest.h>

#include "base/Fields.hpp"
#include "info/StdInfRecord.hpp"
#include "support/ExampleSite.hpp"
#include "support/ScriptRun.hpp"
#include "info/LineFields.hpp"
#include "takeoff/CollectInfJob.hpp"
#include "takeoff/TakeoffJob.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// Opens "拾い確認" on a drawing where every standard drawing carries information.
const std::string kOpen = "command TQ_STD_INF\nclick 200:203\n";
// The example drawing also has standard drawings without information: the warning box first.
const std::string kOpenExample = kOpen + "answer OK\n";
// Leaves the dialog without registering.
const std::string kClose = "close 2000\nanswer OK\n";

Tags RecordTags(const std::string& app, const std::vector<std::string>& lines) {
  Tags tags{{1001, app}};
  for (const std::string& line : lines) tags.push_back({1000, line});
  return tags;
}

// A stored line as "登録" writes it: the line's 25 fields, `changes` applied (position → text).
Text Stored(const std::string& line, std::initializer_list<std::pair<LinePosition, const char16_t*>> changes = {}) {
  CTakeoffRow row = ParseTakeoffLine(FromUtf8(line), ObjectId{});
  for (auto [position, text] : changes) row.field(position) = text;
  return JoinLine25(row.fields);
}

// The event of a dumped control, found by its id in the transcript.
std::string DumpOf(const ScriptRun& run, int id) {
  std::string key = "{\"id\":" + std::to_string(id) + ",";
  for (const std::string& e : run.events)
    if (e.find("\"event\":\"dump\"") != std::string::npos && e.find(key) != std::string::npos) return e;
  return "<no dump of " + std::to_string(id) + ">";
}

// The texts of one row of the dumped list, as JSON.
std::string ItemJson(const std::vector<std::string>& cells) {
  std::string json = "[";
  for (size_t i = 0; i < cells.size(); ++i) json += (i ? ",\"" : "\"") + cells[i] + "\"";
  return json + "]";
}

constexpr char kA3[] = "X-1,FAN,VENT,A,,DUCT,200,D,,,,,SGCC,,12.0,m";
constexpr char kB3[] = "Y-1,PUMP,WATER,A,,PIPE,50,A,,,,,SGP,,3.0,m";
constexpr char kZ[] = "Z9999999999999";

}  // namespace

TEST(CollectInfJob, WithOneRecordPerEntityRegisterWritesEveryLineUnderRecord01WithTheShownTexts) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"h1", "h2", kA3, kB3}) +
          TextTags("B2", "M-2", 54000, 1000) + RecordTags("TQ_STDINF01", {"g1", "g2", kB3}));
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            kOpen + "select 2000:389 1\ntype 2000:2301 \"給水用\"\nclick 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":2000,"result":1})")) << run.All();
  // Without tables an A-material row's code is the code of last resort: shown, and stored.
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01"),
            (XDataLines{Stored("h1"), Stored("h2"), Stored(kA3, {{LinePosition::kCinetCode, u"Z9999999999999"}}),
                        Stored(kB3, {{LinePosition::kCinetCode, u"Z9999999999999"}, {LinePosition::kUseCode, u"給水用"}})}));
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B2"), u"TQ_STDINF01"),
            (XDataLines{Stored("g1"), Stored("g2"), Stored(kB3, {{LinePosition::kCinetCode, u"Z9999999999999"}})}));
  EXPECT_FALSE(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF02"));
}

TEST(CollectInfJob, WithOneRecordPerEntityRegisterStoresTheDefaultsShown) {
  ExampleSite site;
  std::optional<TakeoffJob> before = TakeoffJob::Open(*site.drawing, site.folders, site.drawing->SelectAll({u"TEXT", u"5"}));
  ASSERT_TRUE(before);
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenExample + "click 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  // Every shown item is now what the drawing holds: a takeoff opened afresh shows the same
  // texts, and no code column is left empty for a default to fill.
  std::optional<TakeoffJob> after = TakeoffJob::Open(*site.drawing, site.folders, site.drawing->SelectAll({u"TEXT", u"5"}));
  ASSERT_TRUE(after);
  EXPECT_EQ(after->items, before->items);
  size_t rows = 0;
  for (const TakeoffEntity& entity : after->data)
    for (const TakeoffRecord& record : entity)
      for (size_t l = 2; l < record.size(); ++l, ++rows) {
        EXPECT_FALSE(record[l].field(LinePosition::kCinetCode).empty());
        EXPECT_FALSE(record[l].field(LinePosition::kUseCode).empty()) << ToUtf8(JoinLine25(record[l].fields));
        EXPECT_FALSE(record[l].field(LinePosition::kConstructionCode).empty());
      }
  EXPECT_EQ(rows, before->items.size());
}

TEST(CollectInfJob, WithTwoRecordsPerEntityTheRecordsSwapTheirNumbersOnRegister) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"a1", "a2", kA3}) +
          RecordTags("TQ_STDINF02", {"b1", "b2", kB3}));
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, kOpen + "dump 2000:389\nclick 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  // Shown in reading order: record 01's line, then record 02's.
  EXPECT_NE(DumpOf(run, 389).find("\"items\":[[\"X-1\""), std::string::npos) << DumpOf(run, 389);
  // The last record is stored first; the items go back to the records walked backwards, so
  // record 02's header lines now stand under 01 with the first item's texts.
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01"),
            (XDataLines{Stored("b1"), Stored("b2"), Stored(kA3, {{LinePosition::kCinetCode, u"Z9999999999999"}})}));
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF02"),
            (XDataLines{Stored("a1"), Stored("a2"), Stored(kB3, {{LinePosition::kCinetCode, u"Z9999999999999"}})}));
}

TEST(CollectInfJob, WithTheOriginSettingEveryRecordKeepsItsNumberAndItsRowsOnRegister) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"a1", "a2", kA3}) +
              RecordTags("TQ_STDINF02", {"b1", "b2", kB3}),
          u"[TQTStdInfo]\r\nRegisterTakeoffToOrigin=1\r\n");
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, kOpen + "click 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01"),
            (XDataLines{Stored("a1"), Stored("a2"), Stored(kA3, {{LinePosition::kCinetCode, u"Z9999999999999"}})}));
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF02"),
            (XDataLines{Stored("b1"), Stored("b2"), Stored(kB3, {{LinePosition::kCinetCode, u"Z9999999999999"}})}));
}

TEST(CollectInfJob, RegisterKeepsFieldsPastThe25thAndItemsThatAreNoLines) {
  const std::string past = std::string(kA3) + ",,,,,,,,,,ours 26,ours 27";
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"a1", "a2", past}) +
          Tags{{1010, "1.0"}, {1020, "2.0"}, {1030, "0.0"}, {1070, "5"}});
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, kOpen + "click 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  std::string saved = s.drawing->document().Serialize();
  Text stored = Stored(kA3, {{LinePosition::kCinetCode, u"Z9999999999999"}}) + u",ours 26,ours 27";
  EXPECT_NE(saved.find(DxfTags({{1000, ToUtf8(stored)}, {1010, "1.0"}, {1020, "2.0"}, {1030, "0.0"}, {1070, "5"}})),
            std::string::npos)
      << saved;
}

TEST(CollectInfJob, AMemberTypedWhoseCodeComesOutEmptyShowsTheCodeOfLastResort) {
  ExampleSite site;
  // Item 2 is B material ("吊りボルト"); "吊りボルトM12" is in its member file but has no
  // line in the B-material settings, so its code comes out empty.
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenExample + "select 2000:389 2\ntype 2000:2300 \"吊りボルトM12\"\ndump 2000:2100\ndump 2000:389\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpOf(run, 2100).find("\"text\":\"Z9999999999999\""), std::string::npos) << DumpOf(run, 2100);
  EXPECT_NE(DumpOf(run, 389).find(ItemJson({"", "", "冷温水", "", "", "吊りボルトM12", "10", "", "", "", "", "", "SS400",
                                             "M12", "6", "本", "", kZ, "共通", "新設", "自社手配", "昼間", "なし"})),
            std::string::npos)
      << DumpOf(run, 389);
}

TEST(CollectInfJob, AMemberTypedThatIsInNoMemberFileShowsTheCodeOfLastResort) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenExample + "select 2000:389 2\ntype 2000:2300 \"未登録の部材\"\ndump 2000:2100\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpOf(run, 2100).find("\"text\":\"Z9999999999999\""), std::string::npos) << DumpOf(run, 2100);
}

TEST(CollectInfJob, AMemberChosenFromTheListKeepsAnEmptyCode) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenExample + "select 2000:389 2\nselect 2000:2300 \"吊りボルトM12\"\ndump 2000:2100\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpOf(run, 2100).find("\"text\":\"\""), std::string::npos) << DumpOf(run, 2100);
}

TEST(CollectInfJob, AMemberChosenFromItsFileGivesItsMaterialSpecificationAndSettingsCode) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenExample + "select 2000:389 2\nselect 2000:2300 \"ステンレス吊りボルト\"\n"
                                           "select 2000:2300 \"吊りボルト\"\ndump 2000:2100\ndump 2000:389\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  // "吊りボルト": SS400 and M10 from the member file; the code from the B-material settings.
  EXPECT_NE(DumpOf(run, 2100).find("\"text\":\"32010101000000\""), std::string::npos) << DumpOf(run, 2100);
  ScriptRun stainless = RunScript(*site.drawing, site.folders,
                                  kOpenExample + "select 2000:389 2\nselect 2000:2300 \"ステンレス吊りボルト\"\ndump 2000:389\n" + kClose);
  EXPECT_NE(DumpOf(stainless, 389).find(ItemJson({"", "", "冷温水", "", "", "ステンレス吊りボルト", "10", "", "", "", "", "",
                                                   "SUS304", "M10", "6", "本", "", "", "共通", "新設", "自社手配", "昼間", "なし"})),
            std::string::npos)
      << DumpOf(stainless, 389);
}

TEST(CollectInfJob, SelectingAnItemShowsItsValuesAndFillsTheMemberComboFromItsMemberFile) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders,
                            kOpenExample + "dump 2000:2300\nselect 2000:389 3\ndump 2000:2100\ndump 2000:2301\nselect 2000:389 2\ndump 2000:2300\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  std::vector<std::string> dumps;
  for (const std::string& e : run.events)
    if (e.find("\"event\":\"dump\"") != std::string::npos) dumps.push_back(e);
  ASSERT_EQ(dumps.size(), 4u);
  // Item 0 is A material: one empty choice, its member in the edit part.
  EXPECT_NE(dumps[0].find(R"("text":"配管用炭素鋼鋼管","enabled":true,"visible":true,"items":[""])"), std::string::npos) << dumps[0];
  EXPECT_NE(dumps[1].find(R"("text":"32020101000000&50A 32020199000000&")"), std::string::npos) << dumps[1];
  EXPECT_NE(dumps[2].find(R"("text":"冷温水用")"), std::string::npos) << dumps[2];
  EXPECT_NE(dumps[2].find(R"("items":["共通","給水用","排水用","冷温水用","冷媒用","換気用"])"), std::string::npos) << dumps[2];
  EXPECT_NE(dumps[3].find(R"("text":"吊りボルト","enabled":true,"visible":true,"items":["吊りボルト","吊りボルトM12","ステンレス吊りボルト"])"),
            std::string::npos)
      << dumps[3];
}

TEST(CollectInfJob, AMemberFileThatCannotBeReadIsFoundThroughTheSecondReadingOfTheMemberNameTable) {
  ExampleSite site;
  // A B-material line of a one-record standard drawing whose key (field 25) has no file of
  // its own; its first 14 characters name "吊りボルト.csv" in the member-name table.
  ObjectId sheet;
  XDataLines lines;
  size_t at = 0;
  for (ObjectId id : site.drawing->SelectAll({u"TEXT", u"5"})) {
    std::optional<XDataLines> record = site.drawing->ReadXData(id, u"TQ_STDINF01");
    if (!record || site.drawing->ReadXData(id, u"TQ_STDINF02")) continue;
    for (size_t l = 2; l < record->size() && sheet.isNull(); ++l)
      if (ParseTakeoffLine((*record)[l], id).field(LinePosition::kMemberName) == u"吊りボルト") sheet = id, lines = *record, at = l;
    if (!sheet.isNull()) break;
  }
  ASSERT_FALSE(sheet.isNull());
  auto storeKey = [&](const char16_t* key) {
    CTakeoffRow row = ParseTakeoffLine(lines[at], sheet);
    row.field(LinePosition::kMemberName) = u"未知の部材";
    row.field(LinePosition::kBMaterialKey) = key;
    lines[at] = JoinLine25(row.fields);
    ASSERT_EQ(site.drawing->WriteXData(sheet, u"TQ_STDINF01", lines), EditResult::Ok);
  };
  storeKey(u"32010101000000X");
  std::optional<TakeoffJob> job = TakeoffJob::Open(*site.drawing, site.folders, site.drawing->SelectAll({u"TEXT", u"5"}));
  ASSERT_TRUE(job);
  size_t item = 0;
  while (item < job->items.size() && job->items[item][5] != u"未知の部材") ++item;
  ASSERT_LT(item, job->items.size());
  std::string select = "select 2000:389 " + std::to_string(item) + "\ndump 2000:2300\n";
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenExample + select + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_NE(DumpOf(run, 2300).find(R"("items":["吊りボルト","吊りボルトM12","ステンレス吊りボルト"])"), std::string::npos)
      << DumpOf(run, 2300);
  // A key shorter than 14 characters has no substitute: one empty choice.
  storeKey(u"3201010100000");
  ScriptRun shortKey = RunScript(*site.drawing, site.folders, kOpenExample + select + kClose);
  EXPECT_NE(DumpOf(shortKey, 2300).find(R"("items":[""])"), std::string::npos) << DumpOf(shortKey, 2300);
}

TEST(CollectInfJob, ColumnsAreAFifteenthOfTheListWidthAndATwentySixthForQuantityAndDesignation) {
  ExampleSite site;
  ScriptRun run = RunScript(*site.drawing, site.folders, kOpenExample + "dump 2000:389\n" + kClose);
  ASSERT_TRUE(run.ok) << run.All();
  std::string list = DumpOf(run, 389);
  std::vector<int> widths;
  for (size_t at = list.find("\"width\":"); at != std::string::npos; at = list.find("\"width\":", at + 1))
    widths.push_back(std::stoi(list.substr(at + 8)));
  ASSERT_EQ(widths.size(), 23u) << list;
  int wide = widths[0], narrow = widths[14];
  for (size_t c = 0; c < widths.size(); ++c) EXPECT_EQ(widths[c], c == 14 || c == 15 ? narrow : wide) << c;
  // One client width gives both: its fifteenth and its twenty-sixth.
  bool oneWidth = false;
  for (int w = 0; w < 4000 && !oneWidth; ++w) oneWidth = w / 15 == wide && w / 26 == narrow;
  EXPECT_TRUE(oneWidth) << wide << " " << narrow;
  EXPECT_GT(wide, 0);
  EXPECT_LT(narrow, wide);
}

TEST(CollectInfJob, ChangingTheCodesWritesTheirColumnsAndRegisterStoresThem) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"h1", "h2", kA3}));
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            kOpen + "type 2000:2100 \"21010101000000\"\ntype 2000:2302 \"新設\"\ntype 2000:2303 \"支給\"\n"
                                    "type 2000:2304 \"夜間\"\ntype 2000:2305 \"あり\"\nclick 2000:1\n");
  ASSERT_TRUE(run.ok) << run.All();
  // 支給区分 is shown before 夜間区分 but stored after it.
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01"),
            (XDataLines{Stored("h1"), Stored("h2"),
                        Stored(kA3, {{LinePosition::kCinetCode, u"21010101000000"}, {LinePosition::kConstructionCode, u"新設"}, {LinePosition::kNightWorkClass, u"夜間"}, {LinePosition::kSupplyClass, u"支給"}, {LinePosition::kLiningClass, u"あり"}})}));
}

TEST(CollectInfJob, CancelAsksFirstAndLeavesTheDrawingsBytesUnchanged) {
  Scene s(TextTags("B1", "M-1", 26000, 1000) + RecordTags("TQ_STDINF01", {"h1", "h2", kA3, kB3}));
  std::string before = s.drawing->document().Serialize();
  ScriptRun run = RunScript(*s.drawing, *s.site.folders,
                            kOpen + "type 2000:2301 \"給水用\"\ntype 2000:2300 \"PIPE\"\nclick 2000:2\nanswer Cancel\n"
                                    "select 2000:389 1\nclose 2000\nanswer OK\n");
  ASSERT_TRUE(run.ok) << run.All();
  const std::string box =
      R"({"event":"messagebox","text":"編集内容を破棄します。よろしいですか。","icon":"none","buttons":"okcancel","default":"Cancel"})";
  EXPECT_EQ(run.Count(box), 2u) << run.All();
  EXPECT_EQ(run.Count(R"({"event":"enddialog","id":2000,"result":2})"), 1u) << run.All();
  EXPECT_EQ(s.drawing->document().Serialize(), before);
}

TEST(CollectInfJob, WithoutAnyStandardDrawingItShowsThatNoInformationIsSetAndEndsWithResultZero) {
  Scene s(TextTags("B1", "M-1", 26000, 1000));
  int result = -1;
  bool output = false;
  ScriptRun run = RunScript(*s.drawing, *s.site.folders, "answer OK\n", [&](headless::HeadlessSession& session) {
    CCollectInfJob job(session.addIn().dialogServices(), *s.drawing, s.editor, *s.site.folders, {},
                       [&](const TakeoffData&, const ReferenceTables&) { output = true; });
    result = job.DoModal();
  });
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(result, 0);
  EXPECT_TRUE(run.Has(R"({"event":"messagebox","text":"情報が設定されていません。","icon":"stop","buttons":"ok","default":"OK"})"))
      << run.All();
  EXPECT_EQ(run.Count("\"dialog\""), 0u) << run.All();  // the dialog never showed
  EXPECT_FALSE(output);
}
