# Functions by which other scripts install missing tools and libraries, and build a preset. These scripts
# source this file. The working directory must be the repository's root.

# What the programs need, and how to check that it is installed: a command, a file, or a header that the
# compiler finds.
#   kind     name            Debian package
needs='
    command  c++             g++
    command  cc              gcc
    command  cmake           cmake
    command  flex            flex
    command  bison           bison
    command  ninja           ninja-build
    header   png.h           libpng-dev
    header   httplib.h       libcpp-httplib-dev
    command  pkg-config      pkgconf
    header   nlohmann/json.hpp nlohmann-json3-dev
'

# What the tests need in addition.
test_needs='
    header   gtest/gtest.h   libgtest-dev
    header   gmock/gmock.h   libgmock-dev
    command  python3         python3
    command  make            make
'

# What building Debian packages needs in addition to the programs.
package_needs='
    command  file            file
    command  dpkg-shlibdeps  dpkg-dev
'

# What the tests of a page in a browser need in addition.
browser_needs='
    command  chromium        chromium
    command  chromedriver    chromium-driver
'

# What the tests in an editor need in addition.
editor_needs='
    command  nvim            neovim
'

is_present() {
    case $1 in
        command) command -v "$2" >/dev/null ;;
        file) [ -e "$2" ] ;;
        header) echo "#include <$2>" | c++ -std=c++20 -fsyntax-only -x c++ - 2>/dev/null ;;
    esac
}

# What the example renderer needs in addition, a download of 10 MB.
renderer_needs='
    header   embree3/rtcore.h libembree-dev
'

missing_packages() {
    local kind name package
    while read -r kind name package; do
        [ -z "$kind" ] || is_present "$kind" "$name" || echo "$package"
    done <<<"$1"
}

# Installs the packages $@ without asking, if there is apt-get, and for other users than root also sudo.
install_packages() {
    local as_root=()
    if ! command -v apt-get >/dev/null; then
        echo "$0: apt-get is not here; install by hand: $*" >&2
        return 1
    fi
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || {
            echo "$0: not root and no sudo; install by hand: $*" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing $*"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "$@"
}

# Installs the missing packages of the table $1. Does not use the network if none is missing.
install_missing() {
    local packages
    mapfile -t packages < <(missing_packages "$1")
    [ ${#packages[@]} = 0 ] || install_packages "${packages[@]}"
}

# Configures the preset $1 and builds its targets $2..., or all of them, in build/$1. Uses ccache if it is
# installed, and for a new build folder ninja.
build_preset() {
    if [ ! -e "build/$1/CMakeCache.txt" ] && command -v ninja >/dev/null; then
        export CMAKE_GENERATOR=Ninja
    fi
    if command -v ccache >/dev/null; then
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    local target targets=()
    for target in "${@:2}"; do
        targets+=(--target "$target")
    done
    cmake --preset "$1"
    cmake --build "build/$1" --parallel "$(nproc)" "${targets[@]}"
}
