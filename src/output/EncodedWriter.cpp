#include "output/EncodedWriter.hpp"

#include "base/Encoding.hpp"
#include "base/Paths.hpp"

namespace tq {

namespace {

std::string Utf8Unit(char16_t u) {
  if (u >= 0xD800 && u <= 0xDFFF) return "\xEF\xBF\xBD";  // a lone surrogate
  std::string out;
  if (u < 0x800) {
    out += static_cast<char>(0xC0 | (u >> 6));
  } else {
    out += static_cast<char>(0xE0 | (u >> 12));
    out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
  }
  out += static_cast<char>(0x80 | (u & 0x3F));
  return out;
}

}  // namespace

const CharacterWriter::Bytes& CharacterWriter::Of(char16_t unit) {
  auto [found, inserted] = units_.try_emplace(unit);
  if (inserted) found->second = {codePage_.Encode(TextView(&unit, 1)), codePage_.EncodeExact(TextView(&unit, 1))};
  return found->second;
}

std::string CharacterWriter::UnitBytes(char16_t u, TextMode mode, const WriteOptions& options) {
  switch (mode) {
    case TextMode::SystemCodePage:
    case TextMode::Utf8: {
      if (u < 0x80) return (u == u'\n' && options.lineEnd) ? std::string("\r\n") : std::string(1, static_cast<char>(u));
      if (mode == TextMode::Utf8) return Utf8Unit(u);
      const Bytes& bytes = Of(u);
      if (!options.escape) return bytes.bestFit;
      if (bytes.exact) return *bytes.exact;
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\U+%04X", static_cast<unsigned>(u));
      return escape;
    }
    case TextMode::Utf16Le:
    case TextMode::Utf16Be: {
      auto pair = [&](char16_t v) {
        char lo = static_cast<char>(v & 0xFF), hi = static_cast<char>(v >> 8);
        return mode == TextMode::Utf16Le ? std::string{lo, hi} : std::string{hi, lo};
      };
      return (u == u'\n' && options.lineEnd) ? pair(u'\r') + pair(u) : pair(u);
    }
  }
  return std::string();
}

std::string CharacterWriter::Encoded(TextView text, TextMode mode, const WriteOptions& options, int& units) {
  std::string buffer;
  for (char16_t u : text) {
    if (u == 0) break;
    buffer += UnitBytes(u, mode, options);
    ++units;
  }
  return buffer;
}

int CharacterWriter::Write(std::FILE* stream, TextView text, int mode, const WriteOptions& options) {
  if (mode < 1 || mode > 4) return options.result == WriteResultKind::MinusOne ? -1 : 0;
  int units = 0;
  std::string buffer = Encoded(text, static_cast<TextMode>(mode), options, units);
  if (std::fwrite(buffer.data(), 1, buffer.size(), stream) != buffer.size()) return -1;
  switch (options.result) {
    case WriteResultKind::Zero: return 0;
    case WriteResultKind::UnitCount: return units;
    case WriteResultKind::MinusOne: return -1;
  }
  return 0;
}

Status WriteOutputFile(const std::filesystem::path& path, const std::vector<Text>& lines, const CodePage& systemCodePage,
                       const os::FaultPlan* faults) {
  if (path.empty()) return MakeError(ErrorCode::NotFound, u"no output file was named");
  CharacterWriter writer(systemCodePage);
  std::string bytes;
  int units = 0;
  for (const Text& line : lines) bytes += writer.Encoded(line + u"\r\n", TextMode::SystemCodePage, {}, units);
  return WriteFileBytes(path, bytes, faults);
}

}  // namespace tq
