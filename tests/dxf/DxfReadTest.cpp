#include <gtest/gtest.h>

#include "dxf/DxfDrawing.hpp"
#include "support/CompareWithListing.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;

class EzdxfFixture : public ::testing::TestWithParam<std::string> {};

TEST_P(EzdxfFixture, ReadsEveryEntityTextAndRecordAsEzdxfDoes) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_" + GetParam() + ".dxf")).value();
  ExpectSameReading(*drawing, ParseListing(ReadFixture("dxf/ezdxf_" + GetParam() + ".expected.tsv")));
}

TEST_P(EzdxfFixture, OpenAndSaveWithoutChangesIsByteIdentical) {
  std::string original = ReadFixture("dxf/ezdxf_" + GetParam() + ".dxf");
  auto doc = dxf::Document::Read(original).value();
  EXPECT_EQ(doc->Serialize(), original);
  TempDir dir;
  ASSERT_TRUE(doc->Save(dir / "copy.dxf"));
  EXPECT_EQ(dir.Read("copy.dxf"), original);
}

INSTANTIATE_TEST_SUITE_P(Versions, EzdxfFixture, ::testing::Values("R12", "R2000", "R2004", "R2010", "R2018"));

TEST(DxfRead, VersionAndEncodingOfTheFile) {
  auto r12 = dxf::Document::ReadFile(Fixture("dxf/ezdxf_R12.dxf")).value();
  EXPECT_EQ(r12->version(), "AC1009");
  EXPECT_EQ(r12->codec().encodingName(), "windows-31j");
  auto r2018 = dxf::Document::ReadFile(Fixture("dxf/ezdxf_R2018.dxf")).value();
  EXPECT_EQ(r2018->version(), "AC1032");
  EXPECT_TRUE(r2018->codec().isUtf8());
}

TEST(DxfRead, SelectAllFiltersByTypeAndLayerInDatabaseOrder) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_R2010.dxf")).value();
  std::vector<ObjectId> texts = drawing->SelectAll({u"TEXT", u""});
  ASSERT_EQ(texts.size(), 2u);  // the text on the frozen layer is left out
  EXPECT_LT(texts[0], texts[1]);
  EXPECT_EQ(drawing->Layer(texts[0]), u"ロック");
  std::vector<ObjectId> points = drawing->SelectAll({u"POINT", u"4"});
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(*drawing->PointPosition(points[0]), (Point3{500, 600, 0}));
  EXPECT_TRUE(drawing->SelectAll({u"POINT", u"5"}).empty());
}

TEST(DxfRead, TextDataOfASheetNumberText) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_R2004.dxf")).value();
  std::vector<ObjectId> texts = drawing->SelectAll({u"TEXT", u"5"});
  ASSERT_EQ(texts.size(), 1u);
  auto text = drawing->TextData(texts[0]);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->string, u"標準図-１２");
  EXPECT_EQ(text->position, (Point3{26000, 1000, 0}));
  EXPECT_DOUBLE_EQ(text->height, 350);
  EXPECT_EQ(text->layer, u"5");
}

TEST(DxfRead, LineDataOfALine) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_R12.dxf")).value();
  std::vector<ObjectId> lines = drawing->SelectAll({u"LINE", u""});
  ASSERT_EQ(lines.size(), 2u);
  auto line = drawing->LineData(lines[1]);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->start, (Point3{100, 100, 0}));
  EXPECT_EQ(line->end, (Point3{200, 300, 0}));
  EXPECT_EQ(line->colour, 3);
}

TEST(DxfRead, UnknownIdsGiveNothing) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_R12.dxf")).value();
  EXPECT_EQ(drawing->EntityType(ObjectId{}), u"");
  EXPECT_FALSE(drawing->TextData(ObjectId{999999}));
  EXPECT_FALSE(drawing->ReadXData(ObjectId{999999}, u"TQ_STDINF01"));
  EXPECT_EQ(drawing->SetColourIndex(ObjectId{999999}, 1), EditResult::NotFound);
}
