#!/usr/bin/env python3
"""Do the tests catch faults? Puts a seeded set of small faults into src/, one at a time, and runs the tests.

    mutations.py choose [--count N] [--seed S] LIST    writes N faults, a JSON line each
    mutations.py build LIST FOLDER                     builds the room of each fault as a library in a folder of its own
    mutations.py run FOLDER RESULT [--earlier RESULT]  runs the tests with each; goes on where it stopped

A fault is an operator or a bound turned, or a call dropped. Since a room is a shared library here, a fault is one other
library, and the tests themselves are built once; so the tests of one state can be held against those of another: what
--earlier names tells which test caught the fault then, and it is asked first. `build` edits src/ and puts it back: run
it in a checkout of its own.
"""
import argparse
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "mutations"

# What is looked for in a line of code, and what stands there instead.
TURNS = [
    (r"(?<=\s)==(?=\s)", "!="), (r"(?<=\s)!=(?=\s)", "=="), (r"(?<=\s)<=(?=\s)", "<"), (r"(?<=\s)>=(?=\s)", ">"),
    (r"(?<=\s)<(?=\s)", "<="), (r"(?<=\s)>(?=\s)", ">="), (r"(?<=\s)&&(?=\s)", "||"), (r"(?<=\s)\|\|(?=\s)", "&&"),
    (r"(?<=\w\s)\+(?=\s\w)", "-"), (r"(?<=\w\s)-(?=\s\w)", "+"), (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"(?<=[(\s])!(?=\w)", ""), (r"(?<=[\s(])1(?=[\s);])", "2"), (r"(?<=[\s(])0(?=[\s);])", "1"),
]
CALL = re.compile(r"^\s+[\w.]+(->\w+|\.\w+)*\([^{}]*\);$")


def faults_of(path):
    lines = path.read_text().split("\n")
    for line in lines:
        code = line.split("//")[0]
        if lines.count(line) > 1 or not code.strip() or code.lstrip().startswith(("#", "*", "/", "case ", "template")):
            continue
        bare = re.sub(r'"(\\.|[^"\\])*"', lambda text: " " * len(text[0]), code)
        for pattern, instead in TURNS:
            for hit in re.finditer(pattern, bare):
                yield line, line[:hit.start()] + instead + line[hit.end():]
        if CALL.match(code) and not code.lstrip().startswith(("return", "throw")):
            yield line, re.match(r"\s*", line)[0] + ";"


def choose(arguments):
    sites = []
    for path in sorted((ROOT / "src").rglob("*.cpp")):
        for line, instead in faults_of(path):
            sites.append({"file": str(path.relative_to(ROOT)), "line": line, "instead": instead})
    random.Random(arguments.seed).shuffle(sites)
    with open(arguments.list, "w") as out:
        for site in sites[:arguments.count]:
            out.write(json.dumps(site) + "\n")
    print(f"{min(arguments.count, len(sites))} of {len(sites)} possible faults")


def passes(command, seconds):
    try:
        return subprocess.run(command, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=seconds, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def rooms():
    """The library that each source goes into, as its target's name."""
    with open(BUILD / "compile_commands.json") as commands:
        return {unit["file"]: re.search(r"CMakeFiles/(\w+)\.dir", unit["command"])[1] for unit in json.load(commands)}


def build(arguments):
    subprocess.run(["cmake", "--preset", "mutations"], cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    room = rooms()
    for number, line in enumerate(open(arguments.list)):
        fault = json.loads(line)
        folder = pathlib.Path(arguments.folder) / f"{number:03}"
        if folder.exists():
            continue
        path = ROOT / fault["file"]
        text = path.read_text()
        target = room[str(path)]
        try:
            path.write_text(text.replace(fault["line"] + "\n", fault["instead"] + "\n"))
            built = passes(["cmake", "--build", str(BUILD), "--target", target], 1800)
        finally:
            path.write_text(text)
        folder.mkdir(parents=True)
        if built:
            shutil.copy(next(BUILD.rglob(f"lib{target}.so")), folder)
        (folder / "fault.json").write_text(json.dumps(fault))


def failing(folder, selection):
    """The first test of the selection that fails with the folder's library, or None."""
    run = ["ctest", "--test-dir", str(BUILD), "-j", "2", "--stop-on-failure", "--timeout", "300", *selection]
    told = subprocess.run(run, cwd=ROOT, env=dict(os.environ, LD_LIBRARY_PATH=str(folder)), stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True, check=False).stdout
    found = re.search(r"^\s*\d+ - (\S+) \(", told, re.M)
    return found[1] if found else None


def outcome(folder, earlier):
    fault = json.loads((folder / "fault.json").read_text())
    if not list(folder.glob("*.so")):
        return dict(fault, outcome="does not compile")
    near = "/".join(fault["file"].split("/")[1:3 if fault["file"].startswith("src/platform") else 2])
    begun = [["-R", f"^{earlier}$"]] if earlier else []
    for selection in begun + [["-L", f"^{near}$", "-E", "^tidy$"], ["-LE", f"^{near}$", "-E", "^tidy$"]]:
        test = failing(folder, selection)
        if test:
            return dict(fault, outcome="caught", by=test)
    return dict(fault, outcome="missed")


def run(arguments):
    folders = sorted(path.parent for path in pathlib.Path(arguments.folder).glob("*/fault.json"))
    earlier = [json.loads(line) for line in open(arguments.earlier)] if arguments.earlier else []
    result = pathlib.Path(arguments.result)
    done = len(result.read_text().splitlines()) if result.exists() else 0
    if not done and failing(result.parent, ["-E", "^tidy$"]):
        sys.exit("without a fault the tests must pass")
    with open(result, "a") as out:
        for number in range(done, len(folders)):
            began = time.monotonic()
            told = outcome(folders[number], earlier[number].get("by") if number < len(earlier) else None)
            out.write(json.dumps(dict(told, seconds=round(time.monotonic() - began))) + "\n")
            out.flush()
    found = [json.loads(line)["outcome"] for line in open(result)]
    print(", ".join(f"{found.count(kind)} {kind}" for kind in sorted(set(found))))


parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
commands = parser.add_subparsers(required=True)
one = commands.add_parser("choose")
one.add_argument("--count", type=int, default=100)
one.add_argument("--seed", type=int, default=1)
one.add_argument("list")
one.set_defaults(do=choose)
two = commands.add_parser("build")
two.add_argument("list")
two.add_argument("folder")
two.set_defaults(do=build)
three = commands.add_parser("run")
three.add_argument("folder")
three.add_argument("result")
three.add_argument("--earlier")
three.set_defaults(do=run)
given = parser.parse_args()
given.do(given)
