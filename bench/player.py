#!/usr/bin/python3
"""The player under load, with a client that listens: one simulated hour as fast as the bus takes it, and 5,000 events a
second. Prints the rows of a table; fails when an event is lost or memory grows.

Usage: player.py BUILD_DIRECTORY, on a bus of its own
"""
import json
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import tempfile
import time

BUILD = pathlib.Path(sys.argv[1]).resolve()
SIMULATOR = BUILD / "simulator/hlx-simulator"
HLXCTL = BUILD / "tools/hlxctl/hlxctl"
LAST = "OnFactoryResetModeSignal"  # no scenario here sends it
AT_ONCE = 5  # events in a millisecond
GROWTH = 2048  # KiB that an hour may add


def memory(pid):
    """KiB of private memory that are in use."""
    rows = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()
    return sum(int(row.split()[1]) for row in rows if row.startswith("Private_"))


def played(scenario, speed, directory):
    """The signals' times and arguments that a client has recorded while the scenario was played, and how many went out."""
    file, capture = directory / "scenario.json", directory / "capture.jsonl"
    file.write_text(json.dumps({"format": "hlx-scenario", "version": 1, "title": "load", "steps": scenario}))
    capture.unlink(missing_ok=True)
    client = subprocess.Popen([HLXCTL, "record", capture], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    client.stderr.readline()  # it listens
    subprocess.run([SIMULATOR, "play", file, "--speed", speed, "--wait"], check=True)
    sent = json.loads(subprocess.run([SIMULATOR, "status", "--json"], check=True, capture_output=True).stdout)["events"]
    subprocess.run([SIMULATOR, "emit", LAST], check=True)
    end = time.monotonic() + 60
    while LAST not in capture.read_text()[-4096:] and time.monotonic() < end:
        time.sleep(0.1)
    client.send_signal(signal.SIGINT)
    client.wait()
    events = [json.loads(line) for line in capture.read_text().splitlines()]
    return [(event["t"], event["args"]) for event in events if event.get("signal") == "CarSpeedChangeSignal"], sent


def hour(pid, directory):
    second = [{"repeat": 10, "steps": [{"emit": "CarSpeedChangeSignal", "args": [speed]} for speed in (50, 51)] + [{"after": 0.1}]}]
    scenario = [{"repeat": 3600, "steps": second}]
    for _ in range(2):  # while a scenario is read, the last one is still there
        played(scenario, "0", directory)
    before = memory(pid)
    started = time.monotonic()
    heard, sent = played(scenario, "0", directory)
    grown = memory(pid) - before
    print(f"| one simulated hour, highest speed: real time | {time.monotonic() - started:.1f} s |")
    print(f"| events sent, and lost by the client | {sent}, {sent - len(heard)} |")
    print(f"| memory that the unit has more than before | {grown} KiB |")
    return sent == len(heard) and grown <= GROWTH


def second(directory):
    scenario = [{"repeat": 10000, "steps": [{"emit": "CarSpeedChangeSignal", "args": [n]} for n in range(AT_ONCE)] + [{"after": 0.001}]}]
    heard, sent = played(scenario, "1", directory)
    late = [1000 * at - index // AT_ONCE for index, (at, _) in enumerate(heard)]
    first = min(late)
    late = sorted(value - first for value in late)
    print(f"| {AT_ONCE * 1000} events a second for 10 s: lost | {sent - len(heard)} |")
    print(f"| … heard late: median, 99 of 100, worst | {statistics.median(late):.1f}, {late[len(late) * 99 // 100]:.1f}, {late[-1]:.1f} ms |")
    return sent == len(heard)


def main():
    os.environ["HLX_HOST_CONFIG"] = str(pathlib.Path(__file__).resolve().parents[1] / "platform/host/platform.conf.sample")
    unit = subprocess.Popen([SIMULATOR, "--fresh", "--quiet"], stdout=subprocess.PIPE, text=True)
    unit.stdout.readline()
    try:
        with tempfile.TemporaryDirectory() as name:
            directory = pathlib.Path(name)
            return 0 if all([hour(unit.pid, directory), second(directory)]) else 1
    finally:
        unit.terminate()
        unit.wait()


if __name__ == "__main__":
    sys.exit(main())
