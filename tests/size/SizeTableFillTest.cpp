// Filling in the drawn size table: the texts at their positions and the row lines redrawn.
#include <gtest/gtest.h>

#include <map>

#include "drawing/FrameQueries.hpp"
#include "size/SizeTable.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

const FramePolygon kFrame = MakeFramePolygon(FrameGrid{}, 0, 0);
const std::vector<double> kColumnXs{2000, 4200, 5400, 6600, 7800, 9000};

// Column lines A0..A5 from 7000 down to 6000 (A5 drawn upward), row lines E0..E2 every 500,
// all on `layer`; the base point on layer "4".
Tags TableTags(const std::string& layer = "0") {
  Tags tags = PointTags("F1", 2000, 7000, "4");
  for (size_t k = 0; k + 1 < kColumnXs.size(); ++k)
    tags = tags + LineTags("A" + std::to_string(k), kColumnXs[k], 7000, kColumnXs[k], 6000, layer);
  tags = tags + LineTags("A5", 9000, 6000, 9000, 7000, layer);
  for (int r = 0; r < 3; ++r) tags = tags + LineTags("E" + std::to_string(r), 2000, 7000 - 500.0 * r, 9000, 7000 - 500.0 * r, layer);
  return tags;
}

SizeImportResult FiveColumns() {
  SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}};
  import.sizeCount = 3;
  return import;
}

const SizeTextSettings kText{350, 0.8, 500};

struct Filled {
  Scene scene;
  DrawnSizeTable table;
  explicit Filled(const Tags& tags) : scene(tags) {
    Result<DrawnSizeTable> located = LocateSizeTable(*scene.context, kFrame, 500);
    EXPECT_TRUE(located.ok());
    if (located) table = *located;
  }
  // The texts of the drawing by their strings.
  std::map<Text, TextEntity> Texts() const {
    std::map<Text, TextEntity> texts;
    for (ObjectId id : scene.drawing->SelectAll({u"TEXT", u""})) texts[scene.drawing->TextData(id)->string] = *scene.drawing->TextData(id);
    return texts;
  }
  double Width(TextView text) const {
    double w = 0, h = 0;
    EXPECT_TRUE(TextExtents(*scene.drawing, text, w, h));
    EXPECT_GT(w, 0);
    return w;
  }
  // The LINEs that run across the table, by their Y, top first.
  std::vector<LineEntity> RowLines() const {
    std::vector<LineEntity> rows;
    for (ObjectId id : scene.drawing->SelectAll({u"LINE", u""})) {
      LineEntity line = *scene.drawing->LineData(id);
      if (line.start.y == line.end.y) rows.push_back(line);
    }
    std::sort(rows.begin(), rows.end(), [](const LineEntity& a, const LineEntity& b) { return a.start.y > b.start.y; });
    return rows;
  }
};

// Counts the edits made while no write lock was held, and the graphics flushes.
class LockCheckingDrawing : public dxf::DxfDrawing {
 public:
  using dxf::DxfDrawing::DxfDrawing;
  int held = 0, editsUnlocked = 0, flushes = 0;

  class Lock : public WriteLock {
   public:
    explicit Lock(int& held) : held_(held) { ++held_; }
    ~Lock() override { --held_; }

   private:
    int& held_;
  };
  std::unique_ptr<WriteLock> LockForWrite() override { return std::make_unique<Lock>(held); }
  void FlushGraphics() override { ++flushes; }
  ObjectId AddText(const TextEntity& t) override { return Note(), dxf::DxfDrawing::AddText(t); }
  ObjectId AddLine(const LineEntity& l) override { return Note(), dxf::DxfDrawing::AddLine(l); }
  EditResult Erase(ObjectId id) override { return Note(), dxf::DxfDrawing::Erase(id); }
  EditResult MoveLineEnd(ObjectId id, LineEnd end, const Point3& to) override {
    return Note(), dxf::DxfDrawing::MoveLineEnd(id, end, to);
  }

