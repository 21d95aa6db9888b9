#pragma once
// The text encoding of one DXF file: UTF-8 from AC1021 on, the $DWGCODEPAGE before.
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq::dxf {

// Where a drawing's code page comes from.
enum class CodePageSource {
  Version,       // UTF-8, from AC1021 on
  DwgCodePage,   // the $DWGCODEPAGE the file names
  SystemNoName,  // the system code page: the file names none, or "UNDEFINED"
  SystemUnknown, // the system code page: the file names one that is not known
};

class DxfCodec {
 public:
  // `acadVersion` is $ACADVER ("AC1009" … "AC1032"), `dwgCodePage` is $DWGCODEPAGE ("ANSI_932"),
  // empty when the file has none; `systemCodePage` (an ICU name) reads a file that names no
  // code page, as a Windows of that code page would.
  DxfCodec(std::string_view acadVersion, std::string_view dwgCodePage, const std::string& systemCodePage = "CP932");

  bool isUtf8() const { return !codePage_; }
  // The ICU name of the code page; "UTF-8" from AC1021 on.
  std::string encodingName() const { return codePage_ ? codePage_->name() : "UTF-8"; }
  CodePageSource source() const { return source_; }
  // What the reader of the drawing should know of its code page; empty when all is well.
  const std::string& warning() const { return warning_; }

  // Bytes of a string value to text, with "\U+XXXX" and "\M+nXXXX" escapes decoded.
  Text Decode(std::string_view raw) const;
  // Whether the bytes decode to `name`, without regard to case (EqualNoCase); a name in
  // ASCII is compared without decoding.
  bool EqualsNoCase(std::string_view raw, TextView name) const;
  // Text to the bytes of a string value; what the code page cannot hold is written "\U+XXXX".
  std::string Encode(TextView text) const;

 private:
  Text DecodeCodePage(std::string_view raw) const;

  std::unique_ptr<CodePage> codePage_;  // none for UTF-8 files
  // An ICU converter holds state while it converts: one conversion at a time, so that a
  // drawing can be read from several threads.
  mutable std::mutex mutex_;
  CodePageSource source_ = CodePageSource::Version;
  std::string warning_;
};

// The ICU converter name for a $DWGCODEPAGE value, as AutoCAD and other programs write them
// ("ANSI_932", "dos932", "DOS850", "big5", "ISO8859-1", …); empty for one not known and for
// "UNDEFINED".
std::string IcuNameOfDwgCodePage(std::string_view dwgCodePage);

}  // namespace tq::dxf
