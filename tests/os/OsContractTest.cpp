// The contract of the operating-system seam: the same expectations for the POSIX build and
// the Windows build (run under Wine).
#include <gtest/gtest.h>

#include "base/Paths.hpp"
#include "base/os/Os.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using tq::test::TempDir;

namespace {

os::Path PathOf(const TempDir& dir, TextView name) { return dir.path() / ToFsPath(name); }

std::string Read(const os::Path& path) {
  Result<std::string> bytes = os::ReadWholeFile(path);
  return bytes ? *bytes : "<" + bytes.error().Describe() + ">";
}

void Write(const os::Path& path, std::string_view bytes) {
  Result<os::OutputFile> file = os::CreateOutputFile(path);
  ASSERT_TRUE(file) << file.error().Describe();
  ASSERT_TRUE(file->Write(bytes));
  ASSERT_TRUE(file->Close());
}

std::vector<Text> Names(const os::Path& folder, TextView wildcard = u"*") {
  Result<std::vector<Text>> names = os::ListFolder(folder, wildcard);
  return names ? *names : std::vector<Text>{u"<" + names.error().message + u">"};
}

// A process id no system gives out: above Linux's largest, and odd (Windows' ids are multiples of 4).
constexpr uint64_t kDeadProcess = 0x7FFFFFF1;

}  // namespace

TEST(OsRead, WholeFileAndMappedFileGiveTheSameBytes) {
  TempDir dir;
  std::string bytes("0\r\nSECTION\r\n\0\xFF end", 17);
  Write(dir / "a.dxf", bytes);
  EXPECT_EQ(Read(dir / "a.dxf"), bytes);
  Result<os::MappedFile> mapped = os::MapFile(dir / "a.dxf");
  ASSERT_TRUE(mapped) << mapped.error().Describe();
  EXPECT_EQ(mapped->bytes(), bytes);
}

TEST(OsRead, AnEmptyFileMapsToNothing) {
  TempDir dir;
  Write(dir / "empty.dxf", "");
  Result<os::MappedFile> mapped = os::MapFile(dir / "empty.dxf");
  ASSERT_TRUE(mapped);
  EXPECT_TRUE(mapped->bytes().empty());
  EXPECT_EQ(Read(dir / "empty.dxf"), "");
}

TEST(OsRead, AMissingFileIsNotFoundAndNamed) {
  TempDir dir;
  Result<std::string> bytes = os::ReadWholeFile(dir / "missing.dxf");
  ASSERT_FALSE(bytes);
  EXPECT_EQ(bytes.error().code, ErrorCode::NotFound);
  EXPECT_NE(bytes.error().Describe().find("missing.dxf"), std::string::npos) << bytes.error().Describe();
  EXPECT_FALSE(os::MapFile(dir / "missing.dxf"));
}

TEST(OsReplace, TheNewContentsTakeThePlaceAndTheOldOnesAreKeptAsBak) {
  TempDir dir;
  Write(dir / "d.dxf", "first");
  ASSERT_TRUE(os::WriteFileAtomically(dir / "d.dxf", "second"));
  EXPECT_EQ(Read(dir / "d.dxf"), "second");
  EXPECT_EQ(Read(dir / "d.dxf.bak"), "first");
  ASSERT_TRUE(os::WriteFileAtomically(dir / "d.dxf", "third"));
  EXPECT_EQ(Read(dir / "d.dxf"), "third");
  EXPECT_EQ(Read(dir / "d.dxf.bak"), "second");
  // No temporary file is left behind.
  EXPECT_EQ(Names(dir.path()), (std::vector<Text>{u"d.dxf", u"d.dxf.bak"}));
}

TEST(OsReplace, ANewFileHasNoBak) {
  TempDir dir;
  Status s = os::WriteFileAtomically(dir / "new.dxf", "only");
  ASSERT_TRUE(s) << s.error().Describe();
  EXPECT_EQ(Read(dir / "new.dxf"), "only");
  EXPECT_EQ(Names(dir.path()), std::vector<Text>{u"new.dxf"});
}

