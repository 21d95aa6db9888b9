#!/usr/bin/env bash
# tqstd takeoff --kind aggregate on 1,000 standard drawings (two records of 20 lines each,
# 500 entities a frame, about 100 MB of DXF) against the same job scripted with ezdxf.
set -euo pipefail
build="${1:-build/release}"
work="$build/bench-data/takeoff"
mkdir -p "$work"
if [ ! -f "$work/site/drawings/takeoff.dxf" ]; then
  rm -rf "$work/site" && cp -r examples/site "$work/site"
  printf '[標準図]\r\n縦ﾌﾚｰﾑ数=25\r\n横ﾌﾚｰﾑ数=40\r\n' | iconv -f UTF-8 -t CP932 > "$work/site/data/標準図設定.ini"
  printf '見出し,記号,工事項目,CI-NETコード,部材名,寸法1,寸法2,寸法3,材質,仕様,用途,施工,支給,夜間,内張,摘要,数量,予備,終端\r\nコード,S001,&S501,SNET,SNAM,SSL0,SSW0,SSH0,SMAT,SPEC,&SC01,&SC03,&SC04,&SC05,&SC06,S481,S304,END,END\r\n' \
    | iconv -f UTF-8 -t CP932 > "$work/site/system/Addin/標準図/標準図用出力フォーマット.csv"
  "$build/bench/frame_bench" generate-takeoff "$work/site/drawings"
fi
drawing="$work/site/drawings/takeoff.dxf"
cat "$drawing" > /dev/null
echo "drawing: $(du -m "$drawing" | cut -f1) MB"
python3 - "$build/hosts/tqstd" "$work" "$drawing" "${SKIP_EZDXF:-}" <<'PY'
import subprocess, sys, time, pathlib, filecmp
tqstd, work, drawing, skip = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3], sys.argv[4]
args = [tqstd, '--ini', str(work / 'site' / 'Velum.ini'), 'takeoff', drawing, '--kind', 'aggregate', '--separator', 'comma',
        '-o', str(work / 'aggregate.txt')]
best = 1e9
for _ in range(3):
    t = time.perf_counter(); subprocess.run(args, stdout=subprocess.DEVNULL, check=True); best = min(best, time.perf_counter() - t)
lines = sum(1 for _ in open(work / 'aggregate.txt', 'rb'))
print('tqstd takeoff --kind aggregate: %.3f s (best of 3), %d aggregate lines' % (best, lines))
if not skip:
    t = time.perf_counter()
    subprocess.run(['/usr/bin/python3', 'bench/ezdxf_takeoff.py', drawing, str(work / 'ezdxf-aggregate.txt')], check=True)
    peer = time.perf_counter() - t
    same = filecmp.cmp(work / 'aggregate.txt', work / 'ezdxf-aggregate.txt', shallow=False)
    print('ezdxf script: %.2f s; tqstd is %.0f x faster; same bytes: %s' % (peer, peer / best, same))
PY
