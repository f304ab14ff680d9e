"""The server's commands on files and folders, their exact answers, and where a context leads a message."""

import calendar
import hashlib
import os
import time

import host
import private_network
from running_service import RunningService
from server_peer import connect_local, frame, message


class CommandsTest(RunningService):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.workstation.write("C:\\a file", b"content")

    def assert_answer(self, request, *answer):
        """Compares the literal answers; that of the last, known request shows that none is missing or too many."""
        for content in (message(*request), message("end", "GET_FILE_MD5")):
            self.link.send_bytes(frame(content))
        end = b"end\0GENERAL_ERROR\x0087\0Invalid parameters\0GET_FILE_MD5\0"
        for expected in [*(message(*part) for part in answer), end]:
            self.assertEqual(self.link.receive(), expected)

    def assert_invalid(self, context, command, *parameters):
        self.assert_answer((context, command, *parameters),
                           (context, "GENERAL_ERROR", "87", "Invalid parameters", command, *(parameters or [""])))


class Folders(CommandsTest):
    def test_created(self):
        for path, host in (("C:\\New\\deep\\er", "New/deep/er"), ("C:\\New", "New"), ("C:\\New\\", "New"),
                           ("c:\\new\\Other", "New/Other"), ("C:\\Trailing\\x\\", "Trailing/x"),
                           ("C:\\Donn\xe9es d'\xe9t\xe9", "Donn\xe9es d'\xe9t\xe9"), ("\\rooted\\x", "rooted/x"),
                           ("C:/forward/x", "forward/x"), ("C:\\", "")):
            for command in ("MKDIR", "CREATE_DIRECTORY"):
                with self.subTest(path, command=command):
                    self.assert_answer(("7", command, path), ("7", "GENERAL_SUCCESS", command, path))
                    self.assertTrue((self.workstation.root / "drive_c" / host).is_dir())
        self.assertFalse((self.workstation.root / "drive_c/new").exists())

    def test_parameters_come_back_as_received(self):
        self.assert_answer(("7", "MKDIR", "C:\\Extra", "", "b\xe9", ""),
                           ("7", "GENERAL_SUCCESS", "MKDIR", "C:\\Extra", "", "b\xe9", ""))
        for command in ("MKDIR", " mkdir ", "mkDir"):
            self.assert_answer(("", command, "C:\\Extra"), ("", "GENERAL_SUCCESS", "MKDIR", "C:\\Extra"))

    def test_refused(self):
        for path in ("C:\\a file", "C:\\a file\\below", "C:\\a file\\below\\deeper", "X:\\missing\\drive",
                     "C:\\" + "n" * 300):
            for command in ("MKDIR", "CREATE_DIRECTORY"):
                with self.subTest(path, command=command):
                    context, reply, number, text, *echo = self.link.ask("7", command, path, "more")
                    self.assertEqual((context, reply), (b"7", b"GENERAL_ERROR"))
                    self.assertGreater(int(number), 0)
                    self.assertNotEqual(text, b"")
                    self.assertEqual(echo, [command.encode(), path.encode(), b"more"])
        self.assertEqual(self.workstation.host("C:\\a file").read_bytes(), b"content")

    def test_invalid(self):
        self.assert_invalid("7", "MKDIR")
        self.assert_invalid("7", "MKDIR", "", "x")
        self.assert_invalid("", "CREATE_DIRECTORY")
        command, *echo = self.link.ask("7", "CREATE_DIRECTORY", "", "x")[1:]  # the empty path itself is passed on
        self.assertIn(command, (b"GENERAL_SUCCESS", b"GENERAL_ERROR"))
        self.assertEqual(echo[-3:], [b"CREATE_DIRECTORY", b"", b"x"])
        self.assertEqual(len(echo), 3 if command == b"GENERAL_SUCCESS" else 5)
        self.assertNotEqual(echo[0], b"87")


class Rights(CommandsTest):
    def test_removed_and_granted(self):
        for command, *parameters, others in (("ACL_REMOVE_ALL", "1", "---"),
                                             ("ACL_ADD", "RVL-INTERNAL\\Everyone", "1179785", "r--")):
            self.assert_answer(("7", command, "C:\\a file", *parameters),
                               ("7", "GENERAL_SUCCESS", command, "C:\\a file", *parameters))
            self.assertEqual(host.rights(self.workstation.host("C:\\a file"))["other"], others)


