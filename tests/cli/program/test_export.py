"""mcbin show and mcbin export."""

import csv
import io
import json
import random
import sqlite3
import struct
import unittest

from program import LOANS, ProgramTest

INFINITY = float("inf")


class Show(ProgramTest):
    def test_prints_what_fit_printed(self):
        fitted = self.succeed("fit", LOANS, "--target", "grade", "-o", "model.json")
        self.assertEqual(self.succeed("show", "model.json").stdout, fitted.stdout)

    def test_chosen_attributes(self):
        self.succeed("fit", LOANS, "--target", "default", "-o", "model.json")
        text = self.succeed("show", "model.json", "-a", "age", "-a", "1").stdout
        self.assertIn("\nage: 2 bins", text)
        self.assertNotIn("\nincome:", text)
        self.fail_with(
            1,
            "--attribute: no column 'nope'; the columns are: age, income, employment_years, "
            "loan_amount, debt_ratio, credit_score, open_accounts, weight",
            "show", "model.json", "-a", "nope",
        )


class Tables(ProgramTest):
    def setUp(self):
        super().setUp()
        self.file("d.csv", "a|b,t\n" + "".join(f"{i},{'x<' if i < 10 else 'y'}\n" for i in range(20)))
        self.succeed("fit", "d.csv", "--target", "t", "-o", "model.json")

    def test_csv(self):
        self.assertEqual(
            self.succeed("export", "model.json", "--to", "csv").stdout,
            "attribute,bin,lower,upper,closed,weight,weight_x<,weight_y,event_rate,"
            "weight_of_evidence,information_value\n"
            "a|b,0,-inf,9,right,10,10,0,0,3.044522437723423,3.044522437723423\n"
            "a|b,1,9,inf,right,10,0,10,1,-3.044522437723423,3.044522437723423\n"
            "a|b,missing,,,,0,0,0,0,0,0\n"
            "a|b,user-missing,,,,0,0,0,0,0,0\n",
        )

    def test_markdown(self):
        self.assertEqual(
            self.succeed("export", "model.json", "--to", "markdown").stdout,
            "Supervised binning of d.csv: 20 cases, 20 used\n"
            "Target t: x\\< (10, 50.0%), y (10, 50.0%); the event is y\n"
            "\n## Attributes by gain over all cases\n\n"
            "| \\# | attribute | bins | distinct | min | max | missing | gain | over all | IV | trend | remark |\n"
            "| ---: | --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: | --- | --- |\n"
            "| 1 | a\\|b | 2 | 20 | 0 | 19 | 0.0% | 1.0000 | 1.0000 | 6.0890 | rising |  |\n"
            "\n### a\\|b\n\n"
            "2 bins, 20 distinct values, entropy 1.0000 before, 0.0000 after, gain 1.0000\n\n"
            "| \\# | a\\|b | weight | share | x\\< | % | y | event rate | WoE | IV |\n"
            "| ---: | --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: |\n"
            "| 0 | (-inf, 9\\] | 10 | 50.0% | 10 | 100.0% | 0 | 0.0% | 3.0445 | 3.0445 |\n"
            "| 1 | (9, inf) | 10 | 50.0% | 0 | 0.0% | 10 | 100.0% | -3.0445 | 3.0445 |\n"
            "|  | total | 20 | 100.0% | 10 | 50.0% | 10 | 50.0% |  | 6.0890 |\n",
        )

    def test_sql(self):
        text = "TRIM(CAST(\"a|b\" AS VARCHAR), ' ' || CHAR(9))"
        self.assertEqual(
            self.succeed("export", "model.json", "--to", "sql", "--as", "interval").stdout,
            f"  CASE\n    WHEN \"a|b\" IS NULL OR {text} IN ('', 'NA', "
            "'N/A', 'NaN', 'nan', 'NULL', 'null', '?') THEN 'missing'\n"
            f"    WHEN LOWER({text}) IN ('inf', '+inf', 'infinity', '+infinity') THEN '(9, inf)'\n"
            f"    WHEN LOWER({text}) IN ('-inf', '-infinity') THEN '(-inf, 9]'\n"
            "    WHEN CAST(\"a|b\" AS DOUBLE PRECISION) <= 9.0 THEN '(-inf, 9]'\n"
            "    ELSE '(9, inf)'\n  END AS \"a|b_bin\"\n",
        )

    def test_json_is_the_model_of_the_chosen_attributes(self):
        whole = (self.directory / "model.json").read_text()
        self.assertEqual(self.succeed("export", "model.json", "--to", "json").stdout, whole)
        self.assertEqual(self.succeed("show", "model.json", "--json").stdout, whole)
        self.succeed("fit", LOANS, "--target", "default", "-o", "loans.json")
        model = json.loads((self.directory / "loans.json").read_text())
        model["attributes"] = [a for a in model["attributes"] if a["name"] == "age"]
        for command in (["export", "loans.json", "--to", "json"], ["show", "loans.json", "--json"]):
            self.assertEqual(json.loads(self.succeed(*command, "-a", "age").stdout), model)

    def test_dialects(self):
        sql = {dialect: self.succeed("export", "model.json", "--to", "sql", "--from", "s.t",
                                     "--dialect", dialect).stdout
               for dialect in ("sqlite", "postgresql", "duckdb", "spark", "ansi")}
        self.assertEqual(
            sql["spark"],
            "SELECT *,\n  CASE\n    WHEN `a|b` IS NULL OR TRIM(BOTH ' \\t' FROM CAST(`a|b` AS STRING)) "
            "IN ('', 'NA', "
            "'N/A', 'NaN', 'nan', 'NULL', 'null', '?') THEN -1\n"
            "    WHEN CAST(`a|b` AS DOUBLE) <= 9e0 THEN 0\n    ELSE 1\n  END AS `a|b_bin`\n"
            "FROM `s`.`t`;\n")
        for dialect, text, number in (
                ("postgresql", "AS VARCHAR), ' ' || CHR(9))", "DOUBLE PRECISION"),
                ("duckdb", "AS VARCHAR), ' ' || CHR(9))", "DOUBLE"),
                ("ansi", "AS VARCHAR(255)))", "DOUBLE PRECISION")):
            expected = sql["sqlite"].replace("AS VARCHAR), ' ' || CHAR(9))", text)
            expected = expected.replace("DOUBLE PRECISION", number).replace("9.0", "9e0")
            lines = [line for line in expected.splitlines(True) if "LOWER" not in line]
            self.assertEqual(sql[dialect], "".join(lines))

    def test_output_file(self):
        self.succeed("export", "model.json", "--to", "csv", "-o", "out.csv")
        rows = list(csv.reader(io.StringIO((self.directory / "out.csv").read_text())))
        self.assertEqual(len(rows), 5)

    def test_sql_options_are_for_sql(self):
        for option in (["--from", "t"], ["--as", "index"], ["--dialect", "spark"]):
            self.fail_with(2, "--from, --as and --dialect are for --to sql",
                           "export", "model.json", "--to", "csv", *option)


