#pragma once
// JSON text for the --json outputs: strings escaped as the format requires, UTF-8 kept.
#include <string>

#include "base/Text.hpp"

namespace tq {

inline std::string JsonString(TextView text) {
  std::string utf8 = ToUtf8(text), out = "\"";
  for (unsigned char c : utf8) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (c < 0x20) {
          char buffer[8];
          std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
          out += buffer;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out + "\"";
}

}  // namespace tq
