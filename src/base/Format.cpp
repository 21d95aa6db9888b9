#include "base/Format.hpp"

#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

namespace tq {

namespace {

struct Spec {
  std::string flags;
  std::string width;
  std::string precision;  // with its leading '.'
  char conversion = 0;
};

Text Widen(const std::string& ascii) { return Text(ascii.begin(), ascii.end()); }

std::string Printf(const std::string& format, auto value) {
  char buffer[512];
  int n = std::snprintf(buffer, sizeof buffer, format.c_str(), value);
  if (n < 0) return {};
  if (static_cast<size_t>(n) < sizeof buffer) return std::string(buffer, static_cast<size_t>(n));
  std::string big(static_cast<size_t>(n) + 1, '\0');
  std::snprintf(big.data(), big.size(), format.c_str(), value);
  big.resize(static_cast<size_t>(n));
  return big;
}

Text FormatNumber(const Spec& spec, const FormatArg* arg) {
  std::string head = "%" + spec.flags + spec.width + spec.precision;
  bool integral = std::string("diuxXc").find(spec.conversion) != std::string::npos;
  long long i = 0;
  double d = 0.0;
  if (arg) {
    if (auto p = std::get_if<long long>(&arg->value())) i = *p, d = static_cast<double>(*p);
    if (auto p = std::get_if<double>(&arg->value())) d = *p, i = static_cast<long long>(*p);
  }
  if (spec.conversion == 'c') return Text(1, static_cast<char16_t>(i));
  if (integral) return Widen(Printf(head + "ll" + spec.conversion, i));
  return Widen(Printf(head + spec.conversion, d));
}

Text FormatText(const Spec& spec, const FormatArg* arg) {
  Text text;
  if (arg) {
    if (auto p = std::get_if<TextView>(&arg->value())) text = *p;
    else if (auto p = std::get_if<long long>(&arg->value())) text = Widen(std::to_string(*p));
    else text = Widen(Printf("%g", std::get<double>(arg->value())));
  }
  if (!spec.precision.empty()) {
    size_t limit = static_cast<size_t>(std::atoi(spec.precision.c_str() + 1));
    if (text.size() > limit) text.resize(limit);
  }
  size_t width = spec.width.empty() ? 0 : static_cast<size_t>(std::atoi(spec.width.c_str()));
  if (text.size() < width) {
    Text pad(width - text.size(), u' ');
    text = spec.flags.find('-') != std::string::npos ? text + pad : pad + text;
  }
  return text;
}

// Reads one conversion spec starting after '%'; returns the index after it.
size_t ParseSpec(TextView format, size_t i, Spec& spec) {
  while (i < format.size() && TextView(u"-+ #0").find(format[i]) != TextView::npos) spec.flags += static_cast<char>(format[i++]);
  while (i < format.size() && format[i] >= u'0' && format[i] <= u'9') spec.width += static_cast<char>(format[i++]);
  if (i < format.size() && format[i] == u'.') {
    spec.precision.push_back('.');
    ++i;
    while (i < format.size() && format[i] >= u'0' && format[i] <= u'9') spec.precision += static_cast<char>(format[i++]);
  }
  while (i < format.size() && (format[i] == u'l' || format[i] == u'h')) ++i;  // length modifiers carry no meaning here
  if (i < format.size() && format[i] < 0x80) spec.conversion = static_cast<char>(format[i++]);
  return i;
}

}  // namespace

Text Format(TextView format, std::initializer_list<FormatArg> args) {
  Text out;
  const FormatArg* next = args.begin();
  auto take = [&]() -> const FormatArg* { return next != args.end() ? next++ : nullptr; };
  for (size_t i = 0; i < format.size();) {
    if (format[i] != u'%') {
      out += format[i++];
      continue;
    }
    if (i + 1 < format.size() && format[i + 1] == u'%') {
      out += u'%';
      i += 2;
      continue;
    }
    Spec spec;
    i = ParseSpec(format, i + 1, spec);
    if (spec.conversion == 's' || spec.conversion == 'S')
      out += FormatText(spec, take());
    else if (spec.conversion && std::string("diuxXfFeEgGc").find(spec.conversion) != std::string::npos)
      out += FormatNumber(spec, take());
  }
  return out;
}

}  // namespace tq

namespace tq {

Text FormatQuantity(double value) {
  char buffer[64];
  int n = std::snprintf(buffer, sizeof buffer, "%2.1f", value);
  if (n < 0 || static_cast<size_t>(n) >= sizeof buffer) return Format(u"%2.1f", {value});
  return Text(buffer, buffer + n);
}

Text FormatDecimal(long long value) {
  char buffer[24];
  char* end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  return Text(buffer, end);
}

}  // namespace tq
