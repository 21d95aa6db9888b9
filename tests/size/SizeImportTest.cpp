#include <gtest/gtest.h>

#include "support/MemoryWorkbook.hpp"
#include "size/SizeImport.hpp"

namespace tq {
namespace {

using test::MemoryWorkbook;

// Notes every caption and position it is given.
class RecordingProgress : public Progress {
 public:
  std::vector<std::pair<Text, int>> begins;
  std::vector<int> positions;
  void Begin(TextView caption, int range) override { begins.emplace_back(Text(caption), range); }
  void SetPosition(int position) override { positions.push_back(position); }
};

// A parts block of three rows under its two header rows, and the size header row 30 with
// "記号", ①…③ and "台数", every header cell bordered on the right except "台数".
void StandardSheet(MemoryWorkbook& book) {
  book.SetRow(1, 1, {u"番号", u"名称", u"工事項目"});
  book.SetRow(2, 1, {u"1", u"2", u"3"});
  book.SetRow(3, 1, {u"FCU-1", u"ファンコイル", u"冷温水"});
  book.SetRow(4, 1, {u"", u"", u"冷温水"});
  book.SetRow(5, 1, {u"", u"", u"冷温水"});
  book.SetRow(30, 1, {u"記号", u"①", u"②", u"③", u"台数"});
  for (const char16_t* cell : {u"A30", u"B30", u"C30", u"D30"}) book.SetBorder(cell);
}

SizeImportResult Import(MemoryWorkbook& book, WorkbookValues values = {}) {
  NoProgress progress;
  Result<SizeImportResult> result = ImportSizeWorkbook(book, u"/data/M-105.xls", values, progress);
  EXPECT_TRUE(result.ok()) << (result.ok() ? "" : result.error().Describe());
  return result.ok() ? *result : SizeImportResult{};
}

std::vector<Text> Cells(const SizeImportResult& result) {
  std::vector<Text> cells;
  for (const SizeColumn& column : result.columns) cells.push_back(column.cell);
  return cells;
}

TEST(SizeImport, FindsTheBlockTheColumnsAndTheirBorders) {
  MemoryWorkbook book;
  StandardSheet(book);
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.partsBlockStart, u"A1");
  EXPECT_EQ(result.partsBlockEnd, u"A5");
  EXPECT_EQ(result.columns, (std::vector<SizeColumn>{{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}}));
  EXPECT_EQ(result.sizeCaptions, (std::vector<Text>{u"①", u"②", u"③"}));
  EXPECT_EQ(result.sizeCount, 3);
  EXPECT_TRUE(result.warnings.empty());
  EXPECT_EQ(book.openedPath, u"/data/M-105.xls");
  EXPECT_EQ(book.closeSheetCalls, 1);
  EXPECT_EQ(book.quitCalls, 1);
}

TEST(SizeImport, CircledNumbersOneToFifteenAreSizeHeaders) {
  for (char16_t c = u'①'; c <= u'⑮'; ++c) EXPECT_TRUE(IsSizeHeader(Text(1, c))) << int(c);
  EXPECT_FALSE(IsSizeHeader(u"⑯"));
  EXPECT_FALSE(IsSizeHeader(u"⓪"));
  EXPECT_FALSE(IsSizeHeader(u"①①"));
}

TEST(SizeImport, LettersOfEitherWidthAndCaseAreSizeHeaders) {
  for (const char16_t* text : {u"A", u"z", u"Ａ", u"ｂ", u"Ｚ"}) EXPECT_TRUE(IsSizeHeader(text)) << ToUtf8(text);
  for (const char16_t* text : {u"AB", u"1", u"あ", u"", u"台数", u"Ａ１"}) EXPECT_FALSE(IsSizeHeader(text)) << ToUtf8(text);
}

TEST(SizeImport, FullWidthLetterHeadersGiveSizeColumnsWithTheirCaptions) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(30, 1, {u"記号", u"Ａ", u"ｂ", u"C", u"台数"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.sizeCaptions, (std::vector<Text>{u"Ａ", u"ｂ", u"C"}));
  EXPECT_EQ(result.sizeCount, 3);
}

TEST(SizeImport, FifteenCircledHeadersGiveTheDialogsTwelve) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(30, 1, {u"記号", u"①", u"②", u"③", u"④", u"⑤", u"⑥", u"⑦", u"⑧", u"⑨", u"⑩", u"⑪", u"⑫", u"⑬",
                      u"⑭", u"⑮", u"台数"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.sizeCount, 12);
  EXPECT_EQ(result.sizeCaptions.back(), u"⑫");
  EXPECT_EQ(result.columns.back().cell, u"Q32");
  EXPECT_EQ(result.columns.size(), 14u);
}

TEST(SizeImport, SizeHeadersCountOnlyAfterTheSymbolHeader) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(30, 1, {u"A", u"記号", u"B", u"台数"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.sizeCaptions, (std::vector<Text>{u"B"}));
  EXPECT_EQ(Cells(result), (std::vector<Text>{u"B32", u"C32", u"D32"}));
}

TEST(SizeImport, SymbolIsLookedForOnlyAfterTheNumberHeader) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.Set(u"A1", u"記号");  // before any "番号"
  book.Set(u"B1", u"番号");
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.partsBlockStart, u"B1");
  EXPECT_EQ(result.columns.front().cell, u"A32");
}

