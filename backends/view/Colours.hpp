#pragma once
// AutoCAD colour indices (ACI) as the RGB colours CAD programs show them.
#include <cstdint>

namespace tq::view {

struct Rgb {
  uint8_t r = 255, g = 255, b = 255;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

inline constexpr int kByBlock = 0;
inline constexpr int kByLayer = 256;

// Index 1 to 255; 7 is white, as it is drawn on a dark background. Anything else gives white.
Rgb AciToRgb(int aci);
// A 24-bit true colour of group 420.
inline Rgb TrueColour(long value) {
  return {static_cast<uint8_t>((value >> 16) & 0xFF), static_cast<uint8_t>((value >> 8) & 0xFF),
          static_cast<uint8_t>(value & 0xFF)};
}

}  // namespace tq::view
