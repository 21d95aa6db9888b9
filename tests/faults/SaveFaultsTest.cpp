// A save that fails at any step (a write at a chosen byte, the flush, the .bak, the rename)
// leaves the drawing's bytes as they were, leaves no file of its own behind, and says why.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "base/os/Os.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::TempDir;
using tq::test::operator+;

namespace {

// Whether the message carries what the system says for the fault (Windows and Wine word it
// differently).
bool Says(const std::string& message, os::Fault fault) {
#ifdef _WIN32
  std::vector<std::string> words;
  switch (fault) {
    case os::Fault::DiskFull: words = {"not enough space on the disk", "Disk full"}; break;
    case os::Fault::DeviceError: words = {"cannot write to the specified device", "Write fault"}; break;
    case os::Fault::AccessDenied: words = {"Access is denied", "Access denied"}; break;
  }
  return std::any_of(words.begin(), words.end(), [&](const std::string& w) { return message.find(w) != std::string::npos; });
#else
  int code = fault == os::Fault::DiskFull ? ENOSPC : fault == os::Fault::DeviceError ? EIO : EACCES;
  return message.find(std::strerror(code)) != std::string::npos;
#endif
}

std::vector<std::string> Names(const TempDir& dir) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(dir.path())) names.push_back(os::Shown(entry.path().filename()));
  std::sort(names.begin(), names.end());
  return names;
}

// Two lines, and `more` lines after them.
test::Tags Lines(int more) {
  test::Tags tags = test::LineTags("A1", 0, 0, 10, 10) + test::LineTags("A2", 5, 5, 20, 20);
  for (int i = 0; i < more; ++i) {
    test::Tags line = test::LineTags("B" + std::to_string(1000 + i), i, 0, i, 10);
    tags.insert(tags.end(), line.begin(), line.end());
  }
  return tags;
}

// Enough lines that the drawing is larger than the file's write buffer: a write then fails
// while the drawing is written out, not when it is flushed at the end.
constexpr int kPastTheBuffer = 12000;

// A drawing on disk, opened and changed in memory, ready to be saved.
struct ChangedDrawing {
  TempDir dir;
  std::string original;
  std::unique_ptr<dxf::DxfDrawing> drawing;
  explicit ChangedDrawing(int moreLines = 0) : original(test::R12Drawing(Lines(moreLines))) {
    dir.Write("plan.dxf", original);
    drawing = dxf::DxfDrawing::Open(dir / "plan.dxf").value();
    EXPECT_EQ(drawing->SetColourIndex(drawing->FindHandle(u"A1"), 3), EditResult::Ok);
  }
  Status Save(const os::FaultPlan& faults) { return drawing->Save({}, &faults); }
};

std::vector<std::string> Names(const ChangedDrawing& d) { return Names(d.dir); }

}  // namespace

TEST(SaveFaults, AWriteThatFailsAtAChosenByteLeavesTheDrawingAsItWasAndNamesTheCause) {
  for (auto [at, moreLines] : {std::pair{uint64_t(0), 0}, std::pair{uint64_t(1), 0}, std::pair{uint64_t(100), 0},
                               std::pair{uint64_t(100), kPastTheBuffer}}) {
    ChangedDrawing d(moreLines);
    ASSERT_TRUE(moreLines == 0 || d.original.size() > (1u << 20)) << "the drawing fits in the write buffer";
    os::FaultPlan faults;
    faults.writeFailsAtByte = at;
    Status saved = d.Save(faults);
    ASSERT_FALSE(saved) << "failing at byte " << at;
    std::string message = saved.error().Describe();
    EXPECT_NE(message.find("cannot save " + os::Shown(d.dir / "plan.dxf")), std::string::npos) << message;
    EXPECT_NE(message.find("cannot write"), std::string::npos) << message;
    EXPECT_TRUE(Says(message, os::Fault::DiskFull)) << message;
    EXPECT_NE(message.find("plan.dxf is as it was"), std::string::npos) << message;
    EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
    EXPECT_EQ(Names(d), std::vector<std::string>{"plan.dxf"});  // no .bak, no temporary file
  }
}

