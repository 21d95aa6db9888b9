#include "dxf/Tagger.hpp"

#include <charconv>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tq::dxf {

namespace {

// Almost every line of a DXF file is shorter than 16 bytes: one compare of 16 bytes finds its
// end, where a call to memchr costs more than the search.
inline const char* FindLineEnd(const char* from, size_t size) {
#ifdef __SSE2__
  if (size >= 16) {
    __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'))));
    if (mask) return from + __builtin_ctz(mask);
  }
#endif
  return static_cast<const char*>(std::memchr(from, '\n', size));
}

// A line's content without its "\r" before the line end.
inline std::string_view LineBefore(const char* start, size_t length) {
  if (length > 0 && start[length - 1] == '\r') --length;
  return std::string_view(start, length);
}

// The line from `pos`: its content (without "\r\n" or "\n") and the offset after it.
inline bool ReadLine(std::string_view data, uint32_t pos, std::string_view& content, uint32_t& next) {
  if (pos >= data.size()) return false;
  const char* start = data.data() + pos;
  const char* nl = FindLineEnd(start, data.size() - pos);
  size_t length = nl ? nl - start : data.size() - pos;
  next = static_cast<uint32_t>(pos + length + (nl ? 1 : 0));
  content = LineBefore(start, length);
  return true;
}

}  // namespace

std::string_view TrimNumber(std::string_view value) {
  size_t b = 0, e = value.size();
  while (b < e && (value[b] == ' ' || value[b] == '\t')) ++b;
  while (e > b && (value[e - 1] == ' ' || value[e - 1] == '\t' || value[e - 1] == '\r')) --e;
  return value.substr(b, e - b);
}

bool ParseInt(std::string_view value, long long& out) {
  value = TrimNumber(value);
  if (!value.empty() && value[0] == '+') value.remove_prefix(1);
  auto [p, ec] = std::from_chars(value.data(), value.data() + value.size(), out);
  return ec == std::errc() && p == value.data() + value.size() && !value.empty();
}

namespace {

// Most values are plain decimals ("-1234.5678"): with at most 15 digits they are exactly an
// integer divided by a power of ten, one correctly rounded division, the same double that
// from_chars gives, at a fraction of its cost.
bool ParsePlainDecimal(std::string_view v, double& out) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  bool negative = !v.empty() && v[0] == '-';
  size_t i = negative ? 1 : 0;
  uint64_t mantissa = 0;
  auto digits = [&] {
    size_t from = i;
    for (; i < v.size() && v[i] >= '0' && v[i] <= '9'; ++i) mantissa = mantissa * 10 + static_cast<uint64_t>(v[i] - '0');
    return i - from;
  };
  size_t whole = digits(), fraction = 0;
  if (i < v.size() && v[i] == '.') {
    ++i;
    if ((fraction = digits()) == 0) return false;
  }
  if (i != v.size() || whole == 0 || whole + fraction > 15) return false;
  double value = static_cast<double>(mantissa) / kPowers[fraction];
  out = negative ? -value : value;
  return true;
}

}  // namespace

bool ParseDouble(std::string_view value, double& out) {
  value = TrimNumber(value);
  if (!value.empty() && value[0] == '+') value.remove_prefix(1);
  if (ParsePlainDecimal(value, out)) return true;
  auto [p, ec] = std::from_chars(value.data(), value.data() + value.size(), out);
  return ec == std::errc() && p == value.data() + value.size() && !value.empty();
}

void Tagger::SkipLine() {
  std::string_view content;
  uint32_t next;
  if (ReadLine(data_, pos_, content, next)) pos_ = next, ++line_;
}

namespace {

// Group codes are short integers (blanks around them allowed); anything else is no tag.
inline bool ParseCode(std::string_view line, int& out) {
  long long code = 0;
  size_t i = 0, n = line.size();
  while (i < n && line[i] == ' ') ++i;
  bool negative = i < n && line[i] == '-';
  if (negative || (i < n && line[i] == '+')) ++i;
  size_t digits = 0;
  while (i < n && line[i] >= '0' && line[i] <= '9' && digits < 6) code = code * 10 + (line[i++] - '0'), ++digits;
  while (i < n && (line[i] == ' ' || line[i] == '\t')) ++i;
  if (negative) code = -code;
  if (digits == 0 || i != n || code < -32768 || code > 32767) return false;
  out = static_cast<int>(code);
  return true;
}

// A pair usually fits in 32 bytes: both its line ends are found at once. False when the
// 32 bytes from `pos` do not hold both.
inline bool ReadShortPair(std::string_view data, uint32_t pos, std::string_view& codeLine, std::string_view& value,
                          uint32_t& next) {
#ifdef __SSE2__
  if (pos >= data.size() || data.size() - pos < 32) return false;
  const char* p = data.data() + pos;
  const __m128i newline = _mm_set1_epi8('\n');
  auto ends16 = [&](const char* at) {
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), newline)));
  };
  uint32_t ends = ends16(p) | (ends16(p + 16) << 16);
  if (!(ends & (ends - 1))) return false;
  uint32_t codeEnd = static_cast<uint32_t>(__builtin_ctz(ends)), valueEnd = static_cast<uint32_t>(__builtin_ctz(ends & (ends - 1)));
  codeLine = LineBefore(p, codeEnd);
  value = LineBefore(p + codeEnd + 1, valueEnd - codeEnd - 1);
  next = pos + valueEnd + 1;
  return true;
#else
  (void)data, (void)pos, (void)codeLine, (void)value, (void)next;
  return false;
#endif
}

}  // namespace

Tagger::Result Tagger::Next(Tag& tag) {
  std::string_view codeLine, value;
  uint32_t afterCode = 0, afterValue = 0;
  bool whole = ReadShortPair(data_, pos_, codeLine, value, afterValue);
  if (!whole && !ReadLine(data_, pos_, codeLine, afterCode)) return Result::End;
  int code;
  if (!ParseCode(codeLine, code)) {
    errorLine_ = line_;
    errorText_ = codeLine;
    return Result::BadCode;
  }
  if (!whole && !ReadLine(data_, afterCode, value, afterValue)) {
    errorLine_ = line_;
    return Result::MissingValue;
  }
  tag.code = code;
  tag.value = value;
  tag.offset = pos_;
  tag.end = afterValue;
  tag.line = line_;
  pos_ = afterValue;
  line_ += 2;
  return Result::Tag;
}

}  // namespace tq::dxf
