"""A site shows all that was read, and nothing else: its pages beside what `kivifc schema --json` and `check --json` say.

    complete.py --kivifc PROGRAM FOLDER SCHEMA SETS...

compares both ways, each entity, attribute, inverse attribute, rule, type, item, function, set and member by name and owner,
what is said of each set and member (values.py), and the sets on the pages of entities with what `kivifc sets` says applies to
them, and follows the links as links.py does. Exit status 1 when something is missing, too much or leads nowhere.
"""

import argparse
import collections
import json
import subprocess
import sys

import links
import pages
import values

MOST_SHOWN = 40
# Entities whose sets are looked up, each by a run of kivifc; of a schema with more, as many from all over the alphabet.
MOST_LOOKED_UP = 60
# Names are cut on pages beyond some length; what is compared is their beginning.
LONGEST = 60
TYPE_KINDS = {"Type", "Enumeration", "Select", "Defined type", "Aggregate", "Simple type"}
SET_KINDS = {"Property set": "Set", "Quantity set": "Set", "Set": "Set"}
# Sections of the pages whose rows are facts.
SECTIONS = {"attributes": "attribute", "derived": "attribute", "inverse": "inverse", "unique": "unique", "where": "where",
            "items": "item", "members": "member"}


def short(name):
    return " ".join(name.split())[:LONGEST].rstrip("…. ")


def loaded(program, *arguments):
    """What kivifc writes as JSON; that it has findings is no failure."""
    result = subprocess.run([program, *arguments, "--json"], stdout=subprocess.PIPE, check=False)
    if result.returncode not in (0, 1):
        raise SystemExit(f"complete: kivifc {arguments[0]} ended with status {result.returncode}")
    return json.loads(result.stdout)


def where_labels(thing):
    return [rule["label"] for rule in (thing.get("where") or {}).get("rules", [])]


def entity_facts(entity):
    names = [attribute["name"] for attribute in entity["attributes"]]
    # "SELF\\IfcRoot.Name" is shown as Name, with what it redeclares.
    names += [derived["name"].rpartition(".")[2] for derived in entity["derive"] or []]
    yield from (("attribute", name) for name in names)
    yield from (("inverse", attribute["name"]) for attribute in entity["attributesInverse"])
    yield from (("unique", rule["label"]) for rule in entity["unique"] or [])
    # A type that others are built on has its rules once for each; on its page they are there once.
    yield from (("where", label) for label in dict.fromkeys(where_labels(entity)))


def type_facts(thing):
    for underlying in thing["underlying"][:1]:
        if underlying.get("kind") == "ENUMERATION":
            yield from (("item", item) for item in underlying["items"])
        if underlying.get("kind") == "SELECT":
            yield from (("item", name) for name in underlying["memberNames"])
    yield from (("where", label) for label in dict.fromkeys(where_labels(thing)))


def members(definitions):
    """Properties or quantities, those within complex ones too."""
    for definition in definitions:
        yield "member", definition["name"]
        yield from members((definition.get("type") or {}).get("properties") or [])


def schema_facts(model):
    for thing in model["objects"]:
        kind = thing["kind"]
        yield kind, thing["name"], "", ""
        facts = {"Entity": entity_facts, "Type": type_facts}.get(kind)
        for what, name in facts(thing) if facts else ():
            yield kind, thing["name"], what, name


def set_facts(checked):
    for document in checked["documents"]:
        definition = document.get("set")
        if not definition:
            continue
        yield "Set", definition["name"], "", ""
        for what, name in members(definition.get("properties") or definition.get("quantities") or []):
            yield "Set", definition["name"], what, name


def page_facts(site):
    for page in site.values():
        kind = "Type" if page.kind in TYPE_KINDS else SET_KINDS.get(page.kind, page.kind)
        if kind not in ("Entity", "Type", "Function", "Rule", "Set"):
            continue
        yield kind, page.name, "", ""
        for row in page.rows:
            if row.section in SECTIONS and not row.inherited:
                yield kind, page.name, SECTIONS[row.section], row.name


def counted(facts):
    return collections.Counter((kind, short(owner), what, short(name)) for kind, owner, what, name in facts)


def shown(title, facts):
    for count, ((kind, owner, what, name), number) in enumerate(sorted(facts.items())):
        if count == MOST_SHOWN:
            print(f"complete: {title}: and {len(facts) - count} more")
            break
        print(f"complete: {title}: {kind} {owner}{' ' + what + ' ' + name if what else ''}{f' ({number} times)' if number > 1 else ''}")


def compare(site, schema, checked):
    """Prints what differs; whether nothing does."""
    read = counted(schema_facts(schema)) + counted(set_facts(checked))
    on_pages = counted(page_facts(site))
    shown("read, but on no page", read - on_pages)
    shown("on a page, but not read", on_pages - read)
    print(f"complete: {sum(read.values())} read, {sum(on_pages.values())} on pages")
    return read == on_pages


def compare_values(folder, site, checked):
    """Prints what is said of sets and members differently; whether nothing is."""
    paths = [page.path for page in site.values() if page.kind in SET_KINDS]
    missing, added, count = values.differences(folder, paths, checked)
    for title, facts in (("read, but not on the page of its set", missing), ("on the page of a set, but not read", added)):
        for fact in sorted(facts, key=repr)[:MOST_SHOWN]:
            print(f"complete: {title}: {fact}")
    print(f"complete: {count} values of sets and members read, {len(missing)} missing on pages, {len(added)} too many")
    return not missing and not added


def sets_on_page(site, page):
    return collections.Counter(short(site[path].name) for path in page.sets)


def sets_looked_up(program, schema, sets, entity):
    """What the library finds for an entity and all above it. None applying is exit status 1."""
    result = subprocess.run([program, "sets", schema, *sets, "--entity", entity, "--unrestricted", "--json"],
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    return collections.Counter(short(each["name"]) for each in json.loads(result.stdout))


def compare_sets(site, look_up):
    """Prints the entities whose sets differ from those that `look_up` says; whether there are none."""
    entities = sorted((page for page in site.values() if page.kind == "Entity"), key=lambda page: page.name)
    entities = entities[::max(1, -(-len(entities) // MOST_LOOKED_UP))]
    wrong = 0
    for page in entities:
        on_page, applying = sets_on_page(site, page), look_up(page.name)
        if on_page != applying:
            wrong += 1
            print(f"complete: sets of {page.name[:80]}: missing {sorted(applying - on_page)[:5]}, too many {sorted(on_page - applying)[:5]}")
    print(f"complete: the sets of {len(entities)} entities looked up, {wrong} differ")
    return not wrong


def main(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("--kivifc", required=True)
    parser.add_argument("folder")
    parser.add_argument("schema")
    parser.add_argument("sets", nargs="*")
    options = parser.parse_args(arguments)
    checked = loaded(options.kivifc, "check", options.schema, *options.sets) if options.sets else {"documents": []}
    site = pages.site_read(options.folder)
    return all([links.report(options.folder, site), compare(site, loaded(options.kivifc, "schema", options.schema), checked),
                compare_values(options.folder, site, checked),
                not options.sets or compare_sets(
                    site, lambda entity: sets_looked_up(options.kivifc, options.schema, options.sets, entity))])


if __name__ == "__main__":
    sys.exit(0 if main(sys.argv[1:]) else 1)
