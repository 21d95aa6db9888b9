#include <gtest/gtest.h>

#include "drawing/FrameGrid.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

TEST(FrameGrid, WithNoSettingsAPointAt1000IsInFrame00AndBeyondTheLastColumnIsOutside) {
  Scene f({}, u"", false);
  FramePolygon polygon;
  FrameCell cell;
  ASSERT_TRUE(LocateFrame(*f.context, {1000, 1000, 0}, polygon, &cell));
  EXPECT_EQ(cell.row, 0);
  EXPECT_EQ(cell.column, 0);
  EXPECT_EQ(polygon, (FramePolygon{{0, 0, 0}, {28000, 0, 0}, {28000, 19800, 0}, {0, 19800, 0}, {0, 0, 0}}));
  FramePolygon none;
  EXPECT_FALSE(LocateFrame(*f.context, {90000, 1000, 0}, none));
  EXPECT_TRUE(none.empty());
  EXPECT_NE(f.editor.printed.find(u"\nWARNING:ﾌﾚｰﾑ情報が取得出来ません.\n"), Text::npos);
}

TEST(FrameGrid, GridFromTheSettingsFile) {
  Scene f({}, u"[標準図]\r\nﾌﾚｰﾑ原点X=100\r\nﾌﾚｰﾑ原点Y=-50\r\n縦ﾌﾚｰﾑ数=2\r\n横ﾌﾚｰﾑ数=4\r\nﾌﾚｰﾑ高さ=1000\r\nﾌﾚｰﾑ幅=2000\r\n");
  FramePolygon polygon;
  FrameCell cell;
  ASSERT_TRUE(LocateFrame(*f.context, {100 + 3 * 2000 + 1, -50 + 1000 + 1, 0}, polygon, &cell));
  EXPECT_EQ(cell.row, 1);
  EXPECT_EQ(cell.column, 3);
  EXPECT_FALSE(LocateFrame(*f.context, {100 + 4 * 2000 + 1, 0, 0}, polygon));
  EXPECT_TRUE(f.editor.printed.empty());
}

TEST(FrameGrid, PointOnTheBoundaryBetweenTwoFramesBelongsToNeither) {
  Scene f({});
  FramePolygon polygon;
  EXPECT_FALSE(LocateFrame(*f.context, {28000, 1000, 0}, polygon));   // between columns 0 and 1
  EXPECT_FALSE(LocateFrame(*f.context, {1000, 19800, 0}, polygon));   // between rows 0 and 1
  EXPECT_FALSE(LocateFrame(*f.context, {28000, 19800, 0}, polygon));  // a corner of four frames
  EXPECT_FALSE(LocateFrame(*f.context, {1000, 0, 0}, polygon));       // the grid's lower edge
  EXPECT_TRUE(LocateFrame(*f.context, {27999.999, 1000, 0}, polygon));
}

TEST(FrameGrid, PointLevelWithACornerIsOutside) {
  FramePolygon frame{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}};
  EXPECT_FALSE(PointInFrame({5, 10, 0}, frame));
  EXPECT_FALSE(PointInFrame({5, 0, 0}, frame));
  EXPECT_FALSE(PointInFrame({0, 5, 0}, frame));
  EXPECT_TRUE(PointInFrame({5, 5, 0}, frame));
  EXPECT_FALSE(PointInFrame({5, 5, 0}, FramePolygon{{0, 0, 0}}));
}

TEST(FrameGrid, GridWithNoRowsHoldsNoFrame) {
  Scene f({}, u"[標準図]\r\n縦ﾌﾚｰﾑ数=0\r\n横ﾌﾚｰﾑ数=-2\r\n");
  FramePolygon polygon;
  EXPECT_FALSE(LocateFrame(*f.context, {1000, 1000, 0}, polygon));
}

TEST(FrameGrid, TwoSheetNumberTextsInOneFrameTheFirstInSelectionOrderWins) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + TextTags("B2", "M-2", 100, 100));
  FramePolygon polygon = MakeFramePolygon(FrameGrid{}, 0, 0);
  ObjectId found;
  ASSERT_TRUE(FindSheetNumberText(*f.context, polygon, found));
  EXPECT_EQ(found, f.Id(u"B1"));
}

TEST(FrameGrid, TextOnLayerWithATrailingBlankOrASuffixIsNotASheetNumberText) {
  Scene f(TextTags("B1", "M-1", 100, 100, "5 ") + TextTags("B2", "M-2", 200, 200, "5a") + TextTags("B3", "M-3", 300, 300, "5"));
  EXPECT_FALSE(IsSheetNumberText(*f.context, f.Id(u"B1")));
  EXPECT_FALSE(IsSheetNumberText(*f.context, f.Id(u"B2")));
  EXPECT_TRUE(IsSheetNumberText(*f.context, f.Id(u"B3")));
  ObjectId found;
  ASSERT_TRUE(FindSheetNumberText(*f.context, MakeFramePolygon(FrameGrid{}, 0, 0), found));
  EXPECT_EQ(found, f.Id(u"B3"));
}

TEST(FrameGrid, NoSheetNumberTextInTheFrame) {
  Scene f(TextTags("B1", "M-1", 30000, 100));
  ObjectId found{7};
  EXPECT_FALSE(FindSheetNumberText(*f.context, MakeFramePolygon(FrameGrid{}, 0, 0), found));
  EXPECT_TRUE(found.isNull());
}

