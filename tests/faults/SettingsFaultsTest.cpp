// Settings that cannot work, through the whole tqstd process: each is named with its key and
// value, and every command ends promptly.
#include <gtest/gtest.h>

#include "InputFaultsRun.hpp"
#include "support/CodePages.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// A grid no search of every frame could finish: frames of no width, 2e9 × 2e9 of them.
const std::u16string kEndlessGrid =
    u"[標準図]\r\n標準図番号ﾚｲﾔ=5\r\n縦ﾌﾚｰﾑ数=2000000000\r\n横ﾌﾚｰﾑ数=2000000000\r\nﾌﾚｰﾑ幅=0\r\nﾌﾚｰﾑ高さ=-1\r\n";

void ExpectGridNamed(const RunResult& r) {
  ASSERT_NE(r.status, kTimedOut) << "the command did not end";
  EXPECT_NE(r.out.find("WARNING:ﾌﾚｰﾑ幅=0 (標準図設定.ini): a frame width must be greater than 0"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("WARNING:ﾌﾚｰﾑ高さ=-1 (標準図設定.ini): a frame height must be greater than 0"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("WARNING:縦ﾌﾚｰﾑ数=2000000000 (標準図設定.ini): the count of frame rows must be from 1 to 10000"),
            std::string::npos)
      << r.out;
  EXPECT_NE(r.out.find("WARNING:横ﾌﾚｰﾑ数=2000000000"), std::string::npos) << r.out;
}

}  // namespace

TEST(SettingsFaults, SheetsWithAFrameOfNoSizeAndEndlessCountsEndsAndNamesTheKeys) {
  SettingsSite s(kEndlessGrid);
  RunResult r = RunTqstdWithin(30, "sheets " + s.Drawing() + s.Ini());
  ExpectGridNamed(r);
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("\tM-101\t-\t"), std::string::npos) << r.out;  // in no frame
}

TEST(SettingsFaults, LocateWithAFrameOfNoSizeAndEndlessCountsEndsAndNamesTheKeys) {
  SettingsSite s(kEndlessGrid);
  RunResult r = RunTqstdWithin(30, "locate " + s.Drawing() + " 1000 1000" + s.Ini());
  ExpectGridNamed(r);
  EXPECT_NE(r.out.find("Error:標準図枠の範囲外です。"), std::string::npos) << r.out;
}

TEST(SettingsFaults, InfoAtAPointWithAFrameOfNoSizeAndEndlessCountsEndsAndNamesTheKeys) {
  SettingsSite s(kEndlessGrid);
  RunResult r = RunTqstdWithin(30, "info " + s.Drawing() + " --at 1000,1000" + s.Ini());
  ExpectGridNamed(r);
}

TEST(SettingsFaults, MarkWithAFrameOfNoSizeAndEndlessCountsEndsAndLeavesTheDrawing) {
  SettingsSite s(kEndlessGrid);
  std::string before = s.DrawingBytes();
  RunResult r = RunTqstdWithin(30, "mark " + s.Drawing() + s.Ini());
  ExpectGridNamed(r);
  EXPECT_NE(r.out.find("nothing to mark; the drawing is left as it was"), std::string::npos) << r.out;
  EXPECT_EQ(s.DrawingBytes(), before);
}

TEST(SettingsFaults, ChangeColourNoDrawingCanHoldIsRefusedNamingTheKeyAndNeverWritten) {
  for (const char16_t* value : {u"300", u"-5"}) {
    SettingsSite s(u"[標準図]\r\n変更色=" + std::u16string(value) + u"\r\n");
    std::string before = s.DrawingBytes();
    RunResult r = RunTqstdWithin(30, "mark " + s.Drawing() + s.Ini());
    EXPECT_EQ(r.status, 1) << r.out;
    EXPECT_NE(r.out.find("変更色=\"" + ToUtf8(value) + "\" (標準図設定.ini): a colour number must be from 0 (by block) to 256"),
              std::string::npos)
        << r.out;
    EXPECT_EQ(s.DrawingBytes(), before);
    EXPECT_FALSE(std::filesystem::exists(s.site / "drawings" / u8"設備標準図.dxf.bak"));
    EXPECT_FALSE(std::filesystem::exists(s.site / "drawings" / u8"設備標準図.bak"));
  }
}

TEST(SettingsFaults, MissingSystemFolderIsNamedWithAFailingExit) {
  SiteCopy s;
  std::filesystem::remove_all(s.site / "system");
  for (const std::string& command : {"takeoff " + s.Drawing(), "takeoff --kind cinet " + s.Drawing(),
                                     "takeoff --kind aggregate " + s.Drawing(), std::string("choices")}) {
    RunResult r = RunTqstdWithin(60, command + s.Ini());
    EXPECT_EQ(r.status, 1) << command << '\n' << r.out;
    EXPECT_NE(r.out.find("the system folder is missing: "), std::string::npos) << command << '\n' << r.out;
    EXPECT_EQ(r.out.find("nothing to output"), std::string::npos) << r.out;
  }
}

TEST(SettingsFaults, Utf16SettingsFileWithoutAByteOrderMarkIsRead) {
  SettingsSite s(u"");
  s.WriteSettings(EncodeFile(u"[標準図]\r\n縦ﾌﾚｰﾑ数=7\r\n横ﾌﾚｰﾑ数=8\r\n", FileEncoding::Utf16LeBom, Cp932(), false));
  RunResult r = RunTqstdWithin(30, "settings" + s.Ini());
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("[標準図] 縦ﾌﾚｰﾑ数 = 7\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("[標準図] 横ﾌﾚｰﾑ数 = 8\n"), std::string::npos) << r.out;
}
