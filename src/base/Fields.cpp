#include "base/Fields.hpp"

namespace tq {

std::vector<Text> SplitFields(TextView line, char16_t separator) {
  std::vector<Text> fields;
  size_t start = 0;
  while (start < line.size()) {
    size_t cut = line.find(separator, start);
    if (cut == TextView::npos) {
      fields.emplace_back(line.substr(start));
      break;
    }
    fields.emplace_back(line.substr(start, cut - start));
    start = cut + 1;
  }
  return fields;
}

std::vector<Text> SplitAtEvery(TextView text, char16_t separator) {
  std::vector<Text> pieces;
  size_t start = 0;
  for (;;) {
    size_t cut = text.find(separator, start);
    if (cut == TextView::npos) {
      pieces.emplace_back(text.substr(start));
      return pieces;
    }
    pieces.emplace_back(text.substr(start, cut - start));
    start = cut + 1;
  }
}

TextView FieldsBeyond(TextView line, size_t count, char16_t separator) {
  size_t at = 0;
  for (size_t n = 0; n < count; ++n, ++at) {
    at = line.find(separator, at);
    if (at == TextView::npos) return {};
  }
  return line.substr(at - 1);
}

Text JoinLine25(std::span<const Text, kLineFieldCount> fields) {
  Text line;
  for (size_t i = 0; i < fields.size(); ++i) {
    if (i) line += u',';
    line += fields[i];
  }
  return line;
}

}  // namespace tq
