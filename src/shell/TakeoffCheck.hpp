#pragma once
// "拾い確認" up to its dialog: the standard drawings of the drawing, with and without information.
#include <optional>
#include <vector>

#include "drawing/FrameGrid.hpp"

namespace tq {

struct StandardDrawings {
  std::vector<ObjectId> with, without;
};

// Nothing, after the main dialog's message, when the drawing has no standard drawing or
// none with information.
std::optional<StandardDrawings> FindStandardDrawingsForTakeoff(const DrawingContext& context);

}  // namespace tq
