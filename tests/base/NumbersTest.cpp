#include <gtest/gtest.h>

#include <climits>

#include "base/Numbers.hpp"

using namespace tq;

TEST(Atof, ReadsLeadingWhiteSpaceSignDigitsPointAndExponent) {
  EXPECT_DOUBLE_EQ(ToReal(u"  \t-12.5e2xyz"), -1250.0);
  EXPECT_DOUBLE_EQ(ToReal(u"+3."), 3.0);
  EXPECT_DOUBLE_EQ(ToReal(u".25"), 0.25);
  EXPECT_DOUBLE_EQ(ToReal(u"300.5mm"), 300.5);
}

TEST(Atof, NoDigitsGiveZero) {
  EXPECT_EQ(ToReal(u""), 0.0);
  EXPECT_EQ(ToReal(u"abc"), 0.0);
  EXPECT_EQ(ToReal(u"-."), 0.0);
  EXPECT_EQ(ToReal(u"e5"), 0.0);
}

TEST(Atof, ExponentWithoutDigitsIsIgnored) { EXPECT_DOUBLE_EQ(ToReal(u"2e+"), 2.0); }

TEST(Atof, FullWidthDigitsAreNotDigits) { EXPECT_EQ(ToReal(u"１２"), 0.0); }

TEST(Wtoi, ReadsLeadingWhiteSpaceSignAndDigits) {
  EXPECT_EQ(ToInt(u" 42abc"), 42);
  EXPECT_EQ(ToInt(u"-7"), -7);
  EXPECT_EQ(ToInt(u"+8.9"), 8);
}

TEST(Wtoi, NoDigitsGiveZero) {
  EXPECT_EQ(ToInt(u"abc"), 0);
  EXPECT_EQ(ToInt(u""), 0);
  EXPECT_EQ(ToInt(u"-"), 0);
}

TEST(Wtoi, OutOfRangeClamps) {
  EXPECT_EQ(ToInt(u"99999999999999999999"), INT_MAX);
  EXPECT_EQ(ToInt(u"-99999999999999999999"), INT_MIN);
  EXPECT_EQ(ToInt(u"2147483647"), INT_MAX);
  EXPECT_EQ(ToInt(u"-2147483648"), INT_MIN);
}
