"""The setup program of Windows installs the client, upgrades it over the running service, and uninstalls it."""

import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest

import host
import private_network
from desk import Desk
from workstation import BIN, processes, wait_until

PATIENCE = 120  # seconds, of which most are the setup's own waiting
FOLDER = "C:\\Program Files\\Ravelin\\Client"
LOG = "C:\\setup.log"
UNINSTALL = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\RVLClient"
RUN = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Run"
EVENTS = r"HKLM\SYSTEM\CurrentControlSet\Services\EventLog\Application\RVLClient"
SERVICE = r"HKLM\SYSTEM\CurrentControlSet\Services\RVLClient"
ROLLED_BACK, NO_SERVICE, OTHER_SETUP = 3, 4, 1618

setups = None


def setUpModule():
    global setups
    if not host.IS_WINE:
        raise unittest.SkipTest("the setup is a Windows program")
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    setups = pathlib.Path(folder.name)
    build_setup(BIN, "good")
    broken = setups / "broken-programs"
    broken.mkdir()
    for name in ("RVLClient.exe", "RavelinTools.dll", "RVLClientTemplate.mdb"):
        shutil.copy(BIN / name, broken)
    end_at_once(broken / "RVLClient.exe")
    build_setup(broken, "broken")


def build_setup(programs, name):
    script = pathlib.Path(__file__).resolve().parents[2] / "packaging/windows/build-installer"
    subprocess.run([script, programs, setups / (name + ".exe")], check=True)


def end_at_once(program):
    """Makes a program that does nothing and ends with 0: it returns where it should begin."""
    content = bytearray(program.read_bytes())
    header, = struct.unpack_from("<I", content, 0x3C)
    sections, optional_size = struct.unpack_from("<6xH12xH", content, header)
    entry, = struct.unpack_from("<I", content, header + 24 + 16)
    for section in range(sections):
        size, address, _, place = struct.unpack_from("<IIII", content, header + 24 + optional_size + 40 * section + 8)
        if address <= entry < address + size:
            struct.pack_into("3B", content, place + entry - address, 0x31, 0xC0, 0xC3)  # xor eax, eax; ret
    program.write_bytes(content)


