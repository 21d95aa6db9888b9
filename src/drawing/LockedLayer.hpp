#pragma once
// An edit of an entity that may lie on a locked layer: the layer is unlocked for the edit
// and locked again, so the drawing's locks stay as the user set them.
#include "ports/Drawing.hpp"

namespace tq {

// Runs `edit` (returning an EditResult); when the entity's layer is locked, runs it again
// with the layer unlocked for the moment.
template <class Edit>
EditResult EditEvenIfLocked(Drawing& drawing, ObjectId id, Edit&& edit) {
  EditResult result = edit();
  if (result != EditResult::OnLockedLayer) return result;
  Text layer = drawing.Layer(id);
  drawing.SetLayerLocked(layer, false);
  result = edit();
  drawing.SetLayerLocked(layer, true);
  return result;
}

}  // namespace tq
