#!/usr/bin/env bash
# Definition files of the Linux build are read by the Windows build and written again byte for byte
# the same, and the other way round; both write the same files to begin with.
# Usage: check_exchange.sh LINUX_PROGRAM BUILD_FOLDER
#   VEMRA_WINDOWS_BUILD   the Windows build (default BUILD_FOLDER/mingw)
#   VEMRA_WINEPREFIX      Wine's folder (default BUILD_FOLDER/wine)
# Exit code 77: there is no Wine or no Windows build.
set -euo pipefail
linux=$1
windows=${VEMRA_WINDOWS_BUILD:-$2/mingw}/tests/exchange/exchange.exe
export WINEPREFIX=${VEMRA_WINEPREFIX:-$2/wine} WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml="
if ! command -v wine >/dev/null || [ ! -e "$windows" ] || [ ! -e "$WINEPREFIX/system.reg" ]; then
  echo "skipped: no Wine or no Windows build"
  exit 77
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work"/{linux,windows,linux-by-windows,windows-by-linux}
"$linux" write "$work/linux"
wine "$windows" write "Z:$work/windows"
wine "$windows" rewrite "Z:$work/linux" "Z:$work/linux-by-windows"
"$linux" rewrite "$work/windows" "$work/windows-by-linux"

for pair in "linux windows" "linux linux-by-windows" "windows windows-by-linux"; do
  read -r from to <<<"$pair"
  diff -r "$work/$from" "$work/$to"
done
