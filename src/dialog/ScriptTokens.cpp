#include "dialog/ScriptTokens.hpp"

#include <string>

namespace tq::dialog {
namespace {

bool IsNameStart(char16_t c) { return c == u'_' || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool IsNameChar(char16_t c) { return IsNameStart(c) || IsDigit(c); }
bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\f' || c == u'\v' || c == 0xFEFF; }

// The value of a digit in base 10 or 16, -1 for a character that is not one.
int DigitValue(char16_t c, bool hex) {
  if (IsDigit(c)) return c - u'0';
  if (hex && c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (hex && c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

Error Malformed(std::string_view what, uint32_t line) { return MakeError(ErrorCode::Malformed, what, line); }

class Lexer {
 public:
  Lexer(TextView text, uint32_t firstLine) : text_(text), line_(firstLine) {}

  Result<std::vector<Token>> Run() {
    while (pos_ < text_.size()) {
      char16_t c = text_[pos_];
      if (c == u'\n') {
        ++line_;
        ++pos_;
        atLineStart_ = true;
        continue;
      }
      if (IsBlank(c)) {
        ++pos_;
        continue;
      }
      if (c == u'/' && Peek(1) == u'/') {
        SkipToLineEnd();
        continue;
      }
      if (c == u'/' && Peek(1) == u'*') {
        if (Status s = SkipBlockComment(); !s) return s.error();
        continue;
      }
      bool lineStart = atLineStart_;
      atLineStart_ = false;
      Status s = lineStart && c == u'#' ? ReadDirective() : ReadToken(c);
      if (!s) return s.error();
    }
    return std::move(tokens_);
  }

 private:
  char16_t Peek(size_t ahead) const { return pos_ + ahead < text_.size() ? text_[pos_ + ahead] : u'\0'; }

  void SkipToLineEnd() {
    while (pos_ < text_.size() && text_[pos_] != u'\n') ++pos_;
  }

  Status SkipBlockComment() {
    uint32_t start = line_;
    size_t end = text_.find(u"*/", pos_ + 2);
    if (end == TextView::npos) return Malformed("a comment that is never closed", start);
    for (size_t i = pos_; i < end; ++i) line_ += text_[i] == u'\n';
    pos_ = end + 2;
    return {};
  }

  // A preprocessor line is kept whole: the header reader and the script reader each decide
  // what they make of it.
  Status ReadDirective() {
    size_t start = ++pos_;
    SkipToLineEnd();
    Push(TokenKind::Directive, Text(text_.substr(start, pos_ - start)));
    return {};
  }

  Status ReadToken(char16_t c) {
    switch (c) {
      case u',': return Single(TokenKind::Comma);
      case u'|': return Single(TokenKind::Bar);
      case u'+': return Single(TokenKind::Plus);
      case u'-': return Single(TokenKind::Minus);
      case u'(': return Single(TokenKind::Open);
      case u')': return Single(TokenKind::Close);
      case u'{': ++pos_; Push(TokenKind::Name, u"BEGIN"); return {};
      case u'}': ++pos_; Push(TokenKind::Name, u"END"); return {};
      case u'"': return ReadString();
      default: break;
    }
    if ((c == u'L' || c == u'l') && Peek(1) == u'"') {
      ++pos_;
      return ReadString();
    }
    if (IsDigit(c)) return ReadNumber();
    if (IsNameStart(c)) {
      size_t start = pos_;
      while (pos_ < text_.size() && IsNameChar(text_[pos_])) ++pos_;
      Push(TokenKind::Name, Text(text_.substr(start, pos_ - start)));
      return {};
    }
    return Malformed("a character that no statement uses: \"" + ToUtf8(TextView(&text_[pos_], 1)) + "\"", line_);
  }

  Status Single(TokenKind kind) {
    Push(kind, Text(1, text_[pos_++]));
    return {};
  }

  Status ReadNumber() {
    size_t start = pos_;
    bool hex = text_[pos_] == u'0' && (Peek(1) == u'x' || Peek(1) == u'X');
    if (hex) pos_ += 2;
    size_t digits = pos_;
    int64_t value = 0;
    for (int d; pos_ < text_.size() && (d = DigitValue(text_[pos_], hex)) >= 0; ++pos_) {
      value = value * (hex ? 16 : 10) + d;
      if (value > 0xFFFFFFFFLL) return Malformed("a number too large for 32 bits", line_);
    }
    if (pos_ == digits) return Malformed("a hexadecimal number without digits", line_);
    while (pos_ < text_.size() && (text_[pos_] == u'L' || text_[pos_] == u'l' || text_[pos_] == u'U' || text_[pos_] == u'u')) ++pos_;
    if (pos_ < text_.size() && IsNameChar(text_[pos_])) return Malformed("a number run into a name", line_);
    tokens_.push_back(Token{TokenKind::Number, Text(text_.substr(start, pos_ - start)), value, line_});
    return {};
  }

  // "" stands for one quote, as rc reads it; the usual backslash escapes are read too.
  Status ReadString() {
    uint32_t start = line_;
    ++pos_;
    Text value;
    while (true) {
      if (pos_ >= text_.size() || text_[pos_] == u'\n') return Malformed("a string that is not closed on its line", start);
      char16_t c = text_[pos_++];
      if (c == u'"') {
        if (Peek(0) != u'"') break;
        ++pos_;
        value += u'"';
      } else if (c == u'\\' && pos_ < text_.size()) {
        value += Escaped(text_[pos_++]);
      } else {
        value += c;
      }
    }
    Push(TokenKind::String, std::move(value), start);
    return {};
  }

  static Text Escaped(char16_t c) {
    switch (c) {
      case u'n': return u"\n";
      case u't': return u"\t";
      case u'r': return u"\r";
      case u'a': return u"\a";
      case u'0': return Text(1, u'\0');
      default: return Text(1, c);  // \\ and \" and anything else stand for themselves
    }
  }

  void Push(TokenKind kind, Text text, uint32_t line = 0) {
    tokens_.push_back(Token{kind, std::move(text), 0, line ? line : line_});
  }

  TextView text_;
  size_t pos_ = 0;
  uint32_t line_;
  bool atLineStart_ = true;
  std::vector<Token> tokens_;
};

}  // namespace

Result<std::vector<Token>> Tokenize(TextView text, uint32_t firstLine) { return Lexer(text, firstLine).Run(); }

}  // namespace tq::dialog
