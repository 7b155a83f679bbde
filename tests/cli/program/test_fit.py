"""mcbin fit: options, results and how they add up."""

import csv
import json
import os
import pathlib
import random
import subprocess
import unittest

from program import LOANS, ROOT, ProgramTest, attribute
from schema import violations

SMALL = "x,y,t\n" + "".join(f"{i},{i % 3},{'a' if i < 10 else 'b'}\n" for i in range(20))

SMALL_TABLES = """\
Supervised binning of small.csv: 20 cases, 20 used
Target t: a (10, 50.0%), b (10, 50.0%); the event is b

Attributes by gain over all cases
  #  attribute  bins  distinct  min  max  missing    gain  over all      IV  trend   remark
  -  ---------  ----  --------  ---  ---  -------  ------  --------  ------  ------  ---------------------------------------------------------------
  1  x             2        20    0   19     0.0%  1.0000    1.0000  6.0890  rising
  2  y             1         3    0    2     0.0%  0.0000    0.0000  0.0000  none    not cut: no cut tells the target's categories apart well enough

x: 2 bins, 20 distinct values, entropy 1.0000 before, 0.0000 after, gain 1.0000
  #  x          weight   share   a       %   b  event rate      WoE      IV
  -  ---------  ------  ------  --  ------  --  ----------  -------  ------
  0  (-inf, 9]      10   50.0%  10  100.0%   0        0.0%   3.0445  3.0445
  1  (9, inf)       10   50.0%   0    0.0%  10      100.0%  -3.0445  3.0445
     total          20  100.0%  10   50.0%  10       50.0%           6.0890

y: 1 bin, 3 distinct values, entropy 1.0000 before, 1.0000 after, gain 0.0000
  not cut: no cut tells the target's categories apart well enough
  #  y            weight   share   a      %   b  event rate     WoE      IV
  -  -----------  ------  ------  --  -----  --  ----------  ------  ------
  0  (-inf, inf)      20  100.0%  10  50.0%  10       50.0%  0.0000  0.0000
     total            20  100.0%  10  50.0%  10       50.0%          0.0000
"""

LOANS_OPTIONS = [
    "--target", "default", "--missing", "income=-1", "--missing", "employment_years=999",
]


class RowOrder(ProgramTest):
    def test_the_order_of_rows_changes_no_byte(self):
        header, *rows = LOANS.read_text().splitlines(keepends=True)
        models = set()
        for seed in range(3):
            random.Random(seed).shuffle(rows)
            self.file("loans.csv", header + "".join(rows))
            for options in (["--target", "grade", "--weight", "weight"], ["--equal-frequency"]):
                self.succeed("fit", "loans.csv", *options, "-a", "[!apgdw]*", "-o", "m.json")
                models.add((self.directory / "m.json").read_text())
        self.assertEqual(len(models), 2)

    def test_numbers_are_one_category_in_every_spelling(self):
        self.file("d.csv", "x,t\n1,10\n2,9.0\n3,9\n4,1e1\n")
        model = json.loads(self.succeed("fit", "d.csv", "--target", "t", "--json").stdout)
        self.assertEqual(model["target"]["categories"], ["9", "10"])
        self.assertEqual(model["target"]["classWeights"], [2, 2])


class Tables(ProgramTest):
    def test_supervised_tables(self):
        self.file("small.csv", SMALL)
        result = self.succeed("fit", "small.csv", "--target", "t")
        self.assertEqual(result.stdout, SMALL_TABLES)
        self.assertEqual(
            result.stderr,
            "small.csv: 20 cases, 3 columns\n"
            "  scale, to be cut: x, y\n"
            "  categorical, the target: t, 2 categories: a, b\n",
        )

    def test_equal_frequency_tables(self):
        self.file("small.csv", SMALL)
        result = self.succeed("fit", "small.csv", "--equal-frequency", "--bins", "4", "-a", "x")
        self.assertEqual(
            result.stdout,
            "Equal-frequency binning of small.csv: 20 cases, 20 used\n"
            "\n"
            "Attributes\n"
            "  #  attribute  bins  distinct  min  max  missing  remark\n"
            "  -  ---------  ----  --------  ---  ---  -------  ------\n"
            "  1  x             4        20    0   19     0.0%\n"
            "\n"
            "x: 4 bins, 20 distinct values\n"
            "  #  x            weight  share\n"
            "  -  -----------  ------  -----\n"
            "  0  (-inf, 4.5]       5  25.0%\n"
            "  1  (4.5, 9.5]        5  25.0%\n"
            "  2  (9.5, 14.5]       5  25.0%\n"
            "  3  (14.5, inf)       5  25.0%\n",
        )

    def test_missing_parts_are_set_apart(self):
        self.file("m.csv", "x,t\n1,a\n2,b\n,a\n9,b\n9,b\n3,?\n")
        result = self.succeed("fit", "m.csv", "-t", "t", "--missing", "x=9")
        self.assertIn("Target t: a (2, 33.3%), b (3, 50.0%), missing (1, 16.7%), counted in no bin; the event is b\n", result.stdout)
        rows = [line.split() for line in result.stdout.splitlines()]
        self.assertIn(["missing", "1", "20.0%", "1", "100.0%", "0", "0.0%", "1.5041", "0.7520"], rows)
        self.assertIn(["user-missing", "2", "40.0%", "0", "0.0%", "2", "100.0%", "-1.2040", "0.8026"],
                      rows)


