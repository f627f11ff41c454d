#!/usr/bin/env python3
"""Drives the Windows window under Wine, by keyboard alone: loads a WAV into slot 2, clears slot 3, closes.

Usage: window.py CABSLOT STATE WAV PICTURE     (under scripts/in-desktop)

STATE is where the built-in pedal has its slots and the memory its records; WAV is a Windows path.
PICTURE is the screen after the WAV is loaded; PICTURE-panel, in the same folder, the open panel.
"""
import os
import pathlib
import subprocess
import sys
import time

import wine

CABSLOT, STATE, WAV, PICTURE = sys.argv[1:]
STATE, PICTURE = pathlib.Path(STATE), pathlib.Path(PICTURE)


def wait_for(what, check, seconds=60):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if check():
            return
        time.sleep(0.1)
    sys.exit(f"FAILED: waited {seconds} s for {what}")


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True,
                          check=False).stdout


def active_window():
    return xdotool("getactivewindow", "getwindowname").strip()


def record(slot):
    """The record of a slot, written after the pedal has confirmed."""
    file = STATE / f"memory/sim-slot{slot}"
    return file.read_bytes() if file.exists() else None


def picture(path):
    time.sleep(1)  # until it is painted
    subprocess.run(["import", "-window", "root", path], check=True)


before = {slot: record(slot) for slot in (2, 3)}
environment = dict(os.environ, CABSLOT_PEDAL="sim")
del environment["QT_QPA_PLATFORM"]  # it is X11's
window = subprocess.Popen([wine.WINE, CABSLOT], env=environment, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL)  # Wine's desktop lives on and would write there
try:
    wait_for("the window", lambda: active_window() == "Cabslot")
    time.sleep(2)  # the pedal's names come, and the buttons with them
    xdotool("key", "ctrl+2")
    wait_for("the open panel", lambda: "Load a WAV into User 2" in active_window())
    xdotool("type", "--delay", 20, WAV)
    picture(PICTURE.with_stem(PICTURE.stem + "-panel"))
    xdotool("key", "Return")
    wait_for("the record of the load", lambda: record(2) != before[2])
    picture(PICTURE)
    xdotool("key", "ctrl+shift+3")
    wait_for("the record of the clear", lambda: record(3) != before[3])
    time.sleep(1)  # no input is taken before the wait is over
    xdotool("key", "alt+F4")
    status = window.wait(timeout=60)
    if status != 0:
        sys.exit(f"FAILED: the window ended with {status}")
finally:
    window.kill()