TEST(SizeImport, CountIsTakenOnlyFromTheSizeHeaderRowOn) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.Set(u"D2", u"台数");  // inside the block, above the size header row
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.columns.back().cell, u"E32");
  EXPECT_EQ(result.columns.front().cell, u"A32");  // not one row below: that "台数" was not seen
}

TEST(SizeImport, TheSizeHeaderRowComesFromTheSettings) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(20, 1, {u"記号", u"①", u"台数"});
  SizeImportResult result = Import(book, WorkbookValues{20, u"AZ"});
  EXPECT_EQ(Cells(result), (std::vector<Text>{u"A22", u"B22", u"C22"}));
}

TEST(SizeImport, SymbolDataCellIsOneRowBelowOnceCountWasSeen) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(30, 1, {u"", u"", u"", u"", u"台数"});
  book.SetRow(31, 1, {u"記号", u"①"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(Cells(result), (std::vector<Text>{u"A32", u"B33", u"E32"}));
}

TEST(SizeImport, BlockEndsAboveTheRowThatRepeatsTheFirstName) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(6, 1, {u"FCU-2", u"ファンコイル", u"冷温水"});
  book.SetRow(7, 1, {u"", u"", u"冷温水"});
  EXPECT_EQ(Import(book).partsBlockEnd, u"A5");
}

TEST(SizeImport, BlockWithoutFirstNameEndsAboveTheSecondNameMet) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.Set(u"B3", u"");
  book.Set(u"B4", u"継手");
  book.SetRow(6, 1, {u"", u"", u"冷温水"});
  book.SetRow(7, 1, {u"", u"支持", u"冷温水"});
  EXPECT_EQ(Import(book).partsBlockEnd, u"A6");
}

TEST(SizeImport, BlockEndsAboveARowEmptyFromTheNumberColumnOn) {
  MemoryWorkbook book;
  book.SetRow(1, 2, {u"番号", u"名称"});
  book.SetRow(2, 2, {u"1", u"2"});
  book.SetRow(3, 2, {u"FCU-1", u"ファンコイル"});
  book.SetRow(4, 2, {u"", u"", u"冷温水"});
  book.Set(u"A5", u"注");  // left of the "番号" column: does not count
  book.SetRow(30, 1, {u"記号", u"①", u"台数"});
  book.SetBorder(u"A30");
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.partsBlockStart, u"B1");
  EXPECT_EQ(result.partsBlockEnd, u"B4");
}

TEST(SizeImport, BlockEndIsLookedForFromTheThirdRowBelowTheNumber) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(2, 1, {u"", u"", u""});  // an empty second header row does not end the block
  EXPECT_EQ(Import(book).partsBlockEnd, u"A5");
}

TEST(SizeImport, RowsBeforeTheSizeHeaderRowAreSkippedOnceTheBlockEnds) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(10, 1, {u"記号", u"①", u"台数"});  // after the block end, before row 30
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.columns.front().cell, u"A32");
  EXPECT_EQ(result.sizeCount, 3);
}

