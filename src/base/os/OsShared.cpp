// What both implementations of the seam share: messages, buffering, the wildcard, the lock.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <random>
#include <utility>

#include "base/os/Os.hpp"

namespace tq::os {

std::string Shown(const Path& path) {
  std::u8string u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

namespace detail {
Error FailureOf(ErrorCode code, std::string_view doing, const Path& path, std::string_view cause) {
  std::string message = std::string(doing) + " " + Shown(path);
  if (!cause.empty()) message += ": " + std::string(cause);
  return MakeError(code, message);
}

Result<Path> FollowLink(const Path& requested) {
  std::error_code ec;
  if (!std::filesystem::is_symlink(requested, ec)) return requested;
  Path target = std::filesystem::canonical(requested, ec);
  if (ec) return FailureOf(ErrorCode::NotFound, "cannot follow the link", requested, ec.message());
  return target;
}

bool Injected(const std::optional<Fault>& step) {
  if (!step) return false;
  SetSystemError(*step);
  return true;
}
}  // namespace detail

// ---- Output files ----

OutputFile::~OutputFile() { (void)ReleaseHandle(); }
OutputFile::OutputFile(OutputFile&& other) noexcept { *this = std::move(other); }
OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
  if (this != &other) {
    (void)ReleaseHandle();
    path_ = std::move(other.path_);
    handle_ = std::exchange(other.handle_, -1);
    buffer_ = std::move(other.buffer_);
    faults_ = std::exchange(other.faults_, nullptr);
    written_ = std::exchange(other.written_, 0);
  }
  return *this;
}

std::string_view OutputFile::Allowed(std::string_view bytes, bool& fails) const {
  fails = false;
  if (!faults_ || !faults_->writeFailsAtByte || written_ + bytes.size() <= *faults_->writeFailsAtByte) return bytes;
  fails = true;
  uint64_t at = *faults_->writeFailsAtByte;
  return bytes.substr(0, at > written_ ? static_cast<size_t>(at - written_) : 0);
}

Status OutputFile::WriteThrough(std::string_view bytes) {
  bool fails = false;
  if (Status s = WriteAll(Allowed(bytes, fails)); !s) return s;
  if (fails) {
    detail::SetSystemError(faults_->writeFault);
    return detail::Failure(ErrorCode::CannotWrite, "cannot write", path_);
  }
  return {};
}

Status OutputFile::FlushToDisk() {
  if (!buffer_.empty()) {
    Status s = WriteThrough(buffer_);
    buffer_.clear();
    if (!s) return s;
  }
  if ((faults_ && detail::Injected(faults_->flush)) || !SyncHandle())
    return detail::Failure(ErrorCode::CannotWrite, "cannot flush", path_);
  return {};
}

Status OutputFile::Close() {
  Status s;
  if (!buffer_.empty()) s = WriteThrough(buffer_);
  buffer_.clear();
  if (!ReleaseHandle() && s) return detail::Failure(ErrorCode::CannotWrite, "cannot write", path_);
  return s;
}

// ---- Temporary files ----

namespace {
constexpr std::u16string_view kTempMark = u".tqstd-";
constexpr std::u16string_view kTempEnd = u".tmp";

Path FolderOf(const Path& path) { return path.has_parent_path() ? path.parent_path() : Path("."); }

int64_t SecondsSinceWritten(const std::filesystem::directory_entry& entry) {
  std::error_code ec;
  auto written = entry.last_write_time(ec);
  if (ec) return 0;
  return std::chrono::duration_cast<std::chrono::seconds>(std::filesystem::file_time_type::clock::now() - written).count();
}
int64_t SecondsSinceWritten(const Path& path) {
  std::error_code ec;
  std::filesystem::directory_entry entry(path, ec);
  return ec ? 0 : SecondsSinceWritten(entry);
}

Text Digits(uint64_t n, int base) {
  Text text;
  do {
    text.insert(text.begin(), u"0123456789abcdef"[n % base]);
    n /= base;
  } while (n);
  return text;
}

Path TempPathFor(const Path& target, uint64_t random) {
  Text name = u"." + target.filename().u16string() + Text(kTempMark) + Digits(detail::ProcessId(), 10) + u"-" +
              Digits(random, 16) + Text(kTempEnd);
  return FolderOf(target) / Path(name);
}
}  // namespace

std::optional<uint64_t> TempFileProcess(TextView name, TextView targetName) {
  Text head = u"." + Text(targetName) + Text(kTempMark);
  if (name.size() <= head.size() + kTempEnd.size() || name.substr(0, head.size()) != head ||
      name.substr(name.size() - kTempEnd.size()) != kTempEnd)
    return std::nullopt;
  TextView middle = name.substr(head.size(), name.size() - head.size() - kTempEnd.size());  // "<process>-<random>"
  size_t dash = middle.find(u'-');
  if (dash == 0 || dash == TextView::npos || dash + 1 == middle.size()) return std::nullopt;
  uint64_t process = 0;
  for (char16_t c : middle.substr(0, dash)) {
    if (c < u'0' || c > u'9') return std::nullopt;
    process = process * 10 + (c - u'0');
  }
  for (char16_t c : middle.substr(dash + 1))
    if (!((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'))) return std::nullopt;
  return process;
}

size_t RemoveLeftoverTempFiles(const Path& target) {
  std::error_code ec;
  std::filesystem::directory_iterator entries(FolderOf(target), ec);
  if (ec) return 0;  // the temporary file's own creation names what is wrong with the folder
  Text targetName = target.filename().u16string();
  size_t removed = 0;
  for (const std::filesystem::directory_entry& entry : entries) {
    std::optional<uint64_t> process = TempFileProcess(entry.path().filename().u16string(), targetName);
    if (!process || !entry.is_regular_file(ec)) continue;
    int64_t quiet = SecondsSinceWritten(entry);
    bool gone = *process != detail::ProcessId() && !ProcessIsAlive(*process);
    if ((gone && quiet >= kLeftoverQuietSeconds) || quiet >= kLeftoverAgeSeconds)
      if (RemoveFile(entry.path())) ++removed;
  }
  return removed;
}

Result<OutputFile> CreateTempFileBeside(const Path& requested, const FaultPlan* faults) {
  // Beside the file a link names: the rename that puts it in place stays in one folder.
  Result<Path> target = detail::FollowLink(requested);
  if (!target) return target.error();
  RemoveLeftoverTempFiles(*target);
  std::random_device random;
  for (int attempt = 0; attempt < 16; ++attempt) {
    uint64_t draw = (static_cast<uint64_t>(random()) << 32) | random();
    Result<OutputFile> file = CreateNewFile(TempPathFor(*target, draw));
    if (file) file->InjectFaults(faults);
    if (file || file.error().code != ErrorCode::Locked) return file;
  }
  return detail::FailureOf(ErrorCode::CannotWrite, "cannot create a temporary file beside", *target, "every name tried is taken");
}

// Small pieces gather in a buffer; a piece larger than the buffer goes straight to the file.
Status OutputFile::Write(std::string_view bytes) {
  constexpr size_t kBuffer = 1 << 20;
  if (buffer_.size() + bytes.size() <= kBuffer) {
    if (buffer_.capacity() < kBuffer) buffer_.reserve(kBuffer);
    buffer_ += bytes;
    return {};
  }
  if (!buffer_.empty()) {
    Status flushed = WriteThrough(buffer_);
    buffer_.clear();
    if (!flushed) return flushed;
  }
  if (bytes.size() >= kBuffer) return WriteThrough(bytes);
  buffer_ += bytes;
  return {};
}

Status WriteFileAtomically(const Path& target, std::string_view bytes, Backup backup, const FaultPlan* faults) {
  Result<OutputFile> temp = CreateTempFileBeside(target, faults);
  if (!temp) return temp.error();
  if (Status s = temp->Write(bytes); !s) {
    (void)Discard(std::move(*temp));
    return s;
  }
  return Replace(std::move(*temp), target, backup);
}

Status Discard(OutputFile file) {
  Path name = file.path();
  (void)file.Close();
  return RemoveFile(name);
}

namespace {
char16_t Folded(char16_t c) {
  if (c >= u'a' && c <= u'z') return static_cast<char16_t>(c - u'a' + u'A');
  if (c >= u'ａ' && c <= u'ｚ') return static_cast<char16_t>(c - u'ａ' + u'Ａ');
  return c;
}
}  // namespace

bool MatchesWildcard(TextView name, TextView wildcard) {
  // The classic two-pointer match: on a mismatch, let the last "*" take one more unit.
  size_t n = 0, w = 0, starW = TextView::npos, starN = 0;
  while (n < name.size()) {
    if (w < wildcard.size() && (wildcard[w] == u'?' || Folded(wildcard[w]) == Folded(name[n]))) {
      ++n, ++w;
    } else if (w < wildcard.size() && wildcard[w] == u'*') {
      starW = w++, starN = n;
    } else if (starW != TextView::npos) {
      w = starW + 1, n = ++starN;
    } else {
      return false;
    }
  }
  while (w < wildcard.size() && wildcard[w] == u'*') ++w;
  return w == wildcard.size();
}

// ---- The drawing lock ----

Path LockFileOf(const Path& drawing) {
  Path lock = drawing;
  lock += ".lock";
  return lock;
}

LockOwner CurrentOwner() {
  std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm utc{};
#ifdef _WIN32
  gmtime_s(&utc, &now);
#else
  gmtime_r(&now, &utc);
#endif
  char time[32];
  std::strftime(time, sizeof time, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return LockOwner{detail::UserName(), detail::HostName(), detail::ProcessId(), time};
}

std::string FormatLockFile(const LockOwner& owner) {
  return "user=" + ToUtf8(owner.user) + "\nhost=" + ToUtf8(owner.host) + "\nprocess=" + std::to_string(owner.process) +
         "\ntime=" + owner.time + "\n";
}

Result<LockOwner> ReadLockFile(const Path& lockFile) {
  Result<std::string> bytes = ReadWholeFile(lockFile);
  if (!bytes) return bytes.error();
  LockOwner owner;
  bool hasProcess = false;
  std::string_view rest = *bytes;
  while (!rest.empty()) {
    size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    size_t eq = line.find('=');
    if (eq == std::string_view::npos) continue;
    std::string_view key = line.substr(0, eq), value = line.substr(eq + 1);
    if (key == "user") owner.user = FromUtf8(value);
    else if (key == "host") owner.host = FromUtf8(value);
    else if (key == "time") owner.time = std::string(value);
    else if (key == "process") {
      char* stop = nullptr;
      std::string digits(value);
      owner.process = std::strtoull(digits.c_str(), &stop, 10);
      hasProcess = !digits.empty() && *stop == '\0';
    }
  }
  if (!hasProcess || owner.host.empty())
    return detail::FailureOf(ErrorCode::Malformed, "cannot read the lock file", lockFile, "it names no host and process");
  return owner;
}

LockHandle::~LockHandle() {
  if (!lockFile_.empty()) (void)RemoveFile(lockFile_);
}

LockHandle::LockHandle(LockHandle&& other) noexcept : lockFile_(std::move(other.lockFile_)) { other.lockFile_.clear(); }

LockHandle& LockHandle::operator=(LockHandle&& other) noexcept {
  if (this != &other) {
    if (!lockFile_.empty()) (void)RemoveFile(lockFile_);
    lockFile_ = std::move(other.lockFile_);
    other.lockFile_.clear();
  }
  return *this;
}

namespace {
// The lock matters between processes that run, never across a crash of the system: it is not
// flushed to the disk, which would cost more than the rest of a small drawing's save. A lock
// file that a crash left empty or cut short is replaced once it is older than any write of one.
constexpr int64_t kUnreadableLockSeconds = 60;

Result<LockHandle> CreateLock(const Path& lockFile) {
  Result<OutputFile> file = CreateNewFile(lockFile);
  if (!file) return file.error();
  Status written = file->Write(FormatLockFile(CurrentOwner()));
  if (written) written = file->Close();
  if (!written) {
    (void)RemoveFile(lockFile);
    return written.error();
  }
  return LockHandle(lockFile);
}

Error HeldBy(const Path& drawing, const LockOwner& owner) {
  return detail::FailureOf(ErrorCode::Locked, "cannot lock", drawing,
                           "it is in use by " + ToUtf8(owner.user) + " on " + ToUtf8(owner.host) + " (process " +
                               std::to_string(owner.process) + ", since " + owner.time + ")");
}
}  // namespace

Result<LockHandle> AcquireDrawingLock(const Path& drawing) {
  Result<Path> followed = detail::FollowLink(drawing);
  Path lockFile = LockFileOf(followed ? *followed : drawing);
  Result<LockHandle> lock = CreateLock(lockFile);
  if (lock || lock.error().code != ErrorCode::Locked) return lock;
  Result<LockOwner> owner = ReadLockFile(lockFile);
  // Released between the two steps: the lock is free now.
  if (!owner && owner.error().code == ErrorCode::NotFound) return CreateLock(lockFile);
  if (!owner && !(owner.error().code == ErrorCode::Malformed && SecondsSinceWritten(lockFile) >= kUnreadableLockSeconds))
    return detail::FailureOf(ErrorCode::Locked, "cannot lock", drawing, "its lock file cannot be read: " + owner.error().Describe());
  // Only a process of this host can be seen to be gone; a lock from elsewhere stands.
  if (owner && (owner->host != detail::HostName() || ProcessIsAlive(owner->process))) return HeldBy(drawing, *owner);
  if (Status removed = RemoveFile(lockFile); !removed) return removed.error();
  return CreateLock(lockFile);
}

}  // namespace tq::os
