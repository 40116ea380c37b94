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
        subprocess.run(["valgrind", "--tool=callgrind", "--compress-strings=no", f"--callgrind-out-file={out}", *command],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        return by_object(out.read_text(encoding="utf-8").splitlines())


def by_object(lines):
    costs, current, is_call = collections.Counter(), "", False
    for line in lines:
        if line.startswith("ob="):
            current = pathlib.Path(line[3:]).name.replace("???", "elsewhere")
        elif re.match(r"[+*\d-]", line):
            if not is_call:
                costs[current] += int(line.split()[-1])
            is_call = False
        elif line.startswith("calls="):
            is_call = True  # the next line is the callee's cost
    return costs


def per_step(program, what):
    """The same for one command or signal: what twice as many cost more."""
    once, twice = (instructions([program, what, str(count)]) for count in (COUNT, 2 * COUNT))
    found = {name: (twice[name] - once[name]) / COUNT for name in twice}
    return sorted(((name, count) for name, count in found.items() if count >= 1), key=lambda item: -item[1])
