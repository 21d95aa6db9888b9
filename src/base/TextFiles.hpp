#pragma once
// The small text files of an installation: configuration tables and line lists.
#include <filesystem>
#include <optional>
#include <vector>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq {

using TableRow = std::vector<Text>;
using ConfigTable = std::vector<TableRow>;

// The configuration-table reader the suite's tables rely on: every line is data (no header),
// one row per line, split at commas with empty fields kept. A field that begins with a
// double quote is read as a spreadsheet writes it: commas inside the quotes stay in the
// field and a doubled quote is one quote, so a parameterised code saved from a spreadsheet
// reads back whole. Nothing when the file cannot be read.
std::optional<ConfigTable> ReadConfigFile(const std::filesystem::path& path, const CodePage& systemCodePage);
ConfigTable ParseConfigTable(TextView text);
TableRow SplitConfigLine(TextView line);

inline constexpr size_t kLineBufferSize = 520;

// The line reader of the small text files: at most 519 units a read (a longer line
// continues in the next entry, as fgets into a 520-unit buffer does), every "\r" and "\n"
// removed, blank lines kept. Nothing when the file cannot be opened.
std::optional<std::vector<Text>> ReadTextLines(const std::filesystem::path& path, const CodePage& systemCodePage);
std::vector<Text> SplitTextLines(TextView text, size_t bufferSize = kLineBufferSize);

// Lines split at "\n" with a "\r" before it removed; a final line end adds no empty line.
std::vector<Text> SplitLines(TextView text);

}  // namespace tq
