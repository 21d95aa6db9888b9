#include <gtest/gtest.h>

#include "ports/CellAddress.hpp"

namespace tq {
namespace {

TEST(CellAddress, ColumnLettersFromNumbers) {
  EXPECT_EQ(MakeCell(1), u"A");
  EXPECT_EQ(MakeCell(26), u"Z");
  EXPECT_EQ(MakeCell(27), u"AA");
  EXPECT_EQ(MakeCell(52), u"AZ");
  EXPECT_EQ(MakeCell(53), u"BA");
  EXPECT_EQ(MakeCell(702), u"ZZ");
  EXPECT_EQ(MakeCell(703), u"AAA");
  EXPECT_EQ(MakeCell(16384), u"XFD");
  EXPECT_EQ(MakeCell(0), u"");
  EXPECT_EQ(MakeCell(-3), u"");
}

TEST(CellAddress, ColumnNumbersFromLetters) {
  EXPECT_EQ(GetColumnIndex(u"A"), 1);
  EXPECT_EQ(GetColumnIndex(u"Z"), 26);
  EXPECT_EQ(GetColumnIndex(u"AA"), 27);
  EXPECT_EQ(GetColumnIndex(u"AZ"), 52);
  EXPECT_EQ(GetColumnIndex(u"ZZ"), 702);
  EXPECT_EQ(GetColumnIndex(u"AAA"), 703);
  EXPECT_EQ(GetColumnIndex(u"az"), 52);
  EXPECT_EQ(GetColumnIndex(u""), 0);
  EXPECT_EQ(GetColumnIndex(u"A1"), 0);
  EXPECT_EQ(GetColumnIndex(u"ZZZZZZZZ"), 0);  // past an int
}

TEST(CellAddress, LettersAndNumbersRoundTrip) {
  for (int column = 1; column <= 20000; ++column) ASSERT_EQ(GetColumnIndex(MakeCell(column)), column) << column;
}

TEST(CellAddress, SplitsAnAddress) {
  EXPECT_EQ(SplitCell(u"AZ12"), (CellAddress{u"AZ", 12}));
  EXPECT_EQ(SplitCell(u"$B$3"), (CellAddress{u"B", 3}));
  EXPECT_EQ(SplitCell(u"a1"), (CellAddress{u"a", 1}));
  EXPECT_FALSE(SplitCell(u"12"));
  EXPECT_FALSE(SplitCell(u"AB"));
  EXPECT_FALSE(SplitCell(u"A0"));
  EXPECT_FALSE(SplitCell(u"A1B"));
  EXPECT_FALSE(SplitCell(u""));
  EXPECT_FALSE(SplitCell(u"A99999999999"));
}

TEST(CellAddress, FormatsAnAddress) {
  EXPECT_EQ(FormatCell(u"AZ", 3), u"AZ3");
  EXPECT_EQ(FormatCell(MakeCell(28), 120), u"AB120");
}

}  // namespace
}  // namespace tq
