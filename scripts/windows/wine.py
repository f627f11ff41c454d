"""A fresh Wine prefix in a folder, like a new Windows, independent of the user's."""
import os
import subprocess
import time

WINE = "/usr/lib/wine/wine64"
SERVER = "/usr/lib/wine/wineserver"
FONTS = "HKCU\\Software\\Wine\\Fonts\\Replacements"
SET_KEYS = [f"HKCU\\Software\\Classes\\{name}" for name in (".cabset", "Cabslot.Set")]
UNINSTALL_KEY = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Cabslot"


class Wine:
    def __init__(self, folder):
        self.prefix = folder / "wine"
        self.drive = self.prefix / "drive_c"
        home = folder / "home"  # Wine links its documents to the user's
        home.mkdir()
        self.prefix.mkdir()
        # Wine must neither offer downloads nor add entries to this desktop's menu.
        self.variables = {"WINEPREFIX": str(self.prefix), "WINEDEBUG": "-all", "HOME": str(home),
                          "WINEDLLOVERRIDES": "mscoree=;mshtml=;winemenubuilder.exe="}
        self.environment = dict(os.environ, **self.variables)
        # The server runs for the whole check, because starting it takes seconds.
        subprocess.run([SERVER, "-p"], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.run("wineboot", "--init")
        # Wine has none of the fonts of Windows.
        for there, here in (("Segoe UI", "DejaVu Sans"), ("Tahoma", "DejaVu Sans"),
                            ("MS Shell Dlg", "DejaVu Sans"), ("Consolas", "DejaVu Sans Mono")):
            self.run("reg", "add", FONTS, "/v", there, "/d", here, "/f")

    def run(self, *command, check=True):
        # Services that it starts keep running and would hold a pipe open.
        return subprocess.run([WINE, *command], env=self.environment, timeout=300, check=check,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def close(self):
        subprocess.run([SERVER, "-k"], env=self.environment, check=False)
        subprocess.run([SERVER, "-w"], env=self.environment, check=False)

    def traces(self):
        """The traces of an installed Cabslot, except its records of what was loaded."""
        traces = [str(path.relative_to(self.drive)) for path in self.drive.glob("**/*")
                  if "cabslot" in path.name.lower() and "Local/cabslot" not in str(path)]
        return traces + [key for key in (UNINSTALL_KEY, *SET_KEYS)
                         if self.run("reg", "query", key, check=False).returncode == 0]

    def install(self, setup):
        """Installs silently; returns the folder."""
        self.run(setup, "/S")
        return next(self.drive.glob("**/bin/cabslotctl.exe")).parent.parent

    def uninstall(self, folder):
        """Uninstalls silently; returns what is left."""
        self.run(folder / "Uninstall.exe", "/S")
        for _ in range(60):  # a copy of it goes on when it has ended, or it could not delete itself
            if not self.traces():
                break
            time.sleep(0.5)
        return self.traces()
