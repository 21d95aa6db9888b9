#pragma once
// The values written into a document's records, kept for the document's life so that an
// edited tag views its value as a tag of the file views the file.
#include <memory>
#include <string_view>
#include <vector>

namespace tq::dxf {

// A value that outlives the tags viewing it: from a StringStore, or a string literal.
class Kept {
 public:
  template <size_t N>
  constexpr Kept(const char (&literal)[N]) : view_(literal, N - 1) {}
  std::string_view view() const { return view_; }

 private:
  friend class StringStore;
  explicit Kept(std::string_view view) : view_(view) {}
  std::string_view view_;
};

class StringStore {
 public:
  StringStore() = default;
  StringStore(const StringStore&) = delete;
  StringStore& operator=(const StringStore&) = delete;

  Kept Keep(std::string_view value);

 private:
  std::vector<std::unique_ptr<char[]>> chunks_;
  size_t used_ = 0, capacity_ = 0;
};

}  // namespace tq::dxf
