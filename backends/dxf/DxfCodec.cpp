#include "dxf/DxfCodec.hpp"

#include <cctype>
#include <cstdio>
#include <utility>

namespace tq::dxf {

namespace {

int HexValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

bool ReadHex(TextView text, size_t at, size_t count, unsigned& value) {
  if (at + count > text.size()) return false;
  value = 0;
  for (size_t i = 0; i < count; ++i) {
    int h = HexValue(text[at + i]);
    if (h < 0) return false;
    value = value * 16 + static_cast<unsigned>(h);
  }
  return true;
}

// The code pages of "\M+n" escapes.
const char* MultiByteCodePage(char16_t n) {
  switch (n) {
    case u'1': return "windows-31j";
    case u'2': return "windows-950";
    case u'3': return "windows-949";
    case u'4': return "ibm-1363";
    case u'5': return "windows-936";
    default: return nullptr;
  }
}

// Bytes that read the same in every code page a drawing names and hold no escape.
bool PlainAscii(std::string_view raw) {
  for (char c : raw)
    if (static_cast<unsigned char>(c) >= 0x80 || c == '\\') return false;
  return true;
}

bool AsciiText(TextView text) {
  for (char16_t c : text)
    if (c >= 0x80) return false;
  return true;
}

Text DecodeEscapes(Text text) {
  if (text.find(u'\\') == Text::npos) return text;
  Text out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned v;
    if (text[i] == u'\\' && i + 2 < text.size() && (text[i + 1] == u'U' || text[i + 1] == u'u') &&
        text[i + 2] == u'+' && ReadHex(text, i + 3, 4, v)) {
      out += static_cast<char16_t>(v);
      i += 6;
      continue;
    }
    const char* page = nullptr;
    if (text[i] == u'\\' && i + 3 < text.size() && (text[i + 1] == u'M' || text[i + 1] == u'm') &&
        text[i + 2] == u'+' && (page = MultiByteCodePage(text[i + 3])) && ReadHex(text, i + 4, 4, v)) {
      std::string bytes{static_cast<char>(v >> 8), static_cast<char>(v & 0xFF)};
      try {
        out += DecodeCodePage(bytes, page);
      } catch (const std::exception&) {
        out += u'\uFFFD';
      }
      i += 7;
      continue;
    }
    out += text[i];
  }
  return out;
}

}  // namespace

std::string IcuNameOfDwgCodePage(std::string_view dwgCodePage) {
  std::string upper;
  for (char c : dwgCodePage) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  auto number = [&](std::string_view prefix) { return upper.starts_with(prefix) ? upper.substr(prefix.size()) : std::string(); };
  // The Windows (ANSI) and DOS (OEM) code pages by number: the double-byte ones are the same
  // in both; the DOS single-byte ones are IBM's.
  auto byNumber = [](const std::string& n, bool dos) -> std::string {
    if (n.empty() || n.find_first_not_of("0123456789") != std::string::npos) return {};
    if (n == "932") return "windows-31j";
    if (n == "936" || n == "949" || n == "950") return "windows-" + n;
    if (n == "1361") return "ibm-1363";
    if (dos) return "ibm-" + n;
    if (n == "874" || (n.size() == 4 && n.starts_with("125"))) return "windows-" + n;
    return {};
  };
  if (std::string n = number("ANSI_"); !n.empty()) return byNumber(n, false);
  if (std::string n = number("DOS"); !n.empty()) return byNumber(n, true);
  if (std::string n = number("ISO8859-"); !n.empty() && n.size() <= 2 && n.find_first_not_of("0123456789") == std::string::npos)
    return "ISO-8859-" + n;
  static constexpr std::pair<std::string_view, std::string_view> kNamed[] = {
      {"ASCII", "US-ASCII"},      {"MAC-ROMAN", "macintosh"}, {"BIG5", "windows-950"}, {"KSC5601", "windows-949"},
      {"JOHAB", "ibm-1363"},      {"GB2312", "windows-936"},  {"UTF8", "UTF-8"},      {"UTF-8", "UTF-8"},
      {"SJIS", "windows-31j"},    {"SHIFT_JIS", "windows-31j"}};
  for (auto [name, icu] : kNamed)
    if (upper == name) return std::string(icu);
  return {};
}

DxfCodec::DxfCodec(std::string_view acadVersion, std::string_view dwgCodePage, const std::string& systemCodePage) {
  bool utf8 = acadVersion.size() >= 6 && acadVersion.substr(0, 2) == "AC" && acadVersion.substr(2) >= "1021";
  if (utf8) return;
  std::string name = IcuNameOfDwgCodePage(dwgCodePage);
  source_ = CodePageSource::DwgCodePage;
  std::string upper(dwgCodePage);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (name.empty()) {
    bool named = !dwgCodePage.empty() && upper != "UNDEFINED";
    source_ = named ? CodePageSource::SystemUnknown : CodePageSource::SystemNoName;
    if (named) warning_ = "$DWGCODEPAGE " + std::string(dwgCodePage) + " is not a code page known here; read in the system code page " + systemCodePage;
    name = systemCodePage;
  }
  try {
    codePage_ = std::make_unique<CodePage>(name);
  } catch (const std::invalid_argument&) {
    warning_ = "no converter for the code page " + name + "; read as windows-1252";
    codePage_ = std::make_unique<CodePage>("windows-1252");
  }
}

Text DxfCodec::DecodeCodePage(std::string_view raw) const {
  std::lock_guard lock(mutex_);
  return codePage_->Decode(raw);
}

Text DxfCodec::Decode(std::string_view raw) const {
  if (PlainAscii(raw)) return Text(raw.begin(), raw.end());
  return DecodeEscapes(codePage_ ? DecodeCodePage(raw) : FromUtf8(raw));
}

bool DxfCodec::EqualsNoCase(std::string_view raw, TextView name) const {
  if (!PlainAscii(raw) || !AsciiText(name)) return EqualNoCase(Decode(raw), name);
  if (raw.size() != name.size()) return false;
  auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
  for (size_t i = 0; i < raw.size(); ++i)
    if (lower(static_cast<unsigned char>(raw[i])) != lower(name[i])) return false;
  return true;
}

std::string DxfCodec::Encode(TextView text) const {
  // ASCII is the same bytes in every code page a drawing names, as Decode takes it.
  if (AsciiText(text)) return std::string(text.begin(), text.end());
  if (!codePage_) return ToUtf8(text);
  std::lock_guard lock(mutex_);
  if (std::optional<std::string> exact = codePage_->EncodeExact(text)) return *exact;
  std::string out;
  for (char16_t c : text) {
    std::optional<std::string> bytes = codePage_->EncodeExact(TextView(&c, 1));
    if (bytes) {
      out += *bytes;
    } else {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\U+%04X", static_cast<unsigned>(c));
      out += escape;
    }
  }
  return out;
}

}  // namespace tq::dxf
