#pragma once
// The information record of a standard drawing: lines of 25 fields stored as extended data
// "TQ_STDINF01", "TQ_STDINF02", … on its sheet-number text.
#include <array>
#include <span>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"
#include "info/LineFields.hpp"
#include "ports/Drawing.hpp"

namespace tq {

// One line in memory: members 1 to 25.
struct CStdInfRow {
  std::array<Text, kRowMemberCount> members;
  // What the stored line held past its 25th field, written back after it as it was.
  Text beyond;
  Text& member(RowMember m) { return members[IndexOf(m)]; }
  const Text& member(RowMember m) const { return members[IndexOf(m)]; }
  // The symbol and the equipment name both empty: the slot is free.
  bool IsEmptySlot() const { return member(RowMember::kSymbolOrUnits).empty() && member(RowMember::kEquipmentName).empty(); }
};

// The lines of one record, and the records of one standard drawing (record n at n − 1).
using CStdInfRecord = std::vector<CStdInfRow>;
using StdInfRecords = std::vector<CStdInfRecord>;

// Field positions hold members in this order: positions 1–16 members 1–16, position 17
// member 25, positions 18–25 members 17–24.
RowMember MemberAtPosition(LinePosition position);
LinePosition PositionOfMember(RowMember member);

// "TQ_STDINF%02d": three digits from 100 on.
Text InfoRecordName(int number);

// A stored line as a row: fields past the 25th are kept aside in `beyond`, missing ones stay empty. When
// position 17 is assigned and member 25 is not empty, member 25 is looked up (without
// regard to case) among `attributeKeys` and the entry found fills member 20; from line index
// 2 on a member 20 still empty becomes "-". Position 21 overwrites member 20 afterwards.
CStdInfRow ParseInfoLine(TextView line, size_t lineIndex, std::span<const Text> attributeKeys);
// The same from fields already split: field i goes to position i + 1.
CStdInfRow RowFromFields(std::span<const Text> fields, size_t lineIndex, std::span<const Text> attributeKeys);
// The 25 fields in position order, joined with ",", and what the line held beyond them.
Text FormatInfoLine(const CStdInfRow& row);

// Records 1, 2, … up to the first number the text does not hold.
StdInfRecords ReadInfoRecords(const Drawing& drawing, ObjectId text, std::span<const Text> attributeKeys);
// How many records the text holds by the same rule, without reading them.
int CountInfoRecords(const Drawing& drawing, ObjectId text);

// Writes every record under its number, replacing what was stored; an empty record writes
// nothing but keeps its number. Then the names from the count at opening − 1 down to the
// current count + 1 are removed (the name numbered as the count at opening stays).
// An error naming the sheet, with nothing written, when the records would pass the
// per-object limit of extended data.
Status WriteInfoRecords(Drawing& drawing, ObjectId text, const StdInfRecords& records, int countAtOpening);

// Removes the records from "TQ_STDINF01" on, going on while the next number is held; the
// caller holds the drawing's write lock.
void RemoveInfoRecords(Drawing& drawing, ObjectId text);
// Stores one record under its number as the lines stand, replacing what it held; an error
// when the lines would pass the per-object limit of extended data.
Status WriteInfoRecordLines(Drawing& drawing, ObjectId text, int number, const XDataLines& lines);

}  // namespace tq
