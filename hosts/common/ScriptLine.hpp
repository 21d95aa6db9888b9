#pragma once
// The lines of a script: one action a line, tokens separated by blanks, a token holding
// blanks, quotes or nothing written in double quotes with \" and \\ inside; "#" starts a
// comment line; keywords without regard to case.
#include <optional>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq {

struct ScriptLine {
  int number = 0;   // from 1
  Text text;        // as written
  Text verb;        // in lower case
  std::vector<Text> args;
};

// The line as tokens; nothing for a blank or comment line; an error for an unclosed quote.
std::optional<Result<ScriptLine>> ParseScriptLine(int number, TextView text);

// "D:ID": a dialog's template id and a control id.
struct ControlAddress {
  int dialog = 0;
  std::optional<int> control;
};
// "D" or "D:ID"; nothing when the text is neither.
std::optional<ControlAddress> ParseControlAddress(TextView text);
// A whole decimal integer (sign allowed); nothing otherwise.
std::optional<long long> ParseWholeNumber(TextView text);
std::optional<double> ParseNumber(TextView text);

}  // namespace tq
