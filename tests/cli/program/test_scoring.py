"""mcbin fit for scorecards: evidence, limits on bins, given cut points."""

import json
import math
import unittest

from program import LOANS, ProgramTest, attribute

SMALL = "x,y,t\n" + "".join(f"{i},{i % 3},{'a' if i < 10 else 'b'}\n" for i in range(20))

LOANS_OPTIONS = [
    "--target", "default", "--missing", "income=-1", "--missing", "employment_years=999",
]


class Evidence(ProgramTest):
    """Event rates, weights of evidence and information values against a computation made here."""

    def check(self, event, adjustment, *options):
        model = self.fit(LOANS, *LOANS_OPTIONS, *options)
        self.assertEqual(model["target"]["evidence"],
                         {"event": model["target"]["categories"][event], "adjustment": adjustment})
        for fitted in model["attributes"]:
            rows = [*fitted["bins"], fitted["missingCases"], fitted["userMissingCases"]]
            events = sum(row["classWeights"][event] for row in rows)
            others = sum(row["classWeights"][1 - event] for row in rows)
            total = 0.0
            for row in rows:
                e, n = row["classWeights"][event], row["classWeights"][1 - event]
                add = 0 if e and n else adjustment
                woe = math.log((n + add) / others / ((e + add) / events)) if e + n else 0.0
                value = (n / others - e / events) * woe
                total += value
                self.assertAlmostEqual(row["eventRate"], e / (e + n) if e + n else 0, delta=1e-12)
                self.assertAlmostEqual(row["weightOfEvidence"], woe, delta=1e-12)
                self.assertAlmostEqual(row["informationValue"], value, delta=1e-12)
            self.assertAlmostEqual(fitted["informationValue"], total, delta=1e-12)

    def test_the_last_category_is_the_event(self):
        self.check(1, 0.5)

    def test_the_event_and_the_adjustment_can_be_chosen(self):
        self.check(0, 0.25, "--event", "no", "--woe-adjustment", "0.25")

    def test_a_column_that_is_mostly_missing_does_not_rank_first(self):
        rows = [(i if i < 10 else "", (i * 7) % 100, "ab"[(i * 7) % 100 > 60] if i >= 10 else "ab"[i > 4])
                for i in range(1000)]
        self.file("d.csv", "rare,good,t\n" + "".join(f"{r},{g},{t}\n" for r, g, t in rows))
        lines = self.succeed("fit", "d.csv", "-t", "t").stdout.splitlines()
        ranking = [line.split() for line in lines[6:8]]
        self.assertEqual([line[1] for line in ranking], ["good", "rare"])
        self.assertEqual(ranking[1][6], "99.0%")
        self.assertEqual(ranking[1][7], "1.0000")


class NumericEvent(ProgramTest):
    def test_an_event_is_a_number_in_every_spelling(self):
        self.file("d.csv", "x,t\n1,0\n2,1\n")
        model = self.fit("d.csv", "-t", "t", "--event", " 0.0 ")
        self.assertEqual(model["target"]["evidence"], {"event": "0", "adjustment": 0.5})


class Limits(ProgramTest):
    def test_limits_on_bins_hold_and_are_stored(self):
        limits = ["--min-bin-share", "0.1", "--min-bin-weight", "450", "--max-bins", "2"]
        whole = self.fit(LOANS, *LOANS_OPTIONS)
        joined = self.fit(LOANS, *LOANS_OPTIONS, *limits)
        self.assertEqual(joined["options"]["binLimits"],
                         {"minShare": 0.1, "minWeight": 450, "maxBins": 2})
        for before, after in zip(whole["attributes"], joined["attributes"], strict=True):
            total = sum(b["weight"] for b in (*before["bins"], before["missingCases"],
                                              before["userMissingCases"]))
            least = max(450, 0.1 * total)
            self.assertTrue(set(after["cutPoints"]) <= set(before["cutPoints"]))
            self.assertLessEqual(len(after["bins"]), 2)
            if len(after["bins"]) > 1:
                self.assertGreaterEqual(min(b["weight"] for b in after["bins"]), least)
            self.assertLessEqual(before["entropyAfter"], after["entropyAfter"] + 1e-12)
        self.assertTrue(any("bins joined into" in a["status"]["reason"]
                            for a in joined["attributes"]))


