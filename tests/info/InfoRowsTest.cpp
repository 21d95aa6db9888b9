// The row operations of the attribute information dialog, on records in memory.
#include <gtest/gtest.h>

#include "info/InfoRows.hpp"

using namespace tq;

namespace {

// A line whose position p holds `data` + p from position 3 on.
CStdInfRow DataLine(const Text& symbol, const Text& name, const Text& data) {
  CStdInfRow row;
  row.member(RowMember::kSymbolOrUnits) = symbol;
  row.member(RowMember::kEquipmentName) = name;
  for (int p = 3; p <= 25; ++p) row.member(MemberAtPosition(PositionAt(static_cast<size_t>(p - 1)))) = data + FromUtf8(std::to_string(p));
  return row;
}

// Two header lines, then the given lines.
CStdInfRecord RecordOf(std::vector<CStdInfRow> lines) {
  CStdInfRecord record{DataLine(u"", u"", u"h0-"), DataLine(u"", u"", u"h1-")};
  record.insert(record.end(), lines.begin(), lines.end());
  return record;
}

bool HasData(const CStdInfRow& row, const Text& data) { return row.member(RowMember::kWorkItem) == data + u"3" && row.member(RowMember::kBMaterialKey) == data + u"25"; }

bool DataEmpty(const CStdInfRow& row) {
  for (size_t m = IndexOf(RowMember::kWorkItem); m < row.members.size(); ++m)
    if (!row.members[m].empty()) return false;
  return true;
}

}  // namespace

TEST(InfoRows, TheCellsOfALineAreMembersOneToSeventeen) {
  GridCells cells = CellsOfLine(DataLine(u"AC-1", u"エアコン", u"a"));
  EXPECT_EQ(cells[0], u"AC-1");
  EXPECT_EQ(cells[15], u"a16");
  EXPECT_EQ(cells[16], u"a18");  // "備考" is member 17, stored at position 18
}

TEST(InfoRows, WritingCellsPutsCellSixteenAtPositionSeventeenAndKeepsPositionEighteen) {
  CStdInfRow row = DataLine(u"AC-1", u"エアコン", u"a");
  GridCells cells = CellsOfLine(row);
  cells[16] = u"新しい備考";
  cells[5] = u"部材X";
  WriteCellsToLine(cells, row);
  EXPECT_EQ(row.member(RowMember::kAttributeKey), u"新しい備考");  // position 17
  EXPECT_EQ(row.member(RowMember::kRemarks), u"a18");         // position 18 as it was
  EXPECT_EQ(row.member(RowMember::kMemberName), u"部材X");
  EXPECT_EQ(row.member(RowMember::kMaterialCode), u"a19");  // past the cells: untouched
}

TEST(InfoRows, ALineFromCellsFollowsTheReadingRuleWithTheGridRowAsLineIndex) {
  GridCells cells;
  cells[2] = u"給水";
  cells[16] = u"KEY";
  std::vector<Text> keys{u"key"};
  CStdInfRow known = LineFromCells(cells, 0, keys);
  EXPECT_EQ(known.member(RowMember::kAttributeKey), u"KEY");
  EXPECT_EQ(known.member(RowMember::kAttributeValue), u"key");
  EXPECT_EQ(known.member(RowMember::kRemarks), u"");
  cells[16] = u"unknown";
  EXPECT_EQ(LineFromCells(cells, 1, keys).member(RowMember::kAttributeValue), u"");
  EXPECT_EQ(LineFromCells(cells, 2, keys).member(RowMember::kAttributeValue), u"-");
  cells[16] = u"";
  EXPECT_EQ(LineFromCells(cells, 2, keys).member(RowMember::kAttributeValue), u"-");  // position 17 is assigned even when empty
}

