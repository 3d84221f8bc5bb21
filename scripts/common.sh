# Functions and lists of packages for the other scripts, which source this file. Needs bash.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build rapidjson-dev libcli11-dev)
test_packages=("${build_packages[@]}" libgtest-dev nlohmann-json3-dev clang-format universal-ctags pkg-config python3)
bench_packages=(libbenchmark-dev rapidjson-dev nlohmann-json3-dev libboost-json1.81-dev)
ci_packages=("${test_packages[@]}" clang clang-tidy libclang-rt-14-dev)

say() {
  printf '\n== %s\n' "$*" >&2
}

fail() {
  printf '%s: %s\n' "$0" "$*" >&2
  exit 1
}

is_installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Runs a command. Prints its output only when it fails.
quietly() {
  local output
  output=$("$@" 2>&1 </dev/null) || {
    printf '%s\n' "$output" >&2
    return 1
  }
}

# Runs apt-get as root with the given arguments.
as_root_apt() {
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "no sudo to run apt-get $*"
    as_root=(sudo)
  fi
  quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@"
}

# Installs the named Debian packages that are missing. Without apt-get, assumes that they are installed.
need() {
  local missing=() package
  if ! command -v apt-get >/dev/null; then
    say "There is no apt-get; assuming that these packages are installed: $*"
    return
  fi
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing: ${missing[*]}"
  as_root_apt update || fail "apt-get update failed"
  as_root_apt install -y --no-install-recommends "${missing[@]}" ||
    fail "these packages could not be installed: ${missing[*]}"
}

# need_node [PROGRAM]: installs Node.js, and the package of a program such as npm, unless the command exists already.
need_node() {
  command -v node >/dev/null || need nodejs
  [ $# -eq 0 ] || command -v "$1" >/dev/null || need "$1"
}

# build PRESET [OPTION...]: configures the preset with the options, and builds it.
build() {
  local preset=$1
  shift
  say "Building $preset"
  cmake --preset "$preset" "$@" >/dev/null || fail "the preset $preset could not be configured"
  cmake --build --preset "$preset" -j "$(nproc)" || fail "the preset $preset did not build"
}

# build_bench [TARGET...]: builds these targets, or all benchmarks, in build/bench.
build_bench() {
  say "Building the benchmarks"
  cmake --preset release -B build/bench -DNEXT_STEPS_BUILD_APPS=OFF -DNEXT_STEPS_BUILD_TESTS=OFF \
    -DNEXT_STEPS_BUILD_BENCH=ON >/dev/null || fail "the benchmarks could not be configured"
  cmake --build build/bench -j "$(nproc)" ${1:+--target "$@"} >&2 || fail "the benchmarks did not build"
}

# build_and_test PRESET: builds the preset with its tests and runs them. The last lines are ctest's summary.
build_and_test() {
  build "$1" -DNEXT_STEPS_BUILD_TESTS=ON
  say "Testing $1"
  ctest --preset "$1" -j "$(nproc)" </dev/null || fail "tests of the preset $1 failed"
}
