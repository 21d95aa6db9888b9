// The example script of "情報確認" run by tqstd on a copy of the example installation; the
// drawing it saves is read back by ezdxf.
#include <gtest/gtest.h>

#include "support/Listing.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq::test;

namespace {
const std::string kSheet = "42";  // the handle of M-101's sheet-number text
}

TEST(InfoCheckScript, TheExampleScriptEditsAddsDeletesAndMovesRowsOfM101AndEzdxfReadsTheResult) {
  SiteCopy copy;
  std::string drawing = (copy.site / "drawings" / "設備標準図.dxf").string();
  RunResult before = RunEzdxfTool("read '" + drawing + "'");
  ASSERT_EQ(before.status, 0) << before.out;
  Listing old = ParseListing(before.out);

  RunResult run = RunTqstd(copy.Ini() + " script " + copy.Drawing() + " '" + TQ_SOURCE_DIR + "/examples/scripts/情報確認.txt'");
  ASSERT_EQ(run.status, 0) << run.out;
  EXPECT_NE(run.out.find(R"({"event":"enddialog","id":1000,"result":1})"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(R"({"event":"saved","path":)"), std::string::npos) << run.out;

  RunResult after = RunEzdxfTool("read '" + drawing + "'");
  ASSERT_EQ(after.status, 0) << after.out;
  Listing listing = ParseListing(after.out);
  EXPECT_EQ(listing.auditErrors, 0) << after.out;

  std::vector<std::string> oldLines = old.xdata[{kSheet, "TQ_STDINF01"}];
  std::vector<std::string> lines = listing.xdata[{kSheet, "TQ_STDINF01"}];
  ASSERT_EQ(oldLines.size(), 7u);
  ASSERT_EQ(lines.size(), 7u) << after.out;
  EXPECT_EQ(lines[0], oldLines[0]);
  EXPECT_EQ(lines[1], oldLines[1]);
  // Row 0's remarks (empty) became its key when row 1 was taken over.
  EXPECT_EQ(lines[2], "AC-1,空調機,冷温水,A,,配管用炭素鋼鋼管,50,A,,,,,SGP,白,4.5,m,,,,,,,,,");
  EXPECT_EQ(lines[3], "2,,冷温水,A,,配管用炭素鋼鋼管,32,A,,,,,SGP,白,3.5,m,,,,,,,,,");
  EXPECT_EQ(lines[4], oldLines[4]);
  // The added row, moved above the insulation; unknown key, grid row 4: member 20 is "-".
  EXPECT_EQ(lines[5], ",,冷温水,別途,,支持金物,,,,,,,SS400,M10,2,組,,,,,-,,,,");
  EXPECT_EQ(lines[6], oldLines[5]);
  // The second record and the other sheets are as they were.
  EXPECT_EQ((listing.xdata[{kSheet, "TQ_STDINF02"}]), (old.xdata[{kSheet, "TQ_STDINF02"}]));
  EXPECT_EQ(listing.xdata.size(), old.xdata.size());
  for (const auto& [key, value] : old.xdata) {
    if (key.first == kSheet) continue;
    EXPECT_EQ(listing.xdata[key], value) << key.first << " " << key.second;
  }
}
