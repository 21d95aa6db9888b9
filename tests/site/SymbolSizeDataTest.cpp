#include <gtest/gtest.h>

#include "support/CodePages.hpp"
#include "site/SymbolSizeData.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using V = std::vector<Text>;

TEST(SymbolSizeData, HeaderSizeAndThreeLinesGiveTheSizesListWithTheDefaultAtIndex2) {
  SymbolSizeData d = ParseSymbolSizeData(u"[サイズ]\n100\n150*\n200*\n");
  EXPECT_EQ(d.list(SizeSection::Sizes), (V{u"100", u"150", u"200"}));
  EXPECT_EQ(d.defaultIndex(SizeSection::Sizes), 2);
  EXPECT_EQ(d.defaultIndex(SizeSection::Symbols), -1);
}

TEST(SymbolSizeData, AStarredLineWithBlanksAroundItIsTheDefaultWithoutThem) {
  SymbolSizeData d = ParseSymbolSizeData(u"[記号]\n  AC-1*  \nAC-2\n");
  EXPECT_EQ(d.list(SizeSection::Symbols), (V{u"AC-1", u"AC-2"}));
  EXPECT_EQ(d.defaultIndex(SizeSection::Symbols), 0);
}

TEST(SymbolSizeData, ABlankBeforeTheStarStaysInTheEntry) {
  SymbolSizeData d = ParseSymbolSizeData(u"[記号]\nAC-1 *\n");
  EXPECT_EQ(d.list(SizeSection::Symbols), (V{u"AC-1 "}));
}

TEST(SymbolSizeData, ALineStartingWithHashIsACommentAHashFurtherOnIsAnEntry) {
  SymbolSizeData d = ParseSymbolSizeData(u"[番号]\n# comment\n  #2\n1#2\n");
  EXPECT_EQ(d.list(SizeSection::Numbers), (V{u"1#2"}));
}

TEST(SymbolSizeData, AnUnknownHeaderHidesTheFollowingLinesUntilTheNextKnownHeader) {
  SymbolSizeData d = ParseSymbolSizeData(u"[台数]\n1\n[その他]\n2\n3\n[台数]\n4\n");
  EXPECT_EQ(d.list(SizeSection::Counts), (V{u"1", u"4"}));
}

TEST(SymbolSizeData, HeadersAreFoundAnywhereInTheLineInTheirOrder) {
  SymbolSizeData d = ParseSymbolSizeData(u"[部品記号]\nX\n[台数][記号]\nY\n");
  EXPECT_EQ(d.list(SizeSection::Symbols), (V{u"X", u"Y"}));
}

TEST(SymbolSizeData, TheLastStarWinsAndASectionSeenTwiceGoesOn) {
  SymbolSizeData d = ParseSymbolSizeData(u"[サイズ]\n15*\n20\n[台数]\n1\n[サイズ]\n25*\n");
  EXPECT_EQ(d.list(SizeSection::Sizes), (V{u"15", u"20", u"25"}));
  EXPECT_EQ(d.defaultIndex(SizeSection::Sizes), 2);
}

TEST(SymbolSizeData, LinesBeforeTheFirstHeaderAreCountsForTheAttributeDialogOnly) {
  Text text = u"9\n\n8*\n[記号]\nA\n";
  EXPECT_TRUE(ParseSymbolSizeData(text).list(SizeSection::Counts).empty());
  SymbolSizeData attribute = ParseSymbolSizeData(text, SizeSection::Counts);
  EXPECT_EQ(attribute.list(SizeSection::Counts), (V{u"9", u"8"}));
  EXPECT_EQ(attribute.defaultIndex(SizeSection::Counts), 1);
}

TEST(SymbolSizeData, AMissingFileGivesFourEmptyLists) {
  test::TempDir dir;
  SymbolSizeData d = LoadSymbolSizeData(dir.TextPath("none.dat"), test::Cp932());
  for (int s = 0; s < 4; ++s) {
    EXPECT_TRUE(d.lists[static_cast<size_t>(s)].empty());
    EXPECT_EQ(d.defaults[static_cast<size_t>(s)], -1);
  }
  EXPECT_TRUE(LoadSymbolSizeData(u"", test::Cp932()).lists[0].empty());
}

TEST(SymbolSizeData, TheExampleInstallationsFileInUtf8) {
  SymbolSizeData d = LoadSymbolSizeData(FromUtf8(std::string(TQ_EXAMPLE_SITE) + "/data/記号サイズデータ.dat"), test::Cp932());
  EXPECT_EQ(d.list(SizeSection::Symbols).front(), u"AC-1");
  EXPECT_EQ(d.defaultIndex(SizeSection::Symbols), 0);
  EXPECT_EQ(d.list(SizeSection::Sizes)[static_cast<size_t>(d.defaultIndex(SizeSection::Sizes))], u"50");
}
