#pragma once
// Walks a token list for the readers of resource.h and of the script: the next token, what
// is expected of it, and whole-number expressions over the known symbols.
#include <span>
#include <string>
#include <vector>

#include "dialog/ResourceHeader.hpp"
#include "dialog/ScriptTokens.hpp"

namespace tq::dialog {

class TokenCursor {
 public:
  TokenCursor(std::span<const Token> tokens, uint32_t lastLine) : tokens_(tokens), lastLine_(lastLine) {}

  bool AtEnd() const { return pos_ >= tokens_.size(); }
  const Token* Peek() const { return AtEnd() ? nullptr : &tokens_[pos_]; }
  const Token& Take() { return tokens_[pos_++]; }
  bool NextIs(TokenKind kind) const { return !AtEnd() && tokens_[pos_].kind == kind; }
  bool NextIsName(TextView name) const { return NextIs(TokenKind::Name) && tokens_[pos_].text == name; }
  // Takes the next token when it is of this kind.
  bool Accept(TokenKind kind);
  // The line of the next token, or of the end of the text.
  uint32_t Line() const { return AtEnd() ? lastLine_ : tokens_[pos_].line; }
  // Passes over the rest of the line the previous token stands on.
  void SkipLine(uint32_t line);

  Error Fail(std::string_view what) const { return MakeError(ErrorCode::Malformed, what, Line()); }
  Status Expect(TokenKind kind, std::string_view what);
  Result<Text> ExpectString(std::string_view what);

  // A whole number: numbers and symbols joined by + and -, with unary minus and parentheses.
  // `symbolName` receives the name when the expression is one symbol alone.
  Result<int64_t> Number(const Symbols& symbols, Text* symbolName = nullptr);

 private:
  Result<int64_t> Term(const Symbols& symbols, Text* symbolName);

  std::span<const Token> tokens_;
  size_t pos_ = 0;
  uint32_t lastLine_;
};

}  // namespace tq::dialog
