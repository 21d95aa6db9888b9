#pragma once
// Host services over a host ini written by the test.
#include "ports/HostServices.hpp"
#include "base/Profile.hpp"

namespace tq::test {

class FakeHost : public HostServices {
 public:
  explicit FakeHost(Text ini, bool exportsConfigData = true) : ini_(std::move(ini)), exports_(exportsConfigData) {}
  // The system code page of the tests: CP932, as on a Japanese Windows.
  const CodePage& codePage() const { return codePage_; }
  Text HostIniFile() const override { return ini_; }
  std::optional<Text> ConfigData(TextView section, TextView key) const override {
    if (!exports_) return std::nullopt;
    return ReadProfileString(section, key, u"", ini_, codePage_);
  }
  Workbook* SizeWorkbook() const override { return workbook; }

  // The engine a test hands to the size setting dialog (a MemoryWorkbook, or LibreOffice).
  Workbook* workbook = nullptr;

 private:
  Text ini_;
  bool exports_;
  CodePage codePage_{"CP932"};
};

}  // namespace tq::test
