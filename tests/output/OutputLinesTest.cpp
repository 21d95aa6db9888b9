#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "output/EncodedWriter.hpp"
#include "output/OutputLines.hpp"
#include "support/CodePages.hpp"
#include "support/TakeoffFixture.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;
using V = std::vector<Text>;

namespace {

const ReferenceTables kTables = SampleTables();

Result<V> TryBuild(const OutputFormat& f, const TakeoffData& data, bool aggregate,
                   SeparatorKind separator = SeparatorKind::Comma, TextView category = u"") {
  return OutputBuilder(f, kTables).Build(data, aggregate, separator, category);
}

V Build(const OutputFormat& f, const TakeoffData& data, bool aggregate, SeparatorKind separator = SeparatorKind::Comma,
        TextView category = u"") {
  Result<V> built = TryBuild(f, data, aggregate, separator, category);
  EXPECT_TRUE(built) << built.error().Describe();
  return built ? *built : V();
}

// The bytes WriteOutputFile writes for these lines.
std::string FileBytes(const V& lines) {
  TempDir dir;
  EXPECT_TRUE(WriteOutputFile(dir / "out.txt", lines, Cp932()));
  return dir.Read("out.txt");
}

const OutputFormat kFormat = FormatOf({u"S001", u"S304", u"SNET"});

}  // namespace

TEST(OutputFormat, ACodeLineOfSixFieldsGivesExactlyThreeColumns) {
  OutputFormat f;
  f.lines[1] = {u"ラベル", u"S001", u"S304", u"SNET", u"X", u"Y"};
  EXPECT_EQ(f.Codes(), (V{u"S001", u"S304", u"SNET"}));
  f.lines[0] = {u"a", u"b"};
  EXPECT_TRUE(f.Headers().empty());
}

TEST(OutputLines, TwoUnitsAndQuantity1Point5GiveTwoListLinesAnd3Point0InTheAggregate) {
  TakeoffData data{{RecordOf({u"h", u"h", u"AC-1,,給水,A,,配管,,,,,,,,,1.5,,,,C1", u"2,,給水,A,,配管,,,,,,,,,0"})}};
  V list = Build(kFormat, data, false);
  EXPECT_EQ(list, (V{u"HS001,HS304,HSNET,", u"AC-1,1.5,C1,", u"AC-1,1.5,C1,"}));
  EXPECT_EQ(FileBytes(list), "HS001,HS304,HSNET,\r\nAC-1,1.5,C1,\r\nAC-1,1.5,C1,\r\n");
  OutputFormat f16 = FormatOf({u"S001", u"SNAM", u"SMAT", u"SPEC", u"SSL0", u"SSW0", u"SSH0", u"&S501", u"&SC01", u"&SC03",
                               u"&SC04", u"&SC05", u"&SC06", u"S481", u"SNET", u"S304"});
  V aggregate = Build(f16, data, true);
  ASSERT_EQ(aggregate.size(), 2u);
  EXPECT_EQ(aggregate[1], u"AC-1,配管, , ,0,0,0,給水, , , , , ,,C1,3.0,");
  EXPECT_EQ(FileBytes(aggregate).substr(FileBytes(aggregate).find("AC-1")),
            EncodeCodePage(u"AC-1,配管, , ,0,0,0,給水, , , , , ,,C1,3.0,\r\n", "CP932"));
}

TEST(OutputLines, TwoWordsInField19GiveTwoLinesAndTwoBlanksThreeWithABlankInTheMiddle) {
  TakeoffData one{{RecordOf({u"h", u"h", u"X-1,,,A,,,,,,,,,,,1,,,,C1 C2", u"1"})}};
  EXPECT_EQ(Build(kFormat, one, false), (V{u"HS001,HS304,HSNET,", u"X-1,1.0,C1,", u"X-1,1.0,C2,"}));
  TakeoffData two{{RecordOf({u"h", u"h", u"X-1,,,A,,,,,,,,,,,1,,,,C1  C2", u"1"})}};
  EXPECT_EQ(Build(kFormat, two, false), (V{u"HS001,HS304,HSNET,", u"X-1,1.0,C1,", u"X-1,1.0, ,", u"X-1,1.0,C2,"}));
}

TEST(OutputLines, Field4HoldingBettoGivesNoLineALowerCaseAIsAMaterial) {
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,,別途,,,,,,,,,,,1", u"1,,,a,,,,,,,,,,,2"})}};
  EXPECT_EQ(Build(kFormat, data, false), (V{u"HS001,HS304,HSNET,", u"X-1,2.0, ,"}));
}

