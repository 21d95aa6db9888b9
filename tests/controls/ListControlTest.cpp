// The list control's rules: short strings, the highlight, the row geometry.
#include <gtest/gtest.h>

#include "controls/ListControl.hpp"

using namespace tq;
using namespace tq::controls;

namespace {
// Every character 10 pixels wide, "." 3 pixels: the eight-character reserve is 24 pixels.
class FixedMeasure : public TextMeasure {
 public:
  int Width(TextView text) const override {
    int w = 0;
    for (char16_t c : text) w += c == u'.' ? 3 : 10;
    return w;
  }
};
const FixedMeasure kMeasure;
}  // namespace

TEST(ListControl, ATextThatFitsIsShownAsItStands) {
  EXPECT_EQ(MakeShortString(kMeasure, u"ABC", 30), u"ABC");
  EXPECT_EQ(MakeShortString(kMeasure, u"", 0), u"");
}

TEST(ListControl, ALongTextKeepsTheHeadThatFitsWithTheEightCharacterReserve) {
  // 100 pixels: a head of 7 characters (70) and the reserve (24) fit; 8 (80 + 24) do not.
  EXPECT_EQ(MakeShortString(kMeasure, u"ABCDEFGHIJKL", 100), u"ABCDEFG...");
}

TEST(ListControl, AColumnNarrowerThanTheEllipsisReserveShowsTheFirstCharacterAndTheEllipsis) {
  EXPECT_EQ(MakeShortString(kMeasure, u"ABCDEF", 20), u"A...");
}

TEST(ListControl, AOneCharacterTextWiderThanItsColumnIsShownAsThatCharacterAndTheEllipsis) {
  EXPECT_EQ(MakeShortString(kMeasure, u"配", 5), u"配...");
}

TEST(ListControl, ATextOfMoreThan1023CharactersIsShortenedWithoutAnyLimit) {
  Text longText(5000, u'x');
  EXPECT_EQ(MakeShortString(kMeasure, longText, 100'000), longText);
  EXPECT_EQ(MakeShortString(kMeasure, longText, 124), Text(10, u'x') + u"...");
}

TEST(ListControl, ASelectedRowWithoutShowSelAlwaysIsNotHighlightedEvenWithFocus) {
  EXPECT_FALSE(IsRowHighlighted(true, false, false));
  EXPECT_TRUE(IsRowHighlighted(true, false, true));
  EXPECT_TRUE(IsRowHighlighted(false, true, false));  // drop-highlighted
  EXPECT_FALSE(IsRowHighlighted(false, false, true));
}

TEST(ListControl, RowGeometryOfDrawItem) {
  RowGeometry row = RowLayout({0, 20, 300, 36}, {4, 20, 54, 36}, 280, 200, {80, 30});
  EXPECT_EQ(row.highlight, (PixelRect{2, 19, 280, 36}));
  ASSERT_EQ(row.cells.size(), 2u);
  EXPECT_EQ(row.cells[0], (PixelRect{58, 20, 126, 36}));  // from R + 6 to R + w − 6, R = 54 − 2
  EXPECT_EQ(row.cells[1], (PixelRect{138, 20, 156, 36}));
  // A list whose right edge lies left of the parent's client width: that width less 2.
  EXPECT_EQ(RowLayout({0, 20, 300, 36}, {4, 20, 54, 36}, 150, 200, {}).highlight.right, 198);
}
