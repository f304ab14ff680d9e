"""A front end from its announcement to its removal, as the service does it on a real disk; and the service killed on
the way."""

import hashlib
import random
import subprocess
import time

import host
import private_network
from running_service import RunningService
from server_peer import connect_local, message

ANN = "OFFICE\\" + host.SOMEBODY
HOME = "C:\\Users\\%s\\" % host.SOMEBODY
FRONTENDS = HOME + "AppData\\Local\\Ravelin\\Client\\Frontends\\3\\"
DESKTOP, MENU = HOME + "Desktop\\", HOME + "Menu\\"
QUOTED = "Data\\" + host.file_name("it's \"here\".mdb")
FILES = {"Orders.mdb": 70000, "orders.ico": 100, QUOTED: 5, "Data\\\xc9t\xe9\\x.txt": 0,
         **{"Reports\\%d.snp" % number: 3000 for number in range(8)}}


def checksum(text):
    digest = hashlib.md5(("uTc8NqX2" + text + "Kw73PbeZ").encode("latin-1")).hexdigest()
    return digest[:8] + digest[-8:]


def log_in_helper():
    helper = connect_local()
    helper.send("", "HELLO", "RVL", "HELPER", "1.1.3")
    helper.send("", "LOGIN", checksum(ANN), ANN, "", HOME + "AppData\\Local\\", DESKTOP, MENU)
    return helper


