"""Every link of a site leads to a page and a place on it that are there, and no page has what it must not have.

    links.py FOLDER...

Says what is wrong, and how many links there are. Exit status 1 when something is wrong.
"""

import json
import os
import posixpath
import re
import sys
import urllib.parse

import pages

MOST_SHOWN = 40


def target(path, address):
    """The page and the id that a link on the page at `path` leads to."""
    file, _, fragment = address.partition("#")
    file = urllib.parse.unquote(file)
    return (posixpath.normpath(posixpath.join(posixpath.dirname(path), file)) if file else path,
            urllib.parse.unquote(fragment))


def link_problem(site, path, address):
    """What is wrong with a link; nothing where nothing is."""
    page, fragment = target(path, address)
    if page.startswith(".."):
        return "leads out of the folder"
    if page not in site:
        return "leads to no page"
    if fragment and fragment not in site[page].ids:
        return "leads to no place on its page"
    return ""


def unreached(site):
    """Pages that no chain of links from the start page leads to."""
    seen, ahead = {"index.html"}, ["index.html"]
    while ahead:
        path = ahead.pop()
        for _, address in site[path].links:
            page = target(path, address)[0]
            if page in site and page not in seen:
                seen.add(page)
                ahead.append(page)
    return sorted(set(site) - seen)


def index_read(folder):
    """The index of the search: what its script says is JSON but for the names of its members."""
    with open(os.path.join(folder, "assets", "search-index.js"), encoding="utf-8") as file:
        text = file.read()
    body = re.fullmatch(r"window\.kivSearch=\{format:2,kinds:(\[.*\]),languages:(\[.*\]),pages:(\[\n.*\n\])\};\n", text, re.DOTALL)
    return [json.loads(part) for part in body.groups()]


def index_addresses(index):
    """Where each entry of the index leads to, with its name."""
    kinds, _, pages_of_index = index
    for kind, name, *others in pages_of_index:
        file, _, runs = (others + [0] * 3)[:3]
        is_set = kinds[kind] in ("Property set", "Quantity set")
        path = file or ("sets/" if is_set else "") + name + ".html"
        yield path, "", name
        for _, *rows in runs or []:
            for row in rows:
                text, anchor = (row, 0) if isinstance(row, str) else (row + [0])[:2]
                yield path, anchor or text, text


def index_problems(folder, site):
    """Entries of the search that lead nowhere, and pages and rows of schema and sets that it does not know."""
    addresses = list(index_addresses(index_read(folder)))
    found = [f"search: {name[:80]} leads to no {'place' if anchor else 'page'}: {path}#{anchor[:80]}" for path, anchor, name in addresses
             if path not in site or anchor and anchor not in site[path].ids]
    known = {path for path, _, _ in addresses}
    return found + [f"search: knows no {page.path}" for page in site.values() if page.kind and page.path not in known]


def definitions_problems(folder, site):
    """Translated definitions of sets and members that are not there."""
    path = os.path.join(folder, "assets", "definitions.js")
    with open(path, encoding="utf-8") as file:
        text = file.read()
    body = re.fullmatch(r"window\.kivDefinitions=\{languages:(\[.*\]),texts:(\[.*\]),sets:(\[\n.*\n\])\};\n", text, re.DOTALL)
    languages, texts, sets = (json.loads(part) for part in body.groups())
    found = []
    for page, *rows in sets:
        for anchor, *numbers in rows:
            if page not in site or anchor and anchor not in site[page].ids:
                found.append(f"definitions: {page}#{anchor[:80]} is nowhere")
            if len(numbers) % 2 or any(number >= len(languages) for number in numbers[::2]) or any(
                    number >= len(texts) for number in numbers[1::2]):
                found.append(f"definitions: {page}#{anchor[:80]} has no text")
    return found


def problems(site):
    if "index.html" not in site:
        return ["there is no index.html"]
    found = [text for page in site.values() for text in page.problems]
    for page in site.values():
        for line, address in page.links:
            problem = link_problem(site, page.path, address)
            if problem:
                found.append(f"{page.path}:{line}: {address[:150]} {problem}")
    return found + [f"{path}: no link leads here" for path in unreached(site)]


def report(folder, site):
    """Prints what is wrong with a site that was read, and says whether anything is."""
    found = problems(site) + index_problems(folder, site) + definitions_problems(folder, site)
    for text in found[:MOST_SHOWN]:
        print(f"{folder}: {text}")
    if len(found) > MOST_SHOWN:
        print(f"{folder}: and {len(found) - MOST_SHOWN} more")
    count = sum(len(page.links) for page in site.values())
    print(f"links: {os.path.basename(folder)}: {len(site)} pages, {count} links, {len(found)} problems")
    return not found


if __name__ == "__main__":
    sys.exit(0 if all([report(folder, pages.site_read(folder)) for folder in sys.argv[1:]]) else 1)
