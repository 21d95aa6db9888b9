#include <gtest/gtest.h>

#include "base/Quote.hpp"

using namespace tq;

TEST(Quote, ControlBytesAndNulFromAFileAreEscapedNeverRaw) {
  EXPECT_EQ(QuoteFileContent(std::string_view("ab\x07" "c\0d\x1b[31m\x7F", 12)), "\"ab\\x07c\\0d\\x1B[31m\\x7F\"");
  EXPECT_EQ(QuoteFileContent(std::string_view("a\tb\rc\nd\\e")), "\"a\\tb\\rc\\nd\\\\e\"");
}

TEST(Quote, BytesThatAreNotUtf8AreEscapedAndUtf8IsKept) {
  // "標準" in CP932, read as if it were UTF-8, then a Japanese word in UTF-8.
  EXPECT_EQ(QuoteFileContent(std::string_view("\x95\x57\x8F\x80 標準")), "\"\\x95W\\x8F\\x80 標準\"");
  // A lead byte without its continuation, and an overlong form of "/".
  EXPECT_EQ(QuoteFileContent(std::string_view("\xE6" "AB \xC0\xAF")), "\"\\xE6AB \\xC0\\xAF\"");
}

TEST(Quote, LongContentIsCutWithoutSplittingACharacter) {
  EXPECT_EQ(QuoteFileContent(std::string_view("abcdef"), 4), "\"abcd\"...");
  EXPECT_EQ(QuoteFileContent(std::string_view("ab標準"), 4), "\"ab\"...");  // 標 takes three bytes
  EXPECT_EQ(QuoteFileContent(std::string_view("abcd"), 4), "\"abcd\"");
}

TEST(Quote, DecodedTextIsEscapedTheSameWay) {
  EXPECT_EQ(QuoteFileContent(TextView(u"変更\u0001色\u0000", 5)), u"\"変更\\x01色\\0\"");
}
