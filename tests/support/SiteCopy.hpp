#pragma once
// A copy of the example installation, for commands that write into their installation.
#include <filesystem>

#include "support/TempDir.hpp"

namespace tq::test {

struct SiteCopy {
  TempDir dir;
  std::filesystem::path site = dir / "site";
  SiteCopy() { std::filesystem::copy(TQ_EXAMPLE_SITE, site, std::filesystem::copy_options::recursive); }
  std::string Ini() const { return " --ini '" + (site / "Velum.ini").string() + "'"; }
  std::string Drawing() const { return "'" + (site / "drawings" / "設備標準図.dxf").string() + "'"; }
};

}  // namespace tq::test
