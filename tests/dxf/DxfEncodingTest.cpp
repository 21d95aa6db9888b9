#include <gtest/gtest.h>

#include "dxf/DxfCodec.hpp"

using namespace tq;

TEST(DxfEncoding, Utf8FromAC1021On) {
  dxf::DxfCodec codec("AC1021", "ANSI_932");
  EXPECT_TRUE(codec.isUtf8());
  EXPECT_EQ(codec.Decode("\xE6\xA8\x99"), u"標");
  EXPECT_EQ(codec.Encode(u"標"), "\xE6\xA8\x99");
}

TEST(DxfEncoding, CodePageOfDwgCodePageBefore) {
  dxf::DxfCodec codec("AC1018", "ANSI_932");
  EXPECT_FALSE(codec.isUtf8());
  EXPECT_EQ(codec.Decode("\x95\x57"), u"標");
  EXPECT_EQ(codec.Encode(u"標"), "\x95\x57");
  EXPECT_EQ(dxf::IcuNameOfDwgCodePage("ANSI_1251"), "windows-1251");
  EXPECT_EQ(dxf::IcuNameOfDwgCodePage("unknown"), "");
}

TEST(DxfEncoding, UnicodeEscapesOfEitherCaseAreDecoded) {
  dxf::DxfCodec codec("AC1015", "ANSI_1252");
  EXPECT_EQ(codec.Decode("\\U+6A19\\U+6e96-1"), u"標準-1");
  EXPECT_EQ(codec.Decode("\\u+6a19"), u"標");
  EXPECT_EQ(codec.Decode("\\U+12"), u"\\U+12");  // too short: no escape
}

TEST(DxfEncoding, MultiByteEscapeIsDecodedWithItsCodePage) {
  dxf::DxfCodec codec("AC1009", "ANSI_1252");
  EXPECT_EQ(codec.Decode("\\M+1889F"), u"亜");
}

TEST(DxfEncoding, WhatTheCodePageCannotHoldIsWrittenAsUnicodeEscape) {
  dxf::DxfCodec codec("AC1018", "ANSI_932");
  EXPECT_EQ(codec.Encode(u"a\u4E02b"), "a\\U+4E02b");
  EXPECT_EQ(codec.Decode(codec.Encode(u"a\u4E02b")), u"a\u4E02b");
}
