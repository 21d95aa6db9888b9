#pragma once
// A cache that readers on several threads fill once, the first of them doing the work while
// the others wait; a writer, never at the same time as readers, may empty it again.
#include <atomic>
#include <mutex>

namespace tq::dxf {

class OnceCache {
 public:
  template <class Fill>
  void Ensure(Fill&& fill) {
    if (ready_.load(std::memory_order_acquire)) return;
    std::lock_guard lock(mutex_);
    if (ready_.load(std::memory_order_relaxed)) return;
    fill();
    ready_.store(true, std::memory_order_release);
  }
  bool ready() const { return ready_.load(std::memory_order_acquire); }
  void Forget() { ready_.store(false, std::memory_order_release); }

 private:
  std::atomic<bool> ready_{false};
  std::mutex mutex_;
};

}  // namespace tq::dxf
