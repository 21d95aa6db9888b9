#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "support/CodePages.hpp"
#include "info/AttributeIdTable.hpp"
#include "info/BMaterialTable.hpp"
#include "info/ChoiceLists.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;
using V = std::vector<Text>;

TEST(ChoiceLists, AFileHoldingOnlyEmptyLinesFillsTheComboWithThatManyEmptyEntries) {
  TempDir dir;
  dir.Write("f.txt", "\r\n\r\n\r\n");
  EXPECT_EQ(*ComboEntriesFromFile(dir.TextPath("f.txt"), test::Cp932()), (V{u"", u"", u""}));
}

TEST(ChoiceLists, AnEmptyFileFillsTheComboWithASingleBlank) {
  TempDir dir;
  dir.Write("f.txt", "");
  EXPECT_EQ(*ComboEntriesFromFile(dir.TextPath("f.txt"), test::Cp932()), (V{u" "}));
}

TEST(ChoiceLists, AMissingFileLeavesTheComboAsItIs) {
  TempDir dir;
  EXPECT_FALSE(ComboEntriesFromFile(dir.TextPath("none.txt"), test::Cp932()));
  EXPECT_FALSE(ComboEntriesFromFile(u"", test::Cp932()));
}

TEST(ChoiceLists, EntriesKeepFileOrder) {
  TempDir dir;
  dir.Write("f.txt", EncodeCodePage(u"本\r\nm\r\n\r\n個", "CP932"));
  EXPECT_EQ(*ComboEntriesFromFile(dir.TextPath("f.txt"), test::Cp932()), (V{u"本", u"m", u"", u"個"}));
}

TEST(ChoiceLists, LowerCaseASelectsTheAFilesTwoOrBSelectTheBFiles) {
  EXPECT_TRUE(SelectsAMaterial(u"a"));
  EXPECT_TRUE(SelectsAMaterial(u"A"));
  EXPECT_TRUE(SelectsAMaterial(u"1"));
  EXPECT_FALSE(SelectsAMaterial(u"2"));
  EXPECT_FALSE(SelectsAMaterial(u"B"));
  EXPECT_FALSE(SelectsAMaterial(u""));
  ChoiceFolders folders{u"/site/choices", u"", u""};
  const ChoiceFile& members = ChoiceFiles()[1];
  EXPECT_EQ(ChoiceFilePath(folders, members, u"a"), u"/site/choices\\A材-部材.txt");
  EXPECT_EQ(ChoiceFilePath(folders, members, u"2"), u"/site/choices\\B材-部材.txt");
  EXPECT_EQ(ChoiceFilePath(folders, ChoiceFiles()[4], u"B"), u"/site/choices\\数量.txt");
}

TEST(ChoiceLists, ABMaterialRowWhoseColumn5IsEmptyYieldsTheUnknownCode) {
  BMaterialTable table(ColumnLists(ParseConfigTable(u"フランジ,鋼製,SS400,,個,,0\r\n吊りボルト,全ねじ,SS400,M10,本,32010101000000"), 12));
  EXPECT_EQ(table.CodeFor(u"フランジ", u"SS400"), u"Z9999999999999");
  EXPECT_EQ(table.CodeFor(u"吊りボルト", u"ss400"), u"32010101000000");
  EXPECT_EQ(table.CodeFor(u"吊りボルト", u"SUS304"), u"Z9999999999999");
  EXPECT_EQ(BMaterialTable().CodeFor(u"吊りボルト", u"SS400"), u"Z9999999999999");
}

TEST(ChoiceLists, BMaterialMatchCountsOnlyWhereColumn5HasAnEntry) {
  // The last line has no column 5: its match does not count; a line before it that lacks
  // column 5 has an empty code.
  BMaterialTable table(ColumnLists(ParseConfigTable(u"A,x,M\r\nB,x,M,s,u,CODE-B\r\nC,x,M,s,u\r\nC,x,M,s,u,CODE-C2"), 12));
  EXPECT_EQ(table.CodeFor(u"A", u"M"), u"Z9999999999999");
  EXPECT_EQ(table.CodeFor(u"B", u"M"), u"CODE-B");
  EXPECT_EQ(table.CodeFor(u"C", u"M"), u"Z9999999999999");
  BMaterialTable shortEnd(ColumnLists(ParseConfigTable(u"A,x,M\r\nD,x,M,s,u,CODE-D"), 12));
  EXPECT_EQ(shortEnd.CodeFor(u"A", u"M"), u"Z9999999999999");
  BMaterialTable trailing(ColumnLists(ParseConfigTable(u"D,x,M,s,u,CODE-D\r\nA,x,M"), 12));
  EXPECT_EQ(trailing.CodeFor(u"A", u"M"), u"Z9999999999999");
  EXPECT_EQ(trailing.columns().column(5).size(), 1u);
}

TEST(ChoiceLists, AttributeIdTableGroupsAndTheKeysOfTheFillRule) {
  AttributeIdTable table(ParseConfigTable(u"S501,給水設備,給水\r\ns501,排水設備,排水\r\nS040,1,保温あり\r\nSC01,0,共通"));
  ColumnLists s501 = table.Group(u"S501");
  EXPECT_EQ(s501.column(2), (V{u"給水", u"排水"}));
  EXPECT_EQ(s501.column(1), (V{u"給水設備", u"排水設備"}));
  EXPECT_EQ(table.Group(u"S040").column(2), (V{u"保温あり"}));
  EXPECT_EQ(table.AllValues(), (V{u"給水", u"排水", u"保温あり", u"共通"}));
}

