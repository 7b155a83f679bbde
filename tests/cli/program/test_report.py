"""Tests of `mcbin report`."""

import html.parser
import json
import os
import pathlib
import re
import unittest

from program import LOANS, ON_WINDOWS, ROOT, ProgramTest

TARGETS = {
    "adult": "income",
    "diamonds": "cut",
    "german-credit": "class",
    "iris": "species",
    "pima": "diabetes",
    "titanic": "survived",
    "wine-white": "quality",
}
VOID = {"meta", "br"}


class Page(html.parser.HTMLParser):
    """Checks that elements nest, and collects identifiers, links and tables."""

    def __init__(self, text):
        super().__init__()
        self.open, self.ids, self.links, self.tables, self.text = [], [], [], [], ""
        self.cell = None
        self.feed(text)
        self.close()
        if self.open:
            raise AssertionError(f"not closed: {self.open}")

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if len(attributes) != len(attrs):
            raise AssertionError(f"attribute given twice: {attrs}")
        for name in attributes:
            if name.startswith("on") or name in ("src", "xlink:href"):
                raise AssertionError(f"<{tag} {name}>")
        self.ids += [attributes["id"]] if "id" in attributes else []
        self.ids_named(attributes)
        if tag == "th" and attributes.get("scope") not in ("row", "col"):
            raise AssertionError("a header without scope")
        if tag == "table":
            self.tables.append([])
        elif tag == "tr":
            self.tables[-1].append([])
        elif tag in ("th", "td"):
            self.cell = ""
        self.open.append(tag)

    def ids_named(self, attributes):
        self.links += [attributes["href"]] if "href" in attributes else []
        names = attributes.get("aria-labelledby", "").split()
        self.links += ["#" + name for name in names]

    def handle_startendtag(self, tag, attrs):
        if tag in VOID or "svg" in self.open:
            self.handle_starttag(tag, attrs)
            self.open.pop()
        else:
            raise AssertionError(f"<{tag}/> is not closed in HTML")

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            raise AssertionError(f"</{tag}> closes {self.open[-3:]}")
        self.open.pop()
        if tag in ("th", "td"):
            self.tables[-1][-1].append(self.cell)
            self.cell = None

    def handle_data(self, data):
        self.text += data
        if self.cell is not None:
            self.cell += data


def number(value):
    """A weight as the program writes it, for the sizes that occur in tests."""
    return str(int(value)) if value == int(value) else repr(value)


