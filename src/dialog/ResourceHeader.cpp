#include "dialog/ResourceHeader.hpp"

#include <cstdint>

#include "dialog/TokenCursor.hpp"

namespace tq::dialog {
namespace {

bool IsGuard(TextView keyword) {
  return keyword == u"ifndef" || keyword == u"ifdef" || keyword == u"endif" || keyword == u"else" ||
         keyword == u"pragma";
}

Error HeaderError(std::string_view what, uint32_t line) {
  return MakeError(ErrorCode::Malformed, "resource.h: " + std::string(what), line);
}

// One "#define NAME value" line, its text after "#" given.
Status ReadDefine(const Token& directive, Symbols& symbols) {
  Result<std::vector<Token>> tokens = Tokenize(directive.text, directive.line);
  if (!tokens) return HeaderError(ToUtf8(tokens.error().message), directive.line);
  std::vector<Token>& t = *tokens;
  if (t.empty() || t[0].kind != TokenKind::Name) return HeaderError("a \"#\" line without a directive", directive.line);
  if (IsGuard(t[0].text)) return {};
  if (t[0].text != u"define") return HeaderError("a directive that is not read: #" + ToUtf8(t[0].text), directive.line);
  if (t.size() < 3 || t[1].kind != TokenKind::Name) return HeaderError("a #define without a name and a value", directive.line);
  TokenCursor cursor(std::span<const Token>(t).subspan(2), directive.line);
  Result<int64_t> value = cursor.Number(symbols);
  if (!value) return HeaderError(ToUtf8(value.error().message), directive.line);
  if (!cursor.AtEnd()) return HeaderError("more after the value of " + ToUtf8(t[1].text), directive.line);
  if (*value < INT32_MIN || *value > INT32_MAX) return HeaderError("a value out of range for " + ToUtf8(t[1].text), directive.line);
  symbols[t[1].text] = static_cast<int>(*value);
  return {};
}

}  // namespace

Result<Symbols> ReadResourceHeader(TextView header) {
  Result<std::vector<Token>> tokens = Tokenize(header);
  if (!tokens) return HeaderError(ToUtf8(tokens.error().message), tokens.error().line);
  Symbols symbols;
  for (const Token& t : *tokens) {
    if (t.kind != TokenKind::Directive) return HeaderError("a line that is not a #define: \"" + ToUtf8(t.text) + "\"", t.line);
    if (Status s = ReadDefine(t, symbols); !s) return s.error();
  }
  return symbols;
}

const Symbols& WindowsIds() {
  static const Symbols ids = {
      {u"IDOK", 1},  {u"IDCANCEL", 2}, {u"IDABORT", 3}, {u"IDRETRY", 4},      {u"IDIGNORE", 5},
      {u"IDYES", 6}, {u"IDNO", 7},     {u"IDCLOSE", 8}, {u"IDHELP", 9},       {u"IDC_STATIC", -1},
  };
  return ids;
}

}  // namespace tq::dialog
