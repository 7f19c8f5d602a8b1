#!/usr/bin/env bash
# Whether anything that is installed, its debug information too, names a folder of the machine that built it:
# the source, the build, or a place where the linker found a library. A choice of the integrator is heeded.
#
# Usage: installed_paths.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source=$(realpath "$1")
build=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "installed_paths: $1" >&2
    exit 1
}

DESTDIR=$work cmake --install "$build" --prefix /prefix >/dev/null
! grep -rlF -e "$source/" -e "$build" "$work" || fail "these files name $source or $build"
if grep -q '^CMAKE_BUILD_TYPE:.*=RelWithDebInfo' "$build/CMakeCache.txt"; then
    find "$work" -name 'libTextManagerLibrary*.so' -exec readelf --section-headers {} + |
        grep '[.]debug_info' >/dev/null || fail "there is no debug information to look into"
fi
find "$work" \( -name '*.so.*' -o -path '*/bin/*' \) -type f | while read -r file; do
    path=$(readelf --dynamic "$file" | sed -n 's/.*R.*PATH.*\[\(.*\)\]/\1/p')
    ! tr ':' '\n' <<<"$path" | grep -v '^\$ORIGIN' | grep . || fail "$file looks for libraries in $path"
done

# What an integrator chooses.
configure() { # NAME OPTION...
    cmake -S "$source" -B "$work/$1" -G Ninja -Wno-dev -DBUILD_TESTING=OFF "${@:2}" >"$work/$1.log" 2>&1
}
configure chosen -DBUILD_TESTING=ON -DCMAKE_INSTALL_RPATH=/opt/device/lib -DCMAKE_INSTALL_LIBDIR=/lib64 \
    -DCMAKE_BUILD_TYPE=Release '-DCMAKE_CXX_FLAGS_RELEASE=-O3 -DNDEBUG' || fail "$(cat "$work/chosen.log")"
grep -q '"[^"]*/opt/device/lib' "$work/chosen/src/cmake_install.cmake" || fail "CMAKE_INSTALL_RPATH is not heeded"
grep -qx 'libdir=/lib64' "$work"/chosen/*.pc || fail "an absolute CMAKE_INSTALL_LIBDIR is not heeded"
grep -q -e '-O3 -DNDEBUG' "$work/chosen/build.ninja" || fail "CMAKE_CXX_FLAGS_RELEASE is not heeded"
configure chosen -DCMAKE_SKIP_INSTALL_RPATH=ON || fail "$(cat "$work/chosen.log")"
! grep -q '/opt/device/lib' "$work/chosen/src/cmake_install.cmake" || fail "CMAKE_SKIP_INSTALL_RPATH is not heeded"
! grep -q 'tst_' "$work/chosen/build.ninja" || fail "BUILD_TESTING is not heeded"
! configure static -DBUILD_SHARED_LIBS=OFF || fail "a static build is not refused"
grep -q "BUILD_SHARED_LIBS is off" "$work/static.log" || fail "it is not said why a static build is refused"
