#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "base/Text.hpp"

using namespace tq;

TEST(EqualNoCase, AsciiLettersOfEitherCaseAreEqual) {
  EXPECT_TRUE(EqualNoCase(u"sc01", u"SC01"));
  EXPECT_FALSE(EqualNoCase(u"SC01", u"SC02"));
  EXPECT_FALSE(EqualNoCase(u"SC01", u"SC011"));
}

TEST(EqualNoCase, FullWidthLettersOfEitherCaseAreEqual) {
  EXPECT_TRUE(EqualNoCase(u"Ａ材", u"ａ材"));
  EXPECT_TRUE(EqualNoCase(u"a材", u"A材"));
  EXPECT_FALSE(EqualNoCase(u"A材", u"B材"));
}

TEST(Utf8, RoundTripsJapanese) { EXPECT_EQ(FromUtf8(ToUtf8(u"標準図ﾃﾞｰﾀ")), u"標準図ﾃﾞｰﾀ"); }

TEST(Format, TwoDigitRecordNumbersAndThreeFromOneHundred) {
  EXPECT_EQ(Format(u"TQ_STDINF%02d", {1}), u"TQ_STDINF01");
  EXPECT_EQ(Format(u"TQ_STDINF%02d", {100}), u"TQ_STDINF100");
}

TEST(Format, QuantitiesWithOneDecimal) {
  EXPECT_EQ(Format(u"%2.1f", {3.0}), u"3.0");
  EXPECT_EQ(Format(u"%2.1f", {0.0}), u"0.0");
  EXPECT_EQ(Format(u"%2.1f", {123.45}), u"123.5");
}

TEST(Format, GeneralFloatingFormat) {
  EXPECT_EQ(Format(u"%g", {3.5}), u"3.5");
  EXPECT_EQ(Format(u"%g", {5.0}), u"5");
  EXPECT_EQ(Format(u"%g", {350.0}), u"350");
}

TEST(Format, TextsAndIntegersJoined) {
  EXPECT_EQ(Format(u"%s-%s", {u"AC", u"1"}), u"AC-1");
  EXPECT_EQ(Format(u"%d", {-42}), u"-42");
  EXPECT_EQ(Format(u"%s,%s", {u"記号", u""}), u"記号,");
  EXPECT_EQ(Format(u"100%%", {}), u"100%");
}

TEST(HalfWidth, FullWidthDigitsBecomeHalfWidth) { EXPECT_EQ(ToHalfWidth(u"Ｍ－１２３"), u"M-123"); }

TEST(HalfWidth, FullWidthLettersAndBlankBecomeHalfWidth) { EXPECT_EQ(ToHalfWidth(u"ＡＢｃ　ｚ"), u"ABc z"); }

TEST(HalfWidth, KatakanaWithVoicedMarksSplitIntoHalfWidthMarks) {
  EXPECT_EQ(ToHalfWidth(u"ダクト"), u"ﾀﾞｸﾄ");
  EXPECT_EQ(ToHalfWidth(u"パイプ"), u"ﾊﾟｲﾌﾟ");
  EXPECT_EQ(ToHalfWidth(u"ポンプー"), u"ﾎﾟﾝﾌﾟｰ");
}

// Everything below the Hangul letters is left alone by the mapping: shown here through the
// mapping itself, made to run by a full-width letter at the end.
TEST(HalfWidth, CharactersBelowTheHangulLettersStayAsTheyAre) {
  Text below;
  for (char16_t c = 0x20; c < 0x1100; ++c) below += c;
  Text mapped = ToHalfWidth(below + u"Ａ");
  ASSERT_EQ(mapped.size(), below.size() + 1);
  for (size_t i = 0; i < below.size(); ++i) ASSERT_EQ(mapped[i], below[i]) << std::hex << static_cast<int>(below[i]);
  EXPECT_EQ(ToHalfWidth(u"M-1"), u"M-1");
  EXPECT_EQ(ToHalfWidth(u"←│■○"), u"￩￨￭￮");
}

// ICU and Windows disagree on the Hangul letters: ICU's transliterator gives the conjoining
// letters (U+1100 on) half-width forms and leaves the compatibility letters (U+3131 on),
// LCMapStringEx does the opposite. Both kinds keep their form on every platform: no sheet
// name is Korean, and one answer beats two.
TEST(HalfWidth, HangulLettersKeepTheirFormOnEveryPlatform) {
  EXPECT_EQ(ToHalfWidth(u"\u1100\u1161Ａ\u3131\u314F"), u"\u1100\u1161A\u3131\u314F");
}

TEST(HalfWidth, KanjiAndHiraganaStayAsTheyAre) { EXPECT_EQ(ToHalfWidth(u"標準図の１"), u"標準図の1"); }

TEST(Format, QuantityFormatIsTheGeneralFormatsOneDecimal) {
  for (double v : {0.0, 3.0, 12.25, 12.35, -1.05, 123456.789, 1e20})
    EXPECT_EQ(FormatQuantity(v), Format(u"%2.1f", {v})) << v;
}

TEST(Format, DecimalIsTheGeneralFormatsD) {
  for (long long v : {0LL, 7LL, 256LL, -1LL, -2147483648LL, 9223372036854775807LL})
    EXPECT_EQ(FormatDecimal(v), Format(u"%d", {v})) << v;
}
