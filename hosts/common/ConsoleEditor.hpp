#pragma once
// The editor of a host without a screen: messages go to a stream; a point asked for is
// answered with cancel (commands take their points as arguments).
#include <ostream>

#include "base/Text.hpp"
#include "ports/Editor.hpp"

namespace tq {

class ConsoleEditor : public Editor {
 public:
  explicit ConsoleEditor(std::ostream& out) : out_(out) {}

  void ActivateDrawingWindow() override {}
  PickResult GetPoint(TextView prompt) override;
  void Print(TextView text) override;
  void UpdateDisplay() override {}
  void BeginWaitCursor() override {}
  void EndWaitCursor() override {}

 private:
  std::ostream& out_;
};

}  // namespace tq
