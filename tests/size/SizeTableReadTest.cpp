// Locating the size table drawn in a frame and reading its rows back.
#include <gtest/gtest.h>

#include "size/SizeTable.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const FramePolygon kFrame = MakeFramePolygon(FrameGrid{}, 0, 0);
const std::vector<double> kColumnXs{2000, 4200, 5400, 6600, 7800, 9000};

// Column lines A0..A5 from the top line down to `bottom`, row lines E0.. every 500 from 7000,
// the base point on layer "4" at the top line's start.
Tags TableTags(int rowLines, double bottom) {
  Tags tags = PointTags("F1", 2000, 7000, "4");
  for (size_t k = 0; k < kColumnXs.size(); ++k)
    tags = tags + LineTags("A" + std::to_string(k), kColumnXs[k], 7000, kColumnXs[k], bottom);
  for (int r = 0; r < rowLines; ++r) tags = tags + LineTags("E" + std::to_string(r), 2000, 7000 - 500.0 * r, 9000, 7000 - 500.0 * r);
  return tags;
}

Tags TwoRowTable() {
  return TableTags(3, 6000) + TextTags("D1", "FCU-1", 2100, 6600) + TextTags("D2", "20", 4300, 6600) +
         TextTags("D3", "15", 5500, 6600) + TextTags("D4", "10", 6700, 6600) + TextTags("D5", "4", 7900, 6600) +
         TextTags("D6", "AC", 2100, 6100) + TextTags("D7", "25", 4300, 6100) + TextTags("D8", "2", 7900, 6100);
}

// A symbol, three sizes and the count, each right of the next line.
SizeImportResult FiveColumns() {
  SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}};
  import.sizeCount = 3;
  return import;
}

std::vector<SizeRowValues> Read(Scene& s, const SizeImportResult& import, double rowSpacing = 500) {
  Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, rowSpacing);
  EXPECT_TRUE(table.ok()) << table.error().Describe();
  if (!table) return {};
  return ReadSizeTableRows(*s.context, *table, import);
}

Text LocateError(const Tags& tags) {
  Scene s(tags);
  Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, 500);
  return table ? Text(u"(located)") : table.error().message;
}

}  // namespace

TEST(SizeTableRead, LocatesTheTableItsLinesAndExtent) {
  Scene s(TwoRowTable());
  Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, 800);
  ASSERT_TRUE(table.ok());
  EXPECT_EQ(table->basePoint, (Point3{2000, 7000, 0}));
  EXPECT_EQ(table->topLine, s.Id(u"E0"));
  EXPECT_EQ(table->columnLines, (std::vector<ObjectId>{s.Id(u"A0"), s.Id(u"A1"), s.Id(u"A2"), s.Id(u"A3"), s.Id(u"A4"), s.Id(u"A5")}));
  EXPECT_EQ(table->rowLines, (std::vector<ObjectId>{s.Id(u"E0"), s.Id(u"E1"), s.Id(u"E2")}));
  EXPECT_EQ(table->left, 2000);
  EXPECT_EQ(table->right, 9000);
  EXPECT_EQ(table->top, 7000);
  EXPECT_EQ(table->rowPitch, 500);
}

TEST(SizeTableRead, ReadsTheTextsOfEveryCellIntoItsColumn) {
  Scene s(TwoRowTable());
  std::vector<SizeRowValues> rows = Read(s, FiveColumns());
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].sizes, (std::vector<Text>{u"20", u"15", u"10"}));
  EXPECT_EQ(rows[0].count, u"4");
  EXPECT_EQ(rows[1].sizes, (std::vector<Text>{u"25", u"", u""}));
  EXPECT_EQ(rows[1].count, u"2");
  EXPECT_TRUE(s.editor.printed.empty());
}

