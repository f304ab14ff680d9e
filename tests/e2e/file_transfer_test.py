"""Files pushed over the link: where they begin, how they end, and what survives a failure in between."""

import hashlib
import os
import re

import private_network
from running_service import RunningService
from server_peer import frame, message

PREFIX = b"Error in FileDownload.IncomingMessage: "
COMPLETE = (b"FILE_COMPLETE", b"")

# name, content on the disk, announced size, resume, answer, log line
BEGINS = (
    ("new", None, 1000, "1", (b"FILE_BEGIN_OK", b"0"), "Beginning file transfer"),
    ("resume", b"x" * 400, 1000, "1", (b"FILE_BEGIN_OK", b"400"), "Resuming file at position: 400"),
    ("resume from nothing", b"", 1000, "yes", (b"FILE_BEGIN_OK", b"0"), "Resuming file at position: 0"),
    ("no resume", b"x" * 400, 1000, "0", (b"FILE_BEGIN_OK", b"0"), "Beginning file transfer"),
    ("no resume of a complete file", b"x" * 1000, 1000, "no", (b"FILE_BEGIN_OK", b"0"), "Beginning file transfer"),
    ("complete", b"x" * 1000, 1000, "True", COMPLETE, "Already have complete file"),
    ("larger", b"x" * 1500, 1000, "1", (b"FILE_BEGIN_OK", b"0"),
     "Beginning file transfer (overwriting larger local file (1000 vs 1500))"),
    ("empty", None, 0, "1", COMPLETE, "Beginning file transfer"),
    ("empty over a larger one", b"x", 0, "-1", COMPLETE,
     "Beginning file transfer (overwriting larger local file (0 vs 1))"),
    ("empty, there already", b"", 0, "1", COMPLETE, "Already have complete file"),
)

FAILURES = (
    ("missing drive", "X:\\a\\b.mdb", "10", "1"), ("missing drive, no folder", "X:\\b.mdb", "10", "0"),
    ("a file in the way", "C:\\in the way\\b.mdb", "10", "1"),
    ("a file in the way, deeper", "C:\\in the way\\c\\b.mdb", "10", "0"),
    ("a folder in place of the file", "C:\\folder", "10", "1"),
    ("a folder, with a separator", "C:\\folder\\", "10", "0"),
    ("a folder and nothing to send", "C:\\folder", "0", "1"), ("no name", "", "10", "1"),
    ("only a drive", "C:\\", "10", "1"), ("a long name", "C:\\" + "n" * 300, "10", "1"),
    ("a size in letters", "C:\\never", "ten", "1"), ("no size", "C:\\never", "", "1"),
    ("a size above 64 bits", "C:\\never", "9" * 30, "1"), ("a fraction", "C:\\never", "1.5", "1"),
    ("a negative size", "C:\\never", "-5", "1"), ("nothing at all", "", "", ""),
)


def content_of(size):
    """Content in which every 8 bytes are their own offset, so that a wrong position shows."""
    return b"".join(b"%07x\n" % offset for offset in range(0, size, 8))[:size]


class TransferTest(RunningService):
    def begin(self, path, size, resume="1", context="FILE_UPLOAD"):
        """Announces a file; returns the answer without its context."""
        answer = self.link.ask(context, "FILE_BEGIN", path, size, resume)
        self.assertEqual(answer[0], context.encode())
        return tuple(answer[1:])

    def data(self, content, context="FILE_UPLOAD"):
        answer = self.link.ask(context, "FILE_DATA", content)
        self.assertEqual(answer[0], context.encode())
        return tuple(answer[1:])

    def push(self, path, content, piece=65536):
        """Sends a whole file; returns the position from which the service wanted it."""
        command, text = self.begin(path, len(content))
        begun = None
        while command != b"FILE_COMPLETE":
            self.assertEqual(command, b"FILE_BEGIN_OK" if begun is None else b"FILE_MORE", text)
            begun = int(text) if begun is None else begun
            command, text = self.data(content[int(text):][:piece])
        self.assertEqual(self.workstation.host(path).read_bytes(), content)
        return len(content) if begun is None else begun

    def assert_idle(self):
        """The next file is taken at once."""
        self.assertEqual(self.begin("C:\\idle.mdb", 0, "0", "idle"), COMPLETE)

    def logged(self, text):
        return self.workstation.log().count("] %s\r\n" % text)


