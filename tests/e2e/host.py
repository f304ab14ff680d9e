"""The system that the tests run the programs on: Linux itself, or Windows as Wine provides it. Each is a module with
the same names; what one of them lacks is listed here."""

import os
import unittest

IS_WINE = os.environ.get("RVL_HOST") == "wine"

if IS_WINE:
    from wine_host import *  # noqa: F403
else:
    from linux_host import *  # noqa: F403

# What a test may need beyond both systems' common ground, and why Wine does not have it.
_WINE_LACKS = {
    "two users": "Wine has one user, with every right: nobody can be somebody else",
    "a domain controller": "Wine knows of no domain and its controller",
    "a registry file": "Wine's registry is in the memory of its server: it is no file that others could hold or change",
    "Unix processes": "sessions, streams, signals and file modes of a process are those of Unix",
    "a missing system": "Wine is there before the programs are",
    "Unix file names": "its names are characters, without backslashes, and are the same in either case",
    "a manager that sees a service die": "Wine takes a service that was killed for running until it is started again",
    "a way to stop a program without windows": "without a display, Wine lets nobody tell a program that the session ends",
    "a manager that lets a hanging service be": "Wine's manager waits ten seconds for each answer of a service that hangs",
}


def needs(*facilities):
    """Skips a test where one of these facilities is lacking."""
    reasons = "; ".join(_WINE_LACKS[facility] for facility in facilities)
    return unittest.skipIf(IS_WINE, reasons)
