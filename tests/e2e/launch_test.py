"""Front ends started, watched and closed on a user's desktop, also when Access, the server or the desktop fail."""

import private_network
from desk import ACCESS, DATABASE, Desk
from workstation import processes, wait_until


class Launch(Desk):
    def setUp(self):
        super().setUp()
        self.install_access()
        self.deploy(name="Orders \xe9")
        self.start_service()

    def test_a_shortcut_opens_access_and_the_server_hears_of_it(self):
        self.start_helper()
        shortcut = self.start_through_shortcut("Orders \xe9")
        window = self.reported_start()
        self.wait_end(shortcut)
        self.assertEqual(list(self.access_processes().values()), [[DATABASE.encode()]])
        tags = self.station.machine.tags(self.station, window)
        self.assertEqual(tags.pop("RVL_StartTick_High"), 0)
        self.assertGreater(tags.pop("RVL_StartTick_Low"), 0)
        self.assertEqual(tags, {"RVL_FrontendID": 3, "RVL_FrontendID_Backup": 3,
                                "RVL_FrontendVersionID": 30, "RVL_FrontendVersionID_Backup": 30})
        for line in ('Attempting to launch "Orders \xe9" at "%s" using "%s" (ID #3/30)' % (DATABASE, ACCESS),
                     "Access hWnd = 0x%08X (%d)" % (window, window), "Our work here is done."):
            self.assertIn(line, self.station.log())

        self.wait_end(self.start_through_shortcut())
        self.station.wait_log("Instance already running, we'll just foreground it")
        self.assertEqual(len(self.access_processes()), 1)

        self.order_access(window, "open C:\\fe\\other.mdb")
        self.reported_end(window)
        self.server_hears(rb"\0FRONTEND_START\0\d+\x000\x00%d\x000\x0011\.0\.8166\0C:\\fe\\other\.mdb\x0030" % window)
        self.station.wait_log("Access instance %d changed files" % window)
        self.display.ask_to_close(self.station.machine.display_window(self.station, window))
        self.reported_end(window, 0)

    def test_without_the_server(self):
        self.start_helper()
        self.peer.close()
        self.station.wait_log("Server is disconnected")
        self.wait_end(self.station.start("-start_frontend", "3", "Orders"))
        wait_until(self.access_processes, "Access")
        refused = self.station.start("-start_frontend", "4", "Other <b>&</b>")
        self.display.answer("Other <b>&</b>", lambda: refused.poll() is not None)
        self.wait_end(refused)
        self.station.wait_log("The application is currently unavailable.\r\n\r\nThe frontend #4 is not presently")

    def test_administrator_message(self):
        self.start_helper()
        for database, key in ((b"", "alt+d"), (b"msaccess: stubborn", "alt+d"), (b"", None)):
            with self.subTest(database=database, key=key):
                self.station.write(DATABASE, database)
                self.start_through_shortcut()
                window = self.reported_start()
                if key is None:
                    self.close_frontend(window, 0)
                else:
                    self.close_frontend(window, 100, no_continue=1)
                    dialog = self.display.window(r"Orders \[01:(40|39)\]")
                    self.display.ask_to_close(dialog)
                    self.display.press(dialog, "Escape", key)
                self.reported_end(window)
                self.wait_no_access()
                wait_until(lambda: not self.display.windows("Orders.*"), "the end of the message")

    def test_messages_and_notices_do_not_hold_up_anything(self):
        helper = self.start_helper()
        self.start_through_shortcut()
        window = self.reported_start()
        self.link.send("0#", "MSGBOX", "First", "", 48)
        first = self.display.window("Ravelin Client Helper")
        self.link.send("0#", "MSGBOX", "Second & <b>", "Title \xe9", 0)
        self.display.window("Title \xe9")
        self.link.send("0#", "NEW_VERSION", 3, "Orders")
        self.link.send("0#", "NEW_VERSION", 3, "Orders")
        self.link.send("0#", "NEW_VERSION", 4, "Stock")
        self.display.window("New version of Orders")
        self.close_frontend(window, 0)
        self.reported_end(window)
        self.assertEqual(len(self.display.windows("New version of .*")), 1)
        self.display.press(self.display.window("New version of Orders"), "Return")
        wait_until(lambda: not self.display.windows("New version of .*"), "the end of the notice")
        self.display.press(self.display.window("Title \xe9"), "Return")
        self.display.press(first, "Return")
        self.station.wait_log('[GUI] MsgBox: "First": OK')
        self.link.send("0#", "MSGBOX", "Third")
        self.display.window("Ravelin Client Helper")
        self.link.send("0#", "TERMINATE", "any")
        self.wait_end(helper)

    def test_an_access_that_fails(self):
        self.start_helper()
        cases = ((b"msaccess: exit 7", "Access quit with error code #7"),
                 (b"msaccess: slow 60", "Instance already starting, waiting for it"))
        for database, line in cases:
            self.station.write(DATABASE, database)
            self.wait_end(self.start_through_shortcut())
            self.wait_end(self.start_through_shortcut())
            self.station.wait_log(line)
        self.station.end_processes(self.access)
        self.station.write(DATABASE, b"")
        self.start_through_shortcut()
        window = self.reported_start()
        self.order_access(window, "hang")
        self.close_frontend(window, 0)
        self.reported_end(window)
        self.station.write(DATABASE, b"msaccess: cant-make-changes")
        self.start_through_shortcut()
        self.reported_start()
        wait_until(lambda: "Microsoft Access" not in self.titles(), "the end of the dialog")

        self.access.unlink()
        shortcut = self.start_through_shortcut()
        self.display.answer("Orders", lambda: shortcut.poll() is not None)
        self.wait_end(shortcut)
        self.station.wait_log("currently unavailable.\r\n\r\nMicrosoft Access is not installed.\": OK")

    def titles(self):
        return self.display.xdotool("search", "--name", "^Microsoft Access$")

    def test_two_helpers_of_one_user(self):
        first, second = self.start_helper(), self.start_helper()
        self.wait_end(first)
        self.station.wait_log("Terminating on request of service")
        self.assertIsNone(second.poll())

    def test_the_helper_reports_anew_to_a_new_service(self):
        self.start_helper()
        self.start_through_shortcut()
        window = self.reported_start()
        self.station.stop_service()
        self.start_service()
        self.assertEqual(self.reported_start(), window)

    def test_the_session_ends(self):
        helper, board = self.start_helper(), self.station.start()
        self.server_hears(rb"\0CONNECT\0UI\0.*")
        self.station.machine.end_session(self.station, self.display)
        self.wait_end(helper)
        self.wait_end(board)
        for line in ("Client Helper exiting (Session Ending)", "Client UI exiting (Session Ending)"):
            self.station.wait_log(line)


