#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/Listing.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq;
using namespace tq::test;

TEST(TqstdTakeoff, TheAggregateOfTheExampleIsWrittenByteForByte) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind aggregate --separator comma -o " + Quoted(copy.dir / "a.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("wrote "), std::string::npos) << r.out;
  std::string bytes = copy.dir.Read("a.txt");
  EXPECT_EQ(bytes, ReadFixture("takeoff/example_aggregate_comma.txt"));
  EXPECT_EQ(bytes.find("\xEF\xBB\xBF"), std::string::npos);
  // The quantities of the two units of AC-1 merged: 4.5 × 2.
  EXPECT_NE(bytes.find(EncodeCodePage(u"AC-1,31,21010101000000,配管用炭素鋼鋼管,配管用炭素鋼鋼管,50,0,0,SGP,白,0,0,0,0,0,9.0,\r\n", "CP932")),
            std::string::npos);
}

TEST(TqstdTakeoff, TheListOfTheExampleWithTabsByteForByte) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind list --separator tab -o " + Quoted(copy.dir / "l.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(copy.dir.Read("l.txt"), ReadFixture("takeoff/example_list_tab.txt"));
}

TEST(TqstdTakeoff, OptionsLeftOutTakeWhatTheDialogStartsWithAndAreRemembered) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini());
  ASSERT_EQ(r.status, 0) << r.out;
  // The default file name: the drawing's without ".dxf", then ".txt"; a list with tabs.
  std::string list = copy.dir.Read("site/drawings/設備標準図.txt");
  EXPECT_EQ(list, ReadFixture("takeoff/example_list_tab.txt"));
  EXPECT_EQ(copy.dir.Read("site/system/Addin/標準図/ファイル出力前回値.dat"), EncodeCodePage(u"0\r\n2\r\n全て\r\n", "CP932"));
  RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind aggregate --separator pipe --category B材");
  EXPECT_EQ(copy.dir.Read("site/system/Addin/標準図/ファイル出力前回値.dat"), EncodeCodePage(u"1\r\n1\r\nB材\r\n", "CP932"));
  std::string again = copy.dir.Read("site/drawings/設備標準図.txt");
  EXPECT_NE(again.find("|"), std::string::npos);
  EXPECT_EQ(again.find(EncodeCodePage(u"配管用炭素鋼鋼管", "CP932")), std::string::npos);  // A material left out
}

TEST(TqstdTakeoff, TheCinetFileTakesATakeoffListUnderItsOwnName) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind cinet --separator tab");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(copy.dir.Read("site/drawings/設備標準図_CI-NETコード.txt"), ReadFixture("takeoff/example_list_tab.txt"));
}

TEST(TqstdTakeoff, JsonPrintsThe23ColumnItems) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --json");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out.find("{\"columns\": [\"記号/台数\", \"機器名称\""), 0u) << r.out;
  EXPECT_NE(r.out.find("[\"EF-1\", \"送風機\", \"換気ダクト\", \"A\", \"\", \"スパイラルダクト\""), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\"32010201000000&300x200\""), std::string::npos) << r.out;
}

TEST(TqstdTakeoff, RegisterStoresTheRowsAndSavesTheDrawing) {
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --register -o " + Quoted(copy.dir / "l.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_TRUE(std::filesystem::exists(copy.site / "drawings" / u8"設備標準図.dxf.bak"));
  auto info = RunTqstd("info " + copy.Drawing() + copy.Ini() + " --sheet M-104 --json");
  EXPECT_NE(info.out.find("32010201000000&300x200"), std::string::npos) << info.out;  // field 19 stored
  // The stored codes give the same takeoff again.
  auto again = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " -o " + Quoted(copy.dir / "l2.txt"));
  ASSERT_EQ(again.status, 0) << again.out;
  EXPECT_EQ(copy.dir.Read("l2.txt").size() > 0, true);
}

