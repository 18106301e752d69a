#!/usr/bin/env python3
"""Changes the sources in small ways, one at a time, and lists the changes that no test notices.

    ./dev mutate                            300 changes, drawn from all folders of Source
    ./dev mutate Source/Base/Ascii.h        those of one file
    ./dev mutate --again                    those that survived the last run, after tests were added
    ./dev mutate --id drop-4b1f09c2aa       the named ones

What a change is, is in mutants.py; how it is compiled and tested, in mutant_runs.py. Changes that no test can
notice are listed, each with the reason, in mutants-equivalent.txt. The result is build/mutate/mutants.txt and
mutants.json.
"""

import argparse
import collections
import json
import random
import sys
import threading
import time
from dataclasses import asdict
from pathlib import Path

import mutants_test
from mutant_runs import Broken, Outcome, Tree, Worker
from mutants import mutants_of

PROJECT = Path(__file__).resolve().parents[2]
WORK = PROJECT / "build" / "mutate"
EQUIVALENT = Path(__file__).resolve().parent / "mutants-equivalent.txt"
# At least as many in every folder, where it has them.
FEW = 4
# What compiles more units of the library than this is slow; at most one change in WIDE_SHARE is one of them.
WIDE, WIDE_SHARE = 10, 20
COUNTED = ("killed", "survived", "known")


def equivalent_ids(text):
    """The ids of a list of lines "id | change | reason"; those that begin with "#" are comments."""
    rows = (line.split(" | ") for line in text.splitlines() if not line.startswith("#"))
    return {row[0].strip(): row[-1].strip() for row in rows if len(row) >= 3}


def folder_of(path):
    return path.rsplit("/", 1)[0]


