"""The switchboard and the service's own window before a real service, driven as a person would, also when service,
server, executable or display change under them."""

import json
import re
import shutil
import time
import unittest

import host
import private_network
from desk import DATABASE, USER, Desk
from server_peer import frame
from workstation import DEADLINE, Workstation, processes, program_file, wait_until, windows_path

CAPTION = "Access Switchboard"
LOADING, CONNECTING = CAPTION + r" \[Loading\]", CAPTION + r" \[Connecting to server\]"
DEBUG_CAPTION = "Ravelin Client Service Debug Mode"
PLACE = r"HKCU\Software\Ravelin\Client\WindowPos"


class Board(Desk):
    def setUp(self):
        super().setUp()
        self.install_access()
        self.client = self.station.client

    def server_hears_of(self, *kinds):
        """Connections of these kinds, in the order in which they come; returns their contexts at
        the server."""
        ids = {}
        while len(ids) < len(kinds):
            match = self.server_hears(rb"\0CONNECT\0(%s)\0(\d+)\0.*" % "|".join(kinds).encode())
            ids[match[1].decode()] = match[2] + b"#"
        return [ids[kind] for kind in kinds]

    def open_board(self):
        """The switchboard, its window, its context at the server, and that of the helper it has started."""
        board = self.station.start()
        ids = self.server_hears_of("UI", "HELPER")
        return board, self.display.window(CAPTION), *ids

    def choose(self, window, frontend_id, *keys):
        """Starts a front end; the keys are pressed again when they came before the window took any."""
        asked = 'Asking to start frontend #%d "' % frontend_id
        count = lambda: self.station.log().count(asked)
        before = count()

        def happens():
            self.display.press(window, *keys, "Return")
            patience = time.monotonic() + DEADLINE / 5
            while count() == before and time.monotonic() < patience:
                time.sleep(0.01)
            return count() > before
        wait_until(happens, lambda: asked + "; log:\n" + self.station.log()[-2000:])

    def open_box(self, context, title):
        self.link.send(context, "MSGBOX", "Text", title, 16)
        return self.display.window(title)

    def close_board(self, board, window):
        self.display.press(window, "Escape")
        self.wait_end(board)
        self.assertIn(("UI", "Client UI exiting (Closing)"), self.station.log_entries(board))
        self.assertEqual(board.stderr.read(), b"")
        self.assertNotIn("Toolkit: ", self.station.log())


class Switchboard(Board):
    def test_service_and_server_come_and_go_under_it(self):
        self.deploy()
        board = self.station.start()
        window = self.display.window(LOADING)
        self.station.start_service()
        self.display.window(CONNECTING)
        self.link = self.peer.accept_login()
        self.display.window(CAPTION)
        self.link.close()
        self.display.window(CONNECTING)
        self.link = self.peer.accept_login()
        context, _ = self.server_hears_of("UI", "HELPER")
        box = self.open_box(context, "Box")
        self.display.window(CAPTION)
        self.station.kill_service()
        self.display.window(LOADING)  # also behind a box
        self.display.press(box, "Return")
        self.station.wait_log('[GUI] MsgBox: "Text": OK')
        self.choose(window, 3, "Home")
        self.station.wait_log("Sending message while disconnected")
        self.deploy(4, "Stock", "C:\\fe\\stock.mdb")
        self.start_service()
        self.server_hears_of("UI", "HELPER")
        self.display.window(CAPTION)
        self.choose(window, 4, "End")
        self.assertEqual(self.allow_start(4), "Stock")
        self.reported_start(4, "C:\\fe\\stock.mdb")
        self.close_board(board, window)

    def test_enter_starts_and_the_place_is_kept(self):
        self.deploy(name="Orders \xe9")
        self.start_service()
        board, window, *_ = self.open_board()
        place = [90, 70, 700, 500]
        self.display.xdotool("windowmove", window, "90", "70", "windowsize", window, "700", "500")
        wait_until(lambda: self.display.rectangle(window) == place, "the place")
        self.choose(window, 3, "Home")
        self.assertEqual(self.allow_start(), "Orders \xe9")
        self.reported_start()
        self.assertEqual(list(self.access_processes().values()), [[DATABASE.encode()]])
        self.close_board(board, window)
        kept = [self.station.rvlreg("get", PLACE, name)[1] for name in ("Left", "Top", "Width", "Height")]
        self.assertEqual(kept, [[str(number)] for number in place])
        again = self.station.start()
        window = self.display.window(CAPTION)
        self.assertEqual(self.display.rectangle(window), place)
        self.display.ask_to_close(window)
        self.wait_end(again)

    def picture(self):
        """What is shown, once it does not change any more."""
        shown = []

        def is_still():
            shown.append(self.display.pixels())
            time.sleep(0.1)
            return shown[-2:] == shown[-1:] * 2
        wait_until(is_still, "a picture that stays")
        return shown[-1]

    def test_version_history(self):
        self.deploy()
        self.deploy(4, "Stock", "C:\\fe\\stock.mdb")
        self.start_service()
        board, window, context, _ = self.open_board()
        self.choose(window, 3, "Home")  # the window takes keys
        self.server_hears(rb"\0START_FRONTEND\0.*")
        hears = lambda asked: self.assertEqual(self.link.receive_frame(), frame(context + asked))
        self.display.press(window, "ctrl+Tab", "End")
        hears(b"\0FRONTEND_VERSION_HISTORY\x004")
        self.display.press(window, "Home")
        lines = []  # grey ones, as there is one through the text of a revoked version
        for revoked in (b"1", b"0"):
            hears(b"\0FRONTEND_VERSION_HISTORY\x003")
            empty = self.picture()
            entry = b"\x003\x0031\x001.1\0Withdrawn <b>& so on\r\nfor good\0\x002004-02-29\x000\x000\0"
            for answer in (b"_BEGIN\0", b"_ENTRY" + entry + revoked, b"_END\0"):
                self.link.send_bytes(frame(context + b"\0FRONTEND_VERSION_HISTORY" + answer))
            wait_until(lambda: self.display.pixels() != empty, "the history")
            lines.append(len(re.findall(rb"(?:([\x80-\xd8])\1\1.){40}", self.picture(), re.DOTALL)))
            self.link.send(context, "FRONTEND_UPDATED", 3)
        self.assertGreater(*lines)
        self.close_board(board, window)

    def test_a_thousand_frontends(self):
        names = ["<b>Stock</b> & \"more\"", "R\xe9sum\xe9 &Copy", "&amp;", "100%s's", " ", "x" * 2000]
        names += ["Front end %d" % number for number in range(len(names) + 1, 1001)]
        self.deploy(1001)
        self.station.query("INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, FrontendName,"
                           " FrontendLocation, FrontendFilename) SELECT key + 1, key + 1, ?, value, FrontendLocation,"
                           " FrontendFilename FROM DeployedFrontends, json_each(?)", USER, json.dumps(names))
        self.start_service()
        board, window, *_ = self.open_board()
        for frontend_id, keys in ((1001, "Home"), *((number, "Down") for number in range(1, 7)), (1000, "End")):
            self.choose(window, frontend_id, keys)
            name = (["Orders"] + names)[frontend_id % 1001]
            name = re.escape(name.encode("latin-1"))
            self.server_hears(rb"\0START_FRONTEND\0\d+\x00%d\x00%s\x00\d+" % (frontend_id, name))
        self.close_board(board, window)

    def test_update_while_boxes_are_open(self):
        self.assertEqual(self.station.run("-install-silent")[0], 0)
        self.link = self.peer.accept_login()
        board, _, *contexts = self.open_board()
        for context in contexts:
            self.open_box(context, "Box of " + context.decode())
        temporary = self.station.folder / host.executable("client update")
        shutil.copy(program_file("RVLClient-next"), temporary)
        old = set(processes(self.client))
        self.link.send("", "UPDATED_BINARY", windows_path(temporary))
        self.wait_end(board)
        self.link = self.peer.accept_login()
        self.server_hears_of("UI", "HELPER")  # they come again by themselves
        self.display.window(CAPTION)
        running = lambda: {**processes(self.client), **processes(temporary)}
        # A switchboard that is faster than the helper starts one, too; the newest stays.
        wait_until(lambda: sorted(running().values()) == [[], [b"-service_helper"], [b"-service_mode"]],
                   lambda: str(running()))
        self.assertFalse(old & set(running()))
        self.assertGreaterEqual(self.station.log().count(" starting (1.1.4)"), 3)
        self.assertNotIn("Forcing close", self.station.log())

    def test_the_session_ends_while_boxes_are_open(self):
        self.start_service()
        board, _, *contexts = self.open_board()
        for context in contexts:
            self.open_box(context, "Box of " + context.decode())
        self.station.machine.end_session(self.station, self.display)
        self.wait_end(board)
        wait_until(lambda: list(processes(self.client)) == [self.station.service.pid], "the end of the helper")
        self.assertIsNone(self.station.service.poll())


