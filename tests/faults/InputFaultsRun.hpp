#pragma once
// Runs tqstd with a time limit, so that a command that never ends fails its test instead of
// holding up the run; and an installation copy whose settings file a test rewrites.
#include <string>

#include "base/Encoding.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

namespace tq::test {

// The exit status a command gets when the time limit ends it.
inline constexpr int kTimedOut = 124;

inline RunResult RunTqstdWithin(int seconds, const std::string& arguments) {
#ifdef _WIN32
  (void)seconds;  // Wine runs the executable once as a whole, under ctest's own limit
  return RunTqstd(arguments);
#else
  return RunCommand("timeout -k 5 " + std::to_string(seconds) + " " + TQSTD_PATH + " " + arguments + " 2>&1");
#endif
}

// The example installation with "標準図設定.ini" replaced by `settings` in the system code page.
struct SettingsSite : SiteCopy {
  explicit SettingsSite(const std::u16string& settings) { WriteSettings(EncodeCodePage(settings, "CP932")); }
  void WriteSettings(const std::string& bytes) const {
    std::filesystem::path file = site / "data" / u8"標準図設定.ini";
    if (Status written = WriteFileBytes(file, bytes); !written) throw std::runtime_error(written.error().Describe());
  }
  std::string DrawingBytes() const { return ReadFileBytes(site / "drawings" / u8"設備標準図.dxf").value_or("<missing>"); }
};

}  // namespace tq::test
