#!/usr/bin/env bash
# The workbook engine on LibreOffice: import of the example workbook cold (engine start
# included) and warm, the workbook part of a registration of 6 rows with 20 parts rows each;
# then the same registration through the size setting dialog as a script drives it, and
# whether any office process is left afterwards.
set -euo pipefail
build="${1:-build/release}"
work="$build/bench-data/calc"
mkdir -p "$work"
if [ ! -f "$work/registration.xls" ]; then
  "$build/bench/calc_bench" generate "$work/registration.fods"
  soffice -env:UserInstallation=file://"$(realpath "$work")"/convert-profile --headless --norestore \
    --convert-to xls --outdir "$work" "$work/registration.fods" > /dev/null
fi
"$build/bench/calc_bench" run examples/site/data/M-105.xls "$work/registration.xls"
site="$work/site"
rm -rf "$site"
cp -r examples/site "$site"
"$build/bench/size_dialog_bench" "$site" "$work/registration.xls"
# Zombies are left out: a process that has ended but not yet been reaped is not running.
running=$(ps -eo pid=,stat=,args= | awk '$2 !~ /^Z/ && /soffice[.]bin/' || true)
if [ -n "$running" ]; then
  echo "office processes running after the benchmarks (this or another program's):"
  echo "$running"
else
  echo "no office process running after the benchmarks"
fi
