#pragma once
// Everything the system asks of the operating system, in one place.
//
// The seam is a set of free functions and three small owners (an open file, a mapped file,
// a drawing lock) in tq::os. Two implementations sit behind this one header: Posix*.cpp and
// Windows*.cpp, and CMake compiles exactly one of them; what both share (the lock file's
// contents, the wildcard, the messages) is written once in Os*.cpp. Paths are
// std::filesystem::path built from UTF-16 text (base/Paths.hpp), so a Japanese folder name
// reaches the wide calls of Windows whole. Every call that can fail returns a Result or a
// Status whose message names the path and the cause.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq::os {

using Path = std::filesystem::path;

// The path as a person reads it in a message: UTF-8, whatever the platform.
std::string Shown(const Path& path);

// ---- Reading ----

// The whole file in one allocation and one read.
Result<std::string> ReadWholeFile(const Path& path);

// A file mapped read-only into memory for as long as the object lives. An empty file maps
// to an empty view.
class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile();
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  std::string_view bytes() const { return {data_, size_}; }

 private:
  friend Result<MappedFile> MapFile(const Path& path);
  void Release();
  const char* data_ = nullptr;
  size_t size_ = 0;
#ifdef _WIN32
  void* mapping_ = nullptr;  // the mapping object the view belongs to
#endif
};
Result<MappedFile> MapFile(const Path& path);

// ---- Writing ----

// A failure the seam can be asked to make, reported as the system reports the real one.
enum class Fault { DiskFull, DeviceError, AccessDenied };

// The failures a test hands in with a file it writes; a real run hands in none. Each step
// named fails the way the system would fail it, and every path that handles the real failure
// handles this one.
struct FaultPlan {
  std::optional<uint64_t> writeFailsAtByte;  // the bytes before it reach the file, then the write fails
  Fault writeFault = Fault::DiskFull;
  std::optional<Fault> flush;   // handing the bytes to the disk
  std::optional<Fault> backup;  // keeping the previous version as ".bak"
  std::optional<Fault> rename;  // putting the new file in the target's place
};

// A file open for writing, buffered; closed (without flushing to disk) on destruction.
class OutputFile {
 public:
  OutputFile() = default;
  // Takes over a file the platform has opened for writing.
  OutputFile(Path path, intptr_t handle, const FaultPlan* faults = nullptr)
      : path_(std::move(path)), handle_(handle), faults_(faults) {}
  ~OutputFile();
  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&& other) noexcept;

  const Path& path() const { return path_; }
  const FaultPlan* faults() const { return faults_; }
  void InjectFaults(const FaultPlan* faults) { faults_ = faults; }
  Status Write(std::string_view bytes);
  // Hands the buffered bytes to the system and waits until they are on the disk.
  Status FlushToDisk();
  Status Close();

 private:
  Status WriteThrough(std::string_view bytes);
  // The part of `bytes` the plan lets through, and whether the write fails after it.
  std::string_view Allowed(std::string_view bytes, bool& fails) const;
  // The platform's part: every byte to the handle, the handle's data to the disk, the handle
  // closed (true when there is none open).
  Status WriteAll(std::string_view bytes);
  bool SyncHandle();
  bool ReleaseHandle();
  Path path_;
  intptr_t handle_ = -1;  // a file descriptor, or a Windows HANDLE
  std::string buffer_;
  const FaultPlan* faults_ = nullptr;
  uint64_t written_ = 0;  // bytes handed to the system so far
};

// Creates or truncates the file.
Result<OutputFile> CreateOutputFile(const Path& path);

// A new file in the target's folder that no one else has opened, named
// ".<name>.tqstd-<process>-<random>.tmp" and hidden where dot files are; a new file's mode is
// the ordinary one for the user's umask. Leftovers of the same target that a killed run left
// are removed first (RemoveLeftoverTempFiles).
Result<OutputFile> CreateTempFileBeside(const Path& target, const FaultPlan* faults = nullptr);

// Whether `name` is one of our temporary files for the target named `targetName`; the process
// that made it when it is.
std::optional<uint64_t> TempFileProcess(TextView name, TextView targetName);
// A temporary file of the target is a leftover when the process that made it no longer runs
// here and it has not been written for kLeftoverQuiet (a save on another computer sharing the
// folder writes its file steadily), or when it has not been written for kLeftoverAge whoever
// made it. Only names of our own pattern are touched. Gives how many were removed.
inline constexpr int64_t kLeftoverQuietSeconds = 5 * 60;
inline constexpr int64_t kLeftoverAgeSeconds = 24 * 60 * 60;
size_t RemoveLeftoverTempFiles(const Path& target);

// Whether the target's previous contents are kept as "<target>.bak".
enum class Backup { Keep, None };

