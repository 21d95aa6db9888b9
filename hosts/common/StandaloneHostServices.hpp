#pragma once
// Host services outside AutoCAD: the host ini is a file named on the command line.
#include <optional>
#include <string>

#include "base/Encoding.hpp"
#include "ports/HostServices.hpp"

namespace tq {

class StandaloneHostServices : public HostServices {
 public:
  // `--ini FILE`, else the environment variable TQ_HOST_INI, else the bundled example
  // installation. Throws std::runtime_error when the file named cannot be read.
  static Text FindHostIni(const std::optional<std::string>& iniOption);

  StandaloneHostServices(Text iniFile, const CodePage& systemCodePage)
      : iniFile_(std::move(iniFile)), codePage_(systemCodePage) {}

  Text HostIniFile() const override { return iniFile_; }
  std::optional<Text> ConfigData(TextView section, TextView key) const override;
  Workbook* SizeWorkbook() const override { return workbook_; }
  // The host's engine; it outlives these services' use.
  void SetSizeWorkbook(Workbook* workbook) { workbook_ = workbook; }

 private:
  Text iniFile_;
  const CodePage& codePage_;
  Workbook* workbook_ = nullptr;
};

}  // namespace tq
