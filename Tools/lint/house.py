"""What the checks share: where the sources are, which headers are public, how a check reports."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCES = ROOT / "Sources"

# Headers in these folders belong to the library alone; Detail is what the templates of public headers need.
PRIVATE_FOLDERS = {"Private", "Detail", "BackEnd"}

INCLUDE = re.compile(r"^[ \t]*#[ \t]*include[ \t]*([<\"])([^>\"]+)[>\"]", re.MULTILINE)


def tracked_files(*patterns):
    """The files that belong to the repository, new ones included, as paths."""
    listing = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "-z", "--", *patterns],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout
    paths = (ROOT / name for name in sorted(set(listing.split("\0"))) if name)
    return [path for path in paths if path.is_file()]


def is_public_header(path):
    """Whether hosts may include this header, given by its path below Sources."""
    return path.suffix == ".hpp" and not PRIVATE_FOLDERS & set(path.parts)


def includes(text):
    """Line number, opening mark and name of every include."""
    return [(line_of(text, match.start(1)), match[1], match[2]) for match in INCLUDE.finditer(text)]


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def report(findings):
    """Prints `(path, line, message)` findings and ends the check."""
    for path, line, message in findings:
        print(f"{path}:{line}: {message}")
    sys.exit(1 if findings else 0)
