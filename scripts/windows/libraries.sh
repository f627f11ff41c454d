# Functions of scripts/package-windows that build the libraries for Windows, once. They run in the
# project's folder.
# shellcheck shell=sh

windows=$PWD/build/windows
prefix=$windows/prefix # what is for Windows
source=$windows/source
toolchain=$PWD/cmake/windows.cmake
export CABSLOT_WINDOWS_PREFIX="$prefix"
jobs=${CABSLOT_JOBS:-$(nproc)}

say() { echo "package-windows: $*" >&2; }
die() {
    say "$@"
    exit 1
}

install_tools() {
    scripts/install-packages build tests g++-mingw-w64-x86-64-posix wine64 nsis dpkg-dev \
        librsvg2-bin imagemagick
}

# apt-get's options for a separate list of sources, so that the system's lists stay unchanged. The
# sources come from the mirror of the system's packages.
prepare_apt() {
    # shellcheck disable=SC2016 # the variables are apt's
    from=${CABSLOT_MIRROR:-$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' \
        'Codename: bookworm' 'Component: main' | head -n 1)}
    [ -n "$from" ] || die "apt knows no mirror of Debian 12 (bookworm, main): add one to" \
        "/etc/apt/sources.list and run apt-get update, or set CABSLOT_MIRROR to the address of one"
    mkdir -p "$source/lists/partial"
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $from bookworm main" \
        >"$source/sources.list"
    apt="-o Dir::Etc::sourcelist=$source/sources.list -o Dir::Etc::sourceparts=/dev/null
        -o Dir::State::lists=$source/lists -o APT::Sandbox::User=root"
}

# fetch_source PACKAGE: unpacks Debian's source package as $source/PACKAGE and writes its version, from
# the name of its .dsc, to $source/PACKAGE.version.
fetch_source() {
    [ ! -d "$source/$1" ] || return 0
    say "fetching the source of $1"
    prepare_apt
    # shellcheck disable=SC2086 # $apt is many words
    [ -e "$source/lists.read" ] || apt-get $apt -qq -o APT::Update::Error-Mode=any update ||
        die "the list of Debian's sources cannot be fetched: $from"
    touch "$source/lists.read"
    rm -rf "$source/$1.part"
    mkdir "$source/$1.part"
    # shellcheck disable=SC2086
    (
        cd "$source/$1.part"
        apt-get $apt -qq source "$1" >&2 || {
            say "Debian's changes cannot be fetched; taking $1 as its authors made it"
            apt-get $apt -qq --dsc-only source "$1" >&2 &&
                apt-get $apt -qq --tar-only source "$1" >&2 && tar xf ./*.orig.tar.*
        }
    ) || die "the source of $1 cannot be fetched from $from"
    basename "$source/$1.part"/*.dsc .dsc | tr _ ' ' >"$source/$1.version"
    mv "$source/$1.part"/*/ "$source/$1"
    rm -r "$source/$1.part"
}

# built NAME: succeeds if it is already installed in the prefix.
built() { [ -e "$prefix/built/$1" ]; }
mark_built() { mkdir -p "$prefix/built"; touch "$prefix/built/$1"; }

# build NAME SOURCE OPTION ...: builds a CMake project and installs it in the prefix.
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

# describe NAME VERSION: writes the pkg-config file of a library that installs none on Windows.
describe() {
    printf '%s\n' "Name: $1" "Description: $1" "Version: $2" "Libs: -L$prefix/lib -l$1" \
        "Cflags: -I$prefix/include" >"$prefix/lib/pkgconfig/$1.pc"
}

# Header-only libraries: Debian's own packages work for every system.
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
        # a DLL, because its licence requires that users can replace it
        build libsoxr "$source/libsoxr" -DBUILD_TESTS=OFF -DWITH_OPENMP=OFF -DWITH_LSR_BINDINGS=OFF
        describe soxr 0.1.3
    }
    built libebur128 || {
        fetch_source libebur128
        # elsewhere queue.h belongs to the C library
        build libebur128 "$source/libebur128" -DBUILD_SHARED_LIBS=OFF -DENABLE_INTERNAL_QUEUE_H=ON
    }
}

# Only the parts that a widget application needs, as DLLs for the same reason.
build_qt() {
    ! built qt || return 0
    fetch_source qt6-base
    scripts/install-packages qt6-base-dev-tools
    off=
    for feature in network sql dbus xml concurrent printsupport vulkan direct2d directwrite3 \
        tabletevent pdf textodfwriter textmarkdownreader textmarkdownwriter gif jpeg qmake \
        pkg_config windeployqt androiddeployqt macdeployqt; do
        off="$off -DFEATURE_$feature=OFF"
    done
    # shellcheck disable=SC2086 # one word per option
    build qt "$source/qt6-base" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DFEATURE_optimize_size=ON \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no $off
}

