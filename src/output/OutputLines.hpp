#pragma once
// The lines of the takeoff list and of the aggregate, from the takeoff rows and the format.
#include <unordered_map>
#include <vector>

#include "output/OutputFormat.hpp"
#include "takeoff/ReferenceTables.hpp"
#include "takeoff/TakeoffRows.hpp"

namespace tq {

// The separator's number as the last-values file stores it; another number gives no separator.
enum class SeparatorKind : int { Comma = 0, Pipe = 1, Tab = 2 };
Text SeparatorText(SeparatorKind kind);

enum class MaterialFilter { AOnly, BOnly, Both };
// "A材" → A only, "B材" → B only (without regard to case), anything else both.
MaterialFilter FilterOfCategory(TextView category);

// An attribute code of the format, recognised once (without regard to case) for every line.
struct ResolvedCode {
  enum Kind { S501, AmpS501, Snet, Dimension, Group, AmpGroup, S001, S481, Field, S304, DollarS001, HashS001, Other };
  Kind kind = Other;
  LinePosition field = LinePosition::kSymbolOrUnits;  // the row's field it reads
  const ColumnLists* group = nullptr;  // for a code looked up in its attribute group
};
ResolvedCode ResolveCode(TextView code, const ReferenceTables& tables);

// The value of one attribute code for one row and one CI-NET piece.
Text CodeValue(const ResolvedCode& code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables);
Text CodeValue(TextView code, const CTakeoffRow& row, const std::vector<Text>& pieces, size_t piece,
               const ReferenceTables& tables);

// The number of units of a record: the first field of line 3 read as an integer when above 0,
// else the largest such integer over the first field of all its lines; 0 for a record under
// four lines.
int UnitCount(const TakeoffRecord& record);

// Where an output line comes from: the sheet-number text, the record (0 for "TQ_STDINF01")
// and the line of the record that made it (the first of an aggregate's merged lines). The
// header comes from the format and has no entity.
struct LineOrigin {
  ObjectId entity;
  size_t record = 0;
  size_t line = 0;
};

// The output line list of a takeoff: what the last build made, kept for the CI-NET code file.
struct OutputLineList {
  std::vector<Text> lines;
  std::vector<LineOrigin> origins;  // one per line
};

class OutputBuilder {
 public:
  OutputBuilder(OutputFormat format, const ReferenceTables& tables) : format_(std::move(format)), tables_(tables) {}

  // BuildOutputLines: the header (when not empty) and one line per unit, row and CI-NET
  // piece; or, for an aggregate, equal lines merged with their quantities summed. An
  // aggregate of a format with fewer than 16 columns is refused, naming the count.
  Result<std::vector<Text>> Build(const TakeoffData& data, bool aggregate, SeparatorKind separator,
                                  TextView category) const;
  // The same, with the origin of every line.
  Result<OutputLineList> BuildWithOrigins(const TakeoffData& data, bool aggregate, SeparatorKind separator,
                                          TextView category) const;

 private:
  OutputFormat format_;
  const ReferenceTables& tables_;
};

// Merges collected lines of 16 values in linear time: a line equal to a merged row in every
// column but the quantity column (the last whose code is exactly "S304") adds its quantity
// to that row ("%2.1f"), or is dropped when there is no quantity column.
class Aggregate {
 public:
  // True when the values made a new merged row.
  bool Add(const std::vector<Text>& codes, std::vector<Text> values);
  const std::vector<std::vector<Text>>& rows() const { return rows_; }

 private:
  std::vector<std::vector<Text>> rows_;
  std::unordered_map<std::u16string, size_t> index_;
};

}  // namespace tq
