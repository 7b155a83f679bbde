"""Every call that a command makes fails in turn: allocations, file operations, system calls.

Each answer is judged alike: the exit code is one of those stated, the output is what was there
before, or whole, or absent, nothing else is left behind, and success never comes with less than
the undisturbed result. MCB_FULL_SWEEP=1 tries every call, else a few of each function are tried.
MCB_COMMANDS (comma-separated names) and MCB_FUNCTIONS choose a part of the sweep.
"""

import collections
import errno
import gzip
import os
import random
import resource
import shutil
import sqlite3
import subprocess
import unittest

from program import MCBIN, ProgramTest

INJECTOR = os.environ["FAULT_INJECTOR"]
FULL = os.environ.get("MCB_FULL_SWEEP") == "1"
SEED = int(os.environ.get("MCB_SEED", "20261122"))
POINTS = None if FULL else 60  # of a function and command
ERRORS = [errno.EIO, errno.ENOSPC, errno.EMFILE]
CHOSEN_COMMANDS = os.environ.get("MCB_COMMANDS")
CHOSEN_FUNCTIONS = os.environ.get("MCB_FUNCTIONS")
OLD = b"what was there before\n"
# Where removing fails, something must stay.
REMOVING = {"unlink", "unlinkat", "rmdir", "opendir"}
SEEKING = {"lseek", "lseek64"}  # has words of its own

ROWS = "".join(
    f"{i},{i * 7 % 50},{'' if i % 9 == 0 else i % 13},{'yes' if i * 7 % 50 > 20 else 'no'},{1 + i % 3}\n"
    for i in range(300)
)
TABLE = "a,b,c,t,w\n" + ROWS
FIT = ["--target", "t", "--weight", "w", "--missing", "c=3"]


def is_chosen(name, choice):
    return choice is None or name in choice.split(",")


class Command:
    """A command line in a directory of its own, and what it gives undisturbed."""

    def __init__(self, name, arguments, output=None):
        self.name = name
        self.arguments = arguments
        self.output = output


COMMANDS = [
    Command("fit", ["fit", "d.csv", *FIT, "-o", "out"], "out"),
    Command("fit gzip", ["fit", "d.csv.gz", "-e", "-b", "5", "-o", "out"], "out"),
    Command("fit sqlite", ["fit", "d.db", "--table", "d", *FIT, "--json"]),
    Command("fit stdin", ["fit", "-", *FIT]),
    Command("show", ["show", "model.json"]),
    Command("apply", ["apply", "model.json", "d.csv", "-o", "out"], "out"),
    Command("export", ["export", "model.json", "--to", "sql", "-o", "out"], "out"),
    Command("report", ["report", "model.json", "-o", "out"], "out"),
]


