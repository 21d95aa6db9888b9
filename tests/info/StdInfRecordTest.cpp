#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "info/StdInfRecord.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::vector<Text> kKeys{u"保温あり", u"保温なし", u"給水"};

Tags Records(std::initializer_list<std::pair<std::string, std::vector<std::string>>> records) {
  Tags tags;
  for (const auto& [app, lines] : records) {
    tags.push_back({1001, app});
    for (const std::string& line : lines) tags.push_back({1000, EncodeCodePage(FromUtf8(line), "CP932")});
  }
  return tags;
}

XDataLines Lines(std::initializer_list<const char16_t*> lines) { return XDataLines(lines.begin(), lines.end()); }

}  // namespace

TEST(InfoRecord, Records01And02And04OnlyTwoAreReadAnd04StaysUntouched) {
  Scene s(TextTags("B1", "M-1", 100, 100) + Records({{"TQ_STDINF01", {"a", "b", "c"}}, {"TQ_STDINF02", {"d", "e", "f"}},
                                                     {"TQ_STDINF04", {"x", "y", "z"}}}));
  ObjectId text = s.Id(u"B1");
  StdInfRecords records = ReadInfoRecords(*s.drawing, text, kKeys);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[1][0].member(RowMember::kSymbolOrUnits), u"d");
  EXPECT_EQ(CountInfoRecords(*s.drawing, text), 2);
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, text, records, 2));
  EXPECT_EQ(*s.drawing->ReadXData(text, u"TQ_STDINF04"), Lines({u"x", u"y", u"z"}));
}

TEST(InfoRecord, LineOfTwoFieldsGivesMembers1And2AndAllElseEmpty) {
  CStdInfRow row = ParseInfoLine(u"AC-1,空調機", 2, kKeys);
  EXPECT_EQ(row.member(RowMember::kSymbolOrUnits), u"AC-1");
  EXPECT_EQ(row.member(RowMember::kEquipmentName), u"空調機");
  for (int m = 3; m <= 25; ++m) EXPECT_TRUE(row.member(MemberAt(static_cast<size_t>(m) - 1)).empty()) << m;
}

TEST(InfoRecord, SeventeenFieldLineWithAnUnknownKeyGivesMember20DashFromLineIndex2Only) {
  Text line = u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,未登録";
  for (size_t index : {0u, 1u}) EXPECT_EQ(ParseInfoLine(line, index, kKeys).member(RowMember::kAttributeValue), u"") << index;
  for (size_t index : {2u, 3u, 9u}) EXPECT_EQ(ParseInfoLine(line, index, kKeys).member(RowMember::kAttributeValue), u"-") << index;
  EXPECT_EQ(ParseInfoLine(line, 2, kKeys).member(RowMember::kAttributeKey), u"未登録");
}

