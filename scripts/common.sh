# Shared by the scripts; to be sourced by bash.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build rapidjson-dev libcli11-dev)
test_packages=("${build_packages[@]}" libgtest-dev nlohmann-json3-dev clang-format universal-ctags pkg-config)
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

# Runs a command whose output matters only when it fails.
quietly() {
  local output
  output=$("$@" 2>&1 </dev/null) || {
    printf '%s\n' "$output" >&2
    return 1
  }
}

# Runs apt-get with the arguments, as root.
as_root_apt() {
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "no sudo to run apt-get $*"
    as_root=(sudo)
  fi
  quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@"
}

# Installs those of the named Debian packages that are missing.
need() {
  local missing=() package
  if ! command -v apt-get >/dev/null; then
    say "No apt-get here: taking it that these are installed: $*"
    return
  fi
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing: ${missing[*]}"
  as_root_apt update || fail "the list of packages could not be fetched"
  as_root_apt install -y --no-install-recommends "${missing[@]}" ||
    fail "these packages could not be installed: ${missing[*]}"
}

# Configures and builds the preset `name`; the arguments after it go to cmake as
# it configures.
build() {
  local preset=$1
  shift
  say "Building $preset"
  cmake --preset "$preset" "$@" >/dev/null || fail "the preset $preset could not be configured"
  cmake --build --preset "$preset" -j "$(nproc)" || fail "the preset $preset did not build"
}

# Builds the targets of the benchmarks in build/bench; without any, all of them.
build_bench() {
  say "Building the benchmarks"
  cmake --preset release -B build/bench -DNEXT_STEPS_BUILD_APPS=OFF -DNEXT_STEPS_BUILD_TESTS=OFF \
    -DNEXT_STEPS_BUILD_BENCH=ON >/dev/null || fail "the benchmarks could not be configured"
  cmake --build build/bench -j "$(nproc)" ${1:+--target "$@"} >&2 || fail "the benchmarks did not build"
}

# Builds the preset `name` with its tests and runs them; the last lines are
# ctest's summary.
build_and_test() {
  build "$1" -DNEXT_STEPS_BUILD_TESTS=ON
  say "Testing $1"
  ctest --preset "$1" -j "$(nproc)" </dev/null || fail "tests of the preset $1 failed"
}
