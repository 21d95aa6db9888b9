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
    // The tags noted while loading are the tags of the entity's bytes read again.
    const tq::dxf::Document& doc = drawing.document();
    std::vector<tq::dxf::Tag> noted, read;
    for (uint32_t i = 0; i < doc.records().size(); ++i) {
      const tq::dxf::EntityRecord& rec = doc.records()[i];
      doc.TagsInto(i, noted);
      tq::dxf::ViewTagsInto(doc.source().substr(rec.begin, rec.end - rec.begin), read);
      if (noted.size() != read.size()) __builtin_trap();
      for (size_t k = 0; k < read.size(); ++k)
        if (noted[k].code != read[k].code || noted[k].value != read[k].value || noted[k].offset != read[k].offset ||
            noted[k].end != read[k].end || noted[k].line != read[k].line)
          __builtin_trap();
    }
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
