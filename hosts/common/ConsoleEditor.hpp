#pragma once
// The editor of a host without a screen: messages go to a stream, points come from a list.
#include <deque>
#include <ostream>

#include "base/Text.hpp"
#include "ports/Editor.hpp"

namespace tq {

class ConsoleEditor : public Editor {
 public:
  explicit ConsoleEditor(std::ostream& out) : out_(out) {}

  // Points answered by GetPoint in turn; when they run out, GetPoint answers cancel.
  void QueuePoint(PickResult result) { points_.push_back(result); }

  void ActivateDrawingWindow() override {}
  PickResult GetPoint(TextView prompt) override;
  void Print(TextView text) override;
  void UpdateDisplay() override {}
  void BeginWaitCursor() override {}
  void EndWaitCursor() override {}

 private:
  std::ostream& out_;
  std::deque<PickResult> points_;
};

}  // namespace tq
