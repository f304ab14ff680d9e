"""What the deployment server has for people, through a real service to a helper and a switchboard played here."""

import re
import shutil
import subprocess
import unittest

import host
import private_network
from local_sessions_test import USER, login
from server_peer import connect_local, frame
from workstation import DEADLINE, Workstation, program_file, wait_until

HISTORY = """# front end, version, shown, date, revoked, notes
3\t9\t0.9 \xe9\t2023-01-31 08:00:00\t1\tlost orders\\nin C:\\\\new\n
3\t12\t1.2\t2024-12-31\t0\n4\t1\t1.0\t2024-01-01\t0\tother\n"""


class People(unittest.TestCase):
    def setUp(self):
        self.workstation = Workstation()
        self.addCleanup(self.workstation.close)
        self.folder = self.workstation.folder
        self.program = shutil.copy(program_file("deployserver"), self.folder)  # its log lies beside it
        self.version = self.folder / "Orders"
        self.version.mkdir()
        (self.version / "Orders.mdb").write_bytes(b"database")
        (self.folder / "history").write_text(HISTORY, encoding="utf-8")
        self.workstation.write("C:\\Program Files\\Microsoft Office\\Office11\\MSACCESS.EXE")
        self.shown = 0

    def command(self, *options):
        return self.workstation.machine.command(self.program, *options)

    def serve(self, *options):
        self.output = self.folder / "server.out"
        with open(self.output, "wb") as output:
            self.server = subprocess.Popen(self.command(*options), env=self.workstation.environment,
                                           stdin=subprocess.PIPE, stdout=output)
        self.addCleanup(self.server.communicate)
        self.addCleanup(self.server.kill)

    def prints(self, line):
        """Waits for a line behind those that were waited for already."""
        text = ""

        def is_there():
            nonlocal text
            text = self.output.read_text(encoding="utf-8")
            return line + " (#0)\n" in text[self.shown:] or line + "\n" in text[self.shown:]
        wait_until(is_there, lambda: "%r in %s" % (line, text[self.shown:]))
        self.shown = text.index(line, self.shown) + len(line)

    def order(self, line, *answers):
        self.server.stdin.write(line.encode() + b"\n")
        self.server.stdin.flush()
        for answer in answers:
            self.prints(answer)

    def join(self, kind, *folders):
        local = connect_local()
        self.addCleanup(local.close)
        local.send("", "HELLO", "RVL", kind, "1.1.3")
        local.send_bytes(frame(login(USER, *folders)))
        return local

    def hears(self, local, *expected):
        for content in expected:
            self.assertEqual(local.receive_frame(), frame(content))

    def test_a_day(self):
        self.serve("--publish", host.argument(self.version), "--frontend-id=3", "--version-id=12", "--deploy-to", USER,
                   "--orders", "--history", host.argument(self.folder / "history"), "--deny=4",
                   "--deny-text=Stock \xe9 is being taken.")
        self.workstation.start_service()
        self.prints("FRONTEND_DEPLOY version 12 for OFFICE\\ann: handled")
        self.order("message helper OFFICE\\ann hello", "NOT DONE: OFFICE\\ann is not logged in at any workstation")

        helper = self.join("HELPER", "C:\\D\\", "")
        wait_until(lambda: "CONNECT HELPER 0: OFFICE\\ann \"Ann \xc9\", logged in " in self.output.read_text("utf-8"),
                   "the helper's line")
        self.order("message switchboard office\\ANN hello", "NOT DONE: office\\ANN has no switchboard")
        board = self.join("UI")
        while board.receive() != b"\0FRONTEND_LIST_END\0":
            pass

        board.send("", "START_FRONTEND", 3, "Orders")
        self.prints("START_FRONTEND frontend 3 \"Orders\" for OFFICE\\ann: granted")
        started = rb"\0START_FRONTEND\x003\x0012\0Orders\0C:\\Program Files\\Microsoft Office\\Office11\\MSACCESS.EXE" \
                  rb"\0[^\0]+\\Orders\.mdb\0\0\0"
        self.assertRegex(helper.receive(), started)
        self.hears(board, b"\0START_FRONTEND_DONE\0")
        board.send("", "START_FRONTEND", 4, "Stock")
        self.hears(board, b"\0MSGBOX\0Stock \xe9 is being taken.\0Stock\x0048", b"\0START_FRONTEND_DONE\0")
        self.prints("START_FRONTEND frontend 4 \"Stock\" for OFFICE\\ann: denied")

        board.send("h", "PASS_THROUGH", "FRONTEND_VERSION_HISTORY", 3)
        begin, end = b"h\0FRONTEND_VERSION_HISTORY_BEGIN\0", b"h\0FRONTEND_VERSION_HISTORY_END\0"
        entry = b"h\0FRONTEND_VERSION_HISTORY_ENTRY\x003\0"
        self.hears(board, begin, entry + b"12\x001.2\0\0\x002024-12-31\x000\x000\x000", entry +
                   b"9\x000.9 \xe9\0lost orders\r\nin C:\\new\0\x002023-01-31 08:00:00\x000\x000\x001", end)
        board.send("h", "PASS_THROUGH", "FRONTEND_VERSION_HISTORY", 7)
        self.hears(board, begin, end)

        close = "close %s 3 60 \"Save <b>all</b>!\\nNow.\""
        self.order(close % USER, "NOT DONE: frontend 3 is not running for OFFICE\\ann")
        helper.send("", "FRONTEND_START", 3, 77, 850, "11.0", "C:\\x\\Orders.mdb", 12)
        self.prints("FRONTEND_START frontend 3 version 12 of OFFICE\\ann: window 77, started 850 ms ago, Access 11.0, "
                    "\"C:\\x\\Orders.mdb\"")
        self.order(close % USER, "CLOSE_FRONTEND frontend 3 of OFFICE\\ann: window 77, in 60 s")
        self.hears(helper, b"\0CLOSE_FRONTEND\x003\x0077\0Orders.mdb\x0060\x000\0Save <b>all</b>!\r\nNow.")
        self.order("close * 3 0 no-continue Bye", "CLOSE_FRONTEND frontend 3 of OFFICE\\ann: window 77, in 0 s, "
                                                  "no continuing")
        self.hears(helper, b"\0CLOSE_FRONTEND\x003\x0077\0Orders.mdb\x000\x001\0Bye")
        helper.send("", "FRONTEND_END", 0, 77)
        self.prints("FRONTEND_END frontend 3 of OFFICE\\ann: window 77, \"C:\\x\\Orders.mdb\"")

        self.order("message helper * \"say \"\"hello\"\"\"", "MSGBOX to helper 0 of OFFICE\\ann")
        self.hears(helper, b"\0MSGBOX\0say \"hello\"\0\x0064")
        self.order("message switchboard office\\ann Hello \"The boss\" 16", "MSGBOX to switchboard 1 of OFFICE\\ann")
        self.hears(board, b"\0MSGBOX\0Hello\0The boss\x0016")
        self.order("start OFFICE\\ann 3", "START_FRONTEND frontend 3 for OFFICE\\ann: ordered")
        self.assertRegex(helper.receive(), started)
        self.order("updated 3", "FRONTEND_UPDATED frontend 3")
        self.hears(board, b"\0FRONTEND_UPDATED\x003")
        self.hears(helper, b"\0FRONTEND_UPDATED\x003")
        self.order("updated 7", "NOT DONE: frontend 7 is not known")
        self.order("deny 7 Never", "DENY frontend 7, which is not known yet")
        self.order("allow 4", "ALLOW frontend 4")
        self.order("allow 4", "NOT DONE: frontend 4 was not denied")
        self.order("close OFFICE\\eve 3 60 x", "NOT DONE: OFFICE\\eve is not logged in at any workstation")
        (self.folder / "history").write_text("3\t9\t0.9\tyesterday\t1\n")
        self.order("updated 3")
        for line in ("fire OFFICE\\ann", "close OFFICE\\ann 3", "close OFFICE\\ann x 1 y", "\u20ac",
                     "message cat OFFICE\\ann meow", "close OFFICE\\ann 3 1 two words"):
            self.order(line)
        board.close()
        self.prints("DISCONNECT UI 1: OFFICE\\ann")
        board = self.join("UI")
        board.send("", "START_FRONTEND", 7, "Seventh")
        while not (content := board.receive()).startswith(b"\0MSGBOX\0"):
            pass
        self.assertEqual(content, b"\0MSGBOX\0Never\0Seventh\x0048")

        self.order("stop")
        self.assertEqual(self.server.wait(DEADLINE), 0)
        output = self.output.read_text(encoding="utf-8")
        self.assertEqual(len(re.findall("^NOT UNDERSTOOD: ", output, re.M)), 6, output)
        self.assertIn("NOT DONE: line 1 of \"%s\" has a date" % host.argument(self.folder / "history"), output)
        self.assertEqual(self.workstation.stop_service(), 0)

    def test_end_of_orders_and_wrong_usage(self):
        self.serve("--orders", "--quiet")
        self.server.stdin.write(b"allow 5\r\nallow 6")
        self.server.stdin.close()
        self.prints("NOT DONE: frontend 5 was not denied")
        self.prints("NOT DONE: frontend 6 was not denied")
        self.assertIsNone(self.server.poll())
        for status, options in ((2, ["--orders", "--report", "--once"]), (2, ["--deny-text=x"]), (2, ["--deny=0"]),
                                (1, ["--history=missing"]), (1, ["--history=" + host.argument(self.program)])):
            run = subprocess.run(self.command(*options), env=self.workstation.environment, capture_output=True,
                                 timeout=DEADLINE)
            self.assertEqual(run.returncode, status, run.stderr)


if __name__ == "__main__":
    private_network.main()