class Announced(TransferTest):
    def test_literal_frames_and_log_lines(self):
        path = "C:\\Pushed\\deep\\Orders.mdb"
        for sent, answered in (
                (b"7\0FILE_BEGIN\0" + path.encode() + b"\x0010\x001", b"\x11\0\0\x007\0FILE_BEGIN_OK\x000"),
                (b"7\0FILE_DATA\x00a\0\xff", b"\x0d\0\0\x007\0FILE_MORE\x003"),
                (b"7\0FILE_DATA\0", b"\x0d\0\0\x007\0FILE_MORE\x003"),
                (b"7\0 file_data \0bcdefg", b"\x0d\0\0\x007\0FILE_MORE\x009"),
                (b"7\0FILE_DATA\0z", b"\x10\0\0\x007\0FILE_COMPLETE\0")):
            self.link.send_bytes(frame(sent))
            self.assertEqual(self.link.receive_frame(), answered)
        self.assertEqual(self.workstation.host(path).read_bytes(), b"a\0\xffbcdefgz")
        self.workstation.wait_log("] Download complete\r\n")
        self.assertEqual(self.logged("Incoming file transfer for \"%s\" (10 bytes)" % path), 1)
        self.assertGreater(self.logged("<-- 7\0FILE_DATA\0[...]"), 1)

    def test_position(self):
        for name, content, size, resume, answer, line in BEGINS:
            with self.subTest(name):
                path = "C:\\Begin\\%s\\file.mdb" % name
                if content is not None:
                    self.workstation.write(path, content)
                before = self.logged(line)
                self.assertEqual(self.begin(path, size, resume), answer)
                self.assertEqual(self.logged(line), before + 1)
                kept = b"" if line.startswith("Beginning") else content
                self.assertEqual(self.workstation.host(path).read_bytes(), kept)
                if answer != COMPLETE:
                    self.assertEqual(self.data(b"y" * (size - len(kept))), COMPLETE)
                    self.assertEqual(self.workstation.host(path).read_bytes(), kept.ljust(size, b"y"))

    def test_sizes_above_four_gigabytes(self):
        path, on_disk = "C:\\big.mdb", 2 ** 32 + 100
        host = self.workstation.write(path)
        os.truncate(host, on_disk)
        self.assertEqual(self.begin(path, 2 ** 33), (b"FILE_BEGIN_OK", b"%d" % on_disk))
        self.assertEqual(self.data(b"end"), (b"FILE_MORE", b"%d" % (on_disk + 3)))
        with open(host, "rb") as file:
            file.seek(on_disk - 1)
            self.assertEqual(file.read(), b"\0end")
        self.assertEqual(self.begin(path, on_disk + 3), COMPLETE)

    def test_names(self):
        existing = self.workstation.write("C:\\Data\\Orders.mdb", b"12")
        self.assertEqual(self.begin("c:\\DATA\\ORDERS.MDB", 4), (b"FILE_BEGIN_OK", b"2"))
        self.assertEqual(self.data(b"34"), COMPLETE)
        self.assertEqual((os.listdir(existing.parent), existing.read_bytes()), (["Orders.mdb"], b"1234"))
        for path in ("C:\\Donn\xe9es\\O'Brien's \xe7\xe3o \xff.mdb", "C:\\with space\\a;b,c=d%20.mdb",
                     "C:/forward/slashes.mdb", "C:/both\\separators/x.mdb"):
            with self.subTest(path):
                self.push(path, content_of(100000), 30000)

    def test_failures(self):
        def reported():
            return len(re.findall(r"\] Error 0x\w{8} from (?:.* via )?FileDownload\.IncomingMessage\r\n\r\n\S",
                                  self.workstation.log()))
        self.workstation.write("C:\\in the way", b"kept")
        self.workstation.host("C:\\folder").mkdir()
        for name, path, size, resume in FAILURES:
            with self.subTest(name):
                before = reported()
                command, reason = self.begin(path, size, resume)
                self.assertEqual((command, reason[:len(PREFIX)]), (b"FILE_FAIL", PREFIX))
                self.assertGreater(len(reason), len(PREFIX))
                self.assertEqual(reported(), before + 1)
                self.assert_idle()
        self.assertEqual(self.workstation.host("C:\\in the way").read_bytes(), b"kept")
        self.assertFalse(self.workstation.host("C:\\never").exists())

    def test_too_few_parameters(self):
        for parameters in ([b""], [b"C:\\a"], [b"C:\\a", b"5"]):
            self.assertEqual(self.link.ask("c", "FILE_BEGIN", *parameters),
                             [b"c", b"GENERAL_ERROR", b"87", b"Invalid parameters", b"FILE_BEGIN", *parameters])
        self.assert_idle()


