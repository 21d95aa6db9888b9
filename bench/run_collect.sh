#!/usr/bin/env bash
# "拾い確認" on the takeoff bench drawing (see run_takeoff.sh): opening the dialog against
# tqstd takeoff --json, 100 selections, a code, the aggregate and "登録", against loading and
# saving the drawing.
set -euo pipefail
build="${1:-build/release}"
work="$build/bench-data/takeoff"
[ -f "$work/site/drawings/takeoff.dxf" ] || SKIP_EZDXF=1 ./bench/run_takeoff.sh "$build" > /dev/null
drawing="$work/site/drawings/takeoff.dxf"
python3 - "$build/hosts/tqstd" "$work" "$drawing" <<'PY'
import subprocess, sys, time, pathlib
tqstd, work, drawing = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]
ini = str(work / 'site' / 'Velum.ini')
def best(args):
    b = 1e9
    for _ in range(3):
        t = time.perf_counter(); subprocess.run(args, stdout=subprocess.DEVNULL, check=True); b = min(b, time.perf_counter() - t)
    return b
json = best([tqstd, '--ini', ini, 'takeoff', drawing, '--json'])
print('tqstd takeoff --json (load, take off, print): %.1f ms (best of 3)' % (1000 * json))
script = work / 'open-collect.txt'
script.write_text('command TQ_STD_INF\nclick 200:203\nclose 2000\nanswer OK\n', encoding='utf-8')
opened = best([tqstd, '--ini', ini, 'script', drawing, str(script), '--no-save'])
print('tqstd script opening 拾い確認 and closing it:   %.1f ms (best of 3), %.2f x the json' % (1000 * opened, opened / json))
PY
"$build/bench/collect_bench" "$work/site" "$drawing" "$work"
