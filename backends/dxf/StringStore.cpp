#include "dxf/StringStore.hpp"

#include <cstring>

namespace tq::dxf {

namespace {
// Chunks hold many values: one allocation for thousands of small ones.
constexpr size_t kChunkSize = 64 * 1024;
}  // namespace

Kept StringStore::Keep(std::string_view value) {
  if (value.empty()) return Kept(std::string_view());
  if (value.size() > kChunkSize / 4) {
    // A large value has a chunk of its own, inserted before the current one so that the
    // current one keeps filling.
    auto own = std::make_unique<char[]>(value.size());
    std::memcpy(own.get(), value.data(), value.size());
    std::string_view kept(own.get(), value.size());
    chunks_.insert(chunks_.empty() ? chunks_.end() : chunks_.end() - 1, std::move(own));
    return Kept(kept);
  }
  if (used_ + value.size() > capacity_) {
    chunks_.push_back(std::make_unique<char[]>(kChunkSize));
    used_ = 0, capacity_ = kChunkSize;
  }
  char* at = chunks_.back().get() + used_;
  std::memcpy(at, value.data(), value.size());
  used_ += value.size();
  return Kept(std::string_view(at, value.size()));
}

}  // namespace tq::dxf
