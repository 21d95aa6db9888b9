#include <gtest/gtest.h>

#include <filesystem>

#include "dxf/DxfDrawing.hpp"
#include "support/Listing.hpp"

using namespace tq;

TEST(DxfRegressions, NoInputCrashesTheReader) {
  size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(test::Fixture("dxf/regressions"))) {
    if (entry.path().extension() == ".md") continue;
    std::string bytes = ReadFileBytes(entry.path()).value_or("");
    try {
      dxf::Document::Load(bytes, false);
    } catch (const dxf::DxfError&) {
    }
    std::vector<dxf::Problem> problems;
    dxf::DxfDrawing drawing(dxf::Document::Load(bytes, true, &problems), "r.dxf");
    for (ObjectId id : drawing.SelectAll({})) drawing.EntityExtents(id), drawing.ReadXData(id, u"TQ_STDINF01");
    EXPECT_FALSE(drawing.document().Serialize().empty()) << entry.path();
    ++files;
  }
  EXPECT_GE(files, 1u);
}