TEST(OutputLines, ABMaterialRowWithALowerCaseAInField8IsSkippedWhenField7IsZeroOrEmpty) {
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,,,,,0,a,,,,,,,1", u"1,,,,,,,a,,,,,,,2", u",,,,,,5,a,,,,,,,3"})}};
  EXPECT_EQ(Build(kFormat, data, false), (V{u"HS001,HS304,HSNET,", u"X-1,3.0, ,"}));
}

TEST(OutputLines, Field15HoldingZeroOrEmptySkipsTheRowInEveryMode) {
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,,A,,,,,,,,,,,0.0", u"1,,,,,,,,,,,,,,", u",,,A,,,,,,,,,,,x"})}};
  EXPECT_EQ(Build(kFormat, data, false), (V{u"HS001,HS304,HSNET,"}));
  OutputFormat f16 = FormatOf({u"S001", u"S304", u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H", u"I", u"J", u"K", u"L", u"M", u"N"});
  EXPECT_EQ(Build(f16, data, true).size(), 1u);
}

TEST(OutputLines, AnOutputCategoryWithALowerCaseABeforeTheMaterialSelectsAMaterialOnly) {
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,,A,,,,,,,,,,,1", u"1,,,,,,,,,,,,,,2"})}};
  EXPECT_EQ(Build(kFormat, data, false, SeparatorKind::Comma, u"a材"), (V{u"HS001,HS304,HSNET,", u"X-1,1.0, ,"}));
  EXPECT_EQ(Build(kFormat, data, false, SeparatorKind::Comma, u"B材"), (V{u"HS001,HS304,HSNET,", u"X-1,2.0, ,"}));
  EXPECT_EQ(Build(kFormat, data, false, SeparatorKind::Comma, u"全て").size(), 3u);
}

TEST(OutputLines, SSL0OfAnEmptyDimensionGives0AndSMATOfAnEmptyMaterialGivesABlank) {
  CTakeoffRow row = ParseTakeoffLine(u"X-1,,,A", ObjectId{1});
  EXPECT_EQ(CodeValue(u"SSL0", row, {u""}, 0, kTables), u"0");
  EXPECT_EQ(CodeValue(u"smat", row, {u""}, 0, kTables), u" ");
  EXPECT_EQ(CodeValue(u"S481", row, {u""}, 0, kTables), u"");
  EXPECT_EQ(CodeValue(u"$S001", row, {u""}, 0, kTables), u" ");
  EXPECT_EQ(CodeValue(u"#S001", row, {u""}, 0, kTables), u"0");
  EXPECT_EQ(CodeValue(u"S001", row, {u""}, 0, kTables), u"X-1");
  EXPECT_EQ(CodeValue(u"UNKNOWN", row, {u""}, 0, kTables), u"");
}

TEST(OutputLines, QuantitiesAreWrittenWithOneDecimal) {
  for (auto [field, shown] : {std::pair{u"3", u"3.0"}, {u"", u"0.0"}, {u"12.25", u"12.2"}, {u"12.35", u"12.3"}, {u"2.5e1", u"25.0"}}) {
    CTakeoffRow row = ParseTakeoffLine(Text(u",,,,,,,,,,,,,,") + field, ObjectId{1});
    EXPECT_EQ(CodeValue(u"S304", row, {u""}, 0, kTables), shown) << ToUtf8(field);
  }
}

TEST(OutputLines, CodeColumnsLookUpTheirGroupsCrosswiseForSupplyAndNightWork) {
  CTakeoffRow row = ParseTakeoffLine(u",,給水,,,,,,,,,,,,,,,,C,給水用,新設,昼間,支給,なし", ObjectId{1});
  EXPECT_EQ(CodeValue(u"S501", row, {u"C"}, 0, kTables), u"21");
  EXPECT_EQ(CodeValue(u"SC01", row, {u"C"}, 0, kTables), u"1");
  EXPECT_EQ(CodeValue(u"SC04", row, {u"C"}, 0, kTables), u"1");   // field 23
  EXPECT_EQ(CodeValue(u"SC05", row, {u"C"}, 0, kTables), u"0");   // field 22
  EXPECT_EQ(CodeValue(u"&SC04", row, {u"C"}, 0, kTables), u"支給");
  EXPECT_EQ(CodeValue(u"SC06", row, {u"C"}, 0, kTables), u"0");
  CTakeoffRow unknown = ParseTakeoffLine(u",,不明,,,,,,,,,,,,,,,,C,名無し", ObjectId{1});
  EXPECT_EQ(CodeValue(u"SC01", unknown, {u"C"}, 0, kTables), u"0");
  EXPECT_EQ(CodeValue(u"S501", unknown, {u"C"}, 0, kTables), u" ");
  EXPECT_EQ(CodeValue(u"SNET", unknown, {u"C"}, 3, kTables), u"C");
}

TEST(OutputLines, InAnAggregateTwoLinesDifferingOnlyInTheCaseOfOneValueAreNotMerged) {
  Aggregate a;
  V codes{u"S001", u"SNAM", u"S304"};
  a.Add(codes, {u"x", u"Pipe", u"1.0"});
  a.Add(codes, {u"x", u"pipe", u"1.0"});
  a.Add(codes, {u"x", u"Pipe", u"2.5"});
  ASSERT_EQ(a.rows().size(), 2u);
  EXPECT_EQ(a.rows()[0][2], u"3.5");
  EXPECT_EQ(a.rows()[1][1], u"pipe");
}

TEST(OutputLines, TheQuantityColumnIsFoundCaseSensitivelyAndWithoutOneDuplicatesAreDropped) {
  Aggregate a;
  V codes{u"S001", u"s304"};
  a.Add(codes, {u"x", u"1.0"});
  a.Add(codes, {u"x", u"1.0"});
  a.Add(codes, {u"x", u"2.0"});
  ASSERT_EQ(a.rows().size(), 2u);
  EXPECT_EQ(a.rows()[0][1], u"1.0");
}

TEST(OutputLines, MergedRowsKeepTheOrderOfTheirFirstLine) {
  Aggregate a;
  V codes{u"S001", u"S304"};
  for (const char16_t* s : {u"b", u"a", u"b", u"c", u"a"}) a.Add(codes, {s, u"1"});
  ASSERT_EQ(a.rows().size(), 3u);
  EXPECT_EQ(a.rows()[0], (V{u"b", u"2.0"}));
  EXPECT_EQ(a.rows()[1], (V{u"a", u"2.0"}));
  EXPECT_EQ(a.rows()[2], (V{u"c", u"1"}));
}

TEST(OutputLines, AnAggregateFormatOfFewerThan16ColumnsIsAnError) {
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,,A,,,,,,,,,,,1", u"1"})}};
  Result<V> aggregate = TryBuild(kFormat, data, true);
  ASSERT_FALSE(aggregate);
  EXPECT_NE(aggregate.error().Describe().find("at least 16"), std::string::npos);
  EXPECT_TRUE(TryBuild(kFormat, data, false));
}

TEST(OutputLines, NoTakeoffDataGivesNothingNotEvenTheHeader) { EXPECT_TRUE(Build(kFormat, {}, false).empty()); }

TEST(OutputLines, UnitsFromLine3OrTheLargestOfAllLines) {
  EXPECT_EQ(UnitCount(RecordOf({u"h", u"h", u"A-1"})), 0);
  EXPECT_EQ(UnitCount(RecordOf({u"h", u"h", u"A-1", u"3"})), 3);
  EXPECT_EQ(UnitCount(RecordOf({u"h", u"9", u"A-1", u"2"})), 2);  // line 3 wins over a larger number elsewhere
  EXPECT_EQ(UnitCount(RecordOf({u"7", u"h", u"A-1", u"x", u"4"})), 7);
  EXPECT_EQ(UnitCount(RecordOf({u"h", u"h", u"A-1", u"-2"})), 0);
}

TEST(OutputLines, RecordsAreOutputFromTheLastToTheFirstAndTheSymbolComesFromLine2) {
  TakeoffData data{{RecordOf({u"h", u"h", u"A-1,,,A,,,,,,,,,,,1", u"1"}), RecordOf({u"h", u"h", u"B-1,,,A,,,,,,,,,,,2", u"1,,,A,,,,,,,,,,,3"})}};
  EXPECT_EQ(Build(kFormat, data, false, SeparatorKind::Tab), (V{u"HS001\tHS304\tHSNET\t", u"B-1\t2.0\t \t", u"B-1\t3.0\t \t", u"A-1\t1.0\t \t"}));
}
