"""./dev bench --peer PROGRAM: a process of ours and one of a peer over the same schema file, side by side.

Each program is run with the file as its last argument, once a round, the programs of a round in random order, so that
noise of the machine meets all alike. What counts is the processor time of the whole process, its start and its end
included, as the system accounts for it. The least time of all rounds is compared: noise only ever adds to a time.
"""

import argparse
import os
import random
import shlex
import statistics
import sys
from dataclasses import dataclass, field


class Failure(Exception):
    """A program that did not do its job, so that its times say nothing."""


@dataclass
class Program:
    name: str
    words: list
    times: list = field(default_factory=list)

    def run(self, schema):
        """Runs it once and keeps the seconds of processor time that it took."""
        null = os.open(os.devnull, os.O_RDWR)
        try:
            actions = [(os.POSIX_SPAWN_DUP2, null, number) for number in (0, 1, 2)]
            pid = os.posix_spawnp(self.words[0], [*self.words, schema], os.environ, file_actions=actions)
        except OSError as error:
            raise Failure(f"{self.name}: {error.strerror}") from error
        finally:
            os.close(null)
        _, status, usage = os.wait4(pid, 0)
        if status != 0:
            code = os.waitstatus_to_exitcode(status)
            how = f"ended with status {code}" if code > 0 else f"was ended by signal {-code}"
            raise Failure(f"{self.name}: {how} over {schema}")
        self.times.append(usage.ru_utime + usage.ru_stime)


def measure(programs, schema, rounds):
    """Fills the times of the programs. The first round warms up and does not count."""
    for count in range(rounds + 1):
        for program in random.sample(programs, len(programs)):
            program.run(schema)
        if count == 0:
            for program in programs:
                program.times.clear()


def milliseconds(seconds):
    return f"{seconds * 1000:.2f} ms"


def table(programs):
    """One line a program; the first one is what the others are compared with."""
    lines = ["| program | least | median | least, of the first |", "| --- | --- | --- | --- |"]
    first = min(programs[0].times)
    for program in programs:
        least = min(program.times)
        ratio = f"{least / first:.2f}" if first > 0 else "-"
        lines.append(f"| {program.name} | {milliseconds(least)} | "
                     f"{milliseconds(statistics.median(program.times))} | {ratio} |")
    return "\n".join(lines)


def parsed(arguments):
    parser = argparse.ArgumentParser(prog="./dev bench --peer", description=__doc__.splitlines()[0])
    parser.add_argument("peer", metavar="PROGRAM", help="the peer, with arguments if need be, in one word of the shell")
    parser.add_argument("schema", metavar="SCHEMA", nargs="?", help="the schema file")
    parser.add_argument("--rounds", type=int, default=41, help="how often each is run (41)")
    parser.add_argument("--ours", action="append", default=[], help=argparse.SUPPRESS)
    parser.add_argument("--default-schema", help=argparse.SUPPRESS)
    options = parser.parse_args(arguments)
    options.schema = options.schema or options.default_schema
    if options.rounds < 1 or not shlex.split(options.peer) or not options.schema:
        parser.error("a program, a schema and one round at least are needed")
    return options


def main(arguments):
    options = parsed(arguments)
    if not os.path.isfile(options.schema):
        print(f"bench: {options.schema}: no such file", file=sys.stderr)
        return 2
    programs = [Program(os.path.basename(words[0]), words)
                for words in (shlex.split(text) for text in [*options.ours, options.peer])]
    programs[-1].name = f"peer: {options.peer}"
    # What the start of any process takes.
    programs.append(Program("a process that does nothing", ["true"]))
    try:
        measure(programs, options.schema, options.rounds)
    except Failure as failure:
        print(f"bench: {failure}", file=sys.stderr)
        return 2
    print(f"Processor time of one process over {options.schema}, {options.rounds} rounds:\n")
    print(table(programs))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