class FileInfo(CommandsTest):
    WRITTEN = "2005-02-07 23:03:09"
    READ = "2006-07-01 00:00:00"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        times = tuple(calendar.timegm(time.strptime(text, "%Y-%m-%d %H:%M:%S")) for text in (cls.READ, cls.WRITTEN))
        for name, content in (("alpha.mdb", b"12345"), ("Beta.MDB", b""), ("caf\xe9.txt", b"x" * 1000),
                              ("noext", b"1"), ("two.dots.mdb", b"22")):
            os.utime(cls.workstation.write("C:\\Info\\" + name, content), times)
        cls.workstation.host("C:\\Info\\Sub").mkdir()
        cls.big = cls.workstation.write("C:\\Big\\big.bin")
        os.truncate(cls.big, 2 ** 32 + 5)

    def list(self, pattern, mode="1"):
        """The entries up to the end marker, each as its six parameters."""
        entries = []
        self.link.send("q", "GET_FILE_INFO", pattern, mode)
        while True:
            answer = self.link.receive()
            if answer == b"q\0FILE_INFO_END\0":
                return entries
            context, command, *parameters = answer.decode("latin-1").split("\0")
            self.assertEqual((context, command, len(parameters)), ("q", "FILE_INFO", 6))
            entries.append(parameters)

    def test_patterns(self):
        everything = [".", "..", "Beta.MDB", "Sub", "alpha.mdb", "caf\xe9.txt", "noext", "two.dots.mdb"]
        for pattern, names in (("C:\\Info\\*", everything), ("C:\\Info\\*.*", everything),
                               ("C:\\Info\\*.mdb", ["Beta.MDB", "alpha.mdb", "two.dots.mdb"]),
                               ("c:\\INFO\\A*.Mdb", ["alpha.mdb"]), ("C:\\Info\\ALPHA.MDB", ["alpha.mdb"]),
                               ("C:\\Info\\????.mdb", ["Beta.MDB"]), ("C:\\Info\\caf\xe9.*", ["caf\xe9.txt"]),
                               ("C:\\Info\\[ab]*", []), ("C:\\Info\\s*", ["Sub"]), ("C:\\Info", ["Info"]),
                               ("C:\\Info\\none*", []), ("C:\\Info\\none", []), ("C:\\nowhere\\*", []),
                               ("C:\\a file\\*", []), ("X:\\*", [])):
            with self.subTest(pattern):
                self.assertEqual(sorted(entry[0] for entry in self.list(pattern)), names)

    def test_entry(self):
        name, size, attributes, created, written, read = self.list("C:\\Info\\caf*")[0]
        self.assertEqual((name, size, written, read),
                         ("caf\xe9.txt", "1000", "#%s#" % self.WRITTEN, "#%s#" % self.READ))
        self.assertRegex(created, r"^#\d{4}-\d\d-\d\d \d\d:\d\d:\d\d#$")
        self.assertEqual(int(attributes) & 0x11, 0)
        self.assertEqual(int(self.list("C:\\Info\\Sub")[0][2]) & 0x10, 0x10)
        self.assertEqual([int(entry[2]) & 0x10 for entry in self.list("C:\\Info\\*") if entry[0][0] == "."], [16, 16])
        self.assertEqual(self.list("C:\\Big\\big.bin")[0][1], str(2 ** 32 + 5))

    def test_modes(self):
        nothing = "C:\\Info\\nothing*"
        self.assert_answer(("c", "GET_FILE_INFO", nothing, "0"), ("c", "FILE_INFO"))
        self.assert_answer(("c", "GET_FILE_INFO", nothing, "1"), ("c", "FILE_INFO_END"))
        self.assert_answer(("", "get_file_info ", nothing, "2", "more"), ("", "FILE_INFO_END"))
        for pattern in ("C:\\Info\\*.mdb", "C:\\Info\\noext"):
            self.assertEqual(len(self.link.ask("c", "GET_FILE_INFO", pattern, "0")), 8)
            self.assert_answer(("d", "MKDIR", "C:\\Info"), ("d", "GENERAL_SUCCESS", "MKDIR", "C:\\Info"))
        self.assertEqual(len(self.list("C:\\Info\\*.mdb", "7")), 3)
        for parameters in ([], [nothing], [nothing, ""], [nothing, "-1"], [nothing, "x"], ["", "1"], ["", ""]):
            with self.subTest(parameters):
                self.assert_invalid("c", "GET_FILE_INFO", *parameters)


