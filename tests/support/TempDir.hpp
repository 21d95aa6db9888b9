#pragma once
// A folder of its own for each test, removed afterwards.
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

#include "base/Paths.hpp"

namespace tq::test {

// A path from UTF-8 text, on every platform (a narrow string alone is the ANSI code page on Windows).
inline std::filesystem::path U8Path(const std::string& utf8) { return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())); }
// A path as UTF-8 text, in single quotes for a command line.
inline std::string Quoted(const std::filesystem::path& path) {
  std::u8string u8 = path.u8string();
  return "'" + std::string(u8.begin(), u8.end()) + "'";
}

class TempDir {
 public:
  // `label` goes into the folder's name: a Japanese name with a space tries what users' folders do.
  explicit TempDir(const std::string& label = "") {
    std::random_device rd;
    path_ = std::filesystem::temp_directory_path() / U8Path("tq-test-" + label + std::to_string(rd()) + std::to_string(rd()));
    std::filesystem::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / std::filesystem::path(std::u8string(name.begin(), name.end())); }
  void Write(const std::string& name, std::string_view bytes) const {
    if (Status written = WriteFileBytes(*this / name, bytes); !written) throw std::runtime_error(written.error().Describe());
  }
  std::string Read(const std::string& name) const { return ReadFileBytes(*this / name).value_or("<missing>"); }
  Text TextPath(const std::string& name) const { return FromFsPath(*this / name); }

 private:
  std::filesystem::path path_;
};

}  // namespace tq::test
