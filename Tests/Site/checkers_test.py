"""The checkers of sites find what they are there for: small sites with one fault each."""

import collections
import os
import tempfile
import unittest

import complete
import links
import pages
import values

HEAD = ("<!DOCTYPE html><html lang=\"en\" data-root=\"\"><head><meta charset=\"utf-8\"><meta http-equiv=\"Content-Security-Policy\" "
        f"content=\"{pages.POLICY}\"><title>t</title></head><body><main>")
END = "</main></body></html>"
WALL = ("<h1><span class=\"kind\">Entity</span> <bdi>Wall</bdi></h1><section id=\"attributes\"><table><tbody>"
        "<tr id=\"Name\"><th scope=\"row\"><a class=\"anchor\" href=\"#Name\">#</a><code>Name</code></th><td><code>Label</code></td></tr>"
        "</tbody><tbody class=\"inherited\"><tr id=\"Id\"><th scope=\"row\"><code>Id</code></th></tr></tbody></table></section>")


def site(**files):
    with tempfile.TemporaryDirectory() as folder:
        for name, body in files.items():
            path = os.path.join(folder, name.replace("__", "/") + ".html")
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(body if body.startswith("<!DOCTYPE") else HEAD + body + END)
        return pages.site_read(folder)


class LinksTest(unittest.TestCase):
    def test_a_whole_site_has_no_problems(self):
        self.assertEqual(links.problems(site(
            index='<a href="sets/A.html#x">a</a><a href="#y">y</a><p id="y"></p><details class="set" id="set-A"><a href="#set-A">#</a>'
                  '<table><tr><th scope="row">in place</th></tr></table></details>'
                  '<table><tr id="A"><th scope="row"><a href="#A">#</a></th></tr></table>',
            sets__A='<p id="x"></p><a href="../index.html">home</a>')), [])

    def test_faults_are_found(self):
        rows = [('<a href="B.html">b</a>', "leads to no page"),
                ('<a href="#z">z</a>', "leads to no place on its page"),
                ('<a href="../B.html">b</a>', "leads out of the folder"),
                ('<a href="http://example.org/">e</a>', "leads out of the site"),
                ('<a href="javascript:x">e</a>', "leads out of the site"),
                ('<a href="//example.org/">e</a>', "leads out of the site"),
                ('<a>e</a>', "a link without an address"),
                ('<p onclick="x">', "attribute onclick"),
                ('<p style="x">', "attribute style"),
                ('<script>x</script>', "<script> asks for None"),
                ('<script src="http://example.org/site.js"></script>', "<script> asks for"),
                ('<iframe></iframe>', "<iframe>"),
                ('<b class="x">SET</b>', "<b>"),
                ('<b>two words</b>', "<b> is not around a keyword"),
                ('<p id="a"></p><p id="a"></p>', "the id a is there 2 times"),
                ('<table><tr><th scope="row">A</th></tr></table>', "a row has no address"),
                ('<table><tr id="A"><th scope="row">A</th></tr></table>', "no link to copy leads to the row A"),
                ('<table><tr id="A"><td>A</td></tr></table>', "no link to copy leads to the row A"),
                ('<ul class="tree"><li id="A">A</li></ul>', "no link to copy leads to the row A"),
                ('<ul class="findings"><li>A</li></ul>', "a row has no address"),
                ('<details class="set" id="set-A"><a href="#A">A</a></details><p id="A"></p>', "a set has no link to itself"),
                ('<p>', "</main> ends <p>")]
        for body, problem in rows:
            with self.subTest(body):
                found = links.problems(site(index=body))
                self.assertTrue(any(problem in text for text in found), found)

    def test_pages_that_nothing_leads_to_are_found(self):
        self.assertEqual(links.problems(site(index="", A="")), ["A.html: no link leads here"])

    def test_a_page_without_a_policy_is_found(self):
        found = links.problems(site(index="<!DOCTYPE html><html><head></head><body></body></html>"))
        self.assertEqual(found, ["index.html: the policy is None"])


