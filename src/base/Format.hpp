#pragma once
// printf-style formatting of the system's formats ("%d", "%02d", "%g", "%2.1f", "%s") on UTF-16 text.
#include <initializer_list>
#include <variant>

#include "base/Text.hpp"

namespace tq {

class FormatArg {
 public:
  FormatArg(int v) : value_(static_cast<long long>(v)) {}
  FormatArg(long v) : value_(static_cast<long long>(v)) {}
  FormatArg(long long v) : value_(v) {}
  FormatArg(unsigned v) : value_(static_cast<long long>(v)) {}
  FormatArg(size_t v) : value_(static_cast<long long>(v)) {}
  FormatArg(double v) : value_(v) {}
  FormatArg(TextView v) : value_(v) {}
  FormatArg(const Text& v) : value_(TextView(v)) {}
  FormatArg(const char16_t* v) : value_(TextView(v)) {}

  const std::variant<long long, double, TextView>& value() const { return value_; }

 private:
  std::variant<long long, double, TextView> value_;
};

// Conversions d, i, u, x, X, f, e, g, G, s, c and %%, with flags, width and precision.
// A missing argument formats as empty; a number given for %s is written as a number.
Text Format(TextView format, std::initializer_list<FormatArg> args);

// "%2.1f" of a quantity, the output files' one reformatted value: the same as
// Format(u"%2.1f", {value}), without parsing the format for each of many thousand lines.
Text FormatQuantity(double value);
// Format(u"%d", {value}), for the many colours of a marking.
Text FormatDecimal(long long value);

}  // namespace tq
