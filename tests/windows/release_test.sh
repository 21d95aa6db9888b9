#!/usr/bin/env bash
# The Windows release as a user gets it: the zip unpacked into a folder whose name holds
# Japanese characters and a space, tqstd.exe run under Wine on the example installation it
# carries. The takeoff must give the same bytes as the Linux build (the fixtures).
set -euo pipefail
zip="${1:?the release zip}"
root="$(cd "$(dirname "$0")/../.." && pwd)"
run="$root/cmake/toolchains/wine-run.sh"
work="$root/build/windows/release-test/設備 標準図 配布"
rm -rf "$work" && mkdir -p "$work"
unzip -q "$zip" -d "$work"
tq="$work/tqstd"
site="$tq/examples/site"
fail=0
check() {  # name, expected file, produced file
  if cmp -s "$2" "$3"; then echo "ok   $1"; else echo "FAIL $1: $3 differs from $2"; fail=1; fi
}

# Without --ini the program finds the installation unpacked beside it.
"$run" "$tq/tqstd.exe" settings > "$work/settings.txt"
if grep -q "設備 標準図 配布" "$work/settings.txt"; then echo "ok   settings from the installation beside tqstd.exe"
else echo "FAIL settings: not from the installation beside tqstd.exe"; fail=1; fi

"$run" "$tq/tqstd.exe" --ini "$site/Velum.ini" takeoff "$site/drawings/設備標準図.dxf" \
  --kind aggregate --separator comma -o "$work/集計.txt" > /dev/null
check "takeoff aggregate" "$root/tests/fixtures/takeoff/example_aggregate_comma.txt" "$work/集計.txt"
"$run" "$tq/tqstd.exe" --ini "$site/Velum.ini" takeoff "$site/drawings/設備標準図.dxf" \
  --kind list --separator tab -o "$work/一覧.txt" > /dev/null
check "takeoff list" "$root/tests/fixtures/takeoff/example_list_tab.txt" "$work/一覧.txt"

# Marking saves the drawing in place: atomically, the previous version kept as .bak.
cp "$site/drawings/設備標準図.dxf" "$work/元.dxf"
"$run" "$tq/tqstd.exe" --ini "$site/Velum.ini" mark "$site/drawings/設備標準図.dxf" > /dev/null
check "mark keeps the previous drawing as .bak" "$work/元.dxf" "$site/drawings/設備標準図.dxf.bak"
if cmp -s "$work/元.dxf" "$site/drawings/設備標準図.dxf"; then echo "FAIL mark: the drawing did not change"; fail=1; fi
if ls "$site/drawings" | grep -vE '\.(dxf|bak)$' | grep -q .; then echo "FAIL mark: a temporary or lock file is left"; fail=1; fi
exit $fail
