#pragma once
// The headless host's dialogs: windows in memory, shown and ended with transcript events, and
// the script lines that act on their controls as a person would.
#include <memory>
#include <vector>

#include "common/DialogMetrics.hpp"
#include "common/ScriptRunner.hpp"
#include "headless/HeadlessWindow.hpp"

namespace tq::headless {

class HeadlessDialogs : public DialogHost {
 public:
  HeadlessDialogs(ScriptRunner& runner, Transcript& transcript) : runner_(runner), transcript_(transcript) {}

  std::unique_ptr<DialogWindow> CreateDialogWindow(const dialog::DialogTemplate& dialogTemplate, DialogEvents& events,
                                                   bool modal) override;

  // The lines that act on dialogs: click, select, type, close and dump. `owner` is the modal
  // dialog that takes input alone, or null when the command line waits (the modeless dialogs
  // take input then). The reason when the line cannot be applied; nothing for another verb.
  std::optional<Text> ApplyDialogLine(const ScriptLine& line, const HeadlessWindow* owner, bool* handled);

  // Called by the windows.
  void Register(HeadlessWindow& window) { windows_.push_back(&window); }
  void Unregister(HeadlessWindow& window);
  void Shown(HeadlessWindow& window, bool shown, int result);
  int RunModal(HeadlessWindow& window);
  Transcript& transcript() { return transcript_; }
  // After the run: windows closed as the host goes away are not part of the transcript.
  void Quiet() { quiet_ = true; }

 private:
  class Actions;
  HeadlessWindow* OpenDialog(int templateId);
  void Dump(HeadlessWindow& window, std::optional<int> control);

  ScriptRunner& runner_;
  Transcript& transcript_;
  std::vector<HeadlessWindow*> windows_;  // live windows, oldest first
  bool quiet_ = false;
};

}  // namespace tq::headless
