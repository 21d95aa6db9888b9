// Reads the dialogs and the string table of a Windows resource script. Written by hand: no
// library reads resource scripts, and the hosts need only the DIALOGEX and STRINGTABLE forms
// with the control statements rc knows.
#include <algorithm>
#include <string>

#include "dialog/DialogTemplate.hpp"
#include "dialog/ResourceHeader.hpp"
#include "dialog/StyleNames.hpp"
#include "dialog/TokenCursor.hpp"

namespace tq::dialog {
namespace {

constexpr uint32_t kChild = 0x40000000;  // WS_CHILD

// A control statement: whether it starts with a caption, the class it makes, the style rc
// gives it when none is written, and the style a written one is added to. The two differ:
// with a style written, radio buttons, three-state boxes and statics lose their WS_TABSTOP or
// WS_GROUP, and a combo box keeps nothing of its own (as windres compiles them).
struct Statement {
  TextView keyword;
  bool hasCaption;
  TextView windowClass;
  uint32_t impliedStyle;
  uint32_t baseStyle;
};

constexpr uint32_t kThreeState = 0x5, kAutoThreeState = 0x6;  // BS_3STATE, BS_AUTO3STATE

constexpr Statement kStatements[] = {
    {u"PUSHBUTTON", true, u"BUTTON", style::kPushButton | style::kTabStop, style::kPushButton | style::kTabStop},
    {u"DEFPUSHBUTTON", true, u"BUTTON", style::kDefPushButton | style::kTabStop, style::kDefPushButton | style::kTabStop},
    {u"CHECKBOX", true, u"BUTTON", style::kCheckBox | style::kTabStop, style::kCheckBox | style::kTabStop},
    {u"AUTOCHECKBOX", true, u"BUTTON", style::kAutoCheckBox | style::kTabStop, style::kAutoCheckBox | style::kTabStop},
    {u"STATE3", true, u"BUTTON", kThreeState | style::kTabStop, kThreeState},
    {u"AUTO3STATE", true, u"BUTTON", kAutoThreeState | style::kTabStop, kAutoThreeState},
    {u"RADIOBUTTON", true, u"BUTTON", style::kRadioButton | style::kTabStop, style::kRadioButton},
    {u"AUTORADIOBUTTON", true, u"BUTTON", style::kAutoRadioButton | style::kTabStop, style::kAutoRadioButton},
    {u"GROUPBOX", true, u"BUTTON", style::kGroupBox, style::kGroupBox},
    {u"LTEXT", true, u"STATIC", style::kGroup, 0},
    {u"RTEXT", true, u"STATIC", style::kStaticRight | style::kGroup, style::kStaticRight},
    {u"CTEXT", true, u"STATIC", style::kStaticCenter | style::kGroup, style::kStaticCenter},
    {u"EDITTEXT", false, u"EDIT", style::kBorder | style::kTabStop, style::kBorder | style::kTabStop},
    {u"COMBOBOX", false, u"COMBOBOX", style::kComboSimple | style::kTabStop, 0},
};

constexpr TextView kClasses[] = {u"BUTTON", u"EDIT", u"STATIC", u"COMBOBOX", u"SysListView32"};

// The class as the hosts name it, whatever the case it is written in.
const TextView* KnownClass(TextView written) {
  auto it = std::find_if(std::begin(kClasses), std::end(kClasses), [&](TextView c) { return EqualNoCase(c, written); });
  return it == std::end(kClasses) ? nullptr : it;
}

ControlKind KindOf(TextView windowClass, uint32_t controlStyle) {
  if (windowClass == u"EDIT") return ControlKind::Edit;
  if (windowClass == u"STATIC") return ControlKind::Static;
  if (windowClass == u"COMBOBOX") return ControlKind::Combo;
  if (windowClass == u"SysListView32") return ControlKind::List;
  switch (controlStyle & style::kButtonTypeMask) {
    case style::kCheckBox: case style::kAutoCheckBox: case kThreeState: case kAutoThreeState: return ControlKind::Check;
    case style::kRadioButton: case style::kAutoRadioButton: return ControlKind::Radio;
    case style::kGroupBox: return ControlKind::Group;
    default: return ControlKind::Button;
  }
}

class ScriptReader {
 public:
  ScriptReader(std::span<const Token> tokens, uint32_t lastLine, Symbols symbols)
      : in_(tokens, lastLine), symbols_(std::move(symbols)) {}

