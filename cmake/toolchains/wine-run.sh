#!/bin/sh
# Runs a Windows program under Wine without a display, in a prefix inside the build folder
# (unless WINEPREFIX names another). CTest's cross-compiling emulator for the windows build.
for wine in /usr/lib/wine/wine64 /usr/bin/wine64 /usr/bin/wine; do
  [ -x "$wine" ] && break
done
root="$(cd "$(dirname "$0")/../.." && pwd)"
: "${WINEPREFIX:=$root/build/wine-prefix}"
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" DISPLAY=
unset WAYLAND_DISPLAY
# Wine reads file names and arguments in the locale's character set: UTF-8 unless one is set.
[ -n "${LC_ALL:-}${LANG:-}" ] || export LC_ALL=C.UTF-8
exec "$wine" "$@"
