#include "common/StandaloneHostServices.hpp"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "base/Paths.hpp"
#include "base/Profile.hpp"

#ifndef TQ_EXAMPLE_SITE
#error "TQ_EXAMPLE_SITE names the bundled example installation"
#endif

namespace tq {

Text StandaloneHostServices::FindHostIni(const std::optional<std::string>& iniOption) {
  std::string path;
  if (iniOption) path = *iniOption;
  else if (const char* env = std::getenv("TQ_HOST_INI"); env && *env) path = env;
  else path = std::string(TQ_EXAMPLE_SITE) + "/Velum.ini";
  std::filesystem::path fsPath(path);
  if (!std::filesystem::is_regular_file(fsPath) || !ReadFileBytes(fsPath))
    throw std::runtime_error("cannot read the host settings file " + path);
  return FromFsPath(std::filesystem::absolute(fsPath).lexically_normal());
}

std::optional<Text> StandaloneHostServices::ConfigData(TextView section, TextView key) const {
  return ReadProfileString(section, key, u"", iniFile_, codePage_);
}

}  // namespace tq
