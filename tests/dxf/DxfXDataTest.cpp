#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "dxf/DxfDrawing.hpp"
#include "dxf/XData.hpp"
#include "support/DxfText.hpp"
#include "support/Listing.hpp"

using namespace tq;
using namespace tq::test;

namespace {
std::unique_ptr<dxf::DxfDrawing> FromText(const std::string& text) {
  return std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(text).value(), "memory.dxf");
}
std::unique_ptr<dxf::DxfDrawing> Reopen(const dxf::DxfDrawing& drawing) { return FromText(drawing.document().Serialize()); }
}  // namespace

TEST(DxfXData, LongLineIsWrittenAsBracedStringsOfAtMost255BytesAndJoinedOnReading) {
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0)));
  Text longLine(600, u'x');
  ASSERT_EQ(drawing->WriteXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01", {u"short", longLine}), EditResult::Ok);
  std::string saved = drawing->document().Serialize();
  EXPECT_NE(saved.find("1000\nshort\n1002\n{\n1000\n" + std::string(255, 'x') + "\n1000\n" + std::string(255, 'x') +
                       "\n1000\n" + std::string(90, 'x') + "\n1002\n}\n"),
            std::string::npos);
  auto reopened = Reopen(*drawing);
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"A1"), u"TQ_STDINF01"), (XDataLines{u"short", longLine}));
}

TEST(DxfXData, SplittingNeverCutsACharacterOfTheCodePage) {
  dxf::DxfCodec codec("AC1018", "ANSI_932");
  Text line;
  for (int i = 0; i < 200; ++i) line += u"管";
  line = u"A" + line;  // one byte first, so a cut at 255 bytes would fall inside a character
  std::vector<std::string> pieces = dxf::SplitEncoded(line, codec);
  ASSERT_EQ(pieces.size(), 2u);
  Text joined;
  for (const std::string& piece : pieces) {
    EXPECT_LE(piece.size(), 255u);
    joined += codec.Decode(piece);
  }
  EXPECT_EQ(joined, line);
}

TEST(DxfXData, SplittingNeverCutsAnEscape) {
  dxf::DxfCodec codec("AC1015", "ANSI_1252");
  Text line = Text(250, u'a') + u"標準";
  std::vector<std::string> pieces = dxf::SplitEncoded(line, codec);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[0].size(), 250u);
  EXPECT_EQ(pieces[1], "\\U+6A19\\U+6E96");
}

TEST(DxfXData, LongerStringsWrittenByOthersAreReadWhole) {
  std::string big(400, 'y');
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0) + Tags{{1001, "TQ_STDINF01"}, {1000, big}}));
  EXPECT_EQ(*drawing->ReadXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01"), (XDataLines{FromUtf8(big)}));
}

TEST(DxfXData, AbsentAndPresentButEmptyAreDistinguishable) {
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0) + Tags{{1001, "TQ_STDINF01"}, {1070, "5"}}));
  ObjectId text = drawing->FindHandle(u"A1");
  ASSERT_TRUE(drawing->ReadXData(text, u"TQ_STDINF01"));
  EXPECT_TRUE(drawing->ReadXData(text, u"TQ_STDINF01")->empty());
  EXPECT_FALSE(drawing->ReadXData(text, u"TQ_STDINF02"));
  drawing->WriteXData(text, u"TQ_STDINF02", {});
  auto reopened = Reopen(*drawing);
  ASSERT_TRUE(reopened->ReadXData(reopened->FindHandle(u"A1"), u"TQ_STDINF02"));
}

TEST(DxfXData, ApplicationNamesWithoutRegardToCase) {
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0) + Tags{{1001, "TQ_STDINF01"}, {1000, "a"}}));
  EXPECT_EQ(*drawing->ReadXData(drawing->FindHandle(u"A1"), u"tq_stdinf01"), (XDataLines{u"a"}));
}

TEST(DxfXData, OneGroupPerApplicationPerEntity) {
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0)));
  ObjectId text = drawing->FindHandle(u"A1");
  drawing->WriteXData(text, u"TQ_STDINF01", {u"1"});
  drawing->WriteXData(text, u"TQ_STDINF02", {u"2"});
  drawing->WriteXData(text, u"TQ_STDINF01", {u"3", u"4"});
  std::string saved = drawing->document().Serialize();
  size_t first = saved.find("1001\nTQ_STDINF01");
  EXPECT_EQ(saved.find("1001\nTQ_STDINF01", first + 1), std::string::npos);
  auto reopened = Reopen(*drawing);
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"A1"), u"TQ_STDINF01"), (XDataLines{u"3", u"4"}));
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"A1"), u"TQ_STDINF02"), (XDataLines{u"2"}));
}

TEST(DxfXData, BraceLeftOpenIsReadToTheEndOfItsGroup) {
  auto drawing = FromText(R12Drawing(TextTags("A1", "1", 0, 0) +
                                     Tags{{1001, "TQ_STDINF01"}, {1000, "a"}, {1002, "{"}, {1000, "b"}, {1000, "c"},
                                          {1001, "TQ_STDINF02"}, {1000, "d"}}));
  ObjectId text = drawing->FindHandle(u"A1");
  EXPECT_EQ(*drawing->ReadXData(text, u"TQ_STDINF01"), (XDataLines{u"a", u"bc"}));
  EXPECT_EQ(*drawing->ReadXData(text, u"TQ_STDINF02"), (XDataLines{u"d"}));
}

