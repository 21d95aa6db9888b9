#include <gtest/gtest.h>

#include <filesystem>

#include "dxf/DxfDrawing.hpp"
#include "support/Listing.hpp"

using namespace tq;

// Each input that once crashed the reader: the strict read succeeds or fails naming a line,
// the recover read gives a document that lists a problem exactly when the strict read failed.
TEST(DxfRegressions, NoInputCrashesTheReader) {
  size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(test::Fixture("dxf/regressions"))) {
    if (entry.path().extension() == ".md") continue;
    std::string bytes = ReadFileBytes(entry.path()).value_or("");
    Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bytes);
    if (!strict) {
      EXPECT_GT(strict.error().line, 0u) << entry.path();
    }
    Result<dxf::Recovered> recovered = dxf::Document::Recover(bytes);
    ASSERT_TRUE(recovered) << entry.path();
    EXPECT_EQ(recovered->problems.empty(), strict.ok()) << entry.path();
    dxf::DxfDrawing drawing(std::move(recovered->document), "r.dxf");
    for (ObjectId id : drawing.SelectAll({})) drawing.EntityExtents(id), drawing.ReadXData(id, u"TQ_STDINF01");
    EXPECT_FALSE(drawing.document().Serialize().empty()) << entry.path();
    ++files;
  }
  EXPECT_GE(files, 1u);
}
