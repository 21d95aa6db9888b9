// "設定" → "登録" through the size setting dialog with the real LibreOffice engine: the records
// are the parts rows the workbook computes, and the drawing ezdxf reads back holds the table.
#include <gtest/gtest.h>

#include <algorithm>

#include "calc/CalcEngine.hpp"
#include "calc/CalcWorkbook.hpp"
#include "support/QuantitySpy.hpp"
#include "support/RunCommand.hpp"
#include "support/SizeDialogSite.hpp"

namespace tq {
namespace {

Text Field(const Text& line, size_t index) {
  size_t start = 0;
  for (size_t i = 0; i < index; ++i) start = line.find(u',', start) + 1;
  return line.substr(start, line.find(u',', start) - start);
}

ObjectId SheetText(Drawing& drawing, TextView name) {
  for (ObjectId id : drawing.SelectAll({}))
    if (std::optional<TextEntity> text = drawing.TextData(id); text && text->string == name) return id;
  return {};
}

// Row 1 FCU-1 with 25, 20, 15 and 3 units, row 2 FCU-2 as drawn with 2 units; characters 3.0
// high and 2.4 wide, rows 6.0 apart.
const std::string kFillAndRegister =
    "select 201:395 \"FCU-1\"\ntype 201:396 \"\"\ntype 201:397 \"25\"\ntype 201:410 \"20\"\ntype 201:411 \"15\"\n"
    "type 201:421 \"3\"\ntype 201:398 \"FCU\"\ntype 201:399 \"2\"\ntype 201:424 \"2\"\n"
    "click 201:201\ntype 202:387 \"3\"\ntype 202:388 \"2.4\"\ntype 202:389 \"6\"\nclick 202:1\n"
    "click 201:322\nanswer OK\n";

TEST(SizeDialogCalc, RegistrationRecordsTheComputedPartsRowsRestoresTheQuantitiesAndDrawsTheTable) {
  test::ExampleSite site;
  calc::CalcEngine engine;
  calc::CalcWorkbook workbook(engine);
  test::QuantitySpy spy(workbook);
  site.host.workbook = &spy;
  test::ScriptRun run = test::RunScript(*site.drawing, site.folders, test::kOpenM105 + kFillAndRegister);
  ASSERT_TRUE(run.ok) << run.All();
  ASSERT_TRUE(run.Has(test::Box("登録が完了しました。", "information"))) << run.All();

  ObjectId sheet = SheetText(*site.drawing, u"M-105");
  std::optional<XDataLines> first = site.drawing->ReadXData(sheet, u"TQ_STDINF01");
  std::optional<XDataLines> second = site.drawing->ReadXData(sheet, u"TQ_STDINF02");
  ASSERT_TRUE(first && second);
  ASSERT_EQ(first->size(), 7u);
  EXPECT_EQ(Field((*first)[0], 0), u"番号");
  EXPECT_EQ(Field((*first)[1], 14), u"15");  // the second header row, unscaled
  EXPECT_EQ(Field((*first)[2], 0), u"FCU-1");
  EXPECT_EQ(Field((*first)[2], 6), u"25");
  EXPECT_EQ(Field((*first)[2], 14), u"9");  // 2 per unit × 3 units × 1.5
  EXPECT_EQ(Field((*first)[3], 0), u"3");   // the unit count
  EXPECT_EQ(Field((*first)[4], 14), u"6");
  EXPECT_EQ(Field((*first)[6], 14), u"12");  // 1 × 3 × 4 bolts for a size of 25 or more
  EXPECT_EQ(Field((*second)[2], 0), u"FCU-2");
  EXPECT_EQ(Field((*second)[6], 14), u"8");  // 2 units × 4 bolts: ① of FCU-2 is 25
  EXPECT_FALSE(site.drawing->ReadXData(sheet, u"TQ_STDINF03"));
  EXPECT_EQ(spy.atClose, (std::map<Text, Text>{{u"AZ3", u"2"}, {u"AZ4", u"2"}, {u"AZ5", u"1"}, {u"AZ6", u"2"}, {u"AZ7", u"1"}}));

  // The table of frame (1, 1) as ezdxf reads the saved drawing.
  std::filesystem::path saved = site.copy.dir / "registered.dxf";
  ASSERT_TRUE(site.drawing->Save(saved));
  test::RunResult read = test::RunCommand(std::string(TQ_PYTHON) + " " + TQ_SOURCE_DIR + "/tests/calc/ezdxf_size_table.py '" +
                                          saved.string() + "' 29900 24000 37100 27400");
  ASSERT_EQ(read.status, 0) << read.out;
  EXPECT_NE(read.out.find("errors 0\n"), std::string::npos) << read.out;
  for (const char* text : {"text FCU-1 300 0.8\n", "text 25 300 0.8\n", "text 15 300 0.8\n", "text 3 300 0.8\n",
                           "text FCU-2 300 0.8\n", "text 2 300 0.8\n"})
    EXPECT_NE(read.out.find(text), std::string::npos) << text << read.out;
  // The heading line stays; the size rows' lines are drawn anew 600 apart from the base point down.
  for (const char* row : {"row 27300 30000 37000\n", "row 26800 30000 37000\n", "row 26200 30000 37000\n",
                          "row 25600 30000 37000\n"})
    EXPECT_NE(read.out.find(row), std::string::npos) << row << read.out;
  EXPECT_EQ(read.out.find("row 25800"), std::string::npos) << "the old bottom line is erased: " << read.out;
}

}  // namespace
}  // namespace tq