class Faults(ProgramTest):
    def setUp(self):
        super().setUp()
        self.file("d.csv", TABLE)
        self.file("d.csv.gz", gzip.compress(TABLE.encode(), mtime=0))
        database = sqlite3.connect(self.directory / "d.db")
        database.execute("CREATE TABLE d (a, b, c, t, w)")
        rows = [[cell or None for cell in row.split(",")] for row in ROWS.splitlines()]
        database.executemany("INSERT INTO d VALUES (0+?, 0+?, 0+?, ?, 0+?)", rows)
        database.commit()
        database.close()
        self.succeed("fit", "d.csv", *FIT, "-o", "model.json")
        self.kept = {path.name for path in self.directory.iterdir()} | {"out"}

    def run_with(self, command, **variables):
        """Exit code, standard output, and the output file."""
        (self.directory / "out").write_bytes(OLD)
        result = subprocess.run(
            [MCBIN, *command.arguments],
            input=TABLE.encode(),
            capture_output=True,
            cwd=self.directory,
            env=dict(self.environment, LD_PRELOAD=INJECTOR, **variables),
            timeout=60,
            check=False,
        )
        out = self.directory / "out"
        return result, out.read_bytes() if out.exists() else None

    def counts(self, command):
        path = self.directory / "tmp" / "counts"
        result, output = self.run_with(command, MCB_FAULT_COUNTS=str(path))
        self.assertEqual(result.returncode, 0, result.stderr)
        counts = dict(line.split() for line in path.read_text().splitlines())
        path.unlink()
        return {name: int(count) for name, count in counts.items()}, result.stdout, output

    def faults(self, counts):
        """Each is a function and a fault of it; those of memory once for a call and once for good."""
        draw = random.Random(SEED)
        for function, calls in sorted(counts.items()):
            if not is_chosen(function, CHOSEN_FUNCTIONS):
                continue
            at = range(1, calls + 1)
            if POINTS is not None and calls > POINTS:
                # Evenly, and the first and the last, where things begin and end.
                step = calls // (POINTS - 2)
                at = sorted({1, calls, *range(draw.randint(1, step), calls, step)})
            for call in at:
                if function == "malloc":
                    yield function, f"malloc:{call}"
                    yield function, f"malloc:{call}+"
                else:
                    yield function, f"{function}:{call}:{draw.choice(ERRORS)}"

    def judge(self, command, fault, function, stdout, output):
        result, out = self.run_with(command, MCB_FAULT=fault)
        errors = result.stderr.decode(errors="replace")
        where = f"{command.name}, {fault}: exit {result.returncode}\n{errors}"
        left = [p for p in self.directory.iterdir() if p.name not in self.kept]
        left += self.temporary.iterdir()
        for path in left:
            shutil.rmtree(path) if path.is_dir() else path.unlink()
        self.assertIn(result.returncode, [0, 1, 3], where)
        if result.returncode == 0:
            self.assertEqual(result.stdout, stdout, where)
            self.assertEqual(out, output if command.output else OLD, where)
        else:
            self.assertIn(out, [OLD, output, None], where)
            if function == "malloc":
                self.assertIn("mcbin: ", errors, where)
            elif command.name != "fit sqlite" and function not in SEEKING:
                self.assertIn(os.strerror(int(fault.split(":")[2])), errors, where)
        if function not in REMOVING:
            self.assertEqual(left, [], where)

    def test_an_error_of_the_system_is_called_by_its_name(self):
        for command, fault, said in (
            (COMMANDS[0], f"read:1:{errno.EIO}", "d.csv: Input/output error"),
            (COMMANDS[1], f"read:1:{errno.EIO}", "d.csv.gz: Input/output error"),
            (COMMANDS[4], f"read:1:{errno.EIO}", "model.json: Input/output error"),
            (COMMANDS[0], f"mkdtemp:1:{errno.ENOSPC}",
             f"cannot make a temporary directory in {self.temporary}: No space left on device"),
            (COMMANDS[3], f"write:1:{errno.ENOSPC}",
             f"cannot write a temporary file in {self.temporary}: No space left on device"),
            (COMMANDS[0], f"lseek64:2:{errno.EIO}", "d.csv: cannot be read a second time"),
            (COMMANDS[5], f"write:1:{errno.ENOSPC}", "cannot write out: No space left on device"),
        ):
            result, _ = self.run_with(command, MCB_FAULT=fault)
            self.assertEqual(result.stderr.decode().splitlines()[-1], "mcbin: " + said)
            self.assertEqual(result.returncode, 1)

    def test_sweep(self):
        print(f"seed {SEED}")
        for command in COMMANDS:
            if not is_chosen(command.name, CHOSEN_COMMANDS):
                continue
            counts, stdout, output = self.counts(command)
            points = collections.Counter()
            for function, fault in self.faults(counts):
                with self.subTest(command=command.name, fault=fault):
                    self.judge(command, fault, function, stdout, output)
                points[function] += 1
            print(f"faults: {command.name}: {sum(points.values())} runs over {sum(counts.values())} "
                  f"calls: {dict(points)}", flush=True)


class Memory(ProgramTest):
    def test_a_limit_of_memory_ends_in_a_message(self):
        """From one with which the program is loaded and no more up to one that does."""
        self.file("d.csv", "a,b,t\n" + "".join(f"{i},{i % 977},{i % 7 > 2}\n" for i in range(50_000)))
        fit = ["fit", "d.csv", "--target", "t", "-o"]
        self.succeed(*fit, "whole.json")
        said = collections.Counter()
        for kilobytes in range(10_000, 400_000, 200):
            size = kilobytes << 10
            result = subprocess.run(
                [MCBIN, *fit, "m.json"], cwd=self.directory, env=self.environment,
                capture_output=True, text=True, check=False,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (size, size)))
            self.assertEqual(list(self.temporary.iterdir()), [])
            if result.returncode == 0:
                break
            self.assertFalse((self.directory / "m.json").exists())
            if result.returncode != 127:  # not even loaded
                self.assertIn(result.returncode, [1, 3], (kilobytes, result.stderr))
                self.assertRegex(result.stderr.splitlines()[-1],
                                 "^mcbin: .*(out of memory|Cannot allocate memory)$")
                said[result.stderr.splitlines()[-1]] += 1
        self.assertEqual((self.directory / "m.json").read_bytes(),
                         (self.directory / "whole.json").read_bytes())
        self.assertGreater(sum(said.values()), 5, said)


if __name__ == "__main__":
    unittest.main(verbosity=0)
