#pragma once
// Conversions between UTF-16 text and the bytes of files. One interface, two engines: ICU on
// POSIX (EncodingIcu.cpp), the Windows national-language API on Windows (EncodingWin32.cpp).
// Code pages are named as ICU names them ("CP932", "windows-1252", "ibm-943_P15A-2003");
// on Windows one table turns those names into code page numbers (CodePageNumbers.hpp).
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq {

// Utf16Le and Utf16Be: UTF-16 without a byte-order mark, as some editors save it.
enum class FileEncoding { Utf8Bom, Utf16LeBom, Utf16BeBom, Utf8, SystemCodePage, Utf16Le, Utf16Be };

struct DecodedText {
  Text text;
  FileEncoding encoding = FileEncoding::SystemCodePage;
};

class CodePage;

// UTF-8 or UTF-16 with a byte-order mark; else UTF-16 without one when the NUL bytes of its
// ASCII stand in every other place (no 8-bit text file holds NUL); else UTF-8 when valid; else
// the system code page, the code page of Windows' ANSI functions to the suite (CP932 unless the host configures
// another), which every reader and writer of the installation's files is handed.
DecodedText DecodeTextFile(std::string_view bytes, const CodePage& systemCodePage);

bool IsValidUtf8(std::string_view bytes);

// Invalid bytes decode to replacement characters; nothing throws.
Text DecodeCodePage(std::string_view bytes, const std::string& codePage);
// What the code page cannot hold becomes its default character "?".
std::string EncodeCodePage(TextView text, const std::string& codePage);

// One code page, its converters opened once for many conversions.
class CodePage {
 public:
  // The code page of that name; an error naming it when the platform does not know it.
  static Result<CodePage> Open(const std::string& name);
  // For names the program itself gives; an unknown one is a programming error and throws
  // std::invalid_argument.
  explicit CodePage(const std::string& name);
  ~CodePage();
  CodePage(CodePage&&) noexcept;
  CodePage& operator=(CodePage&&) noexcept;

  const std::string& name() const { return name_; }
  Text Decode(std::string_view bytes) const;
  // Best-fit mappings; what cannot be held becomes "?".
  std::string Encode(TextView text) const;
  // Exact mappings only; nothing when some character cannot be held.
  std::optional<std::string> EncodeExact(TextView text) const;

 private:
  struct Converters;
  std::string name_;
  std::unique_ptr<Converters> converters_;
};

// Text in the given file encoding, with the byte-order mark when the encoding has one.
std::string EncodeFile(TextView text, FileEncoding encoding, const CodePage& systemCodePage, bool withBom = true);

// The half-width mapping of LCMapStringW(LCMAP_HALFWIDTH): full-width ASCII and blank,
// katakana (voiced marks as separate half-width marks) and the Japanese punctuation.
Text ToHalfWidth(TextView text);

}  // namespace tq