class Failures(Desk):
    def shown(self, *texts):
        """A message box with all these texts, answered; the start's own window of that name may stand before it."""
        self.display.answer("Orders", lambda: all(text in self.station.log() for text in texts))

    def test_no_service(self):
        shortcut = self.station.start("-start_frontend", "3", "Orders")
        self.shown("Unable to connect to the service, failing", '[GUI] MsgBox: "Unable to start Orders.\r\n\r\nTry '
                   "restarting your computer and contact your system adminstrator if the problem persists.\r\n\r\n"
                   'Error code: Service Unavailable": OK')
        self.wait_end(shortcut)

    def test_the_service_goes_while_it_is_waited_for(self):
        self.start_service()
        self.start_helper()
        shortcut = self.station.start("-start_frontend", "3", "Orders")
        self.server_hears(rb"\0START_FRONTEND\0.*")
        self.station.kill_service()
        wait_until(lambda: "Error code: Service Failure" in self.box_texts(), "the box")
        self.shown("Connection to client service has been lost, failing", "Error code: Service Failure")
        self.wait_end(shortcut)

    def box_texts(self):
        """The box is there once there is a second window of that title."""
        return "Error code: Service Failure" if len(self.display.windows("Orders")) > 1 else ""

    def test_nobody_answers(self):
        self.start_service()
        self.start_helper()
        shortcut = self.station.start("-start_frontend", "3", "Orders")
        self.server_hears(rb"\0START_FRONTEND\0.*")
        self.link.close()
        self.station.wait_log("Server is disconnected")
        self.shown('[GUI] MsgBox: "Server no longer available. Please try again shortly.": OK')
        self.wait_end(shortcut)

    def test_a_missing_helper_is_started(self):
        self.start_service()
        shortcut = self.station.start("-start_frontend", "3", "Orders")
        self.shown("Service requested the helper be started", '[GUI] MsgBox: "The application is temporarily '
                   'unavailable.\r\n\r\nPlease try again in a few moments.": OK')
        self.wait_end(shortcut)
        self.server_hears(rb"\0CONNECT\0HELPER\0.*")
        helpers = lambda: list(processes(self.station.client).values()).count([b"-service_helper"])
        wait_until(lambda: helpers() == 1, "one helper, the newest")


if __name__ == "__main__":
    private_network.main()
