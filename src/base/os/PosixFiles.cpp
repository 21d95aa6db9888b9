// The seam on POSIX: files, folders and attributes.
#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "base/os/Os.hpp"

namespace tq::os {

namespace {

using detail::Failure;
using detail::FailureOf;

ErrorCode ReadCode() { return errno == ENOENT || errno == ENOTDIR ? ErrorCode::NotFound : ErrorCode::CannotRead; }

struct Descriptor {
  int fd = -1;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

Status SyncFolder(const Path& folder) {
  Descriptor dir{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
  if (dir.fd < 0 || ::fsync(dir.fd) != 0) return Failure(ErrorCode::CannotWrite, "cannot flush the folder", folder);
  return {};
}

Path FolderOf(const Path& path) { return path.has_parent_path() ? path.parent_path() : Path("."); }

}  // namespace

Error detail::Failure(ErrorCode code, std::string_view doing, const Path& path) {
  return FailureOf(code, doing, path, std::strerror(errno));
}

Result<std::string> ReadWholeFile(const Path& path) {
  Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) return Failure(ReadCode(), "cannot read", path);
  struct stat st;
  if (::fstat(file.fd, &st) != 0) return Failure(ErrorCode::CannotRead, "cannot read", path);
  if (S_ISDIR(st.st_mode)) return FailureOf(ErrorCode::CannotRead, "cannot read", path, "it is a folder");
  std::string bytes(static_cast<size_t>(st.st_size), '\0');
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::read(file.fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return Failure(ErrorCode::CannotRead, "cannot read", path);
    if (n == 0) break;  // shorter than it was a moment ago
    done += static_cast<size_t>(n);
  }
  bytes.resize(done);
  return bytes;
}

MappedFile::~MappedFile() { Release(); }
MappedFile::MappedFile(MappedFile&& other) noexcept { *this = std::move(other); }
MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  if (this != &other) {
    Release();
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
  }
  return *this;
}
void MappedFile::Release() {
  if (data_ && size_) ::munmap(const_cast<char*>(data_), size_);
  data_ = nullptr;
  size_ = 0;
}

Result<MappedFile> MapFile(const Path& path) {
  Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) return Failure(ReadCode(), "cannot read", path);
  struct stat st;
  if (::fstat(file.fd, &st) != 0) return Failure(ErrorCode::CannotRead, "cannot read", path);
  MappedFile mapped;
  if (st.st_size == 0) return mapped;
  void* p = ::mmap(nullptr, static_cast<size_t>(st.st_size), PROT_READ, MAP_PRIVATE, file.fd, 0);
  if (p == MAP_FAILED) return Failure(ErrorCode::CannotRead, "cannot map", path);
  mapped.data_ = static_cast<const char*>(p);
  mapped.size_ = static_cast<size_t>(st.st_size);
  return mapped;
}

// ---- Output files ----

Status OutputFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t n = ::write(static_cast<int>(handle_), bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return Failure(ErrorCode::CannotWrite, "cannot write", path_);
    bytes.remove_prefix(static_cast<size_t>(n));
    written_ += static_cast<uint64_t>(n);
  }
  return {};
}

bool OutputFile::SyncHandle() { return ::fsync(static_cast<int>(handle_)) == 0; }

bool OutputFile::ReleaseHandle() {
  int fd = static_cast<int>(std::exchange(handle_, -1));
  return fd < 0 || ::close(fd) == 0;
}

namespace {
Result<OutputFile> Open(const Path& path, int flags, ErrorCode existsCode) {
  int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
  if (fd < 0) {
    if (errno == EEXIST) return FailureOf(existsCode, "cannot create", path, "it exists already");
    return Failure(errno == ENOENT ? ErrorCode::NotFound : ErrorCode::CannotWrite, "cannot create", path);
  }
  return OutputFile(path, fd);
}
}  // namespace

Result<OutputFile> CreateOutputFile(const Path& path) { return Open(path, O_CREAT | O_TRUNC, ErrorCode::CannotWrite); }

Result<OutputFile> CreateNewFile(const Path& path) { return Open(path, O_CREAT | O_EXCL, ErrorCode::Locked); }

Status RemoveFile(const Path& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) return Failure(ErrorCode::CannotWrite, "cannot remove", path);
  return {};
}

void detail::SetSystemError(Fault fault) {
  switch (fault) {
    case Fault::DiskFull: errno = ENOSPC; break;
    case Fault::DeviceError: errno = EIO; break;
    case Fault::AccessDenied: errno = EACCES; break;
  }
}

