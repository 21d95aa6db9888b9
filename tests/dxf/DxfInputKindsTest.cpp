// Files that are no ASCII DXF, or ASCII DXF in a form other programs write: each is read or
// named for what it is.
#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "dxf/DxfDocument.hpp"
#include "support/DxfText.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::string Good() { return R12Drawing(LineTags("A1", 0, 0, 1, 1) + TextTags("A2", "T", 5, 5)); }

// Both reads refuse the file with the same message.
std::string Refusal(const std::string& bytes) {
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bytes);
  Result<dxf::Recovered> recovered = dxf::Document::Recover(bytes);
  if (strict || recovered) return "<read>";
  EXPECT_EQ(strict.error().code, ErrorCode::Unsupported);
  EXPECT_EQ(strict.error().message, recovered.error().message);
  return strict.error().Describe();
}

std::string Utf16(const std::string& ascii, bool bigEndian) {
  std::string out;
  for (char c : ascii) out += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return out;
}

}  // namespace

TEST(DxfInputKinds, DwgFileIsNamedAndToldToBeSavedAsDxf) {
  std::string dwg = std::string("AC1015\0\0\0\0\0\x01\x02", 13) + std::string(200, '\x7F');
  std::string message = Refusal(dwg);
  EXPECT_NE(message.find("a DWG drawing (version \"AC1015\")"), std::string::npos) << message;
  EXPECT_NE(message.find("save it as DXF"), std::string::npos) << message;
}

TEST(DxfInputKinds, BinaryDxfIsNamed) {
  std::string message = Refusal(std::string("AutoCAD Binary DXF\r\n\x1a\0", 22) + "\x00\x00SECTION");
  EXPECT_NE(message.find("a binary DXF file"), std::string::npos) << message;
}

TEST(DxfInputKinds, Utf16FileIsNamedWithOrWithoutAByteOrderMark) {
  for (const std::string& bytes : {"\xFF\xFE" + Utf16(Good(), false), Utf16(Good(), false), Utf16(Good(), true)}) {
    std::string message = Refusal(bytes);
    EXPECT_NE(message.find("a UTF-16 text file"), std::string::npos) << message;
  }
}

TEST(DxfInputKinds, CrOnlyLineEndsAreNamed) {
  std::string message = Refusal(R12Drawing(LineTags("A1", 0, 0, 1, 1), "ANSI_932", "\r"));
  EXPECT_NE(message.find("its lines end with CR alone"), std::string::npos) << message;
  // CR LF is read as ever.
  EXPECT_TRUE(dxf::Document::Read(R12Drawing(LineTags("A1", 0, 0, 1, 1), "ANSI_932", "\r\n")));
}

TEST(DxfInputKinds, Utf8ByteOrderMarkBeforeTheFirstTagIsReadPastAndKept) {
  std::string bytes = "\xEF\xBB\xBF" + Good();
  Result<std::unique_ptr<dxf::Document>> doc = dxf::Document::Read(bytes);
  ASSERT_TRUE(doc) << doc.error().Describe();
  EXPECT_EQ((*doc)->records().size(), 2u);
  EXPECT_EQ((*doc)->Serialize(), bytes);
  Result<dxf::Recovered> recovered = dxf::Document::Recover(bytes);
  ASSERT_TRUE(recovered);
  EXPECT_TRUE(recovered->problems.empty());
}

TEST(DxfInputKinds, ControlBytesAndNulOfTheFileAreEscapedInTheMessage) {
  std::string bytes = R12Drawing(Tags{{0, "LINE"}, {5, "A1"}, {8, "0"}, {10, std::string("1\x07\x1b[2J\0x", 8)}});
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bytes);
  ASSERT_FALSE(strict);
  std::string message = strict.error().Describe();
  EXPECT_NE(message.find("found \"1\\x07\\x1B[2J\\0x\""), std::string::npos) << message;
  for (char c : message) EXPECT_FALSE(static_cast<unsigned char>(c) < 0x20 || c == 0x7F) << message;
}

TEST(DxfInputKinds, ALineThatIsNoGroupCodeIsQuotedEscaped) {
  std::string bytes = "  0\nSECTION\n  2\nENTITIES\nab\x01\n";
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bytes);
  ASSERT_FALSE(strict);
  EXPECT_EQ(strict.error().Describe(), "line 5: expected a group code (an integer), found \"ab\\x01\"");
}
