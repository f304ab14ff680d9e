"""The registry tool: what it stores, its exit statuses, and several of them at once."""

import concurrent.futures
import sqlite3
import subprocess
import unittest

import host
import private_network
from workstation import Workstation

CLIENT = r"HKLM\SOFTWARE\Ravelin\Client"


class RegistryTool(unittest.TestCase):
    def setUp(self):
        self.workstation = Workstation(None)
        self.addCleanup(self.workstation.close)
        self.rvlreg = self.workstation.rvlreg

    def set(self, key, value, kind, data):
        self.assertEqual(self.rvlreg("set", key, value, kind, data), (0, []))

    def test_round_trip_without_regard_to_case(self):
        for value, kind, data in (("Path", "text", "Z:\\opt\\rvl\\new client.exe"), ("Empty", "text", ""),
                                  ("", "text", "the default"), ("ACCENTS \xc9", "text", "O'Brien \"\xe7\xe3o\" %"),
                                  ("Zero", "number", "0"), ("Most", "number", "4294967295"), ("Most", "text", "over")):
            self.set(CLIENT, value, kind, data)
            for key, name in ((CLIENT, value), (CLIENT.lower() + "\\", value.lower())):
                self.assertEqual(self.rvlreg("get", key, name), (0, [data]))
        self.assertEqual(len(self.rvlreg("list", CLIENT)[1]), 6)

    def test_roots(self):
        self.set("HKCR\\.mdb", "", "text", "Access")
        self.assertEqual(self.rvlreg("get", "HKLM\\SOFTWARE\\Classes\\.mdb", ""), (0, ["Access"]))
        self.set("HKCU\\Software\\X", "v", "text", "ann's")
        self.assertEqual(self.rvlreg("get", "HKLM\\Software\\X", "v"), (1, []))
        self.assertEqual(self.rvlreg("get", "HKCU\\Software\\X", "v"), (0, ["ann's"]))

    @host.needs("two users")
    def test_another_user_has_other_settings(self):
        self.set("HKCU\\Software\\X", "v", "text", "ann's")
        self.workstation.environment["RVL_USER"] = "bob"
        self.assertEqual(self.rvlreg("get", "HKCU\\Software\\X", "v"), (1, []))

    @host.needs("two users")
    def test_a_user_without_rights_keeps_his_settings_elsewhere(self):
        self.set("HKLM\\Software\\X", "v", "text", "everybody's")
        home = self.workstation.folder / "home"
        home.mkdir(mode=0o777)
        home.chmod(0o777)
        self.workstation.folder.chmod(0o755)
        self.workstation.environment["HOME"] = str(home)

        def as_nobody(*arguments):
            try:
                process = self.workstation.start(*arguments, program="rvlreg", user=65534)
            except (OSError, subprocess.SubprocessError):
                self.skipTest("the system does not let us be somebody else")
            return process.wait(), process.stdout.read()

        self.assertEqual(as_nobody("get", "HKLM\\Software\\X", "v"), (0, b"everybody's\n"))
        self.assertEqual(as_nobody("set", "HKCU\\Software\\X", "v", "text", "own")[0], 0)
        self.assertEqual(as_nobody("get", "HKCU\\Software\\X", "v"), (0, b"own\n"))
        self.assertNotEqual(as_nobody("set", "HKLM\\Software\\X", "v", "text", "own")[0], 0)
        self.assertTrue((home / ".local/share/rvlclient/registry.db").is_file())

    def test_list_and_delete(self):
        for key, value, data in ((CLIENT, "Updating", "7"), (CLIENT, "", "8"), (CLIENT + "\\WindowPos", "Left", "9"),
                                 (CLIENT + "Other", "x", "10")):
            self.set(key, value, "number", data)
        status, lines = self.rvlreg("list", CLIENT)
        self.assertEqual((status, len(lines)), (0, 3))
        for part in ("WindowPos", "Updating = 7", "(default) = 8"):
            self.assertEqual(sum(part in line for line in lines), 1, lines)
        self.assertEqual(self.rvlreg("delete", CLIENT, "UPDATING"), (0, []))
        self.assertEqual(self.rvlreg("delete", CLIENT), (0, []))
        for arguments in (["get", CLIENT, ""], ["get", CLIENT + "\\WindowPos", "Left"], ["list", CLIENT],
                          ["delete", CLIENT], ["delete", CLIENT, "Updating"], ["get", "HKLM\\None", ""]):
            self.assertEqual(self.rvlreg(*arguments), (1, []), arguments)
        self.assertEqual(self.rvlreg("get", CLIENT + "Other", "x"), (0, ["10"]))

    def test_expandable_text_is_shown_as_it_is_stored(self):
        self.workstation.machine.write_expandable(self.workstation, CLIENT, "p", "%HOME%\\\xe9")
        self.assertEqual(self.rvlreg("get", CLIENT, "p"), (0, ["%HOME%\\\xe9"]))
        self.assertEqual(self.rvlreg("list", CLIENT), (0, ["p = %HOME%\\\xe9 (expandable)"]))
        self.set(CLIENT, "p", "text", "plain")
        self.assertEqual(self.rvlreg("list", CLIENT), (0, ["p = plain"]))

    def test_wrong_usage_changes_nothing(self):
        self.set(CLIENT, "kept", "number", "5")
        for arguments in ([], ["get"], ["get", CLIENT], ["frobnicate", CLIENT, "kept"], ["get", "HKXX\\a", "b"],
                          ["set", CLIENT, "kept", "number"], ["set", CLIENT, "kept", "number", "six"],
                          ["set", CLIENT, "kept", "number", ""], ["set", CLIENT, "kept", "number", "-1"],
                          ["set", CLIENT, "kept", "number", "4294967296"], ["set", CLIENT, "kept", "float", "1"],
                          ["set", CLIENT, "kept", "text", "a", "b"], ["set", CLIENT, "kept", "text", "\u20ac"]):
            self.assertNotIn(self.rvlreg(*arguments)[0], (0, 1), arguments)
        self.assertEqual(self.rvlreg("get", CLIENT, "kept"), (0, ["5"]))

    def test_several_at_once_while_others_are_killed(self):
        def write(name):
            return [self.workstation.run("set", CLIENT + name, str(number), "number", str(number), program="rvlreg")
                    for number in range(15)]

        def kill():
            for number in range(15):
                victim = self.workstation.start("set", CLIENT, str(number), "text", "x", program="rvlreg")
                try:
                    victim.wait(number / 2000)  # killed at ever later moments of its short life
                except subprocess.TimeoutExpired:
                    victim.kill()
                    victim.wait()

        with concurrent.futures.ThreadPoolExecutor() as pool:
            victims = pool.submit(kill)
            self.assertEqual(list(pool.map(write, ("A", "B"))), [[(0, "", "")] * 15] * 2)
            victims.result()
        for name in ("A", "B"):
            self.assertEqual(sorted(self.rvlreg("list", CLIENT + name)[1]),
                             sorted("%d = %d" % (number, number) for number in range(15)))

    @host.needs("a registry file")
    def test_another_process_that_holds_the_registry_for_a_moment_is_waited_for(self):
        self.set(CLIENT, "v", "text", "1")
        files = [path for path in self.workstation.root.iterdir() if path.is_file()]
        registry = next(path for path in files if path.read_bytes().startswith(b"SQLite format 3"))
        other = sqlite3.connect(registry, isolation_level=None)
        self.addCleanup(other.close)
        other.execute("BEGIN EXCLUSIVE")
        waiting = self.workstation.start("set", CLIENT, "v", "text", "2", program="rvlreg")
        with self.assertRaises(subprocess.TimeoutExpired):
            waiting.wait(0.3)
        other.execute("ROLLBACK")
        self.assertEqual(waiting.wait(15), 0)
        self.assertEqual(self.rvlreg("get", CLIENT, "v"), (0, ["2"]))


if __name__ == "__main__":
    private_network.main()
