#pragma once
// Runs a script: each line is taken by whatever waits for input (the command line, a modal
// dialog, a point prompt, a message box, a save-file dialog), in order. A line that does not
// fit what waits, or the script ending while something other than the command line waits,
// ends the run with an error event.
#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include "base/Text.hpp"
#include "common/ScriptLine.hpp"
#include "common/Transcript.hpp"

namespace tq {

// Unwinds a run that cannot go on, out of whatever waits, to the host's edge. The core never
// sees its type: it only has to be safe for exceptions, as it is.
class ScriptStopped : public std::exception {
 public:
  const char* what() const noexcept override { return "the script stopped"; }
};

// Something that waits for input.
class Waiter {
 public:
  virtual ~Waiter() = default;
  // How the error names it: "a message box waits".
  virtual Text Describe() const = 0;
  // Applies the line; the reason when it cannot.
  virtual std::optional<Text> Apply(const ScriptLine& line) = 0;
  // Whether it needs no further line.
  virtual bool Satisfied() const = 0;
};

class ScriptRunner {
 public:
  ScriptRunner(TextView script, Transcript& transcript);

  // Gives lines to the waiter until it is satisfied. The command line (`topLevel`) may meet
  // the end of the script; anything else meeting it ends the run.
  void Serve(Waiter& waiter, bool topLevel = false);
  // Ends the run: an error event for the current line, the stop handler, then ScriptStopped.
  [[noreturn]] void Fail(TextView why);
  // Called once the error event is written, before the run unwinds. A host whose waits
  // cannot be unwound by an exception (nested event loops of a widget toolkit) ends there.
  void SetStopHandler(std::function<void()> handler) { stopHandler_ = std::move(handler); }
  Transcript& transcript() { return transcript_; }

 private:
  std::vector<Text> lines_;
  size_t next_ = 0;
  int current_ = 0;  // the line being applied
  Transcript& transcript_;
  std::function<void()> stopHandler_;
};

}  // namespace tq
