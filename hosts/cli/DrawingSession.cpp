#include "cli/DrawingSession.hpp"

#include "base/Encoding.hpp"
#include "drawing/EntityScan.hpp"

namespace tq::cli {

std::string Utf8Path(const std::filesystem::path& path) {
  std::u8string u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

std::filesystem::path PathOf(const std::string& utf8) { return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())); }

os::LockHandle LockForWriting(const std::filesystem::path& target) {
  Result<os::LockHandle> lock = os::AcquireDrawingLock(target);
  if (!lock) throw UserError(lock.error().Describe() + "; nothing was changed");
  return std::move(lock).value();
}

DrawingSession::DrawingSession(const Context& context, const std::string& drawing, const std::filesystem::path& writes)
    : path_(PathOf(drawing)), editor_(*context.out), settings_(*context.folders) {
  if (!writes.empty()) lock_ = LockForWriting(writes);
  Result<std::unique_ptr<dxf::DxfDrawing>> opened = dxf::DxfDrawing::Open(path_, dxf::ReadOptions{context.codePage->name()});
  if (!opened) throw UserError(drawing + ": " + opened.error().Describe());
  drawing_ = std::move(opened).value();
  std::optional<LayerSettings> layers = settings_.LoadLayerSettings();
  if (!layers) throw UserError(ToUtf8(u"Excelﾌｧｲﾙのﾊﾟｽが設定されていません."));
  drawingContext_ = std::make_unique<DrawingContext>(DrawingContext{*drawing_, editor_, settings_, *layers, marking_});
}

Text DrawingSession::SheetName(ObjectId id) const {
  Text name;
  ReadSheetName(*drawing_, id, name);
  return name;
}

std::vector<ObjectId> DrawingSession::SheetsNamed(const std::string& name) {
  std::vector<ObjectId> texts, named;
  CollectSheetNumberTexts(*drawingContext_, texts);
  Text wanted = FromUtf8(name);
  for (ObjectId id : texts)
    if (SheetName(id) == wanted || drawing_->TextData(id)->string == wanted) named.push_back(id);
  if (named.empty()) throw UserError("no standard drawing has the sheet name " + name);
  return named;
}

}  // namespace tq::cli
