#pragma once
// What the takeoff check does without the user: the rows of every standard drawing with
// information, the reference tables, the list with its defaults, copied back into the rows.
#include <optional>
#include <vector>

#include "takeoff/TakeoffList.hpp"

namespace tq {

struct TakeoffJob {
  TakeoffData data;
  ReferenceTables tables;
  std::vector<TakeoffItem> items;
  // As the installation's settings ask (kRegisterToOriginKey): Shifted unless set.
  RowPairing pairing = RowPairing::Shifted;

  // Nothing when no standard drawing was given ("情報が設定されていません。").
  static std::optional<TakeoffJob> Open(const Drawing& drawing, const Folders& folders, const std::vector<ObjectId>& sheets);
};

}  // namespace tq
