#!/usr/bin/env bash
# The workbook engine on LibreOffice: import of the example workbook cold (engine start
# included) and warm, the workbook part of a registration of 6 rows with 20 parts rows each.
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
