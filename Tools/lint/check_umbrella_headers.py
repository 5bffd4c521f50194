#!/usr/bin/env python3
"""Checks that each library's umbrella header includes all its public headers; --fix completes them."""

import sys

import house

LIBRARIES = {
    "Platform": ["Platform"],
    "TovrelWebServices": ["TovrelContracts", "QZFrameworkCoreLogic", "QZFrameworkCoreUI", "TovrelWebServices"],
    "TovrelWebServices/AccountScreens": ["TovrelWebServices/AccountScreens"],
    "TovrelTesting": ["TovrelTesting"],
}


def umbrella_of(library):
    """The name of a library's umbrella header: its folder and that folder's name."""
    return f"{library}/{library.rsplit('/', 1)[-1]}.hpp"


def folder_of(name):
    """The longest of the libraries' folders that holds this header, or None."""
    folders = {folder for library in LIBRARIES.values() for folder in library}
    return max((folder for folder in folders if name.startswith(folder + "/")), key=len, default=None)


def wanted_includes(library, names):
    """The public headers of a library, from the names of all headers, in order."""
    return sorted((name for name in names
                   if folder_of(name) in LIBRARIES[library] and name != umbrella_of(library)), key=str.lower)


def completed(text, wanted):
    """An umbrella header's text with exactly the wanted includes; the words above them stay."""
    head = text.split("#include", 1)[0].rstrip()
    return head + "\n\n" + "".join(f"#include <{name}>\n" for name in wanted)


def main():
    files = [path.relative_to(house.SOURCES) for path in house.tracked_files("Sources/*.hpp")]
    names = [str(path) for path in files if house.is_public_header(path)]
    found = []
    for library in LIBRARIES:
        umbrella = house.SOURCES / umbrella_of(library)
        wanted = wanted_includes(library, names)
        if not wanted:
            continue
        text = umbrella.read_text() if umbrella.exists() else f"#pragma once\n\n/// @file\n/// All of {umbrella.stem}.\n"
        if completed(text, wanted) != text or not umbrella.exists():
            if "--fix" in sys.argv[1:]:
                umbrella.write_text(completed(text, wanted))
            else:
                found.append((umbrella.relative_to(house.ROOT), 1, "not complete: run ./dev format"))
    house.report(found)


if __name__ == "__main__":
    main()
