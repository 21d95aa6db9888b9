#include "base/Numbers.hpp"

#include <charconv>
#include <climits>
#include <string>

namespace tq {

namespace {
bool IsCSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
}  // namespace

double ToReal(TextView text) {
  size_t i = 0;
  while (i < text.size() && IsCSpace(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
  std::string number;
  size_t digits = 0;
  while (i < text.size() && IsDigit(text[i])) number += static_cast<char>(text[i++]), ++digits;
  if (i < text.size() && text[i] == u'.') {
    number += '.';
    ++i;
    while (i < text.size() && IsDigit(text[i])) number += static_cast<char>(text[i++]), ++digits;
  }
  if (digits == 0) return 0.0;
  if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
    size_t j = i + 1;
    std::string exponent = "e";
    if (j < text.size() && (text[j] == u'+' || text[j] == u'-')) exponent += static_cast<char>(text[j++]);
    size_t expDigits = 0;
    while (j < text.size() && IsDigit(text[j])) exponent += static_cast<char>(text[j++]), ++expDigits;
    if (expDigits > 0) number += exponent;
  }
  double value = 0.0;
  std::from_chars(number.data(), number.data() + number.size(), value);
  return negative ? -value : value;
}

int ToInt(TextView text) {
  size_t i = 0;
  while (i < text.size() && IsCSpace(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
  long long value = 0;
  bool overflow = false;
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    value = value * 10 + (text[i] - u'0');
    if (value > static_cast<long long>(INT_MAX) + 1) overflow = true, value = static_cast<long long>(INT_MAX) + 1;
  }
  if (negative) {
    value = -value;
    return (overflow || value < INT_MIN) ? INT_MIN : static_cast<int>(value);
  }
  return (overflow || value > INT_MAX) ? INT_MAX : static_cast<int>(value);
}

}  // namespace tq
