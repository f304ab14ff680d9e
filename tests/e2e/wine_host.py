"""The programs as they are built for Windows, under Wine: each workstation is a Wine prefix of its own."""

import functools
import os
import pathlib
import re
import shutil
import socket
import subprocess
import tempfile

import wine_service
from wine_processes import end_all, host_path, processes, server_of, without_case  # noqa: F401

TOOLS_LIBRARY = "RavelinTools.dll"
SYSTEM_FOLDER = "C:\\windows\\system32\\"
SOMEBODY = "ann"  # there is nobody else
ADMINISTRATOR = "ann"
INSTALLATION_WARNING = []  # by a service that is started by the manager, as it is here
INNER_QUOTE = '\\"'  # within the argument of a command line
FRAME = 4, 23  # of a window, left and at the top, as far as it belongs to the window
FOCUS_SECONDS = 0.2  # until the program knows that its window has the keyboard
UNSHARE = ("--uts", "--pid", "--fork", "--kill-child", "--mount-proc")  # whatever Wine leaves ends with the tests
MORE_SERVICE_VALUES = {"PreshutdownTimeout = 180000"}  # that the service manager adds to its own

MESSAGES = {  # of the system
    2: "File not found.",
    1053: "Service request timeout.",
    1056: "Service already running.",
    1060: "Service does not exist.",
    1062: "Service not active.",
    1072: "Service marked for delete.",
}

_LOADER = shutil.which("wine64") or "/usr/lib/wine/wine64"
_MACHINE_ENVIRONMENT = r"HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment"


def enter():
    """In the private place, the user is ann and the computer OFFICE, which is where Wine has its names from."""
    with open("/etc/passwd") as file:
        others = [line for line in file if line.split(":")[2] != str(os.getuid())]
    with tempfile.NamedTemporaryFile("w") as passwd:
        passwd.write("ann:x:%d:%d:Ann:/nonexistent:/bin/sh\n" % (os.getuid(), os.getgid()) + "".join(others))
        passwd.flush()
        subprocess.run(["mount", "--bind", passwd.name, "/etc/passwd"], check=True)
    socket.sethostname("OFFICE")


@functools.cache
def _template():
    script = pathlib.Path(__file__).resolve().parents[2] / "tools/windows/wine-prefix"
    return pathlib.Path(subprocess.run([script], check=True, stdout=subprocess.PIPE, text=True).stdout.strip())


def folder_for_workstations():
    """On the disk of the prefix that they are cloned from."""
    return _template().parent


def executable(name):
    """The file name of a program."""
    return name + ".exe"


def windows_path(path):
    """How the programs name a host path outside their drive C:."""
    return "Z:" + str(path).replace("/", "\\")


def file_name(text):
    """The nearest legal name of a file."""
    return text.replace('"', "'")


argument = windows_path  # how a host path is given to a program of the server's side


def rights(path):
    """What the owner and "other" may do: Wine keeps no other rights of a file than Unix has."""
    mode = os.stat(path).st_mode
    return {"ann": _letters(mode >> 6), "other": _letters(mode)}


def _letters(mode):
    return "".join(letter if mode & bit else "-" for letter, bit in zip("rwx", (4, 2, 1)))


class Process(subprocess.Popen):
    """What it says goes into files: the programs that a Windows program starts keep its pipes open."""

    def __init__(self, *arguments, **options):
        with tempfile.NamedTemporaryFile() as output, tempfile.NamedTemporaryFile() as errors:
            super().__init__(*arguments, stdout=output, stderr=errors, **options)
            self.stdout, self.stderr = open(output.name, "rb"), open(errors.name, "rb")

    def communicate(self, input=None, timeout=None):
        self.wait(timeout)
        said = tuple(b"" if file.closed else file.read() for file in (self.stdout, self.stderr))
        self.stdout.close()
        self.stderr.close()
        return said


