# Set-up steps shared by run and test: packages, libraries, builds. To be sourced, with $root set to the project's folder.

. "$root/scripts/environment.sh"

build_packages=(
    cmake ninja-build g++ make ca-certificates dpkg-dev
    g++-mingw-w64-x86-64-posix libz-mingw-w64-dev
    wine wine64 xvfb googletest fonts-liberation2
)
test_packages=(
    libtiff-dev libpng-dev libjpeg62-turbo-dev zlib1g-dev
    libtiff-tools imagemagick netpbm python3 python3-ezdxf clang clang-format
)
guide_packages=(python3 python3-markdown)
guide_picture_packages=(imagemagick)

# ensure_packages NAME...: installs what is missing as root, or says the line that does.
ensure_packages() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if [ "$(id -u)" -ne 0 ]; then
        echo "Some packages are missing. Install them with this line and start again:" >&2
        echo "  sudo apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing packages: ${missing[*]} ..."
    mkdir -p "$root/build"
    export DEBIAN_FRONTEND=noninteractive
    if ! { apt-get update && apt-get install -y --no-install-recommends "${missing[@]}"; } >"$root/build/packages.log" 2>&1; then
        tail -20 "$root/build/packages.log" >&2
        echo "The packages could not be installed; the whole log is build/packages.log." >&2
        exit 1
    fi
}

# build_preset PRESET TARGET...: configures once and builds; quiet unless something fails.
build_preset() {
    local preset=$1 log=$root/build/$1.log
    shift
    mkdir -p "$root/build"
    if [ ! -e "$root/build/$preset/build.ninja" ]; then
        echo "Configuring the $preset build ..."
        (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 ||
            { tail -40 "$log" >&2; echo "Configuring failed; the whole log is $log" >&2; exit 1; }
    fi
    echo "Building ($preset) ..."
    cmake --build "$root/build/$preset" --target "$@" >"$log" 2>&1 ||
        { grep -E -A12 'error|FAILED' "$log" | head -60 >&2; echo "The build failed; the whole log is $log" >&2; exit 1; }
}

# The examples as they stand in the program folder; a changed example is copied anew.
install_examples() {
    mkdir -p "$root/build/halvoran/Examples"
    cp -u "$root"/examples/*.dxf "$root"/examples/*.tif "$root/build/halvoran/Examples/"
}

# windows_path PATH: the same file as programs under Wine name it.
windows_path() {
    printf 'Z:%s' "$(realpath -m "$1" | tr / '\\')"
}