  Result<ResourceScript> Run() {
    while (!in_.AtEnd()) {
      if (Status s = TopLevel(); !s) return s.error();
    }
    return std::move(script_);
  }

 private:
  Status TopLevel() {
    if (in_.NextIs(TokenKind::Directive)) return Directive(in_.Take());
    if (in_.NextIsName(u"LANGUAGE")) {
      in_.SkipLine(in_.Line());
      return {};
    }
    if (in_.NextIsName(u"STRINGTABLE")) {
      in_.Take();
      return StringTable();
    }
    uint32_t line = in_.Line();
    Text symbol;
    Result<int64_t> id = in_.Number(symbols_, &symbol);
    if (!id) return id.error();
    if (!in_.NextIs(TokenKind::Name)) return in_.Fail("expected the type of resource " + ToUtf8(symbol));
    const Token& type = in_.Take();
    if (type.text != u"DIALOGEX" && type.text != u"DIALOG")
      return MakeError(ErrorCode::Unsupported, "a resource of type " + ToUtf8(type.text) + " is not read", line);
    return Dialog(static_cast<int>(*id), symbol, line);
  }

  // The script's own directives: its includes and its code page. The Windows headers are
  // not read: the names the script takes from them are known here.
  Status Directive(const Token& directive) {
    Text text = Trim(directive.text);
    if (StartsWith(text, u"include")) return {};
    if (StartsWith(text, u"pragma")) {
      Text rest(TextView(text).substr(6));
      std::erase_if(rest, [](char16_t c) { return c == u' ' || c == u'\t'; });
      if (rest == u"code_page(65001)") return {};
      return MakeError(ErrorCode::Unsupported, "only #pragma code_page(65001) is read: the script is UTF-8", directive.line);
    }
    return MakeError(ErrorCode::Unsupported, "a directive that is not read: #" + ToUtf8(text), directive.line);
  }

  Status StringTable() {
    while (!in_.AtEnd() && !in_.NextIsName(u"BEGIN")) in_.Take();  // LANGUAGE and the like
    if (Status s = Keyword(u"BEGIN", "BEGIN after STRINGTABLE"); !s) return s;
    while (!in_.NextIsName(u"END")) {
      if (in_.AtEnd()) return in_.Fail("the string table ends before its END");
      uint32_t line = in_.Line();
      Result<int64_t> id = in_.Number(symbols_);
      if (!id) return id.error();
      in_.Accept(TokenKind::Comma);
      Result<Text> text = in_.ExpectString("the string");
      if (!text) return text.error();
      if (!script_.strings.emplace(static_cast<int>(*id), std::move(*text)).second)
        return MakeError(ErrorCode::Malformed, "a second string with id " + std::to_string(*id), line);
    }
    in_.Take();
    return {};
  }

  Status Dialog(int id, const Text& symbol, uint32_t line) {
    if (script_.FindDialog(id)) return MakeError(ErrorCode::Malformed, "a second dialog with id " + std::to_string(id), line);
    DialogTemplate dialog;
    dialog.id = id;
    dialog.symbol = symbol;
    if (Status s = Rectangle(dialog.x, dialog.y, dialog.cx, dialog.cy); !s) return s;
    if (in_.Accept(TokenKind::Comma)) {
      if (Result<int64_t> help = in_.Number(symbols_); !help) return help.error();
    }
    if (Status s = DialogOptions(dialog); !s) return s;
    if (Status s = Keyword(u"BEGIN", "BEGIN to open the controls of " + Name(dialog)); !s) return s;
    while (!in_.NextIsName(u"END")) {
      if (in_.AtEnd())
        return MakeError(ErrorCode::Malformed, "the dialog " + Name(dialog) + " (line " + std::to_string(line) + ") ends before its END", in_.Line());
      Result<ControlTemplate> control = Control();
      if (!control) return control.error();
      dialog.controls.push_back(std::move(*control));
    }
    in_.Take();
    script_.dialogs.push_back(std::move(dialog));
    return {};
  }

  static std::string Name(const DialogTemplate& dialog) {
    return dialog.symbol.empty() ? std::to_string(dialog.id) : ToUtf8(dialog.symbol);
  }

