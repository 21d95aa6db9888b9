// The DXF backend knows the ports and the base, never the rules: this include must not compile.
#include "drawing/FrameGrid.hpp"
