#include <gtest/gtest.h>

#include "support/RunCommand.hpp"

using namespace tq::test;

namespace {
const std::string kExample = std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf";
}

TEST(TqstdInfo, RecordsOfOneStandardDrawingBySheetName) {
  auto r = RunTqstd("info '" + kExample + "' --sheet M-101");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out.find("TQ_STDINF01\n"), 0u) << r.out;
  EXPECT_NE(r.out.find("TQ_STDINF02\n"), std::string::npos);
  EXPECT_NE(r.out.find("\n2\tAC-1\t空調機\t冷温水\tA\t\t配管用炭素鋼鋼管\t50\tA\t"), std::string::npos) << r.out;
}

TEST(TqstdInfo, JsonWithMembersAsRead) {
  auto r = RunTqstd("info '" + kExample + "' --at 30000,1000 --json");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(r.out.find("{\"handle\": \"53\", \"sheet\": \"M-102\", \"records\": [[{\"line\": \"番号,名称"), 0u) << r.out;
  EXPECT_NE(r.out.find("\"members\": [\"P-1\", \"給水ポンプ\", \"給水\""), std::string::npos) << r.out;
}

TEST(TqstdInfo, MembersAsReadApplyTheFillRule) {
  auto r = RunTqstd("info '" + kExample + "' --handle F5 --json");
  ASSERT_EQ(r.status, 0) << r.out;
  // Line 2 of D-301 has 17 fields whose key "S040" is no column-2 entry of the sample table: "-".
  size_t line2 = r.out.find("\"members\": [\"D-1\"");
  ASSERT_NE(line2, std::string::npos) << r.out;
  std::string members = r.out.substr(line2, r.out.find(']', line2) - line2);
  int commas = 0;
  size_t at = 0;
  while (commas < 19 && (at = members.find(", ", at + 1)) != std::string::npos) ++commas;
  EXPECT_EQ(members.substr(at + 2, 3), "\"-\"") << members;
}

TEST(TqstdInfo, StandardDrawingWithoutRecordSaysSoAndExitsWithOne) {
  auto r = RunTqstd("info '" + kExample + "' --sheet M-103");
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "情報が設定されていません。\n");
}

TEST(TqstdInfo, ExactlyOneWayOfNamingTheSheet) {
  EXPECT_EQ(RunTqstd("info '" + kExample + "'").status, 2);
  EXPECT_EQ(RunTqstd("info '" + kExample + "' --sheet M-101 --handle 42").status, 2);
}

TEST(TqstdChoices, EveryChoiceListOfTheAttributeDialog) {
  auto a = RunTqstd("choices");
  ASSERT_EQ(a.status, 0) << a.out;
  EXPECT_NE(a.out.find("部材 (1103): 7 entries\n  配管用炭素鋼鋼管\n"), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("工事項目 (1101): 8 entries (sorted)"), std::string::npos) << a.out;
  EXPECT_NE(a.out.find("A材/別途 (1102): 3 entries\n  A\n  \"\"\n  別途\n"), std::string::npos) << a.out;
  auto b = RunTqstd("choices --ab B");
  EXPECT_NE(b.out.find("部材 (1103): 6 entries\n  吊りボルト\n"), std::string::npos) << b.out;
  EXPECT_EQ(RunTqstd("choices --ab C").status, 2);
}
