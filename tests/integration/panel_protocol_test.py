#!/usr/bin/python3
"""What the panel's server lets in, what it refuses, and that nothing a client sends ends it.

Usage: panel_protocol_test.py BUILD_DIRECTORY
"""
import http.client
import json
import os
import pathlib
import re
import resource
import socket
import sys
import unittest

import websocket

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from processes import PANEL, PATIENCE, SIMULATOR, ended, started, unit

MOST_BROWSERS = 64
LINES_KEPT = 1000
EVENTS = LINES_KEPT + 200


class Protocol(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
        resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
        cls.simulator, _ = started([SIMULATOR], "ready")
        cls.panel, line = started([PANEL, "--allow-host", "Desk.example"], "open")
        cls.port, cls.token = re.search(r":(\d+)/\?token=(\w+)", line).groups()
        cls.cookie = cls.get("/?token=" + cls.token).getheader("Set-Cookie").split(";")[0]

    @classmethod
    def tearDownClass(cls):
        for process in (cls.panel, cls.simulator):
            ended(process)

    def tearDown(self):
        self.assertIsNone(self.panel.poll(), "the panel has ended")
        self.assertEqual(200, self.get("/", Cookie=self.cookie).status)

    @classmethod
    def get(cls, path, method="GET", address="127.0.0.1", **headers):
        connection = http.client.HTTPConnection(address, int(cls.port), timeout=PATIENCE)
        connection.request(method, path, headers=headers)
        answer = connection.getresponse()
        answer.body = answer.read().decode()
        connection.close()
        return answer

    def browser(self, **options):
        """A greeted browser."""
        connection = websocket.create_connection(f"ws://127.0.0.1:{self.port}/ws", timeout=PATIENCE, cookie=self.cookie,
                                                 suppress_origin=True, **options)
        self.assertEqual("hello", json.loads(connection.recv())["type"])
        return connection

    def asked(self, connection, text):
        """The next answer to `text`, past all updates."""
        connection.send(text)
        while True:
            message = json.loads(connection.recv())
            if message["type"] == "answer":
                return message

    def test_only_who_knows_the_token_is_let_in(self):
        answer = self.get("/?token=" + self.token)
        self.assertEqual((303, f"http://127.0.0.1:{self.port}/"), (answer.status, answer.getheader("Location")))
        self.assertRegex(answer.getheader("Set-Cookie"), r"^hlx_panel_\d+=\w{48}; Path=/; HttpOnly; SameSite=Strict$")
        name = self.cookie.split("=")[0]
        for path, headers in (("/", {}), ("/?token=", {}), ("/?token=" + self.token[:-1], {}), ("/panel.js", {}),
                              ("/", {"Cookie": f"{name}="}), ("/", {"Cookie": f"{name}={self.token}x"}),
                              ("/", {"Cookie": f"x{self.cookie}"})):
            self.assertEqual(401, self.get(path, **headers).status, (path, headers))
        page = self.get("/", Cookie=f"other=1; {self.cookie}")
        self.assertEqual(200, page.status)
        self.assertIn("default-src 'none'; script-src 'self'", page.getheader("Content-Security-Policy"))
        self.assertNotIn(self.token, page.body)
        self.assertNotRegex(page.body, r"<script(?![^>]*src=)|\son\w+=|style=")

    def test_names_origins_methods_and_paths(self):
        own = f"127.0.0.1:{self.port}"
        for status, headers in (
                (200, {"Host": "localhost"}), (200, {"Host": "LOCALHOST:8470"}), (200, {"Host": "[::1]:1"}),
                (200, {"Host": "desk.example:80"}), (421, {"Host": "evil.example"}), (421, {"Host": "127.0.0.1.evil.example"}),
                (400, {"Host": "localhost:x"}), (421, {"Host": ""}), (200, {"Origin": f"http://{own}"}),
                (403, {"Origin": "http://evil.example"}), (403, {"Origin": "null"}), (403, {"Origin": "http://127.0.0.1:1"})):
            self.assertEqual(status, self.get("/", Cookie=self.cookie, **headers).status, headers)
        for status, method, path in ((405, "POST", "/"), (405, "OPTIONS", "/"), (404, "GET", "/none.html"),
                                     (404, "GET", "/../../etc/passwd"), (200, "GET", "/%2e%2e/panel.js"), (404, "GET", "/" + 3000 * "a")):
            self.assertEqual(status, self.get(path, method, Cookie=self.cookie).status, path)
        if socket.has_ipv6:
            self.assertEqual(200, self.get("/", address="::1", Cookie=self.cookie).status)

    def test_a_websocket_needs_cookie_and_own_origin(self):
        for status, options in ((401, {}), (401, {"cookie": "hlx_panel_1=" + self.token}),
                                (403, {"cookie": self.cookie, "origin": "http://evil.example"}),
                                (421, {"cookie": self.cookie, "host": "evil.example"})):
            with self.subTest(options), self.assertRaises(websocket.WebSocketBadStatusException) as refused:
                websocket.create_connection(f"ws://127.0.0.1:{self.port}/ws", **options)
            self.assertEqual(status, refused.exception.status_code, options)

    def test_bad_messages_are_answered_with_what_is_wrong(self):
        connection = self.browser()
        for wrong, text in (
                ("one JSON object", "{"), ("one JSON object", "[]"), ("one JSON object", '"ready"'), ("one JSON object", 20000 * "["),
                ('"type" must be a text', "{}"), ('"type" must be a text', '{"type":7}'), ("no message of type 'x'", '{"type":"x"}'),
                ('"area" must be a text', '{"type":"command"}'), ("no command 'none x'", '{"type":"command","area":"none","name":"x","arguments":[]}'),
                ("no command", '{"type":"command","area":"power","name":"none","arguments":[]}'),
                ('"arguments" must be a list', '{"type":"command","area":"power","name":"screen"}'),
                ('"arguments" must be texts', '{"type":"command","area":"power","name":"screen","arguments":[1]}'),
                ("maybe", '{"type":"command","area":"power","name":"screen","arguments":["maybe"]}'),
                ("256", '{"type":"command","area":"power","name":"brightness","arguments":["day","256"]}'),
                ("send: 'off' needs the library's client",
                 '{"type":"command","area":"time","name":"gps","arguments":["2025-01-01","00:00:01","off"]}'),
                ("confirm", '{"type":"command","area":"power","name":"shutdown","arguments":[]}'),
                ("no verb 'None'", '{"type":"unit","verb":"None","arguments":[]}'), ("2 words", '{"type":"unit","verb":"Set","arguments":["a"]}'),
                ("misc.car_sped", '{"type":"unit","verb":"Set","arguments":["misc.car_sped","1"]}'),
                ("no fault 'explode'", '{"type":"unit","verb":"Fault","arguments":["SetLogo","explode"]}')):
            answer = self.asked(connection, text)
            self.assertFalse(answer["ok"], text)
            self.assertIn(wrong, answer["error"], text)
        for arguments in ('"misc","name":"source","arguments":["3"]', '"time","name":"gps","arguments":["2025-01-01","00:00:01","on"]'):
            self.assertTrue(self.asked(connection, '{"type":"command","id":5,"area":' + arguments + "}")["ok"])
        connection.close()

    def test_frames_that_are_too_long_or_no_text_end_that_browser_only(self):
        for payload, opcode in ((b"x" * 10_000_000, websocket.ABNF.OPCODE_TEXT), (b"\xff\xfe", websocket.ABNF.OPCODE_TEXT)):
            connection = self.browser()
            try:
                connection.send(payload, opcode)
                while connection.recv():
                    pass
            except (websocket.WebSocketException, OSError):
                continue
            self.assertFalse(connection.connected)
        connection = self.browser()
        self.assertIn("JSON", self.asked(connection, "\0")["error"])
        connection.close()

    def test_a_thousand_connections(self):
        idle = []
        for _ in range(100):  # in portions: what the queue of connections does not hold, the kernel tries a second later
            idle += [socket.create_connection(("127.0.0.1", int(self.port))) for _ in range(10)]
            self.get("/")
        browsers = [self.browser() for _ in range(MOST_BROWSERS)]
        with self.assertRaises((json.JSONDecodeError, websocket.WebSocketException)):  # closed instead of greeted
            self.browser()
        for connection in idle + browsers:
            connection.close()

    def test_who_does_not_read_gets_one_snapshot_instead_of_a_queue(self):
        slow, driver = self.browser(), self.browser()
        slow.send('{"type":"ready"}')
        first = json.loads(slow.recv())
        self.assertGreater(len(first["values"]), 100)
        self.assertTrue(first["service"])
        for _ in range(EVENTS // 50):
            driver.send('{"type":"ready"}')
            for code in range(50):
                self.assertTrue(self.asked(driver, '{"type":"unit","verb":"Emit","arguments":["KeyStateChangeSignal","1","1"]}')["ok"])
        driver.close()
        for _ in range(300):
            slow.send("{}")  # asks, and reads no answer
        slow.send('{"type":"ready"}')
        events = lost = answers = 0
        while events + lost < EVENTS:
            message = json.loads(slow.recv())
            answers += message["type"] == "answer"
            events += len(message.get("events", []))
            lost += message.get("lost", 0)
            if message["type"] == "update":
                self.assertLess(len(json.dumps(message)), 1 << 20)
                slow.send('{"type":"ready"}')
        self.assertEqual(100, answers)
        self.assertEqual(EVENTS - LINES_KEPT, lost)
        slow.close()

    def test_looking_changes_nothing(self):
        def unit_now():
            return os.stat("/etc/localtime", follow_symlinks=False), unit("calls"), unit("get", "power", "misc", "update")
        before = unit_now()
        watcher = self.browser()
        watcher.send('{"type":"ready"}')
        self.assertIn("values", json.loads(watcher.recv()))
        watcher.close()
        self.assertEqual(before, unit_now())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
