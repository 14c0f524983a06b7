#!/usr/bin/env python3
"""Do the tests catch faults? Puts a seeded set of small faults into src/, one at a time, and runs the tests.

    mutations.py choose [--count N] [--seed S] LIST    writes N faults, a JSON line each
    mutations.py run LIST RESULT                       builds and tests each; goes on where it stopped

A fault is an operator or a bound turned, or a call dropped. It is known by its file and the whole text of its
line, so that one list serves while the sources around it change; a line that is gone is reported as such.
Run it in a checkout of its own: it edits src/ and puts it back.
"""
import argparse
import json
import pathlib
import random
import re
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


def build():
    return passes(["cmake", "--build", str(BUILD)], 1800)


def tests(near):
    """The tests of the fault's own room first: most faults are caught there."""
    run = ["ctest", "--test-dir", str(BUILD), "-j", "2", "--stop-on-failure", "--timeout", "100"]
    return passes(run + ["-L", f"^{near}$"], 900) and passes(run + ["-LE", f"^{near}$", "-E", "^tidy$"], 1800)


def outcome(fault):
    path = ROOT / fault["file"]
    text = path.read_text() if path.exists() else ""
    if text.split("\n").count(fault["line"]) != 1:
        return "gone"
    near = "/".join(fault["file"].split("/")[1:3 if fault["file"].startswith("src/platform") else 2])
    try:
        path.write_text(text.replace(fault["line"] + "\n", fault["instead"] + "\n"))
        if not build():
            return "does not compile"
        return "missed" if tests(near) else "caught"
    finally:
        path.write_text(text)


def run(arguments):
    subprocess.run(["cmake", "--preset", "mutations"], cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    if not build() or not tests("none"):
        sys.exit("without a fault the tests must pass")
    faults = [json.loads(line) for line in open(arguments.list)]
    result = pathlib.Path(arguments.result)
    done = len(result.read_text().splitlines()) if result.exists() else 0
    with open(result, "a") as out:
        for fault in faults[done:]:
            began = time.monotonic()
            fault["outcome"] = outcome(fault)
            fault["seconds"] = round(time.monotonic() - began)
            out.write(json.dumps(fault) + "\n")
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
two = commands.add_parser("run")
two.add_argument("list")
two.add_argument("result")
two.set_defaults(do=run)
given = parser.parse_args()
given.do(given)