class IndexTest(unittest.TestCase):
    def problems(self, pages_of_index, **files):
        with tempfile.TemporaryDirectory() as folder:
            os.mkdir(os.path.join(folder, "assets"))
            with open(os.path.join(folder, "assets", "search-index.js"), "w", encoding="utf-8") as file:
                file.write(f'window.kivSearch={{format:2,kinds:["Entity","Property set","Property"],languages:[],pages:[\n{pages_of_index}\n]}};\n')
            return links.index_problems(folder, site(**files))

    def test_entries_lead_to_pages_and_rows(self):
        self.assertEqual(self.problems('[0,"Wall",0,0,[[2,"Name",["Odd","Odd~2"]]]],\n[1,"Set"]',
                                       Wall='<p id="Name"></p><p id="Odd~2"></p>', sets__Set=""), [])

    def test_entries_that_lead_nowhere_are_found(self):
        for entry in ('[0,"Door"]', '[1,"Wall"]', '[0,"Wall","Other.html"]', '[0,"Wall",0,0,[[2,"Name"]]]'):
            with self.subTest(entry):
                self.assertEqual(len(self.problems(entry, Wall="")), 1)

    def test_pages_that_the_search_does_not_know_are_found(self):
        self.assertEqual(self.problems('[0,"Wall"]', Wall="", Door='<h1><span class="kind">Entity</span> Door</h1>'),
                         ["search: knows no Door.html"])


class DefinitionsTest(unittest.TestCase):
    def problems(self, sets):
        with tempfile.TemporaryDirectory() as folder:
            os.mkdir(os.path.join(folder, "assets"))
            with open(os.path.join(folder, "assets", "definitions.js"), "w", encoding="utf-8") as file:
                file.write(f'window.kivDefinitions={{languages:["de"],texts:["Wand"],sets:[\n{sets}\n]}};\n')
            return links.definitions_problems(folder, site(sets__A='<p id="Row"></p>'))

    def test_definitions_are_of_sets_and_rows_that_are_there(self):
        self.assertEqual(self.problems('["sets/A.html",["",0,0],["Row",0,0]]'), [])
        for sets in ('["sets/B.html",["",0,0]]', '["sets/A.html",["Other",0,0]]', '["sets/A.html",["",1,0]]', '["sets/A.html",["",0,1]]',
                     '["sets/A.html",["",0]]'):
            with self.subTest(sets):
                self.assertEqual(len(self.problems(sets)), 1)


