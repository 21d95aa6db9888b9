#pragma once
// The drawing editor of the host: point picking, the command line, the display.
#include "base/Text.hpp"
#include "ports/Drawing.hpp"

namespace tq {

enum class PickStatus { Normal, Cancel, Other };

struct PickResult {
  PickStatus status = PickStatus::Cancel;
  Point3 point;
};

class Editor {
 public:
  virtual ~Editor() = default;
  // Gives the drawing window the focus (the modeless dialog had it).
  virtual void ActivateDrawingWindow() = 0;
  // acedGetPoint without a base point.
  virtual PickResult GetPoint(TextView prompt) = 0;
  // acutPrintf: the text exactly as given.
  virtual void Print(TextView text) = 0;
  virtual void UpdateDisplay() = 0;
  virtual void BeginWaitCursor() = 0;
  virtual void EndWaitCursor() = 0;
};

}  // namespace tq
