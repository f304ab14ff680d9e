"""Run modes, start and stop of the service, and what it says when it cannot start."""

import socket
import sqlite3
import subprocess
import unittest

import host
import private_network
from server_peer import LOCAL_PORT
from workstation import Workstation, wait_until, windows_path

UNRECOGNISED = "Warning: Unrecognized command line parameter: "
INVALID = '[GUI] MsgBox: "Invalid command line parameters": OK'
ONE_FRONTEND = "Client UI starting in launch frontend mode"

# arguments, the command line they make, tag, lines after the operating system, the window that is missing
MODES = (
    ([], "", "UI", ["Client UI starting"], "switchboard"),
    (["-SERVICE_MODE"], "-SERVICE_MODE", "UI",
     ["Client UI starting", UNRECOGNISED + "-SERVICE_MODE"], "switchboard"),
    (["-service_mode", "-debug"], "-service_mode -debug", "UI",
     ["Client UI starting", UNRECOGNISED + "-service_mode "], "switchboard"),
    (["-service_mode -debug"], '"-service_mode -debug"', "UI",
     ["Client UI starting", UNRECOGNISED + '"-service_mode -debug"'], "switchboard"),
    (["-service_helper"], "-service_helper", "Helper", ["Client Helper starting"], "helper"),
    (["-service_helper-debug"], "-service_helper-debug", "Helper", ["Client Helper starting"], "helper"),
    (["-service_helper", "-debug"], "-service_helper -debug", "UI",
     ["Client UI starting", UNRECOGNISED + "-service_helper "], "switchboard"),
    (["-start_frontend", "12", "Bob's \"big\" Orders"],
     '-start_frontend 12 "Bob\'s ""big"" Orders"'.replace('""', host.INNER_QUOTE), "UI", [ONE_FRONTEND], "start-front-end"),
    (["-start_frontend", "0", "Orders"], "-start_frontend 0 Orders", "UI", [INVALID, ONE_FRONTEND], "start-front-end"),
    (["-start_frontend", "12"], "-start_frontend 12", "UI", [INVALID, ONE_FRONTEND], "start-front-end"),
    (["-start_frontend", "12", ""], '-start_frontend 12 ""', "UI", [INVALID, ONE_FRONTEND], "start-front-end"),
)

START = [*host.INSTALLATION_WARNING, "Client Service starting", "Initializing service",
         "Database path: C:\\ProgramData\\Ravelin\\Client\\RVLClient.mdb",
         "Database does not exist, copying from template", "Opening the database", "Opening settings table",
         "Checking database format", "Service started"]
LOCATE = ["LocateServer() called", "Looking up domain controller...", "No domain controller, using broadcast"]
STOP = ["Service stopping", "Service stopped", "Cleaning up", "Closing the database", "Service process terminating",
        "Client Service Query Unload (Unloaded)", "Client Service Unload"]


class StartUp(unittest.TestCase):
    def workstation(self, *arguments):
        workstation = Workstation(*arguments)
        self.addCleanup(workstation.close)
        return workstation

    def assert_first_lines(self, workstation, entries, command_line):
        self.assertEqual(entries[:3], [(None, windows_path(workstation.client) + " starting (1.1.3)"),
                                       (None, "Command line parameters: " + command_line),
                                       (None, "Running as user: OFFICE\\ann")])
        self.assertIsNone(entries[3][0])
        self.assertRegex(entries[3][1], r"^Operating system: Windows NT \d+\.\d+ \(Build \d+\) ")


class RunModes(StartUp):
    def test_window_modes_without_a_display(self):
        workstation = self.workstation()
        for arguments, line, tag, texts, window in MODES:
            with self.subTest(line):
                workstation.log_path.unlink(missing_ok=True)
                status, output, errors = workstation.run(*arguments)
                self.assertEqual((status, output), (1, ""))
                self.assertRegex(errors, "%s.*display" % window)
                self.assertEqual("Invalid command line parameters" in errors, INVALID in texts)
                entries = workstation.log_entries()
                self.assert_first_lines(workstation, entries, line)
                self.assertEqual(entries[4:], [(tag, text) for text in texts])


