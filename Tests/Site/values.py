"""What the pages of sets say of each set and member, beside what `kivifc check --json` says: kind, type, unit, values, definitions
and names in all languages, GUIDs in their notations, applicable classes."""

import collections
import html.parser
import os
import uuid

LONGEST = 60  # Of a piece that is compared, as names are cut on pages
KINDS = {"TypePropertySingleValue": "Single value", "TypePropertyBoundedValue": "Bounded value",
         "TypePropertyReferenceValue": "Reference", "TypePropertyEnumeratedValue": "Enumeration",
         "TypePropertyTableValue": "Table", "TypePropertyListValue": "List", "TypeComplexProperty": "Complex",
         "Q_COUNT": "Count", "Q_WEIGHT": "Weight", "Q_LENGTH": "Length", "Q_AREA": "Area", "Q_VOLUME": "Volume", "Q_TIME": "Time"}
FACTS = {"IFC version": "ifcVersion", "Template type": "templateType", "Applicable type value": "applicableTypeValue"}
BASE64 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$"
VOID = {"br", "hr", "img", "input", "link", "meta", "wbr"}


def plain(text):
    return " ".join(text.split())


def short(text):
    return plain(text)[:LONGEST].rstrip("…. ")


def pieces(texts):
    """Pages have several values in one element; types are found, and shown, whatever their letter case."""
    return tuple(short(piece).lower() for text in texts for piece in plain(text).split(", ") if piece)


def guid_notations(digits):
    number = uuid.UUID(digits).int
    return ("".join(BASE64[number >> shift & 63] for shift in range(126, -1, -6)), digits, str(uuid.UUID(digits)))


