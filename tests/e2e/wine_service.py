"""The service as Wine's service manager runs it, with what the tests ask of a process."""

import io
import os
import re
import signal
import subprocess
import time

from wine_processes import processes

_NAME = "RVLClient"


class Service:
    def __init__(self, run, program, argument):
        """Starts the service, and registers it when it is not registered; `run` runs a program of Windows and returns
        its output."""
        path = "Z:" + str(program).replace("/", "\\")
        self._run = run
        self.args = [argument]
        self.returncode, self._is_killed = None, False
        self.stdout, self.stderr = io.BytesIO(), io.BytesIO()
        if "STATE" not in run("sc", "query", _NAME):
            register(run, '"%s" %s' % (path, argument))
        before = set(processes(program))
        run("sc", "start", _NAME)
        self.pid = next((pid for pid, words in processes(program).items()
                         if pid not in before and argument.encode() in words), None)

    def poll(self):
        """The manager tells with which code the service has ended, unless it was killed."""
        if self.returncode is None and not self._is_alive():
            # Whoever is killed tells the manager nothing.
            code = None if self._is_killed else re.search(r"WIN32_EXIT_CODE\s*: (\d+)", self._run("sc", "query", _NAME))
            self.returncode = int(code[1]) if code else -signal.SIGKILL
        return self.returncode

    def _is_alive(self):
        try:
            with open("/proc/%s/stat" % self.pid) as file:
                return file.read().rpartition(")")[2].split()[0] != "Z"
        except OSError:
            return False

    def wait(self, timeout):
        end = time.monotonic() + timeout
        while self.poll() is None:
            if time.monotonic() > end:
                raise subprocess.TimeoutExpired(self.args, timeout)
            time.sleep(0.02)
        return self.returncode

    def communicate(self, timeout=15):
        self.wait(timeout)
        return b"", b""

    def send_signal(self, number):
        self._is_killed = self._is_killed or number == signal.SIGKILL
        if self._is_alive():
            os.kill(self.pid, number)

    def kill(self):
        self.send_signal(signal.SIGKILL)

    def stop(self):
        self._run("sc", "stop", _NAME)


def register(run, command_line):
    run("sc", "delete", _NAME)
    run("sc", "create", _NAME, "binPath=", command_line, "type=", "own", "start=", "demand")
