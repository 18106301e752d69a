#!/usr/bin/env python3
"""Checks that each source has its own test file, at the same place below Tests.

    check_mirror.py [ROOT]     check the tree at ROOT, by default the one that this file is in
    check_mirror.py --self-test

The test of Source/Kit/Text/Utf8.h is Tests/Kit/Text/Utf8Test.cpp, and that of Tools/kivifc/Site/Uses.cpp is
Tests/Tools/kivifc/Site/UsesTest.cpp; a header and a source of one name have one test. Tools/dev/mirror-exceptions.txt
lists the sources that have none, one a line, as "PATH WITHOUT SUFFIX: REASON"; * in a path is any text without a
slash.

What must hold:
  - every source has its test or is an exception with a reason;
  - every path that begins with Tests/ in a reason is there;
  - no exception is left over: each is for a source without a test;
  - a CMakeLists.txt below Tests lists every test file;
  - every folder with test files in the mirrored part of Tests is also one of the sources.
"""

import re
import sys
from pathlib import PurePosixPath

import tree_check

EXCEPTIONS = "Tools/dev/mirror-exceptions.txt"
SOURCES = {"Source": "Tests", "Tools/kivifc": "Tests/Tools/kivifc"}
# What else is in Tests looks at several classes together, or at the whole.
MIRRORED = ("Tests/Base", "Tests/Host", "Tests/Format", "Tests/Kit", "Tests/Tools/kivifc")
TEST_PATH = re.compile(r"\bTests/[\w./-]*\w")


class Exceptions:
    """The sources that may have no test."""

    def __init__(self, text):
        self.findings = []
        self.reasons = {}
        self.unused = {}
        for number, line in enumerate(text.splitlines(), 1):
            if not line.strip() or line.startswith("#"):
                continue
            path, mark, reason = line.partition(":")
            if not mark or not reason.strip():
                self.findings.append(f"{EXCEPTIONS}:{number}: no reason")
            self.reasons[path.strip()] = (number, reason.strip())
        self.unused = dict(self.reasons)

    def owns(self, path):
        matching = [pattern for pattern in self.reasons if matches(pattern, path)]
        for pattern in matching:
            self.unused.pop(pattern, None)
        return bool(matching)


def matches(pattern, path):
    return re.fullmatch(re.escape(pattern).replace(r"\*", "[^/]*"), path) is not None


def test_of(source):
    """Where the test of a source without suffix belongs."""
    folder = next(folder for folder in SOURCES if source.startswith(folder + "/"))
    return f"{SOURCES[folder]}{source[len(folder):]}Test.cpp"