class SetPage(html.parser.HTMLParser):
    """The facts of one page, as (member or "", what, language or "", text)."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.facts = []
        self.name = ""
        self.open = []  # (tag, attributes)
        self.term = ""  # Of a fact
        self.cells = []  # Of the row that is open: (cell number, what it is in, language, text)
        self.cell = -1

    def handle_starttag(self, tag, attributes):
        if tag in VOID:
            return
        self.open.append((tag, dict(attributes)))
        if tag == "tr":
            self.cells, self.cell = [], -1
        if tag in ("td", "th"):
            self.cell += 1

    def handle_endtag(self, tag):
        if tag in VOID:
            return
        self.open.pop()
        if tag == "tr":
            self.row_take(self.section())

    def section(self):
        return next((values.get("id") for tag, values in self.open if tag == "section"), None)

    def has(self, name, class_name=None):
        return any(tag == name and (class_name is None or class_name in (values.get("class") or "").split())
                   for tag, values in self.open)

    def language(self):
        return next((values.get("data-l", values.get("lang", "")) for tag, values in self.open
                     if tag == "span" and values.get("class") == "t"), "")

    def handle_data(self, data):
        if not data.strip() or self.has("span", "badge") or self.has("a", "anchor"):
            return
        if self.has("h1") and not self.has("span", "kind"):
            self.name += data
        if self.has("p", "lead"):
            self.facts.append(("", "definition", self.language(), plain(data)))
        if self.section() == "facts":
            self.fact_take(data)
        if self.has("tbody"):
            what = "guid" if self.has("details") else "note" if self.has("span", "note") else "code" if self.has("code") else "text"
            self.cells.append((self.cell, what, self.language(), data))

    def fact_take(self, data):
        if self.has("dt"):
            self.term = data
        elif self.has("dl", "guid"):
            self.facts.append(("", "guid", "", data))
        elif self.has("dd") and self.term in FACTS:
            self.facts.append(("", self.term, "", plain(data)))

    def row_take(self, section):
        names = [text for cell, what, _, text in self.cells if cell == 0 and what == "code"]
        if section == "classes" and names:
            self.class_take(names[0])
        if section == "members" and names:
            self.member_take(short(names[0]))

    def class_take(self, name):
        if any(cell == 1 and what == "text" and text.startswith("all") for cell, what, _, text in self.cells):
            self.facts.append(("", "class", "", name))
        self.facts += [("", "class", "", f"{name}/{text}") for cell, what, _, text in self.cells if cell == 1 and what == "code"]

    def member_take(self, name):
        codes = [text for cell, what, _, text in self.cells if cell == 2 and what == "code"]
        self.facts.append((name, "values", "", pieces(codes)))
        for cell, what, language, text in self.cells:
            if cell == 0 and what == "note" and language:
                self.facts.append((name, "name", language, plain(text)))
            if cell == 1:
                self.facts.append((name, "kind", "", text))
            if cell == 2 and what == "note":
                self.facts.append((name, "item", language, plain(text)))
            if cell == 3 and what == "text":
                self.facts.append((name, "definition", language, plain(text)))
            if cell == 3 and what == "guid" and text != "GUID":
                self.facts.append((name, "guid", "", text))


def page_facts(folder, path):
    """With the name of the set before each."""
    page = SetPage()
    with open(os.path.join(folder, path), encoding="utf-8", newline="") as file:
        page.feed(file.read())
    return [(short(page.name), *fact) for fact in page.facts]


def translated(member, what, text, aliases):
    yield member, what, "", plain(text)
    for alias in aliases:
        yield member, what, alias["lang"], plain(alias["text"])


def guid_facts(member, digits):
    return [(member, "guid", "", text) for text in guid_notations(digits)] if digits else []


def column_values(name, values):
    yield name
    for value in values:
        yield from (value["unitType"], value["values"])


def written_values(kind):
    """The texts of a type in the order in which pages have them."""
    for name in ("enumerationName", "dataTypeName", "measureTypeName", "unitType", "lowerBoundValue", "upperBoundValue"):
        yield kind.get(name) or ""
    if kind.get("kind") == "TypePropertyTableValue":
        yield from column_values(kind["definingTypeName"], kind["definingValues"])
        yield from column_values(kind["definedTypeName"], kind["definedValues"])
        yield kind["expression"]
    if kind.get("kind") == "TypePropertyListValue":
        yield from column_values(kind["listItemTypeName"], kind["listValues"])
    if kind.get("kind") == "TypeComplexProperty":
        yield kind["name"]
    yield from kind.get("items") or []
    # Constants that belong to no item come last.
    left = list(kind.get("items") or [])
    for number, constant in enumerate(kind.get("constants") or []):
        is_first = constant["name"] not in [other["name"] for other in kind["constants"][:number]]
        if not (is_first and constant["name"] in left):
            yield constant["name"]


def member_facts(definition):
    name = short(definition["name"])
    kind = definition.get("type") or {}
    yield name, "kind", "", KINDS.get(kind.get("kind") or kind.get("code"), "No known type")
    yield name, "values", "", pieces(written_values(kind))
    yield from translated(name, "definition", definition["definition"], definition["definitionAliases"])
    yield from ((name, "name", alias["lang"], plain(alias["text"])) for alias in definition["nameAliases"])
    yield from guid_facts(name, definition["ifdGuid"])
    for constant in kind.get("constants") or []:
        yield from translated(name, "item", "", constant["nameAliases"])
        yield from translated(name, "item", constant["definition"], constant["definitionAliases"])
    for part in kind.get("properties") or []:
        yield from member_facts(part)


def set_facts(definition):
    """What the JSON says of a set, with its name before each; texts that are empty are on no page."""
    facts = list(translated("", "definition", definition["definition"], definition["definitionAliases"]))
    facts += [("", title, "", plain(definition.get(name) or "")) for title, name in FACTS.items()]
    facts += guid_facts("", definition["ifdGuid"])
    for applicable in definition["applicableClasses"]:
        predefined = applicable["predefinedType"]
        facts.append(("", "class", "", applicable["className"] + (f"/{predefined}" if predefined else "")))
    for member in definition.get("properties") or definition.get("quantities") or []:
        facts += member_facts(member)
    # A class that is named twice is there once.
    classes = dict.fromkeys(fact for fact in facts if fact[1] == "class")
    facts = [fact for fact in facts if fact[1] != "class"] + list(classes)
    return [(short(definition["name"]), *fact) for fact in facts if fact[3] or fact[1] == "values"]


def differences(folder, paths, checked):
    """What was read and is on no page, what is on a page and was not read, and how many facts there are."""
    read = collections.Counter(fact for document in checked["documents"] if document.get("set")
                               for fact in set_facts(document["set"]))
    shown = collections.Counter(fact for path in paths for fact in page_facts(folder, path))
    return read - shown, shown - read, sum(read.values())
