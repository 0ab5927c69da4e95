# install_packages PACKAGE...: installs the Debian packages among these that are missing, as root
# or through sudo. Meant to be sourced.
install_packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "installing: ${missing[*]}" >&2
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

BUILD_PACKAGES=(g++ cmake ninja-build pkg-config libsqlite3-dev libcli11-dev nlohmann-json3-dev)
TEST_PACKAGES=("${BUILD_PACKAGES[@]}" libgtest-dev libgmock-dev python3 python3-doc
  python3-html5lib python3-lxml)
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix googletest wine64 wine xvfb xauth)
CLANG_PACKAGES=(clang libclang-rt-14-dev)
LINT_PACKAGES=(clang clang-format clang-tidy)
