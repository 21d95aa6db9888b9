#include "base/Paths.hpp"


#include "base/os/Os.hpp"

namespace tq {

namespace {
bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }
}  // namespace

Text JoinPath(TextView folder, TextView name) {
  Text path(folder);
  if (path.empty() || !IsSeparator(path.back())) path += u'\\';
  path += name;
  return path;
}

std::filesystem::path ToFsPath(TextView path) {
  Text native(path);
#ifndef _WIN32
  for (char16_t& c : native)
    if (c == u'\\') c = u'/';
#endif
  std::string utf8 = ToUtf8(native);
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

Text FromFsPath(const std::filesystem::path& path) {
  std::u8string u8 = path.u8string();
  return FromUtf8(std::string_view(reinterpret_cast<const char*>(u8.data()), u8.size()));
}

std::optional<std::string> ReadFileBytes(const std::filesystem::path& path) {
  Result<std::string> bytes = os::ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  return std::move(*bytes);
}

Status WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, const os::FaultPlan* faults) {
  return os::WriteFileAtomically(path, bytes, os::Backup::None, faults);
}

}  // namespace tq
