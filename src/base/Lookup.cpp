#include "base/Lookup.hpp"

namespace tq {

Text TableLookup(TextView key, std::span<const Text> keys, std::span<const Text> values) {
  for (size_t i = 0; i < keys.size(); ++i)
    if (EqualNoCase(keys[i], key)) return i < values.size() ? values[i] : Text();
  return Text();
}

}  // namespace tq
