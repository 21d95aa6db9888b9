// The core knows no Qt: this include must not compile.
#include <QString>
