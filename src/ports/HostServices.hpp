#pragma once
// What the host add-in exports: its settings file and its configuration values.
#include <optional>

#include "base/Text.hpp"

namespace tq {

class HostServices {
 public:
  virtual ~HostServices() = default;
  // "TQAddinGetIniFile": the full path of the host ini file.
  virtual Text HostIniFile() const = 0;
  // "TQAddinGetConfigData": a configuration value by section and key; nothing when the
  // host does not export the function.
  virtual std::optional<Text> ConfigData(TextView section, TextView key) const = 0;
};

}  // namespace tq
