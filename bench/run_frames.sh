#!/usr/bin/env bash
# The frame rules on a generated drawing of 1,000 frames (40 x 25, 500 entities each, every
# other sheet-number text with a record): MarkFrames of all 1,000 frames alone, and tqstd
# check and mark (the 500 frames without information, saved to another file) end to end,
# each against the time a process takes to load the drawing, measured in the same round.
set -euo pipefail
build="${1:-build/release}"
rounds="${2:-5}"
work="$build/bench-data/frames"
mkdir -p "$work"
[ -f "$work/frames.dxf" ] || "$build/bench/frame_bench" generate "$work"
cat "$work/frames.dxf" > /dev/null
echo "drawing: $(du -m "$work/frames.dxf" | cut -f1) MB"
for i in 1 2 3; do "$build/bench/frame_bench" mark "$work"; done | tee "$work/rules.txt"
python3 - "$build" "$work" "$rounds" <<'PY'
import re, statistics, subprocess, sys, time, pathlib
build, work, rounds = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), int(sys.argv[3])
ini = ['--ini', str(work / 'Velum.ini')]
def timed(args):
    t = time.perf_counter()
    subprocess.run(args, stdout=subprocess.DEVNULL, check=True)
    return time.perf_counter() - t
tqstd, drawing = str(build / 'hosts' / 'tqstd'), str(work / 'frames.dxf')
rows = []
for _ in range(rounds):
    load = timed([str(build / 'bench' / 'frame_bench'), 'load', str(work)])
    check = timed([tqstd, 'check', drawing] + ini)
    mark = timed([tqstd, 'mark', drawing, '-o', str(work / 'marked.dxf')] + ini)
    rows.append((load, check, mark))
    print('round: load %.3f s; check %.3f s = %.2f x; mark %.3f s = %.2f x' % (load, check, check / load, mark, mark / load))
text = (work / 'rules.txt').read_text()
best = min(float(x) for x in re.findall(r'MarkFrames \(1000 frames\) ([0-9.]+) s', text))
median = lambda k: statistics.median(r[k] / r[0] for r in rows)
print('MarkFrames (1,000 frames, 500,000 entities): best of 3 %.3f s' % best)
print('median of %d rounds: tqstd check %.2f x load; tqstd mark %.2f x load' % (rounds, median(1), median(2)))
PY
