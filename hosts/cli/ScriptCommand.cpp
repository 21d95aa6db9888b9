#include "cli/ScriptCommand.hpp"

#include <iostream>
#include <iterator>

#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "cli/DrawingSession.hpp"
#include "dxf/DxfDrawing.hpp"
#include "headless/HeadlessSession.hpp"

namespace tq::cli {

namespace {

// The script's text: UTF-8 (a byte-order mark is read past), or UTF-16 with its mark.
Text ReadScript(const ScriptOptions& options, const Context& context) {
  std::string bytes;
  if (options.script == "-") {
    bytes.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } else {
    std::optional<std::string> read = ReadFileBytes(std::filesystem::path(std::u8string(options.script.begin(), options.script.end())));
    if (!read) throw UserError("cannot read the script " + options.script);
    bytes = std::move(*read);
  }
  return DecodeTextFile(bytes, *context.codePage).text;
}

}  // namespace

int RunScript(const Context& context, const ScriptOptions& options) {
  Text script = ReadScript(options, context);
  std::filesystem::path path(std::u8string(options.drawing.begin(), options.drawing.end()));
  Result<std::unique_ptr<dxf::DxfDrawing>> opened = dxf::DxfDrawing::Open(path, dxf::ReadOptions{context.codePage->name()});
  if (!opened) throw UserError(options.drawing + ": " + opened.error().Describe());
  std::unique_ptr<dxf::DxfDrawing> drawing = std::move(opened).value();
  std::ostream& out = *context.out;
  bool ran = false;
  {
    headless::HeadlessSession session(script, out, *drawing, *context.folders);
    ran = session.Run();
    if (!ran) return 1;  // nothing is saved after a line that could not be applied
    // A drawing whose bytes would not change is not written: marking and restoring in one run
    // changes nothing.
    if (options.noSave || drawing->document().Serialize() == drawing->document().source()) return 0;
    std::filesystem::path target = options.output.empty() ? path : std::filesystem::path(std::u8string(options.output.begin(), options.output.end()));
    try {
      drawing->Save(target);
    } catch (const std::exception& e) {
      throw UserError("cannot save " + Utf8Path(target) + ": " + e.what());
    }
    session.transcript().Saved(FromFsPath(target));
  }
  return 0;
}

}  // namespace tq::cli
