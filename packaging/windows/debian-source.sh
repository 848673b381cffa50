# Shared by build-qt and fetch-gumbo. Sourced, not run.

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
