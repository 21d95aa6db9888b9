#include <gtest/gtest.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "dxf/DxfDocument.hpp"
#include "dxf/StringStore.hpp"
#include "dxf/TagList.hpp"
#include "dxf/Tagger.hpp"

using namespace tq::dxf;

namespace {
// What the library reads, the reference for every value.
bool LibraryDouble(std::string_view v, double& out) {
  auto [p, ec] = std::from_chars(v.data(), v.data() + v.size(), out);
  return ec == std::errc() && p == v.data() + v.size() && !v.empty();
}

void ExpectSameAsLibrary(const std::string& text) {
  double ours = 0, library = 0;
  bool read = ParseDouble(text, ours), expected = LibraryDouble(text, library);
  ASSERT_EQ(read, expected) << text;
  if (read) {
    EXPECT_EQ(std::memcmp(&ours, &library, sizeof ours), 0) << text << ": " << ours << " != " << library;
  }
}
}  // namespace

TEST(DxfValues, NumbersReadBitForBitAsTheLibraryReadsThem) {
  std::mt19937_64 random(20261122);
  for (int i = 0; i < 200000; ++i) {
    std::uniform_int_distribution<int> digits(0, 18), fraction(0, 17);
    std::string text = random() % 2 ? "-" : "";
    int w = digits(random), f = fraction(random);
    for (int k = 0; k < w; ++k) text += static_cast<char>('0' + random() % 10);
    if (f > 0 || random() % 4 == 0) text += '.';
    for (int k = 0; k < f; ++k) text += static_cast<char>('0' + random() % 10);
    ExpectSameAsLibrary(text);
  }
  for (const char* text : {"0", "-0", "-0.0", "0.1", "0.3", "123456789012345", "1234567890123456", "0.000000000000001",
                           "9007199254740993", "1e5", "1.5E-3", "-", ".", "5.", ".5", "-.5", "1.2.3", "12a", "inf",
                           "nan", "999999999999999", "28000.00000000", "-19800.123456789"})
    ExpectSameAsLibrary(text);
}

TEST(DxfValues, NumbersMayHaveBlanksAndAPlusSign) {
  double v = 0;
  ASSERT_TRUE(ParseDouble("  +12.5\r", v));
  EXPECT_EQ(v, 12.5);
  ASSERT_TRUE(ParseDouble("\t-3 ", v));
  EXPECT_EQ(v, -3);
  EXPECT_FALSE(ParseDouble("", v));
}

TEST(DxfValues, KeptValuesStayWhereTheyAreAsMoreAreKept) {
  StringStore store;
  Kept first = store.Keep("TQ_STDCHECK");
  std::string large(40000, 'x');
  Kept big = store.Keep(large);
  std::vector<Kept> many;
  for (int i = 0; i < 20000; ++i) many.push_back(store.Keep(std::to_string(i)));
  EXPECT_EQ(first.view(), "TQ_STDCHECK");
  EXPECT_EQ(big.view(), large);
  for (int i = 0; i < 20000; ++i) ASSERT_EQ(many[static_cast<size_t>(i)].view(), std::to_string(i));
  EXPECT_TRUE(store.Keep("").view().empty());
}

TEST(DxfValues, AnEditedTagKeepsItsPairAsTheFileWroteIt) {
  std::string bytes = "     62\r\n  3  \r\n  8\nLAYER\n";
  TagList tags = ParseTags(bytes);
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(tags[0].code, 62);
  EXPECT_EQ(tags[0].original(), "     62\r\n  3  \r\n");
  EXPECT_EQ(tags[0].originalValue(), "  3  ");
  EXPECT_FALSE(tags[0].isChanged());
  StringStore store;
  SetTagInt(tags[0], 1, store);
  EXPECT_TRUE(tags[0].isChanged());
  EXPECT_EQ(tags[0].value(), "    1");  // right-aligned in the width it had
  SetTagInt(tags[0], 3, store);
  EXPECT_FALSE(tags[0].isChanged());
  EXPECT_EQ(Serialize(tags, "\n"), bytes);
}

TEST(DxfValues, ACodeLineOfAnyLengthIsKept) {
  std::string bytes = std::string(70000, ' ') + "8\nLAYER\n";
  TagList tags = ParseTags(bytes);
  ASSERT_EQ(tags.size(), 1u);
  EXPECT_EQ(tags[0].original(), bytes);
  EXPECT_EQ(tags[0].value(), "LAYER");
}