class ValuesTest(unittest.TestCase):
    digits = "0000000000000000000000000000a93e"
    page = ('<h1><span class="kind">Property set</span> <bdi>Set</bdi></h1><p class="lead definition">About.</p>'
            '<section id="facts"><dl class="facts"><div><dt>IFC version</dt><dd><bdi>4</bdi></dd></div></dl></section>'
            '<section id="classes"><table><tbody><tr><th><code>Wall</code></th><td>all, also named: <code>SOLID</code></td></tr></tbody></table>'
            '</section><section id="members"><table><tbody><tr id="Kind"><th><a class="anchor" href="#Kind">#</a><code>Kind</code> '
            '<span class="note"><span class="t" data-l=""></span><span class="t" lang="de">Art</span></span></th><td>Enumeration</td>'
            '<td><code>Kinds</code>: <ul><li><code>A</code> <span class="note">First.</span></li><li><code>B</code></li></ul></td>'
            '<td class="definition"><span class="t" data-l="">What.</span><span class="t" lang="de">Was.</span><details><summary>GUID</summary>'
            '<p><code>0000000000000000000Aa_</code> <code>0000000000000000000000000000a93e</code> '
            '<code>00000000-0000-0000-0000-00000000a93e</code></p></details></td></tr></tbody></table></section>')
    read = {"name": "Set", "definition": "About.", "definitionAliases": [], "ifdGuid": None, "ifcVersion": "4", "templateType": "",
            "applicableTypeValue": "", "applicableClasses": [{"className": "Wall", "predefinedType": ""},
                                                             {"className": "Wall", "predefinedType": "SOLID"}],
            "properties": [{"name": "Kind", "definition": "What.", "definitionAliases": [{"lang": "de", "text": "Was."}], "ifdGuid": digits,
                            "nameAliases": [{"lang": "de", "text": "Art"}],
                            "type": {"kind": "TypePropertyEnumeratedValue", "enumerationName": "Kinds", "items": ["A", "B"],
                                     "constants": [{"name": "A", "definition": "First.", "nameAliases": [], "definitionAliases": []}]}}]}

    def differ(self, page):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "Set.html"), "w", encoding="utf-8") as file:
                file.write(HEAD + page + END)
            missing, added, _ = values.differences(folder, ["Set.html"], {"documents": [{"set": self.read}]})
            return [fact[2] for fact in [*missing, *added]]

    def test_a_page_that_says_all_has_no_differences(self):
        self.assertEqual(self.differ(self.page), [])

    def test_each_value_that_differs_is_found(self):
        rows = [("About.", "About it.", "definition"), ("<bdi>4</bdi>", "<bdi>5</bdi>", "IFC version"), ("all, also", "also", "class"),
                ("SOLID", "HOLLOW", "class"), ("Art", "Sorte", "name"), ("<td>Enumeration", "<td>List", "kind"), (">Kinds<", ">Sorts<", "values"),
                (">B<", ">C<", "values"), ("First.", "Second.", "item"), ("What.", "Which.", "definition"), ("Was.", "Welche.", "definition"),
                ("0Aa_", "0Aa$", "guid"), ('lang="de">Was', 'lang="fr">Was', "definition")]
        for text, other, what in rows:
            with self.subTest(text):
                self.assertIn(text, self.page)
                self.assertEqual(self.differ(self.page.replace(text, other)), [what, what] if text != "all, also" else [what])
        self.assertEqual(self.differ(self.page.replace(' <code>0000000000000000000000000000a93e</code>', "")), ["guid"])


class CompleteTest(unittest.TestCase):
    schema = {"objects": [{"kind": "Entity", "name": "Wall", "attributes": [{"name": "Name"}], "attributesInverse": [],
                           "unique": None, "derive": None, "where": None}]}

    def compared(self, schema, *bodies):
        return complete.compare(site(**{f"P{number}": body for number, body in enumerate(bodies)}), schema, {"documents": []})

    def test_pages_that_show_what_was_read_are_complete(self):
        self.assertTrue(self.compared(self.schema, WALL))

    def test_what_is_missing_or_too_much_is_found(self):
        self.assertFalse(self.compared(self.schema))
        self.assertFalse(self.compared(self.schema, WALL, WALL))
        self.assertFalse(self.compared(self.schema, WALL.replace("Name", "Other")))
        self.assertFalse(self.compared(self.schema, WALL.replace("inherited", "own")))
        entity = dict(self.schema["objects"][0], derive=[{"name": "SELF\\Root.Area"}])
        self.assertFalse(self.compared({"objects": [entity]}, WALL))
        self.assertFalse(self.compared({"objects": []}, WALL))

    def test_sets_of_an_entity_are_those_that_apply(self):
        section = ('<section id="sets"><details class="set"><summary>Set</summary><p><a href="sets/A.html">Page</a>'
                   '<a href="sets/B.html#Row">Row</a></p></details></section><a href="sets/B.html">elsewhere</a>')
        heading = '<h1><span class="kind">Property set</span> {}</h1>'
        made = site(Wall=WALL + section, sets__A=heading.format("A"), sets__B=heading.format("B"))
        for names, is_right in ((["A"], True), ([], False), (["B"], False), (["A", "B"], False), (["A", "A"], False)):
            with self.subTest(names):
                self.assertEqual(complete.compare_sets(made, lambda entity: collections.Counter(names)), is_right)

    def test_members_within_members_count(self):
        inner = {"name": "B", "type": None}
        self.assertEqual(list(complete.members([{"name": "A", "type": {"properties": [inner]}}])),
                         [("member", "A"), ("member", "B")])


if __name__ == "__main__":
    unittest.main(buffer=True)
