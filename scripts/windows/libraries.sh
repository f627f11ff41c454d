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
    (
        cd "$source/$package.part"
        apt-get "$@" -qq source "$package" >&2 || {
            say "Debian's changes cannot be had; taking $package as its authors made it"
            apt-get "$@" -qq --tar-only source "$package" >&2
            tar xf ./*.orig.tar.*
        }
    )
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

# describe NAME VERSION: for pkg-config, of a library that does not do so itself on Windows.
describe() {
    printf '%s\n' "Name: $1" "Description: $1" "Version: $2" "Libs: -L$prefix/lib -l$1" \
        "Cflags: -I$prefix/include" >"$prefix/lib/pkgconfig/$1.pc"
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
    built libsoxr || {
        fetch_source libsoxr
        build libsoxr "$source/libsoxr" -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTS=OFF \
            -DWITH_OPENMP=OFF -DWITH_LSR_BINDINGS=OFF
        describe soxr 0.1.3
    }
    built libebur128 || {
        fetch_source libebur128
        # its queue.h is the C library's elsewhere
        build libebur128 "$source/libebur128" -DBUILD_SHARED_LIBS=OFF -DENABLE_INTERNAL_QUEUE_H=ON
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

# The installer and the zip, into build/windows.
package() {
    version=$(sed -n 's/^project(Cabslot VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    for pair in NSIS:setup ZIP:windows; do
        (cd "$windows/cabslot" && cpack -G "${pair%:*}" -B "$windows/packages" \
            -D CPACK_PACKAGE_FILE_NAME="cabslot-$version-${pair#*:}" >&2)
    done
    ls -l "$windows/packages/cabslot-$version"-*.* >&2
}
