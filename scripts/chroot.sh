# Functions of the scripts that test in a clean Debian. They run in the project's folder, as root.
# shellcheck shell=sh
#
# Nothing is mounted, so they work in a container without that right. The clean systems and the packages
# fetched for them are kept in build/debian; `rm -r` it to fetch them again.

kept=${CABSLOT_DEBIAN:-$PWD/build/debian}
root= # the folder of the current one

say() { printf '%s: %s\n' "${0##*/}" "$*"; }
fail() { say "FAILED: $*" >&2; exit 1; }
inside() {
    chroot "$root" env -i ${http_proxy:+http_proxy="$http_proxy"} PATH=/usr/sbin:/usr/bin HOME=/tmp \
        LC_ALL=C.UTF-8 "$@"
}

# The mirror that this system's own packages come from.
find_mirror() {
    # shellcheck disable=SC2016 # the variable is apt's
    mirror=${CABSLOT_MIRROR:-$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' \
        "Codename: $(. /etc/os-release && echo "$VERSION_CODENAME")" 'Component: main' | head -n 1)}
    [ -n "$mirror" ] || fail "apt knows no mirror of this Debian (main): add one to \
/etc/apt/sources.list and run apt-get update, or set CABSLOT_MIRROR to the address of one"
}

# clean_debian SUITE FOLDER: unpacks a minimal Debian there, in place of what there was. SUITE is
# bookworm (Debian 12), trixie (13), testing.
clean_debian() {
    [ "$(id -u)" = 0 ] || fail "it needs root, for chroot"
    suite=$1 root=$2
    scripts/install-packages debootstrap
    mkdir -p "$kept/$suite"
    if [ ! -e "$kept/$suite.tar" ]; then
        find_mirror
        say "making a clean Debian ($suite) from $mirror"
        rm -rf "$kept/$suite.new"
        debootstrap --variant=minbase "$suite" "$kept/$suite.new" "$mirror" >"$kept/$suite.log" 2>&1 || {
            tail -n 20 "$kept/$suite.log" >&2
            fail "no clean Debian could be made; debootstrap needs the network and the right to mknod"
        }
        tar -C "$kept/$suite.new" -cf "$kept/$suite.tar.new" .
        mv "$kept/$suite.tar.new" "$kept/$suite.tar"
        rm -rf "$kept/$suite.new"
    fi
    rm -rf "$root"
    mkdir -p "$root"
    tar -C "$root" -xf "$kept/$suite.tar"
    cp /etc/resolv.conf "$root/etc/"
    # The same paths lead to the same sockets, inside and outside.
    mkdir -p "$root${root%/*}"
    ln -s / "$root$root"
    find "$kept/$suite" -name '*.deb' -exec cp -t "$root/var/cache/apt/archives" {} +
}

apt() {
    # A mirror of testing may be behind.
    inside DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 \
        -o Acquire::Check-Valid-Until=false \
        -o DPkg::Options::=--force-unsafe-io "$@" >"$root.log" 2>&1 || {
        cat "$root.log" >&2
        fail "apt-get $*"
    }
    cp -u "$root"/var/cache/apt/archives/*.deb "$kept/$suite/" 2>/dev/null || true
}

# try_programs PREFIX PICTURE: lists, loads and clears with the programs installed in PREFIX, writes a
# sound, and drives the window and listens; PICTURE shows it.
try_programs() {
    prefix=$1 picture=$2
    : >"$root.pedal" # now, so that neither a missing nor an old one is read
    chroot "$root" "$prefix/bin/cabslot-sim" --socket /tmp/pedal.sock --confirm-delay 50 >"$root.pedal" &
    pedal=$!
    trap '[ -z "$pedal" ] || kill "$pedal" 2>/dev/null || true' EXIT
    until grep -q '^listening' "$root.pedal"; do
        kill -0 "$pedal" || fail "cabslot-sim did not start"
        sleep 0.05
    done
    demo="$prefix/share/cabslot/examples/Demo 1x12.wav"
    ctl() { inside "$prefix/bin/cabslotctl" --pedal unix:/tmp/pedal.sock "$@"; }
    {
        ctl list
        ctl load 2 "$demo"
        ctl list
        ctl clear 2
    } >"$root.said"
    diff - "$root.said" <<'SAID' || fail "cabslotctl printed something else"
User 1: User 1
User 2: User 2
User 3: User 3
User 4: User 4
User 2: Demo 1x12
User 1: User 1
User 2: Demo 1x12
User 3: User 3
User 4: User 4
User 2: User 2
SAID
    ctl audition "$demo" --out /tmp/sound.wav
    kill "$pedal"
    wait "$pedal" || fail "cabslot-sim ended with $?"
    pedal=
    say "cabslotctl has listed, loaded, cleared and written a sound"
    for program in cabslot cabslotctl cabslot-sim; do
        printf '#!/bin/sh\nexec chroot "%s" "%s/bin/%s" "$@"\n' "$root" "$prefix" $program \
            >"$root/tmp/$program"
        chmod +x "$root/tmp/$program"
    done
    try_window managed "$picture"
    [ "$(identify -format %k "$picture")" -gt 20 ] || fail "the window's picture is empty"
    say "the window works, and plays; its picture is $picture"
}

# try_window DESKTOP [PICTURE]: after try_programs. The window on a screen outside, driven by the test of
# the built one. It needs two sockets from there: X11's, which is not in the file system, and the bus's,
# which is below TMPDIR, as is Wayland's.
try_window() {
    TMPDIR=$root/tmp scripts/in-desktop "$1" tests/ui/real-window.py "$root/tmp/cabslot" \
        "$root/tmp/cabslot-sim" "$root/tmp/cabslotctl" "$root$demo" ${2:+"$2"}
}
