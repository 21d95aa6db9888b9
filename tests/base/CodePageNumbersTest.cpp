#include <gtest/gtest.h>

#include "base/CodePageNumbers.hpp"

using tq::WindowsCodePageNumber;

TEST(CodePageNumbers, TheNamesInUseReachTheirWindowsNumbers) {
  EXPECT_EQ(WindowsCodePageNumber("CP932"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("windows-31j"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("ibm-943_P15A-2003"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("Shift_JIS"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("windows-1252"), 1252u);
  EXPECT_EQ(WindowsCodePageNumber("windows-950"), 950u);
  EXPECT_EQ(WindowsCodePageNumber("windows-949"), 949u);
  EXPECT_EQ(WindowsCodePageNumber("windows-936"), 936u);
  EXPECT_EQ(WindowsCodePageNumber("ibm-1363"), 1361u);
  EXPECT_EQ(WindowsCodePageNumber("UTF-8"), 65001u);
  EXPECT_EQ(WindowsCodePageNumber("ISO-8859-1"), 28591u);
  EXPECT_EQ(WindowsCodePageNumber("macintosh"), 10000u);  // ICU's name for Mac Roman, which DXF writers call MAC-ROMAN
}

TEST(CodePageNumbers, CaseAndSeparatorsDoNotMatter) {
  EXPECT_EQ(WindowsCodePageNumber("cp932"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("SHIFT-JIS"), 932u);
  EXPECT_EQ(WindowsCodePageNumber("Windows_1252"), 1252u);
}

TEST(CodePageNumbers, UnknownNamesHaveNoNumber) {
  EXPECT_FALSE(WindowsCodePageNumber("no-such-code-page"));
  EXPECT_FALSE(WindowsCodePageNumber("windows-"));
  EXPECT_FALSE(WindowsCodePageNumber("cp93x"));
  EXPECT_FALSE(WindowsCodePageNumber(""));
}
