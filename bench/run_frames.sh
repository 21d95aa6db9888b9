#!/usr/bin/env bash
# The frame rules on a generated drawing of 1,000 frames (40 x 25, 500 entities each, every
# other sheet-number text with a record): load, MarkFrames of all 1,000 frames alone, and
# tqstd check and mark (the 500 frames without information) end to end, each against the
# time to load the drawing.
set -euo pipefail
build="${1:-build/release}"
work="$build/bench-data/frames"
mkdir -p "$work"
[ -f "$work/frames.dxf" ] || "$build/bench/frame_bench" generate "$work"
cat "$work/frames.dxf" > /dev/null
echo "drawing: $(du -m "$work/frames.dxf" | cut -f1) MB"
for i in 1 2 3; do "$build/bench/frame_bench" mark "$work"; done | tee "$work/rules.txt"
python3 - "$build/hosts/tqstd" "$work" <<'PY'
import re, subprocess, sys, time, pathlib
tqstd, work = sys.argv[1], pathlib.Path(sys.argv[2])
ini = ['--ini', str(work / 'Velum.ini')]
def best(args, n=3):
    b = 1e9
    for _ in range(n):
        t = time.perf_counter(); subprocess.run([tqstd] + args + ini, stdout=subprocess.DEVNULL, check=True)
        b = min(b, time.perf_counter() - t)
    return b
text = (work / 'rules.txt').read_text()
load = min(float(x) for x in re.findall(r'load ([0-9.]+) s', text))
mark = min(float(x) for x in re.findall(r'MarkFrames \(1000 frames\) ([0-9.]+) s', text))
dxf_info = best(['dxf-info', str(work / 'frames.dxf')])
check = best(['check', str(work / 'frames.dxf')])
marked = best(['mark', str(work / 'frames.dxf'), '-o', str(work / 'marked.dxf')], 2)
print('load %.3f s; MarkFrames (1,000 frames, 500,000 entities) %.3f s' % (load, mark))
print('tqstd check %.3f s = %.2f x load; tqstd mark %.3f s = %.2f x load' % (check, check / load, marked, marked / load))
PY