class Options(ProgramTest):
    def test_bins_and_threshold_make_pre_bins(self):
        exact = self.fit(LOANS, *LOANS_OPTIONS)
        binned = self.fit(LOANS, *LOANS_OPTIONS, "--threshold", "50", "--bins", "5")
        self.assertEqual(binned["options"]["bins"], 5)
        self.assertEqual(binned["options"]["distinctValueThreshold"], 50)
        self.assertLessEqual(len(attribute(binned, "credit_score")["cutPoints"]), 4)
        self.assertNotEqual(
            attribute(exact, "credit_score")["cutPoints"],
            attribute(binned, "credit_score")["cutPoints"],
        )
        self.assertEqual(
            attribute(exact, "open_accounts"), attribute(binned, "open_accounts")
        )

    def test_bins_without_threshold_is_remarked(self):
        result = self.succeed("fit", LOANS, *LOANS_OPTIONS, "--bins", "5")
        self.assertIn(
            "note: --bins has no effect without --threshold or --equal-frequency\n", result.stderr
        )

    def test_small_bins_are_merged(self):
        # The middle bin weighs less than half of its neighbours; it goes to the left one.
        rows = ["a"] * 50 + ["b"] * 10 + ["c"] * 50
        self.file("s.csv", "x,t\n" + "".join(f"{i},{t}\n" for i, t in enumerate(rows)))
        whole = self.fit("s.csv", "-t", "t")
        merged = self.fit("s.csv", "-t", "t", "--small-bins", "0.5")
        self.assertEqual(whole["attributes"][0]["cutPoints"], [49, 59])
        self.assertEqual(merged["attributes"][0]["cutPoints"], [59])

    def test_left_closed(self):
        self.file("small.csv", SMALL)
        result = self.succeed("fit", "small.csv", "-t", "t", "--left-closed")
        self.assertIn("(-inf, 10)", result.stdout)
        self.assertIn("[10, inf)", result.stdout)
        self.assertEqual(
            self.fit("small.csv", "-t", "t", "--left-closed")["options"]["closedSide"], "left"
        )

    def test_weights_are_rounded_and_cases_dropped(self):
        self.file("w.csv", "x,w,t\n1,1.6,a\n2,0.9,a\n3,2,b\n4,,b\n5,-1,b\n6,7,b\n")
        truncated = self.fit("w.csv", "-t", "t", "-w", "w", "--missing", "w=7")
        self.assertEqual(truncated["cases"], {"read": 6, "used": 2, "droppedForWeight": 4})
        self.assertEqual(truncated["target"]["classWeights"], [1, 2])
        rounded = self.fit(
            "w.csv", "-t", "t", "-w", "w", "--missing", "w=7", "--weight-rounding", "round"
        )
        self.assertEqual(rounded["cases"], {"read": 6, "used": 3, "droppedForWeight": 3})
        self.assertEqual(rounded["target"]["classWeights"], [3, 2])
        result = self.succeed("fit", "w.csv", "-t", "t", "-w", "w")
        self.assertIn(
            "3 of 6 cases dropped for their weight (missing, or not positive after rounding)\n",
            result.stderr,
        )
        self.assertIn("6 cases, 3 used, 3 dropped for their weight\n", result.stdout)

    def test_attributes_by_name_number_and_pattern(self):
        model = self.fit(LOANS, "-t", "default", "-a", "2", "-a", "*amount", "-a", "debt_ratio")
        self.assertEqual(
            [a["name"] for a in model["attributes"]], ["age", "loan_amount", "debt_ratio"]
        )
        self.assertIn({"name": "income", "reason": "not named by --attribute"}, model["leftOut"])

    def test_exclude(self):
        model = self.fit(LOANS, "-t", "12", "-x", "*e*", "-x", "4")
        self.assertEqual([a["name"] for a in model["attributes"]], ["loan_amount"])

    def test_types(self):
        model = self.fit(LOANS, "-t", "default", "--type", "age=category", "--type", "income=scale")
        self.assertIn({"name": "age", "reason": "declared a category"}, model["leftOut"])
        self.assertEqual(model["options"]["types"], {"age": "category", "income": "scale"})

    def test_a_mixed_column_can_be_declared_or_cleaned(self):
        self.file("m.csv", "x,y,t\n1,1,a\nlow,2,b\n3,3,b\n")
        model = self.fit("m.csv", "-t", "t", "--na", "low", "--na", "-99")
        self.assertEqual(attribute(model, "x")["missingCases"]["weight"], 1)
        self.assertEqual(model["options"]["naTexts"], ["low", "-99"])
        model = self.fit("m.csv", "-t", "t", "--type", "x=category")
        self.assertEqual([a["name"] for a in model["attributes"]], ["y"])

    def test_missing_values_and_ranges(self):
        model = self.fit(
            LOANS, "-t", "default", "--missing", "income=-1", "--missing-range", "age=0:21",
            "--missing-range", "income=80000:", "--missing", "default=maybe",
        )
        self.assertEqual(
            attribute(model, "income")["missing"], {"values": [-1], "range": [80000, "inf"]}
        )
        age = attribute(model, "age")
        self.assertGreater(age["userMissingCases"]["weight"], 0)
        self.assertEqual(age["minimum"], 22)
        self.assertEqual(model["target"]["missingTexts"], ["maybe"])

    def test_numeric_targets_are_categories(self):
        model = self.fit(LOANS, "-t", "open_accounts", "-a", "age")
        self.assertEqual(len(model["target"]["categories"]), 14)

    def test_three_class_target(self):
        model = self.fit(LOANS, "-t", "grade", "--missing", "income=-1")
        self.assertEqual(sorted(model["target"]["categories"]), ["A", "B", "C"])
        self.assertGreater(len(attribute(model, "credit_score")["cutPoints"]), 1)

    def test_timings(self):
        result = self.succeed("fit", LOANS, *LOANS_OPTIONS, "--timings")
        lines = result.stderr.split("timings (seconds):\n")[1].splitlines()
        names = [line[:24].strip() for line in lines]
        self.assertEqual(
            names,
            ["reading, first pass", "reading, second pass", "binning (the library)", "writing",
             "total"],
        )
        seconds = [float(line[24:]) for line in lines]
        self.assertAlmostEqual(sum(seconds[:-1]), seconds[-1], delta=0.003)


