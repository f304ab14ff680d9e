"""The processes of Windows programs, which all run from Wine's loader: their command lines tell them apart."""

import os
import pathlib
import signal
import time

DEADLINE = 15


def _environment(folder):
    return dict(part.split(b"=", 1) for part in (folder / "environ").read_bytes().split(b"\0") if b"=" in part)


def _of_wine():
    """Every process of Wine as (folder in /proc, prefix)."""
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if os.readlink(folder / "exe").startswith("/usr/lib/wine/"):
                yield folder, pathlib.Path(os.fsdecode(_environment(folder).get(b"WINEPREFIX", b"")))
        except OSError:
            pass  # it has ended, or is nobody's business


def host_path(prefix, path):
    """Where the file of a program is that was named by its path on the host or on Windows; without regard to case."""
    if path[1:3] != ":\\":
        return pathlib.Path(path)
    drive = prefix / "dosdevices" / path[:2].lower()
    return without_case(drive.resolve(), path[3:].split("\\"))


def without_case(folder, names):
    """The path of these names below the folder, in the case in which it exists."""
    path = folder
    for name in filter(None, names):
        found = path / name
        if not found.exists() and path.is_dir():
            found = next((other for other in path.iterdir() if other.name.lower() == name.lower()), found)
        path = found
    return path


def processes(program):
    """Process ids and command lines of what runs from a file, or from files below a folder."""
    found = {}
    for folder, prefix in _of_wine():
        try:
            words = (folder / "cmdline").read_bytes().rstrip(b"\0").split(b"\0")
        except OSError:
            continue
        if words[0].startswith(b"/usr/lib/wine/"):  # it has hardly begun
            words = words[1:] or [b""]
        path = host_path(prefix, words[0].decode("utf-8", "surrogateescape"))
        if program == path or program in path.parents:
            found[int(folder.name)] = words[1:]
    return found


def server_of(prefix):
    """The process id of the prefix's wineserver."""
    for folder, of in _of_wine():
        if of == prefix and "wineserver" in os.readlink(folder / "exe"):
            return int(folder.name)
    raise AssertionError("no wineserver in %s" % prefix)


def end_all(prefix):
    """Waits for the end of what runs in a prefix whose server ends, and helps where it takes long."""
    begun = time.monotonic()
    while left := [int(folder.name) for folder, of in _of_wine() if of == prefix]:
        for pid in left if time.monotonic() - begun > 2 else []:
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        assert time.monotonic() - begun < DEADLINE, "processes stay in %s: %s" % (prefix, left)
        time.sleep(0.01)
