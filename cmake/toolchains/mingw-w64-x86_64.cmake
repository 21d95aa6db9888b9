# Cross build for 64-bit Windows with Debian's MinGW-w64 (g++-mingw-w64-x86-64-posix: the
# POSIX thread model, which std::thread and std::mutex need).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TQ_MINGW_PREFIX x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${TQ_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TQ_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TQ_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TQ_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# One .exe with nothing beside it: the C and C++ runtimes and winpthread linked in.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# Tests run through Wine, quietly, in a prefix of the build's own.
find_program(TQ_WINE NAMES wine64 wine PATHS /usr/lib/wine /usr/bin NO_DEFAULT_PATH)
if(TQ_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
endif()
