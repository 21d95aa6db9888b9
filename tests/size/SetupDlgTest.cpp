// "注記設定": the size table settings dialog, opened from the size setting dialog by script.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "headless/HeadlessDialogs.hpp"
#include "headless/HeadlessUi.hpp"
#include "size/SetupDlg.hpp"
#include "support/SizeDialogSite.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::string kOpenSetup = "click 201:201\n";
const std::string kWrongInput = Box("入力値が間違っています。", "stop");
const std::string kHeightOverSpacing = Box("文字高さが行間隔より大きいです。", "stop");
const std::string kClosedWithOk = R"({"event":"enddialog","id":202,"result":1})";

std::string Enter(const std::string& height, const std::string& width, const std::string& spacing) {
  return "type 202:387 \"" + height + "\"\ntype 202:388 \"" + width + "\"\ntype 202:389 \"" + spacing + "\"\nclick 202:1\n";
}

// Values other than the ones the tests enter, so that a value that was not written shows.
void StoreOthers(SizeDialogSite& s) {
  ASSERT_TRUE(s.settings.WriteSizeTable({123, 45, 678}).ok());
}

Text Stored(SizeDialogSite& s, const SettingKey& key) { return s.settings.Read(key).text; }

}  // namespace

TEST(SetupDialog, ShowsTheStoredHundredthsInTheUnitsOfTheDialog) {
  SizeDialogSite s;
  ScriptRun run = s.Run(kOpenSetup + "dump 202\nclose 202\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"dialog","id":202,"caption":"ｻｲｽﾞ表の設定","modal":true})")) << run.All();
  EXPECT_EQ(run.Count(R"({"id":387,"kind":"edit","text":"3.5")"), 1u) << run.All();
  EXPECT_EQ(run.Count(R"({"id":388,"kind":"edit","text":"2.8")"), 1u);
  EXPECT_EQ(run.Count(R"({"id":389,"kind":"edit","text":"5")"), 1u);
}

TEST(SetupDialog, Entering3_5_2_8And5Stores350_280And500) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + Enter("3.5", "2.8", "5"));
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kClosedWithOk)) << run.All();
  EXPECT_EQ(Stored(s, kCharHeightKey), u"350");
  EXPECT_EQ(Stored(s, kCharWidthKey), u"280");
  EXPECT_EQ(Stored(s, kRowSpacingKey), u"500");
}

TEST(SetupDialog, HeightEqualToTheSpacingIsAccepted) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + Enter("5", "2.8", "5"));
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count("\"messagebox\""), 0u) << run.All();
  EXPECT_TRUE(run.Has(kClosedWithOk));
  EXPECT_EQ(Stored(s, kCharHeightKey), u"500");
  EXPECT_EQ(Stored(s, kRowSpacingKey), u"500");
}

TEST(SetupDialog, HeightAboveTheSpacingIsRefusedAndTheDialogStaysOpen) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + Enter("5.01", "2.8", "5") + "answer OK\ndump 202:387\nclose 202\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kHeightOverSpacing)) << run.All();
  EXPECT_EQ(run.Count(R"("id":387,"kind":"edit","text":"5.01")"), 1u) << "still open with the text as typed";
  EXPECT_FALSE(run.Has(kClosedWithOk));
  EXPECT_EQ(Stored(s, kCharHeightKey), u"123");
}

TEST(SetupDialog, AWidthOfAbcGivesTheWrongInputMessage) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + Enter("3.5", "abc", "5") + "answer OK\nclose 202\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(kWrongInput)) << run.All();
  EXPECT_FALSE(run.Has(kClosedWithOk));
  EXPECT_EQ(Stored(s, kCharWidthKey), u"45");
}

TEST(SetupDialog, AWidthLargerThanTheSpacingIsAccepted) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + Enter("3.5", "9", "5"));
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_EQ(run.Count("\"messagebox\""), 0u) << run.All();
  EXPECT_EQ(Stored(s, kCharWidthKey), u"900");
}

TEST(SetupDialog, CancelStoresNothing) {
  SizeDialogSite s;
  StoreOthers(s);
  ScriptRun run = s.Run(kOpenSetup + "type 202:387 \"4\"\nclick 202:2\n");
  ASSERT_TRUE(run.ok) << run.All();
  EXPECT_TRUE(run.Has(R"({"event":"enddialog","id":202,"result":2})"));
  EXPECT_EQ(Stored(s, kCharHeightKey), u"123");
}

TEST(SetupDialog, IntegersReadAsTheBitsOfDoublesGiveTheTinyNumbersShown) {
  EXPECT_EQ(FormatIntegerBitsAsReal(3), u"1.4822e-323");
  EXPECT_EQ(FormatIntegerBitsAsReal(2), u"9.88131e-324");
  EXPECT_EQ(FormatIntegerBitsAsReal(5), u"2.47033e-323");
}

// Without a data folder the size setting dialog never opens; the settings dialog is run on
// its own here, in the headless host.
TEST(SetupDialog, WithoutADataFolderItSaysSoShowsTheTinyNumbersAndOkWritesNothing) {
  Site site(u"", false);
  std::ostringstream out;
  Transcript transcript{out};
  ScriptRunner runner(u"answer OK\ndump 202\nclick 202:1\n", transcript);
  headless::HeadlessDialogs dialogs{runner, transcript};
  headless::HeadlessUi ui{runner, transcript};
  CSetupDlg setup(*site.folders, {dialogs, ui});
  EXPECT_EQ(setup.DoModal(), kIdOk);
  std::vector<std::string> events = Lines(out.str());
  auto has = [&](const std::string& e) { return std::find(events.begin(), events.end(), e) != events.end(); };
  EXPECT_TRUE(has(Box("Excelﾌｧｲﾙのﾊﾟｽが設定されていません.", "stop"))) << out.str();
  EXPECT_NE(out.str().find(R"({"id":387,"kind":"edit","text":"1.4822e-323")"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find(R"({"id":388,"kind":"edit","text":"9.88131e-324")"), std::string::npos);
  EXPECT_NE(out.str().find(R"({"id":389,"kind":"edit","text":"2.47033e-323")"), std::string::npos);
  EXPECT_EQ(std::count_if(events.begin(), events.end(), [](const std::string& e) { return e.find("messagebox") != std::string::npos; }), 1);
  EXPECT_FALSE(std::filesystem::exists(site.dir / "data" / std::filesystem::path(u8"標準図設定.ini")));
}
