"""Wine prefixes, virtual displays and serial lines for starting Windows programs on Linux.

Used by `run` (as a command), by `scripts/wine-run` and by the end-to-end tests (as a module).

A prefix costs Wine about twelve seconds to set up, a copy of one milliseconds: so one template is prepared
in build/wine and everything runs in copies of it. No prefix outside build/ is ever touched.

    wine_lab.py template                             prepare the template if it is missing or outdated
    wine_lab.py prefix DIR [--port COM2=PATH] [--dpi 120]   make or renew the prefix DIR for these settings
    wine_lab.py env DIR                              print the variables for Wine as shell assignments
"""

import argparse
import contextlib
import fcntl
import hashlib
import os
import pathlib
import select
import shlex
import shutil
import subprocess
import sys
import tempfile
import threading
import tty

ROOT = pathlib.Path(__file__).resolve().parent.parent
WINE_DIR = ROOT / "build" / "wine"
TEMPLATE = WINE_DIR / "template"
WINE_FONTS = pathlib.Path("/usr/share/wine/fonts")

# Wine takes any font for a face that it does not find, so that Courier New comes out proportional. These have
# the same widths as the Windows fonts they stand for, so texts break and centre as they do on Windows.
FONT_REPLACEMENTS = {
    "Arial": "Liberation Sans",
    "Courier New": "Liberation Mono",
    "Segoe UI": "Liberation Sans",
    "Times New Roman": "Liberation Serif",
    "Verdana": "Liberation Sans",
}


def wine_env(prefix, display=None):
    """The environment for a Wine program in this prefix."""
    env = dict(os.environ)
    env.update(
        WINEPREFIX=str(prefix),
        WINEARCH="win64",
        WINEDEBUG=os.environ.get("ORVANE_WINEDEBUG", "-all"),
        # No .NET, no HTML engine (both would ask to be downloaded), and nothing added to the user's menus.
        WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=",
        # Wine takes the code page from here: Windows-1252, on every machine.
        LC_ALL="C.UTF-8",
    )
    if display is not None:
        env["DISPLAY"] = display
    return env


def own_server_env(prefix, display=None):
    """The same for a prefix into which nobody else's Wine looks.

    Debian's server keeps its socket and lock in a folder below TMPDIR, names it in the prefix's file "wineserver", and
    never removes it: below the prefix it goes with the prefix. A Wine with another TMPDIR does not find that server."""
    return {**wine_env(prefix, display), "TMPDIR": str(prefix)}


# A high-contrast theme: white and coloured on black, and no pictures for the system's controls.
HIGH_CONTRAST = (
    *(("Control Panel\\Colors", name, color) for color, names in {
        "0 0 0": "AppWorkspace Background ButtonFace InactiveTitleText InfoWindow Menu MenuBar Scrollbar Window",
        "255 255 255": "ActiveBorder ButtonDkShadow ButtonHilight ButtonLight ButtonShadow ButtonText HilightText "
                       "InactiveBorder MenuText TitleText WindowFrame WindowText",
        "255 255 0": "InfoText HotTrackingColor", "0 255 0": "GrayText InactiveTitle",
        "128 0 128": "ActiveTitle Hilight MenuHilight"}.items() for name in names.split()),
    (r"Software\Microsoft\Windows\CurrentVersion\ThemeManager", "ThemeActive", "0"),
)


# --- the registry, as the text files that Wine reads when a prefix starts -------------------------------------


def set_registry_value(reg_file, key, name, value):
    """Sets a text (str) or a number (int) in a prefix of which nothing runs."""
    header = "[" + key.replace("\\", "\\\\") + "]"
    data = f"dword:{value:08x}" if isinstance(value, int) else '"' + value.replace("\\", "\\\\") + '"'
    line = f'"{name}"={data}'
    lines = reg_file.read_text("latin-1").split("\n")
    start = next((i for i, text in enumerate(lines) if text.startswith(header + " ")), None)
    if start is None:
        lines += [f"{header} 1", line, ""]
    else:
        end = start + 1
        while end < len(lines) and not lines[end].startswith("["):
            if lines[end].startswith(f'"{name}"='):
                lines[end] = line
                break
            end += 1
        else:
            lines.insert(start + 1, line)
    reg_file.write_text("\n".join(lines), "latin-1")


# --- prefixes ---------------------------------------------------------------------------------------------------


