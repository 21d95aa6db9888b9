// What a layer may use compiles: the control case of the layering test.
#include "site/Settings.hpp"
