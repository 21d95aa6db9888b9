#include "dialog/ComboSearch.hpp"

namespace tq::dialog {

int FindStringExact(const std::vector<Text>& entries, int startAfter, TextView text) {
  int n = static_cast<int>(entries.size());
  if (n == 0) return -1;
  int start = (startAfter < 0 || startAfter >= n) ? 0 : startAfter + 1;
  for (int k = 0; k < n; ++k) {
    int i = (start + k) % n;
    if (EqualNoCase(entries[static_cast<size_t>(i)], text)) return i;
  }
  return -1;
}

}  // namespace tq::dialog
