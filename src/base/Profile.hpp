#pragma once
// The private-profile (ini) file with the semantics of the Windows profile functions.
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/Encoding.hpp"
#include "base/Text.hpp"

namespace tq {

// Sections and keys without regard to case, values trimmed (and a matching pair of
// quotes removed), the first match wins, ";" lines are comments. Writing a key replaces
// it in place or appends it to its section, keeping every other line byte for byte and
// the file's encoding. Written by hand because no library keeps Windows' rules and the
// untouched bytes together.
class ProfileFile {
 public:
  // A missing or unreadable file reads as empty. Text in no Unicode form is read, and
  // written again, in the system code page.
  static ProfileFile Read(const std::filesystem::path& path, const CodePage& systemCodePage);

  std::optional<Text> Get(TextView section, TextView key) const;
  void Set(TextView section, TextView key, TextView value);
  Status Write(const std::filesystem::path& path) const;
  std::string Bytes() const;

 private:
  struct Line {
    Text text;        // without its line end
    std::string raw;  // the original bytes, line end included; empty for a changed line
    bool ended = true;  // the original line had a line end
  };
  enum class Kind { Section, Key, Other };
  static Kind Classify(TextView text, Text& name, Text& value);
  std::optional<size_t> FindKey(TextView section, TextView key, size_t* sectionEnd, bool* sectionFound) const;

  explicit ProfileFile(const CodePage& systemCodePage) : codePage_(&systemCodePage) {}
  const CodePage* codePage_;
  std::vector<Line> lines_;
  FileEncoding encoding_ = FileEncoding::SystemCodePage;
  bool bom_ = false;
  Text newline_ = u"\r\n";
};

inline constexpr size_t kProfileBufferSize = 512;

// As GetPrivateProfileStringW: the value (at most 511 characters) or the default.
Text ReadProfileString(TextView section, TextView key, TextView defaultValue, TextView path,
                       const CodePage& systemCodePage);
// As WritePrivateProfileStringW; an error naming the file when it cannot be written.
Status WriteProfileString(TextView section, TextView key, TextView value, TextView path,
                          const CodePage& systemCodePage);

}  // namespace tq
