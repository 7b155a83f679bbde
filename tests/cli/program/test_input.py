"""Where cases come from: every kind of input gives the same model."""

import csv
import gzip
import json
import os
import sqlite3
import subprocess
import unittest

from program import LOANS, MCBIN, ON_WINDOWS, ProgramTest

OPTIONS = ["--target", "default", "--missing", "income=-1"]


def rows_of(path):
    with open(path, encoding="utf-8", newline="") as file:
        return list(csv.reader(file))


class SameData(ProgramTest):
    """The example data in another dress."""

    def setUp(self):
        super().setUp()
        self.expected = self.fit(LOANS, *OPTIONS)
        self.rows = rows_of(LOANS)

    def check(self, *arguments, **options):
        model = self.fit(*arguments, *OPTIONS, **options)
        for part in ("target", "attributes", "cases", "options"):
            self.assertEqual(model[part], self.expected[part])
        return model

    def test_crlf_bom_and_no_final_newline(self):
        text = LOANS.read_text().replace("\n", "\r\n").removesuffix("\r\n")
        self.check(self.file("d.csv", b"\xef\xbb\xbf" + text.encode()))

    def test_every_cell_quoted(self):
        path = self.directory / "d.csv"
        with open(path, "w", encoding="utf-8", newline="") as file:
            csv.writer(file, quoting=csv.QUOTE_ALL).writerows(self.rows)
        self.check(path)

    def test_tsv_by_name(self):
        self.check(self.file("d.tsv", LOANS.read_text().replace(",", "\t")))
        self.check(self.file("d.tab", LOANS.read_text().replace(",", "\t")))

    def test_other_separators(self):
        text = LOANS.read_text()
        self.check(self.file("d.csv", text.replace(",", ";")), "--delimiter", ";")
        self.check(self.file("d.txt", text.replace(",", "\t")), "--delimiter", "tab")

    def test_gzip(self):
        self.check(self.file("d.csv.gz", gzip.compress(LOANS.read_bytes())))
        self.check(self.file("misnamed.csv", gzip.compress(LOANS.read_bytes())))
        tabs = LOANS.read_text().replace(",", "\t").encode()
        self.check(self.file("d.tsv.gz", gzip.compress(tabs)))

    def test_standard_input(self):
        self.assertEqual(self.check("-", stdin=LOANS.read_bytes())["source"]["data"], "-")
        self.check("-", stdin=gzip.compress(LOANS.read_bytes()))

    def test_a_pipe(self):
        os.mkfifo(self.directory / "pipe")
        with subprocess.Popen(["cp", str(LOANS), str(self.directory / "pipe")]):
            self.check("pipe")

    def test_sqlite_table_and_query(self):
        path = self.directory / "d.db"
        names = self.rows[0]
        with sqlite3.connect(path) as database:
            columns = ", ".join(f'"{name}" {self.sql_type(name)}' for name in names)
            database.execute(f'CREATE TABLE "my loans" ({columns})')
            marks = ",".join("?" * len(names))
            database.executemany(
                f'INSERT INTO "my loans" VALUES ({marks})',
                [[cell or None for cell in row] for row in self.rows[1:]],
            )
        database.close()
        model = self.check(path, "--table", "my loans")
        self.assertEqual(model["source"]["table"], "my loans")
        query = 'SELECT * FROM "my loans" WHERE age > 0'
        self.assertEqual(self.check(path, "--query", query)["source"]["query"], query)

    @staticmethod
    def sql_type(name):
        if name in ("application", "purpose", "grade", "default"):
            return "TEXT"
        return "REAL" if name in ("debt_ratio", "weight") else "INTEGER"


class Shapes(ProgramTest):
    def names(self, text, *arguments):
        self.file("d.csv", text)
        model = self.fit("d.csv", "-e", *arguments)
        return [a["name"] for a in model["attributes"]]

    def test_no_header(self):
        self.assertEqual(self.names("1,5\n2,6\n3,7\n", "--no-header"), ["column_1", "column_2"])
        model = self.fit("d.csv", "--no-header", "-e", "-a", "2")
        self.assertEqual(model["cases"]["read"], 3)
        self.assertEqual(model["attributes"][0]["minimum"], 5)

    def test_empty_header_names(self):
        self.assertEqual(self.names("a,,\n1,5,2\n2,6,3\n"), ["a", "column_2", "column_3"])

    def test_embedded_newlines_and_quotes_in_names_and_cells(self):
        self.assertEqual(
            self.names('"a\nb","say ""hi"""\n1,"5"\n2,6\n'), ["a\nb", 'say "hi"']
        )

    def test_blank_lines_are_passed_over(self):
        self.file("d.csv", "a,b\n1,1\n\n2,2\n\n\n3,3\n")
        self.assertEqual(self.fit("d.csv", "-e")["cases"]["read"], 3)

    def test_many_blank_lines_are_no_long_row(self):
        self.file("d.csv.gz", gzip.compress(b"a,b\n1,1\n" + b"\r\n" * (33 << 20) + b"2,2\n", 1))
        self.assertEqual(self.fit("d.csv.gz", "-e")["cases"]["read"], 2)

    def test_blank_lines_of_one_column_are_missing_values(self):
        for header in ("", "\n\r\na\n"):
            arguments = [] if header else ["--no-header"]
            content = header + "\n1\r\n\r\n2\r\r3\n\n"
            self.file("d.csv", content)
            model = self.fit("d.csv", "-e", *arguments)
            self.assertEqual(model["cases"]["read"], 7)
            self.assertEqual(model["attributes"][0]["missingCases"]["weight"], 4)
            self.succeed("fit", "d.csv", "-e", "-o", "m.json", *arguments)
            binned = self.succeed("apply", "m.json", "d.csv", "--replace", *arguments).stdout
            lines = binned.splitlines()[1 if header else 0:]
            self.assertEqual([line == "-1" for line in lines],
                             [True, False, True, False, True, False, True])

    def test_infinities_are_numbers(self):
        rows = "".join(f"{x},{'a' if i < 20 else 'b'}\n" for i, x in
                       enumerate(["-inf"] * 20 + ["Infinity"] * 20))
        self.file("d.csv", "x,t\n" + rows)
        model = self.fit("d.csv", "-t", "t")
        self.assertEqual(model["attributes"][0]["cutPoints"], ["-inf"])
        self.assertEqual(model["attributes"][0]["maximum"], "inf")
        self.assertIn("(-inf, -inf]", self.succeed("fit", "d.csv", "-t", "t").stdout)


