// The parser holds to what rc makes of the same script: the script compiled by windres (a
// .res file) is read back here and compared, dialog by dialog and control by control.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "dialog/DialogTemplate.hpp"

namespace tq::dialog {
namespace {

// What a compiled dialog holds, read from its DLGTEMPLATEEX.
struct CompiledControl {
  uint32_t id = 0, style = 0, exStyle = 0;
  int x = 0, y = 0, cx = 0, cy = 0;
  Text windowClass, caption;
};
struct CompiledDialog {
  uint32_t style = 0, exStyle = 0;
  int x = 0, y = 0, cx = 0, cy = 0;
  Text caption, fontName;
  int fontSize = 0;
  std::vector<CompiledControl> controls;
};

class Bytes {
 public:
  Bytes(const std::vector<uint8_t>& data, size_t begin, size_t end) : data_(data), pos_(begin), end_(end) {}
  bool Done() const { return pos_ >= end_; }
  size_t Pos() const { return pos_; }
  void Seek(size_t pos) { pos_ = pos; }
  void Align(size_t base) { pos_ = base + ((pos_ - base + 3) & ~size_t(3)); }
  uint16_t Word() {
    if (!Need(2)) return 0;
    uint16_t value = uint16_t(data_[pos_] | data_[pos_ + 1] << 8);
    pos_ += 2;
    return value;
  }
  uint32_t Dword() {
    uint32_t low = Word();
    return low | uint32_t(Word()) << 16;
  }
  int Short() { return int16_t(Word()); }
  uint8_t Byte() { return Need(1) ? data_[pos_++] : 0; }
  Text String() {
    Text s;
    for (uint16_t c; (c = Word()) != 0 && !Done();) s += char16_t(c);
    return s;
  }
  // A name or an ordinal (0xFFFF and a number), as a template stores its class and caption.
  Text NameOrOrdinal(uint16_t* ordinal) {
    *ordinal = 0;
    if (Need(2) && data_[pos_] == 0xFF && data_[pos_ + 1] == 0xFF) {
      Word();
      *ordinal = Word();
      return {};
    }
    return String();
  }

