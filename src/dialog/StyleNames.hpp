#pragma once
// The symbolic style names a resource script may use, with their Windows values: the window
// (WS_, WS_EX_), dialog (DS_), button (BS_), edit (ES_), static (SS_), combo box (CBS_) and
// list view (LVS_) styles.
#include <cstdint>
#include <optional>

#include "base/Text.hpp"

namespace tq::dialog {

std::optional<uint32_t> StyleValue(TextView name);

}  // namespace tq::dialog
