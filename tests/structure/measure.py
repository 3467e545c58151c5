#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Measures the sources: how long and how deep functions are, how long files, what is documented,
how much is tested, the biggest class over all its files, and the habit of commits.

    tests/structure/measure.py [folder]     prints one table for src, or for another folder

Functions run from their first word to their closing brace. Nesting counts the conditions and loops
around a statement. Documented is what has a /// comment before it: classes in headers, and in them
the public methods that begin something new (see cpp_shape.Method). The lines of the biggest class
are those of its header and of every file that defines a method of it.
"""

import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path
from statistics import median

import cpp_shape

TOP = Path(__file__).resolve().parents[2]
PERCENTILE = 0.95


@dataclass
class Spread:
    """Of some numbers: the middle one, the one that 95 % of them do not pass, the greatest."""

    middle: int
    most: int
    greatest: int

    @staticmethod
    def of(numbers):
        if not numbers:
            return Spread(0, 0, 0)
        ordered = sorted(numbers)
        rank = -int(-PERCENTILE * len(ordered) // 1)
        return Spread(round(median(ordered)), ordered[rank - 1], ordered[-1])


@dataclass
class ClassSize:
    """What a class takes: the lines of all its files, its methods, its files."""

    name: str
    lines: int
    methods: int
    files: int


def sources_in(folder):
    """Path to text of the C++ files under the folder."""
    paths = sorted(path for path in folder.rglob("*") if path.suffix in (".h", ".cpp"))
    return {path: path.read_text(encoding="utf-8") for path in paths}


def lines_of(sources):
    return sum(text.count("\n") for text in sources.values())


def share(yes):
    """Of some truths those that hold, in per cent."""
    yes = list(yes)
    return round(100 * sum(yes) / len(yes)) if yes else 0


def headers(shapes):
    return [shape for path, shape in shapes.items() if path.suffix == ".h"]


def documented_classes(shapes):
    return share(found.documented for shape in headers(shapes) for found in shape.classes)


def documented_methods(shapes):
    return share(
        method.documented
        for shape in headers(shapes)
        for found in shape.classes
        for method in found.methods
        if method.promised
    )


def biggest_class(sources, shapes):
    """The ClassSize of the class whose files have most lines; None without classes."""
    sizes = [
        size_of(found, path, sources, shapes)
        for path, shape in shapes.items()
        if path.suffix == ".h"
        for found in shape.classes
    ]
    return max(sizes, key=lambda size: (size.lines, size.methods), default=None)


def size_of(found, header, sources, shapes):
    files = {header} | {
        path
        for path, shape in shapes.items()
        if any(function.owner == found.name for function in shape.functions)
    }
    lines = sum(sources[path].count("\n") for path in files)
    return ClassSize(found.name, lines, len(found.methods), len(files))


def commit_habit(log):
    """(share with a body, median of changed lines) of a log in the form that git_log asks for."""
    bodies, changes = [], []
    for commit in log.split("\x1e")[1:]:
        body, _, numbers = commit.partition("\x1f")
        bodies.append(bool(body.strip()))
        counts = [line.split("\t")[:2] for line in numbers.splitlines() if "\t" in line]
        changes.append(sum(int(count) for pair in counts for count in pair if count.isdigit()))
    return share(bodies), round(median(changes)) if changes else 0


def git_log(top):
    """Every commit but the merges: its body, and its files' added and removed lines. Empty where
    there is no history, or nothing to read it with."""
    command = ["git", "-C", top, "log", "--no-merges", "--numstat", "--format=%x1e%b%x1f"]
    try:
        done = subprocess.run(command, capture_output=True, text=True, check=False)
    except FileNotFoundError:
        return ""
    return done.stdout if done.returncode == 0 else ""


def table(top, folder):
    """The rows of what is measured: (what, figures)."""
    sources = sources_in(top / folder)
    shapes = {path: cpp_shape.read(text) for path, text in sources.items()}
    functions = [function for shape in shapes.values() for function in shape.functions]
    length = Spread.of([function.lines for function in functions])
    depth = Spread.of([function.nesting for function in functions])
    files = Spread.of([text.count("\n") for text in sources.values()])
    tests = lines_of(sources_in(top / "tests")) / max(lines_of(sources), 1)
    biggest = biggest_class(sources, shapes) or ClassSize("none", 0, 0, 0)
    bodies, changed = commit_habit(git_log(top))
    return [
        ("function lines, median / 95 % / longest", spread(length)),
        ("file lines, median / 95 % / longest", spread(files)),
        ("nesting, 95 % / deepest", f"{depth.most} / {depth.greatest}"),
        (
            "classes / public methods documented",
            f"{documented_classes(shapes)} / {documented_methods(shapes)} %",
        ),
        ("test lines to source lines", f"{tests:.2f}"),
        (
            "biggest class: lines in all its files",
            f"{biggest.lines:,}, {biggest.methods} methods, {biggest.files} files ({biggest.name})",
        ),
        ("commits with a body; lines a commit, median", f"{bodies} %; {changed}"),
    ]


def spread(numbers):
    return f"{numbers.middle} / {numbers.most} / {numbers.greatest}"


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else "src"
    print(f"| | {folder} |\n|---|---|")
    for what, figures in table(TOP, folder):
        print(f"| {what} | {figures} |")


if __name__ == "__main__":
    main()
