#pragma once
// The width of a text in pixels, in the font a control draws with.
#include "base/Text.hpp"

namespace tq {

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  virtual int Width(TextView text) const = 0;
};

}  // namespace tq
