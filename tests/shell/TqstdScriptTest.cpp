// tqstd script as a process: its exit statuses, its input, and its transcript.
#include <gtest/gtest.h>

#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq::test;

namespace {
std::string Example(const std::string& name) { return "'" + std::string(TQ_SOURCE_DIR) + "/examples/scripts/" + name + "'"; }
}  // namespace

TEST(TqstdScript, TheExampleScriptsRunToTheirEndWithStatus0) {
  for (const char* name : {"拾い確認.txt", "情報確認.txt", "設定.txt"}) {
#if !TQ_HAVE_CALC
    // 設定 registers through the workbook engine, which this build leaves out.
    if (std::string(name) == "設定.txt") continue;
#endif
    SiteCopy copy;
    auto r = RunCommand(std::string(TQSTD_PATH) + " script " + copy.Drawing() + " " + Example(name) + copy.Ini() + " --no-save");
    EXPECT_EQ(r.status, 0) << name << "\n" << r.out;
    EXPECT_EQ(r.out.find("\"event\":\"error\""), std::string::npos) << r.out;
  }
}

TEST(TqstdScript, TheInformationCheckScriptWalksThePickLoopThroughItsMessages) {
  SiteCopy copy;
  auto r = RunCommand(std::string(TQSTD_PATH) + " script " + copy.Drawing() + " " + Example("情報確認.txt") + copy.Ini());
  EXPECT_NE(r.out.find(R"({"event":"print","text":"\nError:標準図枠の範囲外です。\n"})"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(R"({"event":"print","text":"\nｼｰﾄ番号が取得出来ません。\n"})"), std::string::npos) << r.out;
}

TEST(TqstdScript, ALineThatCannotBeAppliedEndsTheRunWithStatus1AndAnErrorEvent) {
  SiteCopy copy;
  // The script comes on standard input from a file: "<" reads the same in sh and in cmd.exe.
  copy.dir.Write("s.txt", "command TQ_STD_INF\nclick 200:999\n");
  auto r = RunCommand(std::string(TQSTD_PATH) + " script " + copy.Drawing() + copy.Ini() + " < " + Quoted(copy.dir / "s.txt"));
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find(R"({"event":"error","line":2,"text":"the dialog 200 has no control 999"})"), std::string::npos) << r.out;
  EXPECT_FALSE(std::filesystem::exists(copy.site / "drawings" / u8"設備標準図.dxf.bak"));
}

TEST(TqstdScript, TheScriptEndingWhileAPromptWaitsIsAnError) {
  SiteCopy copy;
  copy.dir.Write("s.txt", "command TQ_STD_INF\nclick 200:202\n");
  auto r = RunCommand(std::string(TQSTD_PATH) + " script " + copy.Drawing() + " -" + copy.Ini() + " < " + Quoted(copy.dir / "s.txt"));
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find(R"({"event":"error","line":2,"text":"the script ended while a point prompt waits"})"), std::string::npos) << r.out;
}

TEST(TqstdScript, AMissingDrawingIsAUsageErrorWithStatus2) {
  auto r = RunTqstd("script");
  EXPECT_EQ(r.status, 2) << r.out;
}

TEST(TqstdScript, ADrawingThatCannotBeReadGivesStatus1) {
  SiteCopy copy;
  copy.dir.Write("s.txt", "command TQ_STD_INF\n");
  auto r = RunCommand(std::string(TQSTD_PATH) + " script " + Quoted(copy.dir / "none.dxf") + copy.Ini() + " < " + Quoted(copy.dir / "s.txt") + " 2>&1");
  EXPECT_EQ(r.status, 1) << r.out;
}
