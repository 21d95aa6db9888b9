#pragma once
// Text taken from a file, as a message quotes it: in double quotes, with control bytes, NUL,
// backslashes and bytes that are not UTF-8 written as escapes, so that a message never
// carries them raw to a console or a log.
#include <string>
#include <string_view>

#include "base/Text.hpp"

namespace tq {

// `bytes` quoted, cut after `limit` bytes (the cut marked by "..." after the closing quote).
// Escapes: "\0", "\t", "\r", "\n", "\\" and "\xNN" for any other control byte (below 0x20, and
// 0x7F) and for each byte of a sequence that is not UTF-8.
std::string QuoteFileContent(std::string_view bytes, size_t limit = 40);
// The same for text already decoded, `limit` counting UTF-8 bytes.
Text QuoteFileContent(TextView text, size_t limit = 40);

}  // namespace tq
