// libFuzzer target: the DXF reader, strict and recovering, and everything read from it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "dxf/DxfDrawing.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  try {
    tq::dxf::Document::Load(bytes, false);
  } catch (const std::exception&) {
  }
  std::vector<tq::dxf::Problem> problems;
  try {
    tq::dxf::DxfDrawing drawing(tq::dxf::Document::Load(bytes, true, &problems), "fuzz.dxf");
    for (tq::ObjectId id : drawing.SelectAll({})) {
      drawing.EntityExtents(id);
      drawing.TextData(id);
      drawing.LineData(id);
      drawing.ReadXData(id, u"TQ_STDINF01");
      drawing.SetColourIndex(id, 1);
      drawing.WriteXData(id, u"TQ_STDCHECK", {u"256"});
    }
    drawing.document().Serialize();
  } catch (const std::exception&) {
  }
  return 0;
}
