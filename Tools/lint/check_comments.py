#!/usr/bin/env python3
"""Checks that everything exported says what it means."""

import re

import house

DETAIL = re.compile(r"^namespace detail \{$.*?^\} // namespace detail$", re.MULTILINE | re.DOTALL)
EXPORTED = re.compile(r"^(?![ \t]*#).*\bTOVREL_EXPORT\b.*$", re.MULTILINE)
FORWARD = re.compile(r"\b(class|struct) TOVREL_EXPORT \w+;")
BEFORE_A_NAME = re.compile(r"\s*(template|requires|\[\[)")


def findings_in(text):
    """Line and message of each exported class or function without a comment."""
    text = DETAIL.sub(lambda match: "\n" * match[0].count("\n"), text)
    lines = text.split("\n")
    found = []
    for match in EXPORTED.finditer(text):
        line = house.line_of(text, match.start())
        above = line - 2
        while above >= 0 and BEFORE_A_NAME.match(lines[above]):
            above -= 1
        if not FORWARD.search(match[0]) and not (above >= 0 and lines[above].lstrip().startswith("///")):
            found.append((line, "exported without a /// comment"))
    return found


def main():
    headers = [path for path in house.tracked_files("Sources/*.hpp")
               if house.is_public_header(path.relative_to(house.SOURCES))]
    house.report([(path.relative_to(house.ROOT), line, message)
                  for path in headers for line, message in findings_in(path.read_text())])


if __name__ == "__main__":
    main()
