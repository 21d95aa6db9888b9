#include "base/Quote.hpp"

#include "base/Encoding.hpp"

namespace tq {

namespace {

// The length of the UTF-8 sequence that starts at `at`, 0 when none does.
size_t Utf8SequenceAt(std::string_view s, size_t at) {
  unsigned char b = static_cast<unsigned char>(s[at]);
  size_t length = b < 0x80 ? 1 : (b >> 5) == 0x6 ? 2 : (b >> 4) == 0xE ? 3 : (b >> 3) == 0x1E ? 4 : 0;
  if (length == 0 || at + length > s.size()) return 0;
  if (length > 1 && !IsValidUtf8(s.substr(at, length))) return 0;
  return length;
}

void AppendEscape(std::string& out, unsigned char b) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  switch (b) {
    case '\0': out += "\\0"; return;
    case '\t': out += "\\t"; return;
    case '\r': out += "\\r"; return;
    case '\n': out += "\\n"; return;
    case '\\': out += "\\\\"; return;
    default: out += "\\x", out += kHex[b >> 4], out += kHex[b & 0xF];
  }
}

}  // namespace

std::string QuoteFileContent(std::string_view bytes, size_t limit) {
  std::string out = "\"";
  size_t i = 0;
  while (i < bytes.size() && i < limit) {
    unsigned char b = static_cast<unsigned char>(bytes[i]);
    size_t length = Utf8SequenceAt(bytes, i);
    if (length == 1 && b >= 0x20 && b != 0x7F && b != '\\') {
      out += static_cast<char>(b);
    } else if (length > 1 && i + length <= limit) {
      out.append(bytes.substr(i, length));
      i += length;
      continue;
    } else if (length > 1) {
      break;  // a character the limit would cut in two
    } else {
      AppendEscape(out, b);
    }
    ++i;
  }
  out += '"';
  if (i < bytes.size()) out += "...";
  return out;
}

Text QuoteFileContent(TextView text, size_t limit) { return FromUtf8(QuoteFileContent(ToUtf8(text), limit)); }

}  // namespace tq
