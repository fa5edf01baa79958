#!/usr/bin/env bash
# Makes the Debian package with cpack and checks, with dpkg-deb, that it holds the libraries, headers,
# CMake package, pkg-config file and bmtool, and depends on the shared libraries they load.
# Usage: deb_test.sh BUILD_DIR WORK_DIR VERSION SONAME
set -euo pipefail
build=$1 work=$2 version=$3 soname=$4
rm -rf "$work"
mkdir -p "$work"

fail() { echo "FAIL: $*" >&2; exit 1; }

cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1 || {
  cat "$work/cpack.log"
  fail "cpack failed"
}
deb=$(find "$work" -maxdepth 1 -name '*.deb')
[ "$(wc -l <<<"$deb")" = 1 ] && [ -n "$deb" ] || fail "cpack made no single .deb"
info=$(dpkg-deb -I "$deb")
contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
echo "$info"

grep -q "^ Package: mz-blockmodel$" <<<"$info" || fail "package name"
grep -q "^ Version: $version$" <<<"$info" || fail "version"
depends=$(grep '^ Depends:' <<<"$info") || fail "no Depends"
for dep in libboost-iostreams libc6 libstdc\\+\\+6; do
  grep -Eq "[ ,]$dep[^,]* \(>= " <<<"$depends" || fail "Depends lacks $dep"
done
grep -q mz-blockmodel <<<"$depends" && fail "the package depends on itself"

lib='\./usr/lib/([^/]+/)?'
for file in '\./usr/bin/bmtool' "${lib}libmz_blockmodel\\.so\\.$version" "${lib}${soname//./\\.}" \
            "${lib}libmz_blockmodel\\.so" "${lib}libmz_isl_iostreams\\.so\\.$version" \
            '\./usr/include/mz_blockmodel/blockmodel/HABMBlock\.h' '\./usr/include/mz_blockmodel/msg/ComMsgMgr\.h' \
            "${lib}cmake/mz_blockmodel/mz_blockmodelConfig\\.cmake" \
            "${lib}cmake/mz_blockmodel/mz_blockmodelTargets\\.cmake" "${lib}pkgconfig/mz_blockmodel\\.pc"; do
  grep -Eq "^$file$" <<<"$contents" || fail "no $file in the package"
done
! grep -Eq 'detail/|_tests$|bench_' <<<"$contents" || fail "the package holds internal headers or tests"
echo "$(grep -c . <<<"$contents") entries"
