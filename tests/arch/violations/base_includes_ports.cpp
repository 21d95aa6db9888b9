// The base knows nothing of drawings: this include must not compile.
#include "ports/Drawing.hpp"
