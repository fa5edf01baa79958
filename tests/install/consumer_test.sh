#!/usr/bin/env bash
# Installs the build into a fresh prefix and uses it as a project outside this one would: builds a small
# program once through the CMake package and once through pkg-config, runs both and the installed bmtool,
# and checks the SONAME and that no installed header pulls in RapidJSON or Boost.Iostreams.
# Usage: consumer_test.sh BUILD_DIR CXX WORK_DIR EXAMPLE SONAME
set -euo pipefail
build=$1 cxx=$2 work=$3 example=$4 soname=$5
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"
prefix=$work/prefix

fail() { echo "FAIL: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$prefix" >/dev/null
pc=$(find "$prefix" -name mz_blockmodel.pc)
[ -n "$pc" ] || fail "no mz_blockmodel.pc installed"
export PKG_CONFIG_PATH=$(dirname "$pc")
libdir=$(pkg-config --variable=libdir mz_blockmodel)
includedir=$(pkg-config --variable=includedir mz_blockmodel)
[ "$(realpath "$libdir")" = "$(realpath "$(dirname "$pc")/..")" ] || fail "pkg-config names $libdir"

readelf -d "$libdir/libmz_blockmodel.so" | grep -q "Library soname: \[$soname\]" ||
  fail "libmz_blockmodel.so has no SONAME $soname"
! find "$prefix" -path '*/detail/*' | grep -q . || fail "internal headers were installed"

echo "--- find_package(mz_blockmodel CONFIG)"
cmake -S "$here/consumer" -B "$work/cmake" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
out=$("$work/cmake/consumer" "$example")
echo "$out"
[ "$out" = "blocks 10" ] || fail "the CMake consumer printed '$out'"

echo "--- pkg-config mz_blockmodel"
# shellcheck disable=SC2046 # the flags are words
"$cxx" -std=c++17 -o "$work/consumer_pc" "$here/consumer/main.cpp" $(pkg-config --cflags --libs mz_blockmodel) \
  -Wl,-rpath,"$libdir"
out=$("$work/consumer_pc" "$example")
echo "$out"
[ "$out" = "blocks 10" ] || fail "the pkg-config consumer printed '$out'"

echo "--- every installed header, together, from the prefix alone"
(cd "$includedir" && find . -name '*.h' | sort | sed 's|^\./\(.*\)|#include "\1"|') >"$work/headers.cpp"
"$cxx" -std=c++17 -Wall -Wextra -Werror -fsyntax-only -I"$includedir" "$work/headers.cpp"
deps=$("$cxx" -std=c++17 -M -I"$includedir" "$work/headers.cpp")
! grep -Eq 'rapidjson/|boost/iostreams/' <<<"$deps" || fail "an installed header pulls in RapidJSON or Boost.Iostreams"
echo "$(wc -l <"$work/headers.cpp") headers compile"

echo "--- the installed bmtool"
"$prefix/bin/bmtool" info "$example" | grep -E '^blocks +10$' || fail "the installed bmtool did not run"