class Models(ProgramTest):
    def test_json_is_the_model_file(self):
        printed = self.succeed("fit", LOANS, *LOANS_OPTIONS, "--json", "-o", "m.json").stdout
        self.assertEqual((self.directory / "m.json").read_text(), printed)

    def test_models_follow_the_schema(self):
        schema = json.loads((ROOT / "docs" / "model.schema.json").read_text())
        self.file("w.csv", "x,w,t,c\n1,1,a,q\ninf,1,a,q\n3,2,b,q\n,1,?,q\n-inf,3,b,q\n9,1,a,q\n")
        for arguments in (
            [LOANS, *LOANS_OPTIONS],
            [LOANS, "--equal-frequency"],
            ["w.csv", "-t", "t", "-w", "w", "--missing", "x=9", "--missing-range", "w=:0"],
            ["w.csv", "-e", "--bins", "2"],
            [LOANS, *LOANS_OPTIONS, "--max-bins", "2", "--cuts", "age=30,50"],
        ):
            with self.subTest(arguments):
                self.assertEqual(violations(self.fit(*arguments), schema), [])

    def test_the_schema_check_can_fail(self):
        schema = json.loads((ROOT / "docs" / "model.schema.json").read_text())
        model = self.fit(LOANS, *LOANS_OPTIONS)
        model["attributes"][0]["bins"][0]["weight"] = "many"
        model["cases"]["lost"] = 1
        del model["library"]
        self.assertEqual(len(violations(model, schema)), 3)


