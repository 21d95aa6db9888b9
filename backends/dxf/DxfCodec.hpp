#pragma once
// The text encoding of one DXF file: UTF-8 from AC1021 on, the $DWGCODEPAGE before.
#include <memory>
#include <string>
#include <string_view>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq::dxf {

class DxfCodec {
 public:
  // `acadVersion` is $ACADVER ("AC1009" … "AC1032"), `dwgCodePage` is $DWGCODEPAGE ("ANSI_932").
  DxfCodec(std::string_view acadVersion, std::string_view dwgCodePage);

  bool isUtf8() const { return !codePage_; }
  // The ICU name of the code page; "UTF-8" from AC1021 on.
  std::string encodingName() const { return codePage_ ? codePage_->name() : "UTF-8"; }

  // Bytes of a string value to text, with "\U+XXXX" and "\M+nXXXX" escapes decoded.
  Text Decode(std::string_view raw) const;
  // Whether the bytes decode to `name`, without regard to case (EqualNoCase); a name in
  // ASCII is compared without decoding.
  bool EqualsNoCase(std::string_view raw, TextView name) const;
  // Text to the bytes of a string value; what the code page cannot hold is written "\U+XXXX".
  std::string Encode(TextView text) const;

 private:
  std::unique_ptr<CodePage> codePage_;  // none for UTF-8 files
};

// The ICU converter name for a $DWGCODEPAGE value; windows-1252 for an unknown one.
std::string IcuNameOfDwgCodePage(std::string_view dwgCodePage);

}  // namespace tq::dxf
