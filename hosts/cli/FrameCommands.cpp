#include "cli/FrameCommands.hpp"

#include "cli/DrawingSession.hpp"
#include "drawing/EntityScan.hpp"
#include "dxf/Extents.hpp"
#include "info/StdInfRecord.hpp"
#include "shell/TakeoffCheck.hpp"

namespace tq::cli {

namespace {

std::string Point(const Point3& p) {
  char buffer[96];
  std::snprintf(buffer, sizeof buffer, "%g,%g", p.x, p.y);
  return buffer;
}

// Entities whose extents the file does not hold are not examined; say so, never skip them silently.
void ReportAcisBodies(std::ostream& out, const dxf::Document& doc) {
  size_t bodies = 0;
  for (const dxf::EntityRecord& rec : doc.records())
    if (!rec.erased && rec.block < 0 && rec.owner == 0 && !rec.paperSpace && dxf::IsAcisBody(rec.type)) ++bodies;
  if (bodies)
    out << "not examined: " << bodies << " ACIS bodies (3DSOLID, REGION, BODY, SURFACE), whose extents the drawing does not hold\n";
}

// R10 and R11 drawings have no handles.
std::string HandleOf(const Drawing& drawing, ObjectId id) {
  Text handle = drawing.Handle(id);
  return handle.empty() ? "(no handle)" : ToUtf8(handle);
}

}  // namespace

int RunSheets(const Context& context, const std::string& drawing) {
  DrawingSession session(context, drawing);
  std::vector<ObjectId> texts;
  CollectSheetNumberTexts(session.context(), texts);
  std::ostream& out = *context.out;
  FrameGrid grid = LoadFrameGrid(session.context().settings, session.context().editor);
  for (ObjectId id : texts) {
    FramePolygon polygon;
    FrameCell cell;
    std::string where = "-";
    if (LocateFrame(grid, session.drawing().TextData(id)->position, polygon, &cell))
      where = std::to_string(cell.row) + "," + std::to_string(cell.column);
    out << HandleOf(session.drawing(), id) << '\t' << ToUtf8(session.SheetName(id)) << '\t' << where << '\t'
        << CountInfoRecords(session.drawing(), id) << '\n';
  }
  return 0;
}

int RunLocate(const Context& context, const std::string& drawing, double x, double y) {
  DrawingSession session(context, drawing);
  FramePolygon polygon;
  if (!LocateFrame(session.context(), {x, y, 0}, polygon)) {
    session.editor().Print(u"\nError:標準図枠の範囲外です。\n");
    return 0;
  }
  std::ostream& out = *context.out;
  out << "frame:";
  for (const Point3& p : polygon) out << ' ' << Point(p);
  out << '\n';
  ObjectId text;
  if (!FindSheetNumberText(session.context(), polygon, text)) {
    session.editor().Print(u"\nｼｰﾄ番号が取得出来ません。\n");
    return 0;
  }
  out << "sheet: " << ToUtf8(session.drawing().Handle(text)) << '\t' << ToUtf8(session.SheetName(text)) << '\n';
  return 0;
}

int RunCheck(const Context& context, const std::string& drawing) {
  DrawingSession session(context, drawing);
  std::ostream& out = *context.out;
  ReportAcisBodies(out, session.drawing().document());
  std::optional<StandardDrawings> found = FindStandardDrawingsForTakeoff(session.context());
  if (!found) return 0;
  out << "with information: " << found->with.size() << "\nwithout information: " << found->without.size() << '\n';
  if (found->without.empty()) return 0;
  out << ToUtf8(u"情報が設定されていない標準図があります。") << '\n';
  for (ObjectId id : found->without) out << ToUtf8(session.drawing().Handle(id)) << '\t' << ToUtf8(session.SheetName(id)) << '\n';
  return 0;
}

int RunMark(const Context& context, const std::string& drawing, const MarkOptions& options) {
  std::filesystem::path target = PathOf(options.output.empty() ? drawing : options.output);
  DrawingSession session(context, drawing, target);
  std::vector<ObjectId> sheets;
  if (options.sheets.empty()) {
    std::vector<ObjectId> with;
    CollectSheetNumberTexts(session.context(), with);
    SplitByInfoRecord(session.drawing(), with, sheets);
  }
  for (const std::string& name : options.sheets) {
    std::vector<ObjectId> named = session.SheetsNamed(name);
    sheets.insert(sheets.end(), named.begin(), named.end());
  }
  // A colour no entity can hold stops the command before anything is marked or written.
  if (!options.restore)
    if (Result<int> colour = session.context().settings.ReadChangeColour(); !colour)
      throw UserError(ToUtf8(colour.error().message));
  std::ostream& out = *context.out;
  ReportAcisBodies(out, session.drawing().document());
  size_t frames = MarkFrames(session.context(), sheets, !options.restore);
  if (!session.drawing().document().modified() && options.output.empty()) {
    out << "nothing to " << (options.restore ? "restore" : "mark") << "; the drawing is left as it was\n";
    return 0;
  }
  if (Status saved = session.drawing().Save(target); !saved) throw UserError(saved.error().Describe());
  // The frames in which something was actually marked or restored.
  out << (options.restore ? "restored" : "marked") << " the frames of " << frames;
  if (frames != sheets.size()) out << " of " << sheets.size();
  out << " standard drawings";
  for (ObjectId id : sheets) out << ' ' << ToUtf8(session.SheetName(id));
  out << "\nsaved " << Utf8Path(target) << '\n';
  return 0;
}

}  // namespace tq::cli
