#!/usr/bin/env python3
"""Checks that README.md shows the programs that are compiled in Examples/Readme, word for word."""

import re

import house

PROGRAMS = "Examples/Readme/*.cpp"
README = house.ROOT / "README.md"
MARKED = re.compile(r"^// \[readme\]\n(.*?)^// \[readme\]$", re.MULTILINE | re.DOTALL)
SHOWN = re.compile(r"^```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def findings_in(readme, programs):
    """Lines and messages: the page shows nothing but the marked parts of the programs, and all of them."""
    marked = {match[1].strip() for program in programs for match in MARKED.finditer(program)}
    shown = {match[1].strip(): house.line_of(readme, match.start()) for match in SHOWN.finditer(readme)}
    found = [(line, f"is no marked part of a program in {PROGRAMS}")
             for snippet, line in shown.items() if snippet not in marked]
    if not marked:
        found.append((1, f"no program in {PROGRAMS} marks a part with // [readme]"))
    if marked - shown.keys():
        found.append((1, f"does not show every marked part of {PROGRAMS}"))
    return found


def main():
    programs = [path.read_text() for path in house.tracked_files(PROGRAMS)]
    found = findings_in(README.read_text(), programs)
    house.report([(README.relative_to(house.ROOT), line, message) for line, message in found])


if __name__ == "__main__":
    main()
