#!/usr/bin/env bash
# tqstd.exe under Wine against the Linux build, on the same drawings: the bench drawing's open
# and unchanged save (timed inside the process, best of 5) and the takeoff aggregate of 1,000
# standard drawings (the whole process, best of 3, Wine's start included).
#   bench/run_wine.sh [LINUX_BUILD] [WINDOWS_BUILD]
set -euo pipefail
linux="${1:-build/release}"
windows="${2:-build/windows}"
run="cmake/toolchains/wine-run.sh"
work="$windows/bench-data"
mkdir -p "$work"
big="$work/big.dxf"
[ -f "$big" ] || "$linux/bench/dxf_bench" generate "$big"
echo "drawing: $(du -m "$big" | cut -f1) MB"
"$linux/bench/dxf_bench" open "$big" 5 > "$work/linux-open.txt"
"$run" "$windows/bench/dxf_bench.exe" open "$big" 5 > "$work/wine-open.txt"
"$linux/bench/dxf_bench" save "$big" "$work/linux-saved.dxf" 5 > "$work/linux-save.txt"
"$run" "$windows/bench/dxf_bench.exe" save "$big" "$work/wine-saved.dxf" 5 > "$work/wine-save.txt"
cmp "$big" "$work/wine-saved.dxf" && echo "unchanged save under Wine is byte-identical"

site="$work/takeoff/site"
if [ ! -f "$site/drawings/takeoff.dxf" ]; then
  rm -rf "$site" && mkdir -p "$(dirname "$site")" && cp -r examples/site "$site"
  printf '[標準図]\r\n縦ﾌﾚｰﾑ数=25\r\n横ﾌﾚｰﾑ数=40\r\n' | iconv -f UTF-8 -t CP932 > "$site/data/標準図設定.ini"
  "$linux/bench/frame_bench" generate-takeoff "$site/drawings"
fi
python3 - "$linux/hosts/tqstd" "$windows/hosts/tqstd.exe" "$run" "$site" "$work" <<'PY'
import subprocess, sys, time, pathlib, re, filecmp
tqstd, exe, run, site, work = sys.argv[1:6]
work = pathlib.Path(work)
def best(args, n=3):
    b = 1e9
    for _ in range(n):
        t = time.perf_counter(); subprocess.run(args, stdout=subprocess.DEVNULL, check=True); b = min(b, time.perf_counter() - t)
    return b
job = ['--ini', site + '/Velum.ini', 'takeoff', site + '/drawings/takeoff.dxf', '--kind', 'aggregate', '--separator', 'comma', '-o']
lt = best([tqstd] + job + [str(work / 'linux-aggregate.txt')])
wt = best([run, exe] + job + [str(work / 'wine-aggregate.txt')])
start = best([run, exe, '--help'])
num = lambda f, key: float(re.search(key + r' ([0-9.]+) s', (work / f).read_text()).group(1))
for what, l, w in [('open', num('linux-open.txt', 'open'), num('wine-open.txt', 'open')),
                   ('unchanged save', num('linux-save.txt', 'save'), num('wine-save.txt', 'save')),
                   ('takeoff aggregate (process)', lt, wt),
                   ('takeoff aggregate less Wine start', lt, wt - start)]:
    print('%-36s Linux %.3f s  Wine %.3f s  = %.2f x' % (what, l, w, w / l))
print('Wine start (tqstd.exe --help): %.3f s' % start)
print('same aggregate bytes: %s' % filecmp.cmp(work / 'linux-aggregate.txt', work / 'wine-aggregate.txt', shallow=False))
PY