TEST(OsReplace, BigContentsArriveWhole) {
  TempDir dir;
  std::string big(5 << 20, 'x');
  for (size_t i = 0; i < big.size(); i += 4099) big[i] = static_cast<char>('a' + i % 26);
  Result<os::OutputFile> temp = os::CreateTempFileBeside(dir / "big.dxf");
  ASSERT_TRUE(temp);
  // Pieces below and above the buffer's size, as a drawing's save writes them.
  size_t at = 0;
  for (size_t piece : {size_t(10), size_t(3 << 20), size_t(100), size_t(1 << 19)}) {
    ASSERT_TRUE(temp->Write(std::string_view(big).substr(at, piece)));
    at += piece;
  }
  ASSERT_TRUE(temp->Write(std::string_view(big).substr(at)));
  ASSERT_TRUE(os::ReplaceKeepingBackup(std::move(*temp), dir / "big.dxf"));
  EXPECT_TRUE(Read(dir / "big.dxf") == big);
}

TEST(OsReplace, AReadOnlyFileIsRefusedAndLeftAsItWas) {
  TempDir dir;
  Write(dir / "ro.dxf", "kept");
  ASSERT_TRUE(os::SetReadOnly(dir / "ro.dxf", true));
  Result<bool> readOnly = os::IsReadOnly(dir / "ro.dxf");
  ASSERT_TRUE(readOnly);
  EXPECT_TRUE(*readOnly);
  Status s = os::WriteFileAtomically(dir / "ro.dxf", "lost");
  ASSERT_FALSE(s);
  EXPECT_EQ(s.error().code, ErrorCode::CannotWrite);
  EXPECT_NE(s.error().Describe().find("read-only"), std::string::npos) << s.error().Describe();
  EXPECT_NE(s.error().Describe().find("ro.dxf"), std::string::npos) << s.error().Describe();
  EXPECT_EQ(Read(dir / "ro.dxf"), "kept");
  EXPECT_EQ(Names(dir.path()), std::vector<Text>{u"ro.dxf"});  // no .bak, no temporary file
  ASSERT_TRUE(os::SetReadOnly(dir / "ro.dxf", false));
  EXPECT_FALSE(*os::IsReadOnly(dir / "ro.dxf"));
  EXPECT_TRUE(os::WriteFileAtomically(dir / "ro.dxf", "now"));
}

#ifndef _WIN32
TEST(OsReplace, TheModeOfTheFileIsKept) {
  TempDir dir;
  Write(dir / "m.dxf", "a");
  std::filesystem::permissions(dir / "m.dxf", std::filesystem::perms(0640));
  ASSERT_TRUE(os::WriteFileAtomically(dir / "m.dxf", "b"));
  EXPECT_EQ(std::filesystem::status(dir / "m.dxf").permissions(), std::filesystem::perms(0640));
}

TEST(OsReplace, ALinkStaysALinkAndTheFileItNamesIsReplaced) {
  TempDir dir;
  Write(dir / "real.dxf", "a");
  std::filesystem::create_symlink("real.dxf", dir / "link.dxf");
  ASSERT_TRUE(os::WriteFileAtomically(dir / "link.dxf", "b"));
  EXPECT_TRUE(std::filesystem::is_symlink(dir / "link.dxf"));
  EXPECT_EQ(Read(dir / "real.dxf"), "b");
  EXPECT_EQ(Read(dir / "real.dxf.bak"), "a");
}
#endif

