#!/usr/bin/env python3
"""Compares `kvxostrace analyze --json` with the sums of a log's own dispatch and handler lines.

usage: check_analyze.py PROGRAM FOLDER   every ITRON kernel text log below the folder
       check_analyze.py --self-test      the sums of a small log written below

Exit status 77: there is no log to compare with.
"""
import json
import pathlib
import re
import subprocess
import sys
from collections import defaultdict

LINE = re.compile(r"^\[(\d+)\](?::\[(\d+)\])?:? (.*)$")
HANDLER = re.compile(r"(?:task \d+ )?(enter to|leave from|leave to) "
                     r"(int handler|exc handler|cyclic handler|alarm handler|isr|tex) (\d+)")
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

    def line(self, time, text, followed_by):
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
            if followed_by:
                return
            self.base = IDLE
        else:
            return
        self.switch(time)


def sum_lines(lines, start, end):
    sums = Sums(start, end)
    for at, (time, text) in enumerate(lines):
        sums.line(time, text, dispatch_follows(lines[at + 1:at + 9]))
    sums.switch(end)
    return sums


def dispatch_follows(lines):
    for _, text in lines:
        if DISPATCH.match(text):
            return True
        if HANDLER.match(text) or STATE.match(text) or text.startswith(("enter to", "leave")):
            return False
    return False


def analyze(program, log, core):
    command = [program, "analyze", str(log), "--cpu", str(core), "--table", "run-time", "--json"]
    return json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