// Puts the finished temporary file in the target's place in one step: with Backup::Keep the
// target's previous contents become "<target>.bak" (when that cannot be made nothing is
// replaced), its attributes (mode, owner and group on POSIX; attributes on Windows) pass to
// the new file, and both the file and its folder are on the disk when this returns. A
// symbolic link is followed: the file it names is replaced, the link stays. A read-only
// target is refused and nothing changes. On failure the temporary file is removed and the
// target is as it was.
Status Replace(OutputFile temp, const Path& target, Backup backup);
inline Status ReplaceKeepingBackup(OutputFile temp, const Path& target) { return Replace(std::move(temp), target, Backup::Keep); }

// Closes the file and removes it: a temporary file that is not wanted after all.
Status Discard(OutputFile file);

// The bytes written to a temporary file and put in the target's place as above.
Status WriteFileAtomically(const Path& target, std::string_view bytes, Backup backup = Backup::Keep,
                           const FaultPlan* faults = nullptr);

// ---- Attributes and folders ----

Result<bool> IsReadOnly(const Path& path);
Status SetReadOnly(const Path& path, bool readOnly);

// The names of the files in the folder that match the wildcard ("*" any run, "?" one unit,
// without regard to case, as Windows matches), sorted. Only the whole name is matched: the
// short names Windows keeps beside long ones never make "*.xls" find "a.xlsx".
Result<std::vector<Text>> ListFolder(const Path& folder, TextView wildcard);
bool MatchesWildcard(TextView name, TextView wildcard);

Status RemoveFile(const Path& path);

// ---- The drawing lock ----

// Who holds a drawing: written into the lock file beside it.
struct LockOwner {
  Text user;
  Text host;
  uint64_t process = 0;
  std::string time;  // UTC, ISO 8601
};

LockOwner CurrentOwner();
// The lock file of a drawing: "<drawing>.lock" in the same folder.
Path LockFileOf(const Path& drawing);
// The lock file's contents, one "key=value" line each, in UTF-8.
std::string FormatLockFile(const LockOwner& owner);
Result<LockOwner> ReadLockFile(const Path& lockFile);
// Whether the process with this id still runs on this host.
bool ProcessIsAlive(uint64_t process);

// Held while the object lives; the lock file is removed on destruction.
class LockHandle {
 public:
  LockHandle() = default;
  explicit LockHandle(Path lockFile) : lockFile_(std::move(lockFile)) {}
  ~LockHandle();
  LockHandle(LockHandle&& other) noexcept;
  LockHandle& operator=(LockHandle&& other) noexcept;
  const Path& lockFile() const { return lockFile_; }

 private:
  Path lockFile_;
};

// Locks the drawing for this process; a drawing reached through a symbolic link is locked
// beside the file the link names, where every other way to it finds the lock too. A lock left by a process of this host that no longer
// runs is stale: it is replaced. Any other lock gives ErrorCode::Locked naming its holder.
Result<LockHandle> AcquireDrawingLock(const Path& drawing);
// Creates the file only when it does not exist yet, the primitive under the lock: an
// existing file gives ErrorCode::Locked.
Result<OutputFile> CreateNewFile(const Path& path);

// ---- Memory ----

// A block of whole pages straight from the system, large pages asked for where the system
// offers them as a hint; nullptr when there is no memory. Freed with the same size.
void* AllocatePages(size_t bytes);
void FreePages(void* block, size_t bytes);

// ---- Process ----

std::optional<Text> Environment(TextView name);
Status SetEnvironment(TextView name, TextView value);

// The most memory the process has held at once (its peak resident set), in kB.
uint64_t PeakMemoryKb();

// The folder of the running program.
Result<Path> ExecutableFolder();

// The command-line arguments in UTF-8 (on Windows from the wide command line, so that a
// Japanese file name survives whatever the ANSI code page is).
std::vector<std::string> Utf8Arguments(int argc, char** argv);
// Standard output and error take bytes as they are: no CR added before LF, UTF-8 on a console.
void UseBinaryStandardStreams();
// A write past the user's file-size limit fails as a full disk does, with a message, instead
// of ending the process in the middle of a save.
void ReportFileSizeLimitAsError();

// Platform pieces the shared code builds on.
namespace detail {
Error FailureOf(ErrorCode code, std::string_view doing, const Path& path, std::string_view cause);
// The failure of the last call on this path, with the system's own words for its cause.
Error Failure(ErrorCode code, std::string_view doing, const Path& path);
// The file a path names: a symbolic link's target (saving through a link replaces the target and
// keeps the link), else the path itself.
Result<Path> FollowLink(const Path& requested);
// Sets the system's last error to what the platform reports for the fault.
void SetSystemError(Fault fault);
// Whether the plan fails this step; the system's last error is set when it does.
bool Injected(const std::optional<Fault>& step);
Text UserName();
Text HostName();
uint64_t ProcessId();
}  // namespace detail

}  // namespace tq::os
