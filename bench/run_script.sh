#!/usr/bin/env bash
# tqstd script on the 1,000-frame drawing (40 x 25 frames, 500 entities each, every other
# sheet-number text with a record), each against a process that only loads the drawing,
# measured in the same round: "拾い確認" up to its box answered Cancel (500 frames marked and
# restored in memory, nothing saved), and 1,000 dumps of the main dialog.
set -euo pipefail
build="${1:-build/release}"
rounds="${2:-5}"
work="$build/bench-data/frames"
mkdir -p "$work"
[ -f "$work/frames.dxf" ] || "$build/bench/frame_bench" generate "$work"
printf 'command TQ_STD_INF\nclick 200:203\nanswer Cancel\n' > "$work/takeoff-check.txt"
{ echo "command TQ_STD_INF"; for i in $(seq 1000); do echo "dump 200"; done; } > "$work/dumps.txt"
python3 - "$build" "$work" "$rounds" <<'PY'
import statistics, subprocess, sys, time, pathlib
build, work, rounds = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), int(sys.argv[3])
tqstd, drawing = str(build / 'hosts' / 'tqstd'), str(work / 'frames.dxf')
def timed(args):
    t = time.perf_counter()
    r = subprocess.run(args, stdout=subprocess.PIPE, check=True)
    return time.perf_counter() - t, r.stdout
rows = []
for _ in range(rounds):
    load, _ = timed([str(build / 'bench' / 'frame_bench'), 'load', str(work)])
    check, out = timed([tqstd, '--ini', str(work / 'Velum.ini'), 'script', drawing, str(work / 'takeoff-check.txt')])
    assert b'"messagebox"' in out and b'"error"' not in out and b'"saved"' not in out, out[-400:]
    dumps, out = timed([tqstd, '--ini', str(work / 'Velum.ini'), 'script', drawing, str(work / 'dumps.txt')])
    assert out.count(b'"event":"dump"') == 1000
    rows.append((load, check, dumps))
    print('round: load %.3f s; 拾い確認 to its box %.3f s = %.2f x; 1,000 dumps %.3f s (+%.3f s)' %
          (load, check, check / load, dumps, dumps - load))
print('median of %d rounds: 拾い確認 to its box %.2f x load; 1,000 dumps %.3f s beyond the load' %
      (rounds, statistics.median(r[1] / r[0] for r in rows), statistics.median(r[2] - r[0] for r in rows)))
PY
