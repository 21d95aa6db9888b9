// The seam on Windows: files, folders and attributes, through the wide calls only.
#include <windows.h>

#include <algorithm>
#include <utility>

#include "base/os/Os.hpp"
#include "base/os/WindowsError.hpp"

namespace tq::os {

namespace {

using detail::FailureOf;

HANDLE AsHandle(intptr_t h) { return reinterpret_cast<HANDLE>(h); }

struct Handle {
  HANDLE h = INVALID_HANDLE_VALUE;
  ~Handle() {
    if (h != INVALID_HANDLE_VALUE && h != nullptr) ::CloseHandle(h);
  }
};


HANDLE OpenForReading(const Path& path) {
  return ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
}

}  // namespace

Result<std::string> ReadWholeFile(const Path& path) {
  Handle file{OpenForReading(path)};
  if (file.h == INVALID_HANDLE_VALUE) {
    // A folder cannot be opened as a file: say so rather than "access is denied".
    DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY))
      return FailureOf(ErrorCode::CannotRead, "cannot read", path, "it is a folder");
    return detail::Failure(detail::ReadCode(), "cannot read", path);
  }
  LARGE_INTEGER size;
  if (!::GetFileSizeEx(file.h, &size)) return detail::Failure(ErrorCode::CannotRead, "cannot read", path);
  std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
  size_t done = 0;
  while (done < bytes.size()) {
    DWORD chunk = static_cast<DWORD>(std::min<size_t>(bytes.size() - done, 1u << 30)), n = 0;
    if (!::ReadFile(file.h, bytes.data() + done, chunk, &n, nullptr)) return detail::Failure(ErrorCode::CannotRead, "cannot read", path);
    if (n == 0) break;
    done += n;
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
    std::swap(mapping_, other.mapping_);
  }
  return *this;
}
void MappedFile::Release() {
  if (data_) ::UnmapViewOfFile(data_);
  if (mapping_) ::CloseHandle(mapping_);
  data_ = nullptr;
  mapping_ = nullptr;
  size_ = 0;
}

Result<MappedFile> MapFile(const Path& path) {
  Handle file{OpenForReading(path)};
  if (file.h == INVALID_HANDLE_VALUE) return detail::Failure(detail::ReadCode(), "cannot read", path);
  LARGE_INTEGER size;
  if (!::GetFileSizeEx(file.h, &size)) return detail::Failure(ErrorCode::CannotRead, "cannot read", path);
  MappedFile mapped;
  if (size.QuadPart == 0) return mapped;
  mapped.mapping_ = ::CreateFileMappingW(file.h, nullptr, PAGE_READONLY, 0, 0, nullptr);
  if (!mapped.mapping_) return detail::Failure(ErrorCode::CannotRead, "cannot map", path);
  mapped.data_ = static_cast<const char*>(::MapViewOfFile(mapped.mapping_, FILE_MAP_READ, 0, 0, 0));
  if (!mapped.data_) return detail::Failure(ErrorCode::CannotRead, "cannot map", path);
  mapped.size_ = static_cast<size_t>(size.QuadPart);
  return mapped;
}

// ---- Output files ----

Status OutputFile::WriteAll(std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD chunk = static_cast<DWORD>(std::min<size_t>(bytes.size(), 1u << 30)), n = 0;
    if (!::WriteFile(AsHandle(handle_), bytes.data(), chunk, &n, nullptr))
      return detail::Failure(ErrorCode::CannotWrite, "cannot write", path_);
    bytes.remove_prefix(n);
    written_ += n;
  }
  return {};
}

bool OutputFile::SyncHandle() { return ::FlushFileBuffers(AsHandle(handle_)); }

bool OutputFile::ReleaseHandle() {
  intptr_t h = std::exchange(handle_, -1);
  return h == -1 || ::CloseHandle(AsHandle(h));
}

namespace {
Result<OutputFile> Open(const Path& path, DWORD disposition, ErrorCode existsCode) {
  HANDLE h = ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) {
    DWORD error = ::GetLastError();
    if (error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS) return FailureOf(existsCode, "cannot create", path, "it exists already");
    return FailureOf(error == ERROR_PATH_NOT_FOUND ? ErrorCode::NotFound : ErrorCode::CannotWrite, "cannot create", path,
                     detail::SystemMessage(error));
  }
  return OutputFile(path, reinterpret_cast<intptr_t>(h));
}
}  // namespace

Result<OutputFile> CreateOutputFile(const Path& path) { return Open(path, CREATE_ALWAYS, ErrorCode::CannotWrite); }

