"""How the service finds its server, logs in, and obeys what the server says about the link."""

import hashlib
import re
import socket
import sqlite3
import time
import unittest

import host
import private_network
from server_peer import SERVER_PORT, ServerPeer
from workstation import Workstation, windows_path

HELLO = b"\x17\0\0\0\0HELLO\0RVL\0CLIENT\x001.1.3"
GUID = r"^\{guid \{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}\}$"


def proof_of(uuid, computer, domain, token, nonce):
    text = "uTc8NqX2" + "\0".join([uuid, computer, domain, token]) + nonce + "Kw73PbeZ"
    digest = hashlib.md5(text.encode("latin-1")).hexdigest()
    return digest[:8] + digest[-8:]


class LinkTest(unittest.TestCase):
    def setUp(self):
        self.peer = ServerPeer()
        self.addCleanup(self.peer.close)

    def start(self, address="localhost", **environment):
        self.workstation = Workstation(address, **environment)
        self.addCleanup(self.workstation.close)
        self.workstation.start_service()

    def login_parameters(self, link, token="token"):
        context, command, *parameters = link.ask("", "HELLO", token, "more")
        self.assertEqual((context, command, len(parameters)), (b"", b"LOGIN", 11))
        return [parameter.decode("latin-1") for parameter in parameters]

    def accept_and_read_login(self):
        link = self.peer.accept()
        self.assertEqual(link.receive_frame(), HELLO)
        return link, self.login_parameters(link)


class Login(LinkTest):
    def assert_login(self, parameters, token):
        proof, uuid, computer, domain, path, nt, system, access, programs, data, method = parameters
        self.assertRegex(uuid, GUID)
        self.assertEqual(uuid, self.workstation.setting("WorkstationUUID"))
        self.assertEqual((computer, domain), (socket.gethostname().upper(), "OFFICE"))
        self.assertEqual((nt, access, method), ("1", "", "fixed:localhost"))
        self.assertEqual(path, windows_path(self.workstation.client))
        self.assertRegex(system, r"^Windows NT \d+\.\d+ \(Build \d+\) ")
        self.assertEqual((programs, data), ("C:\\Program Files\\", "C:\\ProgramData\\"))
        self.assertRegex(proof, r"^[0-9a-fA-F]{16}[0-9A-Za-z]{16}$")
        self.assertEqual(proof[:16].lower(), proof_of(uuid, computer, domain, token, proof[16:]))

    def test_login_and_loss_of_the_link(self):
        self.start()
        link = self.peer.accept()
        self.assertEqual(link.receive_frame(), HELLO)
        self.assertEqual(link.ask("", "HELLO"), [b"", b"GENERAL_ERROR", b"87", b"Invalid parameters", b"HELLO", b""])
        logins = [(self.login_parameters(link, token), token) for token in ("a token", "\xe9\xff#'\"", "0")]
        for parameters, token in logins:
            self.assert_login(parameters, token)
        self.assertEqual(len({parameters[0][16:] for parameters, _ in logins}), 3)

        self.assertNotIn("Server is connected", self.workstation.log())
        link.send("", "LOGIN_OK")
        self.workstation.wait_log("] Server is connected\r\n")
        link.send("", "PONG")
        link.close()
        self.workstation.wait_log("] Disconnected from server\r\n")
        self.workstation.wait_log("] Server is disconnected\r\n")
        link, parameters = self.accept_and_read_login()
        self.assertEqual(parameters[1], logins[0][0][1])
        link.send("", "LOGIN_OK")
        self.workstation.wait_log("] Server is connected\r\n", 2)
        for text in ("LocateServer() called", "Using fixed server address: localhost", "Disconnected from server"):
            self.assertEqual(self.workstation.log().count("] %s\r\n" % text), 1, text)
        self.assertNotRegex(self.workstation.log(), r"Unknown server message|\] Error ")

    def test_server_that_comes_up_later_and_a_killed_service(self):
        self.peer.close()
        self.start()
        self.workstation.wait_log("Using fixed server address: localhost")
        self.peer = ServerPeer()
        self.addCleanup(self.peer.close)
        identity = self.accept_and_read_login()[1][1]
        self.workstation.kill_service()
        self.workstation.start_service()
        link, parameters = self.accept_and_read_login()
        self.assertEqual(parameters[1], identity)
        link.send("", "LOGIN_OK")
        self.workstation.wait_log("Server is connected")
        self.assertEqual(self.workstation.stop_service(), 0)
        link.wait_closed()


