"""mcbin score: an existing model on other data, against a computation made here."""

import csv
import io
import json
import math
import re
import unittest

from program import LOANS, ROOT, ProgramTest
from schema import violations

DATA, USAGE = 1, 2

OPTIONS = ["--target", "default", "--weight", "weight", "--missing", "income=-1"]


def later(lines):
    """The loans of the next month: three years older, fewer, income missing at times."""
    header, *rows = lines
    age, income = header.index("age"), header.index("income")
    for i, row in enumerate(rows):
        row[age] = str(int(row[age]) + 3)
        row[income] = "" if i % 9 == 0 else row[income]
    return [header, *rows[: len(rows) // 2]]


class Score(ProgramTest):
    def setUp(self):
        super().setUp()
        with LOANS.open(newline="") as file:
            lines = later(list(csv.reader(file)))
        self.file("new.csv", "".join(",".join(line) + "\n" for line in lines))
        self.succeed("fit", LOANS, *OPTIONS, "-o", "m.json")
        self.model = json.loads((self.directory / "m.json").read_text())

    def score(self, *arguments):
        """The score, which follows its schema."""
        text = self.succeed("score", *arguments, "--to", "json").stdout
        score = json.loads(text)
        schema = json.loads((ROOT / "docs" / "score.schema.json").read_text())
        self.assertEqual(violations(score, schema), [])
        return score

    def near(self, value, expected):
        self.assertAlmostEqual(value, expected, delta=1e-12 * max(1.0, abs(expected)))

    def check_stability(self, attribute):
        rows = attribute["rows"]
        added = [0.5 if (row["weightInFit"] == 0) != (row["weight"] == 0) else 0 for row in rows]
        fit, here = (sum(row[name] for row in rows) + sum(added)
                     for name in ("weightInFit", "weight"))
        total = 0.0
        for row, more in zip(rows, added):
            e, a = (row["weightInFit"] + more) / fit, (row["weight"] + more) / here
            self.near(row["stabilityIndex"], (a - e) * math.log(a / e) if e + a else 0.0)
            self.assertGreaterEqual(row["stabilityIndex"], 0.0)
            total += row["stabilityIndex"]
        self.near(attribute["stabilityIndex"], total)
        self.assertEqual(attribute["stability"], "stable" if total < 0.1 else
                         "some shift" if total <= 0.25 else "large shift")

    def check_evidence(self, attribute, suffix):
        rows = [row["classWeights" + suffix] for row in attribute["rows"]]
        others, events = (sum(column) for column in zip(*rows, strict=True))
        total = 0.0
        for row, (n, e) in zip(attribute["rows"], rows, strict=True):
            add = 0 if e and n else 0.5
            woe = math.log((n + add) / others / ((e + add) / events)) if e + n else 0.0
            self.near(row["weightOfEvidence" + suffix], woe)
            self.near(row["informationValue" + suffix], (n / others - e / events) * woe)
            self.near(row["eventRate" + suffix], e / (e + n) if e + n else 0)
            total += (n / others - e / events) * woe
        self.near(attribute["informationValue" + suffix], total)

    def check_gain(self, attribute, suffix):
        def entropy(weights):
            total = sum(weights)
            return -sum(w / total * math.log2(w / total) for w in weights if w)

        bins = [r["classWeights" + suffix] for r in attribute["rows"] if r["bin"].isdigit()]
        total = sum(map(sum, bins))
        before = entropy([sum(column) for column in zip(*bins, strict=True)])
        after = sum(sum(b) / total * entropy(b) for b in bins if sum(b))
        self.near(attribute["informationGain" + suffix], before - after)

    def test_indices_follow_from_the_counts(self):
        score = self.score("m.json", "new.csv")
        for attribute, fitted in zip(score["attributes"], self.model["attributes"], strict=True):
            self.check_stability(attribute)
            for suffix in ("", "InFit"):
                self.check_evidence(attribute, suffix)
                self.check_gain(attribute, suffix)
            self.near(attribute["informationValueInFit"], fitted["informationValue"])
            expected = [*fitted["bins"], fitted["missingCases"], fitted["userMissingCases"]]
            self.assertEqual([(row["weightInFit"], row["classWeightsInFit"])
                              for row in attribute["rows"]],
                             [(row["weight"], row["classWeights"]) for row in expected])
        self.assertEqual({a["name"] for a in score["attributes"] if a["stability"] != "stable"},
                         {"income"})

    def test_the_counts_are_those_of_apply(self):
        score = self.score("m.json", "new.csv", "--no-target", "--no-weight")
        applied = self.succeed("apply", "m.json", "new.csv", "--as", "interval").stdout
        rows = list(csv.DictReader(io.StringIO(applied)))
        for attribute in score["attributes"]:
            for row in attribute["rows"]:
                cells = [line[attribute["name"] + "_bin"] for line in rows]
                self.assertEqual(row["weight"], cells.count(row["name"]))
        self.assertIsNone(score["target"])
        self.assertNotIn("categories", score)
        self.assertNotIn("informationGain", score["attributes"][0])

    def test_csv_holds_what_json_holds(self):
        score = self.score("m.json", "new.csv")
        text = self.succeed("score", "m.json", "new.csv", "--to", "csv").stdout
        lines = list(csv.DictReader(io.StringIO(text)))
        rows = [(a["name"], row) for a in score["attributes"] for row in a["rows"]]
        self.assertEqual(len(lines), len(rows))
        words = {"weight": "weight", "eventRate": "event_rate",
                 "weightOfEvidence": "weight_of_evidence",
                 "informationValue": "information_value"}
        for line, (name, row) in zip(lines, rows, strict=True):
            self.assertEqual((line["attribute"], line["bin"]), (name, row["bin"]))
            for member, column in words.items():
                self.assertEqual(float(line[column]), row[member])
                self.assertEqual(float(line[column + "_in_fit"]), row[member + "InFit"])
            for c, category in enumerate(score["categories"]):
                self.assertEqual(float(line["weight_" + category]), row["classWeights"][c])
            self.assertEqual(float(line["stability_index"]), row["stabilityIndex"])
            self.assertEqual(line["closed"], "right" if row["bin"].isdigit() else "")

    def test_what_the_fit_never_saw_is_shown(self):
        self.file("fit.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        self.file("then.csv", "x,t\n-5,a\n3,a\n15,b\n25,b\n26,b\n,a\n")
        self.succeed("fit", "fit.csv", "-t", "t", "--cuts", "x=9,100", "-o", "x.json")
        remark = ("weight 1 below 0, the smallest value of the fit; weight 2 above 19, the largest "
                  "value of the fit; weight 1 missing, none in the fit")
        text = self.succeed("score", "x.json", "then.csv").stdout
        self.assertEqual(text.count(remark), 2)  # in the ranking and with the attribute
        self.assertIn(remark, self.succeed("score", "x.json", "then.csv", "--to", "html").stdout)
        attribute = self.score("x.json", "then.csv")["attributes"][0]
        self.assertEqual((attribute["weightBelowFit"], attribute["weightAboveFit"]), (1, 2))
        self.check_stability(attribute)
        self.file("far.csv", "x,t\n101,a\n")
        self.assertIn("weight 1 in (100, inf), none in the fit",
                      self.succeed("score", "x.json", "far.csv").stdout)

    def test_models_without_a_target_score(self):
        self.succeed("fit", LOANS, "-e", "-b", "4", "-a", "age", "-o", "e.json")
        attribute = self.score("e.json", "new.csv")["attributes"][0]
        self.check_stability(attribute)
        text = self.succeed("score", "e.json", "new.csv").stdout
        self.assertIn("Score of new.csv: 2000 cases, 2000 used\n", text)
        self.assertNotIn("gain", text)

    def test_columns_are_named_by_name_or_number(self):
        renamed = (self.directory / "new.csv").read_text().replace("default", "bad", 1)
        self.file("renamed.csv", renamed)
        header = renamed.splitlines()[0].split(",")
        expected = self.score("m.json", "new.csv")["attributes"]
        for name in ("bad", str(header.index("bad") + 1)):
            score = self.score("m.json", "renamed.csv", "-t", name)
            self.assertEqual((score["target"], score["attributes"]), ("bad", expected))
        chosen = self.score("m.json", "new.csv", "-a", "age")
        self.assertEqual([a["name"] for a in chosen["attributes"]], ["age"])

    def test_the_page_holds_the_tables_of_the_text(self):
        text = self.succeed("score", "m.json", "new.csv").stdout
        self.succeed("score", "m.json", "new.csv", "--to", "html", "-o", "s.html")
        page = re.sub(r"<[^>]*>", " ", (self.directory / "s.html").read_text().split("<h1>")[1])
        shown = set(page.replace("&lt;", "<").split())
        rules = re.compile(r"-+$")
        self.assertEqual([word for word in text.split()
                          if word not in shown and not rules.match(word)], [])

    def test_the_least_stable_attribute_comes_first(self):
        text = self.succeed("score", "m.json", "new.csv").stdout
        ranking = text.split("\n\n")[1].splitlines()[3:]
        indices = [float(line.split()[2]) for line in ranking]
        self.assertEqual(indices, sorted(indices, reverse=True))
        self.assertEqual(ranking[0].split()[1], "income")


class Errors(ProgramTest):
    def test_data_that_cannot_be_scored(self):
        self.file("d.csv", "a,w,t\n1,1,x\n2,2,y\n3,1,y\n")
        self.succeed("fit", "d.csv", "-t", "t", "-w", "w", "-o", "m.json")
        for content, arguments, message in (
                ("a,w\n1,1\n", [], "the data have no column t, the target: name another with "
                                   "--target or say --no-target"),
                ("a,t\n1,x\n", [], "the data have no column w, the weights: name another with "
                                   "--weight or say --no-weight"),
                ("b,w,t\n1,1,x\n", [], "the data have no column a, which the model cuts"),
                ("a,w,t\n1,1,z\n", [], "n.csv, line 2: the target t holds 'z', which is no class "
                                       "of the model"),
                ("a,w,t\none,1,x\n", [], "n.csv, line 2: column a holds 'one', which is no number "
                                         "that can be used"),
                ("a,w,t\n1,0,x\n", [], "no case can be used"),
                ("a,w,t\n", [], "no case can be used"),
                ("a,w,t\n1,1,\n", [], "no case has a category in the target t"),
                ("a,w,t\n1,1e308,x\n1,1e308,x\n", [],
                 "n.csv, line 3: the weights in column w add up to more than a number can hold: "
                 "divide them all by the same large number"),
                ("a,w,t\n1,1,x\n", ["-t", "u"], "--target: no column 'u'; the columns are: a, w, t"),
                ("a,w,t\n1,1,x\n", ["-w", "4"], "--weight: no column '4'; the columns are: a, w, t"),
                ("a,w,t\n1,1,x\n", ["-a", "b"], "--attribute: no column 'b'; the columns are: a (only "
                 "one: is the separator right? see --delimiter)")):
            with self.subTest(content=content, arguments=arguments):
                self.file("n.csv", content)
                self.fail_with(DATA, message, "score", "m.json", "n.csv", *arguments)
        self.fail_with(USAGE, "column t cannot be named by --weight and by --target",
                       "score", "m.json", "d.csv", "-w", "t")

    def test_a_model_without_classes(self):
        self.file("d.csv", "a,t\n1,x\n2,y\n")
        self.succeed("fit", "d.csv", "-e", "-o", "m.json")
        self.fail_with(DATA, "the model has no target, so it knows no classes",
                       "score", "m.json", "d.csv", "-t", "t")


if __name__ == "__main__":
    unittest.main()
