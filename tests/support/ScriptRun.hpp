#pragma once
// A script run in the headless host, in-process, on a drawing of a test: its transcript as lines.
#include <sstream>
#include <string>
#include <vector>

#include "headless/HeadlessSession.hpp"
#include "support/DrawingFixture.hpp"

namespace tq::test {

struct ScriptRun {
  bool ok = false;
  std::vector<std::string> events;  // the transcript, one JSON object a line

  bool Has(const std::string& event) const {
    for (const std::string& e : events)
      if (e == event) return true;
    return false;
  }
  size_t Count(const std::string& part) const {
    size_t n = 0;
    for (const std::string& e : events) n += e.find(part) != std::string::npos;
    return n;
  }
  std::string All() const {
    std::string all;
    for (const std::string& e : events) all += e + "\n";
    return all;
  }
};

inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// Runs `script` on the drawing with the site's folders; `prepare` may act on the session first.
template <class Prepare>
ScriptRun RunScript(Drawing& drawing, const Folders& folders, const std::string& script, Prepare prepare) {
  std::ostringstream out;
  ScriptRun run;
  {
    headless::HeadlessSession session(FromUtf8(script), out, drawing, folders);
    prepare(session);
    run.ok = session.Run();
  }
  run.events = Lines(out.str());
  return run;
}

inline ScriptRun RunScript(Drawing& drawing, const Folders& folders, const std::string& script) {
  return RunScript(drawing, folders, script, [](headless::HeadlessSession&) {});
}

}  // namespace tq::test
