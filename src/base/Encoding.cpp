#include "base/Encoding.hpp"

#include <optional>

// What the conversions share on every platform: the byte-order marks and UTF-16 in bytes. The
// code pages themselves, UTF-8 and the half-width mapping are the platform's: EncodingIcu.cpp
// on POSIX, EncodingWin32.cpp on Windows.

namespace tq {

namespace {

Text Utf16FromBytes(std::string_view bytes, bool bigEndian) {
  Text out;
  out.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    auto lo = static_cast<unsigned char>(bytes[i]), hi = static_cast<unsigned char>(bytes[i + 1]);
    out += bigEndian ? static_cast<char16_t>(lo << 8 | hi) : static_cast<char16_t>(hi << 8 | lo);
  }
  return out;
}

std::string Utf16ToBytes(TextView text, bool bigEndian) {
  std::string out;
  out.reserve(text.size() * 2);
  for (char16_t c : text) {
    char hi = static_cast<char>(c >> 8), lo = static_cast<char>(c & 0xFF);
    out += bigEndian ? hi : lo;
    out += bigEndian ? lo : hi;
  }
  return out;
}

// UTF-16 without a byte-order mark: NUL bytes, all in odd places (little-endian) or all in
// even places (big-endian), in a file of whole units.
std::optional<FileEncoding> Utf16WithoutBom(std::string_view bytes) {
  if (bytes.size() < 2 || bytes.size() % 2 != 0 || bytes.find('\0') == std::string_view::npos) return std::nullopt;
  size_t even = 0, odd = 0;
  for (size_t i = 0; i < bytes.size(); ++i)
    if (bytes[i] == '\0') ++(i % 2 ? odd : even);
  if (odd && !even) return FileEncoding::Utf16Le;
  if (even && !odd) return FileEncoding::Utf16Be;
  return std::nullopt;
}

}  // namespace

DecodedText DecodeTextFile(std::string_view bytes, const CodePage& systemCodePage) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return {FromUtf8(bytes.substr(3)), FileEncoding::Utf8Bom};
  if (bytes.starts_with("\xFF\xFE")) return {Utf16FromBytes(bytes.substr(2), false), FileEncoding::Utf16LeBom};
  if (bytes.starts_with("\xFE\xFF")) return {Utf16FromBytes(bytes.substr(2), true), FileEncoding::Utf16BeBom};
  if (std::optional<FileEncoding> utf16 = Utf16WithoutBom(bytes))
    return {Utf16FromBytes(bytes, *utf16 == FileEncoding::Utf16Be), *utf16};
  if (IsValidUtf8(bytes)) return {FromUtf8(bytes), FileEncoding::Utf8};
  return {systemCodePage.Decode(bytes), FileEncoding::SystemCodePage};
}

Text DecodeCodePage(std::string_view bytes, const std::string& codePage) { return CodePage(codePage).Decode(bytes); }

std::string EncodeCodePage(TextView text, const std::string& codePage) { return CodePage(codePage).Encode(text); }

std::string EncodeFile(TextView text, FileEncoding encoding, const CodePage& systemCodePage, bool withBom) {
  switch (encoding) {
    case FileEncoding::Utf8Bom: return (withBom ? "\xEF\xBB\xBF" : "") + ToUtf8(text);
    case FileEncoding::Utf8: return ToUtf8(text);
    case FileEncoding::Utf16LeBom: return (withBom ? "\xFF\xFE" : "") + Utf16ToBytes(text, false);
    case FileEncoding::Utf16BeBom: return (withBom ? "\xFE\xFF" : "") + Utf16ToBytes(text, true);
    case FileEncoding::Utf16Le: return Utf16ToBytes(text, false);
    case FileEncoding::Utf16Be: return Utf16ToBytes(text, true);
    case FileEncoding::SystemCodePage: break;
  }
  return systemCodePage.Encode(text);
}

}  // namespace tq
