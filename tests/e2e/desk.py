"""A workstation with a user in front of it: a service at a server, a display, a Microsoft Access and front ends."""

import re
import shutil
import subprocess
import unittest

from server_peer import ServerPeer
from virtual_display import Display
from workstation import DEADLINE, Workstation, processes, program_file, wait_until

ACCESS = "C:\\Program Files\\Microsoft Office\\Office11\\MSACCESS.EXE"
USER = "OFFICE\\ann"
DATABASE = "C:\\fe\\orders.mdb"


class Desk(unittest.TestCase):
    """Each test has a workstation and a display of its own."""

    def setUp(self):
        self.display = Display()
        self.addCleanup(self.display.close)
        self.peer = ServerPeer()
        self.addCleanup(self.peer.close)
        # The toolkit's libraries never give back what they allocated.
        self.station = Workstation(DISPLAY=self.display.name, ASAN_OPTIONS="detect_leaks=0")
        self.addCleanup(self.station.close)
        self.access = self.station.host(ACCESS)

    def start_service(self):
        self.station.start_service()
        self.link = self.peer.accept_login()

    def install_access(self):
        self.station.write(ACCESS)
        shutil.copy(program_file("msaccess"), self.access)

    def deploy(self, frontend_id=3, name="Orders", path=DATABASE, content=b"", icon=""):
        """A front end that lies there for the user, as if it had been deployed; its version is 10 x its id."""
        self.station.write(path, content)
        folder, _, file = path.rpartition("\\")
        self.station.query("INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, FrontendName,"
                           " FrontendLocation, FrontendFilename, FriendlyVersionNumber, IconFile)"
                           " VALUES (?, ?, ?, ?, ?, ?, '1.0', ?)",
                           frontend_id, 10 * frontend_id, USER, name, folder + "\\", file, icon)
        self.station.query("INSERT INTO DeployedFrontendFiles SELECT DeployedFrontendID, FrontendFilename, 0, ''"
                           " FROM DeployedFrontends WHERE FrontendID = ?", frontend_id)

    def start_helper(self):
        helper = self.station.start("-service_helper")
        self.server_hears(rb"\0CONNECT\0HELPER\0\d+\0\d+\0OFFICE\\ann\0.*")
        return helper

    def server_hears(self, pattern):
        """The next message to the server, matched; who comes and goes is passed over unless it is waited for."""
        while True:
            content = self.link.receive()
            match = re.fullmatch(pattern, content, re.DOTALL)
            if match:
                return match
            self.assertRegex(content, rb"^\0(DIS)?CONNECT\0", "instead of %r" % pattern)

    def allow_start(self, frontend_id=3):
        """The server hears of a request and answers it; returns its title."""
        asked = self.server_hears(rb"\0START_FRONTEND\0(\d+)\x00%d\0(.*)\0(\d+)" % frontend_id)
        self.link.send("", "START_FRONTEND", asked[1], frontend_id, asked[2], asked[3])
        return asked[2].decode("latin-1")

    def start_through_shortcut(self, title="Orders"):
        shortcut = self.station.start("-start_frontend", "3", title)
        self.assertEqual(self.allow_start(), title)
        return shortcut

    def reported_start(self, frontend_id=3, path=DATABASE):
        """The window of a start that the server hears of."""
        report = self.server_hears(rb"\0FRONTEND_START\0\d+\x00%d\0(\d+)\0\d+\x0011\.0\.8166\0%s\x00%d" % (
            frontend_id, re.escape(path.encode("latin-1")), 10 * frontend_id))
        return int(report[1])

    def reported_end(self, window, frontend_id=3):
        self.server_hears(rb"\0FRONTEND_END\0\d+\x00%d\x00%d" % (frontend_id, window))

    def close_frontend(self, window, seconds, no_continue=0, text="<b>Now</b>"):
        self.link.send("", "CLOSE_FRONTEND", 0, 3, window, "Orders", seconds, no_continue, text)

    def access_processes(self):
        return processes(self.access)

    def order_access(self, window, order):
        self.station.machine.order_access(self.station, window, order)

    def wait_end(self, process, code=0):
        try:
            self.assertEqual(process.wait(DEADLINE), code)
        except subprocess.TimeoutExpired:
            self.fail("the process does not end; log:\n" + self.station.log()[-4000:])

    def wait_no_access(self):
        wait_until(lambda: not self.access_processes(), "the end of Access")
