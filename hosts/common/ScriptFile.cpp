#include "common/ScriptFile.hpp"

#include <iostream>
#include <iterator>

#include "base/Paths.hpp"

namespace tq {

Result<Text> ReadScriptText(const std::string& script, const CodePage& systemCodePage) {
  std::string bytes;
  if (script == "-") {
    bytes.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } else {
    std::optional<std::string> read = ReadFileBytes(std::filesystem::path(std::u8string(script.begin(), script.end())));
    if (!read) return MakeError(ErrorCode::CannotRead, "cannot read the script " + script);
    bytes = std::move(*read);
  }
  return DecodeTextFile(bytes, systemCodePage).text;
}

}  // namespace tq
