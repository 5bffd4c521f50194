#!/usr/bin/env python3
"""Checks who includes whom: downwards only, and no third party's header in a public one."""

import re
from pathlib import Path

import house

# From the ground up; a folder may include its own files and those of the folders above it in this list.
LAYERS = [
    "Platform/System",
    "Platform/Concurrency",
    "Platform/Coding",
    "Platform/Events",
    "Platform/URLLoading",
    "TovrelContracts",
    "QZFrameworkCoreLogic",
    "QZFrameworkCoreUI",
    "TovrelWebServices/Support",
    "TovrelWebServices/Transport",
    "TovrelWebServices/Services",
    "TovrelWebServices/Tovrel Accounts",
    "TovrelWebServices/SignIn",
    "TovrelWebServices/AccountScreens",
    "TovrelTesting",
]

# Where a file has to know the layer above, it is a knot of this one file, never a ring of includes.
KNOTS = {
    # The log writes from a queue of its own, off its callers' threads.
    ("Platform/System/Logger.cpp", "Platform/Concurrency"),
    # The description of a bundle is a property list.
    ("Platform/System/Bundle.cpp", "Platform/Coding"),
    # A request carries its environment and its retry strategy.
    ("TovrelWebServices/Transport/WebRequest.hpp", "TovrelWebServices/Services"),
    ("TovrelWebServices/Transport/WebRequestable.cpp", "TovrelWebServices/Services"),
    # The predicates look into the errors of every family.
    ("TovrelWebServices/Transport/ErrorPredicates.cpp", "TovrelWebServices/SignIn"),
    # The domain services send with the accounts service's token, which itself calls the API service.
    ("TovrelWebServices/Services/Private/AccountsAccess.cpp", "TovrelWebServices/Tovrel Accounts"),
    # The accounts service asks the sign-in service for the state of the credential.
    ("TovrelWebServices/Tovrel Accounts/Default/DefaultTovrelAccountsWebService.cpp", "TovrelWebServices/SignIn"),
}

# The async vocabulary, the only third-party types in the interface, and where it is.
ASYNC_HEADER = "Platform/Concurrency/Async.hpp"
ASYNC_INCLUDES = {
    "boost/asio/any_io_executor.hpp",
    "boost/asio/awaitable.hpp",
    "boost/version.hpp",
}
# The one room that knows the toolkit, and how it names the toolkit's headers.
TOOLKIT_FOLDER = "TovrelWebServices/AccountScreens/"
SCREENS_UMBRELLA = TOOLKIT_FOLDER + "AccountScreens.hpp"
TOOLKIT_HEADER = re.compile(r"Qt[A-Z][A-Za-z]*/[A-Za-z]+(\.h)?")
STANDARD_HEADER = re.compile(r"[a-z_0-9]+(\.h)?")


def layer_of(name):
    """The position of a file's folder in the list, or None for umbrella headers."""
    for position, folder in enumerate(LAYERS):
        if name.startswith(folder + "/"):
            return position
    return None


def is_umbrella(name):
    path = Path(name)
    return name == SCREENS_UMBRELLA or path.suffix == ".hpp" and len(path.parts) == 2 and path.stem == path.parent.name


def interface_of(texts):
    """The public headers and all that they include in turn, from a map of names to texts."""
    pending = [name for name in texts if house.is_public_header(Path(name))]
    seen = set(pending)
    while pending:
        for _, _, included in house.includes(texts[pending.pop()]):
            if included in texts and included not in seen:
                seen.add(included)
                pending.append(included)
    return seen


def findings_in(texts):
    """Findings in a map of file names, relative to Sources, to their texts."""
    found = []
    interface = interface_of(texts)
    for name, text in sorted(texts.items()):
        layer = layer_of(name)
        if layer is None and not is_umbrella(name):
            found.append((name, 1, "this folder has no place among the layers"))
        for line, mark, included in house.includes(text):
            included_layer = layer_of(included)
            if mark == '"':
                found.append((name, line, f"include by its full name: <{included}>"))
            elif is_umbrella(included):
                found.append((name, line, "umbrella headers are for hosts"))
            elif layer is not None and included_layer is not None and included_layer > layer:
                if (name, LAYERS[included_layer]) in KNOTS:
                    continue
                found.append((name, line, f"{LAYERS[layer]} must not include {LAYERS[included_layer]}"))
            elif name in interface and included_layer is None and not STANDARD_HEADER.fullmatch(included):
                is_toolkit = name.startswith(TOOLKIT_FOLDER) and TOOLKIT_HEADER.fullmatch(included)
                if not is_toolkit and (name != ASYNC_HEADER or included not in ASYNC_INCLUDES):
                    found.append((name, line, f"a third party's header in the interface: {included}"))
    return found


def main():
    files = house.tracked_files("Sources/*.hpp", "Sources/*.cpp")
    texts = {str(path.relative_to(house.SOURCES)): path.read_text() for path in files}
    house.report([(f"Sources/{name}", line, message) for name, line, message in findings_in(texts)])


if __name__ == "__main__":
    main()
