# Shared by build-qt, fetch-gumbo and fetch-pugixml. Sourced, not run.

# The folder where what a cross build needs is kept.
windows_cache=${KIV_QT_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kiv}

# fetch_debian_source PACKAGE VERSION FOLDER: unpacks a source package of Debian into FOLDER/source. FOLDER is made anew.
fetch_debian_source() {
    local package=$1 version=$2 work=$3
    say "Fetching the source of $package $version"
    rm -rf "$work"
    mkdir -p "$work/lists" "$work/sources"
    # A list of sources and an index of their own: the machine's own settings stay as they are.
    if [ -e /etc/apt/sources.list.d/debian.sources ]; then
        sed -E 's/^Types: .*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$work/sources/debian.sources"
    else
        sed -nE 's/^deb(-src)? /deb-src /p' /etc/apt/sources.list | sort -u >"$work/sources/debian.list"
    fi
    local options=(-o "Dir::State::Lists=$work/lists" -o Dir::Etc::SourceList=/dev/null
        -o "Dir::Etc::SourceParts=$work/sources" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
        -o APT::Sandbox::User=root)
    (
        cd "$work" &&
            apt-get -q "${options[@]}" update &&
            apt-get -q "${options[@]}" source --download-only "$package=$version" &&
            dpkg-source --no-check -x ./*.dsc source
    )
}

# keep_debian_source PACKAGE LIBRARY: fetches the source package of a library into the cache, in the version that is installed
# of Debian's LIBRARY, and prints its folder. What is there of that version is used again. Fails where it cannot be had.
keep_debian_source() {
    local package=$1 library=$2 version kept=$windows_cache/$1 work=$windows_cache/$1-fetch
    install_packages "$library" dpkg-dev >&2
    version=$(dpkg-query -W -f='${source:Version}' "$library")
    mkdir -p "$windows_cache"
    exec 8>"$windows_cache/$package-lock"
    flock 8
    if [ "$(cat "$kept/stamp" 2>/dev/null)" != "$version" ]; then
        fetch_debian_source "$package" "$version" "$work" >&2 8>&- &&
            rm -rf "$kept" &&
            mv "$work/source" "$kept" &&
            echo "$version" >"$kept/stamp" || return 1
        rm -rf "$work"
    fi
    echo "$kept"
}
