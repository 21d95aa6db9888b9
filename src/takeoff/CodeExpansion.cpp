#include "takeoff/CodeExpansion.hpp"

#include <optional>

#include "base/Format.hpp"
#include "base/Numbers.hpp"

namespace tq {

ExpansionVariant RowVariant(const CTakeoffRow& row) {
  ExpansionVariant v;
  constexpr LinePosition kDimensions[] = {LinePosition::kDimension1, LinePosition::kDimension2, LinePosition::kDimension3};
  for (size_t i = 0; i < 3; ++i) v.dimensions[i] = Format(u"%d", {ToInt(row.field(kDimensions[i]))});
  return v;
}

ExpansionVariant DialogVariant(TextView dimension1, TextView dimension2, TextView dimension3) {
  return {{Text(dimension1), Text(dimension2), Text(dimension3)}, false, kParameterMark + 1};
}

std::vector<Text> SplitCodeTokens(TextView rest) {
  std::vector<Text> tokens;
  Text token;
  bool quoted = false;
  for (char16_t c : rest) {
    if (c == u'"') quoted = !quoted;
    if (c == u',' && !quoted) {
      tokens.push_back(std::move(token));
      token.clear();
      continue;
    }
    token += c;
  }
  if (!token.empty()) tokens.push_back(std::move(token));
  return tokens;
}

Text ExpandCode(TextView code, const ExpansionVariant& variant) {
  if (code.size() < kCodeHeadLength || code[kParameterMark] != u'&') return Text(code);
  Text out(code.substr(0, kCodeHeadLength));
  if (code.size() <= kTokensStart) return out;
  std::optional<Text> dimension;  // the last dimension token's value
  int literals = 0;               // literals since it
  for (const Text& token : SplitCodeTokens(code.substr(kTokensStart))) {
    if (token.empty()) continue;
    char16_t first = token[0];
    if (first == u'"') {
      Text literal;
      for (char16_t c : token)
        if (c != u'"') literal += c;
      if (!literal.empty()) {
        if (variant.repeatDimensionBeforeLiterals && dimension && literals >= 1) out += *dimension;
        out += literal;
      }
      ++literals;
    } else if (first >= u'0' && first <= u'9') {
      size_t amp = variant.nestedCodeAmpersand;
      if (token.size() > amp && token[amp] == u'&') out += u' ';
      out += token;
    } else if (first == u'S' || first == u's') {
      static const char16_t* const kDimensions[] = {u"SSL0", u"SSW0", u"SSH0"};
      dimension.reset();
      for (size_t i = 0; i < 3; ++i)
        if (EqualNoCase(token, kDimensions[i])) dimension = variant.dimensions[i];
      out += dimension ? *dimension : token;
      literals = 0;
    } else {
      out += token;
    }
  }
  return out;
}

}  // namespace tq
