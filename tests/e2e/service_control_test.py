"""Installs, starts, stops and removes the service with the program's own switches."""

import os
import shutil
import signal
import subprocess
import unittest

import host
import private_network
from workstation import Workstation, processes, program_file, wait_until, windows_path

SERVICE = r"HKLM\SYSTEM\CurrentControlSet\Services\RVLClient"
RUN = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Run"
EVENTS = r"HKLM\SYSTEM\CurrentControlSet\Services\EventLog\Application\RVLClient"
NOBODY = 65534

DENIED = "Access is denied."
MISSING, MARKED, RUNNING, NOT_RUNNING, NO_FILE, NOT_IN_TIME = (
    host.MESSAGES[code] for code in (1060, 1072, 1056, 1062, 2, 1053))


class ServiceControl(unittest.TestCase):
    def setUp(self):
        self.workstation = Workstation()
        self.addCleanup(self.workstation.close)
        self.addCleanup(self.kill_services)
        self.command_line = '"%s" -service_mode' % windows_path(self.workstation.client)
        self.helper = '"%s" -service_helper' % windows_path(self.workstation.client)

    def services(self):
        """The service processes of this workstation, whoever started them."""
        return [pid for pid, words in processes(self.workstation.folder).items() if b"-service_mode" in words]

    def kill_services(self):
        for process in self.services():
            os.kill(process, signal.SIGKILL)
        self.wait_services(0)

    def wait_services(self, count):
        wait_until(lambda: len(self.services()) == count, lambda: "%d services, not %r" % (count, self.services()))

    def control(self, switch, text=None):
        """Runs one switch; what it says is its only output, the last log line, and never its exit code."""
        status, output, errors = self.workstation.run(switch)
        self.assertEqual((status, output, errors), (0, "", "Ravelin Client: %s\n" % text if text else ""))
        last = '[GUI] MsgBox: "%s": OK' % text if text else "Terminating"
        self.assertIn((None, last), self.workstation.log_entries())

    def install_by_hand(self, program):
        self.workstation.machine.register_service(self.workstation, '"%s" -service_mode' % windows_path(program))

    def value(self, key, name):
        status, lines = self.workstation.rvlreg("get", key, name)
        return lines[0] if status == 0 and lines else None

    def test_life_of_an_installed_service(self):
        for switch, verb in (("-start", "starting"), ("/stop", "stopping")):
            self.control(switch, "Error %s service: %s" % (verb, MISSING))
        self.control("-remove", "Service is not installed")
        self.control("-install", "Service Installed")
        registered = {line.removesuffix(" (expandable)") for line in self.workstation.rvlreg("list", SERVICE)[1]}
        self.assertEqual(registered - host.MORE_SERVICE_VALUES, {
            "ImagePath = " + self.command_line, "DisplayName = Ravelin Client", "ObjectName = LocalSystem", "Type = 16",
            "Start = 2", "ErrorControl = 1"})
        self.assertEqual(self.value(EVENTS, "TypesSupported"), "7")
        self.assertEqual(self.value(RUN, "RVLClientHelper"), self.helper)
        self.control("/install", "Service is already installed")
        self.control("-stop", "Error stopping service: " + NOT_RUNNING)
        self.control("-start", "Service Started")
        self.control("/start", "Error starting service: " + RUNNING)
        self.assertEqual(len(self.services()), 1)
        self.control("-stop", "Service Stopped")
        self.wait_services(0)
        self.control("/uninstall", "Service Removed")
        self.assertEqual(self.workstation.rvlreg("list", SERVICE)[0], 1)
        self.assertIsNone(self.value(RUN, "RVLClientHelper"))

    @host.needs("a manager that sees a service die")
    def test_a_killed_service_has_stopped(self):
        self.control("-install", "Service Installed")
        self.control("-start", "Service Started")
        self.kill_services()
        self.control("-stop", "Error stopping service: " + NOT_RUNNING)

    @host.needs("Unix processes")
    def test_the_started_service_is_on_its_own(self):
        self.control("-install", "Service Installed")
        self.control("-start", "Service Started")
        process, = self.services()
        streams = {os.readlink("/proc/%d/fd/%d" % (process, stream)) for stream in range(3)}
        self.assertEqual((streams, os.readlink("/proc/%d/cwd" % process), os.getsid(process)),
                         ({os.devnull}, "/", process))
        self.assertEqual(self.workstation.log_path.stat().st_mode & 0o777, 0o777)
        os.kill(process, signal.SIGHUP)
        self.workstation.wait_log("Client Service Query Unload (Closing) (cancelling)")

    def test_a_started_service_mends_the_start_of_the_helper_and_stays_the_only_one(self):
        self.control("-install", "Service Installed")
        self.workstation.rvlreg("set", RUN, "RVLClientHelper", "text", '"C:\\gone.exe" -service_helper')
        self.control("-start", "Service Started")
        self.assertEqual(self.value(RUN, "RVLClientHelper"), self.helper)
        process, = self.services()
        status, _, errors = self.workstation.run("-service_mode-debug")
        self.assertEqual((status, errors), (1, "Ravelin Client: Ravelin Client Service is currrently running. "
                                               "Please stop it before starting another instance\n"))
        self.assertEqual(self.workstation.log_entries()[-1], ("Service", "Terminating with return value #1"))
        self.assertEqual(self.services(), [process])

    def test_many_starts_make_one_service(self):
        self.control("-install", "Service Installed")
        starts = [self.workstation.start("-start") for _ in range(6)]
        said = sorted(start.communicate()[1].decode().strip() for start in starts)
        self.assertEqual(said, ["Ravelin Client: Error starting service: " + RUNNING] * 5
                         + ["Ravelin Client: Service Started"])
        self.assertEqual(len(self.services()), 1)

    def test_silent_installation_replaces_another_copy(self):
        other = self.workstation.folder / "other"
        shutil.copytree(self.workstation.bin, other)
        self.install_by_hand(other / self.workstation.client.name)
        self.control("-start", "Service Started")
        old, = self.services()
        for switch in ("-install-silent", "/install-silent", "-deploy"):
            self.control(switch)
            self.assertEqual(self.value(SERVICE, "ImagePath"), self.command_line)
            self.assertEqual(self.value(RUN, "RVLClientHelper"), self.helper)
        new, = self.services()
        self.assertNotEqual(old, new)
        self.assertEqual(self.workstation.log().count("Registering dependancies"), 1)
        self.assertEqual(self.workstation.log().count("Error "), 0, self.workstation.log())
        self.control("/remove-silent")
        self.wait_services(0)
        self.assertEqual(self.workstation.rvlreg("list", SERVICE)[0], 1)

    @host.needs("a manager that lets a hanging service be")
    def test_deletion_waits_for_the_end_of_the_service(self):
        self.control("-install", "Service Installed")
        self.control("-start", "Service Started")
        service, = self.services()
        os.kill(service, signal.SIGSTOP)  # it neither ends nor answers
        self.control("-remove", "Service Removed")
        self.assertEqual(self.value(SERVICE, "DeleteFlag"), "1")
        self.control("-install", "Error installing service: " + MARKED)
        self.control("-start", "Error starting service: " + MARKED)
        self.control("-remove", "Error removing service: " + MARKED)
        waiting = self.workstation.start("-install-silent")
        self.workstation.wait_log("Command line parameters: -install-silent")
        os.kill(service, signal.SIGCONT)
        self.assertEqual((waiting.communicate()[1], waiting.returncode), (b"", 0))
        self.assertEqual((self.value(SERVICE, "DeleteFlag"), self.value(SERVICE, "Start")), (None, "2"))
        self.wait_services(1)
        self.assertNotEqual(self.services(), [service])

    def test_executables_that_do_not_become_the_service(self):
        program = program_file("rvlreg")  # it ends at once
        for path, text in ((program, NOT_IN_TIME), (program.with_name("none"), NO_FILE)):
            self.install_by_hand(path)
            self.control("-start", "Error starting service: " + text)

    def test_deployment_registers_what_there_is(self):
        tools, system = self.workstation.bin / host.TOOLS_LIBRARY, host.SYSTEM_FOLDER + host.TOOLS_LIBRARY
        beside, in_system = windows_path(tools), self.workstation.write(system, tools.read_bytes())
        for change, texts in ((lambda: None, ["Registering " + beside]),
                              (tools.unlink, ["Registering " + system]),
                              (lambda: in_system.write_bytes(b""),
                               ["Registering " + system, "Error registering " + host.TOOLS_LIBRARY]),
                              (in_system.unlink, ["Warning: %s does not exist" % host.TOOLS_LIBRARY])):
            with self.subTest(texts):
                change()
                self.workstation.log_path.unlink(missing_ok=True)
                self.control("-deploy")
                said = [text for tag, text in self.workstation.log_entries() if "egister" in text or "Warn" in text]
                last = len(said) - said[::-1].index("Registering dependancies")
                self.assertEqual([text for text in said[last:] if "Service" not in text], texts)

    @host.needs("two users")
    def test_ordinary_user(self):
        self.workstation.folder.chmod(0o755)
        try:
            self.workstation.start("-stop", user=NOBODY).communicate()
        except (OSError, subprocess.SubprocessError):
            self.skipTest("the system does not let us be somebody else")
        for installed in (False, True):
            if installed:
                self.control("-install", "Service Installed")
            before = self.workstation.rvlreg("list", SERVICE)
            for switch, verb in (("-install", "installing"), ("-start", "starting"), ("-stop", "stopping"),
                                 ("-remove", "removing"), ("-install-silent", None), ("-remove-silent", None)):
                process = self.workstation.start(switch, user=NOBODY)
                errors = process.communicate()[1].decode()
                self.assertEqual((process.returncode, errors),
                                 (0, "Ravelin Client: Error %s service: %s\n" % (verb, DENIED) if verb else ""))
            self.assertEqual(self.workstation.rvlreg("list", SERVICE), before)
        self.assertEqual(self.services(), [])


if __name__ == "__main__":
    private_network.main()
