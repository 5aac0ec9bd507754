#!/usr/bin/env bash
# Cross-builds zlib-based image libraries for 64-bit Windows from Debian's source packages.
# Result: build/libraries/{include,lib,bin}. A finished library is left alone on the next run.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
prefix=${HALVORAN_LIBRARIES:-$root/build/libraries}
work=$root/build/library-sources
triple=x86_64-w64-mingw32
mkdir -p "$prefix/done" "$work"

. "$root/scripts/source-packages.sh"

# build NAME PACKAGE CMAKE-OPTIONS...
build() {
    local name=$1 package=$2
    shift 2
    [ -e "$prefix/done/$name" ] && return
    echo "Building $name for Windows ..."
    fetch "$package"
    local log=$work/$package/build.log
    if ! (
        rm -rf "$work/$package/build" "$work/$package/stage"
        cmake -S "$work/$package/source" -B "$work/$package/build" -G Ninja \
            -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DHALVORAN_LIBRARIES="$prefix" \
            -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_C_FLAGS=-O2 "$@"
        cmake --build "$work/$package/build"
        cmake --install "$work/$package/build"
    ) >"$log" 2>&1; then
        tail -40 "$log" >&2
        echo "Building $name failed; the whole log is $log" >&2
        exit 1
    fi
    touch "$prefix/done/$name"
}

build libjpeg libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_SIMD=OFF -DWITH_TURBOJPEG=OFF
build libpng libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
build libtiff tiff -DBUILD_SHARED_LIBS=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF \
    -Dlzma=OFF -Dzstd=OFF -Dwebp=OFF -Djbig=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dcxx=OFF
