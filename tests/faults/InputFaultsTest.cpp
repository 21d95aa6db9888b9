// Input that is no drawing tqstd can read, through the whole process: each is named for what
// it is, and nothing a file holds reaches the console raw.
#include <gtest/gtest.h>

#include "InputFaultsRun.hpp"
#include "support/DxfText.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const std::string kIni = std::string(" --ini '") + TQ_EXAMPLE_SITE + "/Velum.ini'";

std::string ExampleBytes() { return ReadFileBytes(U8Path(std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf")).value(); }

// `sheets` on a file of the given bytes.
RunResult SheetsOf(const TempDir& dir, const std::string& name, const std::string& bytes) {
  dir.Write(name, bytes);
  return RunTqstdWithin(30, "sheets " + Quoted(dir / name) + kIni);
}

bool HasRawControlBytes(const std::string& text) {
  for (char c : text)
    if ((static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7F) return true;
  return false;
}

}  // namespace

TEST(InputFaults, FolderGivenAsADrawingIsNamedAsAFolder) {
  TempDir dir;
  std::filesystem::create_directories(dir / "plans.dxf");
  RunResult r = RunTqstdWithin(30, "sheets " + Quoted(dir / "plans.dxf") + kIni);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("plans.dxf: it is a folder"), std::string::npos) << r.out;
  EXPECT_EQ(r.out.find("bad_alloc"), std::string::npos) << r.out;
}

TEST(InputFaults, MissingDrawingIsNamedAsMissing) {
  TempDir dir;
  RunResult r = RunTqstdWithin(30, "sheets " + Quoted(dir / "none.dxf") + kIni);
  EXPECT_EQ(r.status, 1) << r.out;
  // The path, then the cause in the platform's own words ("No such file or directory" on POSIX).
  EXPECT_NE(r.out.find("none.dxf: cannot read "), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("none.dxf: "), r.out.rfind("none.dxf: ")) << r.out;
}

TEST(InputFaults, DwgDrawingIsNamedAndToldToBeSavedAsDxf) {
  TempDir dir;
  RunResult r = SheetsOf(dir, "plan.dwg", std::string("AC1032\0\0\0\0\0\x07\x1b", 13) + std::string(64, '\x01'));
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("a DWG drawing (version \"AC1032\"), not DXF; open it in the CAD program and save it as DXF"),
            std::string::npos)
      << r.out;
  EXPECT_FALSE(HasRawControlBytes(r.out)) << r.out;
}

TEST(InputFaults, BinaryDxfIsNamed) {
  TempDir dir;
  RunResult r = SheetsOf(dir, "b.dxf", std::string("AutoCAD Binary DXF\r\n\x1a\0", 22) + std::string("\0\0SECTION\0", 10));
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("a binary DXF file; save the drawing as ASCII DXF"), std::string::npos) << r.out;
  EXPECT_FALSE(HasRawControlBytes(r.out)) << r.out;
}

TEST(InputFaults, Utf16DrawingIsNamed) {
  TempDir dir;
  std::string utf16;
  for (char c : ExampleBytes().substr(0, 4000)) utf16 += std::string{c, '\0'};
  RunResult r = SheetsOf(dir, "u.dxf", utf16);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("a UTF-16 text file"), std::string::npos) << r.out;
  EXPECT_FALSE(HasRawControlBytes(r.out)) << r.out;
}

TEST(InputFaults, Utf8ByteOrderMarkBeforeTheFirstTagIsReadPast) {
  TempDir dir;
  RunResult r = SheetsOf(dir, "bom.dxf", "\xEF\xBB\xBF" + ExampleBytes());
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("42\tM-101\t0,0\t2\n"), std::string::npos) << r.out;
}

TEST(InputFaults, CrOnlyLineEndsAreNamed) {
  TempDir dir;
  std::string crOnly;
  for (char c : ExampleBytes())
    if (c != '\r') crOnly += c == '\n' ? '\r' : c;
  RunResult r = SheetsOf(dir, "cr.dxf", crOnly);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("its lines end with CR alone"), std::string::npos) << r.out;
  EXPECT_FALSE(HasRawControlBytes(r.out)) << r.out;
}

TEST(InputFaults, ControlBytesAndNulOfADrawingAreShownEscaped) {
  TempDir dir;
  std::string bytes = R12Drawing(Tags{{0, "LINE"}, {5, "A1"}, {8, "0"}, {10, std::string("1\x1b]0;pwned\x07\0", 12)}});
  RunResult r = SheetsOf(dir, "c.dxf", bytes);
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("found \"1\\x1B]0;pwned\\x07\\0\""), std::string::npos) << r.out;
  EXPECT_FALSE(HasRawControlBytes(r.out)) << r.out;
  // A line that is no group code, in the checker's list of problems too.
  dir.Write("d.dxf", "  0\nSECTION\n  2\nENTITIES\n\x1b[2Jx\n  0\nENDSEC\n  0\nEOF\n");
  RunResult info = RunTqstdWithin(30, "dxf-info " + Quoted(dir / "d.dxf") + kIni);
  EXPECT_NE(info.out.find("expected a group code (an integer), found \"\\x1B[2Jx\""), std::string::npos) << info.out;
  EXPECT_FALSE(HasRawControlBytes(info.out)) << info.out;
}
