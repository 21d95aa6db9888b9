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

TEST(Settings, ChangeColourOutsideWhatAnEntityCanHoldIsRefusedNamingTheKeyAndValue) {
  for (const char16_t* value : {u"300", u"-5", u"257"}) {
    Site site(u"data", u"[標準図]\r\n変更色=" + Text(value) + u"\r\n");
    Result<int> colour = site.settings().ReadChangeColour();
    ASSERT_FALSE(colour) << ToUtf8(value);
    EXPECT_EQ(colour.error().code, ErrorCode::InvalidValue);
    EXPECT_NE(colour.error().message.find(u"変更色=\"" + Text(value) + u"\""), Text::npos) << colour.error().Describe();
  }
  for (int value : {0, 7, 255, 256}) {
    Site site(u"data", u"[標準図]\r\n変更色=" + FromUtf8(std::to_string(value)) + u"\r\n");
    EXPECT_EQ(site.settings().ReadChangeColour().value(), value);
  }
}

TEST(Settings, ChangeColourRefusalShowsControlBytesOfTheValueEscaped) {
  Site site(u"data", u"[標準図]\r\n変更色=-1\u0007\r\n");
  Result<int> colour = site.settings().ReadChangeColour();
  ASSERT_FALSE(colour);
  EXPECT_NE(colour.error().message.find(u"変更色=\"-1\\x07\""), Text::npos) << colour.error().Describe();
  EXPECT_EQ(colour.error().message.find(u'\u0007'), Text::npos);
}

TEST(Settings, MissingSystemFolderIsNamedAsMissing) {
  Site site(u"data");
  Status missing = site.folders->CheckSystemFolder();
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error().code, ErrorCode::NotFound);
  EXPECT_NE(missing.error().message.find(u"the system folder is missing: "), Text::npos) << missing.error().Describe();
  EXPECT_NE(missing.error().message.find(u"system"), Text::npos);
  std::filesystem::create_directories(site.dir / "system");
  EXPECT_TRUE(site.folders->CheckSystemFolder());
  site.dir.Write("Velum.ini", EncodeCodePage(u"[Custom]\r\n標準図ﾃﾞｰﾀ=data\r\n", "CP932"));
  Status notSet = site.folders->CheckSystemFolder();
  ASSERT_FALSE(notSet);
  EXPECT_NE(notSet.error().message.find(u"the system folder is not set (section 環境設定, key ｼｽﾃﾑ"), Text::npos);
}

TEST(Settings, Utf16SettingsFileWithoutAByteOrderMarkIsRead) {
  Site site(u"data");
  site.dir.Write("data/標準図設定.ini", EncodeFile(u"[標準図]\r\n縦ﾌﾚｰﾑ数=4\r\nﾌﾚｰﾑ幅=1000\r\n", FileEncoding::Utf16LeBom,
                                                 site.host->codePage(), false));
  FrameGridValues grid = site.settings().ReadFrameGrid();
  EXPECT_EQ(grid.rows, 4);
  EXPECT_DOUBLE_EQ(grid.width, 1000);
}
