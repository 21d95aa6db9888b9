#pragma once
// The tokens of a resource script and of its resource.h: names, numbers, strings, the few
// punctuation marks the statements use, and preprocessor lines kept whole.
#include <cstdint>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq::dialog {

enum class TokenKind { Name, Number, String, Comma, Bar, Plus, Minus, Open, Close, Directive };

struct Token {
  TokenKind kind = TokenKind::Name;
  Text text;            // a name as written, a string's value, a directive's line after "#"
  int64_t number = 0;   // a number's value
  uint32_t line = 0;    // 1-based
};

// Splits the text into tokens, dropping blanks and comments. Fails naming the line of an
// unterminated string or comment, or of a character no statement uses.
Result<std::vector<Token>> Tokenize(TextView text, uint32_t firstLine = 1);

}  // namespace tq::dialog
