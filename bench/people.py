"""What the programs on a user's desktop cost, and the service beside them, while a server is logged in."""

import shutil
import sqlite3
import statistics
import subprocess
import sys

from desktop import Desktop, core_percent, megabytes, settled_seconds, sleeps, sleeps_for_display
from workstation import Workstation, wait_for

FRONTENDS, ACCESSES = 1000, 20
ROUNDS = 3
SECONDS = 30
MOST_MEGABYTES = 60


class Figures:
    def __init__(self):
        self.missed = False

    def show(self, what, figure, bound=None, unit=""):
        """A figure must not exceed its bound, if it has one."""
        limit = "" if bound is None else f" (at most {bound:.4g}{unit})"
        print(f"{what}: {figure:.4g}{unit}{limit}", flush=True)
        self.missed |= bound is not None and figure > bound

    def show_memory(self, what, process):
        resident, share = megabytes(process)
        self.show(f"resident memory of {what}, its share of it {share:.0f} MB", resident, MOST_MEGABYTES, " MB")


class Office(Workstation):
    """A workstation with a server, whose user sits at a desktop."""

    def __init__(self, desktop):
        super().__init__()
        self.desktop = desktop
        self.environment.update(DISPLAY=desktop.name, RVL_USER="ann", RVL_DOMAIN="OFFICE")
        self.database = self.drive_c / "ProgramData" / "Ravelin" / "Client" / "RVLClient.mdb"
        self.database.parent.mkdir(parents=True)
        shutil.copy(self.app / "RVLClientTemplate.mdb", self.database)
        self.execute("UPDATE Settings SET ServerAddress = 'localhost'", [()])

    def execute(self, statement, rows):
        connection = sqlite3.connect(self.database)
        with connection:
            connection.executemany(statement, rows)
        connection.close()

    def start_programs(self):
        self.server = self.start_server("--orders", orders=subprocess.PIPE)
        self.service = self.start_service()
        self.wait_for_server("LOGIN", 1)
        self.helper = self.start("RVLClient", "-service_helper")
        self.wait_for_server("CONNECT HELPER", 1)
        settled_seconds(self.helper)

    def wait_for_server(self, line, count):
        wait_for(lambda: "\n".join(self.server_lines()).count(line) >= count, 30, f"{count} x {line} at the server")

    def deploy(self):
        self.execute("INSERT INTO DeployedFrontends (FrontendID, FrontendVersionID, Username, FrontendName,"
                     " FrontendLocation, FrontendFilename, FriendlyVersionNumber)"
                     " VALUES (?1, 10 * ?1, 'OFFICE\\ann', 'Front end ' || ?1 || ' of the office', 'C:\\fe\\',"
                     " ?1 || '.mdb', '1.0')", [(number,) for number in range(1, FRONTENDS + 1)])

    def open_databases(self):
        folder = self.drive_c / "fe"
        folder.mkdir()
        for number in range(1, ACCESSES + 1):
            (folder / f"{number}.mdb").touch()
            self.start("msaccess", f"C:\\fe\\{number}.mdb")
        self.wait_for_server("FRONTEND_START", ACCESSES)

    def send_message(self):
        self.server.stdin.write(b'close OFFICE\\ann 1 600 "<b>Maintenance</b> begins <i>soon</i>."\n')
        self.server.stdin.flush()
        wait_for(lambda: self.desktop.has_window("1.mdb ["), 20, "the message")
        settled_seconds(self.helper)

    def open_switchboard(self):
        """Returns it with its list filled, and the processor time that this took."""
        board = self.start("RVLClient")
        wait_for(lambda: self.desktop.has_window('Access Switchboard"'), 20, "the filled switchboard")
        return board, settled_seconds(board)

    def switchboard_seconds(self):
        board, seconds = self.open_switchboard()
        board.terminate()
        board.wait()
        return seconds


def measure_wake_ups(figures, office):
    """An idle process sleeps again each time a timer has woken it. The helper's poll, once a second, also asks the
    X server one thing after the other and sleeps until each answer is there; how often, strace tells, in a time of
    its own because it brings more sleeping with it. Beside the poll there is a timer of a minute; each timer may fire once more than its
    interval goes into the time."""
    asked = sleeps_for_display(office.helper, SECONDS)
    before = sleeps(office.helper), sleeps(office.service)
    core_percent([], SECONDS)
    helper, service = sleeps(office.helper) - before[0], sleeps(office.service) - before[1]
    figures.show(f"wake-ups of the idle helper in {SECONDS} s, {asked} questions to the X server", helper,
                 SECONDS + 1 + asked + 1)
    # Two timers of five seconds, for the link and the network interfaces, and two of a minute.
    figures.show(f"wake-ups of the idle service in {SECONDS} s", service, 2 * (SECONDS // 5 + 1) + 2)
    figures.show_memory("the idle helper", office.helper)


def measure_switchboard(figures, office):
    none = statistics.median(office.switchboard_seconds() for _ in range(ROUNDS))
    office.deploy()
    filled = statistics.median(office.switchboard_seconds() for _ in range(ROUNDS))
    figures.show("processor time of a switchboard without front ends", none, unit=" s")
    figures.show(f"more with {FRONTENDS}", filled - none, 0.3, " s")
    board, _ = office.open_switchboard()
    figures.show_memory(f"the switchboard with {FRONTENDS}", board)
    board.terminate()


def measure_poll(figures, office):
    office.open_databases()
    settled_seconds(office.helper)
    helper, display = core_percent([office.helper, office.desktop.server], SECONDS)
    figures.show(f"the helper's poll with {ACCESSES} Access windows", helper, 1, " % of a core")
    figures.show("the X server meanwhile", display, unit=" % of a core")
    office.send_message()
    figures.show_memory("the helper with a message", office.helper)


def main():
    figures = Figures()
    with Desktop() as desktop, Office(desktop) as office:
        office.start_programs()
        measure_wake_ups(figures, office)
        measure_switchboard(figures, office)
        measure_poll(figures, office)
    return 1 if figures.missed else 0


if __name__ == "__main__":
    sys.exit(main())
