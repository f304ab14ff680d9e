"""Time of a deployment of 1000 files and of a report over 200 deployments, against the system's own programs."""

import os
import pathlib
import shutil
import socket
import sqlite3
import struct
import subprocess
import sys
import time

from workstation import Workstation, wait_for

FILES, FILE_SIZE = 1000, 65536
DEPLOYMENTS, FILES_EACH = 200, 50
ROUNDS = 5


def message(context, command, *parameters):
    return "\0".join([context, command, "\0".join(map(str, parameters))]).encode("latin-1")


class Link:
    """The server's end of the link, as far as the measurements need it."""

    def __init__(self, listener):
        self.socket, _ = listener.accept()
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.buffer = b""
        self.wait("HELLO")
        self.send("", "HELLO", "token")
        self.wait("LOGIN")

    def send(self, *parts):
        content = message(*parts)
        self.socket.sendall(struct.pack("<i", len(content)) + content)

    def receive(self):
        while len(self.buffer) < 4 or len(self.buffer) < 4 + struct.unpack("<i", self.buffer[:4])[0]:
            part = self.socket.recv(1 << 20)
            if not part:
                sys.exit("the service closed the link")
            self.buffer += part
        size = struct.unpack("<i", self.buffer[:4])[0]
        content, self.buffer = self.buffer[4:4 + size], self.buffer[4 + size:]
        return content.split(b"\0") if content else [b"", b""]

    def wait(self, command):
        """Reads up to the command; returns its parameters and how many messages came before it."""
        skipped = 0
        while (parts := self.receive())[1] != command.encode():
            skipped += 1
        return parts[2:], skipped

    def finish(self):
        """Waits until everything sent so far has been handled."""
        self.send("end", "GET_FILE_MD5", "C:\\none")
        self.wait("FILE_MD5")


def listen():
    listener = socket.create_server(("127.0.0.1", 16378))
    listener.settimeout(30)
    return listener


def write_tree(folder, count, size):
    for index in range(count):
        path = folder / f"part {index % 10}" / f"file {index}.dat"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(os.urandom(size))
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*.dat"))


def seconds(action):
    begin = time.monotonic()
    action()
    return time.monotonic() - begin


def deploy(link, version, user):
    link.send("", "FRONTEND_DEPLOY", version, user)
    link.finish()


def copy_and_digest(source, target):
    begin = time.monotonic()
    subprocess.run(["cp", "-r", source, target], check=True)
    files = [str(path) for path in target.rglob("*.dat")]
    subprocess.run(["md5sum", *files], check=True, stdout=subprocess.DEVNULL)
    return time.monotonic() - begin


def measure_deployment(station, link):
    staging = station.drive_c / "Staging"
    names = write_tree(staging, FILES, FILE_SIZE)
    link.send("", "FRONTEND_ADD", 3, 12, "Bench", "C:\\Staging\\", names[0].replace("/", "\\"), "", "", "1.0", "", "",
              "", "CUSTOM", "C:\\Deployed", FILES)
    for name in names:
        link.send("", "FRONTEND_FILE_ADD", 3, 12, name.replace("/", "\\"))
    link.finish()
    ours, theirs = [], []
    for turn in range(ROUNDS):  # always to a new place: removing files slows the file system down for a while
        turns = [lambda: ours.append(seconds(lambda: deploy(link, 12, f"OFFICE\\user{turn}"))),
                 lambda: theirs.append(copy_and_digest(staging, station.folder / f"copy{turn}"))]
        for measure in turns if turn % 2 == 0 else reversed(turns):
            measure()
    return verdict(f"deployment of {FILES} files of {FILE_SIZE} bytes", min(ours), "cp -r and md5sum", min(theirs), 2.5)


def prepare_deployments(station, database):
    """Rows and files as many deployments leave them; no service runs meanwhile."""
    base = station.drive_c / "Many"
    for number in range(DEPLOYMENTS):
        folder = base / str(number)
        folder.mkdir(parents=True)
        windows = f"C:\\Many\\{number}\\"
        key = database.execute(
            "INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, FrontendName, FrontendLocation,"
            " FrontendFilename, FileCount) VALUES (?, ?, 'OFFICE\\ann', 'Many', ?, 'file 0', ?)",
            (number + 1, number + 1, windows, FILES_EACH)).lastrowid
        for index in range(FILES_EACH):
            (folder / f"file {index}").write_bytes(b"x")
            database.execute("INSERT INTO DeployedFrontendFiles VALUES (?, ?, 1, ?)", (key, f"file {index}", "0" * 32))
    database.commit()
    return base


def stat_and_select(base, database):
    names = [str(path) for path in base.rglob("file *")]
    begin = time.monotonic()
    subprocess.run(["stat", *names], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["sqlite3", database, "SELECT * FROM DeployedFrontends; SELECT * FROM DeployedFrontendFiles"],
                   check=True, stdout=subprocess.DEVNULL)
    return time.monotonic() - begin


def report(link):
    """Seconds from the service's login to the last record of its report."""
    begin = time.monotonic()
    link.send("", "LOGIN_OK")
    _, before = link.wait("CURRENT_FRONTENDS_END")
    if before != DEPLOYMENTS + 1:
        sys.exit(f"the report has {before - 1} records")
    return time.monotonic() - begin


def measure_report(station, listener):
    path = station.drive_c / "ProgramData/Ravelin/Client/RVLClient.mdb"
    path.parent.mkdir(parents=True)
    shutil.copy(station.app / "RVLClientTemplate.mdb", path)
    database = sqlite3.connect(path)
    database.execute("INSERT INTO Settings (ServerAddress) VALUES ('localhost')")
    base = prepare_deployments(station, database)
    database.close()
    station.start_service()
    link = Link(listener)
    ours = [report(link) for _ in range(ROUNDS)]
    theirs = [stat_and_select(base, path) for _ in range(ROUNDS)]
    return link, verdict(f"report over {DEPLOYMENTS} deployments of {FILES_EACH} files", min(ours),
                         "stat and sqlite3", min(theirs), 3)


def verdict(what, ours, against, theirs, bound):
    print(f"{what}: {1000 * ours:.0f} ms, {against} {1000 * theirs:.0f} ms: {ours / theirs:.2f} x (at most {bound})")
    return ours <= bound * theirs


def main():
    listener = listen()
    with Workstation() as station:
        link, reported = measure_report(station, listener)
        deployed = measure_deployment(station, link)
    return 0 if reported and deployed else 1


sys.exit(main())
