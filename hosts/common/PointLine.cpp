#include "common/PointLine.hpp"

namespace tq {

Result<PickResult> ReadPointLine(const ScriptLine& line) {
  if (line.verb == u"escape") {
    if (!line.args.empty()) return MakeError(ErrorCode::InvalidValue, u"'escape' takes nothing");
    return PickResult{PickStatus::Cancel, {}};
  }
  if (line.verb != u"point")
    return MakeError(ErrorCode::InvalidValue, u"'" + line.verb + u"' does not fit: a point prompt waits (point X Y or escape)");
  std::optional<double> x, y;
  if (line.args.size() == 2) x = ParseNumber(line.args[0]), y = ParseNumber(line.args[1]);
  if (!x || !y) return MakeError(ErrorCode::InvalidValue, u"'point' takes two numbers: point X Y");
  return PickResult{PickStatus::Normal, {*x, *y, 0}};
}

}  // namespace tq
