// UTF-8, the code pages, case folding and the half-width mapping through the Windows
// national-language API.
#include <windows.h>

#include <algorithm>
#include <stdexcept>

#include "base/CodePageNumbers.hpp"
#include "base/Encoding.hpp"
#include "base/TextEngine.hpp"

namespace tq {

namespace {

constexpr UINT kUtf8 = 65001;

const wchar_t* Wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
wchar_t* Wide(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }

std::optional<UINT> Known(const std::string& name) {
  std::optional<unsigned> number = WindowsCodePageNumber(name);
  if (!number || !::IsValidCodePage(*number)) return std::nullopt;
  return *number;
}

UINT NumberOf(const std::string& name) {
  std::optional<UINT> number = Known(name);
  if (!number) throw std::invalid_argument("unknown code page: " + name);
  return *number;
}

// The whole text in one call; nothing when some bytes are not a character of the code page.
std::optional<Text> DecodeStrict(UINT page, std::string_view bytes) {
  if (bytes.empty()) return Text();
  int n = ::MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
  if (n <= 0) return std::nullopt;
  Text out(static_cast<size_t>(n), u'\0');
  ::MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), Wide(out.data()), n);
  return out;
}

// Invalid bytes become U+FFFD, as ICU makes them: Windows alone would give the code page's
// default character ("・" in 932), which reads like text. One character at a time, so only
// for input that failed whole.
Text DecodeReplacing(UINT page, std::string_view bytes) {
  Text out;
  size_t i = 0;
  while (i < bytes.size()) {
    size_t width = (page != kUtf8 && ::IsDBCSLeadByteEx(page, static_cast<BYTE>(bytes[i])) && i + 1 < bytes.size()) ? 2 : 1;
    if (page == kUtf8) {
      // A whole UTF-8 sequence, by its lead byte.
      auto lead = static_cast<unsigned char>(bytes[i]);
      width = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
      width = std::min(width, bytes.size() - i);
    }
    if (std::optional<Text> c = DecodeStrict(page, bytes.substr(i, width))) {
      out += *c;
      i += width;
    } else {
      out += u'\uFFFD';
      ++i;
    }
  }
  return out;
}

std::optional<std::string> EncodeWith(UINT page, DWORD flags, TextView text, bool exact) {
  if (text.empty()) return std::string();
  if (page == kUtf8) return ToUtf8(text);  // every character has its UTF-8 bytes
  BOOL usedDefault = FALSE;
  BOOL* askUsed = exact ? &usedDefault : nullptr;
  int size = static_cast<int>(text.size());
  int n = ::WideCharToMultiByte(page, flags, Wide(text.data()), size, nullptr, 0, "?", askUsed);
  if (n <= 0) return exact ? std::nullopt : std::optional<std::string>(std::string());
  std::string out(static_cast<size_t>(n), '\0');
  ::WideCharToMultiByte(page, flags, Wide(text.data()), size, out.data(), n, "?", askUsed);
  if (usedDefault) return std::nullopt;
  return out;
}

}  // namespace

// Ordinal comparison after upper-casing, as the file system compares names. ICU folds "ß" to
// "ss" where Windows keeps them apart; names in drawings and settings never rely on either.
bool engine::EqualFolded(TextView a, TextView b) {
  return ::CompareStringOrdinal(Wide(a.data()), static_cast<int>(a.size()), Wide(b.data()), static_cast<int>(b.size()), TRUE) ==
         CSTR_EQUAL;
}

// Invalid UTF-16 (a lone surrogate) and invalid UTF-8 become U+FFFD both ways, as with ICU.
std::string ToUtf8(TextView text) {
  if (text.empty()) return std::string();
  int size = static_cast<int>(text.size());
  int n = ::WideCharToMultiByte(kUtf8, 0, Wide(text.data()), size, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<size_t>(n), '\0');
  ::WideCharToMultiByte(kUtf8, 0, Wide(text.data()), size, out.data(), n, nullptr, nullptr);
  return out;
}

Text FromUtf8(std::string_view bytes) {
  if (bytes.empty()) return Text();
  int size = static_cast<int>(bytes.size());
  int n = ::MultiByteToWideChar(kUtf8, 0, bytes.data(), size, nullptr, 0);
  Text out(static_cast<size_t>(n), u'\0');
  ::MultiByteToWideChar(kUtf8, 0, bytes.data(), size, Wide(out.data()), n);
  return out;
}


bool IsValidUtf8(std::string_view bytes) {
  if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) return true;
  return DecodeStrict(kUtf8, bytes).has_value();
}

// The national-language calls keep no state: one code page number is all a CodePage holds.
struct CodePage::Converters {
  UINT number = 0;
};

Result<CodePage> CodePage::Open(const std::string& name) {
  if (!Known(name)) return MakeError(ErrorCode::InvalidValue, "unknown code page: " + name);
  return CodePage(name);
}

CodePage::CodePage(const std::string& name) : name_(name), converters_(std::make_unique<Converters>()) {
  converters_->number = NumberOf(name);
}

CodePage::~CodePage() = default;
CodePage::CodePage(CodePage&&) noexcept = default;
CodePage& CodePage::operator=(CodePage&&) noexcept = default;

Text CodePage::Decode(std::string_view bytes) const {
  if (std::optional<Text> text = DecodeStrict(converters_->number, bytes)) return std::move(*text);
  return DecodeReplacing(converters_->number, bytes);
}

std::string CodePage::Encode(TextView text) const {
  return EncodeWith(converters_->number, 0, text, false).value_or(std::string());
}

std::optional<std::string> CodePage::EncodeExact(TextView text) const {
  return EncodeWith(converters_->number, WC_NO_BEST_FIT_CHARS, text, true);
}

namespace {
// ICU maps the conjoining Hangul letters and leaves the compatibility ones; Windows does the
// opposite. The system keeps both as they are, on every platform.
bool HangulLetter(char16_t c) { return (c >= 0x1100 && c <= 0x11FF) || (c >= 0x3130 && c <= 0x318F); }

Text MapHalfWidth(TextView text) {
  if (text.empty()) return Text();
  int size = static_cast<int>(text.size());
  int n = ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_HALFWIDTH, Wide(text.data()), size, nullptr, 0, nullptr, nullptr, 0);
  if (n <= 0) return Text(text);
  Text out(static_cast<size_t>(n), u'\0');
  ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_HALFWIDTH, Wide(text.data()), size, Wide(out.data()), n, nullptr, nullptr, 0);
  return out;
}
}  // namespace

Text ToHalfWidth(TextView text) {
  // Nothing below the Hangul letters (U+1100) has a half-width form; most sheet names are ASCII.
  if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x1100; })) return Text(text);
  // Runs without Hangul letters are mapped; the letters go out as they came.
  Text out;
  size_t begin = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && !HangulLetter(text[i])) continue;
    out += MapHalfWidth(text.substr(begin, i - begin));
    if (i < text.size()) out += text[i];
    begin = i + 1;
  }
  return out;
}

}  // namespace tq
