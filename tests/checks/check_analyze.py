#!/usr/bin/env python3
"""Compares `kvxostrace analyze --json` with the sums of a log's own dispatch and handler lines.

usage: check_analyze.py PROGRAM FOLDER   every ITRON kernel text log below the folder
       check_analyze.py --self-test      the sums of a small log written below

Exit status 77: there is no log to compare with.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
from collections import Counter, defaultdict

LINE = re.compile(r"^\[(\d+)\](?::\[(\d+)\])?:? (.*)$")
# A task exception routine runs as its task.
HANDLER = re.compile(r"(enter to|leave from|leave to) "
                     r"(int handler|exc handler|isr|cyclic handler|alarm handler) (\d+)")
DISPATCH = re.compile(r"dispatch (to|from) task (\d+)")
STATE = re.compile(r"task (\d+) becomes (DORMANT|WAITING|SUSPENDED|WAITING-SUSPENDED)")
IDLE = ("task", 0)


def read(path):
    """Lines by processor, in order of time."""
    cores = defaultdict(list)
    for line in path.read_bytes().decode("utf-8-sig", "replace").splitlines():
        match = LINE.match(line.strip())
        if match:
            cores[int(match[2] or 0)].append((int(match[1]), match[3]))
    for lines in cores.values():
        lines.sort(key=lambda line: line[0])
    return cores


class Sums:
    """Who had the processor from when to when, cut to the range."""

    def __init__(self, start, end):
        self.start, self.end = start, end
        self.total = defaultdict(int)
        self.num = defaultdict(int)
        self.base = None  # the task below the handlers; None: not known
        self.handlers = []
        self.owner, self.since = None, None

    def switch(self, time):
        owner = self.handlers[-1] if self.handlers else self.base
        if self.owner is not None:
            begin, end = max(self.since, self.start), min(time, self.end)
            if self.since < self.end and time > self.start:
                self.total[self.owner] += end - begin
                self.num[self.owner] += 1
        self.owner, self.since = owner, time

    def line(self, time, text, rest):
        handler, dispatch, state = HANDLER.match(text), DISPATCH.match(text), STATE.match(text)
        if dispatch:
            task = ("task", int(dispatch[2]))
            left = dispatch[1] == "from"
            if left and not self.handlers and self.base == IDLE:
                return
            self.handlers = []
            self.base = IDLE if left else task
        elif handler:
            which = (handler[2], int(handler[3]))
            if handler[1] == "enter to":
                self.handlers.append(which)
            elif which in self.handlers:
                while self.handlers.pop() != which:
                    pass
            else:
                return
        elif state and not self.handlers and self.base == ("task", int(state[1])):
            # A running task that waits leaves the processor idle, unless a dispatch says who is next.
            if dispatch_follows(rest, int(state[1])):
                return
            self.base = IDLE
        else:
            return
        self.switch(time)


def sum_lines(lines, start, end):
    sums = Sums(start, end)
    for at, (time, text) in enumerate(lines):
        sums.line(time, text, lines[at + 1:at + 50])
    sums.switch(end)
    return sums


def dispatch_follows(lines, task):
    """Whether the next thing that the log says is who has the processor instead of the task."""
    for _, text in lines:
        dispatch = DISPATCH.match(text)
        if dispatch:
            return dispatch[1] == "from" or int(dispatch[2]) != task
        if HANDLER.match(text) or STATE.match(text) or text.startswith(("enter to", "leave")):
            return False
    return False


def analyze(program, log, core):
    command = [program, "analyze", str(log), "--cpu", str(core), "--table", "run-time", "--json"]
    return json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)


def rows(owners):
    """Tasks by number; handlers, which the log numbers by kind, by their sums alone."""
    tasks = [(number, sums) for (kind, number), sums in owners if kind == "task"]
    handlers = [("handler", sums) for (kind, _), sums in owners if kind != "task"]
    return Counter(tasks + handlers)


def compare(program, log):
    """What differs, as texts."""
    faults = []
    for core, lines in read(log).items():
        result = analyze(program, log, core)
        sums = sum_lines(lines, result["range"]["start"], result["range"]["end"])
        expected = rows([(o, (sums.num[o], sums.total[o])) for o in sums.total])
        kinds = {1: "handler", 2: "task"}
        actual = rows([((kinds[r["type"]], r["number"]), (r["num"], r["total"]))
                       for r in result["run_time"] if r["num"] and r["type"] in kinds])
        for missing in expected - actual:
            faults.append(f"{log} processor {core}: the log gives {missing}, analyze does not")
        for extra in actual - expected:
            faults.append(f"{log} processor {core}: analyze gives {extra}, the log does not")
        covered = sum(r["ratio"] for r in result["run_time"])
        if abs(covered - 1) > 1e-9:
            faults.append(f"{log} processor {core}: the ratios add up to {covered}")
    return faults


def is_text_log(path):
    lines = path.read_bytes()[:2000].decode("utf-8-sig", "replace").splitlines()
    return any(DISPATCH.search(line) for line in lines)


SAMPLE = """\
[10] dispatch to task 1.
[20] enter to int handler 2.
[25] enter to int handler 3.
[26] leave from int handler 3.
[30] leave from int handler 2.
[40] task 1 becomes WAITING.
[40] dispatch from task 1.
[50] dispatch to task 2.
[60] task 2 becomes WAITING.
[70] dispatch to task 1.
"""


def self_test():
    lines = [(int(m[1]), m[3]) for m in map(LINE.match, SAMPLE.splitlines())]
    sums = sum_lines(lines, 15, 80)
    assert dict(sums.total) == {("task", 1): 5 + 10 + 10, ("int handler", 2): 9,
                                ("int handler", 3): 1, IDLE: 10, ("task", 2): 20}, sums.total
    assert sums.num[("task", 1)] == 3 and sums.num[("int handler", 2)] == 2


def main():
    self_test()
    if sys.argv[1:] == ["--self-test"]:
        return 0
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    logs = sorted(log for log in folder.rglob("*.log") if is_text_log(log))
    if not logs:
        print(f"skipped: no log below {folder}")
        return 1 if "KVX_MUST_RUN" in os.environ else 77
    faults = [fault for log in logs for fault in compare(program, log)]
    print("\n".join(faults) or f"{len(logs)} logs agree")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
