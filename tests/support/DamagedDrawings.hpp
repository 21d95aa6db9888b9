#pragma once
// Copies of a good R2018 drawing, each with one kind of damage a checker must find, and the
// line the damage stands on.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/Paths.hpp"

namespace tq::test {

struct DamagedDrawing {
  std::string name;     // also the file's name, without ".dxf"
  std::string bytes;
  uint32_t line = 0;    // where the damage stands
  std::string finding;  // a part of the message that names it

  // How dxf-info lists the damage.
  std::string Listed() const { return "line " + std::to_string(line) + ": " + finding; }
};

inline uint32_t LineAt(const std::string& bytes, size_t offset) {
  uint32_t line = 1;
  for (size_t i = 0; i < offset && i < bytes.size(); ++i) line += bytes[i] == '\n';
  return line;
}

// `bytes` with the first `from` replaced by `to`; the line of `to`'s line `lineInTo`.
inline DamagedDrawing Damaged(const std::string& name, const std::string& bytes, const std::string& from, const std::string& to,
                              uint32_t lineInTo, const std::string& finding) {
  size_t at = bytes.find(from);
  if (at == std::string::npos) throw std::runtime_error("the fixture no longer holds " + from);
  std::string damaged = bytes;
  damaged.replace(at, from.size(), to);
  return {name, damaged, LineAt(damaged, at) + lineInTo, finding};
}

inline std::vector<DamagedDrawing> DamagedDrawings() {
  std::string good = ReadFileBytes(std::string(TQ_FIXTURES) + "/dxf/ezdxf_R2018.dxf").value();
  const std::string ellipse = "  0\nELLIPSE\n  5\n43\n";
  std::string strings;  // 40 strings of 250 bytes: over 16 KB as AutoCAD counts extended data
  for (int i = 0; i < 40; ++i) strings += "1000\n" + std::string(250, 'y') + "\n";
  std::vector<DamagedDrawing> drawings{
      Damaged("duplicate-handle", good, ellipse, "  0\nELLIPSE\n  5\n42\n", 3, "the handle 42 is also given on line"),
      Damaged("handle-not-hex", good, ellipse, "  0\nELLIPSE\n  5\n4G\n", 3, "the handle \"4G\" is not hexadecimal"),
      Damaged("open-brace", good, "1002\n}\n  0\nELLIPSE", "  0\nELLIPSE", 0, ""),
      Damaged("stray-brace", good, "1001\nTQ_STDINF02\n", "1001\nTQ_STDINF02\n1002\n}\n", 3, "a \"}\" of extended data (group 1002) closes no \"{\""),
      Damaged("xdata-over-limit", good, "1001\nTQ_STDINF02\n", "1001\nTQ_STDINF02\n" + strings, 0, ""),
      Damaged("unknown-acadver", good, "$ACADVER\n  1\nAC1032", "$ACADVER\n  1\nAC1099", 2, "$ACADVER \"AC1099\" is not a release known here"),
      Damaged("unknown-codepage", good, "ANSI_1252", "ANSI_9999", 0, "$DWGCODEPAGE \"ANSI_9999\" is not a code page known here"),
      Damaged("invalid-utf8", good, "ヘッダ1", "\xFF\xFE" "A", 0, "invalid UTF-8"),
      Damaged("eof-first", good, "  0\nSECTION\n", "  0\nEOF\n  0\nSECTION\n", 0, "\"0 EOF\" stands before any section"),
  };
  // The "{" of record 02 left open: its line is the "{" itself.
  DamagedDrawing& open = drawings[2];
  open.line = LineAt(open.bytes, open.bytes.find("1002\n{\n")) + 1;
  open.finding = "a \"{\" of extended data (group 1002) is not closed by \"}\"";
  // The limit is counted for the entity, on its first line.
  DamagedDrawing& large = drawings[4];
  large.line = LineAt(large.bytes, large.bytes.rfind("  0\nTEXT\n", large.bytes.find("1001\nTQ_STDINF02\n")));
  large.finding = "the extended data of the TEXT holds ";
  return drawings;
}

}  // namespace tq::test
