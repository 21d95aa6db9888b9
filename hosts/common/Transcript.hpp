#pragma once
// The transcript of a script: every event a person would have seen, one JSON object a line,
// in UTF-8. Every host writes it through this one class, so the same run gives the same bytes.
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.hpp"
#include "dialog/DialogTemplate.hpp"
#include "ports/DialogWindow.hpp"
#include "ports/Ui.hpp"

namespace tq {

// One control as `dump` shows it.
struct DumpedControl {
  int id = 0;
  dialog::ControlKind kind = dialog::ControlKind::Static;
  Text text;
  bool enabled = true, visible = true;
  std::optional<bool> checked;                      // buttons, check boxes, radio buttons
  std::optional<std::vector<Text>> items;           // combos
  std::optional<int> selected;                      // combos: the index, -1 for none
  std::optional<std::vector<ListColumn>> columns;   // lists
  std::optional<std::vector<std::vector<Text>>> rows;  // lists: each item's cells, column 0 first
  std::optional<std::vector<int>> selection;        // lists: the selected items
};

// A dialog, or one control of it, as `dump` shows it: read from the window through the port,
// in template order, so every host dumps alike.
std::vector<DumpedControl> DumpControls(const dialog::DialogTemplate& dialogTemplate, const DialogWindow& window,
                                        std::optional<int> onlyControl = std::nullopt);

class Transcript {
 public:
  explicit Transcript(std::ostream& out) : out_(out) {}

  // Told the kind of each event ("input", "dialog", …) just before it is written: what is on
  // the screen then is what the events before it left there (the screenshots look at it).
  using Observer = std::function<void(std::string_view kind)>;
  void SetObserver(Observer observer) { observer_ = std::move(observer); }

  void Input(int line, TextView text);
  void Prompt(TextView text);
  void Print(TextView text);
  void MessageBox(const MessageBoxRequest& box);
  void Dialog(int id, TextView caption, bool modal);
  void EndDialog(int id, int result);
  void SaveFile(const SaveFileRequest& request);
  void ProgressStart(TextView text, int range);
  void ProgressPosition(int position);
  void Dump(int dialogId, TextView caption, const std::vector<DumpedControl>& controls);
  void Saved(TextView path);
  // The last event: nothing is written after it.
  void Error(int line, TextView text);
  // The run is over: nothing is written after it (windows closed as the host goes away).
  void End() { ended_ = true; }

 private:
  // One event a line; nothing after the error.
  void Write(const char* kind, const std::string& event);
  std::ostream& out_;
  Observer observer_;
  bool ended_ = false;
};

// The names the transcript gives.
const char* KindName(dialog::ControlKind kind);
const char* AnswerName(MessageAnswer answer);  // "OK", "Cancel", "Yes", "No", "Retry"

}  // namespace tq
