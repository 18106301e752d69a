"""Tests of `./dev bench --peer` itself: ./dev bench --peer --self-test."""

import contextlib
import io
import os
import tempfile
import unittest

import peer

LOOP = "sh -c 'i=0; while [ $i -lt {} ]; do i=$((i+1)); done'"


class Peer(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.schema = os.path.join(self.folder.name, "a schema.exp")
        with open(self.schema, "w", encoding="utf-8") as file:
            file.write("SCHEMA A;\nEND_SCHEMA;\n")

    def run_main(self, *arguments):
        out, err = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
            status = peer.main(list(arguments))
        return status, out.getvalue(), err.getvalue()

    def test_what_works_more_takes_longer(self):
        status, out, err = self.run_main(LOOP.format(200000), self.schema, "--ours", LOOP.format(20000), "--rounds", "3")
        self.assertEqual((status, err), (0, ""))
        ours, theirs, nothing = out.splitlines()[-3:]
        self.assertIn("| 1.00 |", ours)
        self.assertIn("peer: sh -c", theirs)
        ratio = float(theirs.split("|")[-2])
        # Ten times the work, less what the start takes.
        self.assertGreater(ratio, 2)
        self.assertLess(float(nothing.split("|")[-2]), ratio)

    def test_each_is_handed_the_file_as_its_last_argument(self):
        record = os.path.join(self.folder.name, "record")
        script = f"sh -c 'echo \"$0 $*\" >>{record}' first 'second third'"
        self.assertEqual(self.run_main(script, self.schema, "--rounds", "2")[0], 0)
        with open(record, encoding="utf-8") as file:
            # One round more, which warms up.
            self.assertEqual(file.read().splitlines(), [f"first second third {self.schema}"] * 3)

    def test_what_is_printed_is_not_seen(self):
        status, out, err = self.run_main("echo loud", self.schema, "--rounds", "1")
        self.assertEqual((status, err), (0, ""))
        self.assertEqual(out.count("loud"), 1, "in its name alone")

    def test_program_that_fails_is_no_time(self):
        for program, reason in (("false", "false: ended with status 1"),
                                ("sh -c 'kill -9 $$'", "was ended by signal 9"),
                                ("./no-such-program", "No such file or directory")):
            status, out, err = self.run_main(program, self.schema, "--rounds", "1")
            self.assertEqual((status, out), (2, ""))
            self.assertIn(reason, err)

    def test_schema_that_is_missing_is_reported(self):
        status, out, err = self.run_main("true", self.schema + "x")
        self.assertEqual((status, out), (2, ""))
        self.assertEqual(err, f"bench: {self.schema}x: no such file\n")

    def test_rounds_and_default(self):
        options = peer.parsed(["true", "--default-schema", "s"])
        self.assertEqual((options.schema, options.rounds), ("s", 41))
        for arguments in (["true"], ["", "s"], ["true", "s", "--rounds", "0"]):
            with contextlib.redirect_stderr(io.StringIO()), self.assertRaises(SystemExit):
                peer.parsed(arguments)

    def test_least_time_counts(self):
        programs = [peer.Program("ours", [], [0.002, 0.001, 0.009]), peer.Program("peer", [], [0.004, 0.003, 0.005])]
        self.assertEqual(peer.table(programs).splitlines()[2:],
                         ["| ours | 1.00 ms | 2.00 ms | 1.00 |", "| peer | 3.00 ms | 4.00 ms | 3.00 |"])


if __name__ == "__main__":
    unittest.main()