class Secrets(TransferTest):
    SECRET = b"SECRET\t\xe9"

    def assert_secret(self):
        dumped = " ".join("%02X 00" % byte for byte in self.SECRET)
        lines = self.workstation.log().split("\r\n")
        self.assertEqual([line for line in lines if "SECRET" in line or dumped in line], [])

    def test_content_is_never_in_the_log(self):
        for context in ("FILE_UPLOAD", "other", ""):
            self.begin("C:\\secret.mdb", 10000, "0", context)
            self.data(self.SECRET * 500, context)
            self.data("SECRET" * 500, context)
            self.link.send("strange", "FILE_DATA", self.SECRET)
            self.assertEqual(self.data("SECRET" * 80000, context), (b"FILE_FAIL", b"Too much data"))
            self.link.send(context, "FILE_DATA", "SECRET after the end")
        self.assert_idle()
        self.assert_secret()

    def test_nor_is_it_when_the_command_is_spelled_otherwise(self):
        self.begin("C:\\secret.mdb", 100, "0")
        self.assertEqual(self.link.ask("FILE_UPLOAD", " file_data ", self.SECRET)[1], b"FILE_MORE")
        self.assertEqual(self.link.ask("FILE_UPLOAD", "File_Data", "SECRET".ljust(92))[1], b"FILE_COMPLETE")
        self.assert_secret()