// Pairs of every length, with "\n" or "\r\n", read alike wherever their line ends fall:
// within the first 32 bytes of a pair or past them, and at the very end of the file.
TEST(DxfValues, PairsReadAlikeWhereverTheirLineEndsFall) {
  std::mt19937 random(7);
  for (int file = 0; file < 300; ++file) {
    std::string bytes;
    std::vector<std::pair<int, std::string>> written;
    int pairs = 1 + static_cast<int>(random() % 40);
    for (int k = 0; k < pairs; ++k) {
      int code = static_cast<int>(random() % 1072);
      std::string value(random() % 45, 'v');
      for (char& c : value) c = static_cast<char>('a' + random() % 26);
      std::string pad(random() % 4, ' ');
      const char* end = random() % 3 ? "\n" : "\r\n";
      bytes += pad + std::to_string(code) + end + value;
      if (k + 1 < pairs || value.empty() || random() % 2) bytes += end;
      written.emplace_back(code, value);
    }
    Tagger tagger(bytes);
    Tag tag;
    uint32_t line = 1;
    for (const auto& [code, value] : written) {
      ASSERT_EQ(tagger.Next(tag), Tagger::Result::Tag) << bytes;
      EXPECT_EQ(tag.code, code);
      EXPECT_EQ(tag.value, value);
      EXPECT_EQ(tag.line, line);
      line += 2;
    }
    EXPECT_EQ(tag.end, bytes.size());
    EXPECT_EQ(tagger.Next(tag), Tagger::Result::End);
  }
}

TEST(DxfValues, ABadCodeOrAMissingValueIsToldWhereverItFalls) {
  for (size_t lead = 0; lead < 40; ++lead) {
    std::string good = "  0\n" + std::string(lead, 'x') + "\n";
    Tag tag;
    std::string badCode = good + "1x\nvalue\n" + std::string(40, '-') + "\n", cutShort = good + " 40";
    Tagger bad(badCode);
    ASSERT_EQ(bad.Next(tag), Tagger::Result::Tag);
    EXPECT_EQ(bad.Next(tag), Tagger::Result::BadCode);
    EXPECT_EQ(bad.errorLine(), 3u);
    Tagger cut(cutShort);
    ASSERT_EQ(cut.Next(tag), Tagger::Result::Tag);
    EXPECT_EQ(cut.Next(tag), Tagger::Result::MissingValue);
  }
}

namespace {
void ExpectSameTags(const std::vector<Tag>& noted, const std::vector<Tag>& read) {
  ASSERT_EQ(noted.size(), read.size());
  for (size_t k = 0; k < read.size(); ++k) {
    EXPECT_EQ(noted[k].code, read[k].code);
    EXPECT_EQ(noted[k].value, read[k].value);
    EXPECT_EQ(noted[k].offset, read[k].offset);
    EXPECT_EQ(noted[k].end, read[k].end);
    EXPECT_EQ(noted[k].line, read[k].line);
  }
}

// Every entity's tags, its extended data and its list for editing, from the noted pairs and
// from its bytes read again.
void ExpectNotedTagsAsRead(Document& doc) {
  std::vector<Tag> noted, read;
  for (uint32_t i = 0; i < doc.records().size(); ++i) {
    const EntityRecord& rec = doc.records()[i];
    doc.TagsInto(i, noted);
    ViewTagsInto(doc.source().substr(rec.begin, rec.end - rec.begin), read);
    ExpectSameTags(noted, read);
    if (rec.xdataBegin) {
      doc.XDataTagsInto(i, noted);
      ViewTagsInto(doc.source().substr(rec.xdataBegin, rec.end - rec.xdataBegin), read);
      ExpectSameTags(noted, read);
      EXPECT_EQ(noted.front().value, "TQ_STDINF01");
    }
    TagList again = ParseTags(doc.source().substr(rec.begin, rec.end - rec.begin));
    const TagList& edit = doc.Edit(i);
    ASSERT_EQ(edit.size(), again.size());
    for (size_t k = 0; k < edit.size(); ++k) EXPECT_EQ(edit[k].original(), again[k].original());
  }
}
}  // namespace

// The pairs noted while loading give an entity's tags exactly as reading its bytes again does:
// with "\r\n", empty values, extended data, a code line too long to note, and a last entity
// whose value line ends a recovered file.
TEST(DxfValues, TagsNotedWhileLoadingMatchTagsReadAgain) {
  for (const char* end : {"\n", "\r\n"}) {
    auto line = [&](std::string s) { return s + end; };
    std::string bytes = line("  0") + line("SECTION") + line("  2") + line("ENTITIES");
    bytes += line("  0") + line("LINE") + line("  8") + line("") + line(" 10") + line("1.5") + line(" 11") + line("2");
    bytes += line("  0") + line("TEXT") + line("  8") + line("5") + line("  1") + line("M-1") + line("1001") +
             line("TQ_STDINF01") + line("1000") + line("a,b") + line("1000") + line("");
    bytes += line("  0") + line("POINT") + std::string(70000, ' ') + line("8") + line("0") + line(" 10") + line("0");
    auto whole = Document::Read(bytes + line("  0") + line("ENDSEC") + line("  0") + "EOF").value();
    ASSERT_EQ(whole->records().size(), 3u);
    EXPECT_GT(whole->records()[1].pairCount, 0u);
    EXPECT_EQ(whole->records()[2].pairCount, 0u) << "a code line too long to note is read again";
    ExpectNotedTagsAsRead(*whole);
    auto cut = std::move(Document::Recover(bytes + line("  0") + line("LINE") + line("  8") + "0").value().document);
    ASSERT_EQ(cut->records().size(), 4u);
    EXPECT_GT(cut->records()[3].pairCount, 0u);
    ExpectNotedTagsAsRead(*cut);
  }
}
