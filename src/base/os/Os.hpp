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

// A file open for writing, buffered; closed (without flushing to disk) on destruction.
class OutputFile {
 public:
  OutputFile() = default;
  // Takes over a file the platform has opened for writing.
  OutputFile(Path path, intptr_t handle) : path_(std::move(path)), handle_(handle) {}
  ~OutputFile();
  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&& other) noexcept;

  const Path& path() const { return path_; }
  Status Write(std::string_view bytes);
  // Hands the buffered bytes to the system and waits until they are on the disk.
  Status FlushToDisk();
  Status Close();

 private:
  Status WriteThrough(std::string_view bytes);
  Path path_;
  intptr_t handle_ = -1;  // a file descriptor, or a Windows HANDLE
  std::string buffer_;
};

// Creates or truncates the file.
Result<OutputFile> CreateOutputFile(const Path& path);
// A new file in the target's folder, named after it, that no one else has opened.
Result<OutputFile> CreateTempFileBeside(const Path& target);

// Puts the finished temporary file in the target's place in one step: the target's previous
// contents become "<target>.bak", its attributes (mode, owner and group on POSIX; attributes
// on Windows) pass to the new file, and both the file and its folder are on the disk when
// this returns. A symbolic link is followed: the file it names is replaced, the link stays.
// A read-only target is refused and nothing changes. On failure the temporary file is
// removed and the target is as it was.
Status ReplaceKeepingBackup(OutputFile temp, const Path& target);

// Closes the file and removes it: a temporary file that is not wanted after all.
Status Discard(OutputFile file);

// The bytes written to a temporary file and put in the target's place as above.
Status WriteFileAtomically(const Path& target, std::string_view bytes);

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

// Locks the drawing for this process. A lock left by a process of this host that no longer
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

// Platform pieces the shared code builds on.
namespace detail {
Error FailureOf(ErrorCode code, std::string_view doing, const Path& path, std::string_view cause);
// The file a path names: a symbolic link's target (saving through a link replaces the target and
// keeps the link), else the path itself.
Result<Path> FollowLink(const Path& requested);
Text UserName();
Text HostName();
uint64_t ProcessId();
}  // namespace detail

}  // namespace tq::os
