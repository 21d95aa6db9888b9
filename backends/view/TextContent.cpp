#include "view/TextContent.hpp"

namespace tq::view {

Text TextCharacters(TextView raw) {
  Text out;
  out.reserve(raw.size());
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == u'%' && i + 2 < raw.size() && raw[i + 1] == u'%') {
      char16_t c = raw[i + 2];
      switch (c) {
        case u'd': case u'D': out += u'°'; i += 2; continue;
        case u'p': case u'P': out += u'±'; i += 2; continue;
        case u'c': case u'C': out += u'⌀'; i += 2; continue;
        case u'%': out += u'%'; i += 2; continue;
        case u'u': case u'U': case u'o': case u'O': i += 2; continue;
        default: break;
      }
    }
    out += raw[i];
  }
  return out;
}

namespace {
// Switches that take an argument up to ";".
bool TakesArgument(char16_t c) {
  switch (c) {
    case u'f': case u'F': case u'H': case u'W': case u'C': case u'c': case u'A': case u'T': case u'Q':
    case u'p': case u'S':
      return true;
    default:
      return false;
  }
}
}  // namespace

std::vector<Text> MTextLines(TextView raw) {
  std::vector<Text> lines(1);
  for (size_t i = 0; i < raw.size(); ++i) {
    char16_t c = raw[i];
    if (c == u'{' || c == u'}') continue;
    if (c == u'\n') {
      lines.emplace_back();
      continue;
    }
    if (c == u'\r') continue;
    if (c != u'\\' || i + 1 >= raw.size()) {
      lines.back() += c;
      continue;
    }
    char16_t s = raw[++i];
    if (s == u'P') {
      lines.emplace_back();
    } else if (s == u'~') {
      lines.back() += u' ';
    } else if (s == u'\\' || s == u'{' || s == u'}') {
      lines.back() += s;
    } else if (s == u'S') {
      size_t end = raw.find(u';', i + 1);
      TextView stacked = raw.substr(i + 1, end == TextView::npos ? TextView::npos : end - i - 1);
      for (char16_t k : stacked) lines.back() += (k == u'^' || k == u'#') ? u'/' : k;
      i = end == TextView::npos ? raw.size() : end;
    } else if (TakesArgument(s)) {
      size_t end = raw.find(u';', i + 1);
      i = end == TextView::npos ? raw.size() : end;
    }
    // \L \l \O \o \K \k \N and unknown switches show nothing.
  }
  return lines;
}

}  // namespace tq::view
