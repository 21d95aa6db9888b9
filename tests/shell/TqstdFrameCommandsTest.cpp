#include <gtest/gtest.h>

#include "support/RunCommand.hpp"
#include "support/TempDir.hpp"

using namespace tq::test;

namespace {
const std::string kExample = std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf";
const std::string kIni = std::string(" --ini ") + TQ_EXAMPLE_SITE + "/Velum.ini";
}  // namespace

TEST(TqstdSheets, EverySheetNumberTextWithItsFrameAndRecordCount) {
  auto r = RunTqstd("sheets '" + kExample + "'" + kIni);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("42\tM-101\t0,0\t2\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\tM-103\t0,2\t0\n"), std::string::npos) << r.out;  // full-width digits shown half-width
  EXPECT_NE(r.out.find("\tD-301\t2,2\t1\n"), std::string::npos) << r.out;
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 9);
}

TEST(TqstdLocate, FramePolygonAndSheetNumberText) {
  auto r = RunTqstd("locate '" + kExample + "' 30000 21000" + kIni);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("frame: 28000,19800 56000,19800 56000,39600 28000,39600 28000,19800\n"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\tM-105\n"), std::string::npos) << r.out;
}

TEST(TqstdLocate, PointOutsideTheGridPrintsTheMainDialogsMessage) {
  auto r = RunTqstd("locate '" + kExample + "' 200000 1000" + kIni);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "\nError:標準図枠の範囲外です。\n");
}

TEST(TqstdLocate, FrameWithoutSheetNumberTextPrintsTheMainDialogsMessage) {
  TempDir dir;
  std::string bytes = tq::ReadFileBytes(std::string(TQ_FIXTURES) + "/dxf/ezdxf_R2004.dxf").value();
  dir.Write("d.dxf", bytes);
  auto r = RunTqstd("locate " + (dir / "d.dxf").string() + " 1000 21000" + kIni);
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("\nｼｰﾄ番号が取得出来ません。\n"), std::string::npos) << r.out;
}

TEST(TqstdCheck, CountsAndTheStandardDrawingsWithoutInformation) {
  auto r = RunTqstd("check '" + kExample + "'" + kIni);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("with information: 6\nwithout information: 3\n情報が設定されていない標準図があります。\n"),
            std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\tM-103\n"), std::string::npos);
  EXPECT_NE(r.out.find("\tE-202\n"), std::string::npos);
}

TEST(TqstdCheck, DrawingWhereNoStandardDrawingCarriesInformation) {
  TempDir dir;
  dir.Write("d.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nTEXT\n  5\n1A\n  8\n5\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 40\n3.5\n  1\nA-1\n  0\nENDSEC\n  0\nEOF\n");
  auto r = RunTqstd("check " + (dir / "d.dxf").string() + kIni);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "\n情報設定済の標準図が見つかりません。\n");
  dir.Write("e.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n");
  r = RunTqstd("check " + (dir / "e.dxf").string() + kIni);
  EXPECT_EQ(r.out, "\n標準図が見つかりません。\n");
}

TEST(TqstdCheck, UnreadableDrawingIsAUserError) {
  TempDir dir;
  dir.Write("bad.dxf", "  0\nSECTION\n  2\nENTITIES\nnot a code\nx\n");
  auto r = RunTqstd("check " + (dir / "bad.dxf").string() + kIni);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("line 5"), std::string::npos) << r.out;
}

TEST(TqstdMark, MarkThenRestoreLeavesTheDrawingAsItWasBesidesTheRegisteredApplication) {
  TempDir dir;
  std::string original = tq::ReadFileBytes(tq::test::U8Path(kExample)).value();
  dir.Write("d.dxf", original);
  auto marked = RunTqstd("mark " + (dir / "d.dxf").string() + kIni);
  ASSERT_EQ(marked.status, 0) << marked.out;
  EXPECT_NE(marked.out.find("marked the frames of 3 standard drawings M-103 M-105 E-202"), std::string::npos) << marked.out;
  EXPECT_EQ(dir.Read("d.dxf.bak"), original);
  std::string afterMark = dir.Read("d.dxf");
  auto restored = RunTqstd("mark --restore " + (dir / "d.dxf").string() + " --sheet M-103 --sheet M-105 --sheet E-202" + kIni);
  ASSERT_EQ(restored.status, 0) << restored.out;
  // Marking registers "TQ_STDCHECK" once (a new APPID entry and the next handle); nothing else differs.
  std::string after = dir.Read("d.dxf");
  EXPECT_NE(after, afterMark);
  size_t appid = after.find("TQ_STDCHECK");
  ASSERT_NE(appid, std::string::npos);
  size_t entryStart = after.rfind("  0\nAPPID", appid), entryEnd = after.find("\n  0\n", appid) + 1;
  std::string withoutEntry = after.substr(0, entryStart) + after.substr(entryEnd);
  size_t seed = original.find("$HANDSEED");
  EXPECT_EQ(withoutEntry.substr(0, seed), original.substr(0, seed));
  size_t seedEnd = original.find("  9\n", seed + 10);
  EXPECT_EQ(withoutEntry.substr(withoutEntry.find("  9\n", seed + 10)), original.substr(seedEnd));
  // A second round leaves the file exactly as after the first.
  RunTqstd("mark " + (dir / "d.dxf").string() + kIni);
  RunTqstd("mark --restore " + (dir / "d.dxf").string() + " --sheet M-103 --sheet M-105 --sheet E-202" + kIni);
  EXPECT_EQ(dir.Read("d.dxf"), after);
}

TEST(TqstdMark, UnknownSheetNameIsAUserError) {
  TempDir dir;
  dir.Write("d.dxf", tq::ReadFileBytes(tq::test::U8Path(kExample)).value());
  auto r = RunTqstd("mark " + (dir / "d.dxf").string() + " --sheet X-999" + kIni);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("X-999"), std::string::npos);
}

TEST(TqstdMark, OutputToAnotherFileLeavesTheDrawingUntouched) {
  TempDir dir;
  std::string original = tq::ReadFileBytes(tq::test::U8Path(kExample)).value();
  dir.Write("d.dxf", original);
  auto r = RunTqstd("mark " + (dir / "d.dxf").string() + " -o " + (dir / "out.dxf").string() + kIni);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(dir.Read("d.dxf"), original);
  EXPECT_NE(dir.Read("out.dxf"), original);
}

TEST(TqstdMark, NothingToMarkLeavesTheDrawingAndMakesNoBackup) {
  TempDir dir;
  std::string original = tq::ReadFileBytes(tq::test::U8Path(kExample)).value();
  dir.Write("d.dxf", original);
  auto r = RunTqstd("mark --restore " + (dir / "d.dxf").string() + kIni);
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("nothing to restore"), std::string::npos) << r.out;
  EXPECT_FALSE(std::filesystem::exists(dir / "d.dxf.bak"));
  EXPECT_EQ(dir.Read("d.dxf"), original);
}
