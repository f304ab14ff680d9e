"""The base of tests that share one service, logged in at one server."""

import unittest

from server_peer import ServerPeer
from workstation import Workstation


class RunningService(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.peer = ServerPeer()
        cls.addClassCleanup(cls.peer.close)
        cls.workstation = Workstation()
        cls.addClassCleanup(cls.workstation.close)
        cls.workstation.start_service()
        cls.log_in_again()

    @classmethod
    def tearDownClass(cls):
        status = cls.workstation.stop_service()
        assert status == 0, "the service ended with %d; log:\n%s" % (status, cls.workstation.log()[-8000:])
        errors = cls.workstation.service.stderr.read()
        assert not errors, errors.decode()

    @classmethod
    def log_in_again(cls):
        try:
            cls.link = cls.peer.accept_login()
        except OSError as error:
            raise AssertionError("no login: %s; log:\n%s" % (error, cls.workstation.log()[-8000:])) from None
