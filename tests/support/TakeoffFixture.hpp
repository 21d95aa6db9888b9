#pragma once
// Takeoff rows, records and tables written out in a test.
#include <initializer_list>

#include "base/TextFiles.hpp"
#include "output/OutputLines.hpp"
#include "takeoff/ReferenceTables.hpp"
#include "takeoff/TakeoffRows.hpp"

namespace tq::test {

inline TakeoffRecord RecordOf(std::initializer_list<const char16_t*> lines) {
  TakeoffRecord record;
  for (const char16_t* line : lines) record.push_back(ParseTakeoffLine(line, ObjectId{1}));
  return record;
}

inline ColumnLists Columns(const char16_t* text, size_t count) { return ColumnLists(ParseConfigTable(text), count); }

// The attribute groups, the construction categories and the settings of the sample tables.
inline ReferenceTables SampleTables() {
  ReferenceTables t;
  ConfigTable attributes = ParseConfigTable(
      u"S501,給水設備,給水\nS501,空調設備,冷温水\nSC01,0,共通\nSC01,1,給水用\nSC01,3,冷温水用\nSC03,0,新設\n"
      u"SC04,0,自社手配\nSC04,1,支給\nSC05,0,昼間\nSC06,0,なし");
  for (const char16_t* id : kAttributeGroups) {
    ConfigTable group;
    for (const TableRow& row : attributes)
      if (EqualNoCase(row[0], id)) group.push_back(row);
    t.attributeGroups.emplace(id, ColumnLists(group, 3));
  }
  t.constructionCategory = Columns(u"給水設備,21\n空調設備,31", 2);
  t.memberCinet = Columns(u"配管用炭素鋼鋼管,21010101000000\nスパイラルダクト,31050101000000", 2);
  t.bSettings = Columns(u"吊りボルト,全ねじ,SS400,M10,本,32010101000000,1,0,,1,0,0\n"
                        u"形鋼振れ止め,山形鋼,SS400,L,組,\"32010201000000&,SSL0,\"\"x\"\",SSW0\",-,0,,0,0,0",
                        12);
  t.bUse = Columns(u"1,冷温水,保温材,冷温水用", 4);
  return t;
}

// A format whose code line is "コード" followed by the codes and two closing fields.
inline OutputFormat FormatOf(std::initializer_list<const char16_t*> codes) {
  OutputFormat f;
  f.lines[0].push_back(u"見出し");
  f.lines[1].push_back(u"コード");
  for (const char16_t* c : codes) f.lines[0].push_back(Text(u"H") + c), f.lines[1].push_back(c);
  for (auto* line : {&f.lines[0], &f.lines[1]}) line->insert(line->end(), {u"END", u"END"});
  return f;
}

}  // namespace tq::test
