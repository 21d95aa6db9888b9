#include "info/StdInfRecord.hpp"

#include "base/Fields.hpp"
#include "base/Format.hpp"
#include "drawing/FrameGrid.hpp"

namespace tq {

static_assert(kLinePositionCount == kLineFieldCount);

RowMember MemberAtPosition(LinePosition position) {
  if (position <= LinePosition::kNominal) return static_cast<RowMember>(Number(position));
  if (position == LinePosition::kAttributeKey) return RowMember::kAttributeKey;
  return static_cast<RowMember>(Number(position) - 1);
}

LinePosition PositionOfMember(RowMember member) {
  if (member <= RowMember::kNominal) return static_cast<LinePosition>(Number(member));
  if (member == RowMember::kAttributeKey) return LinePosition::kAttributeKey;
  return static_cast<LinePosition>(Number(member) + 1);
}

Text InfoRecordName(int number) { return Format(u"TQ_STDINF%02d", {number}); }

CStdInfRow ParseInfoLine(TextView line, size_t lineIndex, std::span<const Text> attributeKeys) {
  std::vector<Text> fields = SplitFields(line);
  CStdInfRow row = RowFromFields(fields, lineIndex, attributeKeys);
  row.beyond = Text(FieldsBeyond(line, kLineFieldCount));
  return row;
}

CStdInfRow RowFromFields(std::span<const Text> fields, size_t lineIndex, std::span<const Text> attributeKeys) {
  CStdInfRow row;
  for (size_t i = 0; i < fields.size() && i < kLineFieldCount; ++i) {
    LinePosition position = PositionAt(i);
    row.member(MemberAtPosition(position)) = fields[i];
    if (position != LinePosition::kAttributeKey) continue;
    Text& value = row.member(RowMember::kAttributeValue);
    const Text& key = row.member(RowMember::kAttributeKey);
    if (value.empty() && !key.empty())
      for (const Text& entry : attributeKeys)
        if (EqualNoCase(entry, key)) {
          value = entry;
          break;
        }
    if (lineIndex >= kFirstItemLine && value.empty()) value = u"-";
  }
  return row;
}

Text FormatInfoLine(const CStdInfRow& row) {
  std::array<Text, kLineFieldCount> fields;
  for (size_t i = 0; i < kLineFieldCount; ++i) fields[i] = row.member(MemberAtPosition(PositionAt(i)));
  return JoinLine25(fields) + row.beyond;
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

void RemoveInfoRecords(Drawing& drawing, ObjectId text) {
  for (int n = 1; drawing.ReadXData(text, InfoRecordName(n)); ++n) drawing.RemoveXData(text, InfoRecordName(n));
}

Status WriteInfoRecordLines(Drawing& drawing, ObjectId text, int number, const XDataLines& lines) {
  Text name = InfoRecordName(number);
  switch (drawing.WriteXData(text, name, lines)) {
    case EditResult::Ok: return {};
    case EditResult::OnLockedLayer: return MakeError(ErrorCode::Locked, u"the sheet-number text lies on a locked layer: " + name + u" was not written");
    case EditResult::NotFound: return MakeError(ErrorCode::NotFound, u"the sheet-number text is gone: " + name + u" was not written");
    case EditResult::TooLarge: break;
  }
  return MakeError(ErrorCode::TooLarge, name + u" would pass the limit of extended data on one drawing object");
}

}  // namespace tq
