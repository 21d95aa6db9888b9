#include <gtest/gtest.h>

#include "drawing/EntityScan.hpp"
#include "support/TempDir.hpp"
#include "support/DrawingFixture.hpp"
#include "support/Listing.hpp"

using namespace tq;
using namespace tq::test;

namespace {

}  // namespace

TEST(EntityScan, LineCrossingAFrameBorderIsNeitherColouredNorRestored) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 27000, 500, 29000, 500) + LineTags("C2", 100, 100, 200, 200));
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
  EXPECT_FALSE(f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"));
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C2")), 1);
  MarkFrames(*f.context, {f.Id(u"B1")}, false);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C2")), 256);
}

TEST(EntityScan, TextWhoseInsertionPointLiesInsideIsColouredEvenIfItsGlyphsStickOut) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + TextTags("C1", "LONG LABEL THAT RUNS OUT OF THE FRAME", 27900, 100, "0", 350));
  ASSERT_GT(f.drawing->EntityExtents(f.Id(u"C1"))->max.x, 28000);
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 1);
}

TEST(EntityScan, MarkingTwiceKeepsTheColourSavedByTheFirstMarking) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + ColouredLine("C1", 100, 100, 200, 200, 3), u"[標準図]\r\n変更色=2\r\n");
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 2);
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(*f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"), (XDataLines{u"3"}));
  MarkFrames(*f.context, {f.Id(u"B1")}, false);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 3);
  EXPECT_FALSE(f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"));
}

TEST(EntityScan, ByLayerAndByBlockColoursComeBackExactly) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + ColouredLine("C1", 100, 100, 200, 200, 256) +
            ColouredLine("C2", 100, 100, 300, 300, 0) + ColouredLine("C3", 100, 100, 400, 400, 7));
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(*f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"), (XDataLines{u"256"}));
  EXPECT_EQ(*f.drawing->ReadXData(f.Id(u"C2"), u"TQ_STDCHECK"), (XDataLines{u"0"}));
  MarkFrames(*f.context, {f.Id(u"B1")}, false);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C2")), 0);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C3")), 7);
}

TEST(EntityScan, MarkThenRestoreLeavesTheDrawingByteIdentical) {
  // The marking application registered, as after the first marking of a drawing.
  std::string original = R12Drawing(TextTags("B1", "M-1", 26000, 1000) + ColouredLine("C1", 100, 100, 200, 200, 256) +
                                    ColouredLine("C2", 100, 100, 300, 300, 0) + ColouredLine("C3", 100, 100, 400, 400, 7));
  original.replace(original.find("  0\nAPPID\n  2\nACAD\n 70\n0\n"), 0, "  0\nAPPID\n  2\nTQ_STDCHECK\n 70\n0\n");
  Site site;
  RecordingEditor editor;
  dxf::DxfDrawing drawing(dxf::Document::Read(original).value(), "t.dxf");
  MarkingState marking;
  DrawingContext context{drawing, editor, *site.settings, {u"5", u"4"}, marking};
  MarkFrames(context, {drawing.FindHandle(u"B1")}, true);
  std::string marked = drawing.document().Serialize();
  ASSERT_NE(marked, original);
  dxf::DxfDrawing reopened(dxf::Document::Read(marked).value(), "t.dxf");
  DrawingContext again{reopened, editor, *site.settings, {u"5", u"4"}, marking};
  MarkFrames(again, {reopened.FindHandle(u"B1")}, false);
  EXPECT_EQ(reopened.document().Serialize(), original);
}

TEST(EntityScan, MarkingDoesNotRunAgainWhileItRuns) {
  // Two frames; the display update after the first frame asks for a restore of both. Were it
  // carried out, the first frame would lose its marking before the second is marked.
  Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200) + TextTags("B2", "M-2", 54000, 1000) +
          LineTags("C2", 28100, 100, 28200, 200));
  int updates = 0;
  f.editor.onDisplayUpdate = [&] {
    if (updates++ == 0) MarkFrames(*f.context, {f.Id(u"B1"), f.Id(u"B2")}, false);  // a re-entry while the first runs
  };
  MarkFrames(*f.context, {f.Id(u"B1"), f.Id(u"B2")}, true);
  EXPECT_EQ(updates, 2);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 1);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C2")), 1);
  EXPECT_EQ(f.editor.waitBegun, f.editor.waitEnded);
}

// A drawing whose extended data cannot be written: the write throws, as a programming error
// in a backend would.
class ThrowingDrawing : public dxf::DxfDrawing {
 public:
  using dxf::DxfDrawing::DxfDrawing;
  int throwsLeft = 1;
  EditResult WriteXData(ObjectId id, TextView application, const XDataLines& lines) override {
    if (throwsLeft > 0) {
      --throwsLeft;
      throw std::logic_error("the extended data cannot be written");
    }
    return dxf::DxfDrawing::WriteXData(id, application, lines);
  }
};

TEST(EntityScan, MarkingGuardIsReleasedWhenWritingTheExtendedDataThrows) {
  Site site;
  RecordingEditor editor;
  ThrowingDrawing drawing(dxf::Document::Read(R12Drawing(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200))).value(),
                          "t.dxf");
  MarkingState marking;
  DrawingContext context{drawing, editor, *site.settings, {u"5", u"4"}, marking};
  EXPECT_THROW(MarkFrames(context, {drawing.FindHandle(u"B1")}, true), std::logic_error);
  EXPECT_FALSE(marking.busy);
  EXPECT_EQ(editor.waitBegun, editor.waitEnded);
  MarkFrames(context, {drawing.FindHandle(u"B1")}, true);  // the next marking of the drawing is carried out
  EXPECT_EQ(drawing.ColourIndex(drawing.FindHandle(u"C1")), 1);
}

