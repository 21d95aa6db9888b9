#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "base/Lookup.hpp"
#include "takeoff/ReferenceTables.hpp"
#include "support/FakeHost.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;
using V = std::vector<Text>;

namespace {

struct Installation {
  TempDir dir;
  std::unique_ptr<FakeHost> host;
  std::unique_ptr<Folders> folders;
  explicit Installation(bool exportsConfigData = true) {
    std::filesystem::create_directories(dir / "system/拾い");
    std::filesystem::create_directories(dir / "system/Addin/標準図");
    std::filesystem::create_directories(dir / "parts");
    dir.Write("Velum.ini", EncodeCodePage(u"[環境設定]\r\nｼｽﾃﾑ=system\r\n標準部品=parts\r\n[Custom]\r\n標準図ﾃﾞｰﾀ=data\r\n", "CP932"));
    dir.Write("parts/属性IDパラメータ.csv", EncodeCodePage(u"sc01,0,共通\r\nSC02,0,無視\r\nSC01,1,給水用\r\nS501,給水設備,給水\r\nXX,1,x", "CP932"));
    dir.Write("system/拾い/CI-NETコード.csv", "21010101000000,SGP\r\n");
    dir.Write("system/拾い/工事区分コードテーブル.csv", EncodeCodePage(u"給水設備,21\r\n", "CP932"));
    dir.Write("system/Addin/標準図/標準図用B材設定.csv", EncodeCodePage(u"吊りボルト,,SS400,M10,本,32010101000000\r\n", "CP932"));
    host = std::make_unique<FakeHost>(dir.TextPath("Velum.ini"), exportsConfigData);
    folders = std::make_unique<Folders>(*host, host->codePage());
  }
};

}  // namespace

TEST(ReferenceTables, AnAttributeIdInLowerCaseIsTakenAsItsGroup) {
  Installation site;
  ReferenceTables t = LoadReferenceTables(*site.folders);
  EXPECT_EQ(t.Group(u"SC01").column(2), (V{u"共通", u"給水用"}));
}

TEST(ReferenceTables, ALineWithSC02IsIgnored) {
  Installation site;
  ReferenceTables t = LoadReferenceTables(*site.folders);
  EXPECT_TRUE(t.Group(u"SC02").column(2).empty());
  for (const auto& [id, group] : t.attributeGroups)
    for (const Text& v : group.column(2)) EXPECT_NE(v, u"無視") << ToUtf8(id);
}

TEST(ReferenceTables, AnAbsentTableYieldsEmptyListsAndTheOthersStillLoad) {
  Installation site;
  ReferenceTables t = LoadReferenceTables(*site.folders);
  EXPECT_TRUE(t.memberCinet.empty());
  EXPECT_TRUE(t.outputFormat.empty());
  EXPECT_EQ(t.bSettings.column(5), (V{u"32010101000000"}));
  EXPECT_EQ(t.constructionCategory.column(1), (V{u"21"}));
  EXPECT_EQ(t.rowTables[0].size(), 1u);
  EXPECT_EQ(TableLookup(u"x", t.memberCinet.column(0), t.memberCinet.column(1)), u"");
}

TEST(ReferenceTables, WithoutTheHostExportTheFiveRowTablesAreEmptyWhileTheOthersLoad) {
  Installation site(false);
  ReferenceTables t = LoadReferenceTables(*site.folders);
  for (const ConfigTable& rows : t.rowTables) EXPECT_TRUE(rows.empty());
  EXPECT_EQ(t.constructionCategory.column(1), (V{u"21"}));
  EXPECT_FALSE(t.bSettings.empty());
}

TEST(ReferenceTables, TwoLinesWithTheSameKeyTheEarlierOneIsUsed) {
  ColumnLists t(ParseConfigTable(u"k,first\nk,second"), 2);
  EXPECT_EQ(TableLookup(u"K", t.column(0), t.column(1)), u"first");
}

TEST(ReferenceTables, AKeyOnALineWithoutValueColumnGivesTheEmptyTextNotALaterValue) {
  ColumnLists t(ParseConfigTable(u"a,1\nc\nc,3\nd,4"), 2);
  EXPECT_EQ(TableLookup(u"c", t.column(0), t.column(1)), u"");
  EXPECT_EQ(TableLookup(u"d", t.column(0), t.column(1)), u"4");
  ColumnLists last(ParseConfigTable(u"a,1\nb"), 2);
  EXPECT_EQ(last.column(1).size(), 1u);
  EXPECT_EQ(TableLookup(u"b", last.column(0), last.column(1)), u"");
}
