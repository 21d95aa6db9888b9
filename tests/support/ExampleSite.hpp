#pragma once
// The example installation copied for a test, with its drawing open in the test's process.
#include <memory>

#include "dxf/DxfDrawing.hpp"
#include "site/Folders.hpp"
#include "support/FakeHost.hpp"
#include "support/SiteCopy.hpp"

namespace tq::test {

struct ExampleSite {
  SiteCopy copy;
  FakeHost host{FromFsPath(copy.site / "Velum.ini")};
  Folders folders{host, host.codePage()};
  std::filesystem::path drawingPath = copy.site / "drawings" / std::filesystem::path(std::u8string(u8"設備標準図.dxf"));
  std::unique_ptr<dxf::DxfDrawing> drawing = dxf::DxfDrawing::Open(drawingPath).value();

  // A file of the add-in data folder ("system/Addin/標準図").
  std::filesystem::path AddinFile(const std::string& name) const {
    return copy.site / "system" / "Addin" / std::filesystem::path(std::u8string(u8"標準図")) /
           std::filesystem::path(std::u8string(name.begin(), name.end()));
  }
  // The whole drawing as it would be saved.
  std::string Bytes() const { return drawing->document().Serialize(); }
};

}  // namespace tq::test
