#include "dialog/TokenCursor.hpp"

namespace tq::dialog {

bool TokenCursor::Accept(TokenKind kind) {
  if (!NextIs(kind)) return false;
  ++pos_;
  return true;
}

void TokenCursor::SkipLine(uint32_t line) {
  while (!AtEnd() && tokens_[pos_].line == line) ++pos_;
}

Status TokenCursor::Expect(TokenKind kind, std::string_view what) {
  if (!Accept(kind)) return Fail("expected " + std::string(what));
  return {};
}

Result<Text> TokenCursor::ExpectString(std::string_view what) {
  if (!NextIs(TokenKind::String)) return Fail("expected " + std::string(what) + " in double quotes");
  return Take().text;
}

Result<int64_t> TokenCursor::Number(const Symbols& symbols, Text* symbolName) {
  Text firstName;
  Result<int64_t> value = Term(symbols, &firstName);
  if (!value) return value;
  bool alone = true;
  int64_t sum = *value;
  while (NextIs(TokenKind::Plus) || NextIs(TokenKind::Minus)) {
    bool minus = Take().kind == TokenKind::Minus;
    Result<int64_t> next = Term(symbols, nullptr);
    if (!next) return next;
    sum += minus ? -*next : *next;
    alone = false;
  }
  if (symbolName) *symbolName = alone ? firstName : Text();
  return sum;
}

Result<int64_t> TokenCursor::Term(const Symbols& symbols, Text* symbolName) {
  if (AtEnd()) return Fail("expected a number");
  const Token& t = Take();
  switch (t.kind) {
    case TokenKind::Number: return t.number;
    case TokenKind::Minus: {
      Result<int64_t> v = Term(symbols, nullptr);
      if (!v) return v;
      return -*v;
    }
    case TokenKind::Open: {
      Result<int64_t> v = Number(symbols, symbolName);
      if (!v) return v;
      if (Status s = Expect(TokenKind::Close, "\")\""); !s) return s.error();
      return v;
    }
    case TokenKind::Name: {
      auto it = symbols.find(t.text);
      if (it == symbols.end()) return MakeError(ErrorCode::Malformed, "unknown symbol " + ToUtf8(t.text), t.line);
      if (symbolName) *symbolName = t.text;
      return it->second;
    }
    default:
      return MakeError(ErrorCode::Malformed, "expected a number, found \"" + ToUtf8(t.text) + "\"", t.line);
  }
}

}  // namespace tq::dialog
