#!/usr/bin/env python3
"""Makes a source of the examples in the comments of each header, so that they are compiled.

    extract.py ROOT INCLUDE-FOLDER OUT [--list]

An example is an indented block of a `///` comment: five blanks, after an empty comment line. Each becomes the body
of a function in OUT/FOLDER_HEADER.cpp; what it takes for granted (namespace, parameters, includes) is in
surroundings.py. A header with an example that surroundings.py does not know is an error, and so is a text to replace
that is in no example any more; all errors are listed at once. Rows of headers that are gone do no harm. A header
without examples makes an empty source, so that the first one is compiled as soon as it is written. --list prints the
sources, and writes nothing.
"""

import re
import sys
from pathlib import Path

from surroundings import KIT_SURROUNDINGS, PLAIN, SITE_SURROUNDINGS, SURROUNDINGS

class StaleRow(Exception):
    """surroundings.py does not fit the headers."""


PREAMBLE = """template <class... T> void use(T&&...) {}
template <class... T> void vUse(T&&...) {}
template <class... T> void vShow(T&&...) {}
template <class... T> void refused(T&&...) {}
inline void vComplain() {}
inline void vReadSchema() {}
"""


def examples_of(text):
    """The examples of a header: line number and lines of each."""
    examples, before = [], ""
    inside = False
    for number, line in enumerate(text.splitlines(), 1):
        match = re.match(r"\s*///(.*)$", line)
        comment = match[1] if match else None
        if comment is not None and re.match(r" {5}\S", comment) and (inside or not before.strip()):
            if not inside:
                examples.append((number, []))
            examples[-1][1].append(comment[5:])
            inside = True
        elif comment is not None and inside and comment.startswith(" " * 6):
            examples[-1][1].append(comment[5:])
        else:
            inside = False
        before = "" if comment is None or re.match(r"\s*@file", comment) else comment
    return examples


def compilable(lines, replacements):
    """Dots stand for what a reader fills in."""
    text = "\n".join(lines)
    for old, new in replacements.items():
        if old not in text:
            raise StaleRow(f"surroundings.py replaces {old!r}, which is in no example of this header any more:\n{text}")
        text = text.replace(old, new)
    text = re.sub(r"^(\s*)\.\.\.$", r"\1;", text, flags=re.M)
    text = re.sub(r" \.\.\.$", " {}", text, flags=re.M)
    code = re.sub(r"//.*$", "", text, flags=re.M).rstrip()
    return text if code.endswith((";", "}")) else text + "\n;"


def header_name(root, include_folder, header):
    if header.is_relative_to(root / "Tools"):
        return header.relative_to(root / "Tools").as_posix()
    name = header.relative_to(root / "Source").as_posix()
    return f"kiv/{name}" if (include_folder / "kiv" / name).exists() else name


def row_of(root, header):
    """The kit and the site have headers that are named like those of others."""
    for folder, rows in (("Source/Kit", KIT_SURROUNDINGS), ("Tools/kivifc/Site", SITE_SURROUNDINGS)):
        if header.is_relative_to(root / folder) and header.name in rows:
            return rows[header.name]
    return SURROUNDINGS.get(header.name)


def source_of(root, include_folder, header, examples):
    row = row_of(root, header)
    if row is None:
        raise StaleRow(f"{header}:{examples[0][0]}: an example that HeaderExamples/surroundings.py does not know")
    includes = [header_name(root, include_folder, header), *row.get("includes", [])]
    parts = [f'#include "{name}"' for name in includes]
    parts += [f"#include <{name}>" for name in ("iostream", "fstream", "memory", "string", "utility", "vector")]
    space = f"{row['namespace']}::example_{stem_of(root, header)}"
    parts += [f"namespace {space} {{", PREAMBLE, row.get("before", "")]
    replacements = dict(row.get("replace", {}))
    for index, (number, lines) in enumerate(examples):
        text = "\n".join(lines)
        if any(text.startswith(plain) for plain in PLAIN.get(header.name, [])):
            continue
        mine = {old: new for old, new in replacements.items() if old in text}
        for old in mine:
            del replacements[old]
        body = f'#line {number} "{header}"\n{compilable(lines, mine)}'
        if not row.get("isNamespaceScope"):
            body = f"inline void vExample{index}({row.get('parameters', '')}) {{\n{body}\n}}"
        parts.append(body)
    if replacements:
        raise StaleRow(f"{header}: surroundings.py replaces what is in no example: {list(replacements)}")
    return "\n".join([*parts, "}", ""])


def stem_of(root, header):
    """From the whole path: two folders may have headers of one name."""
    return "_".join(header.relative_to(root).with_suffix("").parts)


def write(target, text):
    """Keeps what is the same, so that it is not compiled again."""
    if not target.exists() or target.read_text(encoding="utf-8") != text:
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text, encoding="utf-8")


def main():
    root, include_folder, out = (Path(argument) for argument in sys.argv[1:4])
    headers = sorted(path for folder in ("Source", "Tools") for path in (root / folder).rglob("*.h"))
    errors = []
    for header in headers:
        target = out / f"{stem_of(root, header)}.cpp"
        if "--list" in sys.argv:
            print(target)
            continue
        examples = examples_of(header.read_text(encoding="utf-8"))
        try:
            write(target, source_of(root, include_folder, header, examples) if examples else "")
        except StaleRow as error:
            errors.append(str(error))
    sys.exit("\n".join(errors) or 0)


main()
