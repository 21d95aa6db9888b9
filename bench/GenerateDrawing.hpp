#pragma once
// Generated drawings for the benchmarks, written straight as DXF text.
#include <string>

namespace tq::bench {

struct DrawingShape {
  int lines = 200000;
  int texts = 20000;
  int recordLines = 10;   // extended-data lines per text under "TQ_STDINF01"
  int lineLength = 120;   // characters per extended-data line
};

// An R12 drawing in ANSI_932 with the lines on layer "0" and the texts on layer "5".
std::string GenerateDrawing(const DrawingShape& shape);

}  // namespace tq::bench
