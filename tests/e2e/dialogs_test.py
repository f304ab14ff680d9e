"""Message boxes and the error dialog as windows, on a virtual display, driven as a person would."""

import os
import subprocess
import unittest

import private_network
import workstation
from workstation import Workstation, wait_until

PROBE = workstation.BIN.resolve().parent / "tests" / "dialog_probe"


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
        return subprocess.run(["xdotool", *arguments], env=environment, capture_output=True, text=True).stdout

    def window(self, title):
        """The id of the visible window with this title, once there is one."""
        found = []

        def appears():
            found[:] = self.xdotool("search", "--onlyvisible", "--name", "^" + title + "$").split()
            return bool(found)

        wait_until(appears, "the window " + title)
        return found[0]

    def press(self, window, key):
        self.xdotool("windowfocus", "--sync", window, "key", "--clearmodifiers", key)


class Dialogs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.display = Display()
        cls.addClassCleanup(cls.display.close)

    def setUp(self):
        # The toolkit's libraries never give back what they allocated.
        self.station = Workstation(None, DISPLAY=self.display.name, ASAN_OPTIONS="detect_leaks=0")
        self.addCleanup(self.station.close)

    def show_error(self):
        return self.station.start(program=PROBE), self.display.window("An unexpected error has occured in Ravelin")

    def test_a_message_box_is_shown_answered_and_logged(self):
        process = self.station.start("-start_frontend", "0", "Orders")
        self.display.press(self.display.window("Ravelin Client"), "Return")
        self.assertEqual(process.wait(workstation.DEADLINE), 1)
        self.assertIn('[GUI] MsgBox: "Invalid command line parameters": OK', self.station.log())

    def test_closing_the_error_dialog_goes_on_with_the_program(self):
        process, window = self.show_error()
        self.display.press(window, "Escape")
        self.assertEqual(process.wait(workstation.DEADLINE), 0)

    def test_exit_asks_and_ends_the_program_with_code_2(self):
        for answer, code in (("alt+n", 0), ("alt+y", 2)):
            with self.subTest(answer=answer):
                process, window = self.show_error()
                self.display.press(window, "alt+x")
                self.display.press(self.display.window(r"Exit Ravelin Client now\?"), answer)
                if code == 0:
                    self.display.press(window, "Escape")
                self.assertEqual(process.wait(workstation.DEADLINE), code)


if __name__ == "__main__":
    private_network.main()