def quotas(sizes, count):
    """How many to draw from each folder: in proportion to its size, but a few from every one; `count` in
    all."""
    total = sum(sizes.values())
    shares = {name: min(size, max(FEW, count * size // total)) for name, size in sizes.items()}
    while (missing := count - sum(shares.values())) != 0:
        step = 1 if missing > 0 else -1
        able = [name for name in shares if (shares[name] < sizes[name] if step > 0 else shares[name] > FEW)]
        if not able:
            break
        shares[max(able, key=lambda name: (sizes[name], name))] += step
    return shares


def drawing_order(mutants, seed):
    """All mutants of a folder as they are drawn: each line has its turn before any has a second."""
    chance = random.Random(seed)
    lines = collections.defaultdict(lambda: collections.defaultdict(list))
    for mutant in mutants:
        lines[mutant.file, mutant.line][mutant.operator].append(mutant)
    order = []
    while lines:
        keys = sorted(lines)
        chance.shuffle(keys)
        for key in keys:
            operators = lines[key]
            operator = chance.choice(sorted(operators))
            order.append(operators[operator].pop(chance.randrange(len(operators[operator]))))
            if not operators[operator]:
                del operators[operator]
            if not operators:
                del lines[key]
    return order


class Draw:
    """Hands out mutants until as many as wanted compiled. Which those are does not depend on who is faster:
    another one of a folder is handed out only when one is known to be missing."""

    def __init__(self, orders, shares, is_wide):
        self.orders = {name: collections.deque(order) for name, order in orders.items()}
        self.shares, self.is_wide = dict(shares), is_wide
        self.wide = {name: max(1, share // WIDE_SHARE) for name, share in shares.items()}
        self.pending = collections.Counter()
        self.changed = threading.Condition()

    def next(self):
        """Null when there is nothing left to do."""
        with self.changed:
            while True:
                for name, order in self.orders.items():
                    while order and self.shares[name] > self.pending[name]:
                        mutant = order.popleft()
                        if self.is_wide(mutant):
                            if not self.wide[name]:
                                continue
                            self.wide[name] -= 1
                        self.pending[name] += 1
                        return mutant
                if not sum(self.pending.values()):
                    return None
                self.changed.wait()

    def done(self, mutant, counts):
        with self.changed:
            name = folder_of(mutant.file)
            self.pending[name] -= 1
            self.shares[name] -= counts
            self.changed.notify_all()


def outcome_of(entry):
    return Outcome(**{name: entry[name] for name in Outcome.__dataclass_fields__})


def outcomes_of(log, key):
    """Those of a log that were found with this key, by the ids of the mutants."""
    entries = [json.loads(line) for line in log.splitlines()]
    return {entry["id"]: outcome_of(entry) for entry in entries if entry["key"] == key}


class Session:
    """One run of the tool: what is tried, what came out."""

    def __init__(self, tree, known):
        self.tree, self.known = tree, known
        self.lock = threading.Lock()
        self.results = []
        self.log = WORK / "tried.jsonl"
        self.key = f"{tree.digest} {' '.join(sorted(one.name for one in tree.programs.values()))}"
        self.tried = self._tried_before()

    def _tried_before(self):
        """What was tried of the same sources and tests needs no second try."""
        return outcomes_of(self.log.read_text(), self.key) if self.log.is_file() else {}

    def run(self, draw, workers):
        threads = [threading.Thread(target=self._work, args=(draw, worker), daemon=True)
                   for worker in workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if not all(worker.is_done for worker in workers):
            raise Broken("a worker broke off")

    def _work(self, draw, worker):
        worker.is_done = False
        while mutant := draw.next():
            outcome = self._outcome(mutant, worker)
            draw.done(mutant, outcome.status in COUNTED)
            with self.lock:
                self.results.append((mutant, outcome))
                self._show(mutant, outcome)
        worker.is_done = True

    def _outcome(self, mutant, worker):
        if mutant.id in self.known:
            return Outcome("known", how=self.known[mutant.id])
        if mutant.id not in self.tried:
            outcome = worker.try_mutant(mutant)
            with self.lock, open(self.log, "a", encoding="utf-8") as log:
                log.write(json.dumps({"key": self.key, "id": mutant.id, **asdict(outcome)}) + "\n")
            return outcome
        return self.tried[mutant.id]

    def _show(self, mutant, outcome):
        counted = sum(one.status in COUNTED for _, one in self.results)
        print(f"{counted:4} {outcome.status:16} {outcome.seconds:6.1f} s  {mutant.file}:{mutant.line} "
              f"{mutant.id} {outcome.program} {outcome.how}", flush=True)


def one_line(text):
    short = " ".join(text.split())
    return short if len(short) <= 160 else short[:157] + "..."


def report(results, stale, head):
    """The result as text."""
    lines = [head, ""]
    by_folder = collections.defaultdict(collections.Counter)
    for mutant, outcome in results:
        what = outcome.level if outcome.status == "killed" else outcome.status
        by_folder[folder_of(mutant.file)][what] += 1
        by_folder["all"][what] += 1
    lines.append(f"{'folder':38} {'tried':>6} {'mirror':>7} {'unit':>5} {'whole':>6} {'survived':>9} "
                 f"{'equivalent':>11} {'noticed':>8}")
    for name in sorted(by_folder, key=lambda one: (one == "all", one)):
        count = by_folder[name]
        killed = count["mirror"] + count["unit"] + count["whole"]
        judged = killed + count["survived"]
        share = 100 * killed / judged if judged else 100
        lines.append(f"{name:38} {judged + count['known']:6} {count['mirror']:7} {count['unit']:5} "
                     f"{count['whole']:6} {count['survived']:9} {count['known']:11} {share:7.1f}%")
    replaced = by_folder["all"]["does not compile"], by_folder["all"]["same code"]
    lines += ["", f"Others were drawn in place of {replaced[0]} that do not compile and of {replaced[1]} "
                  "that change no code.", ""]
    for title, status in (("Survived:", "survived"), ("Known to be equivalent:", "known")):
        found = [(mutant, outcome) for mutant, outcome in results if outcome.status == status]
        if found:
            lines.append(title)
        for mutant, outcome in found:
            lines += [f"{mutant.id} {mutant.file}:{mutant.line} {mutant.function}",
                      f"    - {one_line(mutant.before)}", f"    + {one_line(mutant.after)}"]
            lines += [f"    {outcome.how}"] if outcome.how else []
        lines.append("")
    if stale:
        lines += ["In the list of equivalent ones, but in no source:", *stale]
    return "\n".join(lines) + "\n"


def last_outcomes():
    """What the last run found, by id."""
    path = WORK / "mutants.json"
    if not path.is_file():
        raise Broken("there is no last run")
    return {entry["id"]: outcome_of(entry) for entry in json.loads(path.read_text())["mutants"]}


def with_last(results, everything):
    """The last run, with what was tried again in place of what it found then."""
    now = {mutant.id: outcome for mutant, outcome in results}
    then = last_outcomes()
    return [(mutant, now.get(mutant.id) or then[mutant.id]) for mutant in everything
            if mutant.id in now or mutant.id in then]


def chosen(arguments, everything):
    """The mutants among which to draw."""
    if arguments.id:
        return [mutant for mutant in everything if mutant.id in arguments.id]
    if arguments.again:
        ids = {name for name, outcome in last_outcomes().items() if outcome.status == "survived"}
        return [mutant for mutant in everything if mutant.id in ids]
    if arguments.file:
        wanted = Path(arguments.file).resolve().relative_to(PROJECT).as_posix()
        return [mutant for mutant in everything if f"{mutant.file}/".startswith(f"{wanted}/")]
    return everything


def draw_from(arguments, mutants, tree):
    folders = collections.defaultdict(list)
    for mutant in mutants:
        folders[folder_of(mutant.file)].append(mutant)
    sizes = {name: len({(one.file, one.line) for one in found}) for name, found in folders.items()}
    is_all = arguments.id or arguments.again
    if is_all or arguments.count >= len(mutants):
        shares = {name: len(found) for name, found in folders.items()}
    else:
        shares = quotas(sizes, arguments.count)
    orders = {name: drawing_order(folders[name], f"{arguments.seed} {name}") for name in sorted(folders)}

    def is_wide(mutant):
        units = [name for name in tree.users.get(mutant.file, ()) if name.startswith("Source/")]
        return not is_all and not arguments.file and len(units) > WIDE
    return Draw(orders, shares, is_wide)


def write(results, arguments, head, stale):
    place = {id(mutant): number for number, (mutant, _) in
             enumerate(sorted(results, key=lambda one: (one[0].file, one[0].start, one[0].id)))}
    results = sorted(results, key=lambda one: place[id(one[0])])
    text = report(results, stale, head)
    (WORK / "mutants.txt").write_text(text)
    (WORK / "mutants.json").write_text(json.dumps({
        "seed": arguments.seed, "count": arguments.count,
        "mutants": [{**asdict(mutant), **asdict(outcome)} for mutant, outcome in results]}, indent=1) + "\n")
    return text


def options():
    parser = argparse.ArgumentParser(prog="./dev mutate", description=__doc__.split("\n")[0])
    parser.add_argument("file", nargs="?", help="draw from this file or folder of Source only")
    parser.add_argument("--count", type=int, default=300, help="how many to try (300)")
    parser.add_argument("--seed", type=int, default=1, help="what the draw depends on (1)")
    parser.add_argument("--jobs", type=int, default=2, help="how many to try at once (2)")
    parser.add_argument("--id", nargs="+", metavar="ID", help="try the named ones")
    parser.add_argument("--again", action="store_true", help="try those that survived the last run")
    parser.add_argument("--tests", type=lambda text: text.split(","), metavar="A,B",
                        help="build and run these test programs only")
    parser.add_argument("--thorough", action="store_true",
                        help="ask the slow programs too: real data, damaged input, failures of kivifc")
    parser.add_argument("--list", action="store_true", help="print what would be drawn, and try nothing")
    parser.add_argument("--self-test", action="store_true", help="test the tool itself")
    return parser.parse_args()


def main():
    arguments = options()
    if arguments.self_test:
        return mutants_test.run()
    began = time.monotonic()
    tree = Tree(PROJECT, WORK, arguments.jobs, arguments.tests, arguments.thorough)
    print("building what is not changed", flush=True)
    tree.prepare()
    everything = [mutant for path in tree.sources()
                  for mutant in mutants_of(path, (tree.root / path).read_text())]
    known = equivalent_ids(EQUIVALENT.read_text()) if EQUIVALENT.is_file() else {}
    draw = draw_from(arguments, chosen(arguments, everything), tree)
    if arguments.list:
        while mutant := draw.next():
            draw.done(mutant, 1)
            print(f"{mutant.id} {mutant.file}:{mutant.line}\n    - {one_line(mutant.before)}\n"
                  f"    + {one_line(mutant.after)}")
        return 0
    workers = [Worker(tree, number) for number in range(arguments.jobs)]
    for worker in workers:
        worker.prepare()
    tree.time_programs(workers[0])
    session = Session(tree, known)
    session.run(draw, workers)
    stale = sorted(set(known) - {mutant.id for mutant in everything})
    minutes = (time.monotonic() - began) / 60
    head = f"{len(everything)} changes are possible. Seed {arguments.seed}, {minutes:.0f} minutes."
    results = with_last(session.results, everything) if arguments.again else session.results
    print(write(results, arguments, head, stale))
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Broken as fault:
        sys.exit(f"mutate: {fault}")
