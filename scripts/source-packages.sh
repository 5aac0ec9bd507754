# Fetches and unpacks Debian source packages; to be sourced, with `work` set to the folder to do it in.
# The machine's own package lists stay as they are.

mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"

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
