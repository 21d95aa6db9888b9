# Writes OUTPUT, a C++ file holding the bytes of SCRIPT and HEADER as two arrays.
# Run by the build whenever either file changes.
function(embed_bytes file name out_var)
  file(READ "${file}" hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  set(${out_var} "const unsigned char ${name}[] = {\n    ${bytes}0x00};\n" PARENT_SCOPE)
endfunction()

embed_bytes("${SCRIPT}" kScript script_array)
embed_bytes("${HEADER}" kHeader header_array)
file(WRITE "${OUTPUT}.tmp" "// Generated from ${SCRIPT} and ${HEADER}: do not edit.
#include \"dialog/EmbeddedResources.hpp\"

namespace tq::dialog {
namespace {
${script_array}${header_array}}  // namespace

// The trailing 0 of each array is not part of the file.
std::span<const unsigned char> EmbeddedScript() { return {kScript, sizeof kScript - 1}; }
std::span<const unsigned char> EmbeddedResourceHeader() { return {kHeader, sizeof kHeader - 1}; }

}  // namespace tq::dialog
")
file(RENAME "${OUTPUT}.tmp" "${OUTPUT}")
