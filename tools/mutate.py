#!/usr/bin/env python3
"""Changes the code in small ways, one at a time, and lists the changes that no test notices.

tools/mutate.py [--count N] [--seed S] [--since COMMIT] [--target PROGRAM]... [FILE]...

Places are drawn by the seed from the files (by default all sources), with --since only from lines
changed since that commit. Each gets one small change: of a comparison, a sign, a minimum, an
"and", or of a number behind an operator, by one. The test programs (by default terravo_unit_tests) are built and run in build/dev,
and the file is put back. What is listed at the end is a hole in the tests, or a change that makes no
difference: a person has to look.
"""
import argparse
import random
import re
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# The layout of the code tells operators from brackets of templates: those have no blanks around.
CHANGES = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "),
    (r"(?<=[\w)\]]) \+ (?=[\w(])", " - "), (r"(?<=[\w)\]]) - (?=[\w(])", " + "),
    (r" \+= ", " -= "), (r" -= ", " += "),
    (r"(?<=[(=,] )-(?=\w)|(?<=\()-(?=\w)|(?<=return )-(?=\w)", ""),
    (r"std::min\b", "std::max"), (r"std::max\b", "std::min"),
    (r" && ", " || "), (r" \|\| ", " && "),
    (r"(?<=(?: [-+*/<>]|[<>=!]=) )\d+(?![\w.'])", lambda m: str(int(m.group()) + 1)),
]
NOT_CODE = re.compile(r'//.*|"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'')
NO_STATEMENT = re.compile(r"^\s*(#|template\b|static_assert\b|using\b|namespace\b)")


def places(path, lines_wanted):
    """Every change that the file offers: line from 1, column, old and new text."""
    found = []
    for number, line in enumerate(path.read_text().split("\n"), 1):
        if NO_STATEMENT.match(line) or (lines_wanted is not None and number not in lines_wanted):
            continue
        code = NOT_CODE.sub(lambda m: "\0" * len(m.group()), line)
        for pattern, new in CHANGES:
            for match in re.finditer(pattern, code):
                text = new(match) if callable(new) else new
                found.append((path, number, match.start(), match.group(), text))
    return found


def lines_since(commit, path):
    """Numbers of the lines that are new since the commit."""
    diff = subprocess.run(["git", "diff", "-U0", commit, "--", path], cwd=ROOT, check=True,
                          capture_output=True, text=True).stdout
    lines = set()
    for start, count in re.findall(r"^@@ .* \+(\d+)(?:,(\d+))? @@", diff, re.M):
        lines.update(range(int(start), int(start) + int(count or 1)))
    return lines


def changed(line, column, old, new):
    assert line[column:column + len(old)] == old
    return line[:column] + new + line[column + len(old):]


def passes(command, seconds, cwd=ROOT):
    """Whether a command succeeds in time."""
    try:
        return subprocess.run(command, cwd=cwd, timeout=seconds, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0
    except subprocess.TimeoutExpired:
        return False


class Tests:
    """The test programs of a build."""

    def __init__(self, targets):
        self.targets = targets
        self.build = ROOT / "build" / "dev"
        self.seconds = 600

    def are_built(self):
        return passes(["cmake", "--build", self.build, "--target", *self.targets], 3600)

    def all_pass(self):
        return all(passes([self.build / "bin" / name, "--gtest_fail_fast", "--gtest_brief=1"],
                          self.seconds, self.build / "tests") for name in self.targets)

    def learn_time(self):
        """The time that the tests may take: a change can make a loop endless."""
        built = self.are_built()
        began = time.monotonic()
        if not built or not self.all_pass():
            sys.exit("The tests do not pass as the code is: nothing can be learnt.")
        self.seconds = 30 + 5 * (time.monotonic() - began)


def outcome(tests, place):
    """What comes of one change; the file is as before afterwards, whatever happens."""
    path, number, column, old, new = place
    before = path.read_bytes()
    lines = before.decode().split("\n")
    lines[number - 1] = changed(lines[number - 1], column, old, new)
    try:
        path.write_text("\n".join(lines))
        if not tests.are_built():
            return "not built"
        return "MISSED" if tests.all_pass() else "noticed"
    finally:
        path.write_bytes(before)


def told(place):
    path, number, column, old, new = place
    line = path.read_text().split("\n")[number - 1]
    return (f"{path.relative_to(ROOT)}:{number}: {old.strip()} -> {new.strip() or 'nothing'}   "
            f"{changed(line, column, old, '[' + old.strip() + ']').strip()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--count", type=int, default=15, help="changes to try (15)")
    parser.add_argument("--seed", type=int, default=1, help="another seed, other places (1)")
    parser.add_argument("--since", metavar="COMMIT", help="only lines changed since then")
    parser.add_argument("--target", action="append", metavar="PROGRAM", help="test program to run")
    parser.add_argument("files", nargs="*", metavar="FILE")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("stopped"))

    files = [Path(name).resolve() for name in options.files] or \
        sorted(p for p in (ROOT / "src").rglob("*") if p.suffix in (".cpp", ".h"))
    offered = []
    for path in files:
        offered += places(path, lines_since(options.since, path) if options.since else None)
    drawn = random.Random(options.seed).sample(offered, min(options.count, len(offered)))

    tests = Tests(options.target or ["terravo_unit_tests"])
    tests.learn_time()
    counts = {"noticed": 0, "not built": 0, "MISSED": 0}
    missed = []
    for place in drawn:
        result = outcome(tests, place)
        counts[result] += 1
        print(f"{result:10}{told(place)}", flush=True)
        if result == "MISSED":
            missed.append(place)
    print(f"{len(drawn)} of {len(offered)} changes: {counts['noticed']} noticed, "
          f"{counts['MISSED']} missed, {counts['not built']} that do not compile")
    for place in missed:
        print(f"missed    {told(place)}")


if __name__ == "__main__":
    main()