 private:
  bool Need(size_t n) {
    if (pos_ + n <= end_) return true;
    ADD_FAILURE() << "the compiled resource ends early";
    pos_ = end_;
    return false;
  }
  const std::vector<uint8_t>& data_;
  size_t pos_, end_;
};

Text ClassOfOrdinal(uint16_t ordinal) {
  switch (ordinal) {
    case 0x80: return u"BUTTON";
    case 0x81: return u"EDIT";
    case 0x82: return u"STATIC";
    case 0x85: return u"COMBOBOX";
    default: return u"#" + FromUtf8(std::to_string(ordinal));
  }
}

CompiledDialog ReadDialog(Bytes in) {
  size_t base = in.Pos();
  CompiledDialog d;
  EXPECT_EQ(in.Word(), 1);       // dlgVer
  EXPECT_EQ(in.Word(), 0xFFFF);  // signature of DLGTEMPLATEEX
  in.Dword();                    // help id
  d.exStyle = in.Dword();
  d.style = in.Dword();
  int count = in.Word();
  d.x = in.Short(), d.y = in.Short(), d.cx = in.Short(), d.cy = in.Short();
  uint16_t ordinal;
  in.NameOrOrdinal(&ordinal);  // menu
  in.NameOrOrdinal(&ordinal);  // class
  d.caption = in.String();
  if (d.style & 0x40) {  // DS_SETFONT
    d.fontSize = in.Word();
    in.Word(), in.Byte(), in.Byte();  // weight, italic, charset
    d.fontName = in.String();
  }
  for (int i = 0; i < count; ++i) {
    in.Align(base);
    CompiledControl c;
    in.Dword();  // help id
    c.exStyle = in.Dword();
    c.style = in.Dword();
    c.x = in.Short(), c.y = in.Short(), c.cx = in.Short(), c.cy = in.Short();
    c.id = in.Dword();
    Text name = in.NameOrOrdinal(&ordinal);
    c.windowClass = ordinal ? ClassOfOrdinal(ordinal) : name;
    c.caption = in.NameOrOrdinal(&ordinal);
    uint16_t creationData = in.Word();
    in.Seek(in.Pos() + creationData);
    d.controls.push_back(std::move(c));
  }
  return d;
}

// The dialogs and strings of a 32-bit .res file: a list of headed entries, each aligned to
// four bytes.
struct CompiledResources {
  std::map<int, CompiledDialog> dialogs;
  std::map<int, Text> strings;
};

CompiledResources ReadRes(const std::vector<uint8_t>& data) {
  CompiledResources out;
  Bytes in(data, 0, data.size());
  while (!in.Done()) {
    size_t start = in.Pos();
    uint32_t dataSize = in.Dword();
    uint32_t headerSize = in.Dword();
    uint16_t type = 0, name = 0;
    in.NameOrOrdinal(&type);
    in.NameOrOrdinal(&name);
    size_t body = start + headerSize;
    if (type == 5) out.dialogs[name] = ReadDialog(Bytes(data, body, body + dataSize));
    if (type == 6) {  // RT_STRING: blocks of sixteen counted strings
      Bytes block(data, body, body + dataSize);
      for (int i = 0; i < 16; ++i) {
        Text s;
        for (int n = block.Word(); n > 0; --n) s += char16_t(block.Word());
        if (!s.empty()) out.strings[(name - 1) * 16 + i] = s;
      }
    }
    in.Seek(body + dataSize);
    in.Align(0);
  }
  return out;
}

TEST(CompiledResources, ParserReadsTheScriptAsWindresCompilesIt) {
#ifndef TQ_COMPILED_RES
  GTEST_SKIP() << "windres was not found when the build was configured";
#else
  std::ifstream file(TQ_COMPILED_RES, std::ios::binary);
  ASSERT_TRUE(file) << TQ_COMPILED_RES;
  std::vector<uint8_t> data((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  CompiledResources compiled = ReadRes(data);
  const ResourceScript& parsed = BuiltInResources();

  ASSERT_EQ(compiled.dialogs.size(), parsed.dialogs.size());
  for (const DialogTemplate& d : parsed.dialogs) {
    ASSERT_EQ(compiled.dialogs.count(d.id), 1u) << d.id;
    const CompiledDialog& c = compiled.dialogs.at(d.id);
    EXPECT_EQ(d.style, c.style) << d.id;
    EXPECT_EQ(d.exStyle, c.exStyle) << d.id;
    EXPECT_EQ(d.caption, c.caption) << d.id;
    EXPECT_EQ(d.fontName, c.fontName) << d.id;
    EXPECT_EQ(d.fontSize, c.fontSize) << d.id;
    EXPECT_EQ(std::vector<int>({d.x, d.y, d.cx, d.cy}), std::vector<int>({c.x, c.y, c.cx, c.cy})) << d.id;
    ASSERT_EQ(d.controls.size(), c.controls.size()) << d.id;
    for (size_t i = 0; i < d.controls.size(); ++i) {
      const ControlTemplate& p = d.controls[i];
      const CompiledControl& w = c.controls[i];
      std::string where = "dialog " + std::to_string(d.id) + " control " + std::to_string(i) + " (" + std::to_string(p.id) + ")";
      EXPECT_EQ(uint32_t(p.id), w.id) << where;
      EXPECT_EQ(p.style, w.style) << where;
      EXPECT_EQ(p.exStyle, w.exStyle) << where;
      // windres writes a class it has no ordinal for in capitals; Windows ignores the case.
      EXPECT_TRUE(EqualNoCase(p.windowClass, w.windowClass)) << where << ": " << ToUtf8(w.windowClass);
      EXPECT_EQ(p.caption, w.caption) << where;
      EXPECT_EQ(std::vector<int>({p.x, p.y, p.cx, p.cy}), std::vector<int>({w.x, w.y, w.cx, w.cy})) << where;
    }
  }
  EXPECT_EQ(parsed.strings, compiled.strings);
#endif
}

}  // namespace
}  // namespace tq::dialog