TEST(SizeTableRead, SplitsTheFirstColumnAtTheDashIntoSymbolAndNumber) {
  Scene s(TwoRowTable());
  std::vector<SizeRowValues> rows = Read(s, FiveColumns());
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].symbol, u"FCU");
  EXPECT_EQ(rows[0].number, u"1");
  EXPECT_EQ(rows[1].symbol, u"AC");  // no dash: all of it is the symbol
  EXPECT_EQ(rows[1].number, u"");
}

TEST(SizeTableRead, ReadsAtMostSixRows) {
  Tags tags = TableTags(9, 3000);
  for (int r = 0; r < 8; ++r) tags = tags + TextTags("D" + std::to_string(r), "S-" + std::to_string(r + 1), 2100, 6600 - 500.0 * r);
  Scene s(tags);
  std::vector<SizeRowValues> rows = Read(s, FiveColumns());
  ASSERT_EQ(rows.size(), 6u);
  EXPECT_EQ(rows[5].number, u"6");
}

TEST(SizeTableRead, ATextWithin5OfACellLineIsNotRead) {
  Scene inside(TableTags(2, 6500) + TextTags("D1", "20", 4200 + 5.0, 6600));
  EXPECT_EQ(Read(inside, FiveColumns()).at(0).sizes[0], u"20");
  Scene nearLeft(TableTags(2, 6500) + TextTags("D1", "20", 4200 + 4.9, 6600));
  EXPECT_EQ(Read(nearLeft, FiveColumns()).at(0).sizes[0], u"");
  Scene nearRight(TableTags(2, 6500) + TextTags("D1", "20", 5400 - 4.9, 6600));
  EXPECT_EQ(Read(nearRight, FiveColumns()).at(0).sizes[0], u"");
  Scene nearTop(TableTags(2, 6500) + TextTags("D1", "20", 4300, 7000 - 4.9));
  EXPECT_EQ(Read(nearTop, FiveColumns()).at(0).sizes[0], u"");
  Scene nearBottom(TableTags(2, 6500) + TextTags("D1", "20", 4300, 6500 + 4.9));
  EXPECT_EQ(Read(nearBottom, FiveColumns()).at(0).sizes[0], u"");
}

TEST(SizeTableRead, RowPitchIsTheDistanceOfTheFirstTwoRowLinesRoundedToAWholeUnit) {
  auto pitch = [](double secondY) {
    Scene s(TableTags(1, 5000) + LineTags("E9", 2000, secondY, 9000, secondY));
    Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, 800);
    return table ? table->rowPitch : -1.0;
  };
  EXPECT_EQ(pitch(7000 - 499.96), 500);  // 499.96 + 0.05 truncated
  EXPECT_EQ(pitch(7000 - 499.94), 499);
  EXPECT_EQ(pitch(7000 - 620.2), 620);
}

TEST(SizeTableRead, RowsAreReadAtTheRowPitch) {
  // Lines 600 apart: the second row's text at 6000 lies in the second cell of a 600 pitch.
  Scene s(PointTags("F1", 2000, 7000, "4") + LineTags("A0", 2000, 7000, 2000, 5800) + LineTags("A1", 4200, 7000, 4200, 5800) +
          LineTags("A5", 9000, 7000, 9000, 5800) + LineTags("E0", 2000, 7000, 9000, 7000) +
          LineTags("E1", 2000, 6400, 9000, 6400) + LineTags("E2", 2000, 5800, 9000, 5800) +
          TextTags("D1", "P-7", 2100, 5900));
  SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 2}};
  std::vector<SizeRowValues> rows = Read(s, import);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[1].symbol, u"P");
  EXPECT_EQ(rows[1].number, u"7");
}

TEST(SizeTableRead, ADrawnTableWithOneHorizontalLineUsesTheRowSpacingSettingAsTheRowPitch) {
  Scene s(TableTags(1, 6000));
  Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, 812.5);
  ASSERT_TRUE(table.ok());
  EXPECT_EQ(table->rowLines.size(), 1u);
  EXPECT_EQ(table->rowPitch, 812.5);
  EXPECT_TRUE(ReadSizeTableRows(*s.context, *table, FiveColumns()).empty());
}

