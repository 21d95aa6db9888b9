#include "cli/DrawingSession.hpp"

#include "base/Format.hpp"

namespace tq::cli {

std::string Utf8Path(const std::filesystem::path& path) {
  std::u8string u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

DrawingSession::DrawingSession(const Context& context, const std::string& drawing)
    : path_(std::u8string(drawing.begin(), drawing.end())), editor_(*context.out), settings_(*context.folders) {
  try {
    drawing_ = dxf::DxfDrawing::Open(path_);
  } catch (const std::exception& e) {
    throw UserError(drawing + ": " + e.what());
  }
  std::optional<LayerSettings> layers = settings_.LoadLayerSettings();
  if (!layers) throw UserError(ToUtf8(u"Excelﾌｧｲﾙのﾊﾟｽが設定されていません."));
  drawingContext_ = std::make_unique<DrawingContext>(DrawingContext{*drawing_, editor_, settings_, *layers});
}

Text DrawingSession::SheetName(ObjectId id) const {
  Text name;
  ReadSheetName(*drawing_, id, name);
  return name;
}

int DrawingSession::RecordCount(ObjectId id) const {
  int n = 0;
  while (drawing_->ReadXData(id, Format(u"TQ_STDINF%02d", {n + 1}))) ++n;
  return n;
}

}  // namespace tq::cli