 private:
  void Note() { editsUnlocked += held == 0; }
};

// A drawing whose current text style cannot be measured.
class UnmeasurableDrawing : public dxf::DxfDrawing {
 public:
  using dxf::DxfDrawing::DxfDrawing;
  std::optional<std::pair<double, double>> TextStyleExtents(TextView) const override { return std::nullopt; }
};

}  // namespace

TEST(SizeTableFill, WithoutTheTextStyleTheWidthIsThatOfTheTextsOwnExtents) {
  Scene scene(TableTags());
  UnmeasurableDrawing drawing(dxf::Document::Read(R12Drawing(TableTags())).value(), "test.dxf");
  DrawingContext context{drawing, scene.editor, *scene.site.settings, scene.context->layers, scene.marking};
  Result<DrawnSizeTable> table = LocateSizeTable(context, kFrame, 500);
  ASSERT_TRUE(table.ok());
  ASSERT_TRUE(WriteSizeTableTexts(context, *table, FiveColumns(), {{u"", u"", {u"150"}, u""}}, kText, {u"表", u"", -1, 7}).ok());
  std::vector<ObjectId> texts = drawing.SelectAll({u"TEXT", u""});
  ASSERT_EQ(texts.size(), 1u);  // the text measured is not left behind
  std::optional<Extents> extents = drawing.EntityExtents(texts[0]);
  ASSERT_TRUE(extents);
  double width = extents->max.x - extents->min.x;
  ASSERT_GT(width, 0);
  EXPECT_DOUBLE_EQ(drawing.TextData(texts[0])->position.x, 5400 + 5.0 - width - 350 * 0.8 / 2);
}

TEST(SizeTableFill, TheTableIsChangedOnlyWhileTheDrawingIsLockedForWritingAndTheRedrawIsFlushed) {
  Scene scene(TableTags());
  LockCheckingDrawing drawing(dxf::Document::Read(R12Drawing(TableTags())).value(), "test.dxf");
  DrawingContext context{drawing, scene.editor, *scene.site.settings, scene.context->layers, scene.marking};
  Result<DrawnSizeTable> table = LocateSizeTable(context, kFrame, 500);
  ASSERT_TRUE(table.ok());
  ASSERT_TRUE(WriteSizeTableTexts(context, *table, FiveColumns(), {{u"FCU", u"1", {u"20"}, u"4"}}, kText, {u"表", u"", -1, 7}).ok());
  EXPECT_EQ(drawing.flushes, 0);
  ASSERT_TRUE(RedrawSizeTableLines(context, *table, 2, kText, {u"表", u"", -1, 7}).ok());
  EXPECT_EQ(drawing.editsUnlocked, 0);
  EXPECT_EQ(drawing.held, 0);
  EXPECT_EQ(drawing.flushes, 1);
}

TEST(SizeTableFill, SymbolTextStandsOneCharacterWidthRightOfTheCellsLeft) {
  Filled f(TableTags());
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(), {{u"FCU", u"1", {}, u""}}, kText, {u"表", u"", -1, 7}).ok());
  TextEntity t = f.Texts().at(u"FCU-1");
  const double c = 350 * 0.8;
  EXPECT_DOUBLE_EQ(t.position.x, 2000 - 5.0 + c);
  EXPECT_DOUBLE_EQ(t.position.y, 6500 + (500 - 350) / 2.0);
}

TEST(SizeTableFill, SizeTextEndsHalfACharacterWidthLeftOfTheCellsRight) {
  Filled f(TableTags());
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(), {{u"", u"", {u"", u"150"}, u""}}, kText, {u"表", u"", -1, 7}).ok());
  std::map<Text, TextEntity> texts = f.Texts();
  ASSERT_EQ(texts.size(), 1u);  // the empty values are skipped
  TextEntity t = texts.at(u"150");
  EXPECT_DOUBLE_EQ(t.position.x, 6600 + 5.0 - f.Width(u"150") - 350 * 0.8 / 2);
  EXPECT_DOUBLE_EQ(t.position.y, 6575);
}

