#!/usr/bin/python3
"""What the panel's server lets in, what it refuses, and that nothing a client sends ends it.

Usage: panel_protocol_test.py BUILD_DIRECTORY
"""
import contextlib
import http.client
import json
import os
import pathlib
import re
import resource
import socket
import subprocess
import sys
import tempfile
import time
import unittest

import websocket

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from processes import PANEL, PATIENCE, SIMULATOR, ended, started, unit

MOST_BROWSERS = 64
LINES_KEPT = 1000
EVENTS = LINES_KEPT + 200
CLOSED_PIPE = 141


class Panel:
    """One that runs, and who has opened the address that it printed."""

    def __init__(self, *words):
        self.process, line = started([PANEL, *words], "open")
        self.host, self.port, self.token = re.search(r"http://\[?([\d.:]+?)\]?:(\d+)/\?token=(\w+)", line).groups()
        self.cookie = self.get("/?token=" + self.token).getheader("Set-Cookie").split(";")[0]

    def get(self, path, method="GET", address=None, **headers):
        connection = http.client.HTTPConnection(address or self.host, int(self.port), timeout=PATIENCE)
        connection.request(method, path, headers=headers)
        answer = connection.getresponse()
        answer.body = answer.read().decode()
        connection.close()
        return answer

    def browser(self, **options):
        """A greeted browser."""
        connection = websocket.create_connection(f"ws://{self.host}:{self.port}/ws", timeout=PATIENCE, cookie=self.cookie,
                                                 suppress_origin=True, **options)
        assert json.loads(connection.recv())["type"] == "hello"
        return connection


