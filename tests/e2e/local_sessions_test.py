"""What switchboards and helpers hear of the service, what the server hears of them, and who talks through."""

import hashlib
import re
import time

import private_network
from running_service import RunningService
from server_peer import connect_local, frame, message

USER = "OFFICE\\ann"


def login(user, *folders):
    digest = hashlib.md5(("uTc8NqX2" + user + "Kw73PbeZ").encode("latin-1")).hexdigest()
    return message("", "LOGIN", digest[:8] + digest[-8:], user, "Ann \xc9", "C:\\L\\", *folders)


class LocalSessions(RunningService):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.workstation.wait_log("] Server is connected")
        cls.workstation.query("INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, FrontendName,"
                              " FrontendLocation, FrontendFilename) VALUES (3, 12, ?, 'Orders \xe9', 'C:\\fe\\',"
                              " 'orders.mdb')", USER)
        cls.workstation.write("C:\\fe\\orders.mdb")
        cls.workstation.write("C:\\Program Files\\Microsoft Office\\Office11\\MSACCESS.EXE")
        cls.workstation.query("INSERT INTO DeployedFrontendFiles SELECT DeployedFrontendID, FrontendFilename, 0, ''"
                              " FROM DeployedFrontends")

    def join(self, kind, *folders):
        local = connect_local()
        self.addCleanup(self.leave, local)
        local.send_bytes({"UI": b"\x13\0\0\0\0HELLO\0RVL\0UI\x001.1.3",
                          "HELPER": b"\x17\0\0\0\0HELLO\0RVL\0HELPER\x001.1.3"}[kind])
        local.send_bytes(frame(login(USER, *folders)))
        return local

    def leave(self, local):
        left = self.workstation.log().count(": Disconnected\r\n")
        local.close()
        self.workstation.wait_log(": Disconnected\r\n", left + 1)
        self.server_hears(rb"\0DISCONNECT\0(UI|HELPER)\0\d")

    def hears(self, local, *expected):
        for content in expected:
            self.assertEqual(local.receive_frame(), frame(content))

    def server_hears(self, pattern):
        self.assertRegex(self.link.receive(), b"^" + pattern + b"$")

    LIST = (b"\0FRONTEND_LIST_BEGIN\0",
            b"\0FRONTEND_ENTRY\x003\0OFFICE\\ann\0Orders \xe9\0C:\\fe\\\0orders.mdb\0\x0012\0\0\0\0",
            b"\0FRONTEND_LIST_END\0")

    def test_switchboard(self):
        board = self.join("UI")
        self.hears(board, b"\0START_HELPER\0", b"\0SERVER_AVAILABLE\x001", *self.LIST)
        self.server_hears(rb"\0CONNECT\0UI\x000\0\d+\0OFFICE\\ann\0Ann \xc9\0C:\\L\\")

        board.send("hist#1", "PASS_THROUGH", "get_history", "3", "")
        self.assertEqual(self.link.receive_frame(), frame(b"0#hist#1\0GET_HISTORY\x003\0"))
        self.link.send("0#hist#1", "HISTORY", "a", "", "b")
        self.hears(board, b"hist#1\0HISTORY\0a\0\0b")

        board.send("", "START_FRONTEND", "3", "Orders")
        self.hears(board, b"\0START_HELPER\0", b"\0MSGBOX\0The application is temporarily unavailable.\r\n\r\nPlease "
                   b"try again in a few moments.\0Orders\x0016", b"\0START_FRONTEND_DONE\0")

    def test_lost_server(self):
        helper = self.join("HELPER", "C:\\D\\", "")
        self.server_hears(rb"\0CONNECT\0HELPER\x000\0\d+\0OFFICE\\ann\0Ann \xc9\0C:\\L\\")
        self.assertEqual(self.workstation.query("SELECT * FROM UserPaths"), [(USER, "C:\\L\\", "C:\\D\\", None)])
        time.sleep(0.01)  # logins of one millisecond have no order
        board = self.join("UI")
        self.hears(board, b"\0SERVER_AVAILABLE\x001", *self.LIST)
        self.server_hears(rb"\0CONNECT\0UI\x001\0.*")
        board.send("", "START_FRONTEND", "3", "Orders")
        self.server_hears(rb"\0START_FRONTEND\x000\x003\0Orders\x001")
        self.link.send("", "START_FRONTEND", "0", "3", "Orders", "1")
        order = (b"\0START_FRONTEND\x003\x0012\0Orders \xe9\0C:\\Program Files\\Microsoft Office\\Office11\\"
                 b"MSACCESS.EXE\0C:\\fe\\orders.mdb\0\0\0")
        self.hears(helper, order)
        self.hears(board, b"\0START_FRONTEND_DONE\0")

        self.link.close()
        self.hears(helper, b"\0SERVER_AVAILABLE\x000")
        self.hears(board, b"\0SERVER_AVAILABLE\x000")
        board.send("", "START_FRONTEND", "3", "Orders")
        self.hears(helper, order)
        self.hears(board, b"\0START_FRONTEND_DONE\0")
        board.send("", "START_FRONTEND", "4", "Other")
        self.hears(board, b"\0MSGBOX\0The application is currently unavailable.\r\n\r\nThe frontend #4 is not "
                   b"presently available.\0Other\x0016", b"\0START_FRONTEND_DONE\0")
        board.send("c", "PASS_THROUGH", "get_history", "3")
        self.hears(board, b"c\0GENERAL_ERROR\x0087\0Server not connected\0PASS_THROUGH\0get_history\x003")

        self.log_in_again()
        self.server_hears(rb"\0CONNECT\0UI\x001\0.*")  # the latest login first
        self.server_hears(rb"\0CONNECT\0HELPER\x000\0.*")
        self.hears(board, b"\0SERVER_AVAILABLE\x001", *self.LIST)
        self.hears(helper, b"\0RESET_ACTIVE_FRONTENDS_STATUS\0")
        helper.send("x", "FRONTEND_START", "0", "77", "0", "11.0", "c:\\FE\\orders.mdb", "0")
        self.server_hears(rb"x\0FRONTEND_START\x000\x003\x0077\x000\x0011\.0\0c:\\FE\\orders\.mdb\x0012")
        helper.send("x", "FRONTEND_END", "3", "77")
        self.server_hears(rb"x\0FRONTEND_END\x000\x003\x0077")

    def test_wrong_proof(self):
        local = connect_local()
        self.addCleanup(local.close)
        local.send("", "HELLO", "RVL", "UI", "1.1.3")
        local.send_bytes(frame(re.sub(rb"OFFICE", b"office", login(USER))))
        local.wait_closed()
        self.workstation.wait_log("[127.0.0.1]: Closing connection: Invalid login\r\n")


if __name__ == "__main__":
    private_network.main()
