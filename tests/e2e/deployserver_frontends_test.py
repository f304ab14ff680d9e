"""The deployment server's work with front ends, seen by a workstation that is played here byte by byte."""

import hashlib
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import unittest

import host
import private_network
from server_peer import SERVER_PORT, Connection, message
from workstation import DEADLINE, program_file

UUID, COMPUTER, DOMAIN, NONCE = "{guid {1}}", "PC1", "OFFICE", "0123456789abcdef"
STAGING = "C:\\ProgramData\\Ravelin\\Client\\Staging\\3\\12\\"
EMPTY, ORDERS, NOTES, ACCENTS = NAMES = ("a b\\empty.txt", "Orders.mdb", "z.txt",
                                         "\xe9t\xe9\\" + host.file_name("l'ann\xe9e \"1\".dat"))
FILES = {EMPTY: b"", ORDERS: b"database", NOTES: b"zz", ACCENTS: b"\0\xff" * 70}  # in the order of their delivery
PUBLISH = ("--frontend-id=3", "--version-id=12", "--frontend-name=Bob's \"Orders\"", "--once")
ANNOUNCEMENT = message("", "FRONTEND_ADD", 3, 12, "Bob's \"Orders\"", STAGING, "Orders.mdb", "", "", "12", "",
                       "Bob's _Orders_", "Bob's _Orders_", "USER_PROFILE", "", 4)
MARKER = message("MARKER", "GET_FILE_MD5", "C:\\")
AGAIN = message("", "FIND_SERVER_AGAIN", "")
NO_FILE = [87, "Unable to locate file \"x\""]
COMPLETE_TEMPLATE = (3, 12, "", 4, 4)


def ask(name):
    return message("FILE_DIGEST", "GET_FILE_MD5", STAGING + name)


def begin(name, resume="1"):
    return message("FILE_UPLOAD", "FILE_BEGIN", STAGING + name, len(FILES[name]), resume)


def confirm(name):
    return message("", "FRONTEND_FILE_ADD", 3, 12, name)


def deploy(user, command="FRONTEND_DEPLOY"):
    return message("", command, 12, user)


def delivery(name):
    """What brings and confirms a file that is missing, in one piece."""
    data = [message("FILE_UPLOAD", "FILE_DATA", FILES[name])] if FILES[name] else []
    return [ask(name), begin(name), *data, ask(name), confirm(name)]


class PlayedWorkstation:
    """Receives files and digests them; keeps every message it is sent in `heard`."""

    def __init__(self):
        self.version = "1.1.3"
        self.files, self.heard, self.errors = {}, [], {}
        self.cut = None  # how many bytes it takes before it drops the link

    def log_in(self, *records):
        self.link = Connection(socket.create_connection(("127.0.0.1", SERVER_PORT), DEADLINE))
        token = self.link.ask("", "HELLO", "RVL", "CLIENT", self.version)[2].decode()
        proof = hashlib.md5(("uTc8NqX2" + "\0".join([UUID, COMPUTER, DOMAIN, token]) + NONCE + "Kw73PbeZ").encode())
        self.link.send("", "LOGIN", proof.hexdigest()[:8] + proof.hexdigest()[-8:] + NONCE, UUID, COMPUTER, DOMAIN,
                       "C:\\RVLClient.exe", 1, "Windows", "", "C:\\Program Files\\", "C:\\ProgramData\\", "fixed:")
        assert self.link.receive() == message("", "LOGIN_OK", "")
        self.report(*records)

    def report(self, *records):
        self.link.send("", "CURRENT_FRONTENDS_BEGIN")
        for record in records:
            self.link.send("", "CURRENT_FRONTEND", *record)
        self.link.send("4#2", "GENERAL_ERROR", 5, "of a conversation that is not the server's")
        self.link.send("", "CURRENT_FRONTENDS_END")

    def serve(self):
        """Answers until the link ends, from either side."""
        try:
            received = b""
            while received != AGAIN:
                received = self.link.receive()
                self.heard.append(received)
                context, command, params = received.split(b"\0", 2)
                getattr(self, command.decode())(context, params)
        except (EOFError, ConnectionError):
            pass
        self.link.close()

    def FILE_BEGIN(self, _, params):
        path, size, resume = params.split(b"\0")
        self.path, self.size = path.decode("latin-1"), int(size)
        held = self.files.get(self.path, b"")
        self.files[self.path] = held if resume == b"1" and len(held) <= self.size else b""
        held = len(self.files[self.path])
        self.link.send("FILE_UPLOAD", *(["FILE_COMPLETE"] if held == self.size else ["FILE_BEGIN_OK", held]))

    def FILE_DATA(self, _, content):
        self.files[self.path] += content
        held = len(self.files[self.path])
        if self.cut is not None and held >= self.cut:
            self.cut = None
            raise EOFError
        self.link.send("FILE_UPLOAD", *(["FILE_COMPLETE"] if held == self.size else ["FILE_MORE", held]))

    def GET_FILE_MD5(self, context, path):
        content = self.files.get(path.decode("latin-1"))
        digest = [] if content is None else [hashlib.md5(content).hexdigest().upper()]
        self.link.send(context, "FILE_MD5", path, *digest)

    def silent(self, _, params):
        for error in self.errors.pop(self.heard[-1], []):
            self.link.send("", "GENERAL_ERROR", *error)

    FRONTEND_ADD = FRONTEND_FILE_ADD = FRONTEND_DEPLOY = FRONTEND_MAKE_AVAILABLE = FRONTEND_REMOVE = silent
    FIND_SERVER_AGAIN = silent


class FrontendTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="rvl-e2e-", dir=host.folder_for_workstations())
        self.addCleanup(folder.cleanup)
        self.machine = host.Machine(pathlib.Path(folder.name))
        self.addCleanup(self.machine.end)
        self.program = shutil.copy(program_file("deployserver"), folder.name)
        self.folder = pathlib.Path(folder.name) / "version"
        for name, content in FILES.items():
            path = self.folder / name.replace("\\", "/")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        self.client = PlayedWorkstation()

    def start(self, *options):
        self.server = subprocess.Popen(self.machine.command(self.program, *options), env=self.machine.environment,
                                       stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")
        self.addCleanup(self.server.communicate)
        self.addCleanup(self.server.kill)
        self.assertIn("LISTENING", self.server.stdout.readline())

    def end(self, orders=None):
        output = self.server.communicate(orders, timeout=DEADLINE)[0]
        return self.server.returncode, output

    def run_logins(self, options, *logins):
        """Serves one login after the other, each with its report; returns exit status and output."""
        self.start(*options)
        for records in logins:
            self.client.log_in(*records)
            self.client.serve()
        return self.end()

    def refusal(self, *options):
        run = subprocess.run(self.machine.command(self.program, *options), env=self.machine.environment,
                             stdin=subprocess.DEVNULL, capture_output=True, timeout=DEADLINE)
        return run.returncode, run.stderr.decode()

    def publish(self, *records, options=()):
        return self.run_logins(("--publish", host.argument(self.folder), *PUBLISH, *options), records)

    def stage(self, *missing):
        self.client.files = {STAGING + name: FILES[name] for name in NAMES if name not in missing}


class Publishing(FrontendTest):
    def test_to_an_empty_workstation(self):
        status, output = self.publish()
        deliveries = [each for name in NAMES for each in delivery(name)]
        self.assertEqual(self.client.heard, [ANNOUNCEMENT, *deliveries, MARKER])
        self.assertEqual(self.client.files, {STAGING + name: content for name, content in FILES.items()})
        self.assertEqual(status, 0, output)
        self.assertIn("REPORT no front ends (#0)\n", output)
        self.assertIn("PUBLISHED frontend 3 version 12, 4 files, 4 of them pushed (#0)\n", output)

    def test_everything_described(self):
        self.stage()
        self.publish(options=("--main=\xe9t\xe9/" + host.file_name("L'ANN\xe9E \"1\".dat"),
                              "--version-label=", "--access-versions=8,9", "--mdw=C:\\s.mdw",
                              "--icon=Z.TXT", "--desktop-icon=", "--menu-icon=Menu\\O",
                              "--destination=custom", "--custom-folder=D:\\f", "--staging=D:\\s"))
        self.assertEqual(self.client.heard[0], message(
            "", "FRONTEND_ADD", 3, 12, "Bob's \"Orders\"", "D:\\s\\3\\12\\", ACCENTS, "8,9",
            "C:\\s.mdw", "", "z.txt", "", "Menu\\O", "CUSTOM", "D:\\f", 4))

    def test_only_what_is_missing(self):
        every = list(map(ask, NAMES))
        confirmed = [each for name in NAMES for each in (ask(name), confirm(name))]
        wrong = [ask(ORDERS), begin(ORDERS), ask(ORDERS), begin(ORDERS, "0"),
                 message("FILE_UPLOAD", "FILE_DATA", FILES[ORDERS]), ask(ORDERS), confirm(ORDERS)]
        for name, record, missing, changed, expected in (
                ("complete", COMPLETE_TEMPLATE, [], None, every),
                ("one differs", COMPLETE_TEMPLATE, [], b"DATABASE", [every[0], *wrong, *every[2:], MARKER]),
                ("not confirmed", (3, 12, "", 4, 3), [], None, [*confirmed, MARKER]),
                ("half received", (3, 12, "", 4, 2), [ACCENTS], None, [*confirmed[:6], *delivery(ACCENTS), MARKER]),
                ("other files", (3, 12, "", 5, 5), [], None, [ANNOUNCEMENT, *confirmed, MARKER]),
                ("another front end", (4, 12, "", 4, 4), [], None, [ANNOUNCEMENT, *confirmed, MARKER])):
            with self.subTest(name):
                self.stage(*missing)
                if changed:
                    self.client.files[STAGING + ORDERS] = changed
                self.client.heard = []
                status, output = self.publish(record)
                self.assertEqual((status, self.client.heard), (0, expected), output)
                self.assertEqual(self.client.files[STAGING + ORDERS], FILES[ORDERS])

    def test_lost_link(self):
        self.client.cut = 100
        status, output = self.run_logins(("--publish", host.argument(self.folder), *PUBLISH, "--piece=50"), (),
                                         [(3, 12, "", 4, 3)])
        self.assertEqual(status, 0, output)
        content = FILES[ACCENTS]
        sent = [part.split(b"\0", 2)[2] for part in self.client.heard if part.startswith(b"FILE_UPLOAD\0FILE_DATA\0")]
        self.assertEqual(sent.count(content[-40:]), 1, sent)
        self.assertEqual(self.client.files[STAGING + ACCENTS], content)
        self.assertEqual(self.client.heard.count(ANNOUNCEMENT), 1)

    def test_refused_commands(self):
        self.client.errors = {confirm(ACCENTS): [NO_FILE]}
        status, output = self.publish(options=("--deploy-to=OFFICE\\ann", "--quiet"))
        self.assertEqual((status, self.client.heard[-1]), (1, MARKER), output)
        self.assertIn("GENERAL_ERROR 87|Unable to locate file \"x\" (#0)\nNOT PUBLISHED", output)

    def test_template_that_lies_elsewhere_is_announced_anew(self):
        self.stage(ACCENTS)
        self.client.errors = {confirm(ACCENTS): [NO_FILE]}
        status, output = self.publish(COMPLETE_TEMPLATE)
        again = [each for name in NAMES for each in (ask(name), confirm(name))]
        expected = [*map(ask, NAMES[:3]), *delivery(ACCENTS), MARKER, ANNOUNCEMENT, *again, MARKER]
        self.assertEqual((status, self.client.heard), (0, expected), output)

    def assert_refused(self, name, reason):
        path = os.fsencode(self.folder) + b"/" + name
        open(path, "wb").close()
        status, text = self.refusal("--publish", host.argument(self.folder))
        self.assertEqual((status, reason in text), (1, True), text)
        os.unlink(path)

    @host.needs("Unix file names")
    def test_refused_names(self):
        for name, reason in ((b"back\\slash", "backslash"), ("\u20ac.txt".encode(), "\\xe2\\x82\\xac.txt\" holds char"),
                             (b"\xff", "ISO 8859-1"), (b"ORDERS.mdb", "in case only")):
            self.assert_refused(name, reason)

    def test_refused_folders_and_usage(self):
        self.assert_refused(b"two.ACCDB", "--main")
        for options in (["--deploy-to=a"], ["--publish=x", "--remove-template"], ["--version-id=1"], ["--main=x"],
                        ["--publish=x", "--destination=custom"], ["--version-id=1", "--report"], ["--verify"],
                        ["--version-id=1", "--deploy-to=A", "--remove-from=a"], ["--publish=x", "--version-id=0"],
                        ["--publish=x", "--access-versions=8,"], ["--once"], ["--piece=5"], ["--publish="]):
            self.assertEqual(self.refusal(*options)[0], 2, options)


class Deploying(FrontendTest):
    USERS = ("--version-id=12", "--deploy-to=OFFICE\\ann", "--deploy-to=OFFICE\\bob", "--once")
    ANN, HALF, BOB = (3, 12, "office\\ANN", 4, 4), (3, 12, "OFFICE\\bob", 4, 3), (3, 12, "OFFICE\\bob", 4, 4)

    def test_one_of_two_and_other_orders(self):
        self.stage()
        status, output = self.publish(COMPLETE_TEMPLATE, self.ANN, (3, 12, "OFFICE\\eve", 4, 0), options=(
            *self.USERS, "--available-to=OFFICE\\joe", "--available-to=OFFICE\\eve", "--remove-from=OFFICE\\EVE2",
            "--remove-from=OFFICE\\tom"))
        self.assertEqual((status, self.client.heard), (0, [
            *map(ask, NAMES), deploy("OFFICE\\bob"), MARKER, deploy("OFFICE\\joe", "FRONTEND_MAKE_AVAILABLE"), MARKER]))
        for line in ("REPORT frontend 3 version 12 template 4 of 4 files", "for office\\ANN 4 of 4 files",
                     "FRONTEND_DEPLOY version 12 for OFFICE\\ann: already deployed"):
            self.assertIn(line + " (#0)\n", output)

    def test_removal(self):
        status, output = self.run_logins(("--version-id=12", "--remove-from=OFFICE\\ann", "--remove-template",
                                          "--once"), (COMPLETE_TEMPLATE, self.ANN))
        self.assertEqual((status, self.client.heard), (0, [
            deploy("OFFICE\\ann", "FRONTEND_REMOVE"), MARKER, b"\0FRONTEND_REMOVE\x0012\0", MARKER]), output)

    def test_verified(self):
        bob = [deploy("OFFICE\\bob"), MARKER, AGAIN]
        for name, reports, expected, status, last in (
                ("proven", [(), (self.ANN, self.BOB)], [deploy("OFFICE\\ann"), MARKER, *bob], 0, "DEPLOYED"),
                ("repaired", [(self.ANN,), (self.ANN, self.HALF), (self.ANN, self.BOB)], bob * 2, 0, "DEPLOYED"),
                ("never", [(self.ANN,), (self.ANN, self.HALF), (self.ANN,)], bob * 2, 1, "INCOMPLETE"),
                ("nothing to do", [(self.ANN, self.BOB)], [], 0, "DEPLOYED")):
            with self.subTest(name):
                self.client.heard = []
                result, output = self.run_logins((*self.USERS, "--verify"), *reports)
                self.assertEqual((result, self.client.heard), (status, expected), output)
                lines = [line for line in output.splitlines() if line.startswith(("DEPLOYED", "INCOMPLETE"))]
                self.assertTrue(lines[-1].startswith(last + " version 12 for OFFICE\\bob"), output)

    def test_error_fails_the_work_but_not_the_next_user(self):
        self.client.errors = {deploy("OFFICE\\ann"): [[5, "Access denied while copying", "FRONTEND_DEPLOY"], NO_FILE]}
        status, output = self.run_logins(self.USERS, ())
        self.assertEqual((status, self.client.heard),
                         (1, [deploy("OFFICE\\ann"), MARKER, deploy("OFFICE\\bob"), MARKER]))
        self.assertIn("GENERAL_ERROR 5|Access denied while copying|FRONTEND_DEPLOY (#0)\n", output)

    def test_report(self):
        self.start("--report", "--quiet", "--once")
        self.client.log_in((3, 12, "OFFICE\\ann", 20, 19), (1, 1, "", 1, 1))
        self.assertEqual(self.end(), (0, "REPORT frontend 3 version 12 for OFFICE\\ann 19 of 20 files (#0)\n"
                                         "REPORT frontend 1 version 1 template 1 of 1 files (#0)\n"))
        self.client.link.close()


if __name__ == "__main__":
    private_network.main()
