#include <gtest/gtest.h>

#include "support/DamagedDrawings.hpp"
#include "support/RunCommand.hpp"
#include "support/TempDir.hpp"

using namespace tq::test;

TEST(TqstdDxfInfo, DescribesADrawing) {
  auto r = RunTqstd(std::string("dxf-info ") + TQ_FIXTURES + "/dxf/ezdxf_R2004.dxf");
  EXPECT_EQ(r.status, 0) << r.out;
  for (const char* expected : {"version: AC1018 (R2004)", "encoding: windows-31j ($DWGCODEPAGE ANSI_932)", "  TEXT 3",
                               "  凍結 frozen", "  ロック locked", "  TQ_STDINF01 (on 1 entities)",
                               "strict reading: no problem", "problems found by the recover reading: 0"})
    EXPECT_NE(r.out.find(expected), std::string::npos) << expected << "\n" << r.out;
}

TEST(TqstdDxfInfo, ListsTheProblemsOfABrokenDrawing) {
  TempDir dir;
  std::string bytes = tq::ReadFileBytes(std::string(TQ_FIXTURES) + "/dxf/ezdxf_R12.dxf").value();
  dir.Write("broken.dxf", bytes.substr(0, bytes.size() / 2));
  auto r = RunTqstd("dxf-info " + (dir / "broken.dxf").string());
  EXPECT_EQ(r.status, 3) << r.out;
  EXPECT_NE(r.out.find("strict reading fails: line "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("does not end with \"0 EOF\""), std::string::npos) << r.out;
}

TEST(TqstdDxfInfo, GoodDrawingsOfEveryReleasePassEveryCheckWithExitStatusZero) {
  for (const char* release : {"R12", "R2000", "R2004", "R2010", "R2018"}) {
    auto r = RunTqstd(std::string("dxf-info ") + TQ_FIXTURES + "/dxf/ezdxf_" + release + ".dxf");
    EXPECT_EQ(r.status, 0) << release << "\n" << r.out;
    EXPECT_NE(r.out.find("errors found by the checks: 0\n"), std::string::npos) << release << "\n" << r.out;
  }
  auto example = RunTqstd(std::string("dxf-info ") + Quoted(U8Path(TQ_EXAMPLE_SITE) / "drawings" / u8"設備標準図.dxf"));
  EXPECT_EQ(example.status, 0) << example.out;
}

// Each damage is named with its line, and the exit status says an error was found.
TEST(TqstdDxfInfo, NamesEachDamageWithItsLineAndExitsWithThree) {
  TempDir dir;
  for (const DamagedDrawing& d : DamagedDrawings()) {
    dir.Write(d.name + ".dxf", d.bytes);
    auto r = RunTqstd("dxf-info " + (dir / (d.name + ".dxf")).string());
    EXPECT_EQ(r.status, 3) << d.name << "\n" << r.out;
    EXPECT_NE(r.out.find("  " + d.Listed()), std::string::npos) << d.name << ": expected " << d.Listed() << "\n" << r.out;
  }
}

TEST(TqstdDxfInfo, HelpDocumentsTheExitStatus) {
  auto r = RunTqstd("dxf-info --help");
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("3 when\nthe drawing holds an error"), std::string::npos) << r.out;
}

TEST(TqstdDxfInfo, UnreadableDrawingIsAUserError) {
  auto r = RunTqstd("dxf-info /nonexistent.dxf");
  EXPECT_EQ(r.status, 1) << r.out;
}

TEST(TqstdDxfInfo, MissingDrawingArgumentIsAUsageError) {
  auto r = RunTqstd("dxf-info");
  EXPECT_EQ(r.status, 2) << r.out;
}
