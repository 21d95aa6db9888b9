#pragma once
// What the marking keeps per document: the flag that stops it from running inside itself
// (a display update can call back into it). It lives in the document's per-document data,
// so that two drawings never share it and a failure in one leaves the others alone.
namespace tq {

struct MarkingState {
  bool busy = false;
};

// Holds the flag for one marking and releases it on every path out, a throw included.
class MarkingGuard {
 public:
  explicit MarkingGuard(MarkingState& state) : state_(state.busy ? nullptr : &state) {
    if (state_) state_->busy = true;
  }
  ~MarkingGuard() {
    if (state_) state_->busy = false;
  }
  MarkingGuard(const MarkingGuard&) = delete;
  MarkingGuard& operator=(const MarkingGuard&) = delete;
  // False when a marking of the document was already running.
  bool acquired() const { return state_ != nullptr; }

 private:
  MarkingState* state_;
};

}  // namespace tq