Result<OutputFile> CreateNewFile(const Path& path) { return Open(path, CREATE_NEW, ErrorCode::Locked); }

Status RemoveFile(const Path& path) {
  if (!::DeleteFileW(path.c_str())) {
    DWORD error = ::GetLastError();
    if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND)
      return FailureOf(ErrorCode::CannotWrite, "cannot remove", path, detail::SystemMessage(error));
  }
  return {};
}

void detail::SetSystemError(Fault fault) {
  switch (fault) {
    case Fault::DiskFull: ::SetLastError(ERROR_DISK_FULL); break;
    case Fault::DeviceError: ::SetLastError(ERROR_WRITE_FAULT); break;
    case Fault::AccessDenied: ::SetLastError(ERROR_ACCESS_DENIED); break;
  }
}

// ReplaceFileW keeps the target's attributes, security and streams and leaves its previous
// contents under the backup name; a target that is not there yet is simply moved into place.
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
  DWORD attributes = ::GetFileAttributesW(target.c_str());
  bool exists = attributes != INVALID_FILE_ATTRIBUTES;
  if (exists && (attributes & FILE_ATTRIBUTE_READONLY))
    return fail(FailureOf(ErrorCode::CannotWrite, "cannot replace", target, "it is read-only"));
  if (Status s = temp.FlushToDisk(); !s) return fail(s.error());
  if (Status s = temp.Close(); !s) return fail(s.error());
  if (faults && detail::Injected(faults->rename)) return fail(detail::Failure(ErrorCode::CannotWrite, "cannot replace", target));
  if (!exists) {
    if (!::MoveFileExW(tempPath.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
      return fail(detail::Failure(ErrorCode::CannotWrite, "cannot replace", target));
    return {};
  }
  Path backupPath = target;
  backupPath += L".bak";
  if (backup == Backup::Keep) {
    constexpr std::string_view doing = "cannot keep the previous version as";
    if (faults && detail::Injected(faults->backup)) return fail(detail::Failure(ErrorCode::CannotWrite, doing, backupPath));
    if (Status s = RemoveFile(backupPath); !s) return fail(FailureOf(ErrorCode::CannotWrite, doing, backupPath, ToUtf8(s.error().message)));
  }
  const wchar_t* keepAs = backup == Backup::Keep ? backupPath.c_str() : nullptr;
  if (!::ReplaceFileW(target.c_str(), tempPath.c_str(), keepAs, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr))
    return fail(detail::Failure(ErrorCode::CannotWrite, "cannot replace", target));
  // The rename itself on the disk: flushing the new file's handle writes its directory entry.
  Handle replaced{::CreateFileW(target.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr)};
  if (replaced.h == INVALID_HANDLE_VALUE || !::FlushFileBuffers(replaced.h))
    return detail::Failure(ErrorCode::CannotWrite, "cannot flush", target);
  return {};
}

// ---- Attributes and folders ----

Result<bool> IsReadOnly(const Path& path) {
  DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return detail::Failure(detail::ReadCode(), "cannot read the attributes of", path);
  return (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

Status SetReadOnly(const Path& path, bool readOnly) {
  DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return detail::Failure(detail::ReadCode(), "cannot read the attributes of", path);
  attributes = readOnly ? (attributes | FILE_ATTRIBUTE_READONLY) : (attributes & ~DWORD(FILE_ATTRIBUTE_READONLY));
  if (!::SetFileAttributesW(path.c_str(), attributes)) return detail::Failure(ErrorCode::CannotWrite, "cannot change the attributes of", path);
  return {};
}

Result<std::vector<Text>> ListFolder(const Path& folder, TextView wildcard) {
  Path pattern = folder / std::wstring(wildcard.begin(), wildcard.end());
  WIN32_FIND_DATAW found;
  HANDLE find = ::FindFirstFileW(pattern.c_str(), &found);
  std::vector<Text> names;
  if (find == INVALID_HANDLE_VALUE) {
    DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return names;
    return FailureOf(error == ERROR_PATH_NOT_FOUND ? ErrorCode::NotFound : ErrorCode::CannotRead, "cannot list", folder,
                     detail::SystemMessage(error));
  }
  do {
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
    Text name(found.cFileName, found.cFileName + ::wcslen(found.cFileName));
    if (MatchesWildcard(name, wildcard)) names.push_back(std::move(name));
  } while (::FindNextFileW(find, &found));
  ::FindClose(find);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tq::os
