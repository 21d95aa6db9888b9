#pragma once
// A copy of the example installation, for commands that write into their installation.
#include <filesystem>

#include "support/TempDir.hpp"

namespace tq::test {

// In a folder whose name holds Japanese characters, as the users' folders do. No space: a
// script's "save PATH" takes a path without one (the release test and the seam's contract
// tests try folders with spaces).
struct SiteCopy {
  TempDir dir{"設備現場-"};
  std::filesystem::path site = dir / "site";
  SiteCopy() { std::filesystem::copy(U8Path(TQ_EXAMPLE_SITE), site, std::filesystem::copy_options::recursive); }
  std::string Ini() const { return " --ini " + Quoted(site / "Velum.ini"); }
  std::string Drawing() const { return Quoted(site / "drawings" / u8"設備標準図.dxf"); }
};

}  // namespace tq::test
