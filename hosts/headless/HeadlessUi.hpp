#pragma once
// The boxes, the save-file dialog, the point prompts and the command line of the headless
// host: each shows itself in the transcript and takes its answer from the script.
#include <filesystem>

#include "common/ScriptRunner.hpp"
#include "ports/Editor.hpp"
#include "ports/Ui.hpp"

namespace tq::headless {

class HeadlessUi : public Ui {
 public:
  HeadlessUi(ScriptRunner& runner, Transcript& transcript) : runner_(runner), transcript_(transcript) {}
  MessageAnswer ShowMessage(const MessageBoxRequest& box) override;
  // A name typed without an extension gets the default one; an existing file is asked about
  // (Yes/No) before it is chosen; a relative name is taken from the current folder.
  std::optional<Text> AskSaveFile(const SaveFileRequest& request) override;
  void BeginProgress(TextView text, int range) override { transcript_.ProgressStart(text, range); }
  void SetProgress(int position) override { transcript_.ProgressPosition(position); }
  void EndProgress() override {}

 private:
  ScriptRunner& runner_;
  Transcript& transcript_;
};

class HeadlessEditor : public Editor {
 public:
  HeadlessEditor(ScriptRunner& runner, Transcript& transcript) : runner_(runner), transcript_(transcript) {}
  void ActivateDrawingWindow() override {}
  PickResult GetPoint(TextView prompt) override;
  void Print(TextView text) override { transcript_.Print(text); }
  void UpdateDisplay() override {}
  void BeginWaitCursor() override {}
  void EndWaitCursor() override {}

 private:
  ScriptRunner& runner_;
  Transcript& transcript_;
};

}  // namespace tq::headless
