#include <gtest/gtest.h>

#include <random>

#include "base/Encoding.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::string Good() { return R12Drawing(LineTags("A1", 0, 0, 1, 1) + TextTags("A2", "T", 5, 5)); }

// Strict reading fails naming a line; recovering reading gives a document and problems.
void ExpectErrorAndRecovery(const std::string& bytes, const std::string& expectedInMessage) {
  try {
    dxf::Document::Load(bytes, false);
    ADD_FAILURE() << "strict reading accepted the file";
  } catch (const dxf::DxfError& e) {
    EXPECT_GT(e.line(), 0u);
    EXPECT_NE(std::string(e.what()).find("line "), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find(expectedInMessage), std::string::npos) << e.what();
  }
  std::vector<dxf::Problem> problems;
  std::unique_ptr<dxf::Document> doc;
  ASSERT_NO_THROW(doc = dxf::Document::Load(bytes, true, &problems));
  EXPECT_FALSE(problems.empty());
  // What was recovered reads again without complaint of a missing end.
  std::string saved = doc->Serialize();
  EXPECT_NE(saved.rfind("EOF"), std::string::npos);
}

}  // namespace

TEST(DxfMalformed, TruncatedFile) {
  std::string good = Good();
  ExpectErrorAndRecovery(good.substr(0, good.find("A2") + 3), "");
}

TEST(DxfMalformed, OddTagCount) {
  std::string good = Good();
  std::string odd = good.substr(0, good.rfind("EOF"));  // "  0\n" stays: a code without a value
  ExpectErrorAndRecovery(odd, "value");
}

TEST(DxfMalformed, GroupCodeThatIsNoNumber) {
  std::string bad = Good();
  bad.replace(bad.find(" 10\n0.000000"), 3, "1x0");
  ExpectErrorAndRecovery(bad, "expected a group code");
}

TEST(DxfMalformed, BadNumber) {
  std::string bad = Good();
  size_t at = bad.find(" 10\n") + 4;
  bad.replace(at, bad.find('\n', at) - at, "12,5");
  ExpectErrorAndRecovery(bad, "expected a number for group code 10");
}

TEST(DxfMalformed, MissingEof) {
  std::string good = Good();
  ExpectErrorAndRecovery(good.substr(0, good.rfind("  0\nEOF")), "EOF");
}

TEST(DxfMalformed, MissingEndsec) {
  std::string good = Good();
  std::string bad = good.substr(0, good.rfind("  0\nENDSEC")) + "  0\nEOF\n";
  ExpectErrorAndRecovery(bad, "ENDSEC");
}

TEST(DxfMalformed, BinaryDxfIsRefusedWithAReason) {
  EXPECT_THROW(dxf::Document::Load(std::string("AutoCAD Binary DXF\r\n\x1a\0", 22), false), dxf::DxfError);
}

TEST(DxfMalformed, InvalidBytesInACp932FileDecodeWithReplacementCharacters) {
  std::string bytes = R12Drawing(TextTags("A1", "\x94\x7A\xFF\x81", 0, 0));
  auto drawing = std::make_unique<dxf::DxfDrawing>(dxf::Document::Load(bytes, false), "m.dxf");
  auto text = drawing->TextData(drawing->FindHandle(u"A1"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->string.substr(0, 1), u"配");
  EXPECT_EQ(drawing->document().Serialize(), bytes);
}

TEST(DxfMalformed, EmptyFile) {
  EXPECT_THROW(dxf::Document::Load("", false), dxf::DxfError);
  std::vector<dxf::Problem> problems;
  EXPECT_NO_THROW(dxf::Document::Load("", true, &problems));
}

TEST(DxfMalformed, RandomDamageNeverCrashes) {
  std::mt19937 random(20261121);
  std::string good = Good();
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
    std::vector<dxf::Problem> problems;
    try {
      auto drawing = std::make_unique<dxf::DxfDrawing>(dxf::Document::Load(bad, true, &problems), "m.dxf");
      for (ObjectId id : drawing->SelectAll({})) {
        drawing->EntityExtents(id);
        drawing->TextData(id);
        drawing->ReadXData(id, u"TQ_STDINF01");
      }
      drawing->document().Serialize();
    } catch (const dxf::DxfError&) {
    }
    try {
      dxf::Document::Load(bad, false);
    } catch (const dxf::DxfError&) {
    }
  }
}
