#!/usr/bin/env bash
# The size table on the example drawing's frame: locating and reading it back, and filling in
# six rows with texts and lines, each round on a freshly read drawing.
set -euo pipefail
build="${1:-build/release}"
rounds="${2:-200}"
"$build/bench/sizetable_bench" examples/site "$rounds"
