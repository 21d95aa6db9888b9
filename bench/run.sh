#!/usr/bin/env bash
# The DXF backend against its yardsticks on one generated 60 MB drawing, warm cache:
# wc -l (newline scan), a naive line-by-line tag scan, and ezdxf.
set -euo pipefail
build="${1:-build/release}"
work="$build/bench-data"
mkdir -p "$work"
big="$work/big.dxf"
[ -f "$big" ] || "$build/bench/dxf_bench" generate "$big"
cat "$big" > /dev/null
echo "drawing: $(du -m "$big" | cut -f1) MB, $(wc -l < "$big") lines"
best_wc=$(python3 - "$big" <<'PY'
import subprocess, sys, time
best = 1e9
for _ in range(7):
    t = time.perf_counter(); subprocess.run(['wc', '-l', sys.argv[1]], stdout=subprocess.DEVNULL, check=True)
    best = min(best, time.perf_counter() - t)
print('%.4f' % best)
PY
)
echo "wc -l $best_wc s (best of 7, process)"
"$build/bench/dxf_bench" naive "$big" 3 | tee "$work/naive.txt"
"$build/bench/dxf_bench" open "$big" 5 | tee "$work/open.txt"
"$build/bench/dxf_bench" save "$big" "$work/saved.dxf" 5 | tee "$work/save.txt"
cmp -s "$big" "$work/saved.dxf" && echo "unchanged save is byte-identical"
if [ "${SKIP_EZDXF:-}" != 1 ]; then
  /usr/bin/python3 bench/ezdxf_bench.py "$big" "$work/ezdxf-saved.dxf" | tee "$work/ezdxf.txt"
fi
python3 - "$best_wc" "$work" <<'PY'
import re, sys, pathlib
wc = float(sys.argv[1]); work = pathlib.Path(sys.argv[2])
num = lambda f, key: float(re.search(key + r' ([0-9.]+) s', (work / f).read_text()).group(1))
open_s, save_s = num('open.txt', 'open'), num('save.txt', 'save')
size_mb = pathlib.Path(work / 'big.dxf').stat().st_size / 2**20
peak_mb = int(re.search(r'peak (\d+) kB', (work / 'open.txt').read_text()).group(1)) / 1024
print('open  %.3f s = %.1f x wc -l' % (open_s, open_s / wc))
print('save  %.3f s = %.1f x wc -l' % (save_s, save_s / wc))
print('peak memory %.0f MB = %.2f x the file' % (peak_mb, peak_mb / size_mb))
ez = work / 'ezdxf.txt'
if ez.exists():
    r, s = num('ezdxf.txt', 'read'), num('ezdxf.txt', 'save')
    print('ezdxf read %.2f s: open is %.0f x faster; ezdxf save %.2f s: save is %.0f x faster' % (r, r / open_s, s, s / save_s))
PY
