#!/usr/bin/env python3
"""Runs the benchmarks on the bus that is there and prints lines "row TAB subject TAB metric TAB value".

Every round runs each subject once, in turns, so that what drifts strikes all alike; "bare again" is the bare proxy a
second time in the round, which shows how much two equal programs differ.
"""
import argparse
import collections
import contextlib
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

import instructions

TOOLS_UNIT = "com.vorn.linux.systemservice"


def lines_of(command, **options):
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, **options)
    if result.returncode != 0:
        sys.exit(f"{result.stderr}bench: {' '.join(map(str, command))} ended with {result.returncode}")
    return result.stdout.splitlines()


def rows_of(command):
    """Without what the library prints besides: records when there is no log system, files that it cannot open."""
    return [line for line in lines_of(command) if "\t" in line]


def put(row, subject, metric, value):
    print(f"{row}\t{subject}\t{metric}\t{value}", flush=True)


class Bench:
    def __init__(self, build, options):
        self.build = build
        self.options = options
        self.launch = build / "bench/bench_launch"

    def program(self, name):
        return self.build / "bench" / f"bench_{name}"

    # -- subjects on the bus -------------------------------------------------------------------------------------------

    @contextlib.contextmanager
    def service(self, program=None):
        """The one that takes each command at once and emits what it is asked for, or `program`."""
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        with subprocess.Popen([program or self.program("service")], **quiet) as service:
            lines_of(["gdbus", "wait", "--session", "--timeout", "10", TOOLS_UNIT])
            try:
                yield
            finally:
                service.terminate()

    @staticmethod
    def in_turns(first, bare, measured):
        """Nobody always goes first."""
        order = [("bare", bare), ("bare again", bare), ("library", measured)]
        first %= len(order)
        return order[first:] + order[:first]

    def run_subjects(self, round_, *arguments, library="library", note="", repeat=1):
        for turn in range(repeat):
            for label, program in self.in_turns(round_ + turn, "bare", library):
                self.run_subject(label, program, *arguments, note=note)

    def run_subject(self, label, program, *arguments, note=""):
        for line in rows_of([self.launch, self.program(program), *map(str, arguments)]):
            row, _, metric, value = line.split("\t")
            put(row + note, label, metric, value)

    def bus(self):
        for round_ in range(self.options.rounds):
            print(f"bench: round {round_ + 1} of {self.options.rounds}", file=sys.stderr)
            self.run_subjects(round_, "call", self.options.calls)
            self.run_subjects(round_, "burst", self.options.signals)
            self.run_subjects(round_, "paced", self.options.paced)
            for what in ("start", "start-client"):
                self.run_subjects(round_, what, library="library_alone", repeat=self.options.starts)
                self.run_subjects(round_, what, note=", host platform", repeat=self.options.starts)

    def clients(self):
        """The same signals to ever more processes: what does one of them pay?"""
        for count in (1, 10, 50, 100):
            clients = [subprocess.Popen([self.program("library"), "listen", str(self.options.paced)],
                                        stdout=subprocess.PIPE, text=True) for _ in range(count)]
            for client in clients:
                client.stdout.readline()
            self.emit(self.options.paced, 1000)
            costs = [float(client.communicate()[0].split("\t")[3]) for client in clients]
            put(f"clients, {count}", "library", "cpu_us", sum(costs) / len(costs))

    def panel(self):
        """What the panel's process costs, in percent of one core, while 1,000 signals a second reach its browsers."""
        with subprocess.Popen([self.build / "simulator/hlx-simulator"], stdout=subprocess.PIPE, text=True) as unit:
            unit.stdout.readline()
            unit.terminate()  # its records stay
        for count in (1, 20):
            with self.service(), subprocess.Popen([self.build / "tools/hlx-panel/hlx-panel"], stdout=subprocess.PIPE, text=True) as panel:
                address = re.search(r"http://(\S+)/\?token=(\S+)", panel.stdout.readline())
                browsers = [subprocess.Popen([sys.executable, __file__.replace("run.py", "browser.py"), *address.groups()],
                                             stdout=subprocess.PIPE, text=True) for _ in range(count)]
                for browser in browsers:
                    browser.stdout.readline()
                before = self.cpu_seconds(panel.pid)
                self.emit(5 * self.options.paced, 1000)
                put(f"panel, {count} browser{'s' if count > 1 else ''}", "library", "cpu_percent",
                    (self.cpu_seconds(panel.pid) - before) / (5 * self.options.paced / 1000) * 100)
                for process in (*browsers, panel):
                    process.terminate()
                    process.wait()

    def tools(self):
        """hlxctl beside busctl, and the simulator as a service beside the one that only answers."""
        simulator = self.build / "simulator/hlx-simulator"
        for round_ in range(self.options.rounds):
            for label, service in self.in_turns(round_, None, simulator):
                with self.service(service):
                    self.run_subject(label, "bare", "call", self.options.calls, note=", simulator")
            with self.service(simulator):
                self.verbs(round_)

    def verbs(self, round_):
        hlxctl = self.build / "tools/hlxctl/hlxctl"
        busctl = ["busctl", "--address", os.environ["DBUS_SESSION_BUS_ADDRESS"], "get-property", "org.freedesktop.DBus",
                  "/org/freedesktop/DBus", "org.freedesktop.DBus", "Features"]
        verbs = {"get": ["get", "power.screen"], "status": ["status"], "power": ["power"], "names": ["names", "speed"],
                 "set": ["power", "set", "screen", "on"]}
        for name, arguments in verbs.items():
            for turn in range(self.options.starts):
                for label, command in self.in_turns(round_ + turn, busctl, [hlxctl, *arguments]):
                    put(f"hlxctl {name}", label, "ms", self.milliseconds(command))

    @staticmethod
    def milliseconds(command):
        start = time.monotonic()
        lines_of(command)
        return (time.monotonic() - start) * 1000

    @staticmethod
    def cpu_seconds(pid):
        fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    @staticmethod
    def emit(count, a_second):
        lines_of(["gdbus", "call", "--session", "--timeout", "600", "--dest", TOOLS_UNIT, "--object-path",
                  "/com/vorn/linux/systemservice", "--method", "com.vorn.linux.bench.Emit", str(count), str(a_second)])

    # -- in one process ------------------------------------------------------------------------------------------------

    def micro(self, name):
        with tempfile.NamedTemporaryFile() as report:
            lines_of([self.program(name), f"--benchmark_out={report.name}", "--benchmark_out_format=json",
                      f"--benchmark_repetitions={self.options.rounds}",
                      "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.05"])
            runs = json.load(report)["benchmarks"]
        for run in sorted(runs, key=lambda run: run["name"]):
            if run["run_type"] != "iteration":
                continue
            row, subject, *argument = re.sub(r"/repeats:\d+", "", run["name"]).split("/")
            row = ", ".join([row, *argument])
            if "allocations" in run:
                row, subject = f"{row}, {subject}", "library"
                put(row, subject, "allocations", run["allocations"])
            put(row, subject, "ns", run["cpu_time"])

    def profile(self):
        """The instructions of one command and one signal, and whose they are."""
        for name, what in {"command": "call", "signal": "burst"}.items():
            for owner, count in instructions.per_step(self.program("library"), what):
                put(f"profile of a {name}", owner, "instructions", count)

    def construction(self):
        for area in ("power", "misc", "time", "info", "update"):
            program = [self.program("construction"), area]
            for line in rows_of(program):
                print(line, flush=True)
            calls = [self.system_calls([self.program("construction"), what]) for what in (area, "nothing")]
            put(f"construction, {area}", "library", "system_calls", calls[0] - calls[1])

    @staticmethod
    def system_calls(command):
        trace = subprocess.run(["strace", "-f", "-c", "-U", "calls", *command], stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE, text=True).stderr
        return int(re.search(r"(\d+) +total", trace.splitlines()[-1] + " total").group(1))

    # -- the file ------------------------------------------------------------------------------------------------------

    def size(self):
        library = (self.build / "client/libhlxsystemclient.so").resolve()
        stripped = pathlib.Path("/tmp/stripped.so")
        lines_of(["strip", "--strip-unneeded", "-o", stripped, library])
        put("size", "library", "stripped_kib", stripped.stat().st_size / 1024)
        dynamic = lines_of(["readelf", "--dyn-syms", "--wide", library])
        put("size", "library", "exports", sum(" UND " not in line and " GLOBAL " in line for line in dynamic))
        relocations = lines_of(["readelf", "--relocs", "--wide", library])
        put("size", "library", "relocations", sum("R_" in line for line in relocations))
        symbols = lines_of(["nm", "--print-size", "--size-sort", "--demangle", "--reverse-sort", library])
        for line in symbols[:10]:
            _, size, _, name = line.split(maxsplit=3)
            put("largest symbols", name.replace("(anonymous namespace)::", ""), "bytes", int(size, 16))

    def linker(self):
        for label, program in self.in_turns(0, "bare", "library"):
            trace = subprocess.run([self.program(program)], env={"LD_DEBUG": "statistics"}, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, text=True).stderr
            put("dynamic linker", label, "relocations",
                re.search(r"number of relocations: (\d+)", trace).group(1))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="a build tree with the benchmarks")
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--calls", type=int, default=5000)
    parser.add_argument("--signals", type=int, default=50000, help="in a burst")
    parser.add_argument("--paced", type=int, default=2000, help="signals at 1,000 a second")
    parser.add_argument("--starts", type=int, default=5, help="in each round")
    parser.add_argument("--only", nargs="+", default=[], metavar="GROUP",
                        choices=["bus", "clients", "micro", "construction", "size", "tools", "panel", "profile"])
    options = parser.parse_args()
    bench = Bench(options.build.resolve(), options)
    groups = collections.OrderedDict(
        size=[bench.size, bench.linker],
        micro=[lambda: bench.micro("getters"), lambda: bench.micro("fan_out"), lambda: bench.micro("decoding")],
        construction=[bench.construction],
        bus=[bench.bus],
        clients=[bench.clients],
        tools=[bench.tools],
        panel=[bench.panel],
        profile=[bench.profile])
    for name, steps in groups.items():
        if options.only and name not in options.only:
            continue
        with bench.service() if name in ("bus", "clients", "profile") else contextlib.nullcontext():
            for step in steps:
                step()


if __name__ == "__main__":
    main()
