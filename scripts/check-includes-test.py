#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Plants wrong includes in small trees and sees that check-includes.py finds each, and nothing else."""
import pathlib
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).resolve().parent / "check-includes.py"
HEADERS = {name: "#pragma once\n" for name in (
    "platform/QorHost.h", "frame/QorAssert.h", "cardinality/Rules.h", "simmap/Map.h", "simcal/QorCalendar.h",
    "embedded/Store.h", "interchange/Reader.h", "modeltools/Plan.h")}

# What is planted beside the headers above, and what the one reported line must hold ("" for none).
CASES = [
    ({}, ""),
    ({"simmap/a.cpp": '#include <vector>\n#include "platform/QorHost.h"\n#include "frame/QorAssert.h"\n'}, ""),
    ({"frame/QorLibLoad.cpp": '#include "cardinality/Rules.h"\n#include "simmap/Map.h"\n'}, ""),
    ({"interchange/a.cpp": '#include <yaml.h>\n#include <unistd.h>\n#include "simcal/QorCalendar.h"\n'}, ""),
    ({"cardinality/a.cpp": '// #include "cli/a.h"\n/* #include <regex>\n#include "embedded/Store.h" */\n'}, ""),
    ({"platform/a.cpp": '\n#include "frame/QorAssert.h"\n'}, "src/platform/a.cpp:2: platform/ must not include frame/"),
    ({"frame/QorLibLoad.h": '#include "cardinality/Rules.h"\n'}, "frame/ must not include cardinality/"),
    ({"frame/other.cpp": '#include "simmap/Map.h"\n'}, "frame/ must not include simmap/"),
    ({"cardinality/a.h": '#include "embedded/Store.h"\n'}, "cardinality/ must not include embedded/"),
    ({"embedded/a.cpp": '#include "cardinality/Rules.h"\n'}, "embedded/ must not include cardinality/"),
    ({"embedded/a.cpp": '#include "interchange/Reader.h"\n'}, "embedded/ must not include interchange/"),
    ({"simcal/a.cpp": '#  include "modeltools/Plan.h"\n'}, "simcal/ must not include modeltools/"),
    ({"simcal/a.cpp": "#include <fmt/core.h>\n"}, "must not include <fmt/core.h>"),
    ({"platform/a.cpp": "#include <unistd.h>\n"}, "must not include <unistd.h>"),
    ({"platform/a.h": "#include <iostream>\n"}, "too heavy"),
    ({"simmap/a.cpp": '#include "Map.h"\n'}, "no path from src/"),
    ({"simmap/a.cpp": '#include "simmap/../embedded/Store.h"\n'}, "no path from src/"),
    ({"simmap/a.cpp": "#include HEADER\n"}, "must name its file"),
    ({"elsewhere/a.cpp": ""}, "none of the known folders"),
    ({"platform/a.h": '#include "platform/a.h"\n'}, "circle of includes: platform/a.h -> platform/a.h"),
    ({"platform/a.h": '#include "platform/b.h"\n', "platform/b.h": '#include "platform/c.h"\n',
      "platform/c.h": '#include <map>\n#include "platform/a.h"\n'},
     "src/platform/c.h:2: circle of includes: platform/a.h -> platform/b.h -> platform/c.h -> platform/a.h"),
    ({"platform/a.h": '#include "platform/b.h"\n#include "platform/c.h"\n', "platform/b.h": '#include "platform/c.h"\n',
      "platform/c.h": ""}, ""),
]


def main() -> int:
    failures = 0
    for planted, expected in CASES:
        with tempfile.TemporaryDirectory() as folder:
            src = pathlib.Path(folder) / "src"
            for name, text in (HEADERS | planted).items():
                (src / name).parent.mkdir(parents=True, exist_ok=True)
                (src / name).write_text(text, encoding="utf-8")
            result = subprocess.run([sys.executable, CHECK, src], capture_output=True, text=True)
        lines = result.stderr.splitlines()
        good = (result.returncode, lines) == (0, []) if not expected else (
            result.returncode == 1 and len(lines) == 1 and expected in lines[0])
        if not good:
            failures += 1
            print(f"planted {planted}\nexpected '{expected}'\nreported {lines}", file=sys.stderr)
    print(f"check-includes: {len(CASES) - failures} of {len(CASES)} planted trees judged rightly")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
