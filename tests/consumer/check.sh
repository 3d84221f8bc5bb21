#!/usr/bin/env bash
# Adds the library to a project in every way that the README offers, and runs an
# example there. What is installed is moved before it is used.
# check.sh BUILD WORK COMPILER: the build tree to install from, the directory to
# work in, and the compiler.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$1 work=$2 compiler=$3
example=$root/examples/guide.cpp
rm -rf "$work"
mkdir -p "$work"
cd "$work"
"$build/examples/guide" >output

configure() {
  cmake -S "$root/tests/consumer" -B "$1" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug \
    -DEXAMPLE="$example" "${@:2}"
}

# Builds what was configured as `way`, and runs it.
check_built() {
  cmake --build "$1"
  check_output "$1/consumer"
}

check_output() {
  "$@" | cmp - "$work/output"
}

check_installed() {
  local prefix=$work/moved/$1
  mkdir -p moved && mv "installed/$1" "$prefix"
  configure "find-$1" -DCMAKE_PREFIX_PATH="$prefix" -DWANTED=1.0
  check_built "find-$1"
  local libdir
  libdir=$(cd "$prefix" && dirname "$(find lib -name pkgconfig)")
  PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig pkg-config --cflags --libs next_steps >flags
  # shellcheck disable=SC2046 # the flags are words
  "$compiler" -std=c++20 "$example" $(<flags) -o "pkg-config-$1"
  check_output env LD_LIBRARY_PATH="$prefix/$libdir" "./pkg-config-$1"
}

cmake --install "$build" --prefix installed/static --component dev
check_installed static

for version in 1.1 2.0; do
  if configure "refused-$version" -DCMAKE_PREFIX_PATH="$work/moved/static" -DWANTED=$version 2>errors; then
    echo "version $version was not refused" && exit 1
  fi
  grep -q 'next_steps-config.cmake, version: 1.0' errors
done

configure subdirectory -DSUBDIRECTORY="$root" -DBUILD_SHARED_LIBS=ON -DNEXT_STEPS_INSTALL=ON
check_built subdirectory
cmake --install subdirectory --prefix installed/shared
check_installed shared
[ -n "$(find moved/shared -name 'libnext_steps.so.1')" ]
if nm -DC --defined-only "$(find moved/shared -name 'libnext_steps.so')" | grep 'next_steps::_'; then
  echo "the shared library shows what is internal" && exit 1
fi
