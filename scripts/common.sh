# Shared by ./run and ./test. Sourced, not run.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
root=$PWD

build_packages=(g++ cmake ninja-build libboost-dev libcli11-dev libgumbo-dev libpugixml-dev nlohmann-json3-dev
    libstb-dev)
desktop_packages=(qt6-base-dev qt6-base-dev-tools fonts-dejavu-core)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev tidy imagemagick libxml2-utils
    chromium-headless-shell chromium-driver python3-selenium zsh fish man-db appstream)
# A screen, a window manager and a client for the test of the window from outside.
outside_packages=(xvfb xauth openbox x11-utils dbus at-spi2-core python3-gi gir1.2-atspi-2.0)
clang_packages=(clang lld clang-format clang-tidy) # Clang builds the tests with sanitizers, too
windows_packages=(g++-mingw-w64-x86-64-posix wine64 fonts-wine fonts-liberation2 googletest nsis dpkg-dev file
    ca-certificates) # a source of npm's registry is fetched where Debian's mirror lacks it
windows_qt_packages=(qt6-base-dev qt6-base-dev-tools dpkg-dev)

say() { printf '\n== %s\n' "$*"; }

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Installs the Debian packages named that are missing, or says what to install when that is not allowed.
install_packages() {
    local missing=() package
    command -v dpkg-query >/dev/null || {
        echo "This is no Debian system; needed are what these packages hold: $*"
        return 0
    }
    for package in "$@"; do is_installed "$package" || missing+=("$package"); done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please install these packages, then start again:"
            echo "  apt-get install ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get -q update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -q install -y --no-install-recommends "${missing[@]}" || {
        echo "apt-get failed. Needed: ${missing[*]}"
        exit 1
    }
}

# configure_and_build PRESET [CMAKE OPTION …]
configure_and_build() {
    local preset=$1
    shift
    mkdir -p "$root/build"
    cmake --preset "$preset" "$@" >"$root/build/$preset.log" 2>&1 || {
        cat "$root/build/$preset.log"
        exit 1
    }
    cmake --build --preset "$preset" || exit 1
}
