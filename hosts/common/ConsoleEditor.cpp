#include "common/ConsoleEditor.hpp"

namespace tq {

PickResult ConsoleEditor::GetPoint(TextView prompt) {
  Print(prompt);
  return {PickStatus::Cancel, {}};
}

void ConsoleEditor::Print(TextView text) { out_ << ToUtf8(text) << std::flush; }

}  // namespace tq
