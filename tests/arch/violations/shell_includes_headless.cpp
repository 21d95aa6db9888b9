// The core knows no host: this include must not compile.
#include "headless/HeadlessSession.hpp"
