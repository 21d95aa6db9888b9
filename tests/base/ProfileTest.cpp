#include <gtest/gtest.h>

#include "support/CodePages.hpp"
#include "base/Encoding.hpp"
#include "base/Profile.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::TempDir;

namespace {
const std::string kCp932Ini = EncodeCodePage(u"[標準図]\r\n標準図番号ﾚｲﾔ=5\r\n変更色 = 3 \r\n", "CP932");
}

TEST(Profile, ReadsCp932File) {
  TempDir dir;
  dir.Write("a.ini", kCp932Ini);
  EXPECT_EQ(ReadProfileString(u"標準図", u"標準図番号ﾚｲﾔ", u"", dir.TextPath("a.ini"), test::Cp932()), u"5");
  EXPECT_EQ(ReadProfileString(u"標準図", u"変更色", u"", dir.TextPath("a.ini"), test::Cp932()), u"3");
}

TEST(Profile, ReadsUtf8File) {
  TempDir dir;
  dir.Write("a.ini", ToUtf8(u"[Custom]\n標準図ﾃﾞｰﾀ=C:\\TQ\\標準図\n"));
  EXPECT_EQ(ReadProfileString(u"Custom", u"標準図ﾃﾞｰﾀ", u"", dir.TextPath("a.ini"), test::Cp932()), u"C:\\TQ\\標準図");
}

TEST(Profile, ReadsUtf16LittleEndianFileWithByteOrderMark) {
  TempDir dir;
  dir.Write("a.ini", EncodeFile(u"[EXCEL]\r\nサイズヘッダ行=28\r\n", FileEncoding::Utf16LeBom, test::Cp932()));
  EXPECT_EQ(ReadProfileString(u"EXCEL", u"サイズヘッダ行", u"", dir.TextPath("a.ini"), test::Cp932()), u"28");
}

TEST(Profile, SectionsAndKeysWithoutRegardToCase) {
  TempDir dir;
  dir.Write("a.ini", "[Excel]\nQuantity=AZ\n");
  EXPECT_EQ(ReadProfileString(u"EXCEL", u"quantity", u"", dir.TextPath("a.ini"), test::Cp932()), u"AZ");
}

TEST(Profile, FirstMatchWins) {
  TempDir dir;
  dir.Write("a.ini", "[s]\nk=1\nk=2\n[s]\nk=3\n");
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"", dir.TextPath("a.ini"), test::Cp932()), u"1");
}

TEST(Profile, CommentLinesAreNotKeys) {
  TempDir dir;
  dir.Write("a.ini", "[s]\n;k=1\nk=2\n");
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"", dir.TextPath("a.ini"), test::Cp932()), u"2");
}

TEST(Profile, MalformedLinesAreSkipped) {
  TempDir dir;
  dir.Write("a.ini", "garbage before any section\n[s\nno equals sign\n=value without key\nk=ok\n[]\nk=other\n");
  Text path = dir.TextPath("a.ini");
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"", path, test::Cp932()), u"ok");
  EXPECT_EQ(ReadProfileString(u"s", u"no equals sign", u"d", path, test::Cp932()), u"d");
  EXPECT_EQ(ReadProfileString(u"", u"k", u"", path, test::Cp932()), u"other");
}

TEST(Profile, QuotedValueLosesItsQuotes) {
  TempDir dir;
  dir.Write("a.ini", "[s]\nk=\" 5 \"\n");
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"", dir.TextPath("a.ini"), test::Cp932()), u" 5 ");
}

TEST(Profile, MissingFileReadsAsEmpty) {
  TempDir dir;
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"dflt", dir.TextPath("none.ini"), test::Cp932()), u"dflt");
}

TEST(Profile, ValuesAreCutAt511Characters) {
  TempDir dir;
  dir.Write("a.ini", "[s]\nk=" + std::string(600, 'x') + "\n");
  EXPECT_EQ(ReadProfileString(u"s", u"k", u"", dir.TextPath("a.ini"), test::Cp932()).size(), 511u);
}

