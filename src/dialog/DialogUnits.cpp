#include "dialog/DialogUnits.hpp"

#include <climits>
#include <cstdint>

namespace tq::dialog {

int MulDiv(int a, int b, int c) {
  if (c == 0) return -1;
  int64_t product = static_cast<int64_t>(a) * b;
  int64_t divisor = c;
  bool negative = (product < 0) != (divisor < 0);
  uint64_t p = product < 0 ? -static_cast<uint64_t>(product) : static_cast<uint64_t>(product);
  uint64_t d = divisor < 0 ? -static_cast<uint64_t>(divisor) : static_cast<uint64_t>(divisor);
  uint64_t q = (p + d / 2) / d;  // half rounds away from zero
  if (q > static_cast<uint64_t>(INT_MAX) + (negative ? 1 : 0)) return -1;
  return negative ? static_cast<int>(-static_cast<int64_t>(q)) : static_cast<int>(q);
}

int AverageCharWidth(int widthOfAlphabet) { return (widthOfAlphabet / 26 + 1) / 2; }

DialogBaseUnits BaseUnits(int widthOfAlphabet, int charHeight) {
  return DialogBaseUnits{AverageCharWidth(widthOfAlphabet), charHeight};
}

int DialogXToPixels(int x, const DialogBaseUnits& units) { return MulDiv(x, units.averageCharWidth, 4); }
int DialogYToPixels(int y, const DialogBaseUnits& units) { return MulDiv(y, units.charHeight, 8); }

}  // namespace tq::dialog
