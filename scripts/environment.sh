# What the scripts share: the Wine environment and a display. To be sourced, with $root set to the project's folder.

# Without a display of the user's own, programs run on an Xvfb. No window manager is there to be waited for, so they have
# a Wine prefix of their own that knows this.
headless_prefix=$root/build/wine-headless
use_own_display() {
    unset DISPLAY
    export HALVORAN_OWN_DISPLAY=1
    export WINEPREFIX=$headless_prefix
}

# Tests run in lanes beside each other: each lane has a display, and with it a clipboard and a pointer, and a Wine prefix
# for itself. HALVORAN_LANE is the number of the lane; what runs by itself takes the first one.
use_lane() {
    local lane=${HALVORAN_LANE:-0}
    local display=HALVORAN_DISPLAY_$lane
    headless_prefix=$root/build/wine-lane-$lane
    use_own_display
    if [ -n "${!display:-}" ]; then
        export DISPLAY=${!display}
    fi
}

export WINEPREFIX=$root/build/wine
if [ -n "${HALVORAN_OWN_DISPLAY:-}" ]; then
    export WINEPREFIX=$headless_prefix
elif [ -z "${DISPLAY:-}" ]; then
    use_own_display
fi
# Wine names files in the locale's encoding: without UTF-8 no name beyond ASCII could be opened.
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
export WINEDEBUG=${WINEDEBUG:--all}
# No questions about missing components, and no debugger window when a program crashes.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
# Test programs stand outside the program folder and find the shared libraries there.
WINEPATH="Z:$(printf '%s' "$root/build/halvoran" | tr / '\\')"
export WINEPATH

# Makes the Wine prefix once. Safe against being called by several tests at once.
prepare_wine() {
    [ -e "$WINEPREFIX/ready" ] && return
    mkdir -p "$root/build"
    (
        flock 9
        [ -e "$WINEPREFIX/ready" ] && exit
        echo "Making the Wine prefix ..." >&2
        with_display wineboot -i >"$root/build/wineboot.log" 2>&1
        if [ -n "${HALVORAN_OWN_DISPLAY:-}" ]; then
            with_display wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >>"$root/build/wineboot.log" 2>&1
        fi
        wineserver -w
        touch "$WINEPREFIX/ready"
    ) 9>"$WINEPREFIX.lock"
}

# What Wine says of its own about a display that ends and a drive without a label is of no interest.
without_wine_talk() {
    grep -v -e '^X connection to' -e '^wine: Read access denied' || true
}

# run_wine PROGRAM [ARGUMENT...]: when its output goes into a pipe it goes there through a file, for Wine's own services,
# which the first program starts, would hold the pipe open long after the program's end.
run_wine() {
    if [ -t 1 ]; then
        wine "$@" 2> >(without_wine_talk >&2)
        return
    fi
    local output status=0
    output=$(mktemp)
    wine "$@" >"$output" 2>&1 || status=$?
    without_wine_talk <"$output"
    rm -f "$output"
    return "$status"
}

# with_display COMMAND...: runs it on the present display, or on an Xvfb of its own.
with_display() {
    if [ -n "${DISPLAY:-}" ]; then
        "$@"
        return
    fi
    local number_file server status=0
    number_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x960x24 -nolisten tcp 3>"$number_file" 2>/dev/null &
    server=$!
    while [ ! -s "$number_file" ]; do
        kill -0 "$server" 2>/dev/null || { echo "Xvfb did not start." >&2; return 1; }
        sleep 0.05
    done
    DISPLAY=:$(cat "$number_file") "$@" || status=$?
    rm -f "$number_file"
    kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    return "$status"
}
