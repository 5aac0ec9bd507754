#!/usr/bin/env bash
# Cross-builds zlib-based image libraries for 64-bit Windows from Debian's source packages.
# Result: build/libraries/{include,lib,bin}. A finished library is left alone on the next run.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
prefix=${HALVORAN_LIBRARIES:-$root/build/libraries}
work=$root/build/library-sources
triple=x86_64-w64-mingw32
mkdir -p "$prefix/done" "$work/apt/lists/partial" "$work/apt/cache/archives/partial"

# A sources list of our own: the machine's entries with source packages switched on.
apt_options=(
    -o "Dir::Etc::sourcelist=$work/apt/sources.list"
    -o "Dir::Etc::sourceparts=$work/apt/parts"
    -o "Dir::State::lists=$work/apt/lists"
    -o "Dir::Cache=$work/apt/cache"
    -o "APT::Get::List-Cleanup=0"
)

write_sources_list() {
    mkdir -p "$work/apt/parts"
    : >"$work/apt/sources.list"
    local file
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$file" ] && grep -E '^deb[[:space:]].*(debian)' "$file" | sed 's/^deb\b/deb-src/' >>"$work/apt/sources.list" || true
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] && grep -q '/debian' "$file" || continue
        sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/parts/$(basename "$file")"
    done
}

update_lists() {
    [ -e "$work/apt/updated" ] && return
    write_sources_list
    apt-get "${apt_options[@]}" update -q >"$work/apt/update.log" 2>&1 ||
        { cat "$work/apt/update.log" >&2; echo "The list of source packages could not be read." >&2; exit 1; }
    touch "$work/apt/updated"
}

# fetch PACKAGE: downloads and unpacks a source package, trying each revision that the archive offers,
# since the newest one listed is not always there to be had.
fetch() {
    local package=$1 version folder=$work/$1
    [ -e "$folder/unpacked" ] && return
    update_lists
    while read -r version; do
        rm -rf "$folder"
        mkdir -p "$folder"
        if (cd "$folder" && apt-get "${apt_options[@]}" source -q --download-only "$package=$version") >"$folder/fetch.log" 2>&1 &&
            (cd "$folder" && dpkg-source --no-check -x ./*.dsc source) >>"$folder/fetch.log" 2>&1; then
            touch "$folder/unpacked"
            return
        fi
    done < <(apt-cache "${apt_options[@]}" showsrc --only-source "$package" | sed -n 's/^Version: //p' | sort -rV | uniq)
    cat "$folder/fetch.log" >&2 || true
    echo "No revision of the source package $package could be fetched." >&2
    exit 1
}

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
build libpng libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF \
    -DZLIB_LIBRARY=/usr/$triple/lib/libz.a -DZLIB_INCLUDE_DIR=/usr/$triple/include
build libtiff tiff -DBUILD_SHARED_LIBS=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF \
    -Dlzma=OFF -Dzstd=OFF -Dwebp=OFF -Djbig=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dcxx=OFF \
    -DZLIB_LIBRARY=/usr/$triple/lib/libz.a -DZLIB_INCLUDE_DIR=/usr/$triple/include
