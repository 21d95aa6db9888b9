#pragma once
// A1 cell addresses: column letters and numbers ("A" = 1, "Z" = 26, "AA" = 27), pure
// arithmetic that needs no engine.
#include <optional>

#include "base/Text.hpp"

namespace tq {

// `MakeCell`: the letters of a column counted from 1; empty below 1.
inline Text MakeCell(int column) {
  Text letters;
  for (long n = column; n > 0; n = (n - 1) / 26) letters.insert(letters.begin(), char16_t(u'A' + (n - 1) % 26));
  return letters;
}

// `GetColumnIndex`: the column number of letters, either case; 0 when the text is not
// letters or names a column past what an int holds.
inline int GetColumnIndex(TextView letters) {
  if (letters.empty()) return 0;
  long long column = 0;
  for (char16_t c : letters) {
    if (c >= u'a' && c <= u'z') c = char16_t(c - u'a' + u'A');
    if (c < u'A' || c > u'Z') return 0;
    column = column * 26 + (c - u'A' + 1);
    if (column > 0x7fffffff) return 0;
  }
  return static_cast<int>(column);
}

struct CellAddress {
  Text letters;
  int row = 0;
  friend bool operator==(const CellAddress&, const CellAddress&) = default;
};

// `SplitCell`: "AB12" → ("AB", 12). Nothing unless the text is letters then a row number of
// at least 1 (a "$" before either part is allowed and dropped).
inline std::optional<CellAddress> SplitCell(TextView cell) {
  size_t i = 0;
  auto skipDollar = [&] { if (i < cell.size() && cell[i] == u'$') ++i; };
  skipDollar();
  size_t lettersStart = i;
  while (i < cell.size() && ((cell[i] >= u'A' && cell[i] <= u'Z') || (cell[i] >= u'a' && cell[i] <= u'z'))) ++i;
  CellAddress address{Text(cell.substr(lettersStart, i - lettersStart)), 0};
  skipDollar();
  if (address.letters.empty() || GetColumnIndex(address.letters) == 0 || i == cell.size()) return std::nullopt;
  long long row = 0;
  for (; i < cell.size(); ++i) {
    if (cell[i] < u'0' || cell[i] > u'9') return std::nullopt;
    row = row * 10 + (cell[i] - u'0');
    if (row > 0x7fffffff) return std::nullopt;
  }
  if (row < 1) return std::nullopt;
  address.row = static_cast<int>(row);
  return address;
}

// An address made with "%s%d" from column letters and a row number.
inline Text FormatCell(TextView letters, int row) {
  Text cell(letters);
  for (char c : std::to_string(row)) cell.push_back(char16_t(c));
  return cell;
}

}  // namespace tq
