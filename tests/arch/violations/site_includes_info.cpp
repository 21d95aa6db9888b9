// The installation sits below every Part: this include must not compile.
#include "info/StdInfRecord.hpp"
