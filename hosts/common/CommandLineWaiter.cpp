#include "common/CommandLineWaiter.hpp"

namespace tq {

std::optional<Text> CommandLineWaiter::Apply(const ScriptLine& line) {
  if (line.verb == u"command") {
    if (line.args.size() != 1) return u"'command' takes one command name";
    if (!EqualNoCase(line.args[0], u"TQ_STD_INF")) return u"unknown command " + line.args[0] + u" (the command is TQ_STD_INF)";
    runCommand_(line.args[0]);
    return std::nullopt;
  }
  bool handled = false;
  std::optional<Text> why = dialogLine_(line, &handled);
  if (!handled) return u"'" + line.verb + u"' does not fit: the command line waits";
  return why;
}

}  // namespace tq
