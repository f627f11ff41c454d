#!/usr/bin/python3
"""The window as a person meets it, on a real X server or Wayland compositor.

Usage: real-window.py CABSLOT CABSLOT_SIM CABSLOTCTL WAV [PICTURE]     (under scripts/in-desktop)

Loads a WAV through the open panel while a button is pressed that must have no effect; compares the label
and the stored block; closes. On the managed desktop by keyboard, which then steps through a folder and
listens; on the others as a screen reader does, and then without a display. PICTURE shows the window.
"""
import atexit
import os
import shutil
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

CABSLOT, SIM, CTL, WAV = sys.argv[1:5]
MANAGED = os.environ["CABSLOT_DESKTOP"] == "managed"
PICTURE = sys.argv[5] if len(sys.argv) > 5 else None


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
    desktop = Atspi.get_desktop(0)
    for node in map(desktop.get_child_at_index, range(desktop.get_child_count())):
        if node.get_name() in ("cabslot", "Cabslot") and node.get_child_count():
            return node  # GTK's theme makes one without children
    return None


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


def press(name, enabled=True):
    """Presses the button of that name the way a screen reader does."""
    def button():
        node = find(name, Atspi.Role.PUSH_BUTTON)
        return node if node and node.get_state_set().contains(
            Atspi.StateType.ENABLED) == enabled else None

    node = wait_for(f'the button "{name}"', button)
    try:
        Atspi.Action.do_action(node, 0)  # a button's first is "Press"
    except GLib.Error:
        if enabled and name != "Close":  # the program ends rather than answers
            raise


def label(text):
    return find(text, Atspi.Role.LABEL)


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def start(*command):
    """A program that does not outlive this one."""
    program = subprocess.Popen(command, stdout=subprocess.PIPE)
    atexit.register(program.kill)
    return program


def expect_status_0(program):
    if program.wait(timeout=20) != 0:
        sys.exit(f"FAILED: {program.args} ended with {program.returncode}")


def start_window(socket):
    return start(CABSLOT, "--pedal", f"unix:{socket}")


def start_pedal(folder, *options):
    """A simulated pedal with slots of its own and the window on it; and their folder of slots."""
    socket, state = (os.path.join(folder, n) for n in ("pedal.sock", "state"))
    pedal = start(SIM, "--socket", socket, "--state", state, *options)
    wait_for("the simulated pedal", lambda: os.path.exists(socket))
    return pedal, start_window(socket), state


def load_and_close(folder):
    block = os.path.join(folder, "block")
    pedal, window, state = start_pedal(folder, "--confirm-delay", "3000")
    for slot in range(1, 5):
        wait_for(f"the name of slot {slot}", lambda: label(f"User {slot}"))

    # A second window on the same pedal only brings the first one to the front.
    expect_status_0(start_window(f"{folder}/pedal.sock"))

    # Not clicked: where the window manager has put the window is not always known by now.
    press("Load a WAV into User 2")
    wait_for("the open panel", lambda: find("Load a WAV into User 2", Atspi.Role.DIALOG)
             or find("File name:", Atspi.Role.LABEL))
    if MANAGED:
        time.sleep(0.5)  # the window manager gives the panel the keyboard
        xdotool("type", "--delay", 5, WAV)
        xdotool("key", "Return")
    else:
        Atspi.EditableText.set_text_contents(find("File name:", Atspi.Role.TEXT), WAV)
        press("Open")
    bar = wait_for("the progress", lambda: find("Upload progress", Atspi.Role.PROGRESS_BAR))
    wait_for("it to grow", lambda: Atspi.Value.get_current_value(bar) > 0)
    press("Clear User 4", enabled=False)  # nothing is taken meanwhile
    wait_for("the new name", lambda: label("Demo 1x12"))
    wait_for("the end", lambda: label("“Demo 1x12” is in User 2."))
    if PICTURE:
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Cabslot$"],
                               check=True, capture_output=True, text=True).stdout
        subprocess.run(["import", "-window", found.split()[-1], PICTURE], check=True)

    subprocess.run([CTL, "inspect", WAV, "--block", block], check=True, stdout=subprocess.DEVNULL)
    stored = open(os.path.join(state, "user2.slot"), "rb").read()
    if stored[:4096] != open(block, "rb").read():
        sys.exit("FAILED: the pedal has stored another block")
    if os.path.exists(os.path.join(state, "user4.slot")):
        sys.exit("FAILED: a button was obeyed while an IR was on its way")
    load_a_set(folder, state)
    press("Close")
    expect_status_0(window)
    printed = window.stdout.read().decode()
    if not printed.endswith(f'选中了文件 Optional("{WAV}")\n'):
        sys.exit(f"FAILED: the window printed {printed!r}")
    pedal.terminate()
    expect_status_0(pedal)


