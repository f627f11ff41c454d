# Functions of scripts/package-windows that build Cabslot, its installer and its zip.
# shellcheck shell=sh
# shellcheck disable=SC2154 # scripts/windows/libraries.sh sets the folders

stage=$windows/stage # what gets installed
version=$(sed -n 's/^project(Cabslot VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

make_icon() {
    for size in 16 24 32 48 256; do
        rsvg-convert -w $size -h $size -o "$windows/$size.png" packaging/desktop/cabslot.svg
    done
    mkdir -p "$prefix/share"
    (cd "$windows" && convert 16.png 24.png 32.png 48.png 256.png "$prefix/share/cabslot.ico")
}

# build_cabslot WITH-QT: if empty, only the libraries, cabslotctl and the tests.
build_cabslot() {
    say "building cabslot"
    make_icon
    # The build runs some of its own programs, in a Wine prefix of its own.
    export WINEPREFIX="$windows/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml="
    export WINEPATH="Z:$prefix/bin" # where the DLLs are
    [ -d "$WINEPREFIX" ] || /usr/lib/wine/wine64 wineboot --init
    cmake -S . -B "$windows/cabslot" -G Ninja --log-level=WARNING -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCABSLOT_WINDOW="$([ -n "$1" ] && echo ON || echo OFF)" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake >&2
    cmake --build "$windows/cabslot" -j "$jobs" >&2
}

# The texts that the licences require, and where to find the distributed libraries' sources.
collect_licences() {
    mkdir -p "$stage/licences"
    cp LICENSE "$stage/LICENSE.txt"
    for pair in hidapi:libhidapi-dev libebur128:libebur128-dev libsoxr:libsoxr-dev CLI11:libcli11-dev \
        nlohmann-json:nlohmann-json3-dev kissfft:libkissfft-dev gcc:g++-mingw-w64-x86-64-posix \
        mingw-w64:mingw-w64-common ${1:+Qt:qt6-base-dev}; do
        cp "/usr/share/doc/${pair#*:}/copyright" "$stage/licences/${pair%:*}.txt"
    done
    for licence in LGPL-2.1 ${1:+LGPL-3} GPL-2 GPL-3; do
        cp "/usr/share/common-licenses/$licence" "$stage/licences/$licence.txt"
    done
    (
        cat packaging/windows/licences.txt
        cd "$source" || exit
        cat hidapi.version libebur128.version libsoxr.version ${1:+qt6-base.version}
    ) >"$stage/licences/README.txt"
    sed -i 's/\r*$/\r/' "$stage"/LICENSE.txt "$stage"/licences/*.txt
}

# What the uninstaller deletes: the installed files, then the folders that are empty.
# shellcheck disable=SC2016 # $INSTDIR is for makensis
list_for_uninstaller() {
    (
        cd "$stage" || exit
        find . -type f -printf '%P\n' | sort | sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|'
        find . -mindepth 1 -depth -type d -printf '%P\n' | sed 's|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
    ) >"$windows/uninstall.nsh"
}

# package WITH-QT: builds the installer and the zip in build/windows/packages.
package() {
    name=cabslot$([ -n "$1" ] || echo ctl)-$version
    rm -rf "$stage"
    cmake --install "$windows/cabslot" --prefix "$stage" >/dev/null
    find "$stage/bin" -type f -exec x86_64-w64-mingw32-strip {} +
    collect_licences "$1"
    list_for_uninstaller
    mkdir -p "$windows/packages"
    makensis -V2 -DVERSION="$version" -DSTAGE="$stage" -DICON="$prefix/share/cabslot.ico" \
        ${1:+-DWINDOW} -DUNINSTALL="$windows/uninstall.nsh" \
        -DOUTPUT="$windows/packages/$name-setup.exe" packaging/windows/installer.nsi >&2
    rm -f "$windows/packages/$name-windows.zip"
    (cd "$stage" && cmake -E tar cf "$windows/packages/$name-windows.zip" --format=zip .)
    ls -l "$windows/packages/$name"-* >&2
    du -sh "$stage" >&2
}
