// Lines as the size table draws them: their linetype and lineweight, and an end point moved.
#include <gtest/gtest.h>

#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"
#include "support/Listing.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::unique_ptr<dxf::DxfDrawing> FromText(const std::string& text) {
  return std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(text).value(), "memory.dxf");
}

}  // namespace

TEST(DxfLineEdit, MovedLineEndChangesOnlyThatEntitysBytes) {
  std::string original = ReadFixture("dxf/ezdxf_R2018.dxf");
  auto drawing = FromText(original);
  ObjectId line = drawing->FindHandle(u"3C");
  ASSERT_EQ(drawing->MoveLineEnd(line, LineEnd::End, {200, -50, 0}), EditResult::Ok);
  const dxf::EntityRecord& rec = drawing->document().records()[line.value - 1];
  std::string saved = drawing->document().Serialize();
  ASSERT_NE(saved, original);
  EXPECT_EQ(saved.substr(0, rec.begin), original.substr(0, rec.begin));
  EXPECT_EQ(saved.substr(saved.size() - (original.size() - rec.end)), original.substr(rec.end));
  auto reopened = FromText(saved);
  std::optional<LineEntity> moved = reopened->LineData(reopened->FindHandle(u"3C"));
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->start, (Point3{100, 100, 0}));
  EXPECT_EQ(moved->end, (Point3{200, -50, 0}));
}

TEST(DxfLineEdit, MovedStartLeavesTheEndWhereItWas) {
  auto drawing = FromText(R12Drawing(LineTags("A1", 0, 0, 10, 20)));
  ObjectId line = drawing->FindHandle(u"A1");
  ASSERT_EQ(drawing->MoveLineEnd(line, LineEnd::Start, {0, -30, 0}), EditResult::Ok);
  EXPECT_EQ(drawing->LineData(line)->start, (Point3{0, -30, 0}));
  EXPECT_EQ(drawing->LineData(line)->end, (Point3{10, 20, 0}));
}

TEST(DxfLineEdit, MovedLineIsFoundByAWindowQueryWhereItNowLiesAndItsExtentsFollow) {
  auto drawing = FromText(R12Drawing(LineTags("A1", 0, 0, 10, 0) + LineTags("A2", 100, 100, 200, 100)));
  ObjectId line = drawing->FindHandle(u"A1");
  ASSERT_EQ(drawing->SelectWindow({u"LINE", u""}, Rect{-1, -1, 11, 1}), std::vector<ObjectId>{line});  // builds the index
  ASSERT_TRUE(drawing->EntityExtents(line));
  ASSERT_EQ(drawing->MoveLineEnd(line, LineEnd::End, {5000, 5000, 0}), EditResult::Ok);
  EXPECT_EQ(drawing->SelectWindow({u"LINE", u""}, Rect{4990, 4990, 5010, 5010}), std::vector<ObjectId>{line});
  EXPECT_EQ(drawing->EntityExtents(line)->max, (Point3{5000, 5000, 0}));
}

TEST(DxfLineEdit, LineEndOnALockedLayerIsNotMoved) {
  auto drawing = FromText(R12Drawing(LineTags("A1", 0, 0, 10, 0, "LOCKED")));
  ObjectId line = drawing->FindHandle(u"A1");
  EXPECT_EQ(drawing->MoveLineEnd(line, LineEnd::End, {10, -10, 0}), EditResult::OnLockedLayer);
  EXPECT_EQ(drawing->LineData(line)->end, (Point3{10, 0, 0}));
  EXPECT_FALSE(drawing->document().modified());
}

TEST(DxfLineEdit, ALineWithoutZGroupsGetsTheZItIsMovedTo) {
  Tags flat{{0, "LINE"}, {5, "A1"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "10"}, {21, "0"}};
  auto drawing = FromText(R12Drawing(flat));
  ObjectId line = drawing->FindHandle(u"A1");
  ASSERT_EQ(drawing->MoveLineEnd(line, LineEnd::End, {10, 5, 7}), EditResult::Ok);
  auto reopened = FromText(drawing->document().Serialize());
  EXPECT_EQ(reopened->LineData(reopened->FindHandle(u"A1"))->end, (Point3{10, 5, 7}));
}

TEST(DxfLineEdit, OnlyLinesHaveEndsToMove) {
  auto drawing = FromText(R12Drawing(TextTags("B1", "x", 0, 0)));
  EXPECT_EQ(drawing->MoveLineEnd(drawing->FindHandle(u"B1"), LineEnd::End, {1, 1, 0}), EditResult::NotFound);
}

TEST(DxfLineEdit, NewLineKeepsItsLinetypeAndLineweight) {
  auto drawing = FromText(ReadFixture("dxf/ezdxf_R2000.dxf"));
  ObjectId added = drawing->AddLine({{0, 0, 0}, {10, 0, 0}, u"0", 3, u"Continuous", 50});
  Text handle = drawing->Handle(added);
  auto reopened = FromText(drawing->document().Serialize());
  std::optional<LineEntity> line = reopened->LineData(reopened->FindHandle(handle));
  ASSERT_TRUE(line);
  EXPECT_EQ(line->linetype, u"Continuous");
  EXPECT_EQ(line->lineweight, 50);
  EXPECT_EQ(line->colour, 3);
}

TEST(DxfLineEdit, ByLayerLinetypeAndLineweightWriteNoGroups) {
  auto drawing = FromText(ReadFixture("dxf/ezdxf_R2000.dxf"));
  ObjectId added = drawing->AddLine({{0, 0, 0}, {10, 0, 0}, u"0", 256, u"", kLineweightByLayer});
  const dxf::TagList& tags = *drawing->document().records()[added.value - 1].edit;
  EXPECT_FALSE(dxf::FindTag(tags, 6));
  EXPECT_FALSE(dxf::FindTag(tags, 370));
}

TEST(DxfLineEdit, AnR12DrawingHasNoLineweightGroup) {
  auto drawing = FromText(R12Drawing(LineTags("A1", 0, 0, 10, 0)));
  ObjectId added = drawing->AddLine({{0, 0, 0}, {10, 0, 0}, u"0", 256, u"CONTINUOUS", 50});
  std::string saved = drawing->document().Serialize();
  EXPECT_EQ(saved.find("370\n"), std::string::npos);
  auto reopened = FromText(saved);
  std::optional<LineEntity> line = reopened->LineData(reopened->FindHandle(drawing->Handle(added)));
  ASSERT_TRUE(line);
  EXPECT_EQ(line->linetype, u"CONTINUOUS");
  EXPECT_EQ(line->lineweight, kLineweightByLayer);
}