TEST(DxfXData, RecordOverThePerObjectLimitIsRefusedAndNothingChanges) {
  std::string original = R12Drawing(TextTags("A1", "1", 0, 0));
  auto drawing = FromText(original);
  XDataLines lines(60, Text(200, u'z'));
  EXPECT_EQ(drawing->WriteXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01", lines), EditResult::TooLarge);
  EXPECT_FALSE(drawing->ReadXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01"));
  EXPECT_EQ(drawing->document().Serialize(), original);
}

TEST(DxfXData, SaveThatWouldPassTheLimitFailsNamingTheEntity) {
  // A drawing that already carries more than the limit (written by another program).
  Tags tags = TextTags("B7", "1", 0, 0) + Tags{{1001, "OTHER"}};
  for (int i = 0; i < 40; ++i) tags.push_back({1000, std::string(250, 'q')});
  auto drawing = FromText(R12Drawing(tags));
  drawing->SetColourIndex(drawing->FindHandle(u"B7"), 2);
  Status saved = drawing->document().Save("/tmp/never-written.dxf");
  ASSERT_FALSE(saved) << "the save went through";
  EXPECT_NE(saved.error().Describe().find("B7"), std::string::npos) << saved.error().Describe();
  EXPECT_NE(saved.error().Describe().find("16 KB"), std::string::npos) << saved.error().Describe();
  EXPECT_FALSE(std::filesystem::exists("/tmp/never-written.dxf"));
}

namespace {
// A record whose group holds, between and after its lines, what no line is made of.
Tags RecordWithOtherItems() {
  return TextTags("A1", "1", 0, 0) + Tags{{1001, "TQ_STDINF01"}, {1000, "head 1"}, {1010, "1.5"}, {1020, "2.5"},
                                          {1030, "0.0"}, {1000, "head 2"}, {1040, "3.25"}, {1070, "7"},
                                          {1005, "1F"}, {1002, "{"}, {1000, "in a list"}, {1070, "1"},
                                          {1002, "{"}, {1000, "nested"}, {1002, "}"}, {1002, "}"},
                                          {1000, "row 1"}, {1071, "65536"}};
}
}  // namespace

TEST(DxfXData, PointsRealsIntegersHandlesAndListsAreNoLines) {
  auto drawing = FromText(R12Drawing(RecordWithOtherItems()));
  EXPECT_EQ(*drawing->ReadXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01"), (XDataLines{u"head 1", u"head 2", u"row 1"}));
}

TEST(DxfXData, RewritingTheLinesKeepsEveryOtherItemWhereItStood) {
  auto drawing = FromText(R12Drawing(RecordWithOtherItems()));
  ASSERT_EQ(drawing->WriteXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01", {u"new 1", u"new 2", u"row 1 changed"}),
            EditResult::Ok);
  std::string saved = drawing->document().Serialize();
  Tags expected{{1001, "TQ_STDINF01"}, {1000, "new 1"}, {1010, "1.5"}, {1020, "2.5"}, {1030, "0.0"}, {1000, "new 2"},
                {1040, "3.25"}, {1070, "7"}, {1005, "1F"}, {1002, "{"}, {1000, "in a list"}, {1070, "1"}, {1002, "{"},
                {1000, "nested"}, {1002, "}"}, {1002, "}"}, {1000, "row 1 changed"}, {1071, "65536"}};
  EXPECT_NE(saved.find(DxfTags(expected)), std::string::npos) << saved;
}

TEST(DxfXData, MoreLinesFollowTheLastLineAndFewerDropOnlyLines) {
  auto drawing = FromText(R12Drawing(RecordWithOtherItems()));
  ObjectId text = drawing->FindHandle(u"A1");
  ASSERT_EQ(drawing->WriteXData(text, u"TQ_STDINF01", {u"a", u"b", u"c", u"d"}), EditResult::Ok);
  EXPECT_NE(drawing->document().Serialize().find(DxfTags({{1000, "c"}, {1000, "d"}, {1071, "65536"}})), std::string::npos);
  ASSERT_EQ(drawing->WriteXData(text, u"TQ_STDINF01", {u"only"}), EditResult::Ok);
  auto reopened = Reopen(*drawing);
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"A1"), u"TQ_STDINF01"), (XDataLines{u"only"}));
  std::string saved = reopened->document().Serialize();
  EXPECT_NE(saved.find(DxfTags({{1001, "TQ_STDINF01"}, {1000, "only"}, {1010, "1.5"}})), std::string::npos) << saved;
  EXPECT_NE(saved.find(DxfTags({{1002, "}"}, {1071, "65536"}})), std::string::npos) << saved;
}

TEST(DxfXData, WritingTheSameLinesBackLeavesTheEntityAsItWas) {
  auto drawing = FromText(R12Drawing(RecordWithOtherItems()));
  ObjectId text = drawing->FindHandle(u"A1");
  ASSERT_EQ(drawing->WriteXData(text, u"TQ_STDINF01", *drawing->ReadXData(text, u"TQ_STDINF01")), EditResult::Ok);
  // The entity's bytes as they were; only the application's registration is added.
  std::string saved = drawing->document().Serialize();
  EXPECT_NE(saved.find(DxfTags(RecordWithOtherItems() + Tags{{0, "ENDSEC"}})), std::string::npos) << saved;
}
