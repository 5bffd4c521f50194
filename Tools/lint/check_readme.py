#!/usr/bin/env python3
"""Checks that README.md shows the program that is compiled as Examples/Readme, word for word."""

import re

import house

PROGRAM = house.ROOT / "Examples/Readme/main.cpp"
README = house.ROOT / "README.md"
MARKED = re.compile(r"^// \[readme\]\n(.*?)^// \[readme\]$", re.MULTILINE | re.DOTALL)
SHOWN = re.compile(r"^```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def findings_in(readme, program):
    """Line and message, when the first C++ snippet of the page is not the marked part of the program."""
    marked = MARKED.search(program)
    shown = SHOWN.search(readme)
    if not marked:
        return [(1, "the program marks no part with // [readme]")]
    if not shown:
        return [(1, "the page shows no C++")]
    if marked[1].strip() != shown[1].strip():
        return [(house.line_of(readme, shown.start()), f"differs from {PROGRAM.relative_to(house.ROOT)}")]
    return []


def main():
    found = findings_in(README.read_text(), PROGRAM.read_text())
    house.report([(README.relative_to(house.ROOT), line, message) for line, message in found])


if __name__ == "__main__":
    main()
