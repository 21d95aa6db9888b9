#include "common/ScriptRunner.hpp"

namespace tq {

namespace {
std::vector<Text> LinesOf(TextView script) {
  std::vector<Text> lines;
  size_t start = 0;
  while (start <= script.size()) {
    size_t end = script.find(u'\n', start);
    if (end == TextView::npos) {
      if (start < script.size()) lines.emplace_back(script.substr(start));
      break;
    }
    lines.emplace_back(script.substr(start, end - start));
    start = end + 1;
  }
  for (Text& line : lines)
    if (!line.empty() && line.back() == u'\r') line.pop_back();
  return lines;
}
}  // namespace

ScriptRunner::ScriptRunner(TextView script, Transcript& transcript) : lines_(LinesOf(script)), transcript_(transcript) {}

void ScriptRunner::Serve(Waiter& waiter, bool topLevel) {
  while (!waiter.Satisfied()) {
    if (next_ >= lines_.size()) {
      if (topLevel) return;
      current_ = static_cast<int>(lines_.size());
      Fail(u"the script ended while " + waiter.Describe());
    }
    int number = static_cast<int>(++next_);
    std::optional<Result<ScriptLine>> line = ParseScriptLine(number, lines_[next_ - 1]);
    if (!line) continue;
    current_ = number;
    transcript_.Input(number, lines_[next_ - 1]);
    if (!*line) Fail(line->error().message);
    std::optional<Text> why = waiter.Apply(line->value());
    current_ = number;  // a nested wait may have taken later lines
    if (why) Fail(*why);
  }
}

void ScriptRunner::Fail(TextView why) {
  transcript_.Error(current_, why);
  if (stopHandler_) stopHandler_();
  throw ScriptStopped();
}

}  // namespace tq
