"""What reaches a terminal: nothing from the data that it would act on, and no endless quotations."""

import json
import sqlite3
import unittest

from program import ON_WINDOWS, ProgramTest

# A colour, the same by one character, a bell, a line end, a turned direction, a line separator.
HOSTILE = "a\x1b[31m\x9b31m\x07\r\n\u202eb\u2028\u2066"
SHOWN = r"a\x1B[31m\u{9B}31m\x07\r\n\u{202E}b\u{2028}\u{2066}"
LONG = "x" * 3_000_000
IN_PATH = "" if ON_WINDOWS else HOSTILE  # which has no such names of files


def acts_on_terminal(character):
    code = ord(character)
    return (character != "\n" and code < 0x20) or 0x7F <= code < 0xA0 or code == 0x61C or (
        code in (0x200E, 0x200F)) or 0x2028 <= code <= 0x202E or 0x2066 <= code <= 0x2069


class Display(ProgramTest):
    def check(self, code, *arguments):
        """Runs the program; both streams are free of what a terminal acts on. Returns them."""
        result = self.run_program(*arguments)
        self.assertEqual(result.returncode, code, result.stderr)
        text = result.stdout + result.stderr
        self.assertEqual({c for c in text if acts_on_terminal(c)}, set(), arguments)
        return text

    def hostile_table(self):
        """A scale column, a target and a column of texts, all with hostile names and cells."""
        def cell(text):
            return '"' + text.replace('"', '""') + '"'
        rows = "".join(f"{i},{cell('yn'[i > 9] + HOSTILE)},{cell(HOSTILE)}\n" for i in range(20))
        header = ",".join(cell(name + HOSTILE) for name in ("v", "t", "w"))
        return self.file(f"d{IN_PATH}.csv", f"{header}\n{rows}")

    def test_plan_tables_and_exports(self):
        data = self.hostile_table()
        model = self.directory / f"m{IN_PATH}.json"
        fit = ["fit", data, "-t", "2", "--na", HOSTILE, "--missing", "2=" + HOSTILE]
        text = self.check(0, *fit, "-o", model)
        for name in ("v", "t", "y", "n"):
            self.assertIn(name + SHOWN, text)
        self.check(0, *fit, "--json")
        for command in (["show", model], ["export", model, "--to", "markdown"], ["report", model],
                        ["apply", model, data, "-o", "out.csv"]):
            self.check(0, *command)

    def test_a_model_reads_back_as_it_was(self):
        model = self.fit(self.hostile_table(), "-t", "2")
        self.assertEqual(model["target"]["categories"], ["n" + HOSTILE, "y" + HOSTILE])

    def test_messages(self):
        data = self.hostile_table()
        model = self.file("m.json", self.succeed("fit", data, "-t", "2", "--json").stdout)
        for command in (["fit", data, "-t", HOSTILE], ["fit", data, "-e", "-a", "3"],
                        ["fit", data, "-t", "2", "--type", "3=scale"], ["fit", HOSTILE, "-e"],
                        ["apply", model, model], ["show", HOSTILE], ["show", data],
                        ["export", model, "--to", "sql", "-o", HOSTILE + "/" + HOSTILE],
                        ["show", model, "-a", HOSTILE]):
            self.check(1, *command)
        for command in ([HOSTILE], ["--" + HOSTILE], ["fit", data, HOSTILE],
                        ["fit", data, "-e", "--bins", HOSTILE], ["export", model, "--to", HOSTILE],
                        ["fit", data, "-t", "2", "--missing", "1=" + HOSTILE],
                        ["fit", data, "-t", "2", "--missing-range", "1=" + HOSTILE],
                        ["fit", data, "-e", "--delimiter", HOSTILE]):
            self.check(2, *command)

    def test_models(self):
        fitted = self.fit(self.hostile_table(), "-t", "2")
        fitted["attributes"][0]["status"] = {"code": 1, "severity": "warning", "reason": HOSTILE}
        model = self.file("m.json", json.dumps(fitted))
        for command in (["show", model], ["export", model, "--to", "markdown"], ["report", model]):
            self.check(0, *command)
        fitted["options"]["types"] = {HOSTILE: 3}
        self.check(1, "show", self.file("m.json", json.dumps(fitted)))
        self.check(1, "show", self.file("m.json", '{"a\x9b": \x1b}'))

    def test_databases(self):
        path = self.directory / f"d{IN_PATH}.db"
        database = sqlite3.connect(path)
        database.execute(f'CREATE TABLE "{HOSTILE}" ("v{HOSTILE}")')
        database.commit()
        database.close()
        for arguments in (["--table", "nope"], ["--query", f'SELECT "{HOSTILE}"."x"'],
                          ["--table", HOSTILE]):
            self.check(1, "fit", path, "-e", *arguments)

    def test_a_message_quotes_little_of_a_long_cell(self):
        for name, rows, arguments in (
                ("text among numbers", f"1,y\n{LONG},n\n", ["-t", "t"]),
                ("single category", f"1,{LONG}\n2,{LONG}\n", ["-t", "t"]),
                ("number in range", f"{'9' * len(LONG)},y\n1,n\n", ["-t", "t"]),
                ("no such column", "1,y\n2,n\n", ["-t", "x" * 20_000])):
            with self.subTest(name):
                self.assertLess(len(self.check(1, "fit", self.file("d.csv", "v,t\n" + rows),
                                               *arguments)), 1000)
        model = self.fit(self.file("d.csv", "v,t\n1,y\n2,n\n"), "-t", "t")
        model = self.file("m.json", json.dumps(model))
        data = self.file("d.csv", f"v,t\n{LONG},y\n")
        self.assertLess(len(self.check(1, "apply", model, data, "-o", "out.csv")), 1000)
        self.assertLess(len(self.check(1, "show", self.file("m.json", LONG))), 1000)
        names = self.file("d.csv", f"{LONG},{LONG}\n1,2\n")
        self.assertLess(len(self.check(1, "fit", names, "-e")), 1000)

    def test_texts_of_left_out_columns_are_not_kept(self):
        data = self.file("d.csv", "v,t,person\n1,y,Ada 19-00-17\n2,n,Bob 20-00-18\n")
        result = self.succeed("fit", data, "-t", "t", "-o", "m.json")
        self.assertNotIn("Ada", result.stderr + (self.directory / "m.json").read_text())


if __name__ == "__main__":
    unittest.main()
