#include "base/Paths.hpp"

#include <fstream>

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
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return std::nullopt;
  std::streamoff size = in.tellg();
  if (size < 0) return std::nullopt;
  // One allocation of the file's size and one read: a drawing of 60 MB is held once.
  std::string bytes(static_cast<size_t>(size), '\0');
  in.seekg(0);
  if (!in.read(bytes.data(), size)) return std::nullopt;
  return bytes;
}

Status WriteFileBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (out) {
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
  }
  if (!out) return MakeError(ErrorCode::CannotWrite, u"cannot write " + FromFsPath(path));
  return {};
}

}  // namespace tq
