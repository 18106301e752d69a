"""Writes a schema and set documents whose names and texts would do harm on a page that does not escape them.

    hostile.py FOLDER

leaves FOLDER/Hostile.exp and FOLDER/Sets. What gets through sets `kivCanary` in the browser.
"""

import os
import sys
from xml.sax.saxutils import escape, quoteattr

MARKUP = [
    "<script>window.kivCanary=1</script>",
    "</title></script><script>window.kivCanary=1</script>",
    "\"><img src=x onerror=window.kivCanary=1>",
    "' onmouseover='window.kivCanary=1' onfocus='window.kivCanary=1' autofocus='",
    "javascript:window.kivCanary=1//",
    "data:text/html,<script>window.kivCanary=1</script>",
    "--><svg onload=window.kivCanary=1><!--",
    "]]><iframe srcdoc='<script>parent.kivCanary=1</script>'>",
    "&lt;script&gt;window.kivCanary=1&lt;/script&gt;",
    "${window.kivCanary=1}{{window.kivCanary=1}}`",
    "\\\";window.kivCanary=1;//",
]
DIRECTIONS = ["\u202eexe.txet", "\u2066\u202e\u2069\u2067x", "\u200f\u061ca\u200e", "line\u2028separator\u2029\u0085"]
FILES = ["../../../../kivCanary", "..", ".", "CON", "nul", "COM1", "a/b\\c:d*e?f", "index", "entities", "sets", "assets",
         "Case", "case", "CASE", "Ca se", "x" * 300, "%2e%2e%2f", "~", "#x", "?x", ".htaccess", "-rf", "__proto__"]
LONG = ["m" * 1_000_000, "長" * 300_000, "<b>" * 300_000]

# What reads EXPRESS takes a name up to what ends it; these have no blanks, so that they stay whole.
OBJECTS = ["Wall<script>window.kivCanary=1</script>", "Wall\"onclick=\"window.kivCanary=1\"", "javascript:window.kivCanary=1",
           "Wall\u202ellaW", "Case", "CASE", "index", "con", "../Wall", "W" * 100_000]


def schema():
    lines = ["SCHEMA HOSTILE<script>window.kivCanary=1</script>;", "TYPE Label = STRING; -- <script>window.kivCanary=1</script>",
             "END_TYPE;", "TYPE Kind = ENUMERATION OF (A, <img/src=x/onerror=window.kivCanary=1>, \"onx='y', USERDEFINED);",
             "END_TYPE;", "ENTITY Wall;", "\tName : Label;", "\tPredefinedType : OPTIONAL Kind;",
             "\t<script>window.kivCanary=1</script> : Label;", "\tjavascript:window.kivCanary=1 : Label;",
             " WHERE",
             "\tSafe : (Name <> '</code><script>window.kivCanary=1</script>') AND (Name <> 'javascript:x');", "END_ENTITY;"]
    # What is no rule ends its clause.
    lines += ["ENTITY Ruled", " SUBTYPE OF (Wall);", " WHERE",
              "\t<script>window.kivCanary=1</script> : Name <> '<script>window.kivCanary=1</script>';", "END_ENTITY;"]
    for name in OBJECTS:
        lines += [f"ENTITY {name}", " SUBTYPE OF (Wall);", f"\tOwn : {OBJECTS[0]};", "END_ENTITY;"]
    lines += ["FUNCTION Harm(x : Label) : BOOLEAN;", "\t(* </pre><script>window.kivCanary=1</script> *)",
              "\tRETURN (x <> '<script>window.kivCanary=1</script>'); -- <img src=x onerror=window.kivCanary=1>", "END_FUNCTION;",
              "RULE HarmRule FOR (Wall);", " WHERE", "\tR : Harm('<script>window.kivCanary=1</script>');", "END_RULE;", "END_SCHEMA;"]
    return "\n".join(lines) + "\n"


def aliases(tag, text):
    return f"<{tag}es>" + "".join(f"<{tag} lang={quoteattr(lang)}>{escape(text)}</{tag}>" for lang in
                                  ["de", "\"><script>window.kivCanary=1</script>", "en\" onload=\"window.kivCanary=1", "x-\u202e",
                                   "l" * 10_000]) + f"</{tag}es>"


def member(name, number):
    return (f"<PropertyDef ifdguid={quoteattr(name if number % 2 else f'{number:032x}')}><Name>{escape(name)}</Name>"
            f"<Definition>{escape(name)}</Definition><PropertyType><TypePropertySingleValue><DataType type={quoteattr(name)} />"
            f"<UnitType type={quoteattr(name)} /></TypePropertySingleValue></PropertyType>"
            f"{aliases('NameAlias', name)}{aliases('DefinitionAlias', name)}</PropertyDef>")


def enumeration(name):
    return (f"<PropertyDef><Name>Values</Name><PropertyType><TypePropertyEnumeratedValue><EnumList name={quoteattr(name)}>"
            f"<EnumItem>{escape(name)}</EnumItem></EnumList><ConstantList><ConstantDef><Name>{escape(name)}</Name>"
            f"<Definition>{escape(name)}</Definition></ConstantDef></ConstantList></TypePropertyEnumeratedValue></PropertyType>"
            "</PropertyDef>")


def document(name, members):
    return ("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<PropertySetDef templatetype=" + quoteattr(name[:1000]) +
            f"><Name>{escape(name)}</Name><Definition>{escape(name[:5000])}</Definition><IfcVersion version={quoteattr(name[:1000])} />"
            f"<ApplicableClasses><ClassName>Wall</ClassName><ClassName>{escape('Wall/' + name[:1000])}</ClassName></ApplicableClasses>"
            f"<PropertyDefs>{''.join(members)}</PropertyDefs></PropertySetDef>\n")


def documents():
    short = MARKUP + DIRECTIONS + FILES
    for name in short:
        yield document(name, [member(name, 1), enumeration(name)])
    yield document("Pset_All", [member(name, number) for number, name in enumerate(short)])
    for name in LONG:
        yield document(name, [member("Short", 0)])
        yield document("Pset_Long", [f"<PropertyDef><Name>{escape(name)}</Name></PropertyDef>"])


def main(folder):
    os.makedirs(os.path.join(folder, "Sets"), exist_ok=True)
    with open(os.path.join(folder, "Hostile.exp"), "w", encoding="utf-8", newline="\n") as file:
        file.write(schema())
    for number, text in enumerate(documents()):
        with open(os.path.join(folder, "Sets", f"{number:03}.xml"), "w", encoding="utf-8", newline="\n") as file:
            file.write(text)


if __name__ == "__main__":
    main(sys.argv[1])