class Sums(ProgramTest):
    """Weights and classes add up, and agree with a count made here from the file."""

    def check(self, path, target, *options, weight=None):
        model = self.fit(path, "--target", target, *options)
        with open(path, encoding="utf-8", newline="") as file:
            rows = list(csv.DictReader(file))
        self.assertEqual(model["cases"]["read"], len(rows))
        categories = model["target"]["categories"]
        na = set(model["options"]["naTexts"]) | {""}
        right = model["options"]["closedSide"] == "right"
        for fitted in model["attributes"]:
            self.check_sums(model, fitted)
            expected = [[0] * len(categories) for _ in fitted["bins"]]
            for row in rows:
                text, category = row[fitted["name"]], row[target]
                if text in na or category in na or self.is_user_missing(fitted, float(text)):
                    continue
                cuts = fitted["cutPoints"]
                value = float(text)
                place = sum(1 for cut in cuts if (value > cut if right else value >= cut))
                expected[place][categories.index(category)] += (
                    int(float(row[weight])) if weight else 1
                )
            self.assertEqual([b["classWeights"] for b in fitted["bins"]], expected)

    def check_sums(self, model, fitted):
        for part in (*fitted["bins"], fitted["missingCases"], fitted["userMissingCases"]):
            self.assertEqual(sum(part["classWeights"]), part["weight"])
        bins = sum(b["weight"] for b in fitted["bins"])
        self.assertEqual(bins, fitted["totalWeight"])
        missing = fitted["missingCases"]["weight"] + fitted["userMissingCases"]["weight"]
        self.assertEqual(
            bins + missing + model["target"]["missingWeight"], fitted["totalWeightWithMissing"]
        )
        self.assertLessEqual(fitted["entropyAfter"], fitted["entropyBefore"] + 1e-12)

    @staticmethod
    def is_user_missing(fitted, value):
        rules = fitted["missing"]
        low, high = rules["range"] or (1, 0)
        return value in rules["values"] or float(low) <= value <= float(high)

    def test_example_data(self):
        self.check(LOANS, *LOANS_OPTIONS[1:])
        self.check(LOANS, *LOANS_OPTIONS[1:], "--left-closed")
        self.check(LOANS, *LOANS_OPTIONS[1:], "-w", "weight", weight="weight")
        self.check(LOANS, *LOANS_OPTIONS[1:], "--threshold", "30", "--bins", "8")
        self.check(LOANS, "grade", "--missing-range", "income=:0", "--missing",
                   "employment_years=999")

    def test_equal_frequency_bins_of_the_example_data(self):
        with open(LOANS, encoding="utf-8", newline="") as file:
            rows = list(csv.DictReader(file))
        for side in ([], ["--left-closed"]):
            model = self.fit(LOANS, "-e", "--bins", "7", *side)
            right = not side
            for fitted in model["attributes"]:
                expected = [0] * len(fitted["bins"])
                for row in rows:
                    if row[fitted["name"]] == "":
                        continue
                    value = float(row[fitted["name"]])
                    cuts = fitted["cutPoints"]
                    expected[sum(value > c if right else value >= c for c in cuts)] += 1
                with self.subTest(fitted["name"], side=side):
                    self.assertEqual([b["weight"] for b in fitted["bins"]], expected)

    @unittest.skipUnless("MCBIN_TEST_DATA" in os.environ, "MCBIN_TEST_DATA names no data")
    def test_public_data(self):
        data = pathlib.Path(os.environ["MCBIN_TEST_DATA"]).resolve()
        for name, target, *options in (
            ("adult", "income"),
            ("diamonds", "cut"),
            ("german-credit", "class"),
            ("iris", "species"),
            ("pima", "diabetes", "--missing", "glucose=0", "--missing", "bmi=0"),
            ("titanic", "survived"),
            ("wine-white", "quality"),
        ):
            for side in ([], ["--left-closed"]):
                with self.subTest(name, side=side):
                    self.check(data / f"{name}.csv", target, *options, *side)


@unittest.skipUnless("MAKE_LOANS" in os.environ, "the examples are not built")
class ExampleData(unittest.TestCase):
    def test_the_generator_writes_the_shipped_bytes(self):
        written = subprocess.run(
            [os.environ["MAKE_LOANS"]], stdout=subprocess.PIPE, check=True, timeout=60
        ).stdout
        self.assertEqual(written, LOANS.read_bytes())


if __name__ == "__main__":
    unittest.main()
