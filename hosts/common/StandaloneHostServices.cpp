#include "common/StandaloneHostServices.hpp"

#include <filesystem>
#include <stdexcept>

#include "base/Paths.hpp"
#include "base/Profile.hpp"
#include "base/os/Os.hpp"

#ifndef TQ_EXAMPLE_SITE
#error "TQ_EXAMPLE_SITE names the bundled example installation"
#endif

namespace tq {

namespace {
// The example installation beside the program (as the release unpacks it), else the one of the
// source tree the program was built from.
std::string BundledHostIni() {
  if (Result<os::Path> folder = os::ExecutableFolder()) {
    os::Path beside = *folder / "examples" / "site" / "Velum.ini";
    std::error_code ec;
    if (std::filesystem::is_regular_file(beside, ec)) return os::Shown(beside);
  }
  return std::string(TQ_EXAMPLE_SITE) + "/Velum.ini";
}
}  // namespace

Text StandaloneHostServices::FindHostIni(const std::optional<std::string>& iniOption) {
  std::string path;
  if (iniOption) path = *iniOption;
  else if (std::optional<Text> env = os::Environment(u"TQ_HOST_INI"); env && !env->empty()) path = ToUtf8(*env);
  else path = BundledHostIni();
  std::filesystem::path fsPath(std::u8string(path.begin(), path.end()));
  if (!std::filesystem::is_regular_file(fsPath) || !ReadFileBytes(fsPath))
    throw std::runtime_error("cannot read the host settings file " + path);
  return FromFsPath(std::filesystem::absolute(fsPath).lexically_normal());
}

std::optional<Text> StandaloneHostServices::ConfigData(TextView section, TextView key) const {
  return ReadProfileString(section, key, u"", iniFile_, codePage_);
}

}  // namespace tq
