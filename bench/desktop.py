"""A private desktop for the measurements, and what the system tells of the programs on it."""

import os
import pathlib
import re
import signal
import subprocess
import tempfile
import time

from workstation import cpu_ticks

TICKS_PER_SECOND = os.sysconf("SC_CLK_TCK")


class Desktop:
    """An X server of its own, without a window manager."""

    def __init__(self):
        ready, told = os.pipe()
        command = ["Xvfb", "-displayfd", str(told), "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(command, pass_fds=[told], stderr=subprocess.DEVNULL)
        os.close(told)
        with open(ready) as number:
            self.name = ":" + number.readline().strip()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()

    def has_window(self, title):
        """One whose title begins like this."""
        command = ["xwininfo", "-root", "-tree", "-display", self.name]
        return f' "{title}' in subprocess.run(command, capture_output=True, text=True).stdout


def settled_seconds(process):
    """Processor time that a process has used once it has used none for a second."""
    used, since = cpu_ticks(process), time.monotonic()
    while time.monotonic() < since + 1:
        time.sleep(0.05)
        now = cpu_ticks(process)
        if now != used:
            used, since = now, time.monotonic()
    return used / TICKS_PER_SECOND


def core_percent(processes, seconds):
    """Share of one core that each of the processes takes during that time."""
    before = [cpu_ticks(process) for process in processes]
    time.sleep(seconds)
    return [100 * (cpu_ticks(process) - ticks) / TICKS_PER_SECOND / seconds
            for process, ticks in zip(processes, before)]


def sleeps(process):
    """How often all threads of a process have gone to sleep so far."""
    total = 0
    for status in pathlib.Path(f"/proc/{process.pid}/task").glob("*/status"):
        fields = dict(line.split(":", 1) for line in status.read_text().splitlines())
        total += int(fields["voluntary_ctxt_switches"])
    return total


def sleeps_for_display(process, seconds):
    """How often a process waits for an answer of its X server during that time."""
    with tempfile.NamedTemporaryFile("r") as calls:
        command = ["strace", "-f", "-e", "trace=poll", "-o", calls.name, "-p", str(process.pid)]
        strace = subprocess.Popen(command, stderr=subprocess.DEVNULL)
        time.sleep(seconds)
        strace.send_signal(signal.SIGINT)
        strace.wait()
        lines = calls.read()
    # The main loop waits for several descriptors at once.
    return len(re.findall(r"poll\(\[\{fd=\d+, events=POLLIN\}\], 1, -1\)", lines))


def megabytes(process):
    """Resident memory, and the process's share of it (what others share is divided among them)."""
    lines = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()[1:]
    kilobytes = {line.split(":")[0]: int(line.split()[1]) for line in lines}
    return kilobytes["Rss"] / 1024, kilobytes["Pss"] / 1024
