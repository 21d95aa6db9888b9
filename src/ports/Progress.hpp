#pragma once
// Progress shown in the host's status bar: a caption with a range, then positions in it.
#include "base/Text.hpp"

namespace tq {

class Progress {
 public:
  virtual ~Progress() = default;
  virtual void Begin(TextView caption, int range) = 0;
  virtual void SetPosition(int position) = 0;
};

// For callers that show no progress.
class NoProgress final : public Progress {
 public:
  void Begin(TextView, int) override {}
  void SetPosition(int) override {}
};

}  // namespace tq
