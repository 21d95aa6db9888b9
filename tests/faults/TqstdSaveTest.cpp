// tqstd as a process saving what the user has: one writer at a time, the file's kind and
// attributes kept, limits and read-only files met with a message and the old bytes intact.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

#include "base/os/Os.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// Registers one changed use code: a script whose save changes the drawing.
constexpr char kRegisterScript[] =
    "command TQ_STD_INF\nclick 200:203\nanswer OK\nselect 2000:389 0\nselect 2000:2301 \"給水用\"\nclick 2000:1\n";

// A process id no system gives out (above Linux's largest).
constexpr uint64_t kDeadProcess = 0x7FFFFFF1;

std::filesystem::path DrawingOf(const SiteCopy& copy) { return copy.site / "drawings" / u8"設備標準図.dxf"; }

std::string Bytes(const std::filesystem::path& path) { return ReadFileBytes(path).value_or("<missing>"); }

std::string Tqstd() { return std::string(TQSTD_PATH); }

void WriteLock(const std::filesystem::path& drawing, uint64_t process) {
  os::LockOwner owner = os::CurrentOwner();
  owner.process = process;
  ASSERT_TRUE(WriteFileBytes(os::LockFileOf(drawing), os::FormatLockFile(owner)));
}

std::vector<std::string> TempFilesBeside(const std::filesystem::path& drawing) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(drawing.parent_path())) {
    std::string name = os::Shown(entry.path().filename());
    if (name.find(".tmp") != std::string::npos || name.find(".lock") != std::string::npos) names.push_back(name);
  }
  return names;
}

void Backdate(const std::filesystem::path& path, std::chrono::seconds by) {
  std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - by);
}

}  // namespace

TEST(TwoWriters, ASecondWriterStopsBeforeChangingAnythingAndNamesTheHolder) {
  // What the script alone makes of the drawing.
  SiteCopy alone;
  ASSERT_TRUE(WriteFileBytes(alone.dir / "s.txt", kRegisterScript));
  RunResult single = RunCommand(Tqstd() + " script " + alone.Drawing() + " " + Quoted(alone.dir / "s.txt") + alone.Ini());
  ASSERT_EQ(single.status, 0) << single.out;
  std::string expected = Bytes(DrawingOf(alone));

  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  ASSERT_NE(expected, original);
  // The first writer takes the lock, reads the drawing, then waits for its script.
  FILE* first = popen((Tqstd() + " script " + copy.Drawing() + " -" + copy.Ini() + " > " + Quoted(copy.dir / "first.jsonl") +
                       " 2>&1").c_str(), "w");
  ASSERT_NE(first, nullptr);
  std::filesystem::path lockFile = os::LockFileOf(drawing);
  for (int i = 0; i < 200 && !std::filesystem::exists(lockFile); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  Result<os::LockOwner> holder = os::ReadLockFile(lockFile);
  ASSERT_TRUE(holder) << "the first writer took no lock";
  EXPECT_NE(holder->process, static_cast<uint64_t>(::getpid()));
  EXPECT_TRUE(os::ProcessIsAlive(holder->process));

  RunResult second = RunTqstd("mark " + copy.Drawing() + copy.Ini());
  EXPECT_EQ(second.status, 1) << second.out;
  EXPECT_NE(second.out.find("cannot lock " + os::Shown(drawing) + ": it is in use by " + ToUtf8(holder->user) + " on " +
                            ToUtf8(holder->host) + " (process " + std::to_string(holder->process) + ", since " +
                            holder->time + "); nothing was changed"),
            std::string::npos)
      << second.out;
  EXPECT_EQ(Bytes(drawing), original);
  EXPECT_FALSE(std::filesystem::exists(drawing.string() + ".bak"));

  ASSERT_GE(std::fputs(kRegisterScript, first), 0);
  int raw = pclose(first);
  EXPECT_TRUE(WIFEXITED(raw) && WEXITSTATUS(raw) == 0) << Bytes(copy.dir / "first.jsonl");
  EXPECT_EQ(Bytes(drawing), expected);
  EXPECT_EQ(Bytes(drawing.string() + ".bak"), original);
  EXPECT_FALSE(std::filesystem::exists(lockFile));
}

TEST(TwoWriters, ALockLeftByAProcessThatIsGoneIsRecognisedAndReplaced) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  WriteLock(drawing, kDeadProcess);
  RunResult r = RunTqstd("mark " + copy.Drawing() + copy.Ini());
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("saved "), std::string::npos) << r.out;
  EXPECT_FALSE(std::filesystem::exists(os::LockFileOf(drawing)));
}

