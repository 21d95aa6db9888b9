#include <gtest/gtest.h>

#include "support/MemoryWorkbook.hpp"
#include "size/SizeRegistration.hpp"

namespace tq {
namespace {

using test::MemoryWorkbook;

// A block of four rows (two header rows, two parts rows) with per-unit quantities in AZ3
// and AZ4, and the cells the import found for a symbol, two sizes and the count.
struct Fixture {
  MemoryWorkbook book;
  SizeImportResult import;
  std::vector<std::pair<int, std::vector<Text>>> records;

  Fixture() {
    book.SetRow(1, 1, {u"番号", u"名称", u"数量"});
    book.SetRow(2, 1, {u"1", u"2", u"3"});
    book.SetRow(3, 1, {u"FCU", u"ファンコイル", u"2"});
    book.SetRow(4, 1, {u"", u"", u"5"});
    book.Set(u"AZ3", u"2");
    book.Set(u"AZ4", u"5");
    import.partsBlockStart = u"A1";
    import.partsBlockEnd = u"A4";
    import.columns = {{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}};
    import.sizeCount = 2;
  }

  Status Register(const std::vector<SizeRowValues>& rows) {
    NoProgress progress;
    return RegisterSizeRows(book, u"M-105.xls", import, WorkbookValues{}, rows, progress,
                            [&](int row, std::vector<Text> lines) -> Status {
                              records.emplace_back(row, std::move(lines));
                              return {};
                            });
  }
};

Text Field(const Text& line, size_t index) {
  size_t start = 0;
  for (size_t i = 0; i < index; ++i) start = line.find(u',', start) + 1;
  return line.substr(start, line.find(u',', start) - start);
}

TEST(SizeRegistration, ColumnValuesJoinSymbolAndNumber) {
  SizeRowValues row{u"FCU", u"1", {u"20", u"15"}, u"3"};
  EXPECT_EQ(SizeColumnValue(row, 0, 4), u"FCU-1");
  EXPECT_EQ(SizeColumnValue(row, 1, 4), u"20");
  EXPECT_EQ(SizeColumnValue(row, 2, 4), u"15");
  EXPECT_EQ(SizeColumnValue(row, 3, 4), u"3");
  EXPECT_EQ(SizeColumnValue({u"", u"2", {}, u""}, 0, 4), u"2");
  EXPECT_EQ(SizeColumnValue({u"FCU", u"", {}, u""}, 0, 4), u"FCU");
  EXPECT_EQ(SizeColumnValue({u"FCU", u"", {}, u""}, 2, 4), u"");  // fewer sizes than columns
}

TEST(SizeRegistration, WritesTheRowIntoTheRecordedCells) {
  Fixture f;
  ASSERT_TRUE(f.Register({{u"FCU", u"1", {u"20", u"15"}, u"3"}}).ok());
  std::vector<std::pair<Text, Text>> firstWrites(f.book.puts.begin(), f.book.puts.begin() + 4);
  EXPECT_EQ(firstWrites, (std::vector<std::pair<Text, Text>>{{u"A32", u"FCU-1"}, {u"B32", u"20"}, {u"C32", u"15"}, {u"D32", u"3"}}));
  EXPECT_EQ(f.book.openedPath, u"M-105.xls");
}

TEST(SizeRegistration, RecordLinesAreTheBlockRowsWithQuantitiesScaledByTheCount) {
  Fixture f;
  ASSERT_TRUE(f.Register({{u"FCU", u"1", {u"20", u"15"}, u"3"}}).ok());
  ASSERT_EQ(f.records.size(), 1u);
  const std::vector<Text>& lines = f.records[0].second;
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(Field(lines[0], 0), u"番号");
  EXPECT_EQ(Field(lines[0], 51), u"");   // the header rows are read unscaled
  EXPECT_EQ(Field(lines[2], 51), u"6");  // 2 per unit, 3 units
  EXPECT_EQ(Field(lines[3], 51), u"15");
  EXPECT_EQ(Field(lines[3], 2), u"5");
}

TEST(SizeRegistration, QuantityCellsAreRestoredAfterEachRead) {
  Fixture f;
  ASSERT_TRUE(f.Register({{u"FCU", u"1", {u"20"}, u"3"}, {u"FCU", u"2", {u"25"}, u"4"}}).ok());
  EXPECT_EQ(f.book.Cell(u"AZ3"), u"2");
  EXPECT_EQ(f.book.Cell(u"AZ4"), u"5");
  ASSERT_EQ(f.records.size(), 2u);
  EXPECT_EQ(Field(f.records[1].second[2], 51), u"8");
  EXPECT_EQ(f.records[1].first, 2);
}

TEST(SizeRegistration, RowWithEveryValueEmptyGivesNoRecord) {
  Fixture f;
  ASSERT_TRUE(f.Register({{u"", u"", {u"", u""}, u""}, {u"FCU", u"", {}, u"1"}}).ok());
  ASSERT_EQ(f.records.size(), 1u);
  EXPECT_EQ(f.records[0].first, 2);
  EXPECT_EQ(f.book.quitCalls, 1);
}

TEST(SizeRegistration, FailedWriteNamesCellAndValueAndQuits) {
  Fixture f;
  f.book.failPutCells = {u"B32"};
  Status status = f.Register({{u"FCU", u"1", {u"20"}, u"3"}});
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().message, u"ﾃﾞｰﾀの書込みに失敗しました。(7)\nCell=[B32], Value=[20]");
  EXPECT_TRUE(f.records.empty());
  EXPECT_EQ(f.book.quitCalls, 1);
  EXPECT_EQ(f.book.closeSheetCalls, 1);
}

TEST(SizeRegistration, FailedReadEndsTheRegistration) {
  Fixture f;
  f.book.failReadRows = {3};
  Status status = f.Register({{u"FCU", u"1", {u"20"}, u"3"}, {u"FCU", u"2", {u"20"}, u"3"}});
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().message, u"ﾃﾞｰﾀの取得に失敗しました。(7)");
  EXPECT_TRUE(f.records.empty());
  EXPECT_EQ(f.book.quitCalls, 1);
}

TEST(SizeRegistration, EngineThatDoesNotStartFails) {
  Fixture f;
  f.book.failInit = true;
  Status status = f.Register({{u"FCU", u"1", {u"20"}, u"3"}});
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().message, u"Excelの初期化に失敗しました。");
  EXPECT_EQ(f.book.quitCalls, 1);
}

TEST(SizeRegistration, SinkErrorEndsTheRegistration) {
  Fixture f;
  NoProgress progress;
  int calls = 0;
  Status status = RegisterSizeRows(f.book, u"x.xls", f.import, WorkbookValues{},
                                   {{u"A", u"", {}, u"1"}, {u"B", u"", {}, u"1"}}, progress,
                                   [&](int, std::vector<Text>) -> Status {
                                     ++calls;
                                     return MakeError(ErrorCode::CannotWrite, u"ｻｲｽﾞ情報が設定できません。");
                                   });
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().message, u"ｻｲｽﾞ情報が設定できません。");
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(f.book.quitCalls, 1);
}

}  // namespace
}  // namespace tq
