"""A Wine of our own, in a folder: fresh, with what a bare Windows has and no trace of the user's."""
import os
import subprocess
import time

WINE = "/usr/lib/wine/wine64"
SERVER = "/usr/lib/wine/wineserver"
FONTS = "HKCU\\Software\\Wine\\Fonts\\Replacements"
UNINSTALL_KEY = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Cabslot"


class Wine:
    def __init__(self, folder):
        self.prefix = folder / "wine"
        self.drive = self.prefix / "drive_c"
        home = folder / "home"  # Wine links its documents to the user's
        home.mkdir()
        self.prefix.mkdir()
        # Neither offers of Wine's to download, nor its entries in the menu of this desktop.
        self.variables = {"WINEPREFIX": str(self.prefix), "WINEDEBUG": "-all", "HOME": str(home),
                          "WINEDLLOVERRIDES": "mscoree=;mshtml=;winemenubuilder.exe="}
        self.environment = dict(os.environ, **self.variables)
        # The server stays for the whole check: to start it takes seconds.
        subprocess.run([SERVER, "-p"], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.run("wineboot", "--init")
        # Wine brings none of the fonts that every Windows has.
        for there, here in (("Segoe UI", "DejaVu Sans"), ("Tahoma", "DejaVu Sans"),
                            ("MS Shell Dlg", "DejaVu Sans"), ("Consolas", "DejaVu Sans Mono")):
            self.run("reg", "add", FONTS, "/v", there, "/d", here, "/f")

    def run(self, *command, check=True):
        # Services that it starts live on and would hold a pipe open.
        return subprocess.run([WINE, *command], env=self.environment, timeout=300, check=check,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def close(self):
        subprocess.run([SERVER, "-k"], env=self.environment, check=False)
        subprocess.run([SERVER, "-w"], env=self.environment, check=False)

    def traces(self):
        """What there is of an installed Cabslot, but for what it remembers."""
        traces = [str(path.relative_to(self.drive)) for path in self.drive.glob("**/*")
                  if "cabslot" in path.name.lower() and "Local/cabslot" not in str(path)]
        if self.run("reg", "query", UNINSTALL_KEY, check=False).returncode == 0:
            traces.append(UNINSTALL_KEY)
        return traces

    def install(self, setup):
        """Silently; returns the folder."""
        self.run(setup, "/S")
        return next(self.drive.glob("**/bin/cabslotctl.exe")).parent.parent

    def uninstall(self, folder):
        """Silently; returns what is left."""
        self.run(folder / "Uninstall.exe", "/S")
        for _ in range(60):  # a copy of it goes on when it has ended, or it could not delete itself
            if not self.traces():
                break
            time.sleep(0.5)
        return self.traces()
