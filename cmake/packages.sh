# shellcheck shell=sh disable=SC2034
# What a fresh Debian 12 lacks, for ./run and ./test. Sourced: lists of packages and three functions.

build_packages="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-base-dev-tools qt6-svg-dev libsqlite3-dev libsodium-dev libzstd-dev
 libgl1-mesa-dev libxkbcommon-dev libxcb-cursor0 fonts-noto-core"
fuzz_packages="clang libclang-rt-dev llvm"
package_packages="dpkg-dev file"
try_packages="mmdebstrap lintian desktop-file-utils appstream man-db sqlite3 xvfb openbox xdotool imagemagick"
test_packages="sqlite3 poppler-utils xvfb xauth xdotool"

say() { printf '%s\n' "$*" >&2; }

# install_missing PACKAGE...: asks dpkg first, so that a ready machine needs neither root nor network.
install_missing() {
    missing=
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
    [ -z "$missing" ] && return 0
    say "Installing:$missing"
    root=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { say "Please install these packages as root, or install sudo:$missing"; exit 1; }
        root=sudo
    fi
    $root apt-get update -qq >&2 || { say "apt-get update failed; the package lists of this machine can't be read."; exit 1; }
    # shellcheck disable=SC2086
    $root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >&2 ||
        { say "These packages could not be installed:$missing"; exit 1; }
}

# build PRESET [TARGET...]: configures and builds build/PRESET; without a terminal quietly, unless it fails.
build() {
    preset=$1
    shift
    [ -e "build/$preset/.ninja_log" ] || say "Building build/$preset; this takes some minutes the first time."
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; exit 1; }
    if [ -t 2 ]; then cmake --build "build/$preset" "$@" >&2
    else cmake --build "build/$preset" "$@" >>"build/$preset.log" 2>&1 || { tail -n 60 "build/$preset.log" >&2; exit 1; }
    fi
}
