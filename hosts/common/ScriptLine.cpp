#include "common/ScriptLine.hpp"

#include <charconv>
#include <string>

namespace tq {

namespace {
bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r'; }

Text Lower(TextView text) {
  Text out(text);
  for (char16_t& c : out)
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  return out;
}
}  // namespace

std::optional<Result<ScriptLine>> ParseScriptLine(int number, TextView text) {
  size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  if (i == text.size() || text[i] == u'#') return std::nullopt;
  ScriptLine line{number, Text(text), {}, {}};
  std::vector<Text> tokens;
  while (i < text.size()) {
    if (IsBlank(text[i])) {
      ++i;
      continue;
    }
    Text token;
    if (text[i] == u'"') {
      ++i;
      bool closed = false;
      while (i < text.size()) {
        char16_t c = text[i++];
        if (c == u'"') {
          closed = true;
          break;
        }
        if (c == u'\\' && i < text.size() && (text[i] == u'"' || text[i] == u'\\')) c = text[i++];
        token += c;
      }
      if (!closed) return Result<ScriptLine>(MakeError(ErrorCode::Malformed, u"a quoted token is not closed", static_cast<uint32_t>(number)));
    } else {
      while (i < text.size() && !IsBlank(text[i])) token += text[i++];
    }
    tokens.push_back(std::move(token));
  }
  line.verb = Lower(tokens.front());
  line.args.assign(tokens.begin() + 1, tokens.end());
  return Result<ScriptLine>(std::move(line));
}

std::optional<long long> ParseWholeNumber(TextView text) {
  std::string ascii = ToUtf8(text);
  long long value = 0;
  auto [end, ec] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (ascii.empty() || ec != std::errc() || end != ascii.data() + ascii.size()) return std::nullopt;
  return value;
}

std::optional<double> ParseNumber(TextView text) {
  std::string ascii = ToUtf8(text);
  double value = 0;
  auto [end, ec] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (ascii.empty() || ec != std::errc() || end != ascii.data() + ascii.size()) return std::nullopt;
  return value;
}

std::optional<ControlAddress> ParseControlAddress(TextView text) {
  size_t colon = text.find(u':');
  std::optional<long long> dialog = ParseWholeNumber(text.substr(0, colon));
  if (!dialog) return std::nullopt;
  ControlAddress address{static_cast<int>(*dialog), std::nullopt};
  if (colon == TextView::npos) return address;
  std::optional<long long> control = ParseWholeNumber(text.substr(colon + 1));
  if (!control) return std::nullopt;
  address.control = static_cast<int>(*control);
  return address;
}

}  // namespace tq
