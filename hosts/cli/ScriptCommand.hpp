#pragma once
// tqstd script: the command "TQ_STD_INF" and its dialogs driven by a script, with a transcript.
#include <string>

#include "cli/Cli.hpp"

namespace tq::cli {

struct ScriptOptions {
  std::string drawing;
  std::string script = "-";  // a file, or "-" for standard input
  std::string output;        // where a changed drawing is written instead of itself
  bool noSave = false;
};

int RunScript(const Context& context, const ScriptOptions& options);

}  // namespace tq::cli