def _template_version():
    wine = subprocess.run(["wine", "--version"], capture_output=True, text=True, check=True, env=wine_env(TEMPLATE))
    return wine.stdout.strip() + " " + hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()


def template_version():
    """What the prepared template was made with; empty when there is none."""
    stamp = TEMPLATE / ".orvane-version"
    return stamp.read_text() if stamp.exists() else ""


def prepare_template():
    """Makes the template unless this version of Wine and of this file already made it. Safe to call from several
    processes at once: the others wait."""
    WINE_DIR.mkdir(parents=True, exist_ok=True)
    with open(WINE_DIR / "template.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        version = _template_version()
        if template_version() == version:
            return
        shutil.rmtree(TEMPLATE, ignore_errors=True)
        making = WINE_DIR / "template.new"
        shutil.rmtree(making, ignore_errors=True)
        making.mkdir()
        env = own_server_env(making)
        # Needs no display and must not put its set-up window on somebody's.
        env.pop("DISPLAY", None)
        result = subprocess.run(["wineboot", "-u"], env=env, stdin=subprocess.DEVNULL, capture_output=True, timeout=300)
        subprocess.run(["wineserver", "-w"], env=env, timeout=60)
        if not (making / "system.reg").exists():
            raise RuntimeError(f"wineboot made no prefix (status {result.returncode}): {result.stderr.decode()}")
        # A copy that knew this folder would share it with all others, told apart by the prefix's inode number alone;
        # and the next prefix gets the number of one that was just removed.
        (making / "wineserver").unlink(missing_ok=True)
        for folder in making.glob("wine-*"):
            shutil.rmtree(folder)
        _settle_template(making)
        (making / ".orvane-version").write_text(version)
        making.rename(TEMPLATE)


def _settle_template(prefix):
    # Debian's Wine does not find the fonts of its own font package; in the prefix's font folder it does.
    for font in sorted(WINE_FONTS.glob("*.[tf]*")):
        with contextlib.suppress(FileExistsError):
            (prefix / "drive_c/windows/Fonts" / font.name).symlink_to(font)
    for face, replacement in FONT_REPLACEMENTS.items():
        set_registry_value(prefix / "user.reg", r"Software\Wine\Fonts\Replacements", face, replacement)
    # A crash ends the program instead of asking somebody who is not there.
    set_registry_value(prefix / "user.reg", r"Software\Wine\WineDbg", "ShowCrashDialog", 0)
    # "My Documents" and the like point to the real home folder: keep the programs inside the prefix.
    for folder in (prefix / "drive_c/users").glob("*/*"):
        if folder.is_symlink():
            folder.unlink()
            folder.mkdir()


def _copy_template(prefix):
    prefix.mkdir(parents=True, exist_ok=True)
    for entry in TEMPLATE.iterdir():
        if entry.name == "drive_c":
            # 630 MB of system files that nobody writes: hard links.
            subprocess.run(["cp", "-al", str(entry), str(prefix)], check=True)
        else:
            subprocess.run(["cp", "-a", str(entry), str(prefix)], check=True)
    # What Wine writes in place would reach the template through a hard link.
    for ini in (prefix / "drive_c/windows").glob("*.ini"):
        text = ini.read_bytes()
        ini.unlink()
        ini.write_bytes(text)
    shutil.rmtree(prefix / "drive_c/users")
    shutil.copytree(TEMPLATE / "drive_c/users", prefix / "drive_c/users", symlinks=True)


def make_prefix(prefix, ports=None, dpi=96, registry=()):
    """Makes or renews a prefix: ports maps names like COM2 to the path of a terminal (which may appear later,
    and may be a link that changes); dpi is what the system reports as its resolution; registry are further values
    (key, name, value) of the user.

    The ports are named in the registry, because a bare link in dosdevices opens but is not listed."""
    prepare_template()
    version = template_version()
    stamp = prefix / ".orvane-version"
    if not stamp.exists() or stamp.read_text() != version:
        shutil.rmtree(prefix, ignore_errors=True)
        _copy_template(prefix)
    for name, path in (ports or {}).items():
        set_registry_value(prefix / "system.reg", r"Software\Wine\Ports", name, str(path))
    set_registry_value(prefix / "user.reg", r"Control Panel\Desktop", "LogPixels", dpi)
    for key, name, value in registry:
        set_registry_value(prefix / "user.reg", key, name, value)


class Prefix:
    """A throw-away prefix below build/wine; close() ends all that runs in it and removes it."""

    def __init__(self, ports=None, dpi=96, display=None, registry=()):
        WINE_DIR.mkdir(parents=True, exist_ok=True)
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="prefix-", dir=WINE_DIR))
        make_prefix(self.path, ports, dpi, registry)
        self.env = own_server_env(self.path, display)

    def start(self, *command, **options):
        """Starts a Windows program and returns the process."""
        return subprocess.Popen(["wine", *map(str, command)], env=self.env, **options)

    def close(self):
        # A plain -k: a server that is killed outright leaves its service processes behind, and they hold our pipes.
        subprocess.run(["wineserver", "-k"], env=self.env, stderr=subprocess.DEVNULL, timeout=60)
        shutil.rmtree(self.path, ignore_errors=True)