class Machine:
    """What programs run on: Windows of its own, which is started with it."""

    def __init__(self, folder, **environment):
        self.root = folder / "root"
        self.environment = {"PATH": os.environ.get("PATH", ""), "WINEPREFIX": str(self.root), "WINEDEBUG": "-all",
                            "WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe=d", "LC_ALL": "C.UTF-8",
                            "HOME": "/nonexistent", **environment}
        self._clone()
        self._start()

    def _clone(self):
        """The files are shared with the template, except for those that Wine writes into."""
        subprocess.run(["cp", "-al", _template(), self.root], check=True)
        for file in self.root.iterdir():
            if file.is_file():
                file.unlink()
        for name in ("system.reg", "user.reg", "userdef.reg", ".update-timestamp"):
            shutil.copy2(_template() / name, self.root)

    def _start(self):
        """The server stays between one program and the next, and with it the services."""
        self._wineserver("-p")
        self._run("wineboot")

    def _wineserver(self, order):
        subprocess.run(["wineserver", order], env=self.environment)

    def _run(self, program, *arguments):
        """Runs a program of Windows itself and returns its output."""
        return subprocess.run(self.command(program, *arguments), env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.decode("utf-8", "replace")

    def set_environment_of_services(self, name, value):
        """The manager reads it when the machine starts."""
        self._run("reg", "add", _MACHINE_ENVIRONMENT, "/v", name, "/d", value, "/f")
        self.restart()

    def command(self, program, *arguments):
        return [_LOADER, program, *arguments]

    def path(self, path):
        """Where a path of drive C: is on the host."""
        return without_case(self.root / "drive_c", path[3:].replace("/", "\\").split("\\"))

    def end(self):
        self._wineserver("-k")
        end_all(self.root)

    def restart(self):
        self.end()
        self._start()

    # The service

    def start_service(self, station, argument):
        """The manager starts it; with a window of its own it is started by hand."""
        if argument != "-service_mode":
            return station.start(argument)
        return wine_service.Service(self._run, station.client, argument)

    def stop_service(self, station, service):
        if isinstance(service, wine_service.Service):
            service.stop()
        else:
            station.run("end-session", str(self.process_in_log(station, service)),
                        program=station.program_file("desktop_tool"))

    def write_expandable(self, _, key, name, text):
        """Writes a text with variables into the registry, which no program of ours does."""
        self._run("reg", "add", key, "/v", name, "/t", "REG_EXPAND_SZ", "/d", text, "/f")

    def register_service(self, _, command_line):
        """As nobody does but another program's installer."""
        wine_service.register(self._run, command_line)

    def open_handles(self, _):
        """They are all with the server."""
        return len(os.listdir("/proc/%d/fd" % server_of(self.root)))

    def process_in_log(self, station, process):
        """The process id as the log shows it: Windows has its own."""
        line = r"\[Client (\d+)\] Command line parameters: %s\r\n" % re.escape(" ".join(process.arguments))
        return int(re.search(line, station.log()[process.begin_in_log:])[1])

    # Windows

    def display_window(self, station, window):
        """The display's id of a window that a program tells of."""
        return self._property(station, window, "__wine_x11_whole_window")

    def tags(self, station, window):
        """What the programs have noted at a window: {"RVL_FrontendID": 3}."""
        names = ("RVL_FrontendID", "RVL_FrontendVersionID", "RVL_FrontendID_Backup", "RVL_FrontendVersionID_Backup",
                 "RVL_StartTick_Low", "RVL_StartTick_High")
        return {name: self._property(station, window, name) for name in names}

    def _property(self, station, window, name):
        return int(station.run("property", str(window), name, program=station.program_file("desktop_tool"))[1])

    def order_access(self, station, window, order):
        station.run("/order", str(window), order, program=station.program_file("msaccess"))

    def end_session(self, station, _):
        """The user logs off."""
        subprocess.run(self.command("wineboot", "--end-session", "--shutdown"), env=station.environment)
