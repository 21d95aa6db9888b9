#pragma once
// The Windows code page number of a code page named as ICU names it: the one table between
// the names the system uses and the numbers the Windows national-language API takes.
#include <optional>
#include <string_view>

namespace tq {

// "CP932", "windows-31j", "ibm-943_P15A-2003", "Shift_JIS" → 932; "windows-1252" → 1252;
// "UTF-8" → 65001; nothing for a name the table does not know. Case and the separators
// "-" and "_" do not matter.
std::optional<unsigned> WindowsCodePageNumber(std::string_view name);

}  // namespace tq
