#!/usr/bin/env python3
"""Checks that includes run one way, along the floors that Docs/Architecture.md lists.

    check_includes.py [ROOT]     check the tree at ROOT, by default the one that this file is in
    check_includes.py --self-test

The only list of floors is the table in Docs/Architecture.md whose columns are "floor", "room" and "files": the
number of the floor, lowest first; a name; and patterns in backticks, in which * is any text without a slash and **
any text. A file is in the first room that has a pattern for it. A room with files from several folders counts as
one room for each folder. A path without stars may be a file that only the build makes.

What must hold for the sources in Source and Tools, and for each #include "..." in them:
  - every file is in a room, and every pattern of the table matches a file;
  - every include names a file: beside the includer, below Source ("kiv/..." or without it), or below Tools;
  - no include runs from a lower floor to a higher one;
  - no two rooms include each other, on the way through other rooms included.
"""

import re
import sys
from os.path import normpath
from pathlib import Path, PurePosixPath

import tree_check

TABLE = "Docs/Architecture.md"
FOLDERS = ("Source", "Tools")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)


class Row:
    """A row of the table: a room, its floor and what is in it."""

    def __init__(self, floor, name, patterns):
        self.floor = floor
        self.name = name
        self.patterns = {pattern: compiled(pattern) for pattern in patterns}
        self.unused = set(patterns)
        self.paths = {pattern for pattern in patterns if "*" not in pattern}

    def owns(self, path):
        matching = {pattern for pattern, expression in self.patterns.items() if expression.fullmatch(path)}
        self.unused -= matching
        return bool(matching)


def compiled(pattern):
    parts = re.split(r"(\*\*|\*)", pattern)
    return re.compile("".join({"**": ".*", "*": "[^/]*"}.get(part, re.escape(part)) for part in parts))


