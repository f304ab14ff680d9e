"""A display of its own for windows, and the hands of the person before it."""

import ctypes
import os
import subprocess
import time
import unittest

import host
from workstation import Workstation, wait_until


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 24)]


class _Image(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("offset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.c_void_p)]  # and more


class Display:
    """An X server of its own; it chooses its number and does not start anew when its last client leaves."""

    def __init__(self):
        ready, told = os.pipe()
        command = ["Xvfb", "-displayfd", str(told), "-screen", "0", "1024x768x24", "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(command, pass_fds=[told], stderr=subprocess.DEVNULL)
        os.close(told)
        with open(ready) as number:
            self.name = ":" + number.readline().strip()

    def close(self):
        self.server.terminate()
        self.server.wait()

    def xdotool(self, *arguments):
        environment = dict(os.environ, DISPLAY=self.name)
        # The focus of a window that has just gone would be awaited for longer than anything here.
        command = ["timeout", "5", "xdotool", *arguments]
        return subprocess.run(command, env=environment, capture_output=True, text=True).stdout

    def windows(self, title):
        """The ids of the visible windows with this title."""
        return self.xdotool("search", "--onlyvisible", "--name", "^" + title + "$").split()

    def window(self, title):
        """The id of one of them, once there is one."""
        found = []

        def is_there():
            found[:] = self.windows(title)
            return found
        wait_until(is_there, "the window " + title)
        return found[0]

    def press(self, window, *keys):
        if host.FOCUS_SECONDS:
            self._leave_focus()
        self.xdotool("windowfocus", "--sync", window)
        time.sleep(host.FOCUS_SECONDS)
        self.xdotool("key", "--clearmodifiers", *keys)

    def _leave_focus(self):
        """So that the next window that gets the keyboard notices, also when it had it: there is no window manager to
        tell the display what programs do among themselves."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(x11.XOpenDisplay(self.name.encode()))
        x11.XSetInputFocus(display, ctypes.c_ulong(0), 0, ctypes.c_ulong(0))
        x11.XCloseDisplay(display)
        time.sleep(host.FOCUS_SECONDS)

    def answer(self, title, answered):
        """Presses Enter in the windows with this title, which may come one after the other, until it is answered."""
        def pressed():
            for window in self.windows(title):
                self.press(window, "Return")
            return answered()
        wait_until(pressed, "the answer to " + title)

    def focus(self):
        """The id of the window that the keyboard goes to."""
        return self.xdotool("getwindowfocus").strip()

    def ask_to_close(self, window):
        """What the close button of the title bar does; there is no window manager to press it."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        display = ctypes.c_void_p(x11.XOpenDisplay(self.name.encode()))
        request = _ClientMessage(33, 0, 1, display, int(window), x11.XInternAtom(display, b"WM_PROTOCOLS", 0), 32)
        request.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
        x11.XSendEvent(display, ctypes.c_ulong(int(window)), 0, ctypes.c_long(0), ctypes.byref(request))
        x11.XCloseDisplay(display)

    def pixels(self):
        """What is shown, four bytes (blue, green, red, any) for each pixel."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XDefaultRootWindow.restype = ctypes.c_ulong
        x11.XGetImage.restype = ctypes.POINTER(_Image)
        display = ctypes.c_void_p(x11.XOpenDisplay(self.name.encode()))
        root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
        image = x11.XGetImage(display, root, 0, 0, 1024, 768, ctypes.c_ulong(-1), 2)
        shown = ctypes.string_at(image.contents.data, 1024 * 768 * 4)
        x11.XDestroyImage(image)
        x11.XCloseDisplay(display)
        return shown

    def rectangle(self, window):
        """Left, top, width and height."""
        shell = self.xdotool("getwindowgeometry", "--shell", window)
        numbers = dict(line.split("=") for line in shell.split())
        return [int(numbers[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")]


class DisplayTest(unittest.TestCase):
    """One display for the tests of the class, a workstation for each."""

    @classmethod
    def setUpClass(cls):
        cls.display = Display()
        cls.addClassCleanup(cls.display.close)

    def setUp(self):
        # The toolkit's libraries never give back what they allocated.
        self.station = Workstation(None, DISPLAY=self.display.name, ASAN_OPTIONS="detect_leaks=0")
        self.addCleanup(self.station.close)
