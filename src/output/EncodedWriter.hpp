#pragma once
// The character writer of the output files, and the file writer built on it.
#include <cstdio>
#include <filesystem>
#include <vector>

#include <optional>
#include <string>
#include <unordered_map>

#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq {

enum class TextMode { SystemCodePage = 1, Utf8 = 2, Utf16Le = 3, Utf16Be = 4 };
enum class WriteResultKind { Zero, UnitCount, MinusOne };

struct WriteOptions {
  bool escape = false;   // system code page: no best fit, "\U+XXXX" for what needs the default character
  bool lineEnd = false;  // "\n" written as "\r\n"
  WriteResultKind result = WriteResultKind::Zero;
};

// The character writer: one UTF-16 unit at a time (a surrogate pair as two units), up to a
// terminating zero. Each unit's bytes in the system code page are converted once: an output
// file uses a few hundred distinct characters, written many thousand times.
class CharacterWriter {
 public:
  explicit CharacterWriter(const CodePage& systemCodePage) : codePage_(systemCodePage) {}
  // WriteEncodedText: −1 as soon as a write is short; else 0, the units written or −1 as
  // asked. An unknown mode writes nothing.
  int Write(std::FILE* stream, TextView text, int mode, const WriteOptions& options = {});
  // The bytes Write would write; `units` counts the units taken.
  std::string Encoded(TextView text, TextMode mode, const WriteOptions& options, int& units);

 private:
  struct Bytes {
    std::string bestFit;               // with the code page's best fit and default character
    std::optional<std::string> exact;  // nothing when the code page cannot hold the unit
  };
  const Bytes& Of(char16_t unit);
  std::string UnitBytes(char16_t u, TextMode mode, const WriteOptions& options);
  const CodePage& codePage_;
  std::unordered_map<char16_t, Bytes> units_;
};

// Every line followed by CR LF, in the system code page, no byte-order mark, put in the
// file's place in one step (WriteFileBytes). An error naming the file for an empty path, a
// file that cannot be created, or a write that fell short; the old file is then as it was.
Status WriteOutputFile(const std::filesystem::path& path, const std::vector<Text>& lines, const CodePage& systemCodePage,
                       const os::FaultPlan* faults = nullptr);

}  // namespace tq
