#include "dialog/DialogUnits.hpp"

#include <climits>

#include <gtest/gtest.h>

namespace tq::dialog {
namespace {

TEST(DialogUnits, MulDivRoundsHalfAwayFromZero) {
  EXPECT_EQ(MulDiv(5, 3, 2), 8);     // 7.5
  EXPECT_EQ(MulDiv(-5, 3, 2), -8);   // -7.5
  EXPECT_EQ(MulDiv(5, -3, 2), -8);
  EXPECT_EQ(MulDiv(5, 1, 4), 1);     // 1.25
  EXPECT_EQ(MulDiv(7, 1, 4), 2);     // 1.75
  EXPECT_EQ(MulDiv(-5, 1, 4), -1);   // -1.25
  EXPECT_EQ(MulDiv(12, 6, 4), 18);
}

TEST(DialogUnits, MulDivKeepsTheProductInSixtyFourBits) {
  EXPECT_EQ(MulDiv(100000, 100000, 1000000), 10000);
  EXPECT_EQ(MulDiv(INT_MAX, 2, 2), INT_MAX);
}

TEST(DialogUnits, MulDivGivesMinusOneForZeroDivisorOrOverflow) {
  EXPECT_EQ(MulDiv(3, 4, 0), -1);
  EXPECT_EQ(MulDiv(INT_MAX, 2, 1), -1);
}

TEST(DialogUnits, AverageCharWidthRoundsAsWindows) {
  EXPECT_EQ(AverageCharWidth(312), 6);  // 312 / 26 = 12, (12 + 1) / 2
  EXPECT_EQ(AverageCharWidth(337), 6);  // 12.96 truncated to 12 first
  EXPECT_EQ(AverageCharWidth(338), 7);  // 13 -> 7
  EXPECT_EQ(AverageCharWidth(0), 0);
}

TEST(DialogUnits, DialogUnitsToPixels) {
  DialogBaseUnits units = BaseUnits(312, 12);  // 6 x 12 pixels
  EXPECT_EQ(units.averageCharWidth, 6);
  EXPECT_EQ(units.charHeight, 12);
  EXPECT_EQ(DialogXToPixels(131, units), 197);  // 196.5
  EXPECT_EQ(DialogYToPixels(123, units), 185);  // 184.5
  EXPECT_EQ(DialogXToPixels(4, units), 6);
  EXPECT_EQ(DialogYToPixels(8, units), 12);
  EXPECT_EQ(DialogYToPixels(14, BaseUnits(338, 15)), 26);  // 26.25
}

}  // namespace
}  // namespace tq::dialog