TEST(SizeTableFill, CountTextEndsOneCharacterWidthLeftOfTheLastCellsRight) {
  Filled f(TableTags());
  SizeImportResult import = FiveColumns();
  import.columns[4].borderedCount = 2;  // the count column takes the last two lines whatever its count
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, import, {{u"", u"", {}, u"12"}}, kText, {u"表", u"", -1, 7}).ok());
  TextEntity t = f.Texts().at(u"12");
  EXPECT_DOUBLE_EQ(t.position.x, 9000 + 5.0 - f.Width(u"12") - 350 * 0.8);
}

TEST(SizeTableFill, EachDialogRowIsOneRowSpacingLowerThanTheLast) {
  Filled f(TableTags());
  SizeTextSettings text{300, 1.0, 450};
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(),
                                  {{u"A", u"", {}, u""}, {u"B", u"", {}, u""}, {u"C", u"", {}, u""}}, text, {u"表", u"", -1, 7})
                  .ok());
  std::map<Text, TextEntity> texts = f.Texts();
  EXPECT_DOUBLE_EQ(texts.at(u"A").position.y, 7000 - 450 + 75);
  EXPECT_DOUBLE_EQ(texts.at(u"B").position.y, 7000 - 900 + 75);
  EXPECT_DOUBLE_EQ(texts.at(u"C").position.y, 7000 - 1350 + 75);
}

TEST(SizeTableFill, TextsTakeTheSettingsTheReferenceLayerAndColourByLayer) {
  Filled f(TableTags());
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(), {{u"FCU", u"2", {u"20"}, u"3"}}, kText, {u"表", u"DASHED", 50, 3}).ok());
  std::map<Text, TextEntity> texts = f.Texts();
  ASSERT_EQ(texts.size(), 3u);
  for (const auto& [string, t] : texts) {
    EXPECT_EQ(t.layer, u"表") << ToUtf8(string);
    EXPECT_EQ(t.colour, kColourByLayer);
    EXPECT_DOUBLE_EQ(t.height, 350);
    EXPECT_DOUBLE_EQ(t.widthFactor, 0.8);
    EXPECT_EQ(t.rotation, 0);
  }
}

TEST(SizeTableFill, TextsGoOnLayer0WhenTheReferenceNamesNoLayer) {
  Filled f(TableTags());
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(), {{u"FCU", u"", {}, u""}}, kText, {u"", u"", -1, 7}).ok());
  EXPECT_EQ(f.Texts().at(u"FCU").layer, u"0");
}

TEST(SizeTableFill, AColumnPastTheColumnLinesIsSkippedWithTheTooFewColumnsError) {
  Filled f(TableTags());
  SizeImportResult import = FiveColumns();
  import.columns[1].borderedCount = 5;
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, import, {{u"FCU", u"", {u"20", u"15"}, u""}}, kText, {u"表", u"", -1, 7}).ok());
  std::map<Text, TextEntity> texts = f.Texts();
  EXPECT_EQ(texts.count(u"20"), 0u);
  EXPECT_EQ(texts.count(u"15"), 1u);
  EXPECT_EQ(f.scene.editor.printed, u"\nerror:ｻｲｽﾞ表の項目数が足りません。\n");
}

