#pragma once
// What the host provides: the host add-in's settings file and configuration values, and the
// spreadsheet engine the size workbooks are read and written with.
#include <optional>

#include "base/Text.hpp"
#include "ports/Workbook.hpp"

namespace tq {

class HostServices {
 public:
  virtual ~HostServices() = default;
  // "TQAddinGetIniFile": the full path of the host ini file.
  virtual Text HostIniFile() const = 0;
  // "TQAddinGetConfigData": a configuration value by section and key; nothing when the
  // host does not export the function.
  virtual std::optional<Text> ConfigData(TextView section, TextView key) const = 0;
  // The workbook engine of the size setting dialog, kept by the host for the whole run and
  // started at its first use; null when this host has none (the dialog then reports that
  // the engine cannot be started).
  virtual Workbook* SizeWorkbook() const = 0;
};

}  // namespace tq
