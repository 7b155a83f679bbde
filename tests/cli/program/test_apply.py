"""mcbin apply, and the same placement by exported SQL."""

import csv
import io
import json
import math
import os
import pathlib
import sqlite3
import subprocess
import unittest

from program import LOANS, MCBIN, ROOT, ProgramTest, attribute

LOANS_OPTIONS = [
    "--target", "default", "--missing", "income=-1", "--missing", "employment_years=999",
    "--weight", "weight",
]

DATA = ROOT.parent / "shared" / "data"
PUBLIC = {
    "iris.csv": ["--target", "species"],
    "titanic.csv": ["--target", "survived"],
    "pima.csv": ["--target", "diabetes", "--missing", "bmi=0", "--missing-range", "insulin=0:20"],
    "german-credit.csv": ["--target", "class"],
    "wine-white.csv": ["--target", "quality", "--threshold", "20", "--bins", "12"],
    "diamonds.csv": ["--target", "cut", "--small-bins", "0.5"],
    "adult.csv": ["--target", "income", "--weight", "fnlwgt"],
}


def rows_of(text):
    return list(csv.DictReader(io.StringIO(text)))


class Apply(ProgramTest):
    def model(self, *arguments):
        self.succeed("fit", *arguments, "-o", "model.json")
        return json.loads((self.directory / "model.json").read_text())

    def small(self):
        self.file("small.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        return self.model("small.csv", "--target", "t", "--missing", "x=99")

    def test_appends_the_bin_and_keeps_order_and_cells(self):
        self.small()
        self.file("new.csv", 'note,x\n"a ""b"", c",10\n,9\n"two\nlines",\n d ,99\nNA,NA\n')
        result = self.succeed("apply", "model.json", "new.csv")
        self.assertEqual(
            result.stdout,
            'note,x,x_bin\n"a ""b"", c",10,1\n,9,0\n"two\nlines",,-1\n" d ",99,-2\nNA,NA,-1\n',
        )
        self.assertEqual(result.stderr, "5 cases binned by 1 attributes\n")

    def test_intervals_and_bounds(self):
        self.small()
        self.file("new.csv", "x,y\n10,a\n-inf,b\n,c\n99,d\n")
        self.assertEqual(
            self.succeed("apply", "model.json", "new.csv", "--as", "interval").stdout,
            'x,y,x_bin\n10,a,"(9, inf)"\n-inf,b,"(-inf, 9]"\n,c,missing\n99,d,user-missing\n',
        )
        self.assertEqual(
            self.succeed("apply", "model.json", "new.csv", "--as", "bounds").stdout,
            "x,y,x_lower,x_upper\n10,a,9,inf\n-inf,b,-inf,9\n,c,,\n99,d,,\n",
        )

    def test_weights_of_evidence(self):
        self.file("small.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        model = self.model("small.csv", "--target", "t", "--event", "a", "--woe-adjustment", "2")
        weights = [part["weightOfEvidence"] for part in attribute(model, "x")["bins"]]
        self.assertAlmostEqual(weights[0], math.log(2 / 12), delta=1e-12)
        self.file("new.csv", "x\n3\n10\nNA\n")
        rows = rows_of(self.succeed("apply", "model.json", "new.csv", "--as", "woe").stdout)
        self.assertEqual([float(row["x_woe"]) for row in rows], [*weights, 0.0])
        self.file("three.csv", "x,t\n1,a\n2,b\n3,c\n")
        self.model("three.csv", "--target", "t")
        self.fail_with(1, "weights of evidence need a target with two categories",
                       "apply", "model.json", "new.csv", "--as", "woe")

    def test_replace(self):
        self.small()
        self.file("new.csv", "x,y\n10,a\n")
        self.assertEqual(
            self.succeed("apply", "model.json", "new.csv", "--replace").stdout, "x,y\n1,a\n"
        )
        self.assertEqual(
            self.succeed("apply", "model.json", "new.csv", "--replace", "--as", "bounds").stdout,
            "x_lower,x_upper,y\n9,inf,a\n",
        )

    def test_no_header_in_no_header_out(self):
        self.file("small.csv", "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        self.model("small.csv", "--no-header", "--target", "2")
        self.assertEqual(
            self.succeed("apply", "model.json", "-", "--no-header", stdin="3,a\n12,b\n").stdout,
            "3,a,0\n12,b,1\n",
        )

    def test_a_row_of_one_empty_cell_is_not_lost(self):
        self.file("small.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        self.model("small.csv", "--target", "t")
        result = self.succeed("apply", "model.json", "-", "--replace", stdin='x\n1\n""\n')
        self.assertEqual(result.stdout, "x\n0\n-1\n")

    def test_output_file_and_tabs(self):
        self.small()
        self.file("new.csv", "x,y\n10,\"a,b\"\n")
        self.assertEqual(
            self.succeed("apply", "model.json", "new.csv", "-o", "out.tsv").stdout, ""
        )
        self.assertEqual((self.directory / "out.tsv").read_text(), "x\ty\tx_bin\n10\ta,b\t1\n")

    def test_choice_of_attributes(self):
        self.succeed("fit", LOANS, *LOANS_OPTIONS, "-o", "model.json")
        header = self.succeed("apply", "model.json", LOANS, "-a", "age", "-a", "*_ratio").stdout
        self.assertTrue(header.split("\n")[0].endswith(",age_bin,debt_ratio_bin"), header[:200])

    def test_errors(self):
        self.small()
        self.file("text.csv", "x\n1\nabc\n")
        self.file("other.csv", "y\n1\n")
        self.file("taken.csv", "x,x_bin\n1,2\n")
        self.fail_with(1, "text.csv, line 3: column x holds 'abc', which is no number that can be binned",
                       "apply", "model.json", "text.csv", "-o", "out.csv")
        self.assertFalse((self.directory / "out.csv").exists())
        self.fail_with(1, "other.csv: there is no column x, which the model cuts; choose others with "
                       "--attribute", "apply", "model.json", "other.csv")
        self.fail_with(1, "the binned data would have two columns x_bin; rename the one in the "
                       "data or use --replace", "apply", "model.json", "taken.csv")
        self.fail_with(2, "the model and the data cannot both come from standard input",
                       "apply", "-", "-")

    def test_memory_does_not_grow_with_the_rows(self):
        self.small()
        peak = []
        for rows in (20000, 400000):
            self.file("big.csv", "x,y\n" + "12.5,some text that takes room\n" * rows)
            script = (
                "import resource, subprocess, sys; subprocess.run(sys.argv[1:], check=True);"
                "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)"
            )
            result = subprocess.run(
                ["python3", "-c", script, MCBIN, "apply", "model.json", "big.csv", "-o", "out.csv"],
                cwd=self.directory, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=True,
            )
            peak.append(int(result.stdout))
        self.assertLess(peak[1], peak[0] + 2048, "KiB")

    def check_partition(self, data, options, *more):
        """apply, on CSV and on SQLite, and exported SQL find the fitted counts again."""
        model = self.model(data, *options, *more)
        binned = rows_of(self.succeed("apply", "model.json", data).stdout)
        self.check_counts(model, binned)
        database = self.directory / "data.db"
        database.unlink(missing_ok=True)
        connection = sqlite3.connect(database)
        self.addCleanup(connection.close)
        self.fill(connection, data, model)
        sql = self.succeed("export", "model.json", "--to", "sql", "--from", "data").stdout
        cursor = connection.execute(sql)
        names = [column[0] for column in cursor.description]
        self.check_counts(model, [dict(zip(names, map(str, row))) for row in cursor])
        connection.close()
        binned = rows_of(self.succeed("apply", "model.json", "data.db", "--table", "data").stdout)
        self.check_counts(model, binned)

    @staticmethod
    def fill(connection, data, model):
        with open(data, newline="", encoding="utf-8") as file:
            rows = list(csv.reader(file))
        scale = {a["name"] for a in model["attributes"]}
        if model["weight"]:
            scale.add(model["weight"]["name"])
        na = set(model["options"]["naTexts"])
        names = ", ".join(f'"{name}"' for name in rows[0])
        connection.execute(f"CREATE TABLE data ({names})")
        cells = [
            [
                None if cell == "" or (name in scale and cell in na)
                else float(cell) if name in scale else cell
                for name, cell in zip(rows[0], row)
            ]
            for row in rows[1:]
        ]
        marks = ", ".join("?" * len(rows[0]))
        connection.executemany(f"INSERT INTO data VALUES ({marks})", cells)
        connection.commit()

    def check_counts(self, model, binned):
        target, weight = model["target"], model["weight"]
        codes = {text: code for code, text in enumerate(target["categories"])} if target else {}
        for fitted in model["attributes"]:
            counts = {}
            for row in binned:
                w = math.floor(float(row[weight["name"]])) if weight else 1
                code = codes.get(row[target["name"]]) if target else 0
                if w <= 0 or code is None:
                    continue
                cell = counts.setdefault(int(row[fitted["name"] + "_bin"]), {})
                cell[code] = cell.get(code, 0) + w
            expected = dict(enumerate(fitted["bins"]))
            expected[-1] = fitted["missingCases"]
            expected[-2] = fitted["userMissingCases"]
            for label, bin_ in expected.items():
                found = counts.pop(label, {})
                self.assertEqual(sum(found.values()), bin_["weight"], (fitted["name"], label))
                if target:
                    classes = [found.get(c, 0) for c in range(len(codes))]
                    self.assertEqual(classes, bin_["classWeights"], (fitted["name"], label))
            self.assertEqual(counts, {})

    def test_partition_of_the_example_data(self):
        for side in ([], ["--left-closed"]):
            self.check_partition(LOANS, LOANS_OPTIONS, *side)
            self.check_partition(LOANS, ["-e", "--bins", "7", "--missing", "income=-1"], *side)

    def test_partition_of_public_data(self):
        if not DATA.is_dir():
            self.skipTest("the public data sets are not here")
        for name, options in PUBLIC.items():
            for side in ([], ["--left-closed"]):
                with self.subTest(name=name, side=side):
                    self.check_partition(DATA / name, options, *side)


if __name__ == "__main__":
    unittest.main()