TEST(InfoRecord, KnownKeyFillsMember20WithTheTableEntryUnlessPosition21Follows) {
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,保温アリ,備考", 0, std::vector<Text>{u"保温アリ"}).member(RowMember::kAttributeValue), u"保温アリ");
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,GIVEN,x", 5, std::vector<Text>{u"given"}).member(RowMember::kAttributeValue), u"given");
  // The first entry that matches wins.
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,given", 0, std::vector<Text>{u"Given", u"GIVEN"}).member(RowMember::kAttributeValue),
            u"Given");
  // With 21 fields position 21 overwrites member 20, even when empty.
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,未登録,18,19,20,21", 4, kKeys).member(RowMember::kAttributeValue), u"21");
  // A trailing comma gives no field: 20 fields, so the rule's "-" stands.
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,未登録,18,19,20,", 4, kKeys).member(RowMember::kAttributeValue), u"-");
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,未登録,18,19,20,,22", 4, kKeys).member(RowMember::kAttributeValue), u"");
  // Fewer than 17 fields never reach the rule.
  EXPECT_EQ(ParseInfoLine(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16", 4, kKeys).member(RowMember::kAttributeValue), u"");
}

TEST(InfoRecord, Member25IsStoredAtPosition17AndMembers17To24Follow) {
  CStdInfRow row;
  for (int m = 1; m <= 25; ++m) row.member(MemberAt(static_cast<size_t>(m) - 1)) = Text(u"m") + FromUtf8(std::to_string(m));
  EXPECT_EQ(FormatInfoLine(row), u"m1,m2,m3,m4,m5,m6,m7,m8,m9,m10,m11,m12,m13,m14,m15,m16,m25,m17,m18,m19,m20,m21,m22,m23,m24");
  CStdInfRow back = ParseInfoLine(FormatInfoLine(row), 2, kKeys);
  EXPECT_EQ(back.members, row.members);
}

TEST(InfoRecord, FieldsPastThe25thAreNoMembersAndAreWrittenBackAsTheyWere) {
  Text line;
  for (int i = 1; i <= 30; ++i) line += FromUtf8(std::to_string(i)) + u",";
  CStdInfRow row = ParseInfoLine(line, 2, kKeys);
  EXPECT_EQ(row.member(RowMember::kBMaterialKey), u"25");
  EXPECT_EQ(row.member(RowMember::kSymbolOrUnits), u"1");
  EXPECT_EQ(FormatInfoLine(row), line);
  row.member(RowMember::kSymbolOrUnits) = u"changed";
  EXPECT_EQ(FormatInfoLine(row), u"changed" + line.substr(1));
}

TEST(InfoRecord, RegistrationKeepsFieldsPastThe25thAndItemsThatAreNoLines) {
  std::string past = "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,ours 26,ours 27";
  Scene s(TextTags("B1", "M-1", 100, 100) + Tags{{1001, "TQ_STDINF01"}, {1000, "a"}, {1000, "b"}, {1000, past},
                                                 {1040, "2.5"}, {1070, "3"}, {1005, "1F"}});
  ObjectId text = s.Id(u"B1");
  StdInfRecords records = ReadInfoRecords(*s.drawing, text, kKeys);
  records[0][2].member(RowMember::kSymbolOrUnits) = u"X";
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, text, records, 1));
  std::string saved = s.drawing->document().Serialize();
  EXPECT_NE(saved.find(DxfTags({{1000, "X" + past.substr(1)}, {1040, "2.5"}, {1070, "3"}, {1005, "1F"}})), std::string::npos)
      << saved;
}

TEST(InfoRecord, ACommaTypedInAFieldSplitsItAndShiftsEveryLaterField) {
  CStdInfRow row;
  row.member(RowMember::kSymbolOrUnits) = u"AC-1";
  row.member(RowMember::kEquipmentName) = u"空調機,予備";
  row.member(RowMember::kWorkItem) = u"冷温水";
  CStdInfRow back = ParseInfoLine(FormatInfoLine(row), 2, kKeys);
  EXPECT_EQ(back.member(RowMember::kEquipmentName), u"空調機");
  EXPECT_EQ(back.member(RowMember::kWorkItem), u"予備");
  EXPECT_EQ(back.member(RowMember::kABFlag), u"冷温水");
}

TEST(InfoRecord, Record2EmptiedAtWritingKeepsItsOldLinesAndRecord3IsStillWrittenUnder03) {
  Scene s(TextTags("B1", "M-1", 100, 100) +
          Records({{"TQ_STDINF01", {"a", "b", "c"}}, {"TQ_STDINF02", {"d", "e", "f"}}, {"TQ_STDINF03", {"g", "h", "i"}}}));
  ObjectId text = s.Id(u"B1");
  StdInfRecords records = ReadInfoRecords(*s.drawing, text, kKeys);
  records[1].clear();
  records[2][0].member(RowMember::kSymbolOrUnits) = u"G";
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, text, records, 3));
  EXPECT_EQ(*s.drawing->ReadXData(text, u"TQ_STDINF02"), Lines({u"d", u"e", u"f"}));
  EXPECT_EQ(s.drawing->ReadXData(text, u"TQ_STDINF03")->front(), u"G,,,,,,,,,,,,,,,,,,,,,,,,");
}

TEST(InfoRecord, SurplusCleanUpNeverRemovesTheNameNumberedAsTheCountAtOpening) {
  Scene s(TextTags("B1", "M-1", 100, 100) + Records({{"TQ_STDINF01", {"a"}}, {"TQ_STDINF02", {"b"}}, {"TQ_STDINF03", {"c"}},
                                                     {"TQ_STDINF04", {"d"}}, {"TQ_STDINF05", {"e"}}}));
  ObjectId text = s.Id(u"B1");
  StdInfRecords records = ReadInfoRecords(*s.drawing, text, kKeys);
  records.resize(2);
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, text, records, 5));
  EXPECT_FALSE(s.drawing->ReadXData(text, u"TQ_STDINF03"));
  EXPECT_FALSE(s.drawing->ReadXData(text, u"TQ_STDINF04"));
  EXPECT_TRUE(s.drawing->ReadXData(text, u"TQ_STDINF05"));
}

