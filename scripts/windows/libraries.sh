# Functions of scripts/package-windows: what the Windows build needs, built once. They run in the
# project's folder.
# shellcheck shell=sh

windows=$PWD/build/windows
prefix=$windows/prefix # what is for Windows
source=$windows/source
toolchain=$PWD/cmake/windows.cmake
export CABSLOT_WINDOWS_PREFIX="$prefix"
jobs=${CABSLOT_JOBS:-$(nproc)}

say() { echo "package-windows: $*" >&2; }

install_tools() {
    scripts/install-packages g++-mingw-w64-x86-64-posix wine64 nsis zip dpkg-dev
}

# A Debian source package, unpacked as $source/NAME. Debian's list of sources is read into a folder
# of its own: what the system's apt knows stays as it is.
fetch_source() {
    [ ! -d "$source/$1" ] || return 0
    mkdir -p "$source/lists/partial"
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
        "http://deb.debian.org/debian bookworm main" >"$source/sources.list"
    set -- "$1" -o Dir::Etc::sourcelist="$source/sources.list" -o Dir::Etc::sourceparts=/dev/null \
        -o Dir::State::lists="$source/lists" -o APT::Sandbox::User=root
    package=$1
    shift
    say "fetching the source of $package"
    [ -e "$source/lists.read" ] || apt-get "$@" -qq update
    touch "$source/lists.read"
    rm -rf "$source/$package.part"
    mkdir "$source/$package.part"
    (cd "$source/$package.part" && apt-get "$@" -qq source "$package" >&2)
    mv "$source/$package.part"/*/ "$source/$package"
    rm -r "$source/$package.part"
}

# built NAME: whether it is installed in the prefix already.
built() { [ -e "$prefix/built/$1" ]; }
mark_built() { mkdir -p "$prefix/built"; touch "$prefix/built/$1"; }

# build NAME SOURCE OPTION ...: a project of CMake's, into the prefix.
build() {
    name=$1 from=$2
    shift 2
    say "building $name"
    cmake -S "$from" -B "$windows/$name" -G Ninja --log-level=WARNING -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX="$prefix" "$@" >&2
    cmake --build "$windows/$name" -j "$jobs" >&2
    cmake --install "$windows/$name" >/dev/null
    mark_built "$name"
}

# Libraries that are headers alone: Debian's serve every system.
copy_headers() {
    mkdir -p "$prefix/include" "$prefix/share/cmake" "$prefix/lib/pkgconfig"
    cp -r /usr/include/CLI /usr/include/nlohmann /usr/include/kissfft "$prefix/include/"
    cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$prefix/share/cmake/"
    printf '%s\n' "Name: kissfft" "Description: its C++ header" "Version: 131.1.0" \
        "Cflags: -I$prefix/include/kissfft" >"$prefix/lib/pkgconfig/kissfft-float.pc"
    mark_built headers
}

build_small_libraries() {
    built headers || copy_headers
    built googletest || build googletest /usr/src/googletest -DINSTALL_GTEST=ON
    built hidapi || {
        fetch_source hidapi
        build hidapi "$source/hidapi" -DBUILD_SHARED_LIBS=OFF
    }
}

# Only what a window of widgets needs. Qt is built as DLLs: whoever gets the programs may replace it.
build_qt() {
    built qt && return
    fetch_source qt6-base
    scripts/install-packages qt6-base-dev-tools
    off=
    for feature in network sql dbus xml concurrent printsupport vulkan direct2d directwrite3 \
        tabletevent pdf textodfwriter textmarkdownreader textmarkdownwriter gif jpeg qmake \
        pkg_config windeployqt androiddeployqt macdeployqt; do
        off="$off -DFEATURE_$feature=OFF"
    done
    # shellcheck disable=SC2086 # one word an option
    build qt "$source/qt6-base" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DFEATURE_optimize_size=ON \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no $off
}

# build_cabslot WITH-QT: with nothing there, the libraries, cabslotctl and the tests alone.
build_cabslot() {
    say "building cabslot"
    cmake -S . -B "$windows/cabslot" -G Ninja --log-level=WARNING -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCABSLOT_WINDOW="$([ -n "$1" ] && echo ON || echo OFF)" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake >&2
    cmake --build "$windows/cabslot" -j "$jobs" >&2
}
