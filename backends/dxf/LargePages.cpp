#include "dxf/LargePages.hpp"

#include <new>

#include "base/os/Os.hpp"

namespace tq::dxf {

namespace {
constexpr size_t kLarge = 2 << 20;  // one large page; smaller blocks come from the heap
}

void* LargePages::do_allocate(size_t bytes, size_t alignment) {
  if (bytes < kLarge) return std::pmr::new_delete_resource()->allocate(bytes, alignment);
  void* p = os::AllocatePages(bytes);
  if (!p) throw std::bad_alloc();
  return p;
}

void LargePages::do_deallocate(void* p, size_t bytes, size_t alignment) {
  if (bytes < kLarge) return std::pmr::new_delete_resource()->deallocate(p, bytes, alignment);
  os::FreePages(p, bytes);
}

}  // namespace tq::dxf
