"""A throwaway workstation for the measurements: a copy of the programs, a root, the service and a server."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

BIN = pathlib.Path(__file__).resolve().parent.parent / "build" / "release" / "bin"


def wait_for(condition, seconds, what):
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > deadline:
            sys.exit(f"gave up waiting for {what}")
        time.sleep(0.002)
    return result


class Workstation:
    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="rvl-bench-"))
        self.app = self.folder / "app"
        shutil.copytree(BIN, self.app)
        self.drive_c = self.folder / "root" / "drive_c"
        self.environment = dict(os.environ, RVL_ROOT=str(self.folder / "root"))
        self.processes = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.processes:
            if process.poll() is None:
                process.terminate()
                process.wait()
        shutil.rmtree(self.folder)

    def start(self, program, *arguments, **streams):
        process = subprocess.Popen([self.app / program, *arguments], env=self.environment, **streams)
        self.processes.append(process)
        return process

    def start_service(self):
        return self.start("RVLClient", "-service_mode")

    def start_server(self, *options, orders=None):
        """`orders` is what its standard input is."""
        with open(self.folder / "server.out", "ab") as output:
            return self.start("deployserver", *options, stdin=orders, stdout=output)

    def server_lines(self):
        path = self.folder / "server.out"
        return path.read_text("latin-1").splitlines() if path.exists() else []


def kill(process):
    process.send_signal(signal.SIGKILL)
    process.wait()


def status_kilobytes(process, field):
    for line in pathlib.Path(f"/proc/{process.pid}/status").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1])
    return 0


def cpu_ticks(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])
