#pragma once
// The lines a point prompt takes: "point X Y" (a click at that drawing point) or "escape".
#include "base/Result.hpp"
#include "common/ScriptLine.hpp"
#include "common/ScriptRunner.hpp"
#include "ports/Editor.hpp"

namespace tq {

// The pick the line gives (Normal with the point, or Cancel); the reason when it does not fit.
Result<PickResult> ReadPointLine(const ScriptLine& line);

// A point prompt as a script meets it, in every host; how the pick is given is the host's.
class PointPromptWaiter : public Waiter {
 public:
  Text Describe() const override { return u"a point prompt waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    Result<PickResult> pick = ReadPointLine(line);
    if (!pick) return pick.error().message;
    Answer(*pick);
    return std::nullopt;
  }

 protected:
  virtual void Answer(const PickResult& pick) = 0;
};

}  // namespace tq
