"""Message boxes and the error dialog as windows, on a virtual display, driven as a person would."""

import private_network
import workstation
from virtual_display import DisplayTest

PROBE = workstation.program_file("dialog_probe")


class Dialogs(DisplayTest):
    def show_error(self):
        return self.station.start(program=PROBE), self.display.window("An unexpected error has occured in Ravelin")

    def test_a_message_box_is_shown_answered_and_logged(self):
        process = self.station.start("-start_frontend", "0", "Orders")
        self.display.press(self.display.window("Ravelin Client"), "Return")
        # There is no service either.
        self.display.answer("Orders", lambda: process.poll() is not None)
        self.assertEqual(process.wait(workstation.DEADLINE), 0)
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
