// The rules of the drawing sit below the shell: this include must not compile.
#include "shell/TakeoffCheck.hpp"
