#include "base/CodePageNumbers.hpp"

#include <array>
#include <cctype>
#include <charconv>
#include <string>

namespace tq {

namespace {

// Lower case, without "-" and "_": "Shift_JIS" and "shift-jis" are one name.
std::string Key(std::string_view name) {
  std::string key;
  for (char c : name)
    if (c != '-' && c != '_') key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return key;
}

struct Named {
  std::string_view key;
  unsigned number;
};

// Names that carry no number of their own, or whose number is not the Windows one.
constexpr std::array kNamed{
    Named{"windows31j", 932}, Named{"shiftjis", 932},   Named{"sjis", 932},       Named{"ms932", 932},
    Named{"ibm943", 932},     Named{"ibm943p15a2003", 932}, Named{"ibm943p1301999", 932},
    Named{"utf8", 65001},     Named{"usascii", 20127},  Named{"ascii", 20127},    Named{"gbk", 936},
    Named{"gb2312", 936},     Named{"big5", 950},       Named{"eucjp", 20932},    Named{"euckr", 51949},
    Named{"ibm1363", 1361},   Named{"johab", 1361},     Named{"koi8r", 20866},    Named{"latin1", 28591},
    Named{"macintosh", 10000}, Named{"macroman", 10000},
};

std::optional<unsigned> Number(std::string_view digits) {
  unsigned value = 0;
  auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size() || digits.empty()) return std::nullopt;
  return value;
}

}  // namespace

std::optional<unsigned> WindowsCodePageNumber(std::string_view name) {
  std::string key = Key(name);
  for (const Named& named : kNamed)
    if (named.key == key) return named.number;
  // "iso-8859-N" is Windows code page 28590 + N.
  if (key.starts_with("iso8859"))
    if (std::optional<unsigned> n = Number(std::string_view(key).substr(7)); n && *n >= 1 && *n <= 15) return 28590 + *n;
  for (std::string_view prefix : {"windows", "cp", "ibm", "ms"})
    if (key.starts_with(prefix)) return Number(std::string_view(key).substr(prefix.size()));
  return std::nullopt;
}

}  // namespace tq
