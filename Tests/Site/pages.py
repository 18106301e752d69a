"""The pages of a site as tests see them: ids, links, rows, and what must not be on any page."""

import html.parser
import multiprocessing
import os
import re
import urllib.parse
from dataclasses import dataclass, field

POLICY = ("default-src 'none'; style-src 'self'; script-src 'self'; img-src 'self' data:; "
          "base-uri 'none'; form-action 'none'")
# Of a page, all that may come from somewhere: the site's own files. "data:," is the icon that no one asks a server for.
ASSETS = {"site.css", "site.js", "search.js"}
VOID = {"area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "source", "track", "wbr"}
ALLOWED = set("""html head meta title link script body a header div label input ul li ol select option button nav main h1 h2 h3 h4
    p span section table caption thead tbody tr th td code pre bdi dl dt dd details summary figure figcaption svg g path rect text
    line polyline circle tspan article footer strong em small abbr kbd br wbr hr aside b""".split())
KEYWORD = re.compile("[A-Za-z_]+")


@dataclass
class Row:
    """Something on a page that has an id and a name."""
    section: str
    id: str
    name: str = ""
    inherited: bool = False


@dataclass
class Page:
    path: str
    kind: str = ""
    name: str = ""
    ids: dict = field(default_factory=dict)
    links: list = field(default_factory=list)
    rows: list = field(default_factory=list)
    sets: set = field(default_factory=set)  # Paths of the sets that are said to apply to the entity of the page
    problems: list = field(default_factory=list)


class Reader(html.parser.HTMLParser):
    """Fills a Page."""

    def __init__(self, page):
        super().__init__(convert_charrefs=True)
        self.page = page
        self.open = []  # (tag, id, classes)
        self.policy = None
        self.heading = None  # Parts of the text of h1
        self.row = None
        self.row_depth = 0
        self.taking = None  # Depth of the element whose text is the name of a row
        self.addressed = []  # Ids of rows, to each of which the page must have a link to copy
        self.set_links = None  # Those to itself of the set that is open

    def problem(self, text):
        self.page.problems.append(f"{self.page.path}:{self.getpos()[0]}: {text}")

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.element_check(tag, attributes, values)
        if "id" in values:
            self.page.ids[values["id"]] = self.page.ids.get(values["id"], 0) + 1
        if tag in VOID:
            return
        classes = (values.get("class") or "").split()
        self.open.append((tag, values.get("id"), classes))
        self.row_begin(tag, values)
        self.address_check(tag, values, classes)
        if tag == "h1":
            self.heading = []

    def handle_startendtag(self, tag, attributes):
        values = dict(attributes)
        self.element_check(tag, attributes, values)

    def handle_endtag(self, tag):
        if tag in VOID or not self.open:
            return
        if self.open[-1][0] != tag:
            self.problem(f"</{tag}> ends <{self.open[-1][0]}>")
            return
        depth = len(self.open)
        if self.taking == depth:
            self.taking = None
            self.row.name = self.row.name.strip()
        if self.row and depth == self.row_depth:
            self.row = None
        if tag == "h1":
            self.page.name = "".join(self.heading).strip()
            self.heading = None
        if tag == "details" and "set" in self.open[-1][2]:
            if not self.set_links:
                self.problem("a set has no link to itself")
            self.set_links = None
        self.open.pop()

    def handle_data(self, data):
        if self.open and self.open[-1][0] == "b" and not KEYWORD.fullmatch(data):
            self.problem("<b> is not around a keyword")
        if self.taking:
            self.row.name += data
        if self.heading is not None:
            if any("kind" in classes for _, _, classes in self.open):
                self.page.kind += data.strip()
            else:
                self.heading.append(data)

    def row_begin(self, tag, values):
        names = [name for name, _, _ in self.open]
        if tag in ("tr", "article", "li", "div", "details") and values.get("id"):
            section = next((name for at, name, _ in self.open if at == "section" and name), "")
            # Members of a select that is a member are below it.
            nested = any(at == "li" and name for at, name, _ in self.open[:-1])
            inherited = nested or any("inherited" in classes for _, _, classes in self.open)
            self.row = Row(section, values["id"], "", inherited)
            self.row_depth = len(self.open)
            self.page.rows.append(self.row)
        elif self.row and not self.row.name and not self.taking and tag in ("code", "bdi") and (
                "h3" in names or "th" in names or "summary" in names or tag == "code"):
            self.taking = len(self.open)

    def address_check(self, tag, values, classes):
        """Every row with a name and every finding has an address, and what has one a link to copy, but for those of a set in place, whose names lead to the page of the set."""
        if tag == "details" and "set" in classes:
            self.set_links = []
        if self.set_links is not None:
            return
        if tag in ("tr", "li") and values.get("id"):
            self.addressed.append(values["id"])
        if tag == "th" and values.get("scope") == "row" and not self.open[-2][1] or self.is_finding(tag):
            self.problem("a row has no address")

    def is_finding(self, tag):
        return tag == "li" and not self.open[-1][1] and len(self.open) > 1 and "findings" in self.open[-2][2]

    def element_check(self, tag, attributes, values):
        if tag not in ALLOWED or tag == "b" and attributes:
            self.problem(f"<{tag}>")
        if len(values) != len(attributes):
            self.problem(f"an attribute of <{tag}> is there twice")
        for name in values:
            if name.startswith("on") or name in ("style", "srcset", "formaction", "action", "ping", "srcdoc"):
                self.problem(f"attribute {name} of <{tag}>")
        if tag == "meta":
            self.meta_check(values)
        if tag == "script":
            self.resource_check(values.get("src"), tag)
        if tag == "link":
            self.resource_check(values.get("href"), tag)
        if tag in ("a", "area"):
            self.link_take(values)

    def meta_check(self, values):
        name = (values.get("http-equiv") or "").lower()
        if name == "content-security-policy":
            self.policy = values.get("content")
        elif name:
            self.problem(f"http-equiv {name}")

    def resource_check(self, address, tag):
        if address == "data:,":
            return
        folder, _, name = (address or "").rpartition("/")
        depth = self.page.path.count("/")
        if name not in ASSETS or folder != "../" * depth + "assets":
            self.problem(f"<{tag}> asks for {address}")

    def link_take(self, values):
        address = values.get("href")
        if address is None:
            self.problem("a link without an address")
        elif ":" in address.split("#")[0] or address.startswith(("/", "\\")):
            self.problem(f"the link {address[:100]} leads out of the site")
        else:
            self.page.links.append((self.getpos()[0], address))
            if self.set_links is not None and address.startswith("#set-"):
                self.set_links.append(address)
            if address.startswith("sets/") and "#" not in address and ("section", "sets") in [at[:2] for at in self.open]:
                self.page.sets.add(urllib.parse.unquote(address))


def page_read(job):
    """The page at a path below a folder."""
    folder, path = job
    page = Page(path)
    with open(os.path.join(folder, path), encoding="utf-8", newline="") as file:
        text = file.read()
    reader = Reader(page)
    reader.feed(text)
    reader.close()
    if reader.policy != POLICY:
        page.problems.append(f"{path}: the policy is {reader.policy}")
    if "<script" in text and text.index("<script") < text.index("Content-Security-Policy"):
        page.problems.append(f"{path}: a script comes before the policy")
    links = {address for _, address in page.links}
    page.problems += [f"{path}: no link to copy leads to the row {name[:100]}" for name in reader.addressed
                      if "#" + name not in links]
    for name, count in page.ids.items():
        if count > 1:
            page.problems.append(f"{path}: the id {name[:100]} is there {count} times")
    if reader.open:
        page.problems.append(f"{path}: <{reader.open[-1][0]}> does not end")
    return page


def site_read(folder):
    """All pages of a site by path."""
    paths = sorted(os.path.relpath(os.path.join(at, name), folder).replace(os.sep, "/")
                   for at, _, names in os.walk(folder) for name in names if name.endswith(".html"))
    with multiprocessing.Pool() as pool:
        pages = pool.map(page_read, [(folder, path) for path in paths], chunksize=16)
    return {page.path: page for page in pages}
