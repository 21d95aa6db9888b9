#include <gtest/gtest.h>

#include "support/CodePages.hpp"
#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "base/TextFiles.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::TempDir;
using V = std::vector<Text>;

TEST(ConfigTable, EveryLineIsDataAndEmptyFieldsAreKept) {
  ConfigTable t = ParseConfigTable(u"ID,key,value\r\nS501,,給水\r\nSC01,1,");
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[0], (V{u"ID", u"key", u"value"}));
  EXPECT_EQ(t[1], (V{u"S501", u"", u"給水"}));
  EXPECT_EQ(t[2], (V{u"SC01", u"1", u""}));
}

TEST(ConfigTable, EmptyLineIsARowOfOneEmptyField) {
  ConfigTable t = ParseConfigTable(u"a\n\nb\n");
  ASSERT_EQ(t.size(), 3u);
  EXPECT_EQ(t[1], (V{u""}));
}

TEST(ConfigTable, QuotedFieldKeepsCommasAndDoubledQuotes) {
  EXPECT_EQ(SplitConfigLine(u"x,\"21010203000000&(SSL0,\"\"A\"\")\",y"),
            (V{u"x", u"21010203000000&(SSL0,\"A\")", u"y"}));
}

TEST(ConfigTable, QuoteInsideAnUnquotedFieldIsKept) { EXPECT_EQ(SplitConfigLine(u"a\"b,c"), (V{u"a\"b", u"c"})); }

TEST(ConfigTable, UnreadableFileFails) {
  TempDir dir;
  EXPECT_FALSE(ReadConfigFile(dir / "missing.csv", test::Cp932()).has_value());
}

TEST(ConfigTable, ReadsCp932File) {
  TempDir dir;
  dir.Write("t.csv", EncodeCodePage(u"配管,鋼管\r\n", "CP932"));
  auto t = ReadConfigFile(dir / "t.csv", test::Cp932());
  ASSERT_TRUE(t);
  EXPECT_EQ((*t)[0], (V{u"配管", u"鋼管"}));
}

TEST(TextLines, CarriageReturnsAndLineFeedsAreRemovedAndBlankLinesKept) {
  EXPECT_EQ(SplitTextLines(u"A\r\n\r\nB\rC\n"), (V{u"A", u"", u"BC"}));
}

TEST(TextLines, EmptyFileGivesNoLines) { EXPECT_TRUE(SplitTextLines(u"").empty()); }

TEST(TextLines, LongLineContinuesInTheNextEntry) {
  Text line(600, u'x');
  V lines = SplitTextLines(line + u"\n");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].size(), 519u);
  EXPECT_EQ(lines[1].size(), 81u);
}

TEST(TextLines, UnopenableFileGivesNothing) {
  TempDir dir;
  EXPECT_FALSE(ReadTextLines(dir / "none.txt", test::Cp932()).has_value());
}

TEST(Paths, SeparatorOnlyWhenTheFolderLacksOne) {
  EXPECT_EQ(JoinPath(u"C:\\TQ\\data", u"a.ini"), u"C:\\TQ\\data\\a.ini");
  EXPECT_EQ(JoinPath(u"C:\\TQ\\data\\", u"a.ini"), u"C:\\TQ\\data\\a.ini");
  EXPECT_EQ(JoinPath(u"/tq/data/", u"a.ini"), u"/tq/data/a.ini");
}

TEST(Paths, BackslashIsASeparatorOnPosix) {
  EXPECT_EQ(ToFsPath(u"site\\data\\標準図設定.ini"), std::filesystem::path(u8"site/data/標準図設定.ini"));
}
