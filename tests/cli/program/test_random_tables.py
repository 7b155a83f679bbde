"""Random tables with infinities, extremes and odd texts through fit, show, apply and export.

Models read back, and what apply and SQL count in each bin is what the model says, or the model says
how much weight lies in none. MCB_RUNS chooses how many tables, MCB_SEED which.
"""

import collections
import csv
import json
import os
import random
import sqlite3
import subprocess
import unittest

from program import MCBIN, ProgramTest

SEED = int(os.environ.get("MCB_SEED", "20261122"))
RUNS = int(os.environ.get("MCB_RUNS", "60"))
NUMBERS = [
    "inf", "-inf", "1.7976931348623157e308", "-1.7976931348623155e308", "5e-324", "-5e-324", "0",
    "-0.0", "1e300", "0.1", "0.2", "0.30000000000000004", "0.3", "9007199254740993", "-1", "1e-300",
    "4.450147717014403e-308", "1", "1.0000000000000002", "0.9999999999999999",
]
TEXTS = ["a", "b", "'", '"', ",", ";", "\t", "\u00e4", "\u202e", "\x1b[31m", "<b>", "nil", "1", "1.0"]
NAMES = ["x", "X y", 'q"q', "a,b", "\u00fc", "select", "<i>", "'", "x\x1b[0m", "*", "[1]", "3"]


def random_cell(draw):
    kind = draw.random()
    if kind < 0.1:
        return ""
    if kind < 0.3:
        return draw.choice(NUMBERS)
    if kind < 0.7:
        return str(draw.randrange(8))
    return repr(draw.uniform(-10, 10))


class Table:
    def __init__(self, draw):
        columns = draw.randint(1, 3)
        self.names = draw.sample(NAMES, columns)
        self.target = "the target"
        classes = draw.sample(TEXTS, draw.randint(2, 4))
        self.rows = []
        for _ in range(draw.choice([2, 5, 20, 100])):
            cells = [random_cell(draw) for _ in self.names]
            # Some signal, so that cuts are found.
            low = cells[0][:1] in "-0123"
            kind = classes[0] if low and draw.random() < 0.8 else draw.choice(classes)
            self.rows.append([*cells, kind])
        for row, kind in zip(self.rows, classes):
            row[-1] = kind
        self.options = draw.choice([
            ["--target", self.target], ["--target", self.target, "--left-closed"],
            ["--target", self.target, "--threshold", "3", "--bins", "4"],
            ["-e", "-b", "3", "-x", self.target], ["-e", "-b", "5", "--left-closed", "-x", self.target],
        ])

    def write(self, path):
        with open(path, "w", encoding="utf-8", newline="") as file:
            writer = csv.writer(file)
            writer.writerow([*self.names, self.target])
            writer.writerows(self.rows)


class RandomTables(ProgramTest):
    def run_command(self, *arguments):
        """As run_program, without looking into the temporary directory each time."""
        return subprocess.run(
            [MCBIN, *arguments], cwd=self.directory, env=self.environment, capture_output=True,
            timeout=60, check=False, stdin=subprocess.DEVNULL,
        )

    def applied(self):
        result = self.run_command("apply", "m.json", "d.csv")
        self.assertEqual(result.returncode, 0, result.stderr)
        return list(csv.DictReader(result.stdout.decode().splitlines(keepends=True)))

    def counted(self, model, rows, name):
        """Rows in each bin, -1 for missing, -2 for user-missing; those with a target alone."""
        target = model["target"]
        kept = [row for row in rows if target is None or row["the target"].strip()]
        return collections.Counter(row[f"{name}_bin"] for row in kept)

    def judge_counts(self, model, rows):
        for attribute in model["attributes"]:
            counts = self.counted(model, rows, attribute["name"])
            self.assertEqual(counts["-1"], attribute["missingCases"]["weight"], attribute)
            bins = attribute["bins"]
            more = [bin["weight"] - counts[str(b)] for b, bin in enumerate(bins)]
            miscounted = sum(max(0, weight) for weight in more)
            self.assertEqual(miscounted, attribute.get("miscountedWeight", 0), (attribute, counts))
            unbinned = attribute.get("unbinnedCases", {"weight": 0})["weight"]
            self.assertEqual(sum(more), -unbinned, (attribute, counts))

    def judge_sql(self, model, rows):
        result = self.run_command("export", "m.json", "--to", "sql", "--from", "d")
        self.assertEqual(result.returncode, 0, result.stderr)
        database = sqlite3.connect(":memory:")
        names = [a["name"] for a in model["attributes"]]
        quoted = ['"' + name.replace('"', '""') + '"' for name in names]
        database.execute(f"CREATE TABLE d ({', '.join(q + ' REAL' for q in quoted)})")
        for row in rows:
            cells = [row[name].strip() for name in names]
            database.execute(
                f"INSERT INTO d VALUES ({', '.join('?' for _ in names)})",
                [float(cell) if cell else None for cell in cells],
            )
        binned = database.execute(result.stdout.decode()).fetchall()
        for row, answer in zip(rows, binned, strict=True):
            self.assertEqual([row[f"{name}_bin"] for name in names], [str(b) for b in answer[len(names):]])

    def judge(self, table):
        table.write(self.directory / "d.csv")
        result = self.run_command("fit", "d.csv", *table.options, "-o", "m.json")
        self.assertIn(result.returncode, [0, 1], result.stderr)
        self.assertNotIn(b"internal error", result.stderr)
        if result.returncode != 0:
            self.assertFalse((self.directory / "m.json").exists())
            return False
        text = (self.directory / "m.json").read_text(encoding="utf-8")
        model = json.loads(text, parse_constant=self.fail)
        shown = self.run_command("show", "m.json")
        self.assertEqual(shown.returncode, 0, shown.stderr)
        self.assertNotIn(b"\x1b", shown.stdout)
        self.assertEqual(shown.stdout, result.stdout)
        rows = self.applied()
        self.judge_counts(model, rows)
        self.judge_sql(model, rows)
        return True

    def test_random_tables(self):
        print(f"seed {SEED}")
        fitted = 0
        for run in range(RUNS):
            with self.subTest(run=run, seed=SEED):
                (self.directory / "m.json").unlink(missing_ok=True)
                fitted += self.judge(Table(random.Random(f"{SEED} {run}")))
        self.assertEqual(self.left(), [])
        print(f"random tables: {fitted} of {RUNS} fitted")
        self.assertGreater(fitted, RUNS // 4)


if __name__ == "__main__":
    unittest.main(verbosity=0)
