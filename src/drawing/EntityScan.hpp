#pragma once
// Selecting the entities of a frame, finding the sheet-number texts, and marking the frames
// of standard drawings without information.
#include <vector>

#include "drawing/FrameGrid.hpp"

namespace tq {

enum class SelectMode { All = 0, Text = 1, Line = 2, Point = 3 };

// Texts count by their insertion point, other entities by their whole extents; edges included.
bool SelectInRect(const Drawing& drawing, SelectMode mode, const Point3& upperLeft, const Point3& lowerRight,
                  std::vector<ObjectId>& out, TextView layer = u"");
bool CollectSheetNumberTexts(const DrawingContext& context, std::vector<ObjectId>& out);
void SplitByInfoRecord(const Drawing& drawing, std::vector<ObjectId>& list, std::vector<ObjectId>& without);
// The number of frames in which an entity was marked or restored.
size_t MarkFrames(const DrawingContext& context, const std::vector<ObjectId>& sheetTexts, bool mark);
// The number of entities marked or restored.
size_t MarkFrameEntities(Drawing& drawing, Editor& editor, const FramePolygon& polygon, bool mark, int colour);

inline constexpr char16_t kCheckApplication[] = u"TQ_STDCHECK";
inline constexpr char16_t kFirstInfoRecord[] = u"TQ_STDINF01";

}  // namespace tq