def cells(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def rows_of(text):
    """The rows of the table of floors; empty when there is none."""
    lines = iter(text.splitlines())
    for line in lines:
        if [cell.lower() for cell in cells(line)[:3]] == ["floor", "room", "files"]:
            break
    next(lines, None)  # the rule below the head
    rows = []
    for line in lines:
        if not line.strip().startswith("|"):
            break
        floor, name, files = cells(line)[:3]
        rows.append(Row(int(floor), name, re.findall(r"`([^`]+)`", files)))
    return rows


def sources_of(root):
    paths = [path for folder in FOLDERS for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp")]
    return sorted(path.relative_to(root).as_posix() for path in paths)


def included_file(root, rows, includer, name):
    """The path that an include of `includer` means, or None."""
    below_source = name[len("kiv/"):] if name.startswith("kiv/") else name
    for candidate in (PurePosixPath(includer).parent / name, PurePosixPath("Source") / below_source,
                      PurePosixPath("Tools") / name):
        path = Path(normpath(root / candidate)).relative_to(normpath(root)).as_posix()
        if (root / path).is_file() or any(path in row.paths for row in rows):
            return path
    return None


def circles(arrows):
    """The groups of rooms that reach each other along the arrows."""
    reached = {}
    for start in arrows:
        seen, waiting = set(), [start]
        while waiting:
            for room in arrows.get(waiting.pop(), {}):
                if room not in seen:
                    seen.add(room)
                    waiting.append(room)
        reached[start] = seen
    groups = {frozenset(other for other in seen if start in reached.get(other, ()))
              for start, seen in reached.items() if start in seen}
    return sorted(sorted(group) for group in groups)


def row_of(rows, path):
    return next((row for row in rows if row.owns(path)), None)


def room_of(row, path):
    return f"{row.name} ({PurePosixPath(path).parent})"


def findings_of(root):
    """What does not hold, one line each."""
    table = root / TABLE
    rows = rows_of(table.read_text(encoding="utf-8")) if table.is_file() else []
    if not rows:
        return [f"{TABLE}: no table with the columns floor, room and files"]
    findings = []
    arrows = {}
    for path in sources_of(root):
        row = row_of(rows, path)
        if row is None:
            findings.append(f"{path}: in no room of {TABLE}")
            continue
        findings += includes_checked(root, rows, path, arrows)
    for circle in circles(arrows):
        for room in circle:
            for other in sorted(set(arrows[room]) & set(circle)):
                findings.append(f"{arrows[room][other]}: {room} and {other} include each other")
    for row in rows:
        findings += [f"{TABLE}: {row.name}: no file is in this room because of `{pattern}`"
                     for pattern in row.patterns if pattern in row.unused]
    return findings


def includes_checked(root, rows, path, arrows):
    """Findings about the includes of one file; adds those that lead to other rooms to the arrows."""
    findings = []
    row = row_of(rows, path)
    text = (root / path).read_text(encoding="utf-8")
    for match in INCLUDE.finditer(text):
        place = f"{path}:{text.count(chr(10), 0, match.start(1)) + 1}"
        target = included_file(root, rows, path, match[1])
        to = row_of(rows, target) if target else None
        if target is None or PurePosixPath(target).parts[0] not in FOLDERS:
            findings.append(f'{place}: "{match[1]}" names no file of {" or ".join(FOLDERS)}')
        elif to is None:
            continue  # said of that file
        elif to.floor > row.floor:
            findings.append(f'{place}: "{match[1]}" is on floor {to.floor} ({to.name}), above floor {row.floor} ({row.name})')
        elif room_of(row, path) != room_of(to, target):
            arrows.setdefault(room_of(row, path), {}).setdefault(room_of(to, target), place)
    return findings


# The self-test: a tree of a few files, changed at one place for each case.

SOUND = {
    TABLE: "# Floors\n\n| floor | room | files |\n| --- | --- | --- |\n| 1 | Base | `Source/Base/*` |\n"
           "| 2 | Host | `Source/Host/**` |\n| 3 | Bases | `Source/Def/Base*` |\n| 4 | Store | `Source/Def/*` |\n"
           "| 5 | Program | `Tools/kivifc/**` |\n\nAfter the table.\n",
    "Source/Base/Arena.h": "#include <vector>\n",
    "Source/Host/Xml/Xml.h": '#include "Base/Arena.h"\n',
    "Source/Host/Id/Id.h": "",
    "Source/Def/Base.h": '#include "kiv/Host/Xml/Xml.h"\n  #  include "Host/Id/Id.h"\n',
    "Source/Def/Store.cpp": '#include "Store.h"\n#include "Base.h"\n',
    "Source/Def/Store.h": '#include "Def/Base.h"\n',
    "Tools/kivifc/One.h": '#include "kiv/Def/Store.h"\n',
    "Tools/kivifc/Json/Json.h": '#include "kivifc/One.h"\n',
}

# What is changed, and the findings.
CASES = [
    ({}, []),
    ({"Source/Base/Arena.h": '#include <vector>\n#include "Host/Id/Id.h"\n'},
     ['Source/Base/Arena.h:2: "Host/Id/Id.h" is on floor 2 (Host), above floor 1 (Base)']),
    # Two floors of one folder.
    ({"Source/Def/Base.h": '#include "Store.h"\n'},
     ['Source/Def/Base.h:1: "Store.h" is on floor 4 (Store), above floor 3 (Bases)']),
    # Two folders of one floor may meet one way only.
    ({"Source/Host/Id/Id.h": '#include "Host/Xml/Xml.h"\n'}, []),
    ({"Source/Host/Id/Id.h": '#include "Host/Xml/Xml.h"\n', "Source/Host/Xml/Xml.h": '#include "kiv/Host/Id/Id.h"\n'},
     ["Source/Host/Id/Id.h:1: Host (Source/Host/Id) and Host (Source/Host/Xml) include each other",
      "Source/Host/Xml/Xml.h:1: Host (Source/Host/Xml) and Host (Source/Host/Id) include each other"]),
    # A circle through a third folder.
    ({"Source/Host/Id/Id.h": '#include "Host/Xml/Xml.h"\n', "Source/Host/Xml/Xml.h": '#include "Host/Locale/Locale.h"\n',
      "Source/Host/Locale/Locale.h": '#include "Host/Id/Id.h"\n'},
     ["Source/Host/Id/Id.h:1: Host (Source/Host/Id) and Host (Source/Host/Xml) include each other",
      "Source/Host/Locale/Locale.h:1: Host (Source/Host/Locale) and Host (Source/Host/Id) include each other",
      "Source/Host/Xml/Xml.h:1: Host (Source/Host/Xml) and Host (Source/Host/Locale) include each other"]),
    # A file that the build makes has a room if its path is there.
    ({"Source/Def/Base.h": '#include "kiv/Host/Made.h"\n',
      TABLE: SOUND[TABLE].replace("`Source/Host/**`", "`Source/Host/**` `Source/Host/Made.h`")}, []),
    ({"Source/Base/Arena.h": '#include "kiv/Host/Made.h"\n',
      TABLE: SOUND[TABLE].replace("`Source/Host/**`", "`Source/Host/**` `Source/Host/Made.h`")},
     ['Source/Base/Arena.h:1: "kiv/Host/Made.h" is on floor 2 (Host), above floor 1 (Base)']),
    ({"Tools/kivifc/One.h": '#include "../../Tests/One.h"\n', "Tests/One.h": ""},
     ['Tools/kivifc/One.h:1: "../../Tests/One.h" names no file of Source or Tools']),
    ({"Tools/kivifc/One.h": '#include "kiv/Def/Nothing.h"\n'},
     ['Tools/kivifc/One.h:1: "kiv/Def/Nothing.h" names no file of Source or Tools']),
    ({"Source/New/New.h": ""}, [f"Source/New/New.h: in no room of {TABLE}"]),
    ({TABLE: SOUND[TABLE].replace("`Source/Base/*`", "`Source/Base/*`, `Source/Gone/*`")},
     [f"{TABLE}: Base: no file is in this room because of `Source/Gone/*`"]),
    ({TABLE: "# Floors\n"}, [f"{TABLE}: no table with the columns floor, room and files"]),
]


def self_test():
    return tree_check.self_test("check_includes", SOUND, CASES, findings_of)


def summary_of(root):
    return f"includes: {len(sources_of(root))} files, all run one way"


if __name__ == "__main__":
    sys.exit(tree_check.main(sys.argv[1:], findings_of, summary_of, self_test))
