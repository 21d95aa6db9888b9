#include "dialog/ResourceHeader.hpp"

#include <gtest/gtest.h>

namespace tq::dialog {
namespace {

TEST(ResourceHeader, ReadsDefinesWithExpressionsAndPassesOverGuards) {
  Result<Symbols> s = ReadResourceHeader(
      u"// ids\n#pragma once\n#ifndef IDC_STATIC\n#define IDC_STATIC -1\n#endif\n"
      u"#define IDC_A 10   // the first\n#define IDC_B (IDC_A - 3)\n#define IDC_C 0x10\n#define IDC_D IDC_A + IDC_C\n");
  ASSERT_TRUE(s.ok()) << s.error().Describe();
  EXPECT_EQ(s->size(), 5u);
  EXPECT_EQ(s->at(u"IDC_STATIC"), -1);
  EXPECT_EQ(s->at(u"IDC_A"), 10);
  EXPECT_EQ(s->at(u"IDC_B"), 7);
  EXPECT_EQ(s->at(u"IDC_C"), 16);
  EXPECT_EQ(s->at(u"IDC_D"), 26);
}

TEST(ResourceHeader, FailsNamingTheLineOfWhatItDoesNotRead) {
  Result<Symbols> include = ReadResourceHeader(u"#define IDC_A 1\n#include \"other.h\"\n");
  ASSERT_FALSE(include.ok());
  EXPECT_EQ(include.error().line, 2u);
  EXPECT_EQ(include.error().message, u"resource.h: a directive that is not read: #include");

  Result<Symbols> noValue = ReadResourceHeader(u"\n\n#define IDC_A\n");
  ASSERT_FALSE(noValue.ok());
  EXPECT_EQ(noValue.error().line, 3u);
  EXPECT_EQ(noValue.error().message, u"resource.h: a #define without a name and a value");

  Result<Symbols> trailing = ReadResourceHeader(u"#define IDC_A 1 2\n");
  ASSERT_FALSE(trailing.ok());
  EXPECT_EQ(trailing.error().message, u"resource.h: more after the value of IDC_A");
}

TEST(ResourceHeader, TheWindowsIdsAreKnown) {
  EXPECT_EQ(WindowsIds().at(u"IDOK"), 1);
  EXPECT_EQ(WindowsIds().at(u"IDCANCEL"), 2);
  EXPECT_EQ(WindowsIds().at(u"IDC_STATIC"), -1);
}

}  // namespace
}  // namespace tq::dialog
