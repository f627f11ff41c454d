#!/usr/bin/python3
"""The window as a person meets it: a real X server, a window manager, a mouse and a keyboard.

Usage: real-window.py CABSLOT CABSLOT_SIM CABSLOTCTL WAV     (under scripts/in-xvfb)

Once with the simulated pedal: wait for the names, load a WAV through the panel, compare the label and
the pedal's stored block, close. Once without a pedal: the alert. Both end with status 0.
"""
import os
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

CABSLOT, SIM, CTL, WAV = sys.argv[1:]


def wait_for(what, check, seconds=20):
    """Returns check()'s first true result; fails after `seconds` without one."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            result = check()
        except GLib.Error:  # the program is starting or ending
            result = None
        if result:
            return result
        time.sleep(0.05)
    sys.exit(f"FAILED: waited {seconds} s for {what}")


def everything(node):
    """All accessible objects below `node`."""
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is not None:
            yield child
            yield from everything(child)


def application():
    for node in everything_top():
        if node.get_name() in ("cabslot", "Cabslot"):
            return node
    return None


def everything_top():
    desktop = Atspi.get_desktop(0)
    return [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]


def find(name, role=None):
    """The visible object of that accessible name."""
    app = application()
    if app is None:
        return None
    for node in everything(app):
        if node.get_name() == name and (role is None or node.get_role() == role):
            if node.get_state_set().contains(Atspi.StateType.SHOWING):
                return node
    return None


def click(name):
    node = wait_for(f'"{name}"', lambda: find(name))
    box = node.get_extents(Atspi.CoordType.SCREEN)
    xdotool("mousemove", box.x + box.width // 2, box.y + box.height // 2, "click", 1)


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def expect_status_0(program):
    if program.wait(timeout=20) != 0:
        sys.exit(f"FAILED: {program.args} ended with {program.returncode}")


def start_window(socket):
    return subprocess.Popen([CABSLOT, "--pedal", f"unix:{socket}"], stdout=subprocess.PIPE)


def load_and_close(folder):
    socket, state, block = (os.path.join(folder, n) for n in ("pedal.sock", "state", "block"))
    pedal = subprocess.Popen([SIM, "--socket", socket, "--state", state], stdout=subprocess.DEVNULL)
    wait_for("the simulated pedal", lambda: os.path.exists(socket))
    window = start_window(socket)
    wait_for("the pedal's names", lambda: find("User 2          ", Atspi.Role.LABEL))

    click("Load a WAV into User 2")
    wait_for("the open panel", lambda: find("Load a WAV into User 2", Atspi.Role.DIALOG)
             or find("File name:", Atspi.Role.LABEL))
    time.sleep(0.5)  # the window manager gives the panel the keyboard
    xdotool("type", "--delay", 5, WAV)
    xdotool("key", "Return")
    wait_for("the new name", lambda: find("Demo 1x12     ", Atspi.Role.LABEL))

    subprocess.run([CTL, "inspect", WAV, "--block", block], check=True, stdout=subprocess.DEVNULL)
    stored = open(os.path.join(state, "user2.slot"), "rb").read()
    if stored[:4096] != open(block, "rb").read():
        sys.exit("FAILED: the pedal has stored another block")

    click("Close")
    expect_status_0(window)
    printed = window.stdout.read().decode()
    if not printed.endswith(f'选中了文件 Optional("{WAV}")\n'):
        sys.exit(f"FAILED: the window printed {printed!r}")
    pedal.terminate()
    expect_status_0(pedal)


def tell_disconnect(folder):
    window = start_window(os.path.join(folder, "nobody.sock"))
    text = "Disconnect! Please try again after connecting."
    wait_for("the alert", lambda: find(text))
    time.sleep(0.3)
    click("Ok")
    expect_status_0(window)


with tempfile.TemporaryDirectory() as home:
    os.environ["XDG_CONFIG_HOME"] = home
    Atspi.init()
    load_and_close(home)
    tell_disconnect(home)
print("real window: loaded through the panel, told a missing pedal, ended with status 0 both times")
