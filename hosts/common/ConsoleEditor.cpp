#include "common/ConsoleEditor.hpp"

namespace tq {

PickResult ConsoleEditor::GetPoint(TextView prompt) {
  Print(prompt);
  if (points_.empty()) return {PickStatus::Cancel, {}};
  PickResult result = points_.front();
  points_.pop_front();
  return result;
}

void ConsoleEditor::Print(TextView text) { out_ << ToUtf8(text) << std::flush; }

}  // namespace tq
