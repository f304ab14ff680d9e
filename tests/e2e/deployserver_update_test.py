"""The deployment server's updates of the client: a workstation that is played here, and an installed service."""

import itertools

import host
import private_network
from deployserver_frontends_test import AGAIN, MARKER, FrontendTest, deploy
from server_peer import message
from workstation import Workstation, program_file, wait_until

REMOTE = "C:\\ProgramData\\Ravelin\\Client\\Update\\RVLClient-1.1.4"
CONTENT = b"\x7fELF the new client"
ASK = message("FILE_DIGEST", "GET_FILE_MD5", REMOTE)
DELIVERY = [ASK, message("FILE_UPLOAD", "FILE_BEGIN", REMOTE, len(CONTENT), 1),
            message("FILE_UPLOAD", "FILE_DATA", CONTENT), ASK]
UPDATE = message("UPDATE", "UPDATED_BINARY", REMOTE)
EXPECTED = ("--update-version=1.1.4",)


class Update(FrontendTest):
    def setUp(self):
        super().setUp()
        self.client.UPDATED_BINARY = self.leave
        self.executable = self.folder.parent / "RVLClient-1.1.4"
        self.executable.write_bytes(CONTENT)

    def leave(self, *_):
        raise EOFError

    def update(self, options, *versions, reports=()):
        """Logs in with one version after the other; returns exit status, what was heard, and output."""
        self.client.files, self.client.heard = {}, []
        self.start("--once", "--update", host.argument(self.executable), *options)
        for self.client.version, report in itertools.zip_longest(versions, reports, fillvalue=()):
            self.client.log_in(*report)
            self.client.serve()
        status, output = self.end()
        return status, self.client.heard, output

    def test_outcomes(self):
        ordered = [*DELIVERY, UPDATE]
        for options, versions, heard, status, line in (
                ((), ("1.1.3", "1.1.4"), ordered, 0, "UPDATED PC1 from 1.1.3 to 1.1.4 (#"),
                ((), ("1.1.3", "1.1.3"), ordered, 1, "NOT UPDATED PC1, still 1.1.3 (#"),
                (EXPECTED, ("1.1.3", "1.1.4"), ordered, 0, "UPDATED PC1 from 1.1.3 to 1.1.4 (#"),
                (EXPECTED, ("1.1.3", "1.1.5"), ordered, 1, "NOT UPDATED PC1 to 1.1.4, came back with 1.1.5 (#"),
                (EXPECTED, ("1.1.4",), [], 0, "UPDATE PC1: already 1.1.4 (#"),
                (("--update-timeout=1",), ("1.1.3",), ordered, 1, "NOT UPDATED PC1, did not come back\n")):
            with self.subTest(line=line, options=options):
                result = self.update((*options, "--quiet"), *versions)
                self.assertEqual(result[:2], (status, heard), result[2])
                self.assertIn("\n" + line, "\n" + result[2])

    def test_refused(self):
        self.client.UPDATED_BINARY = lambda context, path: self.client.link.send(
            context, "GENERAL_ERROR", 87, "Invalid parameters", "UPDATED_BINARY", path)
        status, _, output = self.update((), "1.1.3")
        self.assertEqual((status, "NOT UPDATED PC1: GENERAL_ERROR 87|Invalid parameters" in output), (1, True), output)

    def test_comes_last(self):
        ann = [(3, 12, "OFFICE\\ann", 1, 1)]
        options = ("--version-id=12", "--deploy-to=OFFICE\\ann", "--verify", "--update-to=D:\\n")
        status, heard, output = self.update(options, "1.1.3", "1.1.3", "1.1.4", reports=((), ann))
        self.assertEqual((status, heard[:3]), (0, [deploy("OFFICE\\ann"), MARKER, AGAIN]), output)
        self.assertEqual(heard[-1], message("UPDATE", "UPDATED_BINARY", "D:\\n"))
        self.assertEqual(len(heard), 3 + len(DELIVERY) + 1)

    def test_who_is_up_to_date_is_learned(self):
        self.start("--update", host.argument(self.executable), "--orders")
        for self.client.version in ("1.1.3", "1.1.4", "1.1.4"):
            self.client.log_in()
            if self.client.version == "1.1.3":
                self.client.serve()
            else:
                self.assertEqual(self.client.link.ask("", "PING")[1], b"PONG")
                self.client.link.close()
        status, output = self.end("stop\n")
        self.assertEqual((status, self.client.heard), (0, [*DELIVERY, UPDATE]))
        self.assertIn("UPDATE PC1: already 1.1.4 (#", output)

    def test_usage(self):
        for options in (("--update-to=C:\\x",), ("--update-timeout=0", "--update=x"), ("--update=",)):
            self.assertEqual(self.refusal(*options)[0], 2, options)


class InstalledService(FrontendTest):
    def test_updated(self):
        station = Workstation()
        self.addCleanup(station.close)
        received = station.host(REMOTE).with_name(host.executable("RVLClient-next"))
        update = ("--update", host.argument(program_file("RVLClient-next")))
        self.start("--once", *update, *EXPECTED, "--update-timeout=90")
        self.assertEqual(station.run("-install-silent")[0], 0)
        output, _ = self.server.communicate(timeout=100)
        self.assertEqual(self.server.returncode, 0, output + station.log()[-3000:])
        self.assertIn(" from 1.1.3 to 1.1.4 (#", output)
        wait_until(lambda: not received.exists(), station.log)
        self.assertEqual(station.run("-remove-silent")[0], 0)


if __name__ == "__main__":
    private_network.main()