TEST(FrameGrid, FullWidthDigitsInASheetNumberTextAreShownAsHalfWidthDigits) {
  Scene f(TextTags("B1", EncodeCodePage(u"Ｍ－１０３ダクト", "CP932"), 100, 100));
  Text name;
  ASSERT_TRUE(ReadSheetName(*f.drawing, f.Id(u"B1"), name));
  EXPECT_EQ(name, u"M-103ﾀﾞｸﾄ");
}

TEST(FrameGrid, LongSheetNameIsBoundedToTheBufferInsteadOfOverrunningIt) {
  std::u16string longName(40, u'ガ');  // 80 units once half-width
  Scene f(TextTags("B1", EncodeCodePage(longName, "CP932"), 100, 100));
  Text name;
  ASSERT_TRUE(ReadSheetName(*f.drawing, f.Id(u"B1"), name));
  EXPECT_EQ(name.size(), 63u);
  EXPECT_EQ(name.substr(0, 2), u"ｶﾞ");
}

TEST(FrameGrid, SheetNameOfSomethingElseThanATextFails) {
  Scene f(LineTags("B1", 0, 0, 1, 1));
  Text name;
  EXPECT_FALSE(ReadSheetName(*f.drawing, f.Id(u"B1"), name));
}

TEST(FrameGrid, PickingPromptsAgainUntilAPointOrCancel) {
  RecordingEditor editor;
  editor.points = {{PickStatus::Other, {}}, {PickStatus::Other, {}}, {PickStatus::Normal, {5, 6, 0}}};
  Point3 point;
  ASSERT_TRUE(PickStdPoint(editor, point));
  EXPECT_EQ(point, (Point3{5, 6, 0}));
  EXPECT_EQ(editor.prompts, 3);
  EXPECT_NE(editor.printed.find(u"\n標準図を指示: "), Text::npos);
  editor.points = {{PickStatus::Cancel, {}}};
  EXPECT_FALSE(PickStdPoint(editor, point));
}

TEST(FrameGrid, SizeOfZeroOrLessWithHugeCountsIsNamedAndNotSearched) {
  // Counts a search of every frame still ends in: the whole-process tests try the hang.
  Scene f({}, u"[標準図]\r\n縦ﾌﾚｰﾑ数=20000\r\n横ﾌﾚｰﾑ数=-2\r\nﾌﾚｰﾑ幅=0\r\nﾌﾚｰﾑ高さ=-19800\r\n");
  FramePolygon polygon;
  EXPECT_FALSE(LocateFrame(*f.context, {1000, 1000, 0}, polygon));
  EXPECT_TRUE(polygon.empty());
  EXPECT_NE(f.editor.printed.find(u"WARNING:ﾌﾚｰﾑ幅=0 (標準図設定.ini): a frame width must be greater than 0"), Text::npos)
      << ToUtf8(f.editor.printed);
  EXPECT_NE(f.editor.printed.find(u"WARNING:ﾌﾚｰﾑ高さ=-19800 (標準図設定.ini)"), Text::npos);
  EXPECT_NE(f.editor.printed.find(u"WARNING:縦ﾌﾚｰﾑ数=20000 (標準図設定.ini): the count of frame rows must be from 1 to 10000"),
            Text::npos);
  EXPECT_NE(f.editor.printed.find(u"WARNING:横ﾌﾚｰﾑ数=-2"), Text::npos);
}

TEST(FrameGrid, CountsBelowOneOrBeyondAnyDrawingHoldNoFrame) {
  FrameGrid grid;
  EXPECT_TRUE(HoldsFrames(grid));
  for (auto change : std::initializer_list<void (*)(FrameGrid&)>{
           [](FrameGrid& g) { g.rows = 0; }, [](FrameGrid& g) { g.columns = -3; },
           [](FrameGrid& g) { g.rows = kMaxFrameCount + 1; }, [](FrameGrid& g) { g.columns = kMaxFrameCount + 1; },
           [](FrameGrid& g) { g.width = 0; }, [](FrameGrid& g) { g.height = -1; }}) {
    FrameGrid bad;
    change(bad);
    EXPECT_FALSE(HoldsFrames(bad));
    EXPECT_EQ(UnusableGridWarnings(bad).size(), 1u);
    FramePolygon polygon;
    EXPECT_FALSE(LocateFrame(bad, {1000, 1000, 0}, polygon));
  }
  EXPECT_TRUE(UnusableGridWarnings(grid).empty());
}

TEST(FrameGrid, TheLargestCountThatCanBeRealIsStillSearched) {
  Scene f({}, u"[標準図]\r\n縦ﾌﾚｰﾑ数=10000\r\n横ﾌﾚｰﾑ数=10000\r\n");
  FramePolygon polygon;
  FrameCell cell;
  ASSERT_TRUE(LocateFrame(*f.context, {9999 * 28000.0 + 1, 9999 * 19800.0 + 1, 0}, polygon, &cell));
  EXPECT_EQ(cell.row, 9999);
  EXPECT_EQ(cell.column, 9999);
  EXPECT_TRUE(f.editor.printed.empty()) << ToUtf8(f.editor.printed);
}
