#pragma once
// Memory for the document's large blocks (its edits' tag lists), asked of the system in
// large pages where it gives them: a marking touches hundreds of megabytes, and a fault per
// 4 KB page costs more than the marking's own work.
#include <memory_resource>

namespace tq::dxf {

class LargePages : public std::pmr::memory_resource {
 private:
  void* do_allocate(size_t bytes, size_t alignment) override;
  void do_deallocate(void* p, size_t bytes, size_t alignment) override;
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }
};

}  // namespace tq::dxf
