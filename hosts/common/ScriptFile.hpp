#pragma once
// The script's text, as every host reads it: a file, or standard input for "-".
#include <string>

#include "base/Encoding.hpp"
#include "base/Result.hpp"

namespace tq {

// UTF-8 (a byte-order mark is read past), or UTF-16 with its mark, else the system code page.
Result<Text> ReadScriptText(const std::string& script, const CodePage& systemCodePage);

}  // namespace tq