TEST(TqstdTakeoff, NothingWrittenWithoutInformation) {
  TempDir dir;
  dir.Write("d.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nTEXT\n  5\n1A\n  8\n5\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 40\n3.5\n  1\nA-1\n  0\nENDSEC\n  0\nEOF\n");
  SiteCopy copy;
  auto r = RunTqstd("takeoff " + (dir / "d.dxf").string() + copy.Ini());
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "\n情報設定済の標準図が見つかりません。\n");
  EXPECT_FALSE(std::filesystem::exists(dir / "d.txt"));
}

TEST(TqstdTakeoff, AnAggregateOfAFormatOfFewerThan16ColumnsIsReportedAndWritesNoFile) {
  SiteCopy copy;
  ASSERT_TRUE(WriteFileBytes(copy.site / u8"system/Addin/標準図/標準図用出力フォーマット.csv",
                             EncodeCodePage(u"見出し,記号,数量,,\r\nコード,S001,S304,,\r\n", "CP932")));
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind aggregate -o " + Quoted(copy.dir / "a.txt"));
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("at least 16"), std::string::npos) << r.out;
  EXPECT_FALSE(std::filesystem::exists(copy.dir / "a.txt"));
}

TEST(TqstdTakeoff, BadOptionValuesAreUserErrors) {
  SiteCopy copy;
  EXPECT_EQ(RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --kind sum").status, 1);
  EXPECT_EQ(RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --separator semicolon").status, 1);
}

namespace {
// The first field of every line of the records of M-101 (handle 42, two records) in the copy.
std::vector<std::vector<Text>> RecordsOfM101(const SiteCopy& copy) {
  auto drawing = dxf::DxfDrawing::Open(copy.site / "drawings" / u8"設備標準図.dxf").value();
  std::vector<std::vector<Text>> records;
  for (const char16_t* name : {u"TQ_STDINF01", u"TQ_STDINF02"}) {
    std::vector<Text>& record = records.emplace_back();
    XDataLines lines = drawing->ReadXData(drawing->FindHandle(u"42"), name).value_or(XDataLines{});
    for (const Text& line : lines) record.push_back(line.substr(0, line.find(u',')));
  }
  return records;
}
}  // namespace

TEST(TqstdTakeoff, RegisterWarnsNamingTheStandardDrawingsWhoseValuesMove) {
  SiteCopy copy;
  std::vector<std::vector<Text>> before = RecordsOfM101(copy);
  ASSERT_EQ(before[0].size(), 7u);
  ASSERT_EQ(before[1].size(), 5u);
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --register -o " + Quoted(copy.dir / "l.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("warning: registering moves values between the records of the standard drawings M-101 ("),
            std::string::npos)
      << r.out;
  EXPECT_NE(r.out.find("RegisterTakeoffToOrigin=1 in [TQTStdInfo]"), std::string::npos) << r.out;
  // The original pairing: the records swap numbers and the rows are dealt out anew, so record
  // 01 now holds three rows under record 02's header lines.
  std::vector<std::vector<Text>> after = RecordsOfM101(copy);
  EXPECT_EQ(after[0].size(), 5u);
  EXPECT_EQ(after[1].size(), 7u);
}

TEST(TqstdTakeoff, TheOriginSettingRegistersEveryRowBackToItsOwnRecordWithoutWarning) {
  SiteCopy copy;
  std::filesystem::path settings = copy.site / "data" / u8"標準図設定.ini";
  std::string text = ReadFileBytes(settings).value() + "[TQTStdInfo]\r\nRegisterTakeoffToOrigin=1\r\n";
  ASSERT_TRUE(WriteFileBytes(settings, text));
  std::vector<std::vector<Text>> before = RecordsOfM101(copy);
  auto r = RunTqstd("takeoff " + copy.Drawing() + copy.Ini() + " --register -o " + Quoted(copy.dir / "l.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out.find("warning: registering moves values"), std::string::npos) << r.out;
  EXPECT_EQ(RecordsOfM101(copy), before);
}
