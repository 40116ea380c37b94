"""Where a command's and a signal's instructions go, by program and library, as valgrind counts them."""
import collections
import pathlib
import re
import subprocess
import tempfile

COUNT = 500


def instructions(command):
    """Name of a program or library -> the instructions that were executed in it."""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder, "out")
        subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={out}", *command],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        return by_object(out.read_text(encoding="utf-8").splitlines())


def by_object(lines):
    names, costs = {}, collections.Counter()
    current, is_call = "", False
    for line in lines:
        named = re.match(r"ob=(\((\d+)\))(?: (.*))?", line)
        if named:  # a name is written out where it comes first
            if named[3]:
                names[named[1]] = pathlib.Path(named[3]).name
            current = names.get(named[1], "").replace("???", "elsewhere")
        elif line.startswith("cob="):
            full = re.match(r"cob=(\(\d+\)) (.*)", line)
            if full:
                names[full[1]] = pathlib.Path(full[2]).name
        elif line.startswith("calls="):
            is_call = True  # the next line is the callee's cost
        elif re.match(r"[+*\d-]", line):
            if not is_call:
                costs[current] += int(line.split()[-1])
            is_call = False
    return costs


def per_step(program, what):
    """The same for one command or signal: what twice as many cost more."""
    once, twice = (instructions([program, what, str(count)]) for count in (COUNT, 2 * COUNT))
    found = {name: (twice[name] - once[name]) / COUNT for name in twice}
    return sorted(((name, count) for name, count in found.items() if count >= 1), key=lambda item: -item[1])
