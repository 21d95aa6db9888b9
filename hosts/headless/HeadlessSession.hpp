#pragma once
// One run of a script in the headless host: the drawing as its one document, the add-in, the
// command line and the dialogs, all answering from the script and writing the transcript.
#include <functional>
#include <map>
#include <memory>

#include "common/ScriptRunner.hpp"
#include "headless/HeadlessDialogs.hpp"
#include "headless/HeadlessUi.hpp"
#include "ports/Documents.hpp"
#include "shell/AddIn.hpp"

namespace tq::headless {

class SingleDocument : public Document, public Documents {
 public:
  SingleDocument(Drawing& drawing, Editor& editor) : drawing_(drawing), editor_(editor) {}
  ~SingleDocument() override;
  Drawing& drawing() override { return drawing_; }
  Editor& editor() override { return editor_; }
  Document* Current() override { return this; }
  void AddObserver(DocumentObserver& observer) override { observers_.push_back(&observer); }
  void RemoveObserver(DocumentObserver& observer) override;
  // The document closes: its observers hear of it first.
  void Close();

 private:
  Drawing& drawing_;
  Editor& editor_;
  std::vector<DocumentObserver*> observers_;
};

class HeadlessSession {
 public:
  // The script's text; the transcript goes to `out`.
  HeadlessSession(TextView script, std::ostream& out, Drawing& drawing, const Folders& folders);
  ~HeadlessSession();

  // Runs every line; false when a line could not be applied (the error event is written).
  bool Run();
  Transcript& transcript() { return transcript_; }
  TqAddIn& addIn() { return *addIn_; }

 private:
  Transcript transcript_;
  ScriptRunner runner_;
  HeadlessDialogs dialogs_;
  HeadlessUi ui_;
  HeadlessEditor editor_;
  SingleDocument document_;
  std::unique_ptr<TqAddIn> addIn_;
};

}  // namespace tq::headless
