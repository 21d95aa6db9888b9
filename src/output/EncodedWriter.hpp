#pragma once
// The character writer of the output files, and the file writer built on it.
#include <cstdio>
#include <filesystem>
#include <vector>

#include "base/Text.hpp"

namespace tq {

enum class TextMode { SystemCodePage = 1, Utf8 = 2, Utf16Le = 3, Utf16Be = 4 };
enum class WriteResultKind { Zero, UnitCount, MinusOne };

struct WriteOptions {
  bool escape = false;   // system code page: no best fit, "\U+XXXX" for what needs the default character
  bool lineEnd = false;  // "\n" written as "\r\n"
  WriteResultKind result = WriteResultKind::Zero;
};

// One UTF-16 unit at a time (a surrogate pair as two units), up to a terminating zero.
// −1 as soon as a write is short; else 0, the units written or −1 as asked. An unknown
// mode writes nothing.
int WriteEncodedText(std::FILE* stream, TextView text, int mode, const WriteOptions& options = {});

// Every line followed by CR LF, in the system code page, no byte-order mark. Nothing for an
// empty path or a file that cannot be opened; false then, or when a write fell short.
bool WriteOutputFile(const std::filesystem::path& path, const std::vector<Text>& lines);

}  // namespace tq