class OtherBytes(ProgramTest):
    """Text that is no UTF-8 is stored with \\xE9 for a byte."""

    LATIN = "caf\u00e9".encode("latin-1")
    DATA = (b"a,note,t\n1," + LATIN + b",x\n2,b,x\n" + LATIN + b",c,y\n4,d,y\n5,e,caf\xe9s\n")

    def setUp(self):
        super().setUp()
        self.data = os.fsencode(self.directory) + b"/" + self.LATIN + b".csv"
        with open(self.data, "wb") as file:
            file.write(self.DATA)

    @unittest.skipIf(ON_WINDOWS, "arguments are text there")
    def test_names_and_texts_are_stored_and_still_compared(self):
        options = ["--na", os.fsdecode(self.LATIN), "--na", "b", "--missing",
                   os.fsdecode(b"t=caf\xe9s"), "--exclude", os.fsdecode(b"*\xe9*"), "-a", "?"]
        with self.assertRaisesRegex(AssertionError, r"no column '\*\\xE9\*'"):
            self.fit(os.fsdecode(self.data), "-t", "t", *options)
        options = options[:-4]
        self.run_raw("fit", self.data, "-t", "t", *options, "-o", "m.json", "--json")
        model = json.loads((self.directory / "m.json").read_text())
        self.assertTrue(model["source"]["data"].endswith("/caf\\xE9.csv"))
        self.assertEqual(model["options"]["naTexts"], ["caf\\xE9", "b"])
        self.assertEqual(model["target"]["categories"], ["x", "y"])
        self.assertEqual(model["target"]["missingTexts"], ["caf\\xE9s"])
        self.assertEqual(model["attributes"][0]["missingCases"]["weight"], 1)
        binned = self.run_raw("apply", "m.json", self.data, "--as", "interval")
        self.assertEqual(binned.splitlines()[3], self.LATIN + b",c,y,missing")
        for command in (["show", "m.json"], ["report", "m.json"]):
            self.assertIn(b"caf\\xE9.csv", self.run_raw(*command))

    @unittest.skipIf(ON_WINDOWS, "arguments are text there")
    def test_queries_are_stored(self):
        with sqlite3.connect(self.directory / "d.db") as database:
            database.execute("CREATE TABLE d (a)")
            database.executemany("INSERT INTO d VALUES (?)", [(1,), (2,)])
        database.close()
        query = b"SELECT a, '" + self.LATIN + b"' AS b FROM d"
        model = json.loads(self.run_raw("fit", "d.db", "-e", "--query", query, "--json"))
        self.assertEqual(model["source"]["query"], "SELECT a, 'caf\\xE9' AS b FROM d")

    def run_raw(self, *arguments):
        """The bytes that a command prints."""
        return subprocess.run([MCBIN, *arguments], check=True, cwd=self.directory,
                              env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout


class Memory(ProgramTest):
    """Ten times the rows must not take much more memory than one attribute's rows need."""

    PROBE = (
        "import resource, subprocess, sys\n"
        "subprocess.run(sys.argv[1:], check=True, stdout=subprocess.DEVNULL,"
        " stderr=subprocess.DEVNULL)\n"
        "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)\n"
    )

    def peak_kilobytes(self, rows):
        path = self.directory / f"{rows}.csv"
        body = LOANS.read_text().split("\n", 1)
        with open(path, "w", encoding="utf-8") as file:
            file.write(body[0] + "\n")
            for _ in range(rows // 4000):
                file.write(body[1])
        # A sanitizer must not keep what was freed.
        self.environment["ASAN_OPTIONS"] = "quarantine_size_mb=0"
        command = ["python3", "-c", self.PROBE, MCBIN, "fit", path, "-t", "default", "-x", "grade"]
        return int(subprocess.check_output(command, env=self.environment))

    def test_memory_does_not_grow_with_the_rows(self):
        small = self.peak_kilobytes(20_000)
        large = self.peak_kilobytes(200_000)
        # The library's sort holds the rows of one attribute, three doubles each, one and a half
        # times over.
        rows_of_one_attribute = 180_000 * 24 * 1.5 / 1024
        self.assertLess(large - small, rows_of_one_attribute + 4096)


if __name__ == "__main__":
    unittest.main()
