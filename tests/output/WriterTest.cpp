#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "output/EncodedWriter.hpp"
#include "output/FileOutput.hpp"
#include "support/CodePages.hpp"
#include "support/FakeHost.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;

namespace {
std::string Written(TextView text, int mode, WriteOptions options = {}, int* result = nullptr) {
  TempDir dir;
  std::FILE* f = std::fopen((dir / "w.bin").string().c_str(), "wb");
  int r = CharacterWriter(Cp932()).Write(f, text, mode, options);
  std::fclose(f);
  if (result) *result = r;
  return dir.Read("w.bin");
}
}  // namespace

TEST(Writer, SystemCodePageWithLineEndOption) {
  EXPECT_EQ(Written(u"配管\nA", 1, {false, true}), "\x94\x7A\x8A\xC7\r\nA");
  EXPECT_EQ(Written(u"配管\nA", 1), "\x94\x7A\x8A\xC7\nA");
}

TEST(Writer, WhatTheCodePageCannotHoldIsItsDefaultCharacterOrAnEscape) {
  EXPECT_EQ(Written(u"a\u4E02b", 1), "a?b");
  EXPECT_EQ(Written(u"a\u4E02b", 1, {true, false}), "a\\U+4E02b");
  EXPECT_EQ(Written(u"\U0001F600", 1), "??");  // a surrogate pair goes out as two units
}

TEST(Writer, Utf8AndUtf16OfBothOrders) {
  EXPECT_EQ(Written(u"標\n", 2, {false, true}), "\xE6\xA8\x99\r\n");
  EXPECT_EQ(Written(u"標\n", 3, {false, true}), std::string("\x19\x6A\r\0\n\0", 6));
  EXPECT_EQ(Written(u"標", 4), "\x6A\x19");
}

TEST(Writer, UnknownModeWritesNothingAndTheTextStopsAtAZero) {
  EXPECT_EQ(Written(u"abc", 7), "");
  EXPECT_EQ(Written(Text(u"ab\0cd", 5), 1), "ab");
}

TEST(Writer, ResultsAsAsked) {
  int r = 99;
  Written(u"abc", 1, {false, false, WriteResultKind::UnitCount}, &r);
  EXPECT_EQ(r, 3);
  Written(u"abc", 1, {false, false, WriteResultKind::Zero}, &r);
  EXPECT_EQ(r, 0);
  Written(u"abc", 1, {false, false, WriteResultKind::MinusOne}, &r);
  EXPECT_EQ(r, -1);
}

TEST(Writer, OutputFileInTheSystemCodePageWithCrLfAndNoByteOrderMark) {
  TempDir dir;
  ASSERT_TRUE(WriteOutputFile(dir / "o.txt", {u"記号,数量,", u"AC-1,3.0,"}, Cp932()));
  EXPECT_EQ(dir.Read("o.txt"), EncodeCodePage(u"記号,数量,\r\nAC-1,3.0,\r\n", "CP932"));
  EXPECT_FALSE(WriteOutputFile("", {u"x"}, Cp932()));
  Status missingFolder = WriteOutputFile(dir / "no" / "o.txt", {u"x"}, Cp932());
  ASSERT_FALSE(missingFolder);
  EXPECT_NE(missingFolder.error().Describe().find("o.txt"), std::string::npos);
}

TEST(FileOutput, DefaultFileNames) {
  EXPECT_EQ(DefaultOutputName(u"C:\\work\\plan.dwg", OutputKind::List), u"C:\\work\\plan");
  EXPECT_EQ(DefaultOutputName(u"C:\\work\\plan.backup.dwg", OutputKind::Aggregate), u"C:\\work\\plan.backup");
  EXPECT_EQ(DefaultOutputName(u"C:\\work\\plan.dwgx", OutputKind::List), u"C:\\work\\planx");
  EXPECT_EQ(DefaultOutputName(u"/work/plan.dxf", OutputKind::Cinet), u"/work/plan_CI-NETコード");
  EXPECT_EQ(DefaultOutputName(u".dwg", OutputKind::List), u".dwg");
}

