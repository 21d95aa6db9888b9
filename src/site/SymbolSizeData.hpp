#pragma once
// "記号サイズデータ.dat", a hand-written file of the installation read by the attribute and
// size dialogs: the symbols, numbers, sizes and unit counts offered by the size
// setting dialog, each with an optional default entry.
#include <array>
#include <filesystem>
#include <vector>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq {

enum class SizeSection { None = -1, Symbols = 0, Numbers = 1, Sizes = 2, Counts = 3 };

struct SymbolSizeData {
  std::array<std::vector<Text>, 4> lists;  // by SizeSection
  std::array<int, 4> defaults{-1, -1, -1, -1};
  const std::vector<Text>& list(SizeSection s) const { return lists[static_cast<size_t>(s)]; }
  int defaultIndex(SizeSection s) const { return defaults[static_cast<size_t>(s)]; }
};

// The size setting dialog starts with no section; the attribute dialog reads the same file
// starting in the counts section.
SymbolSizeData ParseSymbolSizeData(TextView text, SizeSection startSection = SizeSection::None);
// Four empty lists when the file cannot be read (or the path is empty).
SymbolSizeData LoadSymbolSizeData(TextView path, const CodePage& systemCodePage,
                                  SizeSection startSection = SizeSection::None);

}  // namespace tq
