#!/usr/bin/env bash
# One save of the example drawing, with and without the drawing lock and the attribute copy:
# on the disk of the temporary folder, and in memory where the flushes cost nothing.
set -euo pipefail
build="${1:-build/release}"
drawing="examples/site/drawings/設備標準図.dxf"
"$build/bench/save_bench" "$drawing" "${SAVE_REPEAT:-200}"
if [ -d /dev/shm ]; then "$build/bench/save_bench" "$drawing" "${SAVE_REPEAT:-200}" /dev/shm; fi