class Installer(Desk):
    def setUp(self):
        super().setUp()
        self.folder = self.station.host(FOLDER)
        self.program = self.folder / "RVLClient.exe"
        self.helper = '"%s\\RVLClient.exe" -service_helper' % FOLDER

    def begin(self, program, *switches):
        """Words with blanks reach the program as two: it wants its folders without quotes."""
        words = [word for switch in ("/S", "/LOG=" + LOG, *switches) for word in switch.split()]
        return self.station.start(*words, program=program)

    def finish(self, process, code):
        process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, code & 0xFF, self.setup_log())

    def set_up(self, name, *switches, code=0):
        self.finish(self.begin(setups / (name + ".exe"), *switches), code)

    def uninstall(self, *switches):
        """With the folder as the last word the uninstaller is waited for, and stays."""
        folder = self.value(UNINSTALL, "InstallLocation")
        self.finish(self.begin(self.station.host(folder + "\\Uninstall.exe"), *switches, "_?=" + folder), 0)

    def setup_log(self):
        return self.station.host(LOG).read_text("latin-1")

    def value(self, key, name):
        status, lines = self.station.rvlreg("get", key, name)
        return lines[0] if status == 0 and lines else None

    def state(self):
        """The service's state as the manager knows it, None without a service."""
        command = self.station.machine.command("sc", "query", "RVLClient")
        answer = subprocess.run(command, env=self.station.environment, capture_output=True)
        found = re.search(rb"STATE\s*:\s*\d+\s+(\w+)", answer.stdout)
        return found and found[1].decode()

    def running(self, argument, program=None):
        """Process ids of the installed program that run with this argument."""
        return [pid for pid, words in processes(program or self.program).items() if words == [argument.encode()]]

    def service(self):
        self.assertEqual(self.state(), "RUNNING", self.setup_log())
        process, = self.running("-service_mode")
        return process

    def assert_nothing_installed(self, *files):
        self.assertIsNone(self.state())
        self.assertEqual([self.station.rvlreg("list", key)[0] for key in (UNINSTALL, EVENTS, SERVICE)], [1, 1, 1])
        self.assertIsNone(self.value(RUN, "RVLClientHelper"))
        self.assertEqual([path.name for path in self.folder.iterdir()], list(files))
        self.assertEqual(self.shortcuts(), [])

    def shortcuts(self):
        menu = self.station.host("C:\\ProgramData\\Microsoft\\Windows\\Start Menu")
        return [path.name for path in menu.rglob("*.lnk")]

    def test_installs_upgrades_and_uninstalls(self):
        self.set_up("good")
        self.peer.accept_login()
        first = self.service()
        self.assertEqual([self.value(RUN, "RVLClientHelper"), self.value(UNINSTALL, "DisplayVersion"),
                          self.value(UNINSTALL, "InstallLocation"), self.value(SERVICE, "Start")],
                         [self.helper, "1.1.3", FOLDER, "2"])
        self.assertEqual(self.shortcuts(), ["Access Switchboard.lnk"])

        self.set_up("good")
        self.assertEqual(self.service(), first, "the same version was installed again")

        self.station.start("-service_helper", program=self.program)
        self.station.start(program=self.program)
        self.display.window(r"Access Switchboard.*")
        (self.folder / "README.txt").write_text("old")
        self.set_up("good", "/FORCE")
        self.assertNotEqual(self.service(), first)
        self.assertEqual(list(processes(self.program)), self.running("-service_mode"), "somebody runs the old program")
        self.assertIn("Ravelin Client on Windows", (self.folder / "README.txt").read_text())
        self.assertEqual(self.station.setting("ServerAddress"), "localhost")

        self.uninstall()
        self.assert_nothing_installed("Uninstall.exe")
        self.assertTrue(self.station.database.exists())

    def test_goes_back_to_what_ran_before(self):
        self.set_up("good")
        whole = self.program.read_bytes()
        self.set_up("broken", "/FORCE", code=ROLLED_BACK)
        self.service()
        self.assertEqual(self.program.read_bytes(), whole)
        self.assertEqual([path.name for path in self.folder.glob("setup-*")], [])

    def test_goes_back_to_another_copy(self):
        self.station.run("-install-silent")
        self.set_up("broken", code=ROLLED_BACK)
        self.assertEqual(self.state(), "RUNNING")
        self.assertEqual(len(self.running("-service_mode", self.station.client)), 1)
        self.assertFalse(self.program.exists())
        self.set_up("good")
        self.service()
        self.assertEqual(self.running("-service_mode", self.station.client), [])
        self.station.run("-install-silent")
        self.uninstall()
        self.assertEqual((self.state(), self.program.exists()), ("RUNNING", False))

    def test_tells_when_no_service_runs(self):
        self.set_up("broken", "/D=C:\\Our Programs\\Client", code=NO_SERVICE)
        self.assertEqual(self.value(UNINSTALL, "InstallLocation"), "C:\\Our Programs\\Client")
        self.set_up("good")  # in the same place; the program there is as new, but does not run
        self.assertEqual((self.state(), self.value(SERVICE, "ImagePath")),
                         ("RUNNING", '"C:\\Our Programs\\Client\\RVLClient.exe" -service_mode'))
        self.uninstall("/PURGE")
        self.assertIsNone(self.state())
        self.assertFalse(self.station.host("C:\\ProgramData\\Ravelin").exists())

    def test_one_setup_at_a_time(self):
        first = self.begin(setups / "good.exe")
        wait_until(lambda: self.station.host(LOG).exists() and "Setup of" in self.setup_log(), "the first setup")
        self.set_up("broken", code=OTHER_SETUP)
        self.finish(first, 0)
        self.service()


if __name__ == "__main__":
    private_network.main()
