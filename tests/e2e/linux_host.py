"""The programs as they are built for Linux, where a folder stands for the drives of a workstation."""

import os
import pathlib
import re
import signal
import sqlite3
import subprocess

TOOLS_LIBRARY = "RavelinTools.so"
SYSTEM_FOLDER = "C:\\Windows\\System32\\"
SOMEBODY = "games"  # an account that every host has, beside ann
ADMINISTRATOR = "root"
INSTALLATION_WARNING = ["Warning: Service is not installed"]  # by a service that is just started
INNER_QUOTE = '""'  # within the argument of a command line
FRAME = 0, 0  # of a window, left and at the top, as far as it belongs to the window
FOCUS_SECONDS = 0  # until the program knows that its window has the keyboard
UNSHARE = ()  # nothing more than a network and mounts
MORE_SERVICE_VALUES = set()  # that the service manager adds to its own

MESSAGES = {  # of the system
    2: "The system cannot find the file specified.",
    1053: "The service did not respond to the start or control request in a timely fashion.",
    1056: "An instance of the service is already running.",
    1060: "The specified service does not exist as an installed service.",
    1062: "The service has not been started.",
    1072: "The specified service has been marked for deletion.",
}

_SERVICE = r"HKLM\SYSTEM\CurrentControlSet\Services\RVLClient"


def enter():
    """The private place is as it should be."""


def folder_for_workstations():
    """That of the system."""


def executable(name):
    """The file name of a program."""
    return name


def windows_path(path):
    """How the programs name a host path outside their drive C:."""
    return "Z:" + str(path).replace("/", "\\")


def argument(path):
    """How a host path is given to a program of the server's side."""
    return str(path)


def file_name(text):
    """The nearest legal name of a file."""
    return text


def processes(program):
    """Process ids and command lines of what runs from a file, or from files below a folder, also when the file has been
    replaced meanwhile."""
    found = {}
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            path = pathlib.Path(os.readlink(folder / "exe").removesuffix(" (deleted)"))
            if program == path or program in path.parents:
                found[int(folder.name)] = (folder / "cmdline").read_bytes().split(b"\0")[1:-1]
        except OSError:
            pass  # it has ended
    return found


def rights(path):
    """What the users named in the access list, and "other", may do: "rwx"."""
    entries = subprocess.run(["getfacl", "-cp", path], capture_output=True, check=True).stdout.decode()
    return {name or kind: may for kind, name, may in re.findall(r"^(user|other):(\w*):(\S+)", entries, re.MULTILINE)}


class Process(subprocess.Popen):
    """A program and what it says."""

    def __init__(self, *arguments, **options):
        super().__init__(*arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)


class Machine:
    """What programs run on."""

    def __init__(self, folder, **environment):
        self.root = folder / "root"
        self.environment = {"PATH": os.environ.get("PATH", ""), "RVL_ROOT": str(self.root), "RVL_USER": "ann",
                            "RVL_DOMAIN": "OFFICE", **environment}

    def set_environment_of_services(self, name, value):
        self.environment[name] = value

    def command(self, program, *arguments):
        return [program, *arguments]

    def path(self, path):
        """Where a path of drive C: is on the host."""
        return self.root / "drive_c" / path[3:].replace("\\", "/")

    def end(self):
        """Whatever is left of it, when its programs have ended."""

    def restart(self):
        """As the machine would, once every program has ended."""

    # The service

    def start_service(self, station, argument):
        return station.start(argument)

    def stop_service(self, _, service):
        service.send_signal(signal.SIGTERM)

    def write_expandable(self, station, key, name, text):
        """Writes a text with variables into the registry, which no program of ours does."""
        station.rvlreg("set", key, name, "text", text)
        store = sqlite3.connect(self.root / "registry.db", isolation_level=None)
        store.execute("UPDATE RegistryValues SET Data = CAST(Data AS BLOB) WHERE Name = ?", (name,))
        store.close()

    def register_service(self, station, command_line):
        """As nobody does but another program's installer."""
        station.rvlreg("set", _SERVICE, "ImagePath", "text", command_line)

    def open_handles(self, service):
        return len(os.listdir("/proc/%d/fd" % service.pid))

    def process_in_log(self, station, process):
        """The process id as the log shows it."""
        return process.pid

    # Windows

    def display_window(self, station, window):
        """The display's id of a window that a program tells of."""
        return window

    def tags(self, station, window):
        """What the programs have noted at a window: {"RVL_FrontendID": 3}."""
        noted = self._xprop(station, window)
        numbers = re.findall(r"^(RVL_\w+)\(CARDINAL\) = (\d+)", noted, re.MULTILINE)
        return {name: int(number) for name, number in numbers}

    def order_access(self, station, window, order):
        self._xprop(station, window, "-f", "MSACCESS_COMMAND", "8u", "-set", "MSACCESS_COMMAND", order)

    def _xprop(self, station, window, *arguments):
        return subprocess.run(["xprop", "-id", str(window), *arguments], capture_output=True, text=True,
                              env=dict(os.environ, DISPLAY=station.environment["DISPLAY"])).stdout

    def end_session(self, station, display):
        """The user's desktop goes."""
        display.close()
