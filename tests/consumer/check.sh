#!/usr/bin/env bash
# Adds the library to a project in each way that docs/install.md describes, builds an example there and runs it.
# An installed tree is moved before it is used.
# check.sh BUILD WORK COMPILER VERSION: the build tree to install from, a directory for temporary files, the
# compiler, and the library's version.
# Time: up to two minutes. Needs cmake, ninja and pkg-config.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$1 work=$2 compiler=$3 version=$4
major=${version%%.*} minor=${version#*.} minor=${minor%%.*}
rm -rf "$work"
mkdir -p "$work/moved"
cd "$work"

configure() {
  cmake -S "$root/tests/consumer" -B "$1" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" "${@:2}"
}

# check_output EXAMPLE COMMAND...: the command must print what the example in the build tree prints.
check_output() {
  local example=$1
  "${@:2}" | cmp - <("$build/examples/$example")
}

# check_installed KIND: moves the installed tree, uses it by CMake and by pkg-config.
check_installed() {
  local prefix=$work/moved/$1 libdir
  mv "installed/$1" "$prefix"
  configure "find-$1" -DCMAKE_PREFIX_PATH="$prefix" -DWANTED="$major.$minor" -DEXAMPLE=handlers
  cmake --build "find-$1"
  check_output handlers "find-$1/consumer"
  libdir=$prefix/$(cd "$prefix" && dirname "$(find lib -name pkgconfig)")
  PKG_CONFIG_PATH=$libdir/pkgconfig pkg-config --cflags --libs next_steps >flags
  # shellcheck disable=SC2046 # the flags are words
  "$compiler" -std=c++20 "$root/examples/finish_an_answer.cpp" $(<flags) -o "pkg-config-$1"
  check_output finish_an_answer env LD_LIBRARY_PATH="$libdir" "./pkg-config-$1"
}

# check_optimisation EXPECTED OPTION...: a project that is configured like this compiles the library with these
# -O options.
check_optimisation() {
  configure optimised --fresh -DSUBDIRECTORY="$root" -DEXAMPLE=handlers -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "${@:2}"
  sed -n '/"command".*finishing.cpp/p' optimised/compile_commands.json | { grep -oE ' -O[^ ]*' || true; } |
    xargs | diff - <(echo "$1")
}

cmake --install "$build" --prefix installed/static --component dev
check_installed static
diff -r moved/static/share/next_steps "$root/schemas"
(cd moved/static/include && find . -name '*.h' -printf '#include "%P"\n') >headers.cpp
"$compiler" -std=c++20 -Imoved/static/include -fsyntax-only headers.cpp

for wanted in "$major.$((minor + 1))" "$((major + 1)).0"; do
  if configure "refused-$wanted" -DCMAKE_PREFIX_PATH="$work/moved/static" -DWANTED="$wanted" 2>errors; then
    echo "version $wanted was not refused" && exit 1
  fi
  grep -q "next_steps-config.cmake, version: $version" errors
done

check_optimisation -O2
check_optimisation "" -DCMAKE_BUILD_TYPE=Debug
check_optimisation -O1 -DCMAKE_CXX_FLAGS=-O1
check_optimisation "-O2 -O0" -DOPTIONS=-O0

configure subdirectory -DSUBDIRECTORY="$root" -DBUILD_SHARED_LIBS=ON -DNEXT_STEPS_INSTALL=ON -DEXAMPLE=finish_an_answer
cmake --build subdirectory
check_output finish_an_answer subdirectory/consumer
cmake --install subdirectory --prefix installed/shared
check_installed shared
library=$(find moved/shared -name "libnext_steps.so.$major")
if nm -DC --defined-only "$library" | grep 'next_steps::_'; then
  echo "the shared library exports internal functions" && exit 1
fi
