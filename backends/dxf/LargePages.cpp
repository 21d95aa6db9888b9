#include "dxf/LargePages.hpp"

#include <sys/mman.h>

#include <new>

namespace tq::dxf {

namespace {
constexpr size_t kLarge = 2 << 20;  // one large page; smaller blocks come from the heap
}

void* LargePages::do_allocate(size_t bytes, size_t alignment) {
  if (bytes < kLarge) return std::pmr::new_delete_resource()->allocate(bytes, alignment);
  void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (p == MAP_FAILED) throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
  madvise(p, bytes, MADV_HUGEPAGE);  // a hint: without large pages the block works as well
#endif
  return p;
}

void LargePages::do_deallocate(void* p, size_t bytes, size_t alignment) {
  if (bytes < kLarge) return std::pmr::new_delete_resource()->deallocate(p, bytes, alignment);
  munmap(p, bytes);
}

}  // namespace tq::dxf
