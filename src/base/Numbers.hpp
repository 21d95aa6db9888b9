#pragma once
// Numbers read the way the suite reads them.
#include "base/Text.hpp"

namespace tq {

// Like C atof: leading white space, sign, digits, point, exponent; no digits give 0.
double ApiComn_atof(TextView text);

// Like _wtoi: leading white space, sign, digits; no digits give 0; out of range clamps.
int _wtoi(TextView text);

}  // namespace tq