TEST(TwoWriters, RegisteringALockedDrawingWritesNoTakeoffFile) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  WriteLock(drawing, static_cast<uint64_t>(::getpid()));  // a live holder: this test
  RunResult r = RunTqstd("takeoff " + copy.Drawing() + " --register -o " + Quoted(copy.dir / "out.txt") + copy.Ini());
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("(process " + std::to_string(::getpid()) + ", since "), std::string::npos) << r.out;
  EXPECT_FALSE(std::filesystem::exists(copy.dir / "out.txt"));
  EXPECT_EQ(Bytes(drawing), original);
}

TEST(SavingKeeps, AReadOnlyDrawingIsRefusedAndLeftAsItWas) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  std::filesystem::permissions(drawing, std::filesystem::perms(0444));
  RunResult r = RunTqstd("mark " + copy.Drawing() + copy.Ini());
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("cannot save " + os::Shown(drawing) + ": cannot replace " + os::Shown(drawing) + ": it is read-only"),
            std::string::npos)
      << r.out;
  EXPECT_EQ(Bytes(drawing), original);
  EXPECT_FALSE(std::filesystem::exists(drawing.string() + ".bak"));
  EXPECT_EQ(TempFilesBeside(drawing), std::vector<std::string>{});
}

TEST(SavingKeeps, ADrawingReachedThroughALinkIsSavedThroughIt) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  std::filesystem::create_directory(copy.dir / "links");
  std::filesystem::create_symlink(drawing, copy.dir / "links" / "plan.dxf");
  RunResult r = RunTqstd("mark " + Quoted(copy.dir / "links" / "plan.dxf") + copy.Ini());
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_TRUE(std::filesystem::is_symlink(copy.dir / "links" / "plan.dxf"));
  EXPECT_NE(Bytes(drawing), original);
  EXPECT_EQ(Bytes(drawing.string() + ".bak"), original);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(copy.dir / "links"), {}), 1);  // nothing beside the link
}

TEST(SavingKeeps, TheDrawingKeepsItsModeOwnerAndGroup) {
  if (::geteuid() != 0) GTEST_SKIP() << "giving a file to another user needs the administrator";
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  ASSERT_EQ(::chown(drawing.c_str(), 4321, 8765), 0) << std::strerror(errno);
  ASSERT_EQ(::chmod(drawing.c_str(), 0640), 0);
  RunResult r = RunTqstd("mark " + copy.Drawing() + copy.Ini());
  ASSERT_EQ(r.status, 0) << r.out;
  struct stat st {};
  ASSERT_EQ(::stat(drawing.c_str(), &st), 0);
  EXPECT_EQ(st.st_uid, 4321u);
  EXPECT_EQ(st.st_gid, 8765u);
  EXPECT_EQ(st.st_mode & 07777, 0640u);
}

