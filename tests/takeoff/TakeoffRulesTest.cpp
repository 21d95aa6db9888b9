#include <gtest/gtest.h>

#include "support/DrawingFixture.hpp"
#include "support/TakeoffFixture.hpp"
#include "takeoff/CodeExpansion.hpp"
#include "takeoff/TakeoffList.hpp"

using namespace tq;
using namespace tq::test;

namespace {
CTakeoffRow Row(const char16_t* line) { return ParseTakeoffLine(line, ObjectId{1}); }
}  // namespace

TEST(TakeoffRows, ARecordOfExactlyTwoLinesShowsNoItem) {
  ReferenceTables t = SampleTables();
  TakeoffData data{{RecordOf({u"h1", u"h2"})}, {RecordOf({u"h1", u"h2", u"P-1,ポンプ,給水,A"})}};
  std::vector<TakeoffItem> items = FillTakeoffList(data, TakeoffRules(t));
  ASSERT_EQ(items.size(), 1u);
  EXPECT_EQ(items[0][0], u"P-1");
}

TEST(TakeoffRows, FieldsInLineOrderWithoutReordering) {
  CTakeoffRow row = Row(u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26");
  EXPECT_EQ(row.field(LinePosition::kAttributeKey), u"17");
  EXPECT_EQ(row.field(LinePosition::kBMaterialKey), u"25");
}

TEST(TakeoffRows, TwoMemberNameLinesWithTheSameMemberTheLaterCodeIsUsed) {
  ReferenceTables t = SampleTables();
  t.memberCinet = Columns(u"鋼管,FIRST\n鋼管,SECOND\n他,X", 2);
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,A,,鋼管")), u"SECOND");
  t.memberCinet = Columns(u"鋼管,FIRST\n鋼管,", 2);
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,A,,鋼管")), u"");  // an empty column 1 gives an empty code
}

TEST(TakeoffRows, TwoSettingsLinesWithTheSameKeyTheEarlierOneIsUsed) {
  ReferenceTables t = SampleTables();
  t.bSettings = Columns(u"吊りボルト,,,,,FIRST0000000000\n吊りボルト,,,,,SECOND000000000", 12);
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,,,吊りボルト")), u"FIRST0000000000");
}

TEST(TakeoffRows, AnAMaterialRowWhoseMemberIsInNoTableGetsTheUnknownCodeInItsColumnAndField19) {
  ReferenceTables t = SampleTables();
  TakeoffData data{{RecordOf({u"h", u"h", u"X-1,,給水,a,,未登録の部材,15,A"})}};
  std::vector<TakeoffItem> items = FillTakeoffList(data, TakeoffRules(t));
  EXPECT_EQ(items[0][17], u"Z9999999999999");
  EXPECT_EQ(data[0][0][2].field(LinePosition::kCinetCode), u"Z9999999999999");
}

TEST(TakeoffRows, BMaterialCodeByField25BeforeTheMember) {
  ReferenceTables t = SampleTables();
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,,,保温材,,,,,,,,,,,,,,,,,,,吊りボルト")), u"32010101000000");
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,,,保温材")), u"Z9999999999999");
}

TEST(TakeoffRows, TheTokenSSL0Gives300WhenDimension1Holds300Point5And0WhenItHoldsNoNumber) {
  ReferenceTables t = SampleTables();
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,,,形鋼振れ止め,300.5,,200")), u"32010201000000&300x200");
  EXPECT_EQ(TakeoffRules(t).CinetCode(Row(u",,,,,形鋼振れ止め,abc,,")), u"32010201000000&0x0");
}

TEST(TakeoffRows, ACodeOf15Or16CharactersWhose15thIsAmpersandComesBackAsItsFirst15) {
  ExpansionVariant v = RowVariant(Row(u",,,,,,100"));
  EXPECT_EQ(ExpandCode(u"32010201000000&", v), u"32010201000000&");
  EXPECT_EQ(ExpandCode(u"32010201000000&(", v), u"32010201000000&");
  EXPECT_EQ(ExpandCode(u"3201020100000", v), u"3201020100000");
  EXPECT_EQ(ExpandCode(u"32010201000000X,SSL0", v), u"32010201000000X,SSL0");
}

TEST(TakeoffRows, AnyCharacterMayStandSixteenth) {
  ExpansionVariant v = RowVariant(Row(u",,,,,,100"));
  EXPECT_EQ(ExpandCode(u"32010201000000&(SSL0", v), u"32010201000000&100");
  EXPECT_EQ(ExpandCode(u"32010201000000&漢SSL0", v), u"32010201000000&100");
}

TEST(TakeoffRows, RowExpansionRepeatsTheDimensionBeforeLaterLiteralsAndMarksNestedCodes) {
  ExpansionVariant v = RowVariant(Row(u",,,,,,50,,20,,10"));
  EXPECT_EQ(ExpandCode(u"11111111111111&,SSL0,\"A\",\"B\",\"\",\"C\"", v), u"11111111111111&50A50B50C");
  EXPECT_EQ(ExpandCode(u"11111111111111&,ssw0,\"x\",SSH0", v), u"11111111111111&20x10");
  EXPECT_EQ(ExpandCode(u"11111111111111&,SSL0,\"A\",SXYZ,\"B\",\"C\"", v), u"11111111111111&50ASXYZBC");
  EXPECT_EQ(ExpandCode(u"11111111111111&,SSL0,22222222222222&,\"q,r\",X", v), u"11111111111111&50 22222222222222&q,rX");
  EXPECT_EQ(ExpandCode(u"11111111111111&,SSL0,,\"A\",", v), u"11111111111111&50A");
}

TEST(TakeoffRows, TheDialogsExpansionDiffersInItsThreeDeliberatePoints) {
  ExpansionVariant v = DialogVariant(u"300.5", u"20", u"");
  EXPECT_EQ(ExpandCode(u"11111111111111&,SSL0,\"A\",\"B\"", v), u"11111111111111&300.5AB");
  EXPECT_EQ(ExpandCode(u"11111111111111&,22222222222222&", v), u"11111111111111&22222222222222&");
  EXPECT_EQ(ExpandCode(u"11111111111111&,222222222222222&", v), u"11111111111111& 222222222222222&");
}

TEST(TakeoffRows, AStoredUseCodeDashIsShownAsDashAnEmptyOneOnBMaterialMayBecomeDash) {
  ReferenceTables t = SampleTables();
  TakeoffData data{{RecordOf({u"h", u"h", u",,給水,A,,配管用炭素鋼鋼管,,,,,,,,,,,,,,-",
                              u",,排水,,,未登録", u",,冷温水,,,保温材", u",,給水,,,吊りボルト"})}};
  std::vector<TakeoffItem> items = FillTakeoffList(data, TakeoffRules(t));
  EXPECT_EQ(items[0][18], u"-");        // stored
  EXPECT_EQ(items[1][18], u"-");        // B material, no settings, no use assignment
  EXPECT_EQ(items[2][18], u"冷温水用");  // from the use assignment of the work item
  EXPECT_EQ(items[3][18], u"給水用");    // settings column 6 "1" through group SC01

  // A "-" from the settings is not kept: the use assignment of the work item decides.
  t.bSettings = Columns(u"保温筒,,,,,,7", 12);
  t.attributeGroups[u"SC01"] = Columns(u"SC01,7,-", 3);
  TakeoffData dash{{RecordOf({u"h", u"h", u",,冷温水,,,保温筒"})}};
  EXPECT_EQ(FillTakeoffList(dash, TakeoffRules(t))[0][TakeoffColumn::kUseCode], u"冷温水用");
}

TEST(TakeoffRows, DefaultsOfMaterialSpecificationAndClasses) {
  ReferenceTables t = SampleTables();
  TakeoffData data{{RecordOf({u"h", u"h", u",,給水,,,吊りボルト", u",,給水,A,,配管用炭素鋼鋼管", u",,給水,,,吊りボルト,,,,,,,SUS,M12,,,,,,,新設"})}};
  std::vector<TakeoffItem> items = FillTakeoffList(data, TakeoffRules(t));
  EXPECT_EQ(items[0][12], u"SS400");
  EXPECT_EQ(items[0][13], u"M10");
  EXPECT_EQ(items[0][19], u"新設");    // SC03 of settings column 7 "0"
  EXPECT_EQ(items[0][20], u"支給");    // SC04 of settings column 9 "1"
  EXPECT_EQ(items[1][12], u"");        // A material shows nothing
  EXPECT_EQ(items[1][20], u"自社手配");  // A material: key "0"
  EXPECT_EQ(items[2][12], u"SUS");      // a stored value is shown as stored
  EXPECT_EQ(items[2][19], u"新設");

  // Each class column reads its own settings column through its own group: with a key of its
  // own in each, a column read from another place shows nothing.
  t.bSettings = Columns(u"吊りボルト,全ねじ,SS400,M10,本,32010101000000,1,3,,4,5,6", 12);
  t.attributeGroups[u"SC03"] = Columns(u"SC03,3,改修", 3);
  t.attributeGroups[u"SC04"] = Columns(u"SC04,4,支給", 3);
  t.attributeGroups[u"SC05"] = Columns(u"SC05,5,夜間", 3);
  t.attributeGroups[u"SC06"] = Columns(u"SC06,6,あり", 3);
  TakeoffData own{{RecordOf({u"h", u"h", u",,給水,,,吊りボルト"})}};
  items = FillTakeoffList(own, TakeoffRules(t));
  EXPECT_EQ(items[0][TakeoffColumn::kConstructionCode], u"改修");
  EXPECT_EQ(items[0][TakeoffColumn::kSupplyClass], u"支給");
  EXPECT_EQ(items[0][TakeoffColumn::kNightWorkClass], u"夜間");
  EXPECT_EQ(items[0][TakeoffColumn::kLiningClass], u"あり");
}

TEST(TakeoffRows, CopyBackPairsItemsWithTheRecordsWalkedBackwardsAsTheSuiteDoes) {
  ReferenceTables t = SampleTables();
  TakeoffData data{{RecordOf({u"r1", u"r1", u"A-1,first"}), RecordOf({u"r2", u"r2", u"B-1,second", u"2,third"})}};
  std::vector<TakeoffItem> items = FillTakeoffList(data, TakeoffRules(t));
  ASSERT_EQ(items.size(), 3u);
  CopyBack(data, items);
  // The second record receives the first two items, the first record the third.
  EXPECT_EQ(data[0][1][2].field(LinePosition::kEquipmentName), u"first");
  EXPECT_EQ(data[0][1][3].field(LinePosition::kEquipmentName), u"second");
  EXPECT_EQ(data[0][0][2].field(LinePosition::kEquipmentName), u"third");
}

TEST(TakeoffRows, WithOneRecordPerEntityRegisterWritesEveryLineUnder01WithTheShownTexts) {
  Scene s(TextTags("B1", "M-1", 100, 100) +
          Tags{{1001, "TQ_STDINF01"}, {1000, "h1"}, {1000, "h2"}, {1000, EncodeCodePage(u",,給水,,,吊りボルト", "CP932")}});
  ReferenceTables t = SampleTables();
  TakeoffData data = CollectTakeoffRows(*s.drawing, {s.Id(u"B1")});
  CopyBack(data, FillTakeoffList(data, TakeoffRules(t)));
  ASSERT_TRUE(RegisterTakeoff(*s.drawing, data));
  XDataLines lines = *s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01");
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], u"h1,,,,,,,,,,,,,,,,,,,,,,,,");
  EXPECT_EQ(lines[2], u",,給水,,,吊りボルト,,,,,,,SS400,M10,,,,,32010101000000,給水用,新設,昼間,支給,なし,");
}

TEST(TakeoffRows, WithTwoRecordsPerEntityTheRecordsSwapTheirNumbersOnRegister) {
  Scene s(TextTags("B1", "M-1", 100, 100) + Tags{{1001, "TQ_STDINF01"}, {1000, "one"}, {1000, "1"}, {1001, "TQ_STDINF02"},
                                                 {1000, "two"}, {1000, "2"}});
  ReferenceTables t = SampleTables();
  TakeoffData data = CollectTakeoffRows(*s.drawing, {s.Id(u"B1")});
  ASSERT_TRUE(RegisterTakeoff(*s.drawing, data));
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF01")->front(), u"two,,,,,,,,,,,,,,,,,,,,,,,,");
  EXPECT_EQ(s.drawing->ReadXData(s.Id(u"B1"), u"TQ_STDINF02")->front(), u"one,,,,,,,,,,,,,,,,,,,,,,,,");
}
