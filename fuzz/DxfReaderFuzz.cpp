// libFuzzer target: the DXF reader, strict and recovering, and everything read from it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "dxf/DxfDrawing.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  // A strict read succeeds or names the line it stopped at; the recover read lists a problem
  // exactly when the strict read failed.
  tq::Result<std::unique_ptr<tq::dxf::Document>> strict = tq::dxf::Document::Read(bytes);
  if (!strict && strict.error().code == tq::ErrorCode::Malformed && strict.error().line == 0) __builtin_trap();
  tq::Result<tq::dxf::Recovered> recovered = tq::dxf::Document::Recover(bytes);
  if (!recovered) {
    if (strict) __builtin_trap();
    return 0;
  }
  if (recovered->problems.empty() != strict.ok()) __builtin_trap();
  {
    // Nothing here throws for any input: an exception is a finding.
    tq::dxf::DxfDrawing drawing(std::move(recovered->document), "fuzz.dxf");
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
  }
  return 0;
}
