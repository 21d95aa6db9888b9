#include <gtest/gtest.h>

#include "support/RunCommand.hpp"

using tq::test::RunTqstd;

TEST(TqstdSettings, PrintsTheExampleInstallation) {
  auto r = RunTqstd(std::string("--ini ") + TQ_EXAMPLE_SITE + "/Velum.ini settings");
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("[標準図] 標準図番号ﾚｲﾔ = 5"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("(default)"), std::string::npos) << r.out;
  // Every table of the installation is there; only the last-values file is written later.
  size_t missing = r.out.find("(missing)");
  ASSERT_NE(missing, std::string::npos);
  EXPECT_NE(r.out.rfind("ファイル出力前回値.dat", missing), std::string::npos);
  EXPECT_EQ(r.out.find("(missing)", missing + 1), std::string::npos) << r.out;
}

TEST(TqstdSettings, GlobalOptionsAreAcceptedAfterTheCommandName) {
  auto r = RunTqstd(std::string("settings --codepage CP932 --ini ") + TQ_EXAMPLE_SITE + "/Velum.ini");
  EXPECT_EQ(r.status, 0) << r.out;
}

TEST(TqstdSettings, UnreadableHostIniIsAUserError) {
  auto r = RunTqstd("--ini /nonexistent/Velum.ini settings");
  EXPECT_EQ(r.status, 1) << r.out;
  EXPECT_NE(r.out.find("/nonexistent/Velum.ini"), std::string::npos) << r.out;
}

TEST(TqstdSettings, UnknownCodePageIsAUserError) {
  auto r = RunTqstd("--codepage NOPE settings");
  EXPECT_EQ(r.status, 1) << r.out;
}

TEST(TqstdSettings, UnknownOptionIsAUsageError) {
  auto r = RunTqstd("settings --frobnicate");
  EXPECT_EQ(r.status, 2) << r.out;
}

TEST(TqstdSettings, HelpExitsCleanly) {
  auto r = RunTqstd("--help");
  EXPECT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("settings"), std::string::npos) << r.out;
}
