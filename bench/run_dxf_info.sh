#!/usr/bin/env bash
# `tqstd dxf-info` (every check) on the 60 MB bench drawing, as whole processes run in turn
# with the bench's bare open and with ezdxf's readfile, so that the machine's drift falls on
# both sides of each ratio: the median of the ratios pair by pair.
set -euo pipefail
build="${1:-build/release}"
runs="${RUNS:-7}"
work="$build/bench-data"
mkdir -p "$work"
big="$work/big.dxf"
[ -f "$big" ] || "$build/bench/dxf_bench" generate "$big"
cat "$big" > /dev/null
/usr/bin/python3 - "$build" "$big" "$runs" "${SKIP_EZDXF:-}" <<'PY'
import os, statistics, subprocess, sys, time
build, big, runs, skip_ezdxf = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4] == '1'
info = [build + '/hosts/tqstd', 'dxf-info', big]
bare = [build + '/bench/dxf_bench', 'open', big, '1']
ezdxf = [sys.executable, '-c', 'import sys, ezdxf; ezdxf.readfile(sys.argv[1])', big]

def timed(args):
    """The process's processor time (user + system) and its wall time: on a shared machine the
    wall time holds the waits for a processor, the processor time does not."""
    t = time.perf_counter()
    child = subprocess.Popen(args, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, _, usage = os.wait4(child.pid, 0)
    return usage.ru_utime + usage.ru_stime, time.perf_counter() - t

def paired(a, b, n):
    timed(a), timed(b)  # warm
    pairs = [(timed(a), timed(b)) for _ in range(n)]
    med = lambda f: statistics.median(f(x, y) for x, y in pairs)
    return {k: (med(lambda x, y: x[k]), med(lambda x, y: y[k]), med(lambda x, y: x[k] / y[k])) for k in (0, 1)}

def show(what, m, target):
    for k, name in ((0, 'cpu'), (1, 'wall')):
        a, b, r = m[k]
        print('%s %-4s %.3f s / %.3f s = %.2f (median of pairs; %s)' % (what, name, a, b, r, target))

show('tqstd dxf-info / bare open:', paired(info, bare, runs), 'target <= 1.3')
if not skip_ezdxf:
    show('ezdxf readfile / tqstd dxf-info:', paired(ezdxf, info, 3), 'target >= 55')
PY
