"""An application as it is, under pytest. `hlx-simulator run` is around this process: the unit is there, and no other.

Its verbs are all that a test needs: set and emit play the car, calls tells what the application sent."""

import json
import subprocess
import time

import pytest


def simulator(*words):
    return subprocess.run(["hlx-simulator", *words], check=True, text=True, capture_output=True).stdout


@pytest.fixture
def hmi(request, tmp_path):
    """The running application; says() waits for what it prints."""
    simulator("calls", "--clear")
    output = tmp_path / "output"
    with open(output, "w") as file:
        process = subprocess.Popen([request.config.getoption("--hmi")], stdout=file)

    def says(line):
        deadline = time.monotonic() + 10
        while time.monotonic() < deadline:
            if line in output.read_text().splitlines():
                return True
            time.sleep(0.02)
        return False

    process.says = says
    assert says("command: sent")
    yield process
    process.terminate()
    assert process.wait(10) == 0


def test_asks_for_its_brightness_when_it_starts(hmi):
    call = json.loads(simulator("calls", "--wait", "SetScreenLightLevel", "--timeout", "5", "--json"))
    assert call["args"] == {"type": 0, "level": 60}
    assert hmi.says("event: the screen's day brightness is 60")


def test_hears_the_ignition(hmi):
    simulator("set", "power.acc", "off")
    assert hmi.says("event: ACC is off")
    simulator("set", "power.acc", "on")
    assert hmi.says("event: ACC is on")


def test_survives_a_reboot_of_the_unit(hmi):
    simulator("reboot", "--reset")
    assert hmi.says("service lost")
    assert hmi.says("service back")
    simulator("set", "power.head_lights", "on")
    assert hmi.says("event: the head lights are on")