class Service(StartUp):
    def test_first_start_second_service_and_stop(self):
        workstation = self.workstation(None)
        service = workstation.start_service()
        workstation.wait_log(LOCATE[-1])
        second = workstation.start("-service_mode")
        self.assertEqual((second.communicate(), second.returncode), ((b"", b""), 1))
        self.assertEqual(workstation.stop_service(), 0)

        entries = workstation.log_entries(service)
        self.assert_first_lines(workstation, entries, "-service_mode")
        self.assertEqual(entries[4:], [("Service", text)
                                       for text in START + LOCATE + ["Got service control event: 1"] + STOP])
        self.assertEqual(workstation.log_entries(second)[-2:],
                         [("Service", "Service is already running"), ("Service", "Terminating with return value #1")])
        self.assertEqual(workstation.query("SELECT DatabaseVersion, ServerAddress FROM Settings"), [(None, None)])
        rights = host.rights(workstation.database.parent)
        self.assertLessEqual({host.ADMINISTRATOR: "rwx", "other": "r-x"}.items(), rights.items())

    @host.needs("a manager that sees a service die")
    def test_service_in_debug_mode_after_a_killed_one(self):
        workstation = self.workstation()
        workstation.start_service()
        workstation.kill_service()
        service = workstation.start_service("-service_mode-debug")
        self.assertEqual(workstation.interrupt_service(), 0)
        self.assertEqual(workstation.log_entries(service)[-len(STOP):], [("Service", text) for text in STOP])

    def test_database_beside_the_executable_is_preferred(self):
        workstation = self.workstation()
        beside = workstation.bin / "RVLClient.mdb"
        workstation.database.rename(beside)
        workstation.start_service()
        self.assertEqual(workstation.stop_service(), 0)
        self.assertIn("Database path: " + windows_path(beside), workstation.log())
        self.assertFalse(workstation.database.exists())

    def test_database_that_another_program_holds_for_a_moment_is_waited_for(self):
        workstation = self.workstation()
        other = sqlite3.connect(workstation.database, isolation_level=None)
        self.addCleanup(other.close)
        other.execute("BEGIN EXCLUSIVE")
        workstation.launch_service()
        workstation.wait_log("Opening the database")
        other.execute("ROLLBACK")
        workstation.wait_log("Service started")
        self.assertEqual(workstation.stop_service(), 0)

    def test_pending_update_is_taken_up(self):
        workstation = self.workstation()
        workstation.rvlreg("set", r"HKLM\SOFTWARE\Ravelin\Client", "TempBinaryPath", "text", "C:\\new client.exe")
        entries = workstation.log_entries(workstation.start_service())
        self.assertEqual(workstation.stop_service(), 0)
        self.assertEqual(entries[1], (None, "Command line parameters: -service_mode"))
        self.assertIn((None, "Now running on new binary"), entries)

    def test_long_log_is_trimmed_at_the_stop(self):
        line = b"2005-02-07 14:03:09 [Client 1234] an earlier line\r\n"
        for size, trimmed in ((1570000, False), (1572864, True)):
            with self.subTest(size):
                workstation = self.workstation()
                workstation.log_path.write_bytes(line * (size // len(line) + 1))
                workstation.start_service()
                self.assertEqual(workstation.stop_service(), 0)
                log = workstation.log()
                self.assertEqual(("Log file trimmed\r\n" in log, len(log) < 1048576 + 1000), (trimmed, trimmed))
                self.assertTrue(log.startswith(line.decode()))
                self.assertNotIn("Trimming log file", log)

    def test_unwritable_log_stops_nothing(self):
        def answers():
            with socket.socket() as probe:
                return probe.connect_ex(("127.0.0.1", LOCAL_PORT)) == 0
        workstation = self.workstation()
        workstation.log_path.mkdir()
        workstation.launch_service()
        wait_until(answers, "the local port")
        self.assertEqual(workstation.stop_service(), 0)

    def test_taken_local_port_is_logged(self):
        with socket.create_server(("127.0.0.1", LOCAL_PORT)):
            workstation = self.workstation()
            workstation.start_service()
            self.assertEqual(workstation.stop_service(), 0)
        self.assertRegex(workstation.log(), r"Error 0x00002740 from .*frmService\.Start\r\n\r\nAddress already in use")


class Unusable(StartUp):
    """Whatever is in the way of the database is logged, and the service ends with exit code 1."""

    USER = 'Please ensure that the "OFFICE\\ann" user account has permission to '
    FOLDER_HINT = USER + "create, modify and delete files in the folder containing the database."
    FILE_HINT = USER + "modify the database file."
    ERROR = r"^Error 0x[0-9A-F]{8} from (.+ via )?Globals\.InitializeDatabase\r\n\r\n\S"

    def errors_of_start(self, workstation):
        service = workstation.start("-service_mode")
        self.assertEqual((service.communicate(timeout=15), service.returncode), ((b"", b""), 1), workstation.log())
        entries = workstation.log_entries(service)
        self.assertEqual(entries[-1], ("Service", "Terminating with return value #1"))
        return [text for _, text in entries if text.startswith("Error ")]

    def test_missing_template(self):
        workstation = self.workstation(None)
        template = workstation.bin / "RVLClientTemplate.mdb"
        template.unlink()
        self.assertEqual(self.errors_of_start(workstation),
                         ["Error 0x800427DF from Globals.InitializeDatabase\r\n\r\nCannot find \"%s\".\r\n\r\n%s"
                          % (windows_path(template), self.USER + "read and modify the database file.")])
        self.assertFalse(workstation.database.exists())

    def test_other_database_version(self):
        workstation = self.workstation(None)
        workstation.prepare_database(DatabaseVersion=2)
        error = "Error 0x800427DD from GlobalsClient.UpdateDatabaseFormat"
        self.assertEqual(self.errors_of_start(workstation),
                         [error + "\r\n\r\nUnknown database version",
                          error + " via Globals.InitializeDatabase\r\n\r\nUnknown database version"])
        self.assertEqual(workstation.query("SELECT * FROM Settings"), [(2, None, None)])

    def test_damaged_database(self):
        intact = self.workstation().database.read_bytes()
        for name, content in (("empty", b""), ("something else", b"Standard Jet DB" * 500), ("cut", intact[:5000]),
                              ("scribbled", intact[:4096].ljust(len(intact), b"\xff")),
                              ("without its header", intact[100:].rjust(len(intact), b"\0"))):
            with self.subTest(name):
                workstation = self.workstation()
                workstation.database.write_bytes(content)
                self.assertRegex(self.errors_of_start(workstation)[-1], self.ERROR)

    def test_things_in_the_way(self):
        folder, file = (self.workstation(None) for _ in range(2))
        folder.database.mkdir(parents=True)
        self.assertTrue(self.errors_of_start(folder)[-1].endswith("\r\n\r\n" + self.FOLDER_HINT))
        file.database.parent.parent.mkdir(parents=True)
        file.database.parent.write_bytes(b"")
        self.assertRegex(self.errors_of_start(file)[-1], self.ERROR)

    @host.needs("a missing system")
    def test_no_root(self):
        workstation = self.workstation(None)
        workstation.root.write_bytes(b"")
        self.assertEqual(workstation.run("-service_mode")[0], 1)
        self.assertIn("Access is denied.", workstation.log())

    def test_read_only_database(self):
        workstation = self.workstation()
        database = str(workstation.database)
        if not (workstation.mount(database, "--bind", database)
                and subprocess.run(["mount", "-o", "remount,bind,ro", database]).returncode == 0):
            self.skipTest("the system grants no read-only mount")
        self.assertTrue(self.errors_of_start(workstation)[-1].endswith("\r\n\r\n" + self.FILE_HINT))


if __name__ == "__main__":
    private_network.main()