  Status DialogOptions(DialogTemplate& dialog) {
    while (in_.NextIs(TokenKind::Name) && !in_.NextIsName(u"BEGIN")) {
      const Token& option = in_.Take();
      Status s;
      if (option.text == u"STYLE") {
        s = Style(dialog.style);
      } else if (option.text == u"EXSTYLE") {
        s = Style(dialog.exStyle);
      } else if (option.text == u"CAPTION") {
        Result<Text> caption = in_.ExpectString("the caption");
        if (!caption) return caption.error();
        dialog.caption = std::move(*caption);
      } else if (option.text == u"FONT") {
        s = Font(dialog);
      } else if (option.text == u"LANGUAGE" || option.text == u"CHARACTERISTICS" || option.text == u"VERSION") {
        in_.SkipLine(option.line);
      } else {
        return MakeError(ErrorCode::Unsupported, "a dialog statement that is not read: " + ToUtf8(option.text), option.line);
      }
      if (!s) return s;
    }
    return {};
  }

  // FONT size, "name" [, weight, italic, charset]: the hosts use the size and the name.
  Status Font(DialogTemplate& dialog) {
    Result<int64_t> size = in_.Number(symbols_);
    if (!size) return size.error();
    if (Status s = in_.Expect(TokenKind::Comma, "\",\" after the font size"); !s) return s;
    Result<Text> name = in_.ExpectString("the font name");
    if (!name) return name.error();
    dialog.fontSize = static_cast<int>(*size);
    dialog.fontName = std::move(*name);
    for (int i = 0; i < 3 && in_.Accept(TokenKind::Comma); ++i) {
      if (Result<int64_t> v = in_.Number(symbols_); !v) return v.error();
    }
    return {};
  }

  Result<ControlTemplate> Control() {
    if (!in_.NextIs(TokenKind::Name)) return in_.Fail("expected a control statement");
    const Token& keyword = in_.Take();
    if (keyword.text == u"CONTROL") return GenericControl();
    auto it = std::find_if(std::begin(kStatements), std::end(kStatements),
                           [&](const Statement& s) { return s.keyword == keyword.text; });
    if (it == std::end(kStatements))
      return MakeError(ErrorCode::Unsupported, "a control statement that is not read: " + ToUtf8(keyword.text), keyword.line);
    return ShorthandControl(*it);
  }

  // PUSHBUTTON "caption", id, x, y, cx, cy [, style [, exstyle [, helpid]]], and the others.
  Result<ControlTemplate> ShorthandControl(const Statement& form) {
    ControlTemplate c;
    c.windowClass = Text(form.windowClass);
    if (form.hasCaption) {
      if (Status s = Caption(c); !s) return s.error();
    }
    if (Status s = Id(c); !s) return s.error();
    if (Status s = Comma(); !s) return s.error();
    if (Status s = Rectangle(c.x, c.y, c.cx, c.cy); !s) return s.error();
    c.style = style::kVisible | kChild | form.impliedStyle;
    if (in_.Accept(TokenKind::Comma)) {
      c.style = style::kVisible | kChild | form.baseStyle;
      if (Status s = Style(c.style); !s) return s.error();
      if (Status s = Extras(c); !s) return s.error();
    }
    c.kind = KindOf(c.windowClass, c.style);
    return c;
  }

  // CONTROL "caption", id, class, style, x, y, cx, cy [, exstyle [, helpid]].
  Result<ControlTemplate> GenericControl() {
    ControlTemplate c;
    if (Status s = Caption(c); !s) return s.error();
    if (Status s = Id(c); !s) return s.error();
    if (Status s = Comma(); !s) return s.error();
    if (in_.AtEnd() || (!in_.NextIs(TokenKind::String) && !in_.NextIs(TokenKind::Name))) return in_.Fail("expected the window class");
    const Token& written = in_.Take();
    const TextView* known = KnownClass(written.text);
    if (!known) return MakeError(ErrorCode::Unsupported, "a window class that is not read: " + ToUtf8(written.text), written.line);
    c.windowClass = Text(*known);
    if (Status s = Comma(); !s) return s.error();
    c.style = style::kVisible | kChild;
    if (Status s = Style(c.style); !s) return s.error();
    if (Status s = Comma(); !s) return s.error();
    if (Status s = Rectangle(c.x, c.y, c.cx, c.cy); !s) return s.error();
    if (Status s = Extras(c); !s) return s.error();
    c.kind = KindOf(c.windowClass, c.style);
    return c;
  }

