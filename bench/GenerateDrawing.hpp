#pragma once
// Generated drawings for the benchmarks, written straight as DXF text.
#include <filesystem>
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

struct FrameDrawingShape {
  int rows = 25, columns = 40;
  int entitiesPerFrame = 500;
  int recordLines = 5;       // lines of record "TQ_STDINF01" on every other sheet-number text
  int recordsPerSheet = 1;
  int recordEvery = 2;       // every n-th frame carries records; the others are marked
};

// A grid of standard-drawing frames of the default size, each with its sheet-number text on
// layer "5" and drawn content (lines, circles, arcs, texts), in R12 / ANSI_932.
std::string GenerateFrameDrawing(const FrameDrawingShape& shape);
// Record line i of a generated standard drawing: 25 fields of the sample installation.
std::string GeneratedRecordLine(int frame, int line);

// Writes a generated file; a bench that cannot write its input stops with the reason.
void WriteOrExit(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tq::bench
