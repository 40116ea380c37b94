#!/usr/bin/env python3
"""Compares what documents, headers and interface description say with the sources and with each other:

- every ERROR and FATAL text of the library and the host platform stands in docs/messages.md, and no other;
- for every command the interface description, the header and the catalogue name the same events that
  follow it, and header and catalogue the same event that tells of a value;
- every relative link of a document leads somewhere, and every file of the project that it names is there.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = [p for d in ("client", "data", "dbus", "platform") for p in sorted((ROOT / d).rglob("*.[ch]*"))
           if "template" not in p.parts]
TEXT = r'"(?:[^"\\]|\\.)*"'
FOLDERS = "bench|catalog|client|cmake|data|dbus|docs|examples|include|packaging|platform|scripts|simulator|tests|tools"
faults = []


def read(path):
    return (ROOT / path).read_text(encoding="utf-8")


def logged_texts():
    call = re.compile(r"HLX_(?:LOG_(?:ERROR|FATAL)|HOST_COMPLAIN)\(\s*|"
                      r"HLX_LOG_AT\(\s*ZLOG_LEVEL_(?:ERROR|FATAL),[^\";]*")
    for path in SOURCES:
        source = path.read_text(encoding="utf-8")
        for match in call.finditer(source):
            literal = re.compile(rf"(?:{TEXT}\s*)+").match(source, match.end())
            if literal:
                text = "".join(part[1:-1] for part in re.findall(TEXT, literal.group()))
                yield path, text.replace('\\"', '"').removesuffix("\\n")
            elif not source[: match.start()].rsplit("\n", 1)[-1].startswith(("#define", "      ")):
                faults.append(f"{path.relative_to(ROOT)}: a record whose text this script cannot read: {match.group()}")


def check_messages():
    logged = dict((text, path) for path, text in logged_texts())
    described = re.findall(r"^### `(.*)`$", read("docs/messages.md"), re.MULTILINE)
    for text in logged.keys() - set(described):
        faults.append(f"docs/messages.md: not described: {text} ({logged[text].relative_to(ROOT)})")
    for text in set(described) - logged.keys():
        faults.append(f"docs/messages.md: nothing logs: {text}")


def callback(signal):
    name = signal.replace("Signal", "")
    return name if name.startswith("On") else "On" + name


def described_commands(description, signals):
    """Method to the callbacks of the signals that the interface description says follow it."""
    for comment, method in re.findall(r'<!-- ((?:(?!-->).)*?) -->\s*<method name="(\w+)"', description, re.DOTALL):
        told = [s for s in comment.split(". ") + comment.split(".\n") if re.search(r"\bfollows?\b", s)]
        following = {callback(name) for s in told for name in re.findall(r"\w+", s) if name in signals}
        if not following and "o signal" not in comment:
            faults.append(f"interface description: {method}: says neither what follows nor that no signal does")
        yield method, following


def header_functions():
    """Function name to what its comment says of events, None for nothing."""
    for area in ("Power", "Misc", "Time", "Update"):
        header = re.sub(r"\n *///", "\n///", read(f"include/IHLXSystem{area}.h"))
        for comment, name in re.findall(r"((?:///[^\n]*\n)+) *virtual [^(]*?(\w+)\(", header):
            text = " ".join(line.lstrip("/ ") for line in comment.splitlines())
            told = re.search(r"Event: (.*?)\.(?:\s|$)", text)
            yield f"IHLXSystem{area}", name, told and set(re.findall(r"\b(On\w+)\(\)", told.group(1)))


def check_events():
    description = read("dbus/com.vorn.linux.system.xml")
    signals = set(re.findall(r'<signal name="(\w+)"', description))
    commands = dict(described_commands(description, signals))
    # Two getters change with an event that carries no value of theirs.
    getters = {"GetCurTimeZone": {"OnDateInfoChange"}, "GetUpdateVersionInfo": {"OnDetectValidUpdateFileNotify"}}
    for row in (line.strip("|").split("|") for line in read("docs/reference.md").splitlines()):
        words = [set(re.findall(r"\w+", cell)) for cell in row]
        if len(row) == 7 and words[4] & commands.keys():  # a command: function, method, changes, signals
            method, follows = min(words[4]), {callback(word) for word in words[6] & signals}
            if follows != commands[method]:
                faults.append(f"the catalogue: {method} is followed by {sorted(follows)}, interface description: "
                              f"{sorted(commands[method])}")
        elif len(row) == 10 and words[4]:  # a value: getter, signal, event
            getters.setdefault(re.search(r"\w+", row[4]).group(), set()).update(
                word for word in words[6] if word.startswith("On"))
    named = {"SetCanUpdata": "CanUpdate", "SetPowerRvcStatus": "SetRvcStatus",
             "SetCarplayTimeSync": "SetGpsUTCTimeSync"}
    seen = {"SetLogoInfo"}  # the second SetLogo()
    for interface, function, events in header_functions():
        method = named.get(function, function)
        seen.add(method)
        if events is None:
            if function != "GetSteelMateRadarInfo":
                faults.append(f"{interface}::{function}: says nothing of an event")
        elif method in commands and events != commands[method]:
            faults.append(f"{interface}::{function}: events {sorted(events)}, not {sorted(commands[method])}")
        elif function in getters and not (events <= getters[function] and bool(events) == bool(getters[function])):
            faults.append(f"{interface}::{function}: events {sorted(events)}, not {sorted(getters[function])}")
    for method in commands.keys() - seen:
        faults.append(f"no interface has the command {method}")


def check_links():
    for path in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]:
        text = path.read_text(encoding="utf-8")
        links = [path.parent / target for target in re.findall(r"\]\((?!\w+:|#)([^)#\s]+)", text)]
        named = [ROOT / name for name in re.findall(rf"`((?:{FOLDERS})/[\w./-]*)(?![\w./…-])", text)]
        for target in links + named:
            if not target.exists():
                faults.append(f"{path.relative_to(ROOT)}: is not there: {target}")


check_messages()
check_events()
check_links()
print("\n".join(faults) or "documents: nothing to complain of")
sys.exit(bool(faults))