def until(condition, what):
    """What `condition` gives, once that is something."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.01)
    raise AssertionError(f"never: {what}")


class CommandLine(unittest.TestCase):
    def test_what_is_said_at_once(self):
        with contextlib.ExitStack() as taken:
            ports = [taken.enter_context(socket.create_server(("127.0.0.1", 0))).getsockname()[1]]
            if socket.has_ipv6:
                ports.append(taken.enter_context(socket.create_server(("::1", 0), family=socket.AF_INET6)).getsockname()[1])
            for code, text, environment, words in (
                    (0, "--allow-host", {}, ["--help"]), (2, "--none", {}, ["--none"]), (2, "65536", {}, ["--port", "65536"]),
                    (2, "'nowhere' is not an IP address", {}, ["--listen", "nowhere"]),
                    (3, "the session bus cannot be reached", {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/none"}, []),
                    *((1, f":{port}: Address already in use", {}, ["--port", str(port)]) for port in ports)):
                done = subprocess.run([PANEL, *words], env={**os.environ, **environment}, capture_output=True, text=True,
                                      timeout=PATIENCE, check=False)
                self.assertEqual(code, done.returncode, words)
                self.assertIn(text, done.stdout + done.stderr, words)

    def test_the_address_is_opened(self):
        with tempfile.TemporaryDirectory() as home:
            seen = pathlib.Path(home, "seen")
            applications = pathlib.Path(home, "applications")
            applications.mkdir()
            (applications / "mimeapps.list").write_text("[Default Applications]\nx-scheme-handler/http=tester.desktop\n")
            write = "import sys; open(sys.argv[1], 'w').write(sys.argv[2])"
            (applications / "tester.desktop").write_text(
                f'[Desktop Entry]\nType=Application\nName=Tester\nExec=/usr/bin/python3 -c "{write}" {seen} %u\n')
            panel, line = started(["env", f"XDG_DATA_HOME={home}", PANEL, "--open"], "open")
            opened = until(lambda: seen.exists() and seen.read_text(), "the browser")
            self.assertEqual(line.split()[-1], opened)
            ended(panel)

    def test_no_browser_and_no_reader(self):
        with subprocess.Popen(["env", "XDG_DATA_HOME=/none", "XDG_DATA_DIRS=/none", PANEL, "--open"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True) as panel:
            self.assertIn("hlx-panel: open http://", panel.stdout.readline())
            self.assertIn("no browser can be opened", panel.stderr.readline())
            panel.stdout.close()
            self.assertEqual(CLOSED_PIPE, panel.wait(PATIENCE))

    def test_the_address_that_is_printed_is_answered(self):
        for address in ("127.0.0.2", "0.0.0.0", *(["::1"] if socket.has_ipv6 else [])):
            panel = Panel("--listen", address)
            self.assertEqual(200, panel.get("/", Cookie=panel.cookie).status, address)
            ended(panel.process)


class Protocol(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
        resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
        cls.simulator, _ = started([SIMULATOR], "ready")
        cls.panel = Panel("--allow-host", "Desk.example")

    @classmethod
    def tearDownClass(cls):
        for process in (cls.panel.process, cls.simulator):
            ended(process)

    def tearDown(self):
        self.assertIsNone(self.panel.process.poll(), "the panel has ended")
        self.assertEqual(200, self.panel.get("/", Cookie=self.panel.cookie).status)

    def asked(self, connection, text):
        """The next answer to `text`, past all updates."""
        connection.send(text)
        while True:
            message = json.loads(connection.recv())
            if message["type"] == "answer":
                return message

    def told(self, connection, condition):
        """The first update that fits."""
        def update():
            connection.send('{"type":"ready"}')
            message = json.loads(connection.recv())
            return condition(message) and message
        return until(update, "such an update")

    def test_only_who_knows_the_token_is_let_in(self):
        answer = self.panel.get("/?token=" + self.panel.token)
        self.assertEqual((303, f"http://127.0.0.1:{self.panel.port}/"), (answer.status, answer.getheader("Location")))
        self.assertRegex(answer.getheader("Set-Cookie"), r"^hlx_panel_\d+=\w{48}; Path=/; HttpOnly; SameSite=Strict$")
        name = self.panel.cookie.split("=")[0]
        for path, headers in (("/", {}), ("/?token=", {}), ("/?token=" + self.panel.token[:-1], {}), ("/panel.js", {}),
                              ("/", {"Cookie": f"{name}="}), ("/", {"Cookie": f"{name}={self.panel.token}x"}),
                              ("/", {"Cookie": f"x{self.panel.cookie}"})):
            self.assertEqual(401, self.panel.get(path, **headers).status, (path, headers))
        page = self.panel.get("/", Cookie=f"other=1; {self.panel.cookie}")
        self.assertEqual(200, page.status)
        self.assertIn("default-src 'none'; script-src 'self'", page.getheader("Content-Security-Policy"))
        self.assertNotIn(self.panel.token, page.body)
        self.assertNotRegex(page.body, r"<script(?![^>]*src=)|\son\w+=|style=")

    def test_names_origins_methods_and_paths(self):
        own = f"127.0.0.1:{self.panel.port}"
        for status, headers in (
                (200, {"Host": "localhost"}), (200, {"Host": "LOCALHOST:8470"}), (200, {"Host": "[::1]:1"}),
                (200, {"Host": "desk.example:80"}), (200, {"Host": "192.0.2.1:80"}),
                (200, {"Host": "[2001:db8::1]"}), (421, {"Host": "evil.example"}), (421, {"Host": "127.0.0.1.evil.example"}),
                (400, {"Host": "localhost:x"}), (421, {"Host": ""}), (200, {"Origin": f"http://{own}"}),
                (403, {"Origin": "http://evil.example"}), (403, {"Origin": "null"}), (403, {"Origin": "http://127.0.0.1:1"})):
            self.assertEqual(status, self.panel.get("/", Cookie=self.panel.cookie, **headers).status, headers)
        for status, method, path in ((405, "POST", "/"), (405, "OPTIONS", "/"), (404, "GET", "/none.html"),
                                     (404, "GET", "/../../etc/passwd"), (200, "GET", "/%2e%2e/panel.js"), (404, "GET", "/" + 3000 * "a")):
            self.assertEqual(status, self.panel.get(path, method, Cookie=self.panel.cookie).status, path)
        if socket.has_ipv6:
            self.assertEqual(200, self.panel.get("/", address="::1", Cookie=self.panel.cookie).status)

    def test_a_websocket_needs_cookie_and_own_origin(self):
        for status, options in ((401, {}), (401, {"cookie": "hlx_panel_1=" + self.panel.token}),
                                (403, {"cookie": self.panel.cookie, "origin": "http://evil.example"}),
                                (421, {"cookie": self.panel.cookie, "host": "evil.example"})):
            with self.subTest(options), self.assertRaises(websocket.WebSocketBadStatusException) as refused:
                websocket.create_connection(f"ws://127.0.0.1:{self.panel.port}/ws", **options)
            self.assertEqual(status, refused.exception.status_code, options)

    def test_bad_messages_are_answered_with_what_is_wrong(self):
        connection = self.panel.browser()
        for wrong, text in (
                ("one JSON object", "{"), ("one JSON object", "[]"), ("one JSON object", '"ready"'), ("one JSON object", 20000 * "["),
                ('"type" must be a text', "{}"), ('"type" must be a text', '{"type":7}'), ("no message of type 'x'", '{"type":"x"}'),
                ('"area" must be a text', '{"type":"command"}'), ("no command 'none x'", '{"type":"command","area":"none","name":"x","arguments":[]}'),
                ("no command", '{"type":"command","area":"power","name":"none","arguments":[]}'),
                ('"arguments" must be a list', '{"type":"command","area":"power","name":"screen"}'),
                ('"arguments" must be texts', '{"type":"command","area":"power","name":"screen","arguments":[1]}'),
                ("maybe", '{"type":"command","area":"power","name":"screen","arguments":["maybe"]}'),
                ("screen takes 1 argument, not 2", '{"type":"command","area":"power","name":"screen","arguments":["on","off"]}'),
                ("speed: 'fast' is no speed", '{"type":"unit","verb":"Play","arguments":["parking","fast"]}'),
                ("parking", '{"type":"unit","verb":"Play","arguments":["parkin","1"]}'),
                ("stick: there is none", '{"type":"unit","verb":"Stick","arguments":["remove"]}'),
                ("allowed: cold, acc, reset", '{"type":"unit","verb":"Reboot","arguments":["never"]}'),
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
        for words in ('"Play","arguments":["parking","1"]', '"Stop","arguments":[]'):
            self.assertTrue(self.asked(connection, '{"type":"unit","verb":' + words + "}")["ok"])
        self.told(connection, lambda update: (update.get("played") or {}).get("state") == "stopped")
        connection.close()

    def test_a_command_waits_for_its_event_a_while(self):
        self.addCleanup(unit, "fault", "clear")
        connection, who_leaves, other = self.panel.browser(), self.panel.browser(), Panel()
        command = '{"type":"command","area":"power","name":"screen","arguments":["%s"]}'
        for word, fault, event, least_ms in (
                ("off", "list", "OnScreenStateChange", 0), ("on", "signal any delay 100", "OnScreenStateChange", 100),
                ("off", "signal any drop", None, 0)):
            unit("fault", *fault.split())
            answer = self.asked(connection, command % word)
            self.assertTrue(answer["ok"], fault)
            self.assertEqual(event, answer.get("event"), fault)
            self.assertGreaterEqual(answer.get("event_ms", 0), least_ms, fault)
        unit("fault", "SetScreenLightOn", "error")
        refused = self.asked(connection, command % "on")
        self.assertEqual((False, "an injected fault"), (refused["ok"], refused["error"]))
        unit("fault", "clear")
        unit("fault", "signal", "any", "drop")
        who_leaves.send(command % "on")
        who_leaves.close()
        self.assertTrue(self.asked(connection, command % "off")["ok"])  # later than what nobody waits for any more
        unit("fault", "SetOnSourceChange", "hang")
        ending = other.browser()
        ending.send(command % "on")
        ending.send('{"type":"command","area":"misc","name":"source","arguments":["3"]}')
        self.asked(ending, '{"type":"unit","verb":"Emit","arguments":["KeyStateChangeSignal","1","1"]}')
        ended(other.process)
        self.assertEqual(0, other.process.returncode)
        for browser in (connection, ending):
            browser.close()

    def test_a_unit_that_comes_late_and_reboots(self):
        self.addCleanup(unit, "fault", "clear")
        watching = self.panel.browser()
        self.told(watching, lambda update: update.get("service"))
        early = []
        for fault, there in ("segment missing", True), ("service vanish", False):
            unit("fault", *fault.split())
            panel = Panel()
            early.append((panel, panel.browser()))
            first = self.told(early[-1][1], lambda update: "service" in update)
            self.assertEqual(({}, there), (first["values"], first["service"]))
        self.told(watching, lambda update: update.get("service") is False)
        unit("fault", "clear")
        self.told(watching, lambda update: update.get("service"))
        unit("set", "misc.car_speed", "37")
        for panel, connection in early:
            self.told(connection, lambda update: update.get("values", {}).get("misc.car_speed") == [37, "37"])
            self.told(connection, lambda update: unit("emit", "KeyStateChangeSignal", "1", "1") or update.get("events"))
        self.assertTrue(self.asked(connection, '{"type":"unit","verb":"Reboot","arguments":["acc"]}')["ok"])
        self.told(connection, lambda update: update.get("values", {}).get("power.boot_reason", [0, ""])[1] == "acc")
        watching.close()
        for panel, connection in early:
            connection.close()
            ended(panel.process)

    def test_frames_that_are_too_long_or_no_text_end_that_browser_only(self):
        for payload, opcode in ((b"x" * 10_000_000, websocket.ABNF.OPCODE_TEXT), (b"\xff\xfe", websocket.ABNF.OPCODE_TEXT)):
            connection = self.panel.browser()
            try:
                connection.send(payload, opcode)
                while connection.recv():
                    pass
            except (websocket.WebSocketException, OSError):
                continue
            self.assertFalse(connection.connected)
        connection = self.panel.browser()
        self.assertIn("JSON", self.asked(connection, "\0")["error"])
        connection.close()

    def test_a_thousand_connections(self):
        idle = []
        for _ in range(100):  # in portions: what the queue of connections does not hold, the kernel tries a second later
            idle += [socket.create_connection(("127.0.0.1", int(self.panel.port))) for _ in range(10)]
            self.panel.get("/")
        browsers = [self.panel.browser() for _ in range(MOST_BROWSERS)]
        with self.assertRaises((json.JSONDecodeError, websocket.WebSocketException)):  # closed instead of greeted
            self.panel.browser()
        for connection in idle + browsers:
            connection.close()

    def test_who_does_not_read_gets_one_snapshot_instead_of_a_queue(self):
        slow, driver = self.panel.browser(), self.panel.browser()
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

    def test_a_unit_that_hangs_keeps_nobody_waiting(self):
        self.addCleanup(unit, "fault", "clear")
        unit("fault", "service", "hang")
        start = time.monotonic()
        panel = Panel()
        connection = panel.browser()
        self.assertIn("JSON", self.asked(connection, "")["error"])
        self.assertLess(time.monotonic() - start, 2, "that long a service's sign of life is waited for")
        unit("fault", "clear")
        self.told(connection, lambda update: unit("emit", "KeyStateChangeSignal", "1", "1") or update.get("events"))
        connection.close()
        ended(panel.process)

    def test_looking_changes_nothing(self):
        def unit_now():
            return os.stat("/etc/localtime", follow_symlinks=False), unit("calls"), unit("get", "power", "misc", "update")
        before = unit_now()
        watcher = self.panel.browser()
        watcher.send('{"type":"ready"}')
        self.assertIn("values", json.loads(watcher.recv()))
        watcher.close()
        self.assertEqual(before, unit_now())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
