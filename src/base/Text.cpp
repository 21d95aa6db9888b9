#include "base/Text.hpp"

#include <unicode/unistr.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

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
  UErrorCode status = U_ZERO_ERROR;
  int32_t r = u_strCaseCompare(a.data(), static_cast<int32_t>(a.size()), b.data(),
                               static_cast<int32_t>(b.size()), U_FOLD_CASE_DEFAULT, &status);
  return U_SUCCESS(status) && r == 0;
}

std::string ToUtf8(TextView text) {
  std::string out;
  icu::UnicodeString(false, text.data(), static_cast<int32_t>(text.size())).toUTF8String(out);
  return out;
}

Text FromUtf8(std::string_view bytes) {
  icu::UnicodeString u = icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
  return Text(u.getBuffer(), static_cast<size_t>(u.length()));
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