TEST(OsLock, HeldUntilReleasedAndNamingItsHolder) {
  TempDir dir;
  os::Path drawing = dir / "d.dxf";
  Write(drawing, "x");
  {
    Result<os::LockHandle> lock = os::AcquireDrawingLock(drawing);
    ASSERT_TRUE(lock) << lock.error().Describe();
    Result<os::LockOwner> owner = os::ReadLockFile(os::LockFileOf(drawing));
    ASSERT_TRUE(owner) << owner.error().Describe();
    os::LockOwner me = os::CurrentOwner();
    EXPECT_EQ(owner->process, me.process);
    EXPECT_EQ(owner->host, me.host);
    EXPECT_EQ(owner->user, me.user);
    EXPECT_FALSE(owner->time.empty());

    Result<os::LockHandle> second = os::AcquireDrawingLock(drawing);
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().code, ErrorCode::Locked);
    EXPECT_NE(second.error().Describe().find(ToUtf8(me.user)), std::string::npos) << second.error().Describe();
    EXPECT_NE(second.error().Describe().find(std::to_string(me.process)), std::string::npos);
  }
  EXPECT_EQ(Names(dir.path()), std::vector<Text>{u"d.dxf"});  // the lock file went with the lock
  EXPECT_TRUE(os::AcquireDrawingLock(drawing));
}

TEST(OsLock, AStaleLockOfAProcessThatIsGoneIsReplaced) {
  TempDir dir;
  os::Path drawing = dir / "d.dxf";
  os::LockOwner gone = os::CurrentOwner();
  gone.process = kDeadProcess;
  ASSERT_FALSE(os::ProcessIsAlive(kDeadProcess));
  Write(os::LockFileOf(drawing), os::FormatLockFile(gone));
  Result<os::LockHandle> lock = os::AcquireDrawingLock(drawing);
  ASSERT_TRUE(lock) << lock.error().Describe();
  EXPECT_EQ(os::ReadLockFile(os::LockFileOf(drawing))->process, os::CurrentOwner().process);
}

TEST(OsLock, ALockFromAnotherHostStands) {
  TempDir dir;
  os::Path drawing = dir / "d.dxf";
  os::LockOwner other{u"someone", u"ANOTHER-HOST", kDeadProcess, "2026-01-01T00:00:00Z"};
  Write(os::LockFileOf(drawing), os::FormatLockFile(other));
  Result<os::LockHandle> lock = os::AcquireDrawingLock(drawing);
  ASSERT_FALSE(lock);
  EXPECT_EQ(lock.error().code, ErrorCode::Locked);
  EXPECT_NE(lock.error().Describe().find("someone on ANOTHER-HOST"), std::string::npos) << lock.error().Describe();
  EXPECT_EQ(Read(os::LockFileOf(drawing)), os::FormatLockFile(other));
}

TEST(OsLock, ALiveProcessKeepsItsLock) {
  TempDir dir;
  os::Path drawing = dir / "d.dxf";
  EXPECT_TRUE(os::ProcessIsAlive(os::CurrentOwner().process));
  Write(os::LockFileOf(drawing), os::FormatLockFile(os::CurrentOwner()));
  EXPECT_FALSE(os::AcquireDrawingLock(drawing));
}

TEST(OsWidePaths, AJapaneseFolderWithASpaceHoldsFilesLocksAndListings) {
  TempDir dir;
  os::Path folder = PathOf(dir, u"図面 フォルダ");
  std::filesystem::create_directories(folder);
  os::Path drawing = folder / ToFsPath(u"設備 標準図.dxf");
  ASSERT_TRUE(os::WriteFileAtomically(drawing, "一"));
  ASSERT_TRUE(os::WriteFileAtomically(drawing, "二"));
  EXPECT_EQ(Read(drawing), "二");
  Result<os::MappedFile> mapped = os::MapFile(drawing);
  ASSERT_TRUE(mapped);
  EXPECT_EQ(mapped->bytes(), "二");
  {
    Result<os::LockHandle> lock = os::AcquireDrawingLock(drawing);
    ASSERT_TRUE(lock) << lock.error().Describe();
    EXPECT_EQ(Names(folder, u"*.lock"), std::vector<Text>{u"設備 標準図.dxf.lock"});
  }
  EXPECT_EQ(Names(folder), (std::vector<Text>{u"設備 標準図.dxf", u"設備 標準図.dxf.bak"}));
  Result<std::string> missing = os::ReadWholeFile(folder / ToFsPath(u"無い.dxf"));
  ASSERT_FALSE(missing);
  EXPECT_NE(missing.error().Describe().find("図面 フォルダ"), std::string::npos) << missing.error().Describe();
}

