"""Tests of `./dev mutate` itself: ./dev mutate --self-test."""

import collections
import json
import tempfile
import unittest
from pathlib import Path

import mutate
from mutants import mutants_of

# Every number, sign and word that must stay as it is has the digits 777 or the name "same" in it.
SAMPLE = r'''#include "same/777.h" // same == 777
#define SAME(a) \
    ((a) == 777)
/* same && 777
   x < 777 */
#include <array>
namespace sample {
static_assert(777 == 777, "same");
using Same = std::array<int, 777>;
template <class Same, int N = 777> struct Holder {
    virtual int getSame() const = 0;
    int first = 3;
};
enum class Color { Red, Green };

int limited(int value, int limit) noexcept(777 > 0) {
    const std::string text = "same && 777 == 777; return";
    const auto raw = R"x(same || "777")x";
    if (value < limit && value > 5)
        return limit;
    // if (same == 777) return;
    vCount(value, limit);
    vShow(limit);
    while (value != 0)
        --value;
    return value + 1;
}

bool boHas(const std::array<int, 777>& values, int&& number) {
    for (int i = 0; i < 4; ++i) {
        if (values[i] == number)
            continue;
        if (const auto* found = pFind(values))
            return true;
    }
    const auto get = [&](int at) { return at > 2 ? at : 9; };
    vSomeReport("same", 777);
    switch (number) {
    case 8:
        number += 2;
        break;
    default:
        return !values.empty();
    }
    throw 'a' + get(6);
}
} // namespace sample
'''


