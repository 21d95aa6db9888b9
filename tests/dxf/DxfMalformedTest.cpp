#include <gtest/gtest.h>

#include <random>

#include "base/Encoding.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::string Good() { return R12Drawing(LineTags("A1", 0, 0, 1, 1) + TextTags("A2", "T", 5, 5)); }

// The strict read fails naming the line and reason; the recover read gives a document and
// lists what it repaired, first of all the failure the strict read stopped at.
void ExpectErrorAndRecovery(const std::string& bytes, const std::string& expectedInMessage, uint32_t expectedLine) {
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bytes);
  ASSERT_FALSE(strict) << "the strict read accepted the file";
  EXPECT_EQ(strict.error().code, ErrorCode::Malformed);
  EXPECT_EQ(strict.error().line, expectedLine) << strict.error().Describe();
  EXPECT_NE(strict.error().Describe().find("line " + std::to_string(expectedLine) + ": "), std::string::npos);
  EXPECT_NE(strict.error().Describe().find(expectedInMessage), std::string::npos) << strict.error().Describe();

  Result<dxf::Recovered> recovered = dxf::Document::Recover(bytes);
  ASSERT_TRUE(recovered);
  ASSERT_FALSE(recovered->problems.empty());
  EXPECT_EQ(recovered->problems.front().line, expectedLine);
  EXPECT_EQ(FromUtf8(recovered->problems.front().message), strict.error().message);
  // What was recovered is written with the end it lacked, and then reads strictly.
  std::string saved = recovered->document->Serialize();
  EXPECT_NE(saved.rfind("EOF"), std::string::npos);
}

// Line of the first occurrence of `text` in `bytes`, from 1.
uint32_t LineOf(const std::string& bytes, const std::string& text) {
  size_t at = bytes.find(text);
  return 1 + static_cast<uint32_t>(std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

}  // namespace

TEST(DxfMalformed, TruncatedFile) {
  std::string good = Good();
  std::string cut = good.substr(0, good.find("A2") + 3);
  ExpectErrorAndRecovery(cut, "is not closed by \"0 ENDSEC\"", static_cast<uint32_t>(std::count(cut.begin(), cut.end(), '\n')) + 1);
}

TEST(DxfMalformed, OddTagCount) {
  std::string good = Good();
  std::string odd = good.substr(0, good.rfind("EOF"));  // "  0\n" stays: a code without a value
  ExpectErrorAndRecovery(odd, "value", static_cast<uint32_t>(std::count(odd.begin(), odd.end(), '\n')));
}

TEST(DxfMalformed, GroupCodeThatIsNoNumber) {
  std::string bad = Good();
  bad.replace(bad.find(" 10\n0.000000"), 3, "1x0");
  ExpectErrorAndRecovery(bad, "expected a group code", LineOf(bad, "1x0"));
}

TEST(DxfMalformed, BadNumber) {
  std::string bad = Good();
  size_t at = bad.find(" 10\n") + 4;
  bad.replace(at, bad.find('\n', at) - at, "12,5");
  ExpectErrorAndRecovery(bad, "expected a number for group code 10", LineOf(bad, "12,5"));
}

TEST(DxfMalformed, MissingEof) {
  std::string good = Good();
  std::string bad = good.substr(0, good.rfind("  0\nEOF"));
  ExpectErrorAndRecovery(bad, "does not end with \"0 EOF\"", static_cast<uint32_t>(std::count(bad.begin(), bad.end(), '\n')) + 1);
}

TEST(DxfMalformed, MissingEndsec) {
  std::string good = Good();
  std::string bad = good.substr(0, good.rfind("  0\nENDSEC")) + "  0\nEOF\n";
  ExpectErrorAndRecovery(bad, "is not closed by \"0 ENDSEC\"", static_cast<uint32_t>(std::count(bad.begin(), bad.end(), '\n')) - 1);
}

TEST(DxfMalformed, BinaryDxfIsRefusedWithAReasonByBothReads) {
  std::string binary("AutoCAD Binary DXF\r\n\x1a\0", 22);
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(binary);
  ASSERT_FALSE(strict);
  EXPECT_EQ(strict.error().code, ErrorCode::Unsupported);
  EXPECT_NE(strict.error().Describe().find("binary DXF"), std::string::npos);
  Result<dxf::Recovered> recovered = dxf::Document::Recover(binary);
  ASSERT_FALSE(recovered);
  EXPECT_EQ(recovered.error().code, ErrorCode::Unsupported);
}

TEST(DxfMalformed, InvalidBytesInACp932FileDecodeWithReplacementCharacters) {
  std::string bytes = R12Drawing(TextTags("A1", "\x94\x7A\xFF\x81", 0, 0));
  auto drawing = std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(bytes).value(), "m.dxf");
  auto text = drawing->TextData(drawing->FindHandle(u"A1"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->string.substr(0, 1), u"配");
  EXPECT_EQ(drawing->document().Serialize(), bytes);
}

TEST(DxfMalformed, EmptyFile) {
  Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read("");
  ASSERT_FALSE(strict);
  EXPECT_EQ(strict.error().line, 1u);
  EXPECT_NE(strict.error().Describe().find("EOF"), std::string::npos);
  Result<dxf::Recovered> recovered = dxf::Document::Recover("");
  ASSERT_TRUE(recovered);
  ASSERT_EQ(recovered->problems.size(), 1u);
  EXPECT_EQ(recovered->document->Serialize(), "  0\nEOF\n");
}

// Whatever the damage, neither read crashes; the strict read either succeeds or fails naming
// a line, and the recover read always gives a document, listing a problem exactly when the
// strict read failed.
TEST(DxfMalformed, RandomDamageNeverCrashesAndEveryFailureNamesALine) {
  std::mt19937 random(20261121);
  std::string good = Good();
  size_t failed = 0, read = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string bad = good;
    int edits = 1 + static_cast<int>(random() % 8);
    for (int e = 0; e < edits; ++e) {
      size_t at = random() % bad.size();
      switch (random() % 3) {
        case 0: bad[at] = static_cast<char>(random()); break;
        case 1: bad.erase(at, random() % 20); break;
        default: bad.insert(at, std::string(1 + random() % 4, static_cast<char>(random()))); break;
      }
      if (bad.empty()) bad = "x";
    }
    Result<std::unique_ptr<dxf::Document>> strict = dxf::Document::Read(bad);
    if (strict) {
      ++read;
    } else {
      ++failed;
      ASSERT_EQ(strict.error().code, ErrorCode::Malformed) << strict.error().Describe();
      ASSERT_GT(strict.error().line, 0u) << strict.error().Describe();
      ASSERT_EQ(strict.error().Describe().rfind("line ", 0), 0u) << strict.error().Describe();
    }
    Result<dxf::Recovered> recovered = dxf::Document::Recover(bad);
    ASSERT_TRUE(recovered) << recovered.error().Describe();
    ASSERT_EQ(recovered->problems.empty(), strict.ok()) << "round " << round;
    if (!strict) {
      ASSERT_EQ(recovered->problems.front().line, strict.error().line);
    }
    dxf::DxfDrawing drawing(std::move(recovered->document), "m.dxf");
    for (ObjectId id : drawing.SelectAll({})) {
      drawing.EntityExtents(id);
      drawing.TextData(id);
      drawing.ReadXData(id, u"TQ_STDINF01");
    }
    ASSERT_FALSE(drawing.document().Serialize().empty());
  }
  // The damage is of both kinds: some files still read, most do not.
  EXPECT_GT(read, 0u);
  EXPECT_GT(failed, read);
}