class Moving(LinkTest):
    def test_set_server_is_stored_and_survives_a_killed_service(self):
        self.start()
        link = self.peer.accept_login()
        for parameters, stored in ((["other.example", "more"], "other.example"), ([], None),
                                   (["O'Brien \xe9"], "O'Brien \xe9"), (["", "more"], None), (["last"], "last")):
            link.send("", "SET_SERVER", *parameters)
            link.ask("", "MKDIR")  # answered once the command before it is done
            self.workstation.wait_log("] Server says to open new connections to %s\r\n"
                                      % (stored or "<domain/broadcast>"))
            self.assertEqual(self.workstation.setting("ServerAddress"), stored)
        self.assertTrue(link.is_open())
        self.workstation.kill_service()
        self.assertEqual(self.workstation.setting("ServerAddress"), "last")

    def test_set_server_waits_for_another_program_that_holds_the_database(self):
        self.start()
        link = self.peer.accept_login()
        other = sqlite3.connect(self.workstation.database, isolation_level=None)
        self.addCleanup(other.close)
        other.execute("BEGIN EXCLUSIVE")
        link.send("", "SET_SERVER", "other.example")
        self.workstation.wait_log("Server says to open new connections to other.example")
        other.execute("ROLLBACK")
        link.ask("", "MKDIR")
        self.assertEqual(self.workstation.setting("ServerAddress"), "other.example")

    def test_find_server_again_returns_to_the_fixed_address(self):
        self.start()
        link = self.peer.accept_login()
        link.send("", "FIND_SERVER_AGAIN")
        link.wait_closed()
        self.accept_and_read_login()
        self.assertIn("Server wants us to disconnect and find a new server", self.workstation.log())
        self.assertEqual(self.workstation.log().count("Using fixed server address: localhost"), 2)

    @host.needs("a domain controller")
    def test_domain_controller(self):
        self.start("", RVL_DOMAIN_CONTROLLER="localhost")
        self.assertEqual(self.accept_and_read_login()[1][10], "domain:localhost")
        self.assertIn("Attempting to connect to domain controller: localhost", self.workstation.log())


class Discovery(LinkTest):
    def receive_round(self):
        """The two datagrams that leave through lo; returns the service's address and when they came."""
        senders = []
        while senders.count("127.0.0.1") < 2:
            content, sender, when = self.peer.receive_datagram()
            self.assertEqual(content, b"\0LOCATE\0")
            senders.append(sender[0])
        return sender, when

    def test_broadcast(self):
        self.start(None)
        client, first = self.receive_round()
        self.assertIn("No domain controller, using broadcast", self.workstation.log())
        # None of these is an answer, and none stops the service.
        for content in (b"\0LOCATE_REPLY\0HQ\0two", b"\0LOCATE_REPLY\0", b"", b"rubbish", b"\0\0\0\0", b"\0LOCATE\0",
                        b"\0NOISE\0" + bytes(range(256)), b"\0NOISE\0" + b"x" * 40000):
            self.peer.send_datagram(content, client)
        unknown = "] Unknown UDP message from 127.0.0.1:%d: " % SERVER_PORT
        self.workstation.wait_log(unknown, 5)
        self.assertIn(unknown + "rubbish\r\n", self.workstation.log())

        again, second = self.receive_round()
        self.assertEqual(again, client)
        self.assertGreater(second - first, 4.9)
        for name in (b"HQ", b"Impostor"):
            self.peer.send_datagram(b"\0 locate_reply \0" + name + b"\x001\x001.1.3", client)
        link, parameters = self.accept_and_read_login()
        self.assertEqual(parameters[10], "broadcast:127.0.0.1")
        self.peer.send_datagram(b"\0LOCATE_REPLY\0Late\0a\0b", client)
        for name in ("HQ\0two", "Late\0a\0b"):
            self.workstation.wait_log("] UDP 127.0.0.1:%d: <-- \0LOCATE_REPLY\0%s\r\n" % (SERVER_PORT, name))
        self.assertEqual(re.findall(r"Found server via broadcast: (.*)\r\n", self.workstation.log()),
                         ["HQ @ 127.0.0.1"])

        self.assertTrue(link.is_open())
        link.send("", "FIND_SERVER_AGAIN")
        link.wait_closed()
        asked = time.monotonic()
        client, when = self.receive_round()
        self.assertLess(when - asked, 4)
        self.peer.send_datagram(b"\0LOCATE_REPLY\0Second\0a\0b", client)
        self.peer.accept_login()
        self.workstation.wait_log("Found server via broadcast: Second @ 127.0.0.1")


if __name__ == "__main__":
    private_network.main()
