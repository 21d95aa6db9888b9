#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "calc/CalcEngine.hpp"
#include "calc/CalcWorkbook.hpp"
#include "size/SizeImport.hpp"
#include "size/SizeRegistration.hpp"
#include "support/OfficeProcesses.hpp"
#include "support/QuantitySpy.hpp"
#include "support/TempDir.hpp"

namespace tq {
namespace {

using calc::CalcEngine;
using calc::CalcEngineOptions;
using calc::CalcWorkbook;
using Clock = std::chrono::steady_clock;

Text ExamplePath(const char* name) { return FromUtf8(std::string(TQ_EXAMPLE_SITE) + "/data/" + name); }

Text Field(const Text& line, size_t index) {
  size_t start = 0;
  for (size_t i = 0; i < index; ++i) start = line.find(u',', start) + 1;
  return line.substr(start, line.find(u',', start) - start);
}

bool NoOfficeWithin(const std::string& profile, std::chrono::seconds limit) {
  auto deadline = Clock::now() + limit;
  while (!test::ProcessesNaming(profile).empty()) {
    if (Clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return true;
}

// One engine for the tests that only use it, as a host keeps one for all its imports.
class CalcWorkbookTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { engine_ = new CalcEngine(); }
  // The office is gone once its owner is.
  static void TearDownTestSuite() {
    std::string profile = engine_->ProfileFolder();
    delete engine_;
    engine_ = nullptr;
    EXPECT_TRUE(test::ProcessesNaming(profile).empty());
    EXPECT_FALSE(std::filesystem::exists(profile));
  }
  static CalcEngine* engine_;
};
CalcEngine* CalcWorkbookTest::engine_ = nullptr;

SizeImportResult ImportOk(Workbook& workbook, TextView path) {
  NoProgress progress;
  Result<SizeImportResult> result = ImportSizeWorkbook(workbook, path, {}, progress);
  EXPECT_TRUE(result.ok()) << (result.ok() ? "" : result.error().Describe());
  return result.ok() ? *result : SizeImportResult{};
}

TEST_F(CalcWorkbookTest, ImportsTheCircledHeaderWorkbook) {
  CalcWorkbook workbook(*engine_);
  SizeImportResult result = ImportOk(workbook, ExamplePath("M-105.xls"));
  EXPECT_EQ(result.partsBlockStart, u"A1");
  EXPECT_EQ(result.partsBlockEnd, u"A7");
  EXPECT_EQ(result.columns, (std::vector<SizeColumn>{{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}}));
  EXPECT_EQ(result.sizeCaptions, (std::vector<Text>{u"①", u"②", u"③"}));
  EXPECT_TRUE(result.warnings.empty());
}

TEST_F(CalcWorkbookTest, ImportsTheLetterHeaderWorkbook) {
  CalcWorkbook workbook(*engine_);
  SizeImportResult result = ImportOk(workbook, ExamplePath("M-106.xls"));
  EXPECT_EQ(result.sizeCaptions, (std::vector<Text>{u"A", u"B", u"C"}));
  EXPECT_EQ(result.sizeCount, 3);
  EXPECT_EQ(result.partsBlockEnd, u"A7");
  EXPECT_EQ(result.columns.back(), (SizeColumn{u"E32", 4}));
}

TEST_F(CalcWorkbookTest, ReadsShownTextsBordersAndUsedRows) {
  CalcWorkbook workbook(*engine_);
  ASSERT_TRUE(workbook.Init().ok());
  ASSERT_TRUE(workbook.Open(ExamplePath("M-105.xls")).ok());
  ASSERT_TRUE(workbook.OpenSheet(0).ok());
  EXPECT_EQ(*workbook.GetRowCount(), 32);
  EXPECT_EQ(*workbook.GetData(u"A1"), u"番号");
  EXPECT_EQ(*workbook.GetData(u"A3"), u"FCU-1");  // a formula's result, as shown
  EXPECT_EQ(*workbook.GetData(u"O3"), u"3");      // 2 per unit × 1.5
  EXPECT_TRUE(*workbook.GetRightBorder(u"A30"));
  EXPECT_FALSE(*workbook.GetRightBorder(u"E30"));
  EXPECT_FALSE(*workbook.GetRightBorder(u"A1"));
  Result<std::vector<Text>> row = workbook.GetRowData2(1, 30, 0);
  ASSERT_TRUE(row.ok());
  ASSERT_EQ(row->size(), 52u);  // to the last used column, AZ
  EXPECT_EQ((*row)[1], u"①");
  EXPECT_EQ((*row)[4], u"台数");
  EXPECT_EQ(workbook.OpenSheet(5).error().systemCode, int(WorkbookFailure::NoSheet));
  EXPECT_EQ(workbook.GetData(u"1A").error().systemCode, int(WorkbookFailure::BadAddress));
  workbook.Quit();
  EXPECT_EQ(workbook.Open(ExamplePath("none.xls")).error().systemCode, int(WorkbookFailure::OpenFile));
  // The office worked on a private copy: nothing is left beside the workbook or in the profile.
  std::vector<std::string> left;
  for (const auto& entry : std::filesystem::directory_iterator(std::string(TQ_EXAMPLE_SITE) + "/data"))
    if (entry.path().filename().string().starts_with(".~lock")) left.push_back(entry.path().string());
  for (const auto& entry : std::filesystem::directory_iterator(engine_->ProfileFolder()))
    if (entry.path().filename().string().starts_with("open-")) left.push_back(entry.path().string());
  EXPECT_TRUE(left.empty()) << left.front();
}

TEST_F(CalcWorkbookTest, WrittenCellsAreRecalculatedBeforeTheNextRead) {
  CalcWorkbook workbook(*engine_);
  ASSERT_TRUE(workbook.Init().ok());
  ASSERT_TRUE(workbook.Open(ExamplePath("M-105.xls")).ok());
  ASSERT_TRUE(workbook.OpenSheet(0).ok());
  ASSERT_TRUE(workbook.PutData(u"B32", u"32").ok());
  ASSERT_TRUE(workbook.PutData(u"AZ7", u"3").ok());
  EXPECT_EQ(*workbook.GetData(u"G3"), u"32");
  EXPECT_EQ(*workbook.GetData(u"O7"), u"12");  // 3 × (4 for a size of 25 or more)
  ASSERT_TRUE(workbook.PutData(u"A32", u"1-2").ok());
  EXPECT_EQ(*workbook.GetData(u"A3"), u"1-2");  // text as it stands, not a date
  ASSERT_TRUE(workbook.PutData(u"B32", u"").ok());
  EXPECT_EQ(*workbook.GetData(u"B32"), u"");
  workbook.Quit();
}

TEST_F(CalcWorkbookTest, RegistrationRecordsTheRecalculatedPartsRowsAndRestoresTheQuantities) {
  CalcWorkbook workbook(*engine_);
  SizeImportResult import = ImportOk(workbook, ExamplePath("M-105.xls"));
  test::QuantitySpy spy(workbook);
  NoProgress progress;
  std::vector<std::vector<Text>> records;
  Status status = RegisterSizeRows(spy, ExamplePath("M-105.xls"), import, {},
                                   {{u"FCU", u"1", {u"25", u"20", u"15"}, u"3"}, {u"FCU", u"2", {u"20", u"20", u"20"}, u"2"}},
                                   progress, [&](int, std::vector<Text> lines) -> Status {
                                     records.push_back(std::move(lines));
                                     return {};
                                   });
  ASSERT_TRUE(status.ok()) << status.error().Describe();
  ASSERT_EQ(records.size(), 2u);
  const std::vector<Text>& first = records[0];
  ASSERT_EQ(first.size(), 7u);
  EXPECT_EQ(Field(first[0], 0), u"番号");
  EXPECT_EQ(Field(first[1], 14), u"15");   // the second header row, unscaled
  EXPECT_EQ(Field(first[2], 0), u"FCU-1");
  EXPECT_EQ(Field(first[2], 6), u"25");
  EXPECT_EQ(Field(first[2], 14), u"9");    // 2 per unit × 3 units × 1.5
  EXPECT_EQ(Field(first[3], 0), u"3");     // the unit count
  EXPECT_EQ(Field(first[3], 6), u"20");
  EXPECT_EQ(Field(first[4], 14), u"6");    // 1 × 3 × 2
  EXPECT_EQ(Field(first[5], 6), u"25");    // the larger of ① and ②
  EXPECT_EQ(Field(first[6], 14), u"12");   // 1 × 3 × 4 bolts for a size of 25 or more
  EXPECT_EQ(Field(records[1][2], 0), u"FCU-2");
  EXPECT_EQ(Field(records[1][6], 14), u"4");  // 1 × 2 × 2 bolts below 25
  EXPECT_EQ(spy.atClose, (std::map<Text, Text>{{u"AZ3", u"2"}, {u"AZ4", u"2"}, {u"AZ5", u"1"}, {u"AZ6", u"2"}, {u"AZ7", u"1"}}));
}

TEST_F(CalcWorkbookTest, TheEngineIsReusedAcrossImports) {
  CalcWorkbook first(*engine_), second(*engine_);
  ImportOk(first, ExamplePath("M-105.xls"));
  std::string profile = engine_->ProfileFolder();
  int starts = engine_->Starts();
  ImportOk(second, ExamplePath("M-106.xls"));
  EXPECT_EQ(engine_->Starts(), starts);
  EXPECT_EQ(engine_->ProfileFolder(), profile);
  EXPECT_TRUE(engine_->Running());
}

TEST(CalcEngine, ShutdownEndsTheOfficeAndRemovesItsProfile) {
  CalcEngine engine;
  CalcWorkbook workbook(engine);
  ImportOk(workbook, ExamplePath("M-105.xls"));
  std::string profile = engine.ProfileFolder();
  ASSERT_FALSE(profile.empty());
  EXPECT_FALSE(test::ProcessesNaming(profile).empty());
  engine.Shutdown();
  EXPECT_TRUE(test::ProcessesNaming(profile).empty());
  EXPECT_FALSE(std::filesystem::exists(profile));
  EXPECT_FALSE(engine.Running());
  std::string pipeName = std::filesystem::path(profile).filename().string();  // the pipe is named as the profile
  EXPECT_FALSE(std::filesystem::exists("/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + pipeName));
}

TEST(CalcEngine, TwoEnginesRunTheirOwnOffices) {
  CalcEngine one, two;
  CalcWorkbook a(one), b(two);
  ImportOk(a, ExamplePath("M-105.xls"));
  ImportOk(b, ExamplePath("M-106.xls"));
  EXPECT_NE(one.ProfileFolder(), two.ProfileFolder());
  std::vector<int> first = test::ProcessesNaming(one.ProfileFolder());
  for (int pid : test::ProcessesNaming(two.ProfileFolder())) EXPECT_EQ(std::count(first.begin(), first.end(), pid), 0);
}

TEST(CalcEngine, MissingOfficeFailsAtOnce) {
  CalcEngine engine(CalcEngineOptions{"/nonexistent/libreoffice/soffice", std::chrono::seconds(20)});
  CalcWorkbook workbook(engine);
  NoProgress progress;
  auto start = Clock::now();
  Result<SizeImportResult> result = ImportSizeWorkbook(workbook, ExamplePath("M-105.xls"), {}, progress);
  ASSERT_FALSE(result.ok());
  EXPECT_EQ(result.error().message, u"Excelの初期化に失敗しました。");
  EXPECT_EQ(result.error().systemCode, int(WorkbookFailure::EngineStart));
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
}

TEST(CalcEngine, OfficeThatNeverAnswersFailsAtTheDeadlineAndIsEnded) {
  // A launcher that starts a child and never opens the connection.
  test::TempDir dir;
  std::string marker = dir.path().string();
  dir.Write("soffice", "#!/bin/sh\nsleep 300\n");
  std::filesystem::permissions(dir / "soffice", std::filesystem::perms::owner_all);
  CalcEngine engine(CalcEngineOptions{(dir / "soffice").string(), std::chrono::milliseconds(1500)});
  auto start = Clock::now();
  Status status = engine.Start();
  ASSERT_FALSE(status.ok());
  EXPECT_EQ(status.error().message, u"Excelの初期化に失敗しました。");
  EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(1500));
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(6));
  EXPECT_TRUE(test::ProcessesNaming(marker).empty());
  EXPECT_FALSE(engine.Running());
}

TEST(CalcEngine, NoOfficeOutlivesAKilledProgram) {
  FILE* holder = popen((std::string(CALC_ENGINE_HOLDER) + " '" + ToUtf8(ExamplePath("M-105.xls")) + "'; echo").c_str(), "r");
  ASSERT_NE(holder, nullptr);
  char line[4096] = {};
  ASSERT_NE(fgets(line, sizeof line, holder), nullptr);
  int holderPid = 0;
  char profileText[4096] = {};
  ASSERT_EQ(std::sscanf(line, "%d %4095s", &holderPid, profileText), 2);
  std::string profile(profileText);
  ASSERT_FALSE(test::ProcessesNaming(profile).empty());
  ASSERT_EQ(kill(holderPid, SIGKILL), 0);
  pclose(holder);
  EXPECT_TRUE(NoOfficeWithin(profile, std::chrono::seconds(10))) << "office processes left for " << profile;
  for (int pid : test::ProcessesNaming(profile)) kill(pid, SIGKILL);  // a failed run leaves none behind
  // The office's profile went with it, removed by the watchdog.
  auto deadline = Clock::now() + std::chrono::seconds(5);
  while (std::filesystem::exists(profile) && Clock::now() < deadline) std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(std::filesystem::exists(profile));
  std::error_code error;
  std::filesystem::remove_all(profile, error);
}

}  // namespace
}  // namespace tq
