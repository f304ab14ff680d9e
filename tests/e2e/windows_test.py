"""The windows on a virtual display, driven as a person would. The probe opens them with sample content and says
what their user did."""

import os

import host
import private_network
import workstation
from virtual_display import DisplayTest
from workstation import wait_until

PROBE = workstation.program_file("window_probe")
LOG = PROBE.with_suffix(".log")  # of the probes, which do not run on the workstation
PLACE = r"HKCU\Software\Ravelin\Client\WindowPos"


class Probe:
    """A running probe; what it has said so far stands in `lines`."""

    def __init__(self, station, *arguments):
        self.process = station.start(*arguments, program=PROBE)
        os.set_blocking(self.process.stdout.fileno(), False)
        self._said = b""

    @property
    def lines(self):
        self._said += self.process.stdout.read() or b""
        return [line for line in self._said.decode("latin-1").splitlines() if not line.startswith("filled")]

    def wait_for(self, *lines):
        wait_until(lambda: self.lines[-len(lines):] == list(lines), lambda: "%s, but %s" % (lines, self.lines))


class Windows(DisplayTest):
    def setUp(self):
        super().setUp()
        LOG.unlink(missing_ok=True)

    def open(self, title, *arguments):
        probe = Probe(self.station, *arguments)
        return probe, self.display.window(title)

    def ends(self, probe):
        """With code 0 and without a complaint of the toolkit."""
        self.assertEqual(probe.process.wait(workstation.DEADLINE), 0)
        self.assertEqual(probe.process.stderr.read(), b"")
        self.assertNotIn("Toolkit: ", LOG.read_text("latin-1") if LOG.exists() else "")

    def press_until(self, window, keys, probe, line):
        """The first keys may come before the window takes any."""
        def happens():
            self.display.press(window, *keys)
            return line in probe.lines
        wait_until(happens, lambda: "%s after %s, but %s" % (line, keys, probe.lines))

    def open_switchboard(self, *arguments):
        probe, window = self.open("Access Switchboard", "switchboard", *arguments)
        self.press_until(window, ["Return"], probe, "start 17 Orders")
        return probe, window

    def test_the_switchboard_is_driven_by_the_keyboard(self):
        probe, window = self.open_switchboard()
        self.display.press(window, "Down", "space", "Return")  # the space bar starts nothing
        probe.wait_for("start 17 Orders", "start 18 Stock & Suppliers")
        for key, line in (("ctrl+Tab", "advanced"), ("Down", "chosen 18"), ("ctrl+Tab", "main"),
                          ("ctrl+shift+Tab", "advanced"), ("ctrl+shift+Tab", "main"), ("Return", "start 18 Stock & Suppliers"),
                          ("Escape", "unload Closing")):
            self.display.press(window, key)
            probe.wait_for(line)
        self.ends(probe)

    def test_a_double_click_starts(self):
        probe, window = self.open_switchboard()
        left, top = host.FRAME
        self.display.xdotool("mousemove", "--window", window, str(left + 110), str(top + 45))
        self.display.xdotool("click", "--repeat", "2", "1")
        probe.wait_for("start 17 Orders", "start 17 Orders")
        self.display.press(window, "Escape")
        self.ends(probe)

    def test_the_advanced_tab_cannot_be_chosen_while_it_is_disabled(self):
        probe, window = self.open("Access Switchboard", "switchboard", "0")
        self.display.press(window, "ctrl+Tab", "shift+Escape")
        self.press_until(window, ["Escape"], probe, "unload Closing")
        self.assertEqual(probe.lines, ["unload Closing"])
        self.ends(probe)

    def test_place_and_splitter_are_kept(self):
        place = {"Left": "40", "Top": "60", "Width": "700", "Height": "500", "Advanced Splitter": "333"}
        for name, value in place.items():
            self.station.rvlreg("set", PLACE, name, "text", value)
        probe, window = self.open_switchboard()
        self.assertEqual(self.display.rectangle(window), [40, 60, 700, 500])
        self.display.xdotool("windowmove", "--sync", window, "90", "70")
        place.update(Left="90", Top="70")
        self.display.press(window, "Escape")
        self.ends(probe)
        kept = {name: self.station.rvlreg("get", PLACE, name)[1][0] for name in place}
        self.assertEqual(kept, place)

    def test_the_splitter_moves_with_the_keyboard(self):
        probe, window = self.open_switchboard()
        self.display.press(window, "ctrl+Tab")
        probe.wait_for("advanced")
        # Whoever still holds the bar does not close the window with Esc.
        self.display.press(window, "F8", "Home", "Escape", "F8", "End", "F8", "Escape")
        self.ends(probe)
        self.assertGreater(int(self.station.rvlreg("get", PLACE, "Advanced Splitter")[1][0]), 400)

    def test_closing_the_loading_window_ends_its_process(self):
        probe, window = self.open("Stock & Suppliers", "start")
        self.display.ask_to_close(window)
        self.ends(probe)
        self.assertEqual(probe.lines, ["unload Closing"])

    def test_a_service_window_may_refuse_to_close(self):
        probe, window = self.open("Ravelin Client Debug Mode", "service")
        self.display.ask_to_close(window)
        probe.wait_for("unload Closing")
        self.display.ask_to_close(self.display.window("Ravelin Client Debug Mode"))
        self.ends(probe)

    def test_messages_and_notices_do_not_take_the_keyboard(self):
        loading, work = self.open("Stock & Suppliers", "start")
        self.display.xdotool("windowfocus", "--sync", work)
        for title, argument in ((r"Orders \[01:40\]", "message"), ("New version of Orders", "notice")):
            with self.subTest(argument):
                self.open(title, argument)
                self.assertEqual(self.display.focus(), work)

    def test_a_message_is_answered(self):
        for answer, line in (("alt+d", "close now"), ("alt+w", "continue")):
            with self.subTest(answer):
                probe, window = self.open(r"Orders \[01:40\]", "message")
                self.display.press(window, answer)
                probe.wait_for(line)
                wait_until(lambda: not self.display.windows(r"Orders \[01:40\]"), "the end of the window")

    def test_a_forced_message_cannot_be_closed(self):
        probe, window = self.open(r"Orders \[01:40\]", "message", "forced")
        self.display.ask_to_close(window)
        self.display.press(window, "Escape", "alt+w", "alt+d")
        probe.wait_for("close now")
        self.assertEqual(probe.lines, ["close now"])

    def test_every_new_version_has_its_notice(self):
        probe, window = self.open("New version of Orders", "notice")
        probe.wait_for("open")
        self.display.press(window, "Return")
        wait_until(lambda: not self.display.windows("New version of Orders"), "the end of the notice")
        self.assertTrue(self.display.windows("New version of Stock & Suppliers"))

    def test_a_long_message_box_keeps_its_buttons_on_the_screen(self):
        probe, window = self.open("Ravelin Client", "box", "A line of some length.\n" * 200)
        left, top, width, height = self.display.rectangle(window)
        self.assertTrue(left >= 0 and top >= 0 and left + width <= 1024 and top + height <= 768)
        self.display.press(window, "alt+n")
        self.ends(probe)
        self.assertEqual(probe.lines, ["No"])


if __name__ == "__main__":
    private_network.main()
