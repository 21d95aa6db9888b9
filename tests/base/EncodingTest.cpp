#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "support/CodePages.hpp"

using namespace tq;

TEST(DecodeTextFile, Utf8WithByteOrderMark) {
  DecodedText d = DecodeTextFile("\xEF\xBB\xBF\xE6\xA8\x99", test::Cp932());
  EXPECT_EQ(d.text, u"標");
  EXPECT_EQ(d.encoding, FileEncoding::Utf8Bom);
}

TEST(DecodeTextFile, Utf16LittleEndianWithByteOrderMark) {
  DecodedText d = DecodeTextFile(std::string("\xFF\xFE\x19\x6A" "A\0", 6), test::Cp932());
  EXPECT_EQ(d.text, u"標A");
  EXPECT_EQ(d.encoding, FileEncoding::Utf16LeBom);
}

TEST(DecodeTextFile, ValidUtf8WithoutMark) {
  DecodedText d = DecodeTextFile("\xE9\x85\x8D\xE7\xAE\xA1", test::Cp932());
  EXPECT_EQ(d.text, u"配管");
  EXPECT_EQ(d.encoding, FileEncoding::Utf8);
}

TEST(DecodeTextFile, Cp932WhenNotUtf8) {
  DecodedText d = DecodeTextFile("\x94\x7A\x8A\xC7", test::Cp932());  // 配管 in Shift_JIS
  EXPECT_EQ(d.text, u"配管");
  EXPECT_EQ(d.encoding, FileEncoding::SystemCodePage);
}

TEST(DecodeTextFile, Cp932WithInvalidBytesGivesReplacementCharactersAndNoException) {
  std::string bytes = "\x94\x7A\x81\x20\xFF\x41";
  DecodedText d;
  EXPECT_NO_THROW(d = DecodeTextFile(bytes, test::Cp932()));
  EXPECT_EQ(d.text.substr(0, 1), u"配");
  EXPECT_EQ(d.text.back(), u'A');
  EXPECT_NE(d.text.find_first_of(u"\uFFFD\u001A"), Text::npos);
}

TEST(EncodeCodePage, Cp932RoundTrip) {
  EXPECT_EQ(EncodeCodePage(u"配管ｱ", "CP932"), "\x94\x7A\x8A\xC7\xB1");
  EXPECT_EQ(DecodeCodePage("\x94\x7A\x8A\xC7\xB1", "CP932"), u"配管ｱ");
}

TEST(EncodeCodePage, UnmappableCharacterBecomesQuestionMark) {
  EXPECT_EQ(EncodeCodePage(u"a\u4E02b", "CP932"), "a?b");
}

TEST(SystemCodePage, UnknownNameIsRefusedWithItsName) {
  Result<CodePage> unknown = CodePage::Open("no-such-code-page");
  ASSERT_FALSE(unknown);
  EXPECT_EQ(unknown.error().code, ErrorCode::InvalidValue);
  EXPECT_NE(unknown.error().Describe().find("no-such-code-page"), std::string::npos);
  EXPECT_TRUE(CodePage::Open("CP932"));
}

TEST(DecodeTextFile, Utf16WithoutAByteOrderMarkIsRecognisedByItsNulBytes) {
  std::string little = EncodeFile(u"[標準図]\r\n縦ﾌﾚｰﾑ数=4\r\n", FileEncoding::Utf16LeBom, test::Cp932(), false);
  DecodedText d = DecodeTextFile(little, test::Cp932());
  EXPECT_EQ(d.encoding, FileEncoding::Utf16Le);
  EXPECT_EQ(d.text, u"[標準図]\r\n縦ﾌﾚｰﾑ数=4\r\n");
  std::string big = EncodeFile(u"[EXCEL]\r\n", FileEncoding::Utf16BeBom, test::Cp932(), false);
  d = DecodeTextFile(big, test::Cp932());
  EXPECT_EQ(d.encoding, FileEncoding::Utf16Be);
  EXPECT_EQ(d.text, u"[EXCEL]\r\n");
  // NUL bytes in no pattern are no UTF-16.
  EXPECT_EQ(DecodeTextFile(std::string("a\0\0b", 4), test::Cp932()).encoding, FileEncoding::Utf8);
}
