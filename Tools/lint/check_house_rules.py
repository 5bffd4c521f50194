#!/usr/bin/env python3
"""Checks the small rules that no compiler knows."""

import re

import house

CODE = {".hpp", ".cpp", ".h"}
TEXT = CODE | {".cmake", ".txt", ".md", ".py", ".in", ".json", ""}

UNFINISHED = re.compile(r"\b(TO" r"DO|FIX" r"ME|XX" r"X)\b")
IDLE_TEST = re.compile(r"\bDISABLED" r"_\w+")

# Task starts every coroutine; a second way would bring its own cancellation rules. The back end for tests is a server
# on a thread of its own.
STARTS_COROUTINE = re.compile(r"\bco_spawn\s*\(")
STARTERS = ("Sources/Platform/Concurrency/Task.cpp", "Sources/TovrelTesting/BackEnd/")


def findings_in(name, text):
    """Line and message of each breach in one file."""
    suffix = "." + name.rsplit(".", 1)[1] if "." in name.rsplit("/", 1)[-1] else ""
    found = []

    def search(pattern, message):
        for match in pattern.finditer(text):
            found.append((house.line_of(text, match.start()), message))

    if suffix in TEXT and not name.startswith("Fuzz/corpus/"):
        search(UNFINISHED, "finish it, or leave it out")
    if suffix in CODE:
        search(IDLE_TEST, "a test that does not run")
        search(re.compile(r"\t"), "a tab")
        if not text.endswith("\n"):
            found.append((text.count("\n") + 1, "no line end at the end of the file"))
    if suffix == ".hpp" and "#pragma once" not in text:
        found.append((1, "a header without #pragma once"))
    if name.startswith("Sources/") and not name.startswith(STARTERS):
        search(STARTS_COROUTINE, "coroutines are started by Task alone")
    return found


def main():
    found = []
    for path in house.tracked_files():
        name = str(path.relative_to(house.ROOT))
        try:
            text = path.read_text()
        except UnicodeDecodeError:
            continue
        found += [(name, line, message) for line, message in findings_in(name, text)]
    house.report(found)


if __name__ == "__main__":
    main()