TEST(Profile, WritingAKeyReplacesItInPlaceAndKeepsEveryOtherByte) {
  TempDir dir;
  std::string before = EncodeCodePage(u"; コメント\r\n[標準図]\r\n文字高さ=350\r\n文字幅 = 280\r\n\r\n[EXCEL]\r\nx=1", "CP932");
  dir.Write("a.ini", before);
  ASSERT_TRUE(WriteProfileString(u"標準図", u"文字高さ", u"400", dir.TextPath("a.ini"), test::Cp932()));
  std::string expected = EncodeCodePage(u"; コメント\r\n[標準図]\r\n文字高さ=400\r\n文字幅 = 280\r\n\r\n[EXCEL]\r\nx=1", "CP932");
  EXPECT_EQ(dir.Read("a.ini"), expected);
}

TEST(Profile, WritingANewKeyAppendsItToItsSection) {
  TempDir dir;
  dir.Write("a.ini", "[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");
  ASSERT_TRUE(WriteProfileString(u"a", u"z", u"3", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n");
}

TEST(Profile, WritingANewSectionAppendsItAtTheEnd) {
  TempDir dir;
  dir.Write("a.ini", "[a]\nx=1");
  ASSERT_TRUE(WriteProfileString(u"b", u"y", u"2", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), "[a]\nx=1\n[b]\ny=2\n");
}

TEST(Profile, WritingKeepsUtf16Encoding) {
  TempDir dir;
  dir.Write("a.ini", EncodeFile(u"[s]\r\nk=1\r\n", FileEncoding::Utf16LeBom, test::Cp932()));
  ASSERT_TRUE(WriteProfileString(u"s", u"k", u"行間隔", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), EncodeFile(u"[s]\r\nk=行間隔\r\n", FileEncoding::Utf16LeBom, test::Cp932()));
}

TEST(Profile, WritingKeepsUtf8Encoding) {
  TempDir dir;
  dir.Write("a.ini", ToUtf8(u"[標準図]\n文字幅=280\n"));
  ASSERT_TRUE(WriteProfileString(u"標準図", u"文字幅", u"300", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), ToUtf8(u"[標準図]\n文字幅=300\n"));
}

TEST(Profile, WritingKeepsInvalidBytesOfOtherLines) {
  TempDir dir;
  std::string before = "[s]\r\nbad=\x81\xFF\x82\r\nk=1\r\n";
  dir.Write("a.ini", before);
  ASSERT_TRUE(WriteProfileString(u"s", u"k", u"2", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), "[s]\r\nbad=\x81\xFF\x82\r\nk=2\r\n");
}

TEST(Profile, MissingFileIsCreatedOnWrite) {
  TempDir dir;
  ASSERT_TRUE(WriteProfileString(u"標準図", u"行間隔", u"500", dir.TextPath("new.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("new.ini"), EncodeCodePage(u"[標準図]\r\n行間隔=500\r\n", "CP932"));
}

TEST(Profile, Utf16WithoutAByteOrderMarkIsReadAndWrittenBackWithoutOne) {
  TempDir dir;
  dir.Write("a.ini", EncodeFile(u"[標準図]\r\n縦ﾌﾚｰﾑ数=4\r\n", FileEncoding::Utf16LeBom, test::Cp932(), false));
  EXPECT_EQ(ReadProfileString(u"標準図", u"縦ﾌﾚｰﾑ数", u"", dir.TextPath("a.ini"), test::Cp932()), u"4");
  ASSERT_TRUE(WriteProfileString(u"標準図", u"縦ﾌﾚｰﾑ数", u"5", dir.TextPath("a.ini"), test::Cp932()));
  EXPECT_EQ(dir.Read("a.ini"), EncodeFile(u"[標準図]\r\n縦ﾌﾚｰﾑ数=5\r\n", FileEncoding::Utf16LeBom, test::Cp932(), false));
}