TEST(InfoRecord, NamesHaveThreeDigitsFrom100AndReadingGoesOnPast99) {
  EXPECT_EQ(InfoRecordName(1), u"TQ_STDINF01");
  EXPECT_EQ(InfoRecordName(99), u"TQ_STDINF99");
  EXPECT_EQ(InfoRecordName(100), u"TQ_STDINF100");
  Scene s(TextTags("B1", "M-1", 100, 100));
  StdInfRecords records(101, CStdInfRecord(1));
  for (size_t i = 0; i < records.size(); ++i) records[i][0].member(RowMember::kSymbolOrUnits) = FromUtf8(std::to_string(i + 1));
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, s.Id(u"B1"), records, 0));
  StdInfRecords back = ReadInfoRecords(*s.drawing, s.Id(u"B1"), kKeys);
  ASSERT_EQ(back.size(), 101u);
  EXPECT_EQ(back[100][0].member(RowMember::kSymbolOrUnits), u"101");
}

TEST(InfoRecord, RecordOverThePerObjectLimitIsRefusedNamingTheSheetBeforeAnythingIsWritten) {
  Scene s(TextTags("B1", EncodeCodePage(u"Ｍ－１０１", "CP932"), 100, 100) + Records({{"TQ_STDINF01", {"old"}}}));
  ObjectId text = s.Id(u"B1");
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, text, ReadInfoRecords(*s.drawing, text, kKeys), 1));  // registered, as in a real drawing
  std::string before = s.drawing->document().Serialize();
  StdInfRecords records(2);
  records[0].resize(3);
  records[0][0].member(RowMember::kSymbolOrUnits) = u"new";
  CStdInfRow big;
  big.member(RowMember::kEquipmentName) = Text(200, u'x');
  records[1].assign(60, big);
  Status written = WriteInfoRecords(*s.drawing, text, records, 1);
  ASSERT_FALSE(written) << "the records were written";
  EXPECT_EQ(written.error().code, ErrorCode::TooLarge);
  EXPECT_NE(written.error().Describe().find("M-101"), std::string::npos) << written.error().Describe();
  EXPECT_EQ(*s.drawing->ReadXData(text, u"TQ_STDINF01"), Lines({u"old,,,,,,,,,,,,,,,,,,,,,,,,"}));
  EXPECT_FALSE(s.drawing->ReadXData(text, u"TQ_STDINF02"));
  EXPECT_EQ(s.drawing->document().Serialize(), before);
}

TEST(InfoRecord, ALineLongerThanOneStringIsSplitAndJoinedAgainOnReading) {
  Scene s(TextTags("B1", "M-1", 100, 100));
  StdInfRecords records(1, CStdInfRecord(3));
  for (int m = 1; m <= 25; ++m) records[0][2].member(MemberAt(static_cast<size_t>(m) - 1)) = Text(12, u'配');  // 25 × 24 bytes in CP932
  ASSERT_TRUE(WriteInfoRecords(*s.drawing, s.Id(u"B1"), records, 0));
  std::string saved = s.drawing->document().Serialize();
  EXPECT_NE(saved.find("1002\n{\n"), std::string::npos);
  auto reopened = std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(saved).value(), "r.dxf");
  StdInfRecords back = ReadInfoRecords(*reopened, reopened->FindHandle(u"B1"), kKeys);
  EXPECT_EQ(back[0][2].members, records[0][2].members);
}

TEST(InfoRecord, RecordsOfTheExampleDrawingWrittenByEzdxf) {
  auto drawing = dxf::DxfDrawing::Open(test::U8Path(std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf")).value();
  ObjectId m101 = drawing->FindHandle(u"42");
  StdInfRecords records = ReadInfoRecords(*drawing, m101, kKeys);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0][2].member(RowMember::kSymbolOrUnits), u"AC-1");
  EXPECT_EQ(records[0][2].member(RowMember::kAttributeKey), u"保温あり");
  EXPECT_EQ(records[1][2].member(RowMember::kMemberName), u"一般配管用ステンレス鋼鋼管");
  ObjectId d301 = drawing->FindHandle(u"F5");
  StdInfRecords older = ReadInfoRecords(*drawing, d301, std::vector<Text>{u"S040", u"保温なし"});
  EXPECT_EQ(older[0][2].member(RowMember::kAttributeValue), u"S040");  // 17 fields: the key found
  EXPECT_EQ(older[0][3].member(RowMember::kAttributeValue), u"保温なし");
  EXPECT_EQ(older[0][4].member(RowMember::kAttributeValue), u"");      // 7 fields: the rule is not reached
}