class Operators(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "Sample.cpp"
            path.write_text(SAMPLE)
            cls.text = path.read_text()
            cls.mutants = mutants_of("Source/Sample.cpp", cls.text)

    def changes(self, operator, line=None):
        """The changes by an operator, in the line that has the text."""
        found = [one for one in self.mutants if one.operator == operator]
        if line is not None:
            number = self.text[:self.text.index(line)].count("\n") + 1
            found = [one for one in found if one.line == number]
        return sorted((" ".join(one.old.split()), " ".join(one.new.split())) for one in found)

    def test_what_is_no_code_stays(self):
        for one in self.mutants:
            changed = one.apply(self.text)
            if one.operator == "drop" and "vSomeReport" in one.old:
                continue
            self.assertEqual(changed.count("777"), self.text.count("777"), one)
            self.assertEqual(changed.lower().count("same"), self.text.lower().count("same"), one)

    def test_comparisons(self):
        self.assertEqual(self.changes("compare", "if (value < limit"), [("<", "<="), (">", ">=")])
        self.assertEqual(self.changes("compare", "while (value"), [("!=", "==")])
        self.assertEqual(self.changes("compare", "for (int i"), [("<", "<=")])
        self.assertEqual(len(self.changes("compare")), 6)

    def test_logic(self):
        self.assertEqual(self.changes("logic"), [("&&", "||")])

    def test_constants(self):
        self.assertEqual(self.changes("constant", "int first"), [("3", "2"), ("3", "4")])
        self.assertEqual(self.changes("constant", "for (int i"), [("0", "1"), ("4", "3"), ("4", "5")])
        self.assertEqual(self.changes("constant", "case 8"), [("8", "7"), ("8", "9")])
        self.assertEqual(self.changes("constant", "getSame"), [])

    def test_arithmetic(self):
        self.assertEqual(self.changes("arithmetic"),
                         [("+", "-"), ("+", "-"), ("++", "--"), ("+=", "-="), ("--", "++")])

    def test_conditions(self):
        self.assertEqual(self.changes("branch", "if (value <"),
                         [("value < limit && value > 5", "false"), ("value < limit && value > 5", "true")])
        self.assertEqual(self.changes("negate", "if (value <"),
                         [("value < limit && value > 5", "!(value < limit && value > 5)")])
        self.assertEqual(self.changes("branch", "while ("), [("value != 0", "false")])
        self.assertEqual(self.changes("negate", "if (const"),
                         [("const auto* found = pFind(values)", "const auto* found = pFind(values); !found")])
        self.assertEqual(self.changes("branch", "at > 2"), [("at : 9", "9 : at")])
        self.assertEqual(self.changes("negate", "!values"), [("!", "")])

    def test_dropped_statements(self):
        self.assertEqual(self.changes("drop"), [
            ("--value;", ";"), ("break;", ";"), ("continue;", ";"), ("number += 2;", ";"),
            ("throw 'a' + get(6);", ";"), ("vCount(value, limit);", ";"), ("vShow(limit);", ";"),
            ('vSomeReport("same", 777);', ";")])

    def test_order(self):
        self.assertEqual(self.changes("order", "    vCount"),
                         [("vCount(value, limit); vShow(limit);", "vShow(limit); vCount(value, limit);"),
                          ("value, limit", "limit, value")])
        self.assertEqual(len(self.changes("order")), 2)

    def test_answers(self):
        self.assertEqual(self.changes("return"),
                         [("at > 2 ? at : 9", "{}"), ("limit", "{}"), ("value + 1", "{}")])
        self.assertEqual(self.changes("bool"), [("true", "false")])

    def test_functions_are_named(self):
        dropped = [one for one in self.mutants if one.operator == "drop"]
        self.assertEqual({one.function for one in dropped}, {"limited", "boHas"})


class Ids(unittest.TestCase):
    def test_stay_when_lines_move(self):
        before = {one.id for one in mutants_of("Source/A/Sample.cpp", SAMPLE)}
        moved = "\n// new\n" + SAMPLE.replace("    ", "  ")
        after = {one.id for one in mutants_of("Source/B/Sample.cpp", moved)}
        self.assertEqual(before, after)

    def test_differ(self):
        twice = SAMPLE + SAMPLE.replace("namespace sample", "namespace other")
        found = [one.id for one in mutants_of("Sample.cpp", twice)]
        self.assertEqual(len(found), len(set(found)))
        self.assertEqual(len(found), 2 * len(mutants_of("Sample.cpp", SAMPLE)))

    def test_list_of_equivalent_ones(self):
        listed = mutate.equivalent_ids("# id | change | reason\n\ndrop-1 | v(); => ; | only saves time\n")
        self.assertEqual(listed, {"drop-1": "only saves time"})


class Resuming(unittest.TestCase):
    def test_what_was_tried_of_the_same_sources_is_known(self):
        tried = mutate.Outcome("killed", "mirror", "kiv_base_tests", "A.B", 2, 3.5)
        entries = [{"key": key, "id": name, **mutate.asdict(tried)}
                   for key, name in (("now", "x"), ("then", "y"))]
        log = "".join(json.dumps(entry) + "\n" for entry in entries)
        self.assertEqual(mutate.outcomes_of(log, "now"), {"x": tried})


class Drawing(unittest.TestCase):
    def orders(self, seed):
        return {name: mutate.drawing_order(mutants_of(f"Source/{name}/Sample.cpp", SAMPLE), f"{seed} {name}")
                for name in ("A", "B")}

    def test_quotas_follow_size_but_leave_nobody_out(self):
        self.assertEqual(mutate.quotas({"large": 900, "middle": 90, "small": 10, "tiny": 2}, 100),
                         {"large": 86, "middle": 8, "small": 4, "tiny": 2})

    def test_seed_decides(self):
        ids = [[one.id for one in self.orders(seed)["A"]] for seed in (1, 1, 2)]
        self.assertEqual(ids[0], ids[1])
        self.assertNotEqual(ids[0], ids[2])
        self.assertEqual(sorted(ids[0]), sorted(ids[2]))

    def test_every_line_has_its_turn_first(self):
        order = self.orders(1)["A"]
        lines = len({one.line for one in order})
        self.assertEqual(len({one.line for one in order[:lines]}), lines)

    def test_those_that_fail_are_replaced_whoever_is_faster(self):
        drawn = []
        for late in (0, 3):
            orders = {f"Source/{name}": order for name, order in self.orders(1).items()}
            draw = mutate.Draw(orders, {"Source/A": 6, "Source/B": 2}, lambda _: False)
            tried, waiting = [], collections.deque()
            while sum(draw.shares.values()):
                while len(waiting) <= late and sum(draw.shares.values()) > sum(draw.pending.values()):
                    waiting.append(draw.next())
                mutant = waiting.pop() if late else waiting.popleft()
                does_count = int(mutant.id[-1], 16) % 3 > 0
                tried += [mutant.file + mutant.id] if does_count else []
                draw.done(mutant, does_count)
            self.assertIsNone(draw.next())
            drawn.append(sorted(tried))
        self.assertEqual(len(drawn[0]), 8)
        self.assertEqual(drawn[0], drawn[1])


def run():
    """0 when all pass."""
    suite = unittest.defaultTestLoader.loadTestsFromName(__name__)
    return 0 if unittest.TextTestRunner().run(suite).wasSuccessful() else 1
