#pragma once
// Builds the display list of a DXF document's model space. Runs on any thread: it only reads
// the document, which must not change while it runs.
#include <atomic>
#include <functional>

#include "base/Result.hpp"
#include "dxf/DxfDocument.hpp"
#include "view/DisplayList.hpp"

namespace tq::view {

struct BuildOptions {
  // Called now and then with the share done, from 0 to 1, on the building thread.
  std::function<void(double)> progress;
  // Set from another thread to stop early; the result is then ErrorCode::Cancelled.
  const std::atomic<bool>* cancel = nullptr;
};

Result<DisplayList> BuildDisplayList(const dxf::Document& doc, const BuildOptions& options = {});

}  // namespace tq::view