class Sql(ProgramTest):
    """Every value lands where the model puts it, also when SQLite reads the literals."""

    def model(self, cut_points, side, values=(), range_=None, name="x"):
        """A model file by hand, from one that was fitted."""
        self.file("d.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        model = self.fit("d.csv", "--target", "t", "--missing", "x=99")
        model["options"]["closedSide"] = side
        fitted = model["attributes"][0]
        fitted["name"] = name
        fitted["missing"] = {"values": list(values), "range": range_}
        fitted["cutPoints"] = cut_points
        empty = {"weight": 0, "classWeights": [0, 0]}
        fitted["bins"] = fitted["bins"][:1] + [empty] * len(cut_points)
        text = json.dumps(model).replace("-Infinity", '"-inf"').replace("Infinity", '"inf"')
        self.file("model.json", text)

    def placed(self, values, name="x", type_="REAL", table="t", from_=None):
        connection = sqlite3.connect(":memory:")
        self.addCleanup(connection.close)
        quoted = '"' + name.replace('"', '""') + '"'
        connection.execute(f'CREATE TABLE "{table}" ({quoted} {type_})')
        connection.executemany(f'INSERT INTO "{table}" VALUES (?)', [(v,) for v in values])
        sql = self.succeed("export", "model.json", "--to", "sql", "--from", from_ or table).stdout
        return [row[1] for row in connection.execute(sql)]

    @staticmethod
    def around(value):
        bits = struct.unpack("<q", struct.pack("<d", value))[0]
        return [struct.unpack("<d", struct.pack("<q", bits + d))[0] for d in (-1, 0, 1)]

    @staticmethod
    def expected(cut_points, side, values, range_, value):
        if value is None:
            return -1
        if value in values or (range_ and range_[0] <= value <= range_[1]):
            return -2
        return sum((c < value) if side == "right" else (c <= value) for c in cut_points)

    def check(self, cut_points, values=(), range_=None):
        tried = [None, 0.0, -0.0, INFINITY, -INFINITY, 1.7976931348623157e308, 5e-324]
        for border in [*cut_points, *values, *(range_ or [])]:
            tried += self.around(border) if abs(border) != INFINITY and border else [border]
        for side in ("right", "left"):
            self.model(cut_points, side, values, range_)
            self.assertEqual(
                self.placed(tried),
                [self.expected(cut_points, side, values, range_, v) for v in tried],
            )

    def test_every_border_missing_and_infinite_value(self):
        self.check([-1.5, 0.1, 254.6272160119115], values=[7.25, -1], range_=[100, 150.5])
        self.check([5.434862940027643e-05, 3948354.129038485, 6.02e23])
        self.check([5e-324, 2.2250738585072014e-308, 1.7976931348623157e308])

    def test_random_borders_of_any_size(self):
        seed = 20261120
        print("seed", seed)
        dice = random.Random(seed)
        for _ in range(5):
            borders = set()
            while len(borders) < 30:
                value = struct.unpack("<d", struct.pack("<Q", dice.getrandbits(64)))[0]
                if value == value and abs(value) != INFINITY and value != 0.0:
                    borders.add(value)
            self.check(sorted(borders))

    def test_texts_are_placed_as_apply_places_them(self):
        """As a database holds a CSV file that it imported."""
        cells = ["10", "9", "9.5", "1e1", "-3", " 12 ", "100", "99", "99.0", "", "NA", "?", "-1e-3",
                 "\t10", "-3 \t", "\t", "\t ?", "inf", "+Infinity", " -INF", "-infinity\t"]
        self.model([2, 9, 10], "right", values=[99])
        data = self.file("cells.csv", "x\n" + "".join(f'"{cell}"\n' for cell in cells))
        applied = self.succeed("apply", "model.json", data).stdout.splitlines()[1:]
        expected = [int(line.rsplit(",", 1)[1]) for line in applied]
        for type_ in ("TEXT", "", "NUMERIC"):
            with self.subTest(type_):
                self.assertEqual(self.placed(cells, type_=type_), expected)

    def test_a_missing_number_is_missing(self):
        self.file("d.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        self.succeed("fit", "d.csv", "-t", "t", "--na", "-1", "-o", "model.json")
        for type_ in ("REAL", "INTEGER", "TEXT"):
            self.assertEqual(self.placed([-1, 3, 12], type_=type_), [-1, 0, 1])

    def test_a_table_may_have_a_schema(self):
        self.model([3], "right")
        self.assertEqual(self.placed([3, 4], from_="main.t"), [0, 1])
        self.assertEqual(self.placed([3, 4], table="a.b", from_='main."a.b"'), [0, 1])
        self.fail_with(2, "--from main.: write TABLE or SCHEMA.TABLE, a name with a dot or a quote "
                       "in double quotes", "export", "model.json", "--to", "sql", "--from", "main.")

    def test_standard_sql_has_no_infinite_numbers(self):
        self.model([3], "right", values=[INFINITY])
        self.fail_with(1, "standard SQL has no infinite numbers: name another --dialect",
                       "export", "model.json", "--to", "sql", "--dialect", "ansi")

    def test_open_ranges_need_no_infinite_number(self):
        self.file("d.csv", "a,t\n" + "".join(f"{i},{'xy'[i > 9]}\n" for i in range(20)))
        for missing, test in ((":3", "<= 3e0"), ("16:", ">= 16e0"), ("-inf:inf", "IS NOT NULL"),
                              ("1:3", "BETWEEN 1e0 AND 3e0")):
            self.succeed("fit", "d.csv", "-t", "t", "--missing-range", f"a={missing}", "-o", "m.json")
            sql = self.succeed("export", "m.json", "--to", "sql", "--dialect", "ansi").stdout
            self.assertIn(f'    WHEN CAST("a" AS DOUBLE PRECISION) {test} THEN -2\n', sql)

    def test_evidence(self):
        self.file("d.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        model = self.fit("d.csv", "--target", "t", "-o", "model.json")
        sql = self.succeed("export", "model.json", "--to", "sql", "--as", "woe", "--from", "t").stdout
        connection = sqlite3.connect(":memory:")
        self.addCleanup(connection.close)
        connection.execute("CREATE TABLE t (x)")
        connection.executemany("INSERT INTO t VALUES (?)", [(3,), (12,), (None,)])
        weights = [b["weightOfEvidence"] for b in model["attributes"][0]["bins"]]
        self.assertEqual([row[1] for row in connection.execute(sql)], [*weights, 0.0])

    def test_names_are_quoted(self):
        for name in ('odd "name"', "it's", "select", "ä b"):
            self.model([3], "right", name=name)
            self.assertEqual(self.placed([3, 4, None], name), [0, 1, -1])


if __name__ == "__main__":
    unittest.main()
