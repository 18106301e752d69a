"""Every link of a site leads to a page and a place on it that are there, and no page has what it must not have.

    links.py FOLDER...

Says what is wrong, and how many links there are. Exit status 1 when something is wrong.
"""

import os
import posixpath
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
    found = problems(site)
    for text in found[:MOST_SHOWN]:
        print(f"{folder}: {text}")
    if len(found) > MOST_SHOWN:
        print(f"{folder}: and {len(found) - MOST_SHOWN} more")
    count = sum(len(page.links) for page in site.values())
    print(f"links: {os.path.basename(folder)}: {len(site)} pages, {count} links, {len(found)} problems")
    return not found


if __name__ == "__main__":
    sys.exit(0 if all([report(folder, pages.site_read(folder)) for folder in sys.argv[1:]]) else 1)