class FileDigest(CommandsTest):
    def test_digest(self):
        for path, content in (("C:\\Sums\\a file", b"content"), ("c:\\SUMS\\A FILE", b"content"),
                              ("C:\\Sums\\empty", b""), ("C:\\Sums\\big", os.urandom(1 << 20)),
                              ("C:\\Sums\\O'Brien \xe9\xff.mdb", bytes(range(256)) * 16 + b"1")):
            with self.subTest(path):
                if "SUMS" not in path:
                    self.workstation.write(path, content)
                *answer, digest = self.link.ask("7", "GET_FILE_MD5", path)
                self.assertEqual(answer, [b"7", b"FILE_MD5", path.encode("latin-1")])
                self.assertEqual(digest.decode().lower(), hashlib.md5(content).hexdigest())

    def test_missing_and_invalid(self):
        for path in ("C:\\missing", "C:\\no\\folder\\file", "X:\\file", "C:\\a file\\below", "C:\\missing \xe9"):
            self.assert_answer(("7", "GET_FILE_MD5", path), ("7", "FILE_MD5", path))
        self.assert_invalid("7", "GET_FILE_MD5")
        self.assert_invalid("7", "GET_FILE_MD5", "", "C:\\a file")


class Routing(CommandsTest):
    def test_context(self):
        local = connect_local()
        self.addCleanup(local.close)
        self.workstation.wait_log("Incoming Connection")
        for context, answered in (("#77", "77"), ("x#77", "77"), ("#", ""), ("x#a#b", "a#b"), ("-1#77", "77"),
                                  ("77", "77"), ("\xe9 ", "\xe9 "), ("9#77", None), ("3#77", None), ("0#77", None),
                                  ("0#", None), ("32768#77", None), ("2147483647#77", None),
                                  ("2147483648#77", "77")):
            with self.subTest(context):
                answer = [] if answered is None else [(answered, "GENERAL_SUCCESS", "MKDIR", "C:\\Routed")]
                self.assert_answer((context, "MKDIR", "C:\\Routed"), *answer)
        self.assertTrue(local.is_open())

    def test_unknown_commands_are_logged_and_not_answered(self):
        for command, logged in (("NONSENSE", "NONSENSE"), (" nonsense2 ", "NONSENSE2"), ("", ""), ("LOGIN", "LOGIN"),
                                ("LOCATE_REPLY", "LOCATE_REPLY"), ("FILE_DATA", "FILE_DATA"), ("M\xe9", None)):
            with self.subTest(command):
                before = len(self.workstation.log())
                self.assert_answer(("7", command, "a", "b", "c"))
                if logged is not None:
                    self.assertIn("] Unknown server message: %s\r\n" % logged, self.workstation.log()[before:])

    def test_messages_are_logged(self):
        self.link.ask("seen", "MKDIR", "C:\\a file\\x")
        self.assertIn("] <-- seen\0MKDIR\0C:\\a file\\x\r\n", self.workstation.log())
        self.assertIn("] --> seen\0GENERAL_ERROR\0", self.workstation.log())
        self.link.ask("tab\t", "MKDIR", "")
        self.assertIn("] <-- 74 00 61 00 62 00 09 00 00 00 4D 00 4B 00 44 00 49 00 52 00 00 00\r\n",
                      self.workstation.log())
        head = "long\0LONG\0"
        for length, body in ((1024, "x" * (1024 - len(head))), (1025, "x" * (1024 - len(head)) + " [...]")):
            self.link.send("long", "LONG", "x" * (length - len(head)))
            self.workstation.wait_log("] <-- " + head + body + "\r\n")


if __name__ == "__main__":
    private_network.main()