TEST(OsFolders, AWildcardListsTheMatchingFilesWithoutRegardToCaseAndNothingLonger) {
  TempDir dir;
  for (const char* name : {"b.xls", "A.XLS", "a.xlsx", "c.csv", "表.xls"}) Write(dir / name, "");
  std::filesystem::create_directories(dir / "folder.xls");
  EXPECT_EQ(Names(dir.path(), u"*.xls"), (std::vector<Text>{u"A.XLS", u"b.xls", u"表.xls"}));
  EXPECT_EQ(Names(dir.path(), u"?.csv"), std::vector<Text>{u"c.csv"});
  EXPECT_TRUE(Names(dir.path(), u"*.dwg").empty());
  EXPECT_EQ(os::ListFolder(dir / "none", u"*").error().code, ErrorCode::NotFound);
}

TEST(OsFolders, WildcardRules) {
  EXPECT_TRUE(os::MatchesWildcard(u"設備標準図.DXF", u"*.dxf"));
  EXPECT_TRUE(os::MatchesWildcard(u"abc", u"a*c"));
  EXPECT_TRUE(os::MatchesWildcard(u"ac", u"a*c"));
  EXPECT_TRUE(os::MatchesWildcard(u"a.b.c", u"*.c"));
  EXPECT_FALSE(os::MatchesWildcard(u"abcd", u"a*c"));
  EXPECT_FALSE(os::MatchesWildcard(u"ab", u"a?c"));
  EXPECT_TRUE(os::MatchesWildcard(u"ａｂ", u"ＡＢ"));
}

TEST(OsEnvironment, SetAndReadInUtf16) {
  EXPECT_FALSE(os::Environment(u"TQ_OS_TEST_UNSET"));
  ASSERT_TRUE(os::SetEnvironment(u"TQ_OS_TEST_VALUE", u"C:\\設備 標準"));
  EXPECT_EQ(os::Environment(u"TQ_OS_TEST_VALUE"), Text(u"C:\\設備 標準"));
}

TEST(OsLock, AMalformedLockFileIsReportedAsSuch) {
  TempDir dir;
  Write(dir / "x.lock", "nothing here\n");
  Result<os::LockOwner> owner = os::ReadLockFile(dir / "x.lock");
  ASSERT_FALSE(owner);
  EXPECT_EQ(owner.error().code, ErrorCode::Malformed);
}

TEST(OsLock, AnUnreadableLockFileStandsWhileFreshAndIsReplacedWhenOld) {
  TempDir dir;
  Write(dir / "d.dxf", "drawing");
  Write(os::LockFileOf(dir / "d.dxf"), "");  // what a crash of the system may leave
  Result<os::LockHandle> fresh = os::AcquireDrawingLock(dir / "d.dxf");
  ASSERT_FALSE(fresh);
  EXPECT_EQ(fresh.error().code, ErrorCode::Locked);
  EXPECT_NE(fresh.error().Describe().find("its lock file cannot be read"), std::string::npos) << fresh.error().Describe();
  std::filesystem::last_write_time(os::LockFileOf(dir / "d.dxf"),
                                   std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2));
  Result<os::LockHandle> old = os::AcquireDrawingLock(dir / "d.dxf");
  ASSERT_TRUE(old) << old.error().Describe();
  Result<os::LockOwner> owner = os::ReadLockFile(os::LockFileOf(dir / "d.dxf"));
  ASSERT_TRUE(owner);
  EXPECT_EQ(owner->process, os::CurrentOwner().process);
}
