#include <gtest/gtest.h>

#include <array>

#include "base/Fields.hpp"
#include "base/Lookup.hpp"

using namespace tq;
using V = std::vector<Text>;

TEST(SplitFields, InnerEmptyFieldsAreKept) { EXPECT_EQ(SplitFields(u"a,,b"), (V{u"a", u"", u"b"})); }

TEST(SplitFields, NoEmptyFieldAfterATrailingSeparator) { EXPECT_EQ(SplitFields(u"a,b,"), (V{u"a", u"b"})); }

TEST(SplitFields, EmptyTextGivesNoFields) { EXPECT_TRUE(SplitFields(u"").empty()); }

TEST(SplitFields, LoneSeparatorGivesOneEmptyField) { EXPECT_EQ(SplitFields(u","), (V{u""})); }

TEST(SplitFields, LeadingSeparatorGivesLeadingEmptyField) { EXPECT_EQ(SplitFields(u",x"), (V{u"", u"x"})); }

TEST(SplitAtEvery, PBlanksGivePPlusOnePieces) {
  EXPECT_EQ(SplitAtEvery(u"A B", u' '), (V{u"A", u"B"}));
  EXPECT_EQ(SplitAtEvery(u"A  B", u' '), (V{u"A", u"", u"B"}));
  EXPECT_EQ(SplitAtEvery(u"", u' '), (V{u""}));
  EXPECT_EQ(SplitAtEvery(u"A ", u' '), (V{u"A", u""}));
}

TEST(JoinLine25, JoinsTwentyFiveFieldsWithCommas) {
  std::array<Text, 25> fields;
  fields[0] = u"AC-1";
  fields[24] = u"end";
  Text line = JoinLine25(fields);
  EXPECT_EQ(line, u"AC-1,,,,,,,,,,,,,,,,,,,,,,,,end");
  EXPECT_EQ(SplitFields(line).size(), 25u);
}

TEST(TableLookup, FirstMatchWithoutRegardToCaseWins) {
  V keys{u"pipe", u"PIPE", u"duct"};
  V values{u"1", u"2", u"3"};
  EXPECT_EQ(TableLookup(u"Pipe", keys, values), u"1");
  EXPECT_EQ(TableLookup(u"DUCT", keys, values), u"3");
}

TEST(TableLookup, MissingKeyGivesEmptyText) { EXPECT_EQ(TableLookup(u"x", V{u"a"}, V{u"1"}), u""); }

TEST(TableLookup, ShortValueListGivesEmptyTextNotALaterValue) {
  V keys{u"a", u"b", u"a"};
  V values{u"1"};
  EXPECT_EQ(TableLookup(u"b", keys, values), u"");
}

TEST(TableLookup, NoTrimming) { EXPECT_EQ(TableLookup(u"a ", V{u"a"}, V{u"1"}), u""); }