TEST(SizeImport, TheWalkStopsOnceEverythingIsFound) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.SetRow(40, 1, {u"記号", u"D"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(book.rowReads, 7);  // rows 1 to 6, then 30
  EXPECT_EQ(result.sizeCount, 3);
}

TEST(SizeImport, MissingBlockWarns) {
  MemoryWorkbook book;
  book.SetRow(30, 1, {u"記号", u"①", u"台数"});
  book.SetBorder(u"A30");
  SizeImportResult result = Import(book);
  // "記号" is looked for only after "番号": no column, so no bordered one either.
  EXPECT_TRUE(result.columns.empty());
  EXPECT_EQ(result.warnings, (std::vector<Text>{u"Excelﾌｧｲﾙの形式が間違っている可能性があります。",
                                                u"Excelﾌｧｲﾙのﾃﾞｰﾀ取得位置が特定出来ませんでした。"}));
}

TEST(SizeImport, MissingBlockEndWarns) {
  MemoryWorkbook book;
  book.SetRow(1, 1, {u"番号", u"名称"});
  book.SetRow(2, 1, {u"1", u"2"});
  book.SetRow(3, 1, {u"FCU-1", u"ファンコイル"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.partsBlockStart, u"A1");
  EXPECT_EQ(result.partsBlockEnd, u"");
  EXPECT_EQ(result.warnings.back(), u"Excelﾌｧｲﾙのﾃﾞｰﾀ取得位置が特定出来ませんでした。");
}

TEST(SizeImport, NoBorderedCellWarns) {
  MemoryWorkbook book;
  book.SetRow(1, 1, {u"番号", u"名称"});
  book.SetRow(2, 1, {u"1", u"2"});
  book.SetRow(3, 1, {u"FCU-1", u"ファンコイル"});
  book.SetRow(30, 1, {u"記号", u"①", u"台数"});
  SizeImportResult result = Import(book);
  EXPECT_EQ(result.warnings, (std::vector<Text>{u"Excelﾌｧｲﾙの形式が間違っている可能性があります。"}));
  EXPECT_EQ(result.sizeCount, 1);
}

TEST(SizeImport, ProgressOpensThenAnalysesRowByRow) {
  MemoryWorkbook book;
  StandardSheet(book);
  RecordingProgress progress;
  ASSERT_TRUE(ImportSizeWorkbook(book, u"x.xls", {}, progress).ok());
  EXPECT_EQ(progress.begins, (std::vector<std::pair<Text, int>>{{u"EXCELﾌｧｲﾙを開いています...", 3},
                                                                {u"EXCELﾌｧｲﾙを解析しています...", 30}}));
  ASSERT_GE(progress.positions.size(), 4u);
  EXPECT_EQ(std::vector<int>(progress.positions.begin(), progress.positions.begin() + 4), (std::vector<int>{1, 2, 3, 1}));
  EXPECT_EQ(progress.positions.back(), 30);
}

TEST(SizeImport, EngineThatDoesNotStartFailsAndIsQuit) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.failInit = true;
  NoProgress progress;
  Result<SizeImportResult> result = ImportSizeWorkbook(book, u"x.xls", {}, progress);
  ASSERT_FALSE(result.ok());
  EXPECT_EQ(result.error().message, u"Excelの初期化に失敗しました。");
  EXPECT_EQ(book.quitCalls, 1);
}

TEST(SizeImport, WorkbookOrSheetThatDoesNotOpenFailsAndIsQuit) {
  for (bool sheet : {false, true}) {
    MemoryWorkbook book;
    StandardSheet(book);
    (sheet ? book.failSheet : book.failOpen) = true;
    NoProgress progress;
    Result<SizeImportResult> result = ImportSizeWorkbook(book, u"x.xls", {}, progress);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().message, u"Excelﾌｧｲﾙがｵｰﾌﾟﾝ出来ません。");
    EXPECT_EQ(book.quitCalls, 1);
  }
}

TEST(SizeImport, UnreadableRowFailsWithItsCode) {
  MemoryWorkbook book;
  StandardSheet(book);
  book.failReadRows = {4};
  NoProgress progress;
  Result<SizeImportResult> result = ImportSizeWorkbook(book, u"x.xls", {}, progress);
  ASSERT_FALSE(result.ok());
  EXPECT_EQ(result.error().message, u"ﾃﾞｰﾀの取得に失敗しました。(7)");
  EXPECT_EQ(result.error().systemCode, 7);
  EXPECT_EQ(book.quitCalls, 1);
}

}  // namespace
}  // namespace tq