TEST(FileOutput, FirstUseWithNoFilesStartsWithListTabAndTheFirstCategoryAndRemembersThem) {
  TempDir dir;
  std::filesystem::create_directories(dir / "system/Addin/標準図");
  dir.Write("Velum.ini", EncodeCodePage(u"[環境設定]\r\nｼｽﾃﾑ=system\r\n", "CP932"));
  dir.Write("system/Addin/標準図/出力区分.txt", EncodeCodePage(u"全て\r\nA材\r\n", "CP932"));
  FakeHost host(dir.TextPath("Velum.ini"));
  Folders folders(host, host.codePage());
  FileOutputChoices first = InitialChoices(folders);
  EXPECT_EQ(first.outputKind, OutputKind::List);
  EXPECT_EQ(first.separatorKind, SeparatorKind::Tab);
  EXPECT_EQ(first.category, u"全て");
  ASSERT_TRUE(WriteLastValues(LastValuesFile(folders), first, folders.codePage()));
  EXPECT_EQ(dir.Read("system/Addin/標準図/ファイル出力前回値.dat"), EncodeCodePage(u"0\r\n2\r\n全て\r\n", "CP932"));
  FileOutputChoices again = InitialChoices(folders);
  EXPECT_EQ(again.category, u"全て");
}

TEST(FileOutput, AShortLastValuesFileGivesTheValuesReadSoFar) {
  TempDir dir;
  dir.Write("v.dat", "1\n");
  std::optional<FileOutputChoices> v = ReadLastValues(dir.TextPath("v.dat"), Cp932());
  ASSERT_TRUE(v);
  EXPECT_EQ(v->outputKind, OutputKind::Aggregate);
  EXPECT_EQ(v->separatorKind, SeparatorKind::Tab);
  EXPECT_EQ(v->category, u"");
  dir.Write("v2.dat", "1\n1\n");
  v = ReadLastValues(dir.TextPath("v2.dat"), Cp932());
  ASSERT_TRUE(v);
  EXPECT_EQ(v->outputKind, OutputKind::Aggregate);
  EXPECT_EQ(v->separatorKind, SeparatorKind::Pipe);
  EXPECT_EQ(v->category, u"");
  EXPECT_FALSE(ReadLastValues(dir.TextPath("none.dat"), Cp932()));
}

TEST(FileOutput, WithNoTakeoffDataNothingIsWritten) {
  TempDir dir;
  dir.Write("Velum.ini", "");
  FakeHost host(dir.TextPath("Velum.ini"));
  Folders folders(host, host.codePage());
  OutputLineList lines;
  bool asked = false;
  OutputHooks hooks;
  hooks.choosePath = [&](TextView) -> std::optional<std::filesystem::path> {
    asked = true;
    return dir / "x.txt";
  };
  Result<OutputResult> r =
      OutputTakeoff({}, ReferenceTables(), folders, {OutputKind::List, SeparatorKind::Tab, u""}, u"plan.dxf", lines, hooks);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->outcome, OutputResult::Outcome::NothingToOutput);
  EXPECT_FALSE(asked);
}

TEST(FileOutput, TheCinetCodeFileReusesTheLastBuild) {
  TempDir dir;
  dir.Write("Velum.ini", "");
  FakeHost host(dir.TextPath("Velum.ini"));
  Folders folders(host, host.codePage());
  OutputLineList lines{{u"built,before,"}, {LineOrigin{}}};
  Text asked;
  OutputHooks hooks;
  hooks.choosePath = [&](TextView name) -> std::optional<std::filesystem::path> {
    asked = Text(name);
    return dir / "c.txt";
  };
  Result<OutputResult> r =
      OutputTakeoff({}, ReferenceTables(), folders, {OutputKind::Cinet, SeparatorKind::Comma, u""}, u"/w/plan.dxf", lines, hooks);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->outcome, OutputResult::Outcome::Written);
  EXPECT_EQ(asked, u"/w/plan_CI-NETコード");
  EXPECT_EQ(dir.Read("c.txt"), "built,before,\r\n");
}