def load_a_set(folder, state):
    """A second start hands it over; the sheet is read, and confirmed by keys or as a screen reader does."""
    path, old = (os.path.join(folder, n) for n in ("Band.cabset", "Old.wav"))
    shutil.copy(WAV, old)
    subprocess.run([CTL, "set", "new", path, "2", old, "3", WAV], check=True, stdout=subprocess.DEVNULL)
    expect_status_0(start(CABSLOT, "--pedal", f"unix:{folder}/pedal.sock", path))
    wait_for("the sheet", lambda: label("Load the set “Band”?"))
    cells = [find(name, Atspi.Role.TABLE_CELL) for name in ("User 2", "Demo 1x12", "Old", "stays as it is")]
    load = find("Load", Atspi.Role.PUSH_BUTTON)
    if None in cells or "User 2: Demo 1x12 becomes Old. User 3" not in load.get_description():
        sys.exit(f"FAILED: the sheet reads {cells}, {load.get_description()!r}")
    if MANAGED:
        wait_for("the keyboard", lambda: find("Load", Atspi.Role.PUSH_BUTTON).get_state_set()
                 .contains(Atspi.StateType.FOCUSED))
        time.sleep(0.5)  # the window manager gives the sheet the keyboard
        xdotool("key", "Return")
    else:
        press("Load")
    wait_for("the end", lambda: label("The set “Band” is loaded."))
    stored = [open(os.path.join(state, f"user{slot}.slot"), "rb").read()[:4096] for slot in (2, 3)]
    if stored[0] != stored[1]:
        sys.exit("FAILED: the set's slots differ")


def listen_with_the_keys(folder):
    """Steps through a folder, hears it on a sound server with a null output, loads it."""
    irs, socket = (os.path.join(folder, n) for n in ("irs", "sound.sock"))
    os.mkdir(irs)
    for name in "Bright.wav", "Dark.wav":
        shutil.copy(WAV, os.path.join(irs, name))
    with open(os.path.join(irs, "Empty.wav"), "w", encoding="utf-8"):
        pass
    with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "cabslot/cabslot.conf"), "w",
              encoding="utf-8") as settings:  # a file was loaded from there before
        settings.write(f"[openPanel]\nlastFolder={irs}\n")
    os.environ.update(PULSE_RUNTIME_PATH=folder, PULSE_SERVER=f"unix:{socket}")
    start("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
          "--log-level=0", "-L", "module-null-sink", "-L",
          f"module-native-protocol-unix auth-anonymous=1 socket={socket}")
    wait_for("the sound server", lambda: os.path.exists(socket))

    def sounds():
        return subprocess.run(["pactl", "list", "short", "sink-inputs"], check=True,
                              capture_output=True).stdout

    pedal, window, _ = start_pedal(folder)
    wait_for("the pedal's names", lambda: label("User 1"))
    press("Load a WAV into User 1")
    wait_for("the open panel", lambda: find("File name:", Atspi.Role.TEXT))
    time.sleep(0.5)  # the window manager gives the panel the keyboard
    wait_for("the folder", lambda: find("Dark.wav"))
    xdotool("key", "Down")
    wait_for("the first IR", lambda: label("Bright"))
    wait_for("the switch", lambda: find("Listen", Atspi.Role.CHECK_BOX).get_state_set()
             .contains(Atspi.StateType.ENABLED))
    xdotool("key", "space")
    wait_for("its sound", sounds)
    xdotool("key", "Down", "Down")
    wait_for("the reason", lambda: label("It is refused: it is empty."))
    xdotool("key", "Up", "Return")
    wait_for("the new name", lambda: label("Dark"))
    if sounds():
        sys.exit("FAILED: it is still heard")
    press("Close")
    expect_status_0(window)
    pedal.terminate()
    expect_status_0(pedal)


def no_display(folder):
    """One line with the reason, and status 1."""
    for name, value in (("DISPLAY", folder), ("WAYLAND_DISPLAY", "no"), ("QT_QPA_PLATFORM", "linuxfb")):
        window = subprocess.run([CABSLOT, "--pedal", "sim"], capture_output=True, text=True, timeout=20,
                                env={name: value, "XDG_STATE_HOME": folder}, check=False)
        if (window.returncode, window.stderr.count("\n")) != (1, 1) or "no display" not in window.stderr:
            sys.exit(f"FAILED: {name}={value}: status {window.returncode}, {window.stderr!r}")


with tempfile.TemporaryDirectory() as home:
    os.environ["XDG_CONFIG_HOME"] = home
    os.environ["CABSLOT_STATE"] = os.path.join(home, "memory")
    os.environ["XDG_STATE_HOME"] = os.path.join(home, "state")
    Atspi.init()
    for test in load_and_close, listen_with_the_keys if MANAGED else no_display:
        with tempfile.TemporaryDirectory() as own:
            test(own)
print(f"real window: as expected on the desktop {os.environ['CABSLOT_DESKTOP']}")
