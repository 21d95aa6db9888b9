#include "info/StdInfRecord.hpp"

#include "base/Fields.hpp"
#include "base/Format.hpp"
#include "drawing/FrameGrid.hpp"

namespace tq {

int MemberAtPosition(int position) {
  if (position <= 16) return position;
  if (position == 17) return 25;
  return position - 1;
}

int PositionOfMember(int member) {
  if (member <= 16) return member;
  if (member == 25) return 17;
  return member + 1;
}

Text InfoRecordName(int number) { return Format(u"TQ_STDINF%02d", {number}); }

CStdInfRow ParseInfoLine(TextView line, size_t lineIndex, std::span<const Text> attributeKeys) {
  CStdInfRow row;
  std::vector<Text> fields = SplitFields(line);
  for (size_t i = 0; i < fields.size() && i < kLineFieldCount; ++i) {
    int position = static_cast<int>(i) + 1;
    row.member(MemberAtPosition(position)) = std::move(fields[i]);
    if (position != 17) continue;
    Text& member20 = row.member(20);
    if (member20.empty() && !row.member(25).empty())
      for (const Text& key : attributeKeys)
        if (EqualNoCase(key, row.member(25))) {
          member20 = key;
          break;
        }
    if (lineIndex >= 2 && member20.empty()) member20 = u"-";
  }
  return row;
}

Text FormatInfoLine(const CStdInfRow& row) {
  std::array<Text, kLineFieldCount> fields;
  for (int position = 1; position <= 25; ++position) fields[static_cast<size_t>(position - 1)] = row.member(MemberAtPosition(position));
  return JoinLine25(fields);
}

StdInfRecords ReadInfoRecords(const Drawing& drawing, ObjectId text, std::span<const Text> attributeKeys) {
  StdInfRecords records;
  for (int n = 1;; ++n) {
    std::optional<XDataLines> lines = drawing.ReadXData(text, InfoRecordName(n));
    if (!lines) return records;
    CStdInfRecord& record = records.emplace_back();
    for (size_t i = 0; i < lines->size(); ++i) record.push_back(ParseInfoLine((*lines)[i], i, attributeKeys));
  }
}

int CountInfoRecords(const Drawing& drawing, ObjectId text) {
  int n = 0;
  while (drawing.ReadXData(text, InfoRecordName(n + 1))) ++n;
  return n;
}

namespace {

// What was stored under a name before writing, to put back if a later record is refused.
struct Stored {
  Text name;
  std::optional<XDataLines> lines;
};

void PutBack(Drawing& drawing, ObjectId text, const std::vector<Stored>& stored) {
  for (const Stored& s : stored) {
    if (s.lines) drawing.WriteXData(text, s.name, *s.lines);
    else drawing.RemoveXData(text, s.name);
  }
}

}  // namespace

Status WriteInfoRecords(Drawing& drawing, ObjectId text, const StdInfRecords& records, int countAtOpening) {
  auto lock = drawing.LockForWrite();
  std::vector<Stored> stored;
  for (size_t i = 0; i < records.size(); ++i) {
    if (records[i].empty()) continue;
    Text name = InfoRecordName(static_cast<int>(i) + 1);
    XDataLines lines;
    for (const CStdInfRow& row : records[i]) lines.push_back(FormatInfoLine(row));
    stored.push_back({name, drawing.ReadXData(text, name)});
    if (drawing.WriteXData(text, name, lines) != EditResult::TooLarge) continue;
    stored.pop_back();
    PutBack(drawing, text, stored);
    Text sheet;
    ReadSheetName(drawing, text, sheet);
    return MakeError(ErrorCode::TooLarge, u"the information of sheet " + sheet +
                                              u" would pass the 16 KB limit of extended data on one drawing object; nothing was written");
  }
  for (int m = countAtOpening - 1; m > static_cast<int>(records.size()); --m) drawing.RemoveXData(text, InfoRecordName(m));
  return {};
}

}  // namespace tq