TEST(EntityScan, TwoDrawingsMarkIndependently) {
  Scene busy(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200));
  Scene other(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200));
  busy.marking.busy = true;  // a marking of the first drawing is running
  MarkFrames(*other.context, {other.Id(u"B1")}, true);
  EXPECT_EQ(other.drawing->ColourIndex(other.Id(u"C1")), 1);
  MarkFrames(*busy.context, {busy.Id(u"B1")}, true);
  EXPECT_EQ(busy.drawing->ColourIndex(busy.Id(u"C1")), 256);
}

TEST(EntityScan, MarkingUsesColourOneWithoutADataFolder) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200), u"", false);
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 1);
}

TEST(EntityScan, EntityOnALockedLayerIsSkippedByMarking) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200, "LOCKED"));
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
  EXPECT_FALSE(f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"));
}

TEST(EntityScan, SheetNumberTextsAreCollectedInSelectionOrderAndSplitByRecord) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + Record("TQ_STDINF01", "a") + TextTags("B2", "M-2", 54000, 1000) +
            TextTags("B3", "note", 100, 100, "0") + TextTags("B4", "M-4", 100, 20000) + Record("TQ_STDINF02", "only 02") +
            TextTags("B5", "M-5", 100, 1000, "FROZEN"));
  std::vector<ObjectId> texts;
  ASSERT_TRUE(CollectSheetNumberTexts(*f.context, texts));
  EXPECT_EQ(texts, (std::vector<ObjectId>{f.Id(u"B1"), f.Id(u"B2"), f.Id(u"B4")}));
  texts.push_back(ObjectId{});
  std::vector<ObjectId> without;
  SplitByInfoRecord(*f.drawing, texts, without);
  EXPECT_EQ(texts, (std::vector<ObjectId>{f.Id(u"B1")}));
  EXPECT_EQ(without, (std::vector<ObjectId>{f.Id(u"B2"), f.Id(u"B4")}));
}

TEST(EntityScan, NoSheetNumberTextAtAll) {
  Scene f(LineTags("C1", 0, 0, 1, 1));
  std::vector<ObjectId> texts{ObjectId{3}};
  EXPECT_FALSE(CollectSheetNumberTexts(*f.context, texts));
  EXPECT_TRUE(texts.empty());
}

TEST(EntityScan, SelectionInARectangleIncludesItsEdges) {
  Scene f(LineTags("C1", 0, 0, 10, 10) + LineTags("C2", 0, 0, 10, 10.001) + TextTags("C3", "x", 10, 10, "0") +
            PointTags("C4", 5, 5, "4") + PointTags("C5", 5, 5, "0"));
  std::vector<ObjectId> all, texts, points;
  EXPECT_TRUE(SelectInRect(*f.drawing, SelectMode::All, {0, 10, 0}, {10, 0, 0}, all));
  EXPECT_EQ(all, (std::vector<ObjectId>{f.Id(u"C1"), f.Id(u"C3"), f.Id(u"C4"), f.Id(u"C5")}));
  EXPECT_TRUE(SelectInRect(*f.drawing, SelectMode::Point, {0, 10, 0}, {10, 0, 0}, points, u"4"));
  EXPECT_EQ(points, (std::vector<ObjectId>{f.Id(u"C4")}));
  EXPECT_FALSE(SelectInRect(*f.drawing, SelectMode::Text, {20, 30, 0}, {30, 20, 0}, texts));
}

TEST(EntityScan, MarkAndRestoreOnTheExampleDrawingWrittenByEzdxf) {
  Site site;
  RecordingEditor editor;
  auto drawing = dxf::DxfDrawing::Open(test::U8Path(std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf")).value();
  MarkingState marking;
  DrawingContext context{*drawing, editor, *site.settings, {u"5", u"4"}, marking};
  std::vector<ObjectId> with, without;
  ASSERT_TRUE(CollectSheetNumberTexts(context, with));
  SplitByInfoRecord(*drawing, with, without);
  ASSERT_EQ(with.size(), 6u);
  ASSERT_EQ(without.size(), 3u);
  std::vector<ObjectId> everything = drawing->SelectAll({});
  std::vector<int> before;
  for (ObjectId id : everything) before.push_back(drawing->ColourIndex(id));
  MarkFrames(context, without, true);
  size_t marked = 0;
  for (ObjectId id : everything) marked += drawing->ReadXData(id, u"TQ_STDCHECK").has_value();
  EXPECT_GT(marked, 3u * 10);
  MarkFrames(context, without, false);
  for (size_t i = 0; i < everything.size(); ++i) EXPECT_EQ(drawing->ColourIndex(everything[i]), before[i]);
}

TEST(EntityScan, ChangeColourNoEntityCanHoldIsRefusedAndNothingIsWritten) {
  for (const char16_t* value : {u"300", u"-5"}) {
    Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 100, 100, 200, 200),
            u"[標準図]\r\n変更色=" + Text(value) + u"\r\n");
    EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, true), 0u);
    EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
    EXPECT_FALSE(f.drawing->ReadXData(f.Id(u"C1"), u"TQ_STDCHECK"));
    EXPECT_FALSE(f.drawing->document().modified());
    EXPECT_NE(f.editor.printed.find(u"Error:変更色=\"" + Text(value) + u"\""), Text::npos) << ToUtf8(f.editor.printed);
  }
}

TEST(EntityScan, ByLayerAndByBlockAreColoursAMarkingMayGive) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + ColouredLine("C1", 100, 100, 200, 200, 3), u"[標準図]\r\n変更色=256\r\n");
  EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, true), 1u);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
}
