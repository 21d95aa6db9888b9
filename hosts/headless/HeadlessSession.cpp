#include "headless/HeadlessSession.hpp"

#include <algorithm>

namespace tq::headless {

SingleDocument::~SingleDocument() = default;

void SingleDocument::RemoveObserver(DocumentObserver& observer) {
  observers_.erase(std::remove(observers_.begin(), observers_.end(), &observer), observers_.end());
}

void SingleDocument::Close() {
  std::vector<DocumentObserver*> observers = observers_;
  for (DocumentObserver* o : observers) o->DocumentToBeDestroyed(*this);
}

// The command line: commands, and the lines for the modeless dialogs that are open.
class HeadlessSession::CommandLine : public Waiter {
 public:
  explicit CommandLine(HeadlessSession& session) : session_(session) {}
  Text Describe() const override { return u"the command line waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    if (line.verb == u"command") {
      if (line.args.size() != 1) return u"'command' takes one command name";
      if (!EqualNoCase(line.args[0], u"TQ_STD_INF")) return u"unknown command " + line.args[0] + u" (the command is TQ_STD_INF)";
      session_.addIn_->RunCommand();
      return std::nullopt;
    }
    bool handled = false;
    std::optional<Text> why = session_.dialogs_.ApplyDialogLine(line, nullptr, &handled);
    if (!handled) return u"'" + line.verb + u"' does not fit: the command line waits";
    return why;
  }
  bool Satisfied() const override { return false; }

 private:
  HeadlessSession& session_;
};

HeadlessSession::HeadlessSession(TextView script, std::ostream& out, Drawing& drawing, const Folders& folders)
    : transcript_(out),
      runner_(script, transcript_),
      dialogs_(runner_, transcript_),
      ui_(runner_, transcript_),
      editor_(runner_, transcript_),
      document_(drawing, editor_),
      addIn_(std::make_unique<TqAddIn>(folders, document_, dialog::DialogServices{dialogs_, ui_})) {}

HeadlessSession::~HeadlessSession() {
  document_.Close();
  addIn_.reset();
}

bool HeadlessSession::Run() {
  CommandLine commandLine(*this);
  bool ok = true;
  try {
    runner_.Serve(commandLine, true);
  } catch (const ScriptStopped&) {
    ok = false;
  }
  dialogs_.Quiet();
  return ok;
}

}  // namespace tq::headless
