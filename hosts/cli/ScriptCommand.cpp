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
  std::filesystem::path path = PathOf(options.drawing);
  std::filesystem::path target = options.output.empty() ? path : PathOf(options.output);
  // Locked before the drawing is read and the script run: a second writer stops before either.
  os::LockHandle lock;
  if (!options.noSave) lock = LockForWriting(target);
  Result<std::unique_ptr<dxf::DxfDrawing>> opened = dxf::DxfDrawing::Open(path, dxf::ReadOptions{context.codePage->name()});
  if (!opened) throw UserError(options.drawing + ": " + opened.error().Describe());
  std::unique_ptr<dxf::DxfDrawing> drawing = std::move(opened).value();
  Text script = ReadScript(options, context);
  std::ostream& out = *context.out;
  bool ran = false;
  {
    headless::HeadlessSession session(script, out, *drawing, *context.folders);
    ran = session.Run();
    if (!ran) return 1;  // nothing is saved after a line that could not be applied
    // A drawing whose bytes would not change is not written: marking and restoring in one run
    // changes nothing.
    if (options.noSave || drawing->document().Serialize() == drawing->document().source()) return 0;
    if (Status saved = drawing->Save(target); !saved) throw UserError(saved.error().Describe());
    session.transcript().Saved(FromFsPath(target));
  }
  return 0;
}

}  // namespace tq::cli
