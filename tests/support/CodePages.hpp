#pragma once
// The system code page the tests read and write in: CP932, as on a Japanese Windows.
#include "base/Encoding.hpp"

namespace tq::test {

inline const CodePage& Cp932() {
  static const CodePage cp("CP932");
  return cp;
}

}  // namespace tq::test
