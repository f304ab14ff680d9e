"""The service replaced by a new executable that the server delivered, and everything that can go wrong on the way: in
the end a service runs, the old one or the new one."""

import shutil
import subprocess
import time
import unittest

import host
import private_network
from server_peer import ServerPeer, connect_local, message
from workstation import Workstation, kill, processes, program_file, wait_until, windows_path

OLD, NEW = b"1.1.3", b"1.1.4"


class SelfUpdate(unittest.TestCase):
    def setUp(self):
        self.peer = ServerPeer()
        self.addCleanup(self.peer.close)
        self.station = Workstation()
        self.addCleanup(self.station.close)
        self.target = self.station.client
        self.temporary = self.station.folder / "new" / host.executable("client update")
        self.temporary.parent.mkdir()

    def install(self):
        self.assertEqual(self.station.run("-install-silent")[0], 0)
        return self.log_in()

    def log_in(self):
        link = self.peer.accept()
        self.version = link.receive().split(b"\0")[4]
        link.ask("", "HELLO", "token")
        link.send("", "LOGIN_OK")
        return link

    def deliver(self, link, program):
        shutil.copy(program, self.temporary)
        link.send("", "UPDATED_BINARY", windows_path(self.temporary))

    def update_process(self):
        return [pid for pid, words in processes(self.temporary).items() if words[0].startswith(b"-update-mode")]

    def temporary_log(self):
        log = self.temporary.with_suffix(".log")
        return log.read_text("latin-1") if log.is_file() else ""

    def wait_step(self, line):
        """Until the update process has logged the line; on a busy machine it may be further than that."""
        while line not in self.temporary_log() and self.temporary.exists():
            time.sleep(0.0005)

    def wait_back(self, version, seconds=100):
        """Waits for a service that runs and is what it should be, and for the update to be over."""
        self.peer._listener.settimeout(seconds)
        self.log_in()
        self.assertEqual(self.version, version, self.station.log()[-3000:] + self.temporary_log())
        wait_until(lambda: not self.temporary.exists(), self.station.log)
        wait_until(lambda: not [path for path in self.station.bin.iterdir() if path.suffix in (".new", ".previous")],
                   lambda: str(list(self.station.bin.iterdir())))
        for value in ("Updating", "TempBinaryPath"):
            self.assertEqual(self.station.rvlreg("get", "HKLM\\SOFTWARE\\Ravelin\\Client", value)[0], 1, value)
        self.assertEqual(self.station.run("-stop")[0], 0)
        wait_until(lambda: not processes(self.target), "the end of the service")

    def test_waits_for_local_processes(self):
        link = self.install()
        local = connect_local()
        local.send("", "HELLO", "RVL", "UI", "1.1.3")
        self.deliver(link, program_file("RVLClient-next"))
        path = windows_path(self.temporary)
        self.assertEqual(local.receive(), message("", "UPDATED_BINARY", path))
        self.station.wait_log("Upgrade is available from \"%s\" to \"%s\"" % (windows_path(self.target), path))
        self.station.wait_log("Still 1 clients connected. Cannot update yet")
        newcomer = connect_local()
        self.assertEqual(newcomer.receive(), message("", "UPDATED_BINARY", path))
        newcomer.wait_closed()
        self.station.wait_log("Closing connection: No new connections while updating")
        local.close()
        self.station.wait_log("Everyone is disconnected. Beginning update")
        self.wait_back(NEW)
        log = self.station.log()
        for line in ("Update executable started, stopping service.", "Now running on new binary",
                     "Temporary upgrade file deleted: " + path, "Importing log entries from ", " complete",
                     "Waiting for all \"%s\" to terminate" % windows_path(self.target), "Copying new version over"):
            self.assertIn(line, log)

    def test_a_program_that_does_not_start(self):
        for program in (program_file("rvlreg"), "/etc/hostname"):
            with self.subTest(program):
                link = self.install()
                self.deliver(link, program)
                self.station.wait_log("Error starting update")
                self.assertEqual(link.ask("c", "GET_FILE_MD5", "C:\\")[1], b"FILE_MD5")  # still the same service
                self.assertEqual(self.station.run("-remove-silent")[0], 0)

    def test_a_service_that_does_not_start(self):
        self.deliver(self.install(), program_file("RVLClient-broken"))
        self.wait_back(OLD)
        self.assertIn("Unable to start service: Error 1053", self.station.log())

    def test_a_service_that_hangs_at_its_start(self):
        self.station.machine.set_environment_of_services("RVL_TEST_HANG", "1")
        self.deliver(self.install(), program_file("RVLClient-broken"))
        self.wait_back(OLD)

    def test_executable_replaced_under_the_service(self):
        link = self.install()
        shutil.copy(self.target, self.station.bin / "other")
        (self.station.bin / "other").rename(self.target)
        self.deliver(link, program_file("RVLClient-next"))
        self.wait_back(NEW)

    def move_to_small_disk(self):
        """Room for the programs, but not for one more."""
        if not self.station.mount(self.station.bin, "-t", "tmpfs", "-o", "size=%d" % (2 * self.target.stat().st_size),
                                  "tmpfs"):
            self.skipTest("no small file system")
        self.station.copy_programs()

    def test_no_room_for_the_copy(self):
        self.move_to_small_disk()
        self.deliver(self.install(), program_file("RVLClient-next"))
        self.wait_back(OLD)
        self.assertIn("Error copying ", self.station.log())

    def test_read_only_target(self):
        self.move_to_small_disk()
        link = self.install()
        subprocess.run(["mount", "-o", "remount,ro", self.station.bin], check=True)
        self.deliver(link, program_file("RVLClient-next"))
        self.wait_back(OLD)

    def test_update_process_killed(self):
        for step in ("Waiting for all", "Copying new version over", "Starting service"):
            with self.subTest(step):
                self.deliver(self.install(), program_file("RVLClient-next"))
                self.wait_step(step)
                for pid in self.update_process():
                    kill(pid)
                self.wait_back(NEW)
                self.assertEqual(self.station.run("-remove-silent")[0], 0)
                self.station.copy_programs()

    def test_everything_killed_and_started_again(self):
        """What a power cut leaves: the service manager starts the service at the next boot."""
        self.deliver(self.install(), program_file("RVLClient-next"))
        self.wait_step("Copying new version over")
        self.station.cut_power()
        self.assertEqual(self.station.run("-start")[0], 0)
        self.peer._listener.settimeout(30)
        self.log_in()
        self.assertIn(self.version, (OLD, NEW))
        self.assertEqual(self.station.rvlreg("get", "HKLM\\SOFTWARE\\Ravelin\\Client", "Updating")[0], 1)

    def test_target_in_use_for_longer_than_the_wait(self):
        link = self.install()
        # A process that waits for an update that is not over keeps the old executable busy.
        self.station.rvlreg("set", "HKLM\\SOFTWARE\\Ravelin\\Client", "Updating", "number", "1")
        busy = self.station.start("-update-mode", "Z:\\nowhere", "-service_helper")
        self.station.wait_log("Waiting for update to complete before respawn")
        self.deliver(link, program_file("RVLClient-next"))
        self.wait_back(OLD, 100)
        self.assertIn("Giving up waiting for ", self.station.log())
        busy.wait(10)


if __name__ == "__main__":
    private_network.main()
