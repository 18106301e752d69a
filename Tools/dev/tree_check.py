"""What the checks of a whole source tree have in common: their command line and their self-test.

    sys.exit(tree_check.main(sys.argv[1:], findings_of, lambda root: "all is well", self_test))
"""

import tempfile
from pathlib import Path


def self_test(name, sound, cases, findings_of):
    """The number of cases with other findings than expected. A case is what is changed in a tree of a few files,
    by path, None for a file that is not there, and the findings."""
    wrong = 0
    for changes, expected in cases:
        with tempfile.TemporaryDirectory() as folder:
            for path, text in {**sound, **changes}.items():
                if text is None:
                    continue
                file = Path(folder) / path
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            found = findings_of(Path(folder))
        if found != expected:
            wrong += 1
            print(f"self-test: {changes}\n  expected {expected}\n  found    {found}")
    print(f"{name} self-test: {len(cases) - wrong} of {len(cases)} cases as expected")
    return wrong


def main(arguments, findings_of, summary_of, run_self_test):
    """The exit status: 1 when anything was found. The tree is the argument, by default the one of this file."""
    if arguments == ["--self-test"]:
        return 1 if run_self_test() else 0
    root = Path(arguments[0]) if arguments else Path(__file__).resolve().parents[2]
    findings = findings_of(root)
    print("\n".join(findings) if findings else summary_of(root))
    return 1 if findings else 0
