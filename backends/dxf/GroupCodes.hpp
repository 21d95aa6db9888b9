#pragma once
// The group codes and flags of the DXF reference that readers outside the backend name.

namespace tq::dxf {

inline constexpr int kXDataStringCode = 1000;       // a string of extended data
inline constexpr int kXDataApplicationCode = 1001;  // the application name that opens a group

// Bits of a layer's standard flags (group 70).
inline constexpr int kLayerFrozen = 1;
inline constexpr int kLayerLocked = 4;

}  // namespace tq::dxf
