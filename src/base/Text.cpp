#include "base/Text.hpp"

#include "base/TextEngine.hpp"

namespace tq {

namespace {
bool IsAscii(TextView t) {
  for (char16_t c : t)
    if (c >= 0x80) return false;
  return true;
}
char16_t AsciiLower(char16_t c) { return (c >= u'A' && c <= u'Z') ? c + 32 : c; }
bool IsSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == u'\v' || c == u'\f' || c == 0x3000; }
}  // namespace

bool EqualNoCase(TextView a, TextView b) {
  if (IsAscii(a) && IsAscii(b)) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
      if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
    return true;
  }
  return engine::EqualFolded(a, b);
}

Text Trim(TextView text) {
  size_t b = 0, e = text.size();
  while (b < e && IsSpace(text[b])) ++b;
  while (e > b && IsSpace(text[e - 1])) --e;
  return Text(text.substr(b, e - b));
}

bool StartsWith(TextView text, TextView prefix) { return text.substr(0, prefix.size()) == prefix; }
bool EndsWith(TextView text, TextView suffix) {
  return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

}  // namespace tq