TEST(InfoRows, InsertingAboveOrBelowTheSelectedRowOrAtTheEnd) {
  CStdInfRecord record = RecordOf({DataLine(u"A", u"a", u"x"), DataLine(u"B", u"b", u"y")});
  EXPECT_EQ(InsertLine(record, DataLine(u"", u"", u"above"), 1, InsertSide::Above), 1);
  EXPECT_TRUE(HasData(record[3], u"above"));
  EXPECT_TRUE(HasData(record[4], u"y"));
  EXPECT_EQ(InsertLine(record, DataLine(u"", u"", u"below"), 0, InsertSide::Below), 1);
  EXPECT_TRUE(HasData(record[3], u"below"));
  EXPECT_TRUE(HasData(record[2], u"x"));
  EXPECT_EQ(InsertLine(record, DataLine(u"", u"", u"end"), -1, InsertSide::Above), 4);
  EXPECT_TRUE(HasData(record.back(), u"end"));
  EXPECT_TRUE(HasData(record[0], u"h0-"));
}

TEST(InfoRows, DeletingAFreeSlotRemovesItsLine) {
  CStdInfRecord record = RecordOf({DataLine(u"A", u"a", u"x"), DataLine(u"", u"", u"y"), DataLine(u"B", u"b", u"z")});
  DeleteGridRow(record, 1);
  ASSERT_EQ(record.size(), 4u);
  EXPECT_TRUE(HasData(record[2], u"x"));
  EXPECT_TRUE(HasData(record[3], u"z"));
  EXPECT_EQ(record[3].member(RowMember::kSymbolOrUnits), u"B");
}

TEST(InfoRows, DeletingARowWithDataShiftsTheDataUpToTheFirstFreeSlotWhichIsRemoved) {
  CStdInfRecord record = RecordOf({DataLine(u"A", u"a", u"x"), DataLine(u"B", u"b", u"y"), DataLine(u"", u"", u"z"),
                                   DataLine(u"", u"", u"w")});
  DeleteGridRow(record, 0);
  ASSERT_EQ(record.size(), 5u);
  EXPECT_EQ(record[2].member(RowMember::kSymbolOrUnits), u"A");
  EXPECT_TRUE(HasData(record[2], u"y"));
  EXPECT_EQ(record[3].member(RowMember::kSymbolOrUnits), u"B");
  EXPECT_EQ(record[3].member(RowMember::kEquipmentName), u"b");
  EXPECT_TRUE(HasData(record[3], u"z"));
  EXPECT_TRUE(HasData(record[4], u"w"));  // past the free slot: untouched
  EXPECT_TRUE(HasData(record[1], u"h1-"));
}

TEST(InfoRows, DeletingARowWithDataEmptiesTheLastLinesDataWhenNoFreeSlotFollows) {
  CStdInfRecord record = RecordOf({DataLine(u"A", u"a", u"x"), DataLine(u"B", u"b", u"y")});
  DeleteGridRow(record, 0);
  ASSERT_EQ(record.size(), 4u);
  EXPECT_TRUE(HasData(record[2], u"y"));
  EXPECT_EQ(record[3].member(RowMember::kSymbolOrUnits), u"B");
  EXPECT_TRUE(DataEmpty(record[3]));
}

TEST(InfoRows, SwappingMovesMembersThreeToTwentyFiveOnly) {
  CStdInfRecord record = RecordOf({DataLine(u"A", u"a", u"x"), DataLine(u"B", u"b", u"y")});
  SwapRowData(record, 0, 1);
  EXPECT_EQ(record[2].member(RowMember::kSymbolOrUnits), u"A");
  EXPECT_EQ(record[2].member(RowMember::kEquipmentName), u"a");
  EXPECT_TRUE(HasData(record[2], u"y"));
  EXPECT_EQ(record[3].member(RowMember::kSymbolOrUnits), u"B");
  EXPECT_TRUE(HasData(record[3], u"x"));
}

TEST(InfoRows, TheGridShowsTheLinesFromIndexTwoOn) {
  EXPECT_EQ(GridRowCount(RecordOf({})), 0);
  EXPECT_EQ(GridRowCount(CStdInfRecord(1)), 0);
  EXPECT_EQ(GridRowCount(RecordOf({DataLine(u"A", u"a", u"x")})), 1);
}
