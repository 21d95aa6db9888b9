#!/usr/bin/env bash
# Installs the Debian packages of deps/debian-packages.txt that are not installed yet.
set -euo pipefail
list="$(dirname "$0")/debian-packages.txt"
missing=()
while read -r pkg; do
  pkg="${pkg%%#*}"; pkg="${pkg// /}"
  [ -n "$pkg" ] || continue
  dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
done < "$list"
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
$sudo apt-get update
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