class Middle(TransferTest):
    def test_too_much_data(self):
        self.begin("C:\\much.mdb", 5)
        self.assertEqual(self.data(b"123456"), (b"FILE_FAIL", b"Too much data"))
        self.workstation.wait_log("] Download failed\r\n")
        self.assertEqual(self.push("C:\\much.mdb", b"12345"), 0)

    def test_only_its_own_messages_reach_a_transfer(self):
        self.begin("C:\\own.mdb", 10)
        begun = len(self.workstation.log())
        for context in (b"second", b""):
            self.assertEqual(self.link.ask(context, "FILE_BEGIN", "C:\\second.mdb", "0", "1"),
                             [context, b"ERROR", b"Cannot accept more than one file at once"])
        for context, command, parameter in (("second", "FILE_DATA", "no"), ("file_upload", "FILE_DATA", "no"),
                                            ("FILE_UPLOAD", "MKDIR", "C:\\not made"), ("FILE_UPLOAD", "file_stop", "")):
            self.link.send(context, command, parameter)
        self.assertEqual(self.data(b"0123456789"), COMPLETE)
        log = self.workstation.log()[begun:]
        for text, count in (("Cannot accept more than one file at once", 2), ("Unknown server message: FILE_DATA", 2),
                            ("Unexpected file transfer message: MKDIR", 1),
                            ("Unexpected file transfer message: FILE_STOP", 1)):
            self.assertEqual(log.count("] %s\r\n" % text), count, text)
        self.assertEqual(self.workstation.host("C:\\own.mdb").read_bytes(), b"0123456789")
        for path in ("C:\\second.mdb", "C:\\not made"):
            self.assertFalse(self.workstation.host(path).exists())

    def test_announced_again_under_its_own_context(self):
        self.begin("C:\\again.mdb", 6)
        self.data(b"123")
        self.assertEqual(self.begin("C:\\again.mdb", 6), (b"FILE_BEGIN_OK", b"3"))
        self.data(b"45")
        self.assertEqual(self.begin("C:\\again.mdb", 6, "0"), (b"FILE_BEGIN_OK", b"0"))
        self.assertEqual(self.data(b"abcdef"), COMPLETE)
        self.assertEqual(self.workstation.host("C:\\again.mdb").read_bytes(), b"abcdef")

    def test_announced_again_with_too_few_parameters(self):
        self.begin("C:\\few.mdb", 6)
        self.link.send("FILE_UPLOAD", "FILE_BEGIN", "C:\\few.mdb")
        self.workstation.wait_log("] Invalid parameters on FILE_BEGIN\r\n")
        self.link.send("FILE_UPLOAD", "FILE_DATA", "abcdef")
        self.link.send("after", "MKDIR")
        self.assertEqual(self.link.receive(), message("FILE_UPLOAD", "FILE_COMPLETE"))
        self.link.receive()

    def test_pieces_up_to_the_largest_that_do_not_wait_for_their_acknowledgement(self):
        largest = 524288 - len(frame(message("FILE_UPLOAD", "FILE_DATA", "")))
        content = content_of(3 * largest)
        self.assertEqual(self.push("C:\\largest.mdb", content, largest), 0)
        self.begin("C:\\stream.mdb", len(content))
        for begin in range(0, len(content), 100000):
            self.link.send("FILE_UPLOAD", "FILE_DATA", content[begin:begin + 100000])
        for position in range(100000, len(content), 100000):
            self.assertEqual(self.link.receive(), message("FILE_UPLOAD", "FILE_MORE", position))
        self.assertEqual(self.link.receive(), message("FILE_UPLOAD", "FILE_COMPLETE"))
        self.assertEqual(self.workstation.host("C:\\stream.mdb").read_bytes(), content)

    def test_lost_link_then_resume(self):
        content = content_of(400000)
        self.begin("C:\\lost.mdb", len(content))
        self.assertEqual(self.data(content[:150000]), (b"FILE_MORE", b"150000"))
        self.link.send_bytes(frame(message("FILE_UPLOAD", "FILE_DATA", content[150000:]))[:-1])
        self.link.close()
        self.log_in_again()
        self.assertEqual(self.push("C:\\lost.mdb", content), 150000)
        self.assertEqual(self.link.ask("", "GET_FILE_MD5", "C:\\lost.mdb")[3].decode().lower(),
                         hashlib.md5(content).hexdigest())

    def test_killed_service_then_resume(self):
        content, piece = content_of(2000000), 100000
        for confirmed in (0, 9, 19):
            with self.subTest(confirmed):
                path = "C:\\killed %d.mdb" % confirmed
                self.begin(path, len(content))
                for position in range(0, confirmed * piece, piece):
                    self.assertEqual(self.data(content[position:][:piece])[1], b"%d" % (position + piece))
                self.link.send("FILE_UPLOAD", "FILE_DATA", content[confirmed * piece:][:piece])
                self.workstation.kill_service()
                self.link.close()
                self.workstation.start_service()
                self.log_in_again()
                self.assertGreaterEqual(self.push(path, content, piece), confirmed * piece)

    def test_full_disk(self):
        place = self.workstation.host("C:\\Full")
        place.mkdir()
        if not self.workstation.mount(str(place), "-t", "tmpfs", "-o", "size=256k", "rvl-e2e"):
            self.skipTest("the system grants no small file system")
        self.begin("C:\\Full\\big.mdb", 1000000)
        self.assertEqual(self.data(b"x" * 200000)[0], b"FILE_MORE")
        command, reason = self.data(b"x" * 200000)
        self.assertEqual(command, b"FILE_FAIL")
        self.assertRegex(reason, PREFIX + rb"WriteData called with 200000 bytes\.  Only \d+ bytes were written\.")
        self.assert_idle()
        os.unlink(place / "big.mdb")
        self.assertEqual(self.push("C:\\Full\\small.mdb", content_of(100000)), 0)


if __name__ == "__main__":
    private_network.main()
