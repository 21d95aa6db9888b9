#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "site/Settings.hpp"
#include "support/FakeHost.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::FakeHost;
using tq::test::TempDir;

namespace {

// An installation in a temporary folder: host ini and data folder.
struct Site {
  TempDir dir;
  std::unique_ptr<FakeHost> host;
  std::unique_ptr<Folders> folders;

  explicit Site(const std::u16string& dataFolderValue, const std::u16string& settings = u"") {
    std::filesystem::create_directories(dir / "data");
    dir.Write("Velum.ini", EncodeCodePage(u"[環境設定]\r\nｼｽﾃﾑ=system\r\n標準部品=parts\r\n[Custom]\r\n標準図ﾃﾞｰﾀ=" +
                                              dataFolderValue + u"\r\n", "CP932"));
    if (!settings.empty()) dir.Write("data/標準図設定.ini", EncodeCodePage(settings, "CP932"));
    host = std::make_unique<FakeHost>(dir.TextPath("Velum.ini"));
    folders = std::make_unique<Folders>(*host, host->codePage());
  }
  StdSettings settings() const { return StdSettings(*folders); }
};

}  // namespace

TEST(Settings, DataFolderWithOrWithoutTrailingBackslashGivesTheSameSettingsPath) {
  Site site(u"data");
  Text without = site.folders->SettingsFile();
  site.dir.Write("Velum.ini", EncodeCodePage(u"[Custom]\r\n標準図ﾃﾞｰﾀ=data\\\r\n", "CP932"));
  Text with = site.folders->SettingsFile();
  EXPECT_EQ(with, without);
  EXPECT_TRUE(EndsWith(with, u"data\\標準図設定.ini"));
}

TEST(Settings, ChangeColourAbcGivesZeroNotTheDefault) {
  Site site(u"data", u"[標準図]\r\n変更色=abc\r\n");
  EXPECT_EQ(site.settings().ReadChangeColour().value(), 0);
}

TEST(Settings, ChangeColourDefaultsToOne) {
  Site site(u"data", u"[標準図]\r\n");
  EXPECT_EQ(site.settings().ReadChangeColour().value(), 1);
  Site noFolder(u"");
  EXPECT_EQ(noFolder.settings().ReadChangeColour().value(), 1);
}

TEST(Settings, EmptyVerticalFrameCountKeepsThree) {
  Site site(u"data", u"[標準図]\r\n縦ﾌﾚｰﾑ数=\r\n横ﾌﾚｰﾑ数=5\r\nﾌﾚｰﾑ原点X=100.5\r\n");
  FrameGridValues grid = site.settings().ReadFrameGrid();
  EXPECT_EQ(grid.rows, 3);
  EXPECT_EQ(grid.columns, 5);
  EXPECT_DOUBLE_EQ(grid.originX, 100.5);
  EXPECT_DOUBLE_EQ(grid.width, 28000.0);
  EXPECT_FALSE(grid.dataFolderMissing);
}

TEST(Settings, FrameGridWithoutDataFolderKeepsTheDefaults) {
  Site site(u"");
  FrameGridValues grid = site.settings().ReadFrameGrid();
  EXPECT_TRUE(grid.dataFolderMissing);
  EXPECT_EQ(grid.rows, 3);
  EXPECT_DOUBLE_EQ(grid.height, 19800.0);
}

TEST(Settings, ValuesWrittenAreReadAgainAtTheNextUse) {
  Site site(u"data", u"[標準図]\r\n文字高さ=350\r\n");
  StdSettings settings = site.settings();
  ASSERT_TRUE(settings.WriteSizeTable({400, 320.5, 600}));
  SizeTableValues v = settings.ReadSizeTable();
  EXPECT_DOUBLE_EQ(v.charHeight, 400);
  EXPECT_DOUBLE_EQ(v.charWidth, 320.5);
  EXPECT_DOUBLE_EQ(v.rowSpacing, 600);
  EXPECT_EQ(settings.Read(kCharWidthKey).text, u"320.5");
}

TEST(Settings, LayerSettingsDefaultToFiveAndFour) {
  Site site(u"data");
  std::optional<LayerSettings> layers = site.settings().LoadLayerSettings();
  ASSERT_TRUE(layers);
  EXPECT_EQ(layers->sheetNumberLayer, u"5");
  EXPECT_EQ(layers->basePointLayer, u"4");
}

TEST(Settings, LayerSettingsFailWithoutDataFolder) {
  Site site(u"");
  EXPECT_FALSE(site.settings().LoadLayerSettings().has_value());
}

TEST(Settings, WorkbookValuesHaveTheirDefaults) {
  Site site(u"data", u"[EXCEL]\r\nサイズヘッダ行=\r\n");
  WorkbookValues w = site.settings().ReadWorkbook();
  EXPECT_EQ(w.sizeHeaderRow, 30);
  EXPECT_EQ(w.quantityColumn, u"AZ");
}

TEST(Settings, ReadMarksWhereTheDefaultApplied) {
  Site site(u"data", u"[標準図]\r\n標準図番号ﾚｲﾔ=STD-NO\r\n");
  EXPECT_EQ(site.settings().Read(kSheetNumberLayerKey).text, u"STD-NO");
  EXPECT_FALSE(site.settings().Read(kSheetNumberLayerKey).isDefault);
  EXPECT_TRUE(site.settings().Read(kBasePointLayerKey).isDefault);
}

TEST(Folders, RelativeFoldersAreTakenFromTheHostIniFolder) {
  Site site(u"data");
  EXPECT_EQ(ToFsPath(site.folders->StdDataFolder()), site.dir / "data");
  EXPECT_EQ(ToFsPath(*site.folders->AddinDataFolder()), site.dir / "system" / "Addin" / u8"標準図");
  EXPECT_EQ(ToFsPath(site.folders->TakeoffTableFile(u"CI-NETコード.csv")), site.dir / "system" / u8"拾い" / u8"CI-NETコード.csv");
}

TEST(Folders, UnreadableSystemKeyLeavesDerivedPathsEmpty) {
  TempDir dir;
  dir.Write("Velum.ini", "[Custom]\r\n");
  FakeHost host(dir.TextPath("Velum.ini"), false);
  Folders folders(host, host.codePage());
  EXPECT_FALSE(folders.SystemFolder().has_value());
  EXPECT_EQ(folders.AddinDataFile(u"出力区分.txt"), u"");
  EXPECT_EQ(folders.HostSystemFolder(), u"");
}
