#include "headless/HeadlessSession.hpp"

#include <algorithm>

#include "common/CommandLineWaiter.hpp"

namespace tq::headless {

SingleDocument::~SingleDocument() = default;

void SingleDocument::RemoveObserver(DocumentObserver& observer) {
  observers_.erase(std::remove(observers_.begin(), observers_.end(), &observer), observers_.end());
}

void SingleDocument::Close() {
  std::vector<DocumentObserver*> observers = observers_;
  for (DocumentObserver* o : observers) o->DocumentToBeDestroyed(*this);
}

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
  CommandLineWaiter commandLine([this](TextView) { addIn_->RunCommand(); },
                                [this](const ScriptLine& line, bool* handled) { return dialogs_.ApplyDialogLine(line, nullptr, handled); });
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
