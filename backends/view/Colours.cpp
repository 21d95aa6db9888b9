#include "view/Colours.hpp"

#include <array>
#include <cmath>

namespace tq::view {

namespace {

// The 24 hues of indices 10 to 249, 15 degrees apart, each at five values (255, 204, 153,
// 127, 76) in full and in half saturation: the pattern of AutoCAD's palette.
Rgb FromHsv(double hueDeg, double saturation, double value) {
  double max = value, min = value * (1 - saturation);
  double h = std::fmod(hueDeg, 360.0) / 60.0;
  int sector = static_cast<int>(h);
  double f = h - sector;
  double rising = min + (max - min) * f, falling = max - (max - min) * f;
  double r = 0, g = 0, b = 0;
  switch (sector) {
    case 0: r = max, g = rising, b = min; break;
    case 1: r = falling, g = max, b = min; break;
    case 2: r = min, g = max, b = rising; break;
    case 3: r = min, g = falling, b = max; break;
    case 4: r = rising, g = min, b = max; break;
    default: r = max, g = min, b = falling; break;
  }
  auto channel = [](double v) { return static_cast<uint8_t>(std::floor(v)); };
  return {channel(r), channel(g), channel(b)};
}

std::array<Rgb, 256> MakeTable() {
  std::array<Rgb, 256> table{};
  const Rgb first[10] = {{0, 0, 0},     {255, 0, 0},   {255, 255, 0},   {0, 255, 0},    {0, 255, 255},
                         {0, 0, 255},   {255, 0, 255}, {255, 255, 255}, {65, 65, 65},   {128, 128, 128}};
  for (int i = 0; i < 10; ++i) table[static_cast<size_t>(i)] = first[i];
  const double values[5] = {255, 204, 153, 127, 76};
  for (int i = 10; i < 250; ++i) {
    int hue = (i - 10) / 10, step = (i - 10) % 10;
    table[static_cast<size_t>(i)] = FromHsv(hue * 15.0, step % 2 ? 0.5 : 1.0, values[step / 2]);
  }
  const uint8_t greys[6] = {51, 80, 105, 130, 190, 255};
  for (int i = 0; i < 6; ++i) table[static_cast<size_t>(250 + i)] = {greys[i], greys[i], greys[i]};
  return table;
}

const std::array<Rgb, 256> kTable = MakeTable();

}  // namespace

Rgb AciToRgb(int aci) {
  if (aci < 1 || aci > 255) return {255, 255, 255};
  return kTable[static_cast<size_t>(aci)];
}

}  // namespace tq::view
