#include "output/UnmappableCharacters.hpp"

#include <cstdio>

#include "info/StdInfRecord.hpp"

namespace tq {

namespace {

Text CodePointName(char32_t c) {
  char hex[16];
  std::snprintf(hex, sizeof hex, "U+%04X", static_cast<unsigned>(c));
  return FromUtf8(hex);
}

Text Place(const LineOrigin& origin, const std::function<Text(ObjectId)>& sheetName) {
  if (origin.entity.isNull()) return u"the header of the output format";
  Text sheet = sheetName ? sheetName(origin.entity) : Text();
  return u"sheet " + (sheet.empty() ? Text(u"(no name)") : sheet) + u", " +
         InfoRecordName(static_cast<int>(origin.record) + 1) + u" line " + FromUtf8(std::to_string(origin.line + 1));
}

}  // namespace

std::vector<Text> UnmappableWarnings(const OutputLineList& list, const CodePage& systemCodePage,
                                     const std::function<Text(ObjectId)>& sheetName) {
  std::vector<Text> warnings;
  for (size_t i = 0; i < list.lines.size(); ++i) {
    const Text& line = list.lines[i];
    if (systemCodePage.EncodeExact(line)) continue;  // the common case: every character fits
    std::vector<Text> seen;
    for (size_t k = 0; k < line.size(); ++k) {
      // The writer converts each UTF-16 unit alone, so a surrogate pair always becomes "?";
      // it is named as the one character it stands for.
      size_t units = (k + 1 < line.size() && line[k] >= 0xD800 && line[k] <= 0xDBFF && line[k + 1] >= 0xDC00 &&
                      line[k + 1] <= 0xDFFF) ? 2 : 1;
      Text character = line.substr(k, units);
      k += units - 1;
      bool becomesDefault = units == 2 || (character != u"?" && systemCodePage.Encode(character) == "?");
      if (!becomesDefault) continue;
      bool repeated = false;
      for (const Text& s : seen) repeated = repeated || s == character;
      if (repeated) continue;
      seen.push_back(character);
      char32_t code = units == 2 ? 0x10000 + ((static_cast<char32_t>(character[0]) - 0xD800) << 10) +
                                       (static_cast<char32_t>(character[1]) - 0xDC00)
                                 : character[0];
      LineOrigin origin = i < list.origins.size() ? list.origins[i] : LineOrigin{};
      warnings.push_back(u"\nWARNING:" + Place(origin, sheetName) + u": \"" + character + u"\" (" + CodePointName(code) +
                         u") is not in the code page " + FromUtf8(systemCodePage.name()) + u" and is written as \"?\"");
    }
  }
  return warnings;
}

}  // namespace tq