class Cuts(ProgramTest):
    def test_bins_that_a_search_would_miscount_are_counted(self):
        self.file("d.csv", "a\n0.1\n0.3\n0.30000000000000004\n0.7\n")
        searched = self.fit("d.csv", "-e", "--bins", "2")["attributes"][0]
        self.assertEqual(searched["miscountedWeight"], 1)
        given = self.fit("d.csv", "-e", "--bins", "2", "--cuts", "a=0.2")["attributes"][0]
        self.assertNotIn("miscountedWeight", given)
        self.assertEqual(given["status"]["reason"], "cut points given")
        self.assertEqual([b["weight"] for b in given["bins"]], [1, 3])

    def test_given_cuts_make_the_same_record(self):
        """As the search would have found them, but for what says that they were given."""
        self.succeed("fit", LOANS, *LOANS_OPTIONS, "-o", "m.json")
        searched = json.loads((self.directory / "m.json").read_text())
        lines = "".join(f"{a['name']}={','.join(map(repr, a['cutPoints']))}\n"
                        for a in searched["attributes"] if a["cutPoints"])
        self.file("cuts.txt", "# from a model\n" + lines)
        for cuts in ("m.json", "cuts.txt"):
            given = self.fit(LOANS, *LOANS_OPTIONS, "--cuts", cuts)
            for mine, other in zip(given["attributes"], searched["attributes"], strict=True):
                isGiven = cuts == "m.json" or bool(other["cutPoints"])
                self.assertEqual(mine.pop("cutsGiven", False), isGiven)
                if isGiven:
                    self.assertEqual(mine.pop("status"),
                                     {"code": 0, "severity": "ok", "reason": "cut points given"})
                    other = {name: x for name, x in other.items() if name != "status"}
                for name in ("entropyBefore", "entropyAfter"):
                    self.assertAlmostEqual(mine.pop(name), other[name], delta=1e-12)
                self.assertEqual(mine, {name: other[name] for name in mine})

    def test_a_model_may_have_attributes_that_are_not_cut_now(self):
        self.file("small.csv", SMALL)
        self.succeed("fit", "small.csv", "-t", "t", "--cuts", "x=5", "--cuts", "y=1", "-o", "m.json")
        for options in (["-x", "y"], ["-a", "x"], ["-w", "y"], ["--type", "y=category"]):
            model = self.fit("small.csv", "-t", "t", "--cuts", "m.json", *options)
            self.assertEqual([(a["name"], a["cutPoints"]) for a in model["attributes"]],
                             [("x", [5])])
        # Nor is a name taken for a number.
        self.file("other.csv", "x,z,u,t\n1,2,3,a\n6,5,4,b\n")
        model = json.loads((self.directory / "m.json").read_text().replace('"y"', '"3"'))
        self.file("m.json", json.dumps(model))
        model = self.fit("other.csv", "-t", "t", "--cuts", "m.json")
        self.assertEqual([a["name"] for a in model["attributes"] if "cutsGiven" in a], ["x"])
        self.fail_with(1, "--cuts: no attribute of the model is a column to be cut",
                       "fit", "other.csv", "-t", "t", "-a", "z", "--cuts", "m.json")

    def test_given_cuts_beside_searched_attributes(self):
        self.file("small.csv", SMALL)
        for side, weights in (([], [6, 14]), (["--left-closed"], [5, 15])):
            model = self.fit("small.csv", "-t", "t", "--cuts", "x=5", "--max-bins", "2", *side)
            self.assertEqual([b["weight"] for b in attribute(model, "x")["bins"]], weights)
            self.assertNotIn("cutsGiven", attribute(model, "y"))
        model = self.fit("small.csv", "-e", "-x", "t", "--bins", "4", "--cuts", "x=5,17")
        self.assertEqual([b["weight"] for b in attribute(model, "x")["bins"]], [6, 12, 2])
        self.assertEqual(attribute(model, "x")["status"]["reason"], "cut points given")


if __name__ == "__main__":
    unittest.main()
