// An output file that cannot be written whole leaves the previous one as it was.
#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "base/os/Os.hpp"
#include "output/EncodedWriter.hpp"
#include "output/FileOutput.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::TempDir;

namespace {

const CodePage& Cp932() {
  static const CodePage cp = CodePage::Open("CP932").value();
  return cp;
}

size_t FilesIn(const TempDir& dir) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(dir.path()), {}));
}

const std::vector<Text> kNewLines = {u"記号,数量,", u"AC-1,3.0,", u"AC-2,4.0,"};

// A takeoff longer than the file's write buffer: a write then fails while the lines are
// written out, not when they are flushed at the end.
std::vector<Text> LinesPastTheBuffer() {
  std::vector<Text> lines(kNewLines);
  while (lines.size() < 120000) lines.push_back(u"AC-1,3.0,");
  return lines;
}

}  // namespace

TEST(OutputFileFaults, AFullDiskLeavesThePreviousOutputWhole) {
  for (const std::vector<Text>& lines : {kNewLines, LinesPastTheBuffer()}) {
    SCOPED_TRACE(std::to_string(lines.size()) + " lines");
    TempDir dir;
    dir.Write("集計.txt", "the previous takeoff\r\n");
    os::FaultPlan faults;
    faults.writeFailsAtByte = 12;
    Status written = WriteOutputFile(dir / "集計.txt", lines, Cp932(), &faults);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, ErrorCode::CannotWrite);
    EXPECT_NE(written.error().Describe().find("cannot write"), std::string::npos) << written.error().Describe();
    EXPECT_EQ(dir.Read("集計.txt"), "the previous takeoff\r\n");
    EXPECT_EQ(FilesIn(dir), 1u);  // no temporary file, and no .bak for an output file
  }
}

TEST(OutputFileFaults, AFailingRenameLeavesThePreviousOutputWhole) {
  TempDir dir;
  dir.Write("集計.txt", "the previous takeoff\r\n");
  os::FaultPlan faults;
  faults.rename = os::Fault::AccessDenied;
  Status written = WriteOutputFile(dir / "集計.txt", kNewLines, Cp932(), &faults);
  ASSERT_FALSE(written);
  EXPECT_NE(written.error().Describe().find("cannot replace"), std::string::npos) << written.error().Describe();
  EXPECT_EQ(dir.Read("集計.txt"), "the previous takeoff\r\n");
  EXPECT_EQ(FilesIn(dir), 1u);
}

TEST(OutputFileFaults, AWholeWriteReplacesTheOutputWithoutABak) {
  TempDir dir;
  dir.Write("集計.txt", "the previous takeoff\r\n");
  ASSERT_TRUE(WriteOutputFile(dir / "集計.txt", kNewLines, Cp932()));
  EXPECT_EQ(dir.Read("集計.txt"), Cp932().Encode(u"記号,数量,\r\nAC-1,3.0,\r\nAC-2,4.0,\r\n"));
  EXPECT_EQ(FilesIn(dir), 1u);
}

TEST(OutputFileFaults, TheLastValuesFileIsReplacedWholeOrNotAtAll) {
  TempDir dir;
  dir.Write("ファイル出力前回値.dat", "1\r\n0\r\nA材\r\n");
  std::string before = dir.Read("ファイル出力前回値.dat");
  os::FaultPlan faults;
  faults.writeFailsAtByte = 3;
  Status written = WriteFileBytes(dir / "ファイル出力前回値.dat", "0\r\n2\r\nB材\r\n", &faults);
  ASSERT_FALSE(written);
  EXPECT_EQ(dir.Read("ファイル出力前回値.dat"), before);
  EXPECT_EQ(FilesIn(dir), 1u);
}
