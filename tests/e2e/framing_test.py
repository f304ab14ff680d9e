"""Frames on both TCP ports: how they arrive, how they are broken, and that the service lives on."""

import random
import struct

import private_network
from running_service import RunningService
from server_peer import connect_local, frame, message
from workstation import wait_until

LIMIT = 524288  # characters an input buffer holds
TOO_LARGE = "Input buffer too large, disconnecting"
PROBE = message("p", "MKDIR")
ANSWER = b"p\0GENERAL_ERROR\x0087\0Invalid parameters\0MKDIR\0"

# name, bytes, whether the log must say that the buffer is too large
BROKEN = (("negative", struct.pack("<i", -1) + b"xxxx", False),
          ("most negative and nothing else", b"\0\0\0\x80", False),
          ("behind a good frame", frame(PROBE) + struct.pack("<i", -2), False),
          ("one above the limit", frame(b"x" * (LIMIT - 3)), True),
          ("never complete", struct.pack("<i", 0x7FFFFFFF) + b"x" * (LIMIT - 3), True))


class FramingTest(RunningService):
    def assert_serves(self):
        self.link.send_bytes(frame(PROBE))
        self.assertEqual(self.link.receive(), ANSWER)

    def assert_breaks(self, connection, stream, is_logged):
        refused = self.workstation.log().count(TOO_LARGE)
        connection.send_bytes(stream)
        connection.wait_closed()
        if is_logged:
            self.workstation.wait_log(TOO_LARGE, refused + 1)


class ServerLink(FramingTest):
    def test_pieces(self):
        for name, stream, size, answers in (
                ("byte by byte", frame(PROBE), 1, 1), ("split in the length", frame(PROBE) * 3, len(PROBE) + 2, 3),
                ("many in one segment", frame(PROBE) * 50, LIMIT, 50),
                ("empty frames around", frame(b"") * 100 + frame(PROBE) + frame(b"") * 3, LIMIT, 1),
                ("an empty frame byte by byte", frame(b"") + frame(PROBE), 1, 1)):
            with self.subTest(name):
                for begin in range(0, len(stream), size):
                    self.link.send_bytes(stream[begin:begin + size])
                for _ in range(answers):
                    self.assertEqual(self.link.receive_frame(), frame(ANSWER))

    def test_buffer_filled_to_the_limit_is_accepted(self):
        self.link.send_bytes(frame(message("", "FULL").ljust(LIMIT - 4, b"x")))
        self.workstation.wait_log("Unknown server message: FULL")
        self.assert_serves()

    def test_broken_lengths_end_the_link_and_the_service_connects_again(self):
        for name, stream, is_logged in BROKEN:
            with self.subTest(name):
                lost = self.workstation.log().count("Server is disconnected")
                self.assert_breaks(self.link, stream, is_logged)
                self.workstation.wait_log("Server is disconnected", lost + 1)
                self.log_in_again()
                self.assert_serves()

    def test_half_a_frame_is_forgotten_with_its_link(self):
        self.link.send_bytes(frame(PROBE)[:-1])
        self.link.close()
        self.log_in_again()
        self.assert_serves()

    def test_messages_without_sense(self):
        dice = random.Random(20050207)
        for content in (b"\0", b"\0\0\0", b"#", b"#\0#\0#", b"no null at all", b"PING", b"c\0", b"\0 \0x",
                        b"\xff" * 2000, b"1#2#3\0PONG\0", b"99999999999999999999#\0PONG\0", b"-1#\0NOTHING\0",
                        message("c", "FILE_DATA", 1), message("c", "FILE_BEGIN"), message("", "LOGIN"),
                        message("", "PONG", 1, 2, 3),
                        *(bytes(dice.choices(range(256), k=dice.randrange(300))) for _ in range(300))):
            self.link.send_bytes(frame(content))
        self.link.send("last", "MKDIR")
        while not self.link.receive().startswith(b"last\0"):
            pass
        self.assert_serves()


class LocalPort(FramingTest):
    def connect(self):
        """A connection that the service has taken: it lets only a few wait."""
        connection = connect_local()
        self.addCleanup(connection.close)
        self.assert_serves()
        return connection

    def test_only_the_broken_connection_is_closed(self):
        others = [self.connect() for _ in range(20)]
        for other in others:
            other.send_bytes(frame(b"") * 1000 + b"\x10\0")  # keep-alives, then half a length
        for name, stream, is_logged in BROKEN:
            with self.subTest(name):
                self.assert_breaks(self.connect(), stream, is_logged)
                self.assert_serves()
                self.assertTrue(all(other.is_open() for other in others))

    def open_handles(self):
        return self.workstation.machine.open_handles(self.workstation.service)

    def test_many_come_and_go(self):
        dice = random.Random(19980625)
        before = self.open_handles()
        for number in range(300):
            connection = self.connect()
            connection.send_bytes(b"\0" * (number % 9))
            connection.send_bytes(frame(bytes(dice.choices(range(256), k=dice.randrange(1, 200)))))
            if number % 3:
                connection.close()
        self.doCleanups()
        self.assert_serves()
        wait_until(lambda: self.open_handles() <= before, "the end of what closed connections held")

    def test_nothing_stays_open_at_the_stop(self):
        connections = [self.connect() for _ in range(3)]
        connections[1].send_bytes(b"\x10\0\0")
        self.assert_serves()
        self.assertEqual(self.workstation.stop_service(), 0)
        for connection in (*connections, self.link):
            connection.wait_closed()
        self.workstation.start_service()
        self.log_in_again()


if __name__ == "__main__":
    private_network.main()
