#pragma once
// Checks that the DXF backend reads a drawing as ezdxf does.
#include <gtest/gtest.h>

#include <algorithm>

#include "dxf/DxfDrawing.hpp"
#include "support/Listing.hpp"

namespace tq::test {

inline void ExpectSameReading(const dxf::DxfDrawing& drawing, const Listing& listing) {
  ASSERT_FALSE(listing.entities.empty());
  std::vector<std::string> expectedSelectable;
  for (const ListedEntity& e : listing.entities) {
    ObjectId id = drawing.FindHandle(FromUtf8(e.handle));
    ASSERT_FALSE(id.isNull()) << "handle " << e.handle;
    EXPECT_EQ(ToUtf8(drawing.EntityType(id)), e.type) << e.handle;
    EXPECT_EQ(ToUtf8(drawing.Layer(id)), e.layer) << e.handle;
    EXPECT_EQ(drawing.ColourIndex(id), e.colour) << e.handle;
    if (e.type == "TEXT") {
      auto text = drawing.TextData(id);
      ASSERT_TRUE(text) << e.handle;
      EXPECT_EQ(ToUtf8(text->string), e.text) << e.handle;
    }
    if (e.layer != "凍結") expectedSelectable.push_back(e.handle);
  }
  for (const auto& [key, lines] : listing.xdata) {
    ObjectId id = drawing.FindHandle(FromUtf8(key.first));
    auto read = drawing.ReadXData(id, FromUtf8(key.second));
    ASSERT_TRUE(read) << key.first << " " << key.second;
    std::vector<std::string> got;
    for (const Text& line : *read) got.push_back(ToUtf8(line));
    EXPECT_EQ(got, lines) << key.first << " " << key.second;
  }
  std::vector<std::string> selected;
  for (ObjectId id : drawing.SelectAll({})) selected.push_back(ToUtf8(drawing.Handle(id)));
  std::sort(selected.begin(), selected.end());
  std::sort(expectedSelectable.begin(), expectedSelectable.end());
  EXPECT_EQ(selected, expectedSelectable);
}

}  // namespace tq::test
