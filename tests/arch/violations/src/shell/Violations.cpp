// A file that breaks every rule, so the architecture check is seen to fail.
#include <QString>
#include <unicode/unistr.h>
#include <iostream>
void Report() { std::cout << "core code must not print"; }