class ReportTest(ProgramTest):
    def page_of(self, model):
        path = self.directory / "page.html"
        self.succeed("report", model, "-o", path)
        text = path.read_text(encoding="utf-8")
        page = Page(text)
        self.check_self_contained(text, page)
        return page

    def check_self_contained(self, text, page):
        self.assertTrue(text.startswith("<!DOCTYPE html>\n"))
        self.assertEqual(len(page.ids), len(set(page.ids)))
        for link in page.links:
            self.assertIn(link[1:], page.ids)
            self.assertEqual(link[0], "#")
        markup = re.sub(r">[^<]*<", "><", text[text.index("</style>") :])
        self.assertNotRegex(markup, r"<(script|img|link|iframe|object)\b")
        self.assertNotRegex(text, r"@import|url\((?!#)")

    def fitted(self, *arguments):
        path = self.directory / "model.json"
        self.succeed("fit", *arguments, "-o", path)
        return path

    def check_numbers(self, model_path, page):
        """Every number of the model's bins stands in its attribute's table."""
        model = json.loads(model_path.read_text(encoding="utf-8"))
        ranking, tables = page.tables[0], page.tables[1:]
        names = [row[1] for row in ranking[1:]]
        self.assertEqual(sorted(names), sorted(a["name"] for a in model["attributes"]))
        for name, table in zip(names, tables, strict=True):
            attribute = next(a for a in model["attributes"] if a["name"] == name)
            rows = list(attribute["bins"])
            for part in ("missingCases", "userMissingCases"):
                rows += [attribute[part]] if attribute[part]["weight"] > 0 else []
            shown = [[row[2], *row[4 : self.end_of(model) : 2]] for row in table[1:] if row[1] != "total"]
            columns = self.columns_of(model, table)
            self.assertEqual(
                shown,
                [[number(r["weight"]), *(number(r["classWeights"][c]) for c in columns)] for r in rows],
            )
            for cut in attribute["cutPoints"]:
                cells = " ".join(row[1] for row in table[1:])
                self.assertEqual(len(re.findall(rf"(?<![-\d.]){re.escape(number(cut))}(?![\d.])", cells)), 2)

    def columns_of(self, model, table):
        if model["target"] is None:
            return []
        names = table[0][4 : self.end_of(model) : 2]
        return [model["target"]["categories"].index(name) for name in names]

    @staticmethod
    def end_of(model):
        """Where the weights of the classes end in a row: evidence follows for two."""
        return -2 if model["target"] and len(model["target"]["categories"]) == 2 else None

    def test_loans(self):
        model = self.fitted(
            LOANS, "--target", "default", "--missing", "income=-1", "--missing", "employment_years=999"
        )
        page = self.page_of(model)
        self.check_numbers(model, page)
        self.assertIn("Declared missing: 999", page.text)

    def test_left_closed_equal_frequency(self):
        model = self.fitted(LOANS, "--equal-frequency", "--bins", "7", "--left-closed")
        self.check_numbers(model, self.page_of(model))

    def test_attributes_of_choice(self):
        model = self.fitted(LOANS, "--target", "default")
        result = self.succeed("report", model, "--attribute", "age", "--attribute", "*amount")
        page = Page(result.stdout)
        self.assertEqual({row[1] for row in page.tables[0][1:]}, {"age", "loan_amount"})
        self.assertEqual(len(page.tables), 3)

    @unittest.skipIf(ON_WINDOWS, "no file there has such a name")
    def test_names_that_look_like_markup(self):
        name = "</title><script>alert(1)</script>&amp;\"'\n\x01" + "x" * 3000
        quoted = '"' + name.replace('"', '""') + '"'
        target = '"<b onclick=""x"">"'
        rows = "".join(f"{i},{'<i>' if i < 20 else '&'}\n" for i in range(40))
        data = self.file("a<b>.csv", f"{quoted},{target}\n{rows}")
        page = self.page_of(self.fitted(data, "--target", "2"))
        self.assertIn("</title><script>alert(1)</script>&amp;\"'\\n\\x01x", page.tables[0][1][1])
        self.assertEqual(page.tables[1][0][4:], ["&", "%", "<i>", "event rate", "WoE", "IV"])

    def test_many_classes_are_grouped(self):
        rows = "".join(f"{i},c{i % 256}\n" for i in range(2560))
        data = self.file("d.csv", "x,t\n" + rows)
        page = self.page_of(self.fitted(data, "--target", "t"))
        self.assertEqual(page.tables[1][0][-2:], ["247 other classes", "%"])
        self.assertEqual(page.tables[1][1][-2:], ["2470", "96.5%"])

    def test_many_bins_and_attributes_stay_small(self):
        header = ",".join(f"x{i}" for i in range(200))
        rows = "".join(",".join(str(r * (c + 1)) for c in range(200)) + "\n" for r in range(300))
        data = self.file("d.csv", header + "\n" + rows)
        model = self.fitted(data, "--equal-frequency", "--bins", "100")
        self.page_of(model)
        self.assertLess((self.directory / "page.html").stat().st_size, 15_000_000)

    def test_infinities(self):
        rows = "".join(f"{v},{t}\n" for v, t in [("-inf", "a"), ("1", "a"), ("2", "b"), ("inf", "b")] * 9)
        model = self.fitted(self.file("d.csv", "x,t\n" + rows), "--target", "t")
        page = self.page_of(model)
        self.assertIn("values from -inf to inf", page.text)
        self.assertNotIn("nan", page.text)

    def test_failures(self):
        self.fail_with(2, "MODEL is required", "report")
        broken = self.file("m.json", "{")
        result = self.run_program("report", broken, "-o", self.directory / "r.html")
        self.assertEqual(result.returncode, 1)
        self.assertIn("not JSON", result.stderr)
        self.assertFalse((self.directory / "r.html").exists())
        model = self.fitted(LOANS, "--target", "default")
        result = self.run_program("report", model, "--attribute", "nosuch")
        self.assertEqual((result.returncode, result.stdout), (1, ""))

    def test_examples_of_the_help_work(self):
        text = self.succeed("report", "--help").stdout
        examples = re.findall(r"^  mcbin (.*)$", text, re.MULTILINE)
        self.assertEqual(len(examples), 2)
        os.symlink(ROOT / "examples", self.directory / "examples")
        for example in examples:
            self.succeed(*example.split())
        Page((self.directory / "loans.html").read_text(encoding="utf-8"))

    @unittest.skipUnless("MCBIN_TEST_DATA" in os.environ, "MCBIN_TEST_DATA names no data")
    def test_every_data_set(self):
        data = pathlib.Path(os.environ["MCBIN_TEST_DATA"]).resolve()
        for name, target in TARGETS.items():
            with self.subTest(name):
                model = self.fitted(data / f"{name}.csv", "--target", target)
                self.check_numbers(model, self.page_of(model))


if __name__ == "__main__":
    unittest.main()