def sources_of(root):
    paths = [path for folder in SOURCES for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp")]
    return sorted({path.relative_to(root).with_suffix("").as_posix() for path in paths})


def findings_of(root):
    """What does not hold, one line each."""
    file = root / EXCEPTIONS
    exceptions = Exceptions(file.read_text(encoding="utf-8") if file.is_file() else "")
    findings = list(exceptions.findings)
    sources = sources_of(root)
    for source in sources:
        if not (root / test_of(source)).is_file() and not exceptions.owns(source):
            findings.append(f"{source}: has no {test_of(source)} and is not in {EXCEPTIONS}")
    for path, (number, _) in exceptions.unused.items():
        findings.append(f"{EXCEPTIONS}:{number}: {path} is no source without a test")
    for number, reason in exceptions.reasons.values():
        findings += [f"{EXCEPTIONS}:{number}: there is no {path}" for path in TEST_PATH.findall(reason)
                     if not (root / path).exists()]
    return findings + findings_of_tests(root, {PurePosixPath(test_of(source)).parent.as_posix() for source in sources})


def findings_of_tests(root, folders):
    findings = []
    listed = set()
    for lists in (root / "Tests").rglob("CMakeLists.txt"):
        names = re.findall(r"[\w./-]+Test\.cpp", lists.read_text(encoding="utf-8"))
        listed.update((lists.parent / name).resolve() for name in names)
    for path in sorted((root / "Tests").rglob("*Test.cpp")):
        name = path.relative_to(root).as_posix()
        if path.resolve() not in listed:
            findings.append(f"{name}: no CMakeLists.txt lists it")
        folder = PurePosixPath(name).parent.as_posix()
        if f"{folder}/".startswith(tuple(f"{part}/" for part in MIRRORED)) and folder not in folders:
            findings.append(f"{name}: there is no such folder of sources")
    return findings


# The self-test: a tree of a few files, changed at some places for each case. None removes a file.

SOUND = {
    "Source/Base/Arena.h": "",
    "Source/Host/Xml/Xml.h": "",
    "Source/Host/Xml/Xml.cpp": "",
    "Source/Kit/Values.h": "",
    "Source/All.h": "",
    "Tools/kivifc/Site/Page.cpp": "",
    "Tools/kivifc/main.cpp": "",
    "Tests/AllTest.cpp": "",
    "Tests/Base/ArenaTest.cpp": "",
    "Tests/Host/Xml/XmlTest.cpp": "",
    "Tests/Tools/kivifc/Site/PageTest.cpp": "",
    "Tests/Tools/kivifc/RoomsTest.cpp": "",
    "Tests/Robustness/Input/BytesTest.cpp": "",
    "Tests/CMakeLists.txt": "AllTest.cpp Base/ArenaTest.cpp Host/Xml/XmlTest.cpp\n",
    "Tests/Tools/CMakeLists.txt":
        "kivifc/Site/PageTest.cpp kivifc/RoomsTest.cpp\n    ../Robustness/Input/BytesTest.cpp)\n",
    EXCEPTIONS: "# Why\n\nSource/Kit/Values: no logic\nTools/kivifc/main: Tests/Tools/kivifc/RoomsTest.cpp runs it.\n",
}

# What is changed, and the findings.
CASES = [
    ({}, []),
    ({"Source/Base/New.h": ""}, [f"Source/Base/New: has no Tests/Base/NewTest.cpp and is not in {EXCEPTIONS}"]),
    ({"Tools/kivifc/Site/New.cpp": ""},
     [f"Tools/kivifc/Site/New: has no Tests/Tools/kivifc/Site/NewTest.cpp and is not in {EXCEPTIONS}"]),
    ({"Tests/Host/Xml/XmlTest.cpp": None, "Tests/Host/XmlTest.cpp": "",
      "Tests/CMakeLists.txt": SOUND["Tests/CMakeLists.txt"] + "Host/XmlTest.cpp"},
     [f"Source/Host/Xml/Xml: has no Tests/Host/Xml/XmlTest.cpp and is not in {EXCEPTIONS}",
      "Tests/Host/XmlTest.cpp: there is no such folder of sources"]),
    ({"Tests/Kit/ValuesTest.cpp": "", "Tests/CMakeLists.txt": SOUND["Tests/CMakeLists.txt"] + "Kit/ValuesTest.cpp"},
     [f"{EXCEPTIONS}:3: Source/Kit/Values is no source without a test"]),
    ({"Source/Kit/Values.h": None}, [f"{EXCEPTIONS}:3: Source/Kit/Values is no source without a test"]),
    ({"Tests/CMakeLists.txt": "AllTest.cpp Host/Xml/XmlTest.cpp"}, ["Tests/Base/ArenaTest.cpp: no CMakeLists.txt lists it"]),
    # The name of another test ends like this one.
    ({"Tests/CMakeLists.txt": "AllTest.cpp Host/Xml/XmlTest.cpp Base/OtherArenaTest.cpp"},
     ["Tests/Base/ArenaTest.cpp: no CMakeLists.txt lists it"]),
    # A test of that name in another folder is listed.
    ({"Tests/Host/Xml/AllTest.cpp": ""}, ["Tests/Host/Xml/AllTest.cpp: no CMakeLists.txt lists it"]),
    ({EXCEPTIONS: SOUND[EXCEPTIONS].replace("RoomsTest", "GoneTest")},
     [f"{EXCEPTIONS}:4: there is no Tests/Tools/kivifc/GoneTest.cpp"]),
    ({EXCEPTIONS: SOUND[EXCEPTIONS].replace("no logic", "")}, [f"{EXCEPTIONS}:3: no reason"]),
    ({EXCEPTIONS: SOUND[EXCEPTIONS].replace("Kit/Values", "Kit/V*s"), "Source/Kit/Views.h": ""}, []),
    # A star stays in its folder.
    ({EXCEPTIONS: SOUND[EXCEPTIONS].replace("Kit/Values", "*")},
     [f"Source/Kit/Values: has no Tests/Kit/ValuesTest.cpp and is not in {EXCEPTIONS}",
      f"{EXCEPTIONS}:3: Source/* is no source without a test"]),
]


def self_test():
    return tree_check.self_test("check_mirror", SOUND, CASES, findings_of)


def summary_of(root):
    return f"mirror: {len(sources_of(root))} sources, each with its test or a reason"


if __name__ == "__main__":
    sys.exit(tree_check.main(sys.argv[1:], findings_of, summary_of, self_test))
