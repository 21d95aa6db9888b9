#pragma once
// Numbers read the way the suite reads them.
#include "base/Text.hpp"

namespace tq {

// As the suite's real reader (atof): leading white space, sign, digits, point, exponent; no digits give 0.
double ToReal(TextView text);

// As the suite's integer reader (_wtoi): leading white space, sign, digits; no digits give 0; out of range clamps.
int ToInt(TextView text);

}  // namespace tq
