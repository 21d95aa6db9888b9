#include "drawing/EntityScan.hpp"

#include "base/Format.hpp"
#include "base/Numbers.hpp"

namespace tq {

namespace {

SelectionFilter FilterOf(SelectMode mode, TextView layer) {
  switch (mode) {
    case SelectMode::Text: return {u"TEXT", u""};
    case SelectMode::Line: return {u"LINE", u""};
    case SelectMode::Point: return {u"POINT", Text(layer)};
    case SelectMode::All: break;
  }
  return {};
}

}  // namespace

bool SelectInRect(const Drawing& drawing, SelectMode mode, const Point3& ul, const Point3& lr, std::vector<ObjectId>& out,
                  TextView layer) {
  Rect window{ul.x, lr.y, lr.x, ul.y};
  size_t before = out.size();
  for (ObjectId id : drawing.SelectWindow(FilterOf(mode, layer), window)) {
    if (std::optional<TextEntity> text = drawing.TextData(id)) {
      const Point3& p = text->position;
      if (ul.x <= p.x && p.x <= lr.x && lr.y <= p.y && p.y <= ul.y) out.push_back(id);
      continue;
    }
    std::optional<Extents> e = drawing.EntityExtents(id);
    if (e && e->min.x >= ul.x && e->max.x <= lr.x && e->min.y >= lr.y && e->max.y <= ul.y) out.push_back(id);
  }
  return out.size() > before;
}

bool CollectSheetNumberTexts(const DrawingContext& context, std::vector<ObjectId>& out) {
  out.clear();
  // The selection by layer only narrows the texts to look at; each is still checked as the
  // rule says.
  for (ObjectId id : context.drawing.SelectAll({u"TEXT", context.layers.sheetNumberLayer}))
    if (IsSheetNumberText(context, id)) out.push_back(id);
  return !out.empty();
}

void SplitByInfoRecord(const Drawing& drawing, std::vector<ObjectId>& list, std::vector<ObjectId>& without) {
  without.clear();
  std::vector<ObjectId> with;
  for (ObjectId id : list) {
    if (id.isNull()) continue;
    (drawing.ReadXData(id, kFirstInfoRecord) ? with : without).push_back(id);
  }
  list = std::move(with);
}

size_t MarkFrames(const DrawingContext& context, const std::vector<ObjectId>& sheetTexts, bool mark) {
  context.editor.BeginWaitCursor();
  struct EndWait {
    Editor& editor;
    ~EndWait() { editor.EndWaitCursor(); }
  } endWait{context.editor};
  // MarkFrames does not run again while it runs (a re-entry from the display update).
  MarkingGuard guard(context.marking);
  if (!guard.acquired()) return 0;
  size_t changedFrames = 0;
  {
    // A colour no entity can hold is refused before anything is changed.
    Result<int> colour = mark ? context.settings.ReadChangeColour() : Result<int>(kDefaultChangeColour);
    if (!colour) {
      context.editor.Print(u"\nError:" + colour.error().message + u".\n");
      return 0;
    }
    auto lock = context.drawing.LockForWrite();
    // The grid is read once for all the frames; its folder warning is still given frame by frame.
    FrameGridValues grid = context.settings.ReadFrameGrid();
    WarnIfUnusableGrid(GridOf(grid), context.editor);
    for (ObjectId id : sheetTexts) {
      std::optional<TextEntity> text = context.drawing.TextData(id);
      if (!text) continue;
      WarnIfNoFrameGrid(grid, context.editor);
      FramePolygon polygon;
      if (LocateFrame(GridOf(grid), text->position, polygon) &&
          MarkFrameEntities(context.drawing, context.editor, polygon, mark, *colour) > 0)
        ++changedFrames;
    }
  }
  return changedFrames;
}

size_t MarkFrameEntities(Drawing& drawing, Editor& editor, const FramePolygon& polygon, bool mark, int colour) {
  std::vector<ObjectId> ids;
  if (!SelectInRect(drawing, SelectMode::All, UpperLeft(polygon), LowerRight(polygon), ids)) return 0;
  size_t changed = 0;
  for (ObjectId id : ids) {
    std::optional<XDataLines> saved = drawing.ReadXData(id, kCheckApplication);
    int newColour;
    if (saved && !saved->empty()) {
      if (mark) continue;  // never marked twice: the first saved colour stays
      newColour = ToInt((*saved)[0]);
    } else {
      if (!mark) continue;
      newColour = colour;
    }
    // The old colour is saved before it is changed, so that no colour is ever lost; an
    // entity that cannot be opened for writing (a locked layer) is left alone.
    if (mark && drawing.WriteXData(id, kCheckApplication, {FormatDecimal(drawing.ColourIndex(id))}) != EditResult::Ok)
      continue;
    // Its attributes and vertices, which take its colour, each save their own.
    std::vector<ObjectId> subs = drawing.SubEntities(id);
    if (mark)
      for (ObjectId sub : subs) drawing.WriteXData(sub, kCheckApplication, {FormatDecimal(drawing.ColourIndex(sub))});
    if (drawing.SetColourIndex(id, newColour) != EditResult::Ok) continue;
    ++changed;
    if (mark) continue;
    drawing.RemoveXData(id, kCheckApplication);
    for (ObjectId sub : subs)
      if (std::optional<XDataLines> own = drawing.ReadXData(sub, kCheckApplication); own && !own->empty()) {
        drawing.SetColourIndex(sub, ToInt((*own)[0]));
        drawing.RemoveXData(sub, kCheckApplication);
      }
  }
  drawing.FlushGraphics();
  editor.UpdateDisplay();
  return changed;
}

}  // namespace tq