class ServiceWindow(Board):
    def start_debug_service(self):
        service = self.station.start_service("-service_mode-debug")
        return service, self.display.window(DEBUG_CAPTION)

    def test_it_refuses_to_close_until_it_is_stopped(self):
        service, window = self.start_debug_service()
        self.peer.accept_login()
        self.display.ask_to_close(window)
        self.station.wait_log("Client Service Query Unload (Closing) (cancelling)")
        self.assertEqual(self.display.windows(DEBUG_CAPTION), [window])
        self.assertEqual(self.station.stop_service(), 0)
        self.assertEqual(service.stderr.read(), b"")

    def test_its_session_ends(self):
        service, _ = self.start_debug_service()
        self.link = self.peer.accept_login()
        board, *_ = self.open_board()
        self.station.machine.end_session(self.station, self.display)
        self.wait_end(service)
        self.wait_end(board)
        wait_until(lambda: not processes(self.client), "the end of the helper")
        for line in ("Service stopped", "Closing the database", "Service process terminating"):
            self.assertIn(line, self.station.log())

    def test_it_does_not_open_beside_the_installed_service(self):
        self.assertEqual(self.station.run("-install-silent")[0], 0)
        second = self.station.start("-service_mode-debug")
        self.display.press(self.display.window("Ravelin Client"), "Return")
        self.wait_end(second, 1)
        self.assertEqual(self.display.windows(DEBUG_CAPTION), [])


class NoDisplay(unittest.TestCase):
    def stations(self):
        for display in ({}, {"DISPLAY": ":4711"}, {"DISPLAY": "no such host:0"}):
            station = Workstation(None, ASAN_OPTIONS="detect_leaks=0", **display)
            self.addCleanup(station.close)
            yield display, station

    def test_windows_do_not_do_without(self):
        for display, station in self.stations():
            for arguments, window in (((), "switchboard"), (("-service_helper",), "helper"),
                                      (("-start_frontend", "3", "Orders"), "start-front-end window")):
                with self.subTest(window, **display):
                    self.assertEqual(station.run(*arguments), (1, "", "The %s needs a display\n" % window))

    @host.needs("a way to stop a program without windows")
    def test_the_service_does_without(self):
        for display, station in self.stations():
            with self.subTest(**display):
                service = station.start_service("-service_mode-debug")
                self.assertEqual((station.stop_service(), service.stderr.read()), (0, b""))


if __name__ == "__main__":
    private_network.main()