TEST(SaveFaults, ADeviceErrorInTheMiddleOfTheWriteIsNamedAsSuch) {
  ChangedDrawing d;
  os::FaultPlan faults;
  faults.writeFailsAtByte = d.original.size() / 2;
  faults.writeFault = os::Fault::DeviceError;
  Status saved = d.Save(faults);
  ASSERT_FALSE(saved);
  EXPECT_TRUE(Says(saved.error().Describe(), os::Fault::DeviceError)) << saved.error().Describe();
  EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
  EXPECT_EQ(Names(d), std::vector<std::string>{"plan.dxf"});
}

TEST(SaveFaults, AFlushThatFailsLeavesTheDrawingAsItWas) {
  ChangedDrawing d;
  os::FaultPlan faults;
  faults.flush = os::Fault::DeviceError;
  Status saved = d.Save(faults);
  ASSERT_FALSE(saved);
  std::string message = saved.error().Describe();
  EXPECT_NE(message.find("cannot flush"), std::string::npos) << message;
  EXPECT_TRUE(Says(message, os::Fault::DeviceError)) << message;
  EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
  EXPECT_EQ(Names(d), std::vector<std::string>{"plan.dxf"});
}

TEST(SaveFaults, ARenameThatFailsLeavesTheDrawingAsItWas) {
  ChangedDrawing d;
  os::FaultPlan faults;
  faults.rename = os::Fault::AccessDenied;
  Status saved = d.Save(faults);
  ASSERT_FALSE(saved);
  std::string message = saved.error().Describe();
  EXPECT_NE(message.find("cannot replace " + os::Shown(d.dir / "plan.dxf")), std::string::npos) << message;
  EXPECT_TRUE(Says(message, os::Fault::AccessDenied)) << message;
  EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
  for (const std::string& name : Names(d)) EXPECT_EQ(name.find(".tmp"), std::string::npos) << name;
}

TEST(SaveFaults, WhenTheBakCannotBeMadeNothingIsSavedAndTheMessageSaysWhy) {
  ChangedDrawing d;
  os::FaultPlan faults;
  faults.backup = os::Fault::AccessDenied;
  Status saved = d.Save(faults);
  ASSERT_FALSE(saved);
  std::string message = saved.error().Describe();
  EXPECT_NE(message.find("cannot keep the previous version as " + os::Shown(d.dir / "plan.dxf.bak")), std::string::npos)
      << message;
  EXPECT_TRUE(Says(message, os::Fault::AccessDenied)) << message;
  EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
  EXPECT_EQ(Names(d), std::vector<std::string>{"plan.dxf"});
}

TEST(SaveFaults, ABakNameTakenByAFolderStopsTheSave) {
  ChangedDrawing d;
  std::filesystem::create_directory(d.dir / "plan.dxf.bak");
  d.dir.Write("plan.dxf.bak/inside.txt", "mine");
  Status saved = d.drawing->Save();
  ASSERT_FALSE(saved);
  std::string message = saved.error().Describe();
  EXPECT_NE(message.find("cannot keep the previous version as " + os::Shown(d.dir / "plan.dxf.bak")), std::string::npos)
      << message;
  EXPECT_EQ(d.dir.Read("plan.dxf"), d.original);
  EXPECT_EQ(d.dir.Read("plan.dxf.bak/inside.txt"), "mine");
  EXPECT_EQ(Names(d), (std::vector<std::string>{"plan.dxf", "plan.dxf.bak"}));
}

TEST(SaveFaults, ANewFileThatCannotBeWrittenIsNotLeftHalfWritten) {
  ChangedDrawing d;
  os::FaultPlan faults;
  faults.writeFailsAtByte = 10;
  Status saved = d.drawing->Save(d.dir / "copy.dxf", &faults);
  ASSERT_FALSE(saved);
  EXPECT_NE(saved.error().Describe().find("nothing was written"), std::string::npos) << saved.error().Describe();
  EXPECT_EQ(Names(d), std::vector<std::string>{"plan.dxf"});
}

TEST(SaveFaults, WithoutFaultsTheSameSaveGoesThrough) {
  ChangedDrawing d;
  Status saved = d.Save(os::FaultPlan{});
  ASSERT_TRUE(saved) << saved.error().Describe();
  EXPECT_NE(d.dir.Read("plan.dxf"), d.original);
  EXPECT_EQ(d.dir.Read("plan.dxf.bak"), d.original);
  EXPECT_EQ(Names(d), (std::vector<std::string>{"plan.dxf", "plan.dxf.bak"}));
}