TEST(SavingKeeps, ANewDrawingGetsTheOrdinaryModeForTheUmask) {
  SiteCopy copy;
  for (auto [umask, mode] : {std::pair{"027", 0640u}, std::pair{"002", 0664u}}) {
    std::filesystem::path out = copy.dir / ("new-" + std::string(umask) + ".dxf");
    RunResult r = RunCommand("umask " + std::string(umask) + "; " + Tqstd() + " mark " + copy.Drawing() + " -o " + Quoted(out) +
                             copy.Ini() + " 2>&1");
    ASSERT_EQ(r.status, 0) << r.out;
    struct stat st {};
    ASSERT_EQ(::stat(out.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, mode) << "umask " << umask;
  }
}

TEST(SavingKeeps, TemporaryFilesLeftByAKilledRunAreRemovedAndNoOthers) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::filesystem::path folder = drawing.parent_path();
  std::string dead = std::to_string(kDeadProcess), live = std::to_string(::getpid());
  auto make = [&](const std::string& name, std::chrono::seconds age) {
    std::filesystem::path path = folder / std::filesystem::path(std::u8string(name.begin(), name.end()));
    EXPECT_TRUE(WriteFileBytes(path, "half a drawing"));
    Backdate(path, age);
    return path;
  };
  using std::chrono::hours, std::chrono::minutes, std::chrono::seconds;
  std::filesystem::path killed = make(".設備標準図.dxf.tqstd-" + dead + "-1a2b.tmp", minutes(10));
  std::filesystem::path justNow = make(".設備標準図.dxf.tqstd-" + dead + "-3c4d.tmp", seconds(0));
  std::filesystem::path running = make(".設備標準図.dxf.tqstd-" + live + "-5e6f.tmp", minutes(10));
  std::filesystem::path ancient = make(".設備標準図.dxf.tqstd-" + live + "-7a8b.tmp", hours(48));
  std::filesystem::path notOurs = make(".設備標準図.dxf.Ab12Cd", hours(48));
  std::filesystem::path otherDrawing = make(".other.dxf.tqstd-" + dead + "-9c0d.tmp", hours(48));
  RunResult r = RunTqstd("mark " + copy.Drawing() + copy.Ini());
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_FALSE(std::filesystem::exists(killed));
  EXPECT_FALSE(std::filesystem::exists(ancient));
  EXPECT_TRUE(std::filesystem::exists(justNow));
  EXPECT_TRUE(std::filesystem::exists(running));
  EXPECT_TRUE(std::filesystem::exists(notOurs));
  EXPECT_TRUE(std::filesystem::exists(otherDrawing));
}

TEST(SavingKeeps, AFileSizeLimitStopsTheSaveWithAMessageAndTheDrawingWhole) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  RunResult r = RunCommand("ulimit -f 16; " + Tqstd() + " mark " + copy.Drawing() + copy.Ini() + " 2>&1");
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find(std::strerror(EFBIG)), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(os::Shown(drawing) + " is as it was"), std::string::npos) << r.out;
  EXPECT_EQ(Bytes(drawing), original);
  EXPECT_EQ(TempFilesBeside(drawing), std::vector<std::string>{});
}

TEST(OutputFilesAtomic, AFileSizeLimitLeavesThePreviousTakeoffFileWhole) {
  SiteCopy copy;
  std::filesystem::path out = copy.dir / "拾い.txt";
  RunResult first = RunTqstd("takeoff " + copy.Drawing() + " -o " + Quoted(out) + copy.Ini());
  ASSERT_EQ(first.status, 0) << first.out;
  std::string previous = Bytes(out);
  ASSERT_GT(previous.size(), 1024u);
  // The list written again, as a larger aggregate would be: one block fewer than it needs.
  RunResult r = RunCommand("ulimit -f 1; " + Tqstd() + " takeoff " + copy.Drawing() + " -o " + Quoted(out) + copy.Ini() + " 2>&1");
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find(std::strerror(EFBIG)), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("no file was written"), std::string::npos) << r.out;
  EXPECT_EQ(Bytes(out), previous);
}

TEST(OutputFilesAtomic, WhenTheDrawingCannotBeSavedAfterTheOutputTheMessageSaysWhichExists) {
  SiteCopy copy;
  std::filesystem::path drawing = DrawingOf(copy);
  std::string original = Bytes(drawing);
  std::filesystem::permissions(drawing, std::filesystem::perms(0444));
  std::filesystem::path out = copy.dir / "拾い.txt";
  RunResult r = RunTqstd("takeoff " + copy.Drawing() + " --register -o " + Quoted(out) + copy.Ini());
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_EQ(r.out.find("wrote "), std::string::npos) << r.out;  // nothing reported as written
  EXPECT_NE(r.out.find(os::Shown(drawing) + " is as it was; " + os::Shown(out) + " was written, the rows are not registered"),
            std::string::npos)
      << r.out;
  EXPECT_TRUE(std::filesystem::exists(out));
  EXPECT_EQ(Bytes(drawing), original);
}

TEST(OutputFilesAtomic, WithRegistrationBothAreReportedOnceBothAreWritten) {
  SiteCopy copy;
  std::filesystem::path out = copy.dir / "拾い.txt";
  RunResult r = RunTqstd("takeoff " + copy.Drawing() + " --register -o " + Quoted(out) + copy.Ini());
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("wrote " + os::Shown(out)), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("registered the rows in "), std::string::npos) << r.out;
  EXPECT_LT(r.out.find("wrote "), r.out.find("registered the rows in ")) << r.out;
}

#endif  // the processes are started through a POSIX shell