# --- display ------------------------------------------------------------------------------------------------------


class VirtualDisplay:
    """An X server in memory on a free display number, with a window manager."""

    WIDTH, HEIGHT = 1280, 1024

    def __init__(self):
        reader, writer = os.pipe()
        screen = f"{self.WIDTH}x{self.HEIGHT}x24"
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", screen, "-dpi", "96", "-nolisten", "tcp", "-noreset"],
            pass_fds=(writer,), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as pipe:
            ready, _, _ = select.select([pipe], [], [], 30)
            number = pipe.readline().strip() if ready else ""
        if not number:
            self._server.kill()
            raise RuntimeError("Xvfb did not start")
        self.name = ":" + number
        self._manager = subprocess.Popen(
            ["openbox", "--sm-disable", "--config-file", str(ROOT / "scripts" / "openbox.xml")],
            env={**os.environ, "DISPLAY": self.name}, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)

    def close(self):
        for process in (self._manager, self._server):
            process.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(10)


# --- serial lines ---------------------------------------------------------------------------------------------------


class NullModem:
    """Two serial lines joined by a cable: what is written to one is read from the other."""

    def __init__(self, folder):
        self.paths = [pathlib.Path(folder) / "line-a", pathlib.Path(folder) / "line-b"]
        self._masters, self._slaves = [], []
        for path in self.paths:
            master, slave = os.openpty()
            tty.setraw(slave)
            os.set_blocking(master, False)
            path.symlink_to(os.ttyname(slave))
            self._masters.append(master)
            # Kept open: else the line breaks each time the program closes its port.
            self._slaves.append(slave)
        self._stop_reader, self._stop_writer = os.pipe()
        self._thread = threading.Thread(target=self._carry, daemon=True)
        self._thread.start()

    def _carry(self):
        waiting = {master: b"" for master in self._masters}
        other = dict(zip(self._masters, reversed(self._masters)))
        while True:
            # Not read from while its bytes wait: so the writer is held up as by a slow partner.
            sources = [master for master in self._masters if not waiting[other[master]]]
            targets = [master for master in self._masters if waiting[master]]
            readable, writable, _ = select.select([*sources, self._stop_reader], targets, [])
            if self._stop_reader in readable:
                return
            for master in readable:
                waiting[other[master]] += os.read(master, 4096)
            for master in writable:
                with contextlib.suppress(BlockingIOError):
                    waiting[master] = waiting[master][os.write(master, waiting[master]):]

    def close(self):
        os.write(self._stop_writer, b".")
        self._thread.join()
        for fd in (*self._masters, *self._slaves, self._stop_reader, self._stop_writer):
            os.close(fd)


# --- command line -----------------------------------------------------------------------------------------------------


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    commands = parser.add_subparsers(dest="command", required=True)
    commands.add_parser("template")
    prefix = commands.add_parser("prefix")
    prefix.add_argument("folder", type=pathlib.Path)
    prefix.add_argument("--port", action="append", default=[], metavar="NAME=PATH")
    prefix.add_argument("--dpi", type=int, default=96)
    env = commands.add_parser("env")
    env.add_argument("folder", type=pathlib.Path)
    arguments = parser.parse_args()
    if arguments.command == "template":
        prepare_template()
    elif arguments.command == "prefix":
        make_prefix(arguments.folder.resolve(), dict(port.split("=", 1) for port in arguments.port), arguments.dpi)
    else:
        for name, value in wine_env(arguments.folder.resolve()).items():
            if name.startswith("WINE") or name == "LC_ALL":
                print(f"export {name}={shlex.quote(value)}")


if __name__ == "__main__":
    sys.exit(main())
