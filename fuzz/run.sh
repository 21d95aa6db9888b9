#!/usr/bin/env bash
# Runs the DXF reader fuzzer for SECONDS (default 60) from the seed corpus. New inputs go to
# build/fuzz/corpus; a crash is kept in build/fuzz/artifacts and fails the run: copy it to
# tests/fixtures/dxf/regressions/ so that it becomes a regression test.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
mkdir -p build/fuzz/corpus build/fuzz/artifacts
./build/fuzz/fuzz/dxf_reader_fuzz -max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=4096 \
  -artifact_prefix=build/fuzz/artifacts/ build/fuzz/corpus fuzz/corpus/dxf tests/fixtures/dxf/regressions
