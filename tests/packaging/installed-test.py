#!/usr/bin/python3
"""The programs find their files in any location: built, installed, moved, behind a link.

Usage: installed-test.py BUILD
"""
import os
import subprocess
import sys
import tempfile

BUILD = sys.argv[1]


def clear_slot(program, **options):
    """Clearing needs the blank IR, which is installed with the program."""
    done = subprocess.run([program, "--pedal", "sim", "clear", "1"], text=True, capture_output=True,
                          check=False, **options)
    if (done.returncode, done.stdout) != (0, "User 1: User 1\n"):
        sys.exit(f"FAILED: {program} ended with {done.returncode}: {done.stderr}")


with tempfile.TemporaryDirectory() as folder:
    os.environ["XDG_STATE_HOME"] = os.path.join(folder, "state")
    prefix, moved = os.path.join(folder, "usr"), os.path.join(folder, "moved to here")
    link = os.path.join(folder, "ctl")

    clear_slot(os.path.join(BUILD, "bin/cabslotctl"))
    subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)
    clear_slot(os.path.join(prefix, "bin/cabslotctl"))
    with open(os.path.join(prefix, "lib/udev/rules.d/70-cabslot.rules"), encoding="ascii") as rules:
        assigned = [line.split(",")[4:] for line in rules if not line.startswith("#")]
    if assigned != [[' TAG+="uaccess"\n']]:
        sys.exit(f"FAILED: the pedal is not only the user's at the screen: {assigned}")
    os.rename(prefix, moved)
    clear_slot(os.path.join(moved, "bin/cabslotctl"))
    # The sound module and phrases are installed with it, too.
    subprocess.run([os.path.join(moved, "bin/cabslotctl"), "audition", "--dry", "driven",
                    os.path.join(moved, "share/cabslot/examples/Demo 1x12.wav"),
                    "--out", os.path.join(folder, "out.wav")], check=True)
    os.symlink(os.path.join(moved, "bin/cabslotctl"), link)
    clear_slot("ctl", env={**os.environ, "PATH": folder})
