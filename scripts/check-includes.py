#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks the include lines of src/: they follow the arrows between the folders, name only what the folder may use,
and close no circle of files. Prints every violation as file:line and ends with 1 if there is one."""
import argparse
import fnmatch
import pathlib
import re
import sys

# Who may include whom; a folder may always include itself.
ARROWS = {
    "platform": set(),
    "frame": {"platform"},
    "cardinality": {"platform"},
    "simmap": {"platform", "frame"},
    "modeltools": {"platform", "frame", "cardinality"},
    "admin": {"platform", "frame"},
    "simcal": {"platform"},
    "embedded": {"platform"},
    "interchange": {"platform", "embedded", "simcal"},
    "cli": {"platform", "frame", "cardinality", "simmap", "modeltools", "admin", "simcal", "embedded", "interchange"},
}
# Single files with arrows of their own: loading a library looks at the handlers whose state it reads.
FILE_ARROWS = {
    "frame/QorLibLoad*.cpp": {"cardinality", "simmap"},
}
# Headers from outside, beside the standard library.
THIRD_PARTY = {
    "embedded": ["sqlite3.h", "sodium.h"],
    "interchange": ["yaml.h", "expat.h", "nlohmann/*", "fmt/*"],
    "cli": ["CLI/*", "fmt/*"],
}
POSIX = ["fcntl.h", "pwd.h", "sys/*.h", "unistd.h"]
POSIX_FOLDERS = {"embedded", "interchange", "cli"}
HEAVY_IN_HEADERS = {"iostream", "regex"}

STANDARD = set("""
algorithm any array atomic barrier bit bitset cassert ccomplex cctype cerrno cfenv cfloat charconv chrono cinttypes
climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef
cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list
fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map
memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
variant vector version
""".split())

INCLUDE = re.compile(r'^\s*#\s*include(?:_next)?\b\s*(.*)$')
QUOTED = re.compile(r'"([^"]+)"')
ANGLED = re.compile(r'<([^>]+)>')
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)


def without_comments(text: str) -> str:
    def blank(match: re.Match) -> str:
        found = match.group()
        return found if found.startswith('"') else "\n" * found.count("\n")
    return COMMENT.sub(blank, text)


class Checker:
    def __init__(self, src: pathlib.Path):
        self.src = src
        self.violations: list[str] = []
        self.edges: dict[str, list[tuple[int, str]]] = {}

    def violation(self, file: str, line: int, text: str) -> None:
        self.violations.append(f"{file}:{line}: {text}")

    def run(self) -> list[str]:
        files = sorted(str(path.relative_to(self.src)) for suffix in ("h", "cpp") for path in
                       self.src.rglob(f"*.{suffix}"))
        for file in files:
            folder = file.split("/")[0]
            if folder not in ARROWS or "/" not in file:
                self.violation(file, 1, "this file lies in none of the known folders")
                continue
            self.edges[file] = []
            text = without_comments((self.src / file).read_text(encoding="utf-8"))
            for line, content in enumerate(text.splitlines(), 1):
                if match := INCLUDE.match(content):
                    self.check_include(file, folder, line, match.group(1).strip())
        self.check_circles()
        return self.violations

    def check_include(self, file: str, folder: str, line: int, operand: str) -> None:
        if quoted := QUOTED.fullmatch(operand):
            self.check_own(file, folder, line, quoted.group(1))
        elif angled := ANGLED.fullmatch(operand):
            self.check_foreign(file, folder, line, angled.group(1))
        else:
            self.violation(file, line, f"an include must name its file: {operand}")

    def check_own(self, file: str, folder: str, line: int, name: str) -> None:
        if ".." in name.split("/") or not (self.src / name).is_file():
            self.violation(file, line, f'"{name}" is no path from src/')
            return
        target = name.split("/")[0]
        allowed = ARROWS[folder] | {folder}
        for pattern, more in FILE_ARROWS.items():
            if fnmatch.fnmatchcase(file, pattern):
                allowed = allowed | more
        if target not in allowed:
            self.violation(file, line, f'{folder}/ must not include {target}/ ("{name}")')
        if not name.endswith(".h"):
            self.violation(file, line, f'"{name}" is not a header')
        self.edges[file].append((line, name))

    def check_foreign(self, file: str, folder: str, line: int, name: str) -> None:
        allowed = list(THIRD_PARTY.get(folder, []))
        if folder in POSIX_FOLDERS:
            allowed += POSIX
        if name in STANDARD:
            if file.endswith(".h") and name in HEAVY_IN_HEADERS:
                self.violation(file, line, f"<{name}> is too heavy for a header")
        elif not any(fnmatch.fnmatchcase(name, pattern) for pattern in allowed):
            self.violation(file, line, f"{folder}/ must not include <{name}>")

    def check_circles(self) -> None:
        """Depth-first over files; an edge to a file on the current path closes a circle."""
        done: set[str] = set()
        for start in self.edges:
            path, on_path = [], set()
            pending = [(start, 0)]
            while pending:
                file, position = pending.pop()
                if position == 0:
                    if file in done:
                        continue
                    path.append(file)
                    on_path.add(file)
                if position < len(self.edges[file]):
                    pending.append((file, position + 1))
                    line, target = self.edges[file][position]
                    if target in on_path:
                        circle = path[path.index(target):] + [target]
                        self.violation(file, line, "circle of includes: " + " -> ".join(circle))
                    elif target in self.edges:
                        pending.append((target, 0))
                else:
                    done.add(file)
                    on_path.discard(path.pop())


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("src", nargs="?", type=pathlib.Path,
                        default=pathlib.Path(__file__).resolve().parent.parent / "src")
    violations = Checker(parser.parse_args().src).run()
    for violation in violations:
        print(f"src/{violation}", file=sys.stderr)
    return 1 if violations else 0


if __name__ == "__main__":
    sys.exit(main())
