#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints the headers to install, one path below src/ a line.

Public are the headers named after what they export (Qor*.h, Sv*.h, I*.h and displayErrorMessage.h), and whatever these
include; cli/ has none."""
import pathlib
import re
import sys

PUBLIC = re.compile(r'Qor|Sv[A-Z]|ISequence|ISortedSet|displayErrorMessage')
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def public_headers(src: pathlib.Path) -> list[str]:
    pending = [path for path in src.glob("**/*.h")
               if PUBLIC.match(path.name) and path.relative_to(src).parts[0] != "cli"]
    found = set(pending)
    while pending:
        for name in INCLUDE.findall(pending.pop().read_text(encoding="utf-8")):
            included = src / name
            if included not in found:
                found.add(included)
                pending.append(included)
    return sorted(str(path.relative_to(src)) for path in found)


if __name__ == "__main__":
    print("\n".join(public_headers(pathlib.Path(sys.argv[1]))))