class Deployment(RunningService):
    def stage(self, version):
        """Puts the files of a version where the server would push them, and announces and confirms it."""
        folder = "C:\\Staging\\%d\\" % version
        for name, size in FILES.items():
            self.workstation.write(folder + name, random.Random(name + str(version)).randbytes(size))
        self.link.send("", "FRONTEND_ADD", 3, version, "The \"Orders\"", folder, "Orders.mdb", "8,9", "", "1.%d" % version,
                       "orders.ico", "Orders", "Office\\Orders", "USER_PROFILE", "", len(FILES))
        for name in FILES:
            self.link.send("", "FRONTEND_FILE_ADD", 3, version, name)
        self.assertEqual(self.link.finish(), [])

    def next_report(self):
        self.link.send("", "FIND_SERVER_AGAIN")
        self.link.wait_closed()
        type(self).link = self.peer.accept()
        self.link.receive()
        self.link.ask("", "HELLO", "token")
        self.link.send("", "LOGIN_OK")
        return self.link.receive_report()

    def deployed(self, name, version=12):
        return self.workstation.host(FRONTENDS + str(version) + "\\" + name)

    def assert_complete(self, version, folder=None):
        location = self.workstation.query("SELECT FrontendLocation FROM DeployedFrontends WHERE Username = ? AND"
                                          " FrontendVersionID = ?", ANN, version)
        self.assertEqual(len(location), 1)
        if folder:
            self.assertEqual(location[0][0], folder)
        for name, size in FILES.items():
            content = self.workstation.host(location[0][0] + name).read_bytes()
            self.assertEqual(content, random.Random(name + str(version)).randbytes(size), name)

    def files(self):
        return {path for folder in ("Users", "Staging") for path in
                self.workstation.host("C:\\" + folder).rglob("*") if path.is_file()}

    def test_life_of_a_front_end(self):
        others = self.files()
        helper = log_in_helper()
        self.workstation.wait_log("#0[127.0.0.1]: Client Helper connected: " + ANN)
        self.link.receive_report()  # a helper that logs in has one sent
        self.stage(12)
        self.link.send("c", "FRONTEND_DEPLOY", 12, ANN)
        self.assertEqual(self.link.finish(), [])
        self.assert_complete(12, FRONTENDS + "12\\")
        self.assertEqual(helper.receive(), message("", "NEW_VERSION", 3, "The \"Orders\""))

        with self.subTest("rows"):
            self.assertEqual(
                self.workstation.query("SELECT FrontendID, FrontendName, FrontendFilename, AllowedAccessVersions,"
                                       " MDWPath, FriendlyVersionNumber, IconFile, DesktopIconPath, MenuIconPath,"
                                       " DestinationLocation, FileCount FROM DeployedFrontends WHERE Username = ?", ANN),
                [(3, "The \"Orders\"", "Orders.mdb", "8,9", None, "1.12", "orders.ico", DESKTOP + "Orders.lnk",
                  MENU + "Office\\Orders.lnk", 1, len(FILES))])
            rows = self.workstation.query("SELECT Filename, FileSize, MD5Hash FROM DeployedFrontendFiles NATURAL JOIN"
                                          " DeployedFrontends WHERE Username = ?", ANN)
            self.assertEqual(dict((name, size) for name, size, _ in rows), FILES)
            for name, _, digest in rows:
                self.assertEqual(digest, hashlib.md5(self.deployed(name).read_bytes()).hexdigest())
        with self.subTest("rights"):
            rights = host.rights(self.deployed(QUOTED))
            self.assertLessEqual({host.ADMINISTRATOR: "rwx", host.SOMEBODY: "rwx", "other": "---"}.items(), rights.items())
        with self.subTest("shortcuts"):
            for path in (DESKTOP + "Orders.lnk", MENU + "Office\\Orders.lnk"):
                link = subprocess.run(["lnkinfo", self.workstation.host(path)], capture_output=True, check=True).stdout
                self.assertIn(b"Command line arguments\t\t: -start_frontend 3 \"The ''Orders''\"\n", link)
                self.assertIn(("Icon location\t\t\t: %s12\\orders.ico\n" % FRONTENDS).encode(), link)
                self.assertIn(host.executable("RVLClient").encode() + b"\n", link)

        with self.subTest("report after damage"):
            count = str(len(FILES))
            self.deployed("Reports\\3.snp").unlink()
            self.assertEqual(self.next_report(), [("3", "12", "", count, count),
                                                  ("3", "12", ANN, count, str(len(FILES) - 1))])
            self.workstation.host(DESKTOP + "Orders.lnk").unlink()
            self.assertEqual(self.next_report(), [("3", "12", "", count, count)])
            self.assertFalse(self.workstation.host(MENU + "Office\\Orders.lnk").exists())

        self.stage(13)
        for version in (12, 13):
            self.link.send("", "FRONTEND_DEPLOY", version, ANN)
            self.assertEqual(self.link.finish(), [])
            self.assert_complete(version, FRONTENDS + "%d\\" % version)
        self.assertEqual(self.workstation.query("SELECT FrontendVersionID FROM DeployedFrontends WHERE Username = ?", ANN),
                         [(13,)])
        for version, user in ((12, ""), (13, ANN), (13, "")):
            self.link.send("", "FRONTEND_REMOVE", version, user)
        self.assertEqual(self.link.finish(), [])
        self.assertEqual(self.files(), others)
        self.assertTrue(self.workstation.host(DESKTOP).is_dir())
        self.assertFalse(self.workstation.host(MENU + "Office").exists())
        self.assertEqual(self.next_report(), [])
        helper.close()

    def test_refusals(self):
        self.link.send("x", "FRONTEND_DEPLOY", 99, ANN)
        self.link.send("x", "FRONTEND_FILE_ADD", 3, 99, "a")
        self.link.send("x", "FRONTEND_FILE_ADD", 3, 99, "..\\a")
        self.link.send("x", "FRONTEND_REMOVE", 0, ANN)
        self.assertEqual(self.link.finish(), [
            message("", "GENERAL_ERROR", 87, "Unable to locate template frontend version #99"),
            message("", "GENERAL_ERROR", 87, "Unable to locate frontend version #99"),
            message("", "GENERAL_ERROR", 87, "Name leads out of its folder: \"..\\a\""),
            message("x", "GENERAL_ERROR", 87, "Invalid parameters", "FRONTEND_REMOVE", 0, ANN)])

    def test_killed_on_the_way(self):
        others = self.files()
        self.stage(21)
        begun = time.monotonic()
        self.link.send("", "FRONTEND_DEPLOY", 21, ANN)
        self.link.finish()
        whole = time.monotonic() - begun
        for point in range(8):
            self.link.send("", "FRONTEND_DEPLOY", 21, ANN)
            time.sleep(whole * point / 8)
            self.workstation.kill_service()
            self.link.close()
            self.workstation.start_service()
            type(self).link = self.peer.accept()
            self.link.receive()
            self.link.ask("", "HELLO", "token")
            self.link.send("", "LOGIN_OK")
            for _, version, user, count, present in self.link.receive_report():
                if user == ANN and count == present:
                    self.assert_complete(21)
            self.link.send("", "FRONTEND_DEPLOY", 21, ANN)
            self.assertEqual(self.link.finish(), [])
            self.assert_complete(21)
        for user in (ANN, ""):
            self.link.send("", "FRONTEND_REMOVE", 21, user)
        self.link.finish()
        self.assertEqual(self.files(), others)


if __name__ == "__main__":
    private_network.main()
