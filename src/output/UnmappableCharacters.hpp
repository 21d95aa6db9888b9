#pragma once
// The characters of an output that the system code page cannot hold: the file gets "?" in
// their place, so the command line names each one, with the sheet and the line it comes from.
#include <functional>
#include <vector>

#include "base/Encoding.hpp"
#include "output/OutputLines.hpp"

namespace tq {

// One "\nWARNING:…" text for every character of a line that the code page writes as its
// default character "?", once per character and line, in the order of the lines.
std::vector<Text> UnmappableWarnings(const OutputLineList& list, const CodePage& systemCodePage,
                                     const std::function<Text(ObjectId)>& sheetName);

}  // namespace tq