TEST(SizeTableFill, RedrawErasesTheRowLinesAndDrawsRowCountPlusOneFromLeftToRight) {
  Filled f(TableTags());
  ASSERT_TRUE(RedrawSizeTableLines(*f.scene.context, f.table, 3, {350, 0.8, 400}, {u"表", u"DASHED", 50, 3}).ok());
  for (const char16_t* old : {u"E0", u"E1", u"E2"}) EXPECT_TRUE(f.scene.Id(old).isNull()) << ToUtf8(old);
  std::vector<LineEntity> rows = f.RowLines();
  ASSERT_EQ(rows.size(), 4u);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(rows[i].start, (Point3{2000, 7000 - 400.0 * i, 0}));
    EXPECT_EQ(rows[i].end, (Point3{9000, 7000 - 400.0 * i, 0}));
    EXPECT_EQ(rows[i].layer, u"表");
    EXPECT_EQ(rows[i].linetype, u"DASHED");
    EXPECT_EQ(rows[i].colour, 3);
  }
  EXPECT_EQ(f.scene.editor.displayUpdates, 1);
}

TEST(SizeTableFill, RedrawBringsTheLowerEndOfEveryColumnLineToTheLastRowLine) {
  Filled f(TableTags());
  ASSERT_TRUE(RedrawSizeTableLines(*f.scene.context, f.table, 4, kText, {u"表", u"", -1, 256}).ok());
  for (int k = 0; k < 5; ++k) {
    LineEntity column = *f.scene.drawing->LineData(f.scene.Id(u"A" + Text(1, u'0' + k)));
    EXPECT_EQ(column.start, (Point3{kColumnXs[k], 7000, 0}));
    EXPECT_EQ(column.end, (Point3{kColumnXs[k], 5000, 0}));
  }
  LineEntity upward = *f.scene.drawing->LineData(f.scene.Id(u"A5"));  // drawn from its foot up
  EXPECT_EQ(upward.start, (Point3{9000, 5000, 0}));
  EXPECT_EQ(upward.end, (Point3{9000, 7000, 0}));
}

TEST(SizeTableFill, RedrawOnALockedLayerErasesAndMovesAndLeavesTheLayerLocked) {
  Filled f(TableTags("LOCKED"));
  ASSERT_TRUE(f.scene.drawing->IsLayerLocked(u"LOCKED"));
  ASSERT_TRUE(RedrawSizeTableLines(*f.scene.context, f.table, 1, kText, {u"表", u"", -1, 256}).ok());
  EXPECT_TRUE(f.scene.drawing->IsLayerLocked(u"LOCKED"));
  for (const char16_t* old : {u"E0", u"E1", u"E2"}) EXPECT_TRUE(f.scene.Id(old).isNull()) << ToUtf8(old);
  EXPECT_EQ(f.scene.drawing->LineData(f.scene.Id(u"A0"))->end.y, 6500);
  EXPECT_EQ(f.RowLines().size(), 2u);
}

TEST(SizeTableFill, RedrawnTableIsLocatedAndReadBackWithTheWrittenTexts) {
  Filled f(TableTags());
  std::vector<SizeRowValues> rows{{u"FCU", u"1", {u"20", u"15", u"10"}, u"4"}, {u"AC", u"2", {u"25", u"", u""}, u"1"},
                                  {u"P", u"3", {u"", u"", u"40"}, u"2"}};
  TableLineProperties line = ReferenceLineProperties(*f.scene.drawing, f.table);
  ASSERT_TRUE(WriteSizeTableTexts(*f.scene.context, f.table, FiveColumns(), rows, kText, line).ok());
  ASSERT_TRUE(RedrawSizeTableLines(*f.scene.context, f.table, 3, kText, line).ok());
  Result<DrawnSizeTable> again = LocateSizeTable(*f.scene.context, kFrame, 500);
  ASSERT_TRUE(again.ok());
  EXPECT_EQ(again->rowLines.size(), 4u);
  std::vector<SizeRowValues> read = ReadSizeTableRows(*f.scene.context, *again, FiveColumns());
  ASSERT_EQ(read.size(), 3u);
  for (size_t r = 0; r < 3; ++r) {
    EXPECT_EQ(read[r].symbol, rows[r].symbol);
    EXPECT_EQ(read[r].number, rows[r].number);
    EXPECT_EQ(read[r].sizes, rows[r].sizes);
    EXPECT_EQ(read[r].count, rows[r].count);
  }
}
