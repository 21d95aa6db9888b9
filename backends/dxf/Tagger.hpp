#pragma once
// The first stage of reading a DXF file: group-code/value pairs over the file's bytes.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tq::dxf {

// A malformed file: the message names the line and what was expected there.
class DxfError : public std::runtime_error {
 public:
  DxfError(uint32_t line, const std::string& what)
      : std::runtime_error("line " + std::to_string(line) + ": " + what), line_(line) {}
  uint32_t line() const { return line_; }

 private:
  uint32_t line_;
};

struct Tag {
  int code = 0;
  std::string_view value;  // the value line without its line end
  uint32_t offset = 0;     // where the code line starts in the file
  uint32_t end = 0;        // just past the value line's line end
  uint32_t line = 0;       // line number of the code line, from 1
};

// Reads pairs from an offset on. Never reads past the buffer; a malformed pair is
// reported, never guessed at.
class Tagger {
 public:
  enum class Result { Tag, End, BadCode, MissingValue };

  Tagger(std::string_view data, uint32_t offset = 0, uint32_t line = 1) : data_(data), pos_(offset), line_(line) {}

  Result Next(Tag& tag);
  // Steps over one line, to read on after a bad pair.
  void SkipLine();
  uint32_t offset() const { return pos_; }
  uint32_t line() const { return line_; }
  // Where the bad pair starts, after Next returned BadCode or MissingValue.
  uint32_t errorLine() const { return errorLine_; }
  // The line that is no group code, after Next returned BadCode.
  std::string_view errorText() const { return errorText_; }

 private:
  std::string_view data_;
  uint32_t pos_;
  uint32_t line_;
  uint32_t errorLine_ = 0;
  std::string_view errorText_;
};

// Strips a "\r" before the line end and the blanks around a number.
std::string_view TrimNumber(std::string_view value);
bool ParseInt(std::string_view value, long long& out);
bool ParseDouble(std::string_view value, double& out);

}  // namespace tq::dxf
