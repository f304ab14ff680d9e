"""The deployment server's side of the link, byte by byte, and raw connections to the local port."""

import select
import socket
import struct
import time

from workstation import DEADLINE

SERVER_PORT = 16378
LOCAL_PORT = 16379


def to_bytes(value):
    return value if isinstance(value, bytes) else str(value).encode("latin-1")


def message(context, command, *parameters):
    return b"\0".join([to_bytes(context), to_bytes(command), b"\0".join(map(to_bytes, parameters))])


def frame(content):
    return struct.pack("<i", len(content)) + content


class Connection:
    """One TCP connection that carries frames."""

    def __init__(self, connected):
        self._socket = connected
        self._socket.settimeout(DEADLINE)
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.close = connected.close

    def send_bytes(self, stream):
        """The program may close the connection meanwhile."""
        try:
            self._socket.sendall(stream)
        except ConnectionError:
            pass

    def send(self, context, command, *parameters):
        self.send_bytes(frame(message(context, command, *parameters)))

    def _read(self, count):
        taken = b""
        while len(taken) < count:
            part = self._socket.recv(count - len(taken))
            if not part:
                raise EOFError("closed by the program")
            taken += part
        return taken

    def receive_frame(self):
        """The next frame that belongs to the test, as it came; keep-alives and the report after a login do not."""
        while True:
            length = self._read(4)
            content = self._read(struct.unpack("<i", length)[0])
            if content.startswith(b"\0PING\0"):
                self.send("", "PONG")
            elif content and not content.startswith(b"\0CURRENT_FRONTEND"):
                return length + content

    def receive(self):
        return self.receive_frame()[4:]

    def receive_report(self):
        """The records of the next report of installed front ends, each as its parameters; other messages are lost."""
        records = None
        while True:
            context, command, *parameters = self._read(struct.unpack("<i", self._read(4))[0]).split(b"\0") + [b""]
            if command == b"CURRENT_FRONTENDS_BEGIN":
                records = []
            elif command == b"CURRENT_FRONTEND":
                records.append(tuple(part.decode("latin-1") for part in parameters[:-1]))
            elif command == b"CURRENT_FRONTENDS_END" and records is not None:
                return records

    def finish(self):
        """Waits until everything sent so far has been handled; returns the answers that came before."""
        self.send("finish", "GET_FILE_MD5", "C:\\")
        answers = []
        while not (content := self.receive()).startswith(b"finish\0"):
            if content.split(b"\0")[1] not in (b"CONNECT", b"DISCONNECT"):
                answers.append(content)
        return answers

    def ask(self, context, command, *parameters):
        """Sends a request and returns the answer split at every NUL: context, command, parameters."""
        self.send(context, command, *parameters)
        return self.receive().split(b"\0")

    def wait_closed(self):
        """Waits until the program closes the connection; what was still on its way is dropped."""
        try:
            while self._socket.recv(65536):
                pass
        except ConnectionError:
            pass

    def is_open(self):
        readable, _, _ = select.select([self._socket], [], [], 0)
        return not readable or self._socket.recv(1, socket.MSG_PEEK) != b""


def connect_local():
    return Connection(socket.create_connection(("127.0.0.1", LOCAL_PORT), DEADLINE))


class ServerPeer:
    def __init__(self):
        self._listener = socket.create_server(("127.0.0.1", SERVER_PORT))
        self._listener.settimeout(DEADLINE)
        self._datagrams = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._datagrams.settimeout(DEADLINE)
        self._datagrams.bind(("", SERVER_PORT))
        self._connections = []
        self.send_datagram = self._datagrams.sendto

    def close(self):
        for closed in (*self._connections, self._listener, self._datagrams):
            closed.close()

    def accept(self):
        self._connections.append(Connection(self._listener.accept()[0]))
        return self._connections[-1]

    def accept_login(self):
        """Takes the next connection of the service through the login; its report is skipped."""
        link = self.accept()
        link.receive()  # HELLO
        link.ask("", "HELLO", "token")
        link.send("", "LOGIN_OK")
        return link

    def receive_datagram(self):
        """The next datagram, its sender and when it came."""
        return (*self._datagrams.recvfrom(65536), time.monotonic())
