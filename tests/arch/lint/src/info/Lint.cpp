// A core file that breaks both rules the build cannot see, so the check is seen to fail.
#include <unicode/unistr.h>
#include <iostream>
void Report() { std::cout << "core code must not print"; }
