#!/bin/sh
# Settings move from a Linux store to the registry of Windows and back, and stay the same.
# Usage: round_trip.sh VEMRA SETTINGS.reg   (their values in the order of names, as Wine lists them)
set -eu
vemra=$1
settings=$2
key='HKEY_LOCAL_MACHINE\SOFTWARE\TAVO'
project=$(cd "$(dirname "$0")/../../.." && pwd)
export WINEPREFIX="${VEMRA_WINEPREFIX:-$project/build/wine}" WINEDEBUG=-all
[ -e "$WINEPREFIX/system.reg" ] && command -v wine >/dev/null || exit 77

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
windows() { echo "Z:$1" | tr / '\\'; }
on() { VEMRA_REGISTRY="$folder/$1.db" "$vemra" registry "$2" "$3" ${4+"$4"}; }
same() { cmp "$1" "$2" || { echo "$3" >&2; exit 1; }; }

on first import "$settings"
on first export "$folder/ansi.reg" --ansi
same "$settings" "$folder/ansi.reg" "the settings are not written as they were read"
on first export "$folder/there.reg"

printf 'REGEDIT4\r\n\r\n[-%s]\r\n' "$key" >"$folder/clear.reg"
wine regedit /S "$(windows "$folder/clear.reg")"
wine regedit /S "$(windows "$folder/there.reg")"
wine regedit /E "$(windows "$folder/back.reg")" "$key"
wine regedit /S "$(windows "$folder/clear.reg")"

on second import "$folder/back.reg"
on second export "$folder/again.reg"
same "$folder/there.reg" "$folder/again.reg" "the settings changed on their way"
