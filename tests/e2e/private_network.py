"""Runs a test file in a network of its own, because the ports of the product are fixed."""

import os
import subprocess
import sys
import unittest

import host

_MARK = "RVL_E2E_PRIVATE"

# With a private mount table where one is granted: a test then mounts small file systems.
_WAYS = tuple([way, *host.UNSHARE] for way in ("-nm", "-rnm", "-n", "-rn"))

# lo comes up with `ip`, or with the request SIOCSIFFLAGS on a system that lacks it.
_LO_UP = """
import fcntl, socket, struct, subprocess
try:
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
except (OSError, subprocess.CalledProcessError):
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as lo:
        fcntl.ioctl(lo, 0x8914, struct.pack("16sh14x", b"lo", 0x49))
"""


def _is_granted(way):
    try:
        return subprocess.run(["unshare", *way, sys.executable, "-c", _LO_UP], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, timeout=20).returncode == 0
    except (OSError, subprocess.TimeoutExpired):
        return False


def main():
    """Runs the tests of the calling file, first entering a private network where one is granted."""
    if _MARK not in os.environ:
        way = next(filter(_is_granted, _WAYS), None)
        os.environ[_MARK] = "" if way is None else "1"
        if way is not None:
            os.execvp("unshare", ["unshare", *way, sys.executable, *sys.argv])
    if os.environ[_MARK]:
        exec(_LO_UP, {})
        host.enter()
    unittest.main(module="__main__")
