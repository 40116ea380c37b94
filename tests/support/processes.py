"""The programs that the panel's tests run."""
import os
import pathlib
import subprocess
import sys
import threading

BUILD = pathlib.Path(sys.argv[1]).resolve()
SOURCE = pathlib.Path(__file__).resolve().parents[2]
SIMULATOR = BUILD / "simulator/hlx-simulator"
PANEL = BUILD / "tools/hlx-panel/hlx-panel"
PATIENCE = 30  # seconds

os.environ["HLX_HOST_CONFIG"] = str(SOURCE / "platform/host/platform.conf.sample")
# libsoup 3.2 itself leaks an address for each socket that it listens on, and an object for each connection: 336 bytes.
os.environ["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"


def started(command, line):
    """The process, and the first line it prints that has `line` in it."""
    def drain():  # a full pipe would stop it
        with process.stdout:
            process.stdout.read()
    process = subprocess.Popen(list(map(str, command)), stdout=subprocess.PIPE, text=True)
    for text in process.stdout:
        if line in text:
            threading.Thread(target=drain, daemon=True).start()
            return process, text
    raise RuntimeError(f"{command[0]} never said {line!r}")


def ended(process):
    process.terminate()
    process.wait(PATIENCE)


def unit(*words):
    """What a verb of the simulator prints."""
    return subprocess.run([str(SIMULATOR), *map(str, words)], check=True, capture_output=True, text=True).stdout