  Status Caption(ControlTemplate& c) {
    Result<Text> caption = in_.ExpectString("the control's caption");
    if (!caption) return caption.error();
    c.caption = std::move(*caption);
    return Comma();
  }

  Status Id(ControlTemplate& c) {
    Text symbol;
    Result<int64_t> id = in_.Number(symbols_, &symbol);
    if (!id) return id.error();
    c.id = static_cast<int>(*id);
    if (c.id != -1) c.symbol = std::move(symbol);
    return {};
  }

  // [, exstyle [, helpid]] after the style.
  Status Extras(ControlTemplate& c) {
    if (!in_.Accept(TokenKind::Comma)) return {};
    if (Status s = Style(c.exStyle); !s) return s;
    if (in_.Accept(TokenKind::Comma)) {
      if (Result<int64_t> help = in_.Number(symbols_); !help) return help.error();
    }
    return {};
  }

  Status Rectangle(int& x, int& y, int& cx, int& cy) {
    int* parts[] = {&x, &y, &cx, &cy};
    for (size_t i = 0; i < 4; ++i) {
      if (i > 0) {
        if (Status s = Comma(); !s) return s;
      }
      Result<int64_t> v = in_.Number(symbols_);
      if (!v) return v.error();
      *parts[i] = static_cast<int>(*v);
    }
    return {};
  }

  // Names, numbers and parentheses joined by "|"; "NOT x" clears the bits of x from what
  // stands before it.
  Status Style(uint32_t& value) {
    do {
      bool clear = false;
      if (in_.NextIsName(u"NOT")) {
        in_.Take();
        clear = true;
      }
      Result<uint32_t> term = StyleTerm();
      if (!term) return term.error();
      value = clear ? value & ~*term : value | *term;
    } while (in_.Accept(TokenKind::Bar));
    return {};
  }

  Result<uint32_t> StyleTerm() {
    if (in_.AtEnd()) return in_.Fail("expected a style");
    const Token& t = in_.Take();
    if (t.kind == TokenKind::Number) return static_cast<uint32_t>(t.number);
    if (t.kind == TokenKind::Open) {
      uint32_t inner = 0;
      if (Status s = Style(inner); !s) return s.error();
      if (Status s = in_.Expect(TokenKind::Close, "\")\""); !s) return s.error();
      return inner;
    }
    if (t.kind != TokenKind::Name) return MakeError(ErrorCode::Malformed, "expected a style, found \"" + ToUtf8(t.text) + "\"", t.line);
    std::optional<uint32_t> v = StyleValue(t.text);
    if (!v) return MakeError(ErrorCode::Malformed, "unknown style name " + ToUtf8(t.text), t.line);
    return *v;
  }

  Status Comma() { return in_.Expect(TokenKind::Comma, "\",\""); }

  Status Keyword(TextView word, std::string_view what) {
    if (!in_.NextIsName(word)) return in_.Fail("expected " + std::string(what));
    in_.Take();
    return {};
  }

  TokenCursor in_;
  Symbols symbols_;
  ResourceScript script_;
};

uint32_t LineCount(TextView text) { return static_cast<uint32_t>(std::count(text.begin(), text.end(), u'\n')) + 1; }

}  // namespace

const ControlTemplate* DialogTemplate::Find(int controlId) const {
  if (controlId == -1) return nullptr;
  auto it = std::find_if(controls.begin(), controls.end(), [&](const ControlTemplate& c) { return c.id == controlId; });
  return it == controls.end() ? nullptr : &*it;
}

const DialogTemplate* ResourceScript::FindDialog(int dialogId) const {
  auto it = std::find_if(dialogs.begin(), dialogs.end(), [&](const DialogTemplate& d) { return d.id == dialogId; });
  return it == dialogs.end() ? nullptr : &*it;
}

Result<ResourceScript> ParseResourceScript(TextView script, TextView resourceHeader) {
  Result<Symbols> header = ReadResourceHeader(resourceHeader);
  if (!header) return header.error();
  Symbols symbols = WindowsIds();
  for (auto& [name, value] : *header) symbols[name] = value;
  Result<std::vector<Token>> tokens = Tokenize(script);
  if (!tokens) return tokens.error();
  return ScriptReader(*tokens, LineCount(script), std::move(symbols)).Run();
}

}  // namespace tq::dialog
