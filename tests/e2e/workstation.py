"""A throwaway workstation: its own root folder, a copy of the programs, and the service running on it."""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import sqlite3
import subprocess
import tempfile
import time

import host
from host import processes, windows_path  # noqa: F401

BIN = pathlib.Path(os.environ.get("RVL_BIN", pathlib.Path(__file__).parents[2] / "build/release/bin"))
DEADLINE = 15  # seconds in which everything awaited happens, also on a busy machine

_PREFIX = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \[Client (?:(\w+) )?(\d+)\] ")


def wait_until(condition, what):
    """Waits for the condition to come true; `what` returns or is the text of the failure when it does not."""
    end = time.monotonic() + DEADLINE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("not in time: " + (what() if callable(what) else what))
        time.sleep(0.01)


def kill(pid):
    with contextlib.suppress(ProcessLookupError):  # it may just have ended
        os.kill(pid, signal.SIGKILL)


def program_file(name):
    """A program of the build, or one that the tests are built with."""
    file = BIN / host.executable(name)
    return file if file.exists() else BIN.resolve().parent / "tests" / file.name


class Workstation:
    program_file = staticmethod(program_file)

    def __init__(self, address="localhost", **environment):
        """The Settings row names the server address; None leaves the database to the first start."""
        self._folder = tempfile.TemporaryDirectory(prefix="rvl-e2e-", dir=host.folder_for_workstations())
        self.folder = pathlib.Path(self._folder.name)
        self.machine = host.Machine(self.folder, **environment)
        self.root = self.machine.root
        self.bin = self.folder / "bin"
        self.bin.mkdir()
        self.client = self.bin / host.executable("RVLClient")
        self.copy_programs()
        self.log_path = self.bin / "RVLClient.log"
        self.database = self.host("C:\\ProgramData\\Ravelin\\Client\\RVLClient.mdb")
        self.environment = self.machine.environment
        self.service = None
        self._processes = []
        self._mounts = []
        if address is not None:
            self.prepare_database(ServerAddress=address)

    def copy_programs(self):
        programs = map(host.executable, ("RVLClient", "rvlreg"))
        for name in (*programs, "RVLClientTemplate.mdb", host.TOOLS_LIBRARY):
            shutil.copy(BIN / name, self.bin)

    def end_processes(self, program):
        """Those of one program, or of all in a folder, also what the programs have started, which is nobody's child."""
        def kill_all():
            """True when nothing runs any more: what is killed may just have started its successor."""
            running = processes(program)
            for pid in running:
                kill(pid)
            return not running

        wait_until(kill_all, "the end of every process")

    def cut_power(self):
        self.end_processes(self.folder)
        self.machine.restart()

    def close(self):
        for process in self._processes:
            if process.poll() is None:
                process.kill()
            process.communicate()
        self.end_processes(self.folder)
        self.machine.end()
        for place in self._mounts:
            # A killed process that is nobody's child lets go of its files a moment later.
            wait_until(lambda place=place: subprocess.run(["umount", place]).returncode == 0, "umount %s" % place)
        self._folder.cleanup()

    def mount(self, place, *arguments):
        """Mounts at the place, until the end of the workstation; false when the system does not grant it."""
        mounted = subprocess.run(["mount", *arguments, place], stderr=subprocess.DEVNULL).returncode == 0
        if mounted:
            self._mounts.append(place)
        return mounted

    # The database

    def prepare_database(self, **settings):
        self.database.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(BIN / "RVLClientTemplate.mdb", self.database)
        self.query("DELETE FROM Settings")
        for name, value in settings.items():
            self.query("INSERT INTO Settings (%s) VALUES (?)" % name, value)

    def query(self, sql, *values):
        connection = sqlite3.connect(self.database, timeout=DEADLINE)
        try:
            with connection:
                return connection.execute(sql, values).fetchall()
        finally:
            connection.close()

    def setting(self, name):
        return self.query("SELECT %s FROM Settings" % name)[0][0]

    # Processes

    def start(self, *arguments, program="RVLClient", user=None):
        """Starts a program, as another user if asked to, without waiting for it to end."""
        begin = len(self.log())
        file = program if isinstance(program, pathlib.Path) else self.bin / host.executable(program)
        process = host.Process(self.machine.command(file, *arguments), env=self.environment, cwd=self.folder, user=user,
                               group=user, extra_groups=None if user is None else [], stdin=subprocess.DEVNULL)
        return self._remember(process, arguments, begin)

    def _remember(self, process, arguments, begin):
        process.arguments, process.begin_in_log = arguments, begin
        self._processes.append(process)
        return process

    def run(self, *arguments, program="RVLClient"):
        """Runs a program to its end; returns its exit code, output and errors."""
        process = self.start(*arguments, program=program)
        try:
            output, errors = process.communicate(timeout=DEADLINE)
        except subprocess.TimeoutExpired:
            raise AssertionError("%r does not end; log:\n%s" % (arguments, self.log())) from None
        return process.returncode, *(text.decode().replace("\r\n", "\n") for text in (output, errors))

    def rvlreg(self, *arguments):
        """Returns the exit status and the output, line by line."""
        status, output, _ = self.run(*arguments, program="rvlreg")
        return status, output.splitlines()

    def launch_service(self, argument="-service_mode"):
        """Does not wait for it to be the service."""
        begin = len(self.log())
        self.service = self._remember(self.machine.start_service(self, argument), [argument], begin)

    def start_service(self, argument="-service_mode"):
        begun = self.log().count("Service started")
        self.launch_service(argument)
        wait_until(lambda: self.service.poll() is not None or self.log().count("Service started") > begun,
                   lambda: "the start of the service; log:\n" + self.log())
        assert self.service.poll() is None, "the service has ended; log:\n" + self.log()
        return self.service

    def stop_service(self):
        """Returns the exit code."""
        self.machine.stop_service(self, self.service)
        return self._end_of_service()

    def interrupt_service(self):
        """As the person does who has started it in a terminal; returns the exit code."""
        self.service.send_signal(signal.SIGINT)
        return self._end_of_service()

    def kill_service(self):
        self.service.send_signal(signal.SIGKILL)
        self._end_of_service()

    def _end_of_service(self):
        try:
            return self.service.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            raise AssertionError("the service does not end; log:\n" + self.log()) from None

    # The log

    def log(self):
        return self.log_path.read_bytes().decode("latin-1") if self.log_path.is_file() else ""

    def log_entries(self, process=None):
        """The entries, of one process or of all, as (tag, text); continuation lines belong to the text."""
        entries = []
        for line in self.log().split("\r\n")[:-1]:
            prefix = _PREFIX.match(line)
            if prefix:
                entries.append([int(prefix[2]), prefix[1], line[prefix.end():]])
            else:
                entries[-1][2] += "\r\n" + line
        pid = None if process is None else self.machine.process_in_log(self, process)
        return [(tag, text) for logged, tag, text in entries if pid in (None, logged)]

    def wait_log(self, text, count=1):
        wait_until(lambda: self.log().count(text) >= count,
                   lambda: "%d x %r in the log:\n%s" % (count, text, self.log()[-4000:]))

    # Files of drive C:

    def host(self, path):
        return self.machine.path(path)

    def write(self, path, content=b""):
        host = self.host(path)
        host.parent.mkdir(parents=True, exist_ok=True)
        host.write_bytes(content)
        return host
