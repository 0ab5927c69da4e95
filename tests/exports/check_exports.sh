#!/usr/bin/env bash
# Compares what the shared library exports with the checked-in list, so that nothing leaves or
# enters its interface unnoticed. Usage: check_exports.sh LIBRARY LIST [--update]
set -euo pipefail
library=$1 list=$2
exported() {
  nm -D --defined-only --demangle "$library" | cut -d' ' -f3- | LC_ALL=C sort -u
}
if [ "${3:-}" = --update ]; then
  exported >"$list"
  echo "$(wc -l <"$list") symbols"
  exit 0
fi
[ "$(wc -l <"$list")" -gt 0 ]
# Only what is the library's own may be in the list at all.
if grep -v 'vemra::' "$list"; then
  echo "these names are not the library's own" >&2
  exit 1
fi
diff -u "$list" <(exported) || {
  echo "exports changed; when that is meant: tests/exports/check_exports.sh LIBRARY LIST --update" >&2
  exit 1
}
