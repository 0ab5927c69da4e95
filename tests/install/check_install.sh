#!/usr/bin/env bash
# Installs a build into an empty folder and uses it from outside, once through find_package and
# once through pkg-config. Usage: check_install.sh BUILD_DIR CXX [CXX FLAGS]
set -euo pipefail
build=$1 cxx=$2 flags=${3:-}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
if [ -e "$work/prefix/include/Support/platform" ]; then
  echo "the private platform headers were installed" >&2
  exit 1
fi

cmake -S "$here/consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" \
  -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/build" >/dev/null
"$work/build/consumer"

libdir=$(dirname "$(find "$work/prefix" -name support.pc)")
export PKG_CONFIG_PATH=$libdir
# shellcheck disable=SC2046  # the flags are words
"$cxx" $flags "$here/consumer/main.cpp" -o "$work/by-pkg-config" $(pkg-config --cflags --libs support)
LD_LIBRARY_PATH=$(dirname "$libdir") "$work/by-pkg-config"