namespace {
// The target's previous contents under "<target>.bak": a second name for the same file when
// the file system allows it, else a copy.
Status KeepBackup(const Path& target, const FaultPlan* faults) {
  Path backup = target;
  backup += ".bak";
  constexpr std::string_view doing = "cannot keep the previous version as";
  if (faults && detail::Injected(faults->backup)) return Failure(ErrorCode::CannotWrite, doing, backup);
  if (::unlink(backup.c_str()) != 0 && errno != ENOENT) return Failure(ErrorCode::CannotWrite, doing, backup);
  if (::link(target.c_str(), backup.c_str()) == 0) return {};
  std::error_code ec;
  std::filesystem::copy_file(target, backup, ec);
  if (ec) return FailureOf(ErrorCode::CannotWrite, doing, backup, ec.message());
  return {};
}

// Read-only for this user: no write permission at all, or none that this user has.
bool NotWritable(const Path& target, const struct stat& st) {
  return (st.st_mode & 0222) == 0 || (::access(target.c_str(), W_OK) != 0 && errno == EACCES);
}

// The new file takes the old one's owner, group and mode. Only the administrator may give a
// file away; anyone may hand it to a group of their own, so the group is tried alone then.
// The mode comes last: a change of owner clears the set-id bits.
Status CopyAttributes(const Path& tempPath, const Path& target, const struct stat& st) {
  if ((st.st_uid != ::geteuid() || st.st_gid != ::getegid()) && ::chown(tempPath.c_str(), st.st_uid, st.st_gid) != 0) {
    if (errno != EPERM) return Failure(ErrorCode::CannotWrite, "cannot give the new file the owner of", target);
    (void)::chown(tempPath.c_str(), static_cast<uid_t>(-1), st.st_gid);
  }
  if (::chmod(tempPath.c_str(), st.st_mode & 07777) != 0)
    return Failure(ErrorCode::CannotWrite, "cannot give the new file the mode of", target);
  return {};
}
}  // namespace

Status Replace(OutputFile temp, const Path& requested, Backup backup) {
  Path tempPath = temp.path();
  const FaultPlan* faults = temp.faults();
  auto fail = [&](Error error) -> Status {
    (void)temp.Close();
    (void)RemoveFile(tempPath);
    return error;
  };
  Result<Path> followed = detail::FollowLink(requested);
  if (!followed) return fail(followed.error());
  const Path& target = *followed;
  struct stat st;
  bool exists = ::stat(target.c_str(), &st) == 0;
  if (exists && NotWritable(target, st)) return fail(FailureOf(ErrorCode::CannotWrite, "cannot replace", target, "it is read-only"));
  if (Status s = temp.FlushToDisk(); !s) return fail(s.error());
  if (Status s = temp.Close(); !s) return fail(s.error());
  if (exists) {
    if (Status s = CopyAttributes(tempPath, target, st); !s) return fail(s.error());
    if (backup == Backup::Keep)
      if (Status s = KeepBackup(target, faults); !s) return fail(s.error());
  }
  if ((faults && detail::Injected(faults->rename)) || ::rename(tempPath.c_str(), target.c_str()) != 0)
    return fail(Failure(ErrorCode::CannotWrite, "cannot replace", target));
  return SyncFolder(FolderOf(target));
}

// ---- Attributes and folders ----

Result<bool> IsReadOnly(const Path& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return Failure(ReadCode(), "cannot read the attributes of", path);
  return (st.st_mode & 0222) == 0;
}

Status SetReadOnly(const Path& path, bool readOnly) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return Failure(ReadCode(), "cannot read the attributes of", path);
  mode_t mode = readOnly ? (st.st_mode & ~mode_t(0222)) : (st.st_mode | S_IWUSR);
  if (::chmod(path.c_str(), mode & 07777) != 0) return Failure(ErrorCode::CannotWrite, "cannot change the attributes of", path);
  return {};
}

Result<std::vector<Text>> ListFolder(const Path& folder, TextView wildcard) {
  DIR* dir = ::opendir(folder.c_str());
  if (!dir) return Failure(ReadCode(), "cannot list", folder);
  std::vector<Text> names;
  while (const dirent* entry = ::readdir(dir)) {
    Text name = FromUtf8(entry->d_name);
    if (name == u"." || name == u"..") continue;
    std::error_code ec;
    if (!std::filesystem::is_regular_file(folder / entry->d_name, ec)) continue;
    if (MatchesWildcard(name, wildcard)) names.push_back(std::move(name));
  }
  ::closedir(dir);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tq::os
