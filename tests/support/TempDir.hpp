#pragma once
// A folder of its own for each test, removed afterwards.
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

#include "base/Paths.hpp"

namespace tq::test {

class TempDir {
 public:
  TempDir() {
    std::random_device rd;
    path_ = std::filesystem::temp_directory_path() / ("tq-test-" + std::to_string(rd()) + std::to_string(rd()));
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
