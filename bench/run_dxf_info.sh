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
import statistics, subprocess, sys, time
build, big, runs, skip_ezdxf = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4] == '1'
info = [build + '/hosts/tqstd', 'dxf-info', big]
bare = [build + '/bench/dxf_bench', 'open', big, '1']
ezdxf = [sys.executable, '-c', 'import sys, ezdxf; ezdxf.readfile(sys.argv[1])', big]

def timed(args):
    t = time.perf_counter()
    subprocess.run(args, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.perf_counter() - t

def paired(a, b, n):
    timed(a), timed(b)  # warm
    pairs = [(timed(a), timed(b)) for _ in range(n)]
    return statistics.median(x for x, _ in pairs), statistics.median(y for _, y in pairs), statistics.median(x / y for x, y in pairs)

i, o, r = paired(info, bare, runs)
print('tqstd dxf-info %.3f s, bare open process %.3f s: dxf-info / open = %.2f (median of %d pairs; target <= 1.3)' % (i, o, r, runs))
if not skip_ezdxf:
    e, i2, r2 = paired(ezdxf, info, 3)
    print('ezdxf readfile %.2f s, tqstd dxf-info %.3f s: dxf-info is %.0f x faster (median of 3 pairs; target >= 55)' % (e, i2, r2))
PY