TEST(SizeTableRead, NoBasePointInTheFrameGivesThePlacementMessage) {
  Tags tags = TableTags(3, 6000);
  tags.erase(tags.begin(), tags.begin() + 6);  // the POINT
  EXPECT_EQ(LocateError(tags), u"ｻｲｽﾞ表の配置点が取得出来ません.");
}

TEST(SizeTableRead, NoHorizontalLineAtTheBasePointGivesMessage1) {
  EXPECT_EQ(LocateError(PointTags("F1", 2000, 7000, "4") + LineTags("E0", 2003, 7000, 9000, 7000)), u"ｻｲｽﾞ表が取得出来ません(1).");
}

TEST(SizeTableRead, NoColumnLineCrossingTheTopLineGivesMessage2) {
  // The upright line stops 11 short of the top line's left end, past the probe's 10.
  EXPECT_EQ(LocateError(PointTags("F1", 2000, 7000, "4") + LineTags("E0", 2000, 7000, 9000, 7000) +
                        LineTags("A0", 1989, 7100, 1989, 6000) + LineTags("A1", 5000, 6900, 5000, 6000)),
            u"ｻｲｽﾞ表が取得出来ません(2).");
}

TEST(SizeTableRead, NoRowLineOnTheProbeGivesMessage3) {
  // The base point lies 2 past the top line's end; the probe from it down to the column line's
  // foot meets no horizontal line.
  EXPECT_EQ(LocateError(PointTags("F1", 9002, 7000, "4") + LineTags("E0", 2000, 7000, 9000, 7000) +
                        LineTags("A0", 9005, 7100, 9005, 6900)),
            u"ｻｲｽﾞ表が取得出来ません(3).");
}

TEST(SizeTableRead, AColumnPastTheColumnLinesPrintsTheTooFewColumnsError) {
  Scene s(TwoRowTable());
  SizeImportResult import = FiveColumns();
  import.columns[3].borderedCount = 5;  // its right line would be a seventh line
  std::vector<SizeRowValues> rows = Read(s, import);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(s.editor.printed, Text(u"\nerror:ｻｲｽﾞ表の項目数が足りません。\n") + u"\nerror:ｻｲｽﾞ表の項目数が足りません。\n");
  EXPECT_EQ(rows[0].sizes, (std::vector<Text>{u"20", u"15", u""}));  // the other cells are still read
  EXPECT_EQ(rows[0].count, u"4");
}

TEST(SizeTableRead, TheCountColumnIsReadBetweenTheLastTwoLines) {
  Scene s(TwoRowTable());
  SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 1}, {u"E32", 2}};  // its own count would be the ② column
  std::vector<SizeRowValues> rows = Read(s, import);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].sizes, (std::vector<Text>{u"20"}));
  EXPECT_EQ(rows[0].count, u"4");
}

TEST(SizeTableRead, ReferenceLinePropertiesAreThoseOfTheTopLine) {
  Tags top{{0, "LINE"}, {5, "E0"}, {8, "LOCKED"}, {6, "DASHED"}, {62, "3"}, {370, "35"}, {10, "2000"}, {20, "7000"},
           {30, "0"}, {11, "9000"}, {21, "7000"}, {31, "0"}};
  Tags tags = TableTags(1, 6000);
  tags.erase(tags.end() - 9, tags.end());  // the plain top line
  Scene s(tags + top);
  Result<DrawnSizeTable> table = LocateSizeTable(*s.context, kFrame, 500);
  ASSERT_TRUE(table.ok());
  TableLineProperties p = ReferenceLineProperties(*s.drawing, *table);
  EXPECT_EQ(p.layer, u"LOCKED");
  EXPECT_EQ(p.linetype, u"DASHED");
  EXPECT_EQ(p.lineweight, 35);
  EXPECT_EQ(p.colour, 3);
}
