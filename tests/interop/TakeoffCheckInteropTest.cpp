// What "拾い確認" registers, read back by ezdxf.
#include <gtest/gtest.h>

#include "support/Listing.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq::test;

TEST(TakeoffCheckInterop, TheExampleScriptsRegisteredRowsAreReadBackByEzdxfWithACleanAudit) {
  SiteCopy copy;
  std::string script = std::string(TQ_SOURCE_DIR) + "/examples/scripts/拾い確認_集計と登録.txt";
  RunResult run = RunCommand("cd '" + copy.dir.path().string() + "' && " + TQSTD_PATH + copy.Ini() + " script " + copy.Drawing() +
                             " '" + script + "'");
  ASSERT_EQ(run.status, 0) << run.out;
  ASSERT_NE(run.out.find(R"({"event":"enddialog","id":2000,"result":1})"), std::string::npos) << run.out;
  ASSERT_NE(run.out.find(R"({"event":"saved")"), std::string::npos) << run.out;
  RunResult read = RunEzdxfTool("read " + copy.Drawing());
  ASSERT_EQ(read.status, 0) << read.out;
  Listing listing = ParseListing(read.out);
  EXPECT_EQ(listing.auditErrors, 0) << read.out;
  // The first item's use code and the third item's member, as the script changed them, and
  // every shown default stored with them.
  bool useCode = false, member = false;
  for (const auto& [key, lines] : listing.xdata) {
    if (key.second != "TQ_STDINF01") continue;
    for (const std::string& line : lines) {
      useCode = useCode || line.rfind("AC-1,空調機,冷温水,A,,配管用炭素鋼鋼管,50,A,,,,,SGP,白,4.5,m,,,21010101000000,給水用,新設,昼間,自社手配,なし,", 0) == 0;
      member = member || line.rfind(",,冷温水,,,吊りボルトM12,10,,,,,,SS400,M12,6,本,,,,共通,新設,昼間,自社手配,なし,", 0) == 0;
    }
  }
  EXPECT_TRUE(useCode) << read.out;
  EXPECT_TRUE(member) << read.out;
  // The aggregate the script wrote beside the drawing's folder.
  EXPECT_GT(copy.dir.Read("拾い確認_集計.txt").size(), 100u);
}
