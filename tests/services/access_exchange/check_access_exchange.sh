#!/usr/bin/env bash
# The Linux and the Windows build share one access file: each meets the holders that the other has
# left behind, and is admitted, refused or kept waiting as among its own.
# Usage: check_access_exchange.sh LINUX_PROGRAM BUILD_FOLDER
#   VEMRA_WINDOWS_BUILD   the Windows build (default BUILD_FOLDER/mingw)
#   VEMRA_WINEPREFIX      Wine's folder (default BUILD_FOLDER/wine)
# Exit code 77: there is no Wine or no Windows build.
set -euo pipefail
linux=$1
windows=${VEMRA_WINDOWS_BUILD:-$2/mingw}/tests/services/access_exchange/access_actor.exe
export WINEPREFIX=${VEMRA_WINEPREFIX:-$2/wine} WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml="
if ! command -v wine >/dev/null || [ ! -e "$windows" ] || [ ! -e "$WINEPREFIX/system.reg" ]; then
  echo "skipped: no Wine or no Windows build"
  exit 77
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
file=$work/db.acc
on_linux() { "$linux" "$file" "$@"; }
on_windows() { wine "$windows" "Z:$file" "$@" | tr -d '\r'; }

expect() { # WHAT_WAS_PRINTED EXPECTED...
  local printed=$1
  shift
  [ "$printed" = "$(printf '%s\n' "$@")" ] && return
  printf 'expected:\n%s\nprinted:\n%s\nthe file:\n' "$(printf '%s\n' "$@")" "$printed" >&2
  cat -A "$file" >&2
  exit 1
}

searching='Indexing in progress; searches are not allowed.'
requested='Index requested; searches are not allowed.'
for pair in "on_linux on_windows" "on_windows on_linux"; do
  read -r first second <<<"$pair"
  rm -f "$file"
  # A searcher stays: the other system's indexer only files a request, which shuts searchers out.
  expect "$($first search)" "search 1 0 " searcher
  expect "$($second search release-search)" "search 1 0 " "release-search 1 0 " searcher
  expect "$($second index)" "index 1 2 " searcher "[IndexRequest]"
  expect "$($first search index)" "search 0 2 $requested" \
    "index 0 2 Index requested by another application." searcher "[IndexRequest]"
  # An indexer stays: it shuts out everybody.
  : >"$file"
  expect "$($first index index)" "index 1 1 " "index 1 1 " "[Indexing]"
  expect "$($second search index release-index)" "search 0 1 $searching" \
    "index 0 1 The database is being indexed by another application." \
    "release-index 0 1 This thread does not have indexing access." "[Indexing]"
  expect "$($first search)" "search 0 1 $searching" "[Indexing]"
done
