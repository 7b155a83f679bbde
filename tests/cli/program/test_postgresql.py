"""Exported SQL in a PostgreSQL server that the test starts; without one it is skipped."""

import glob
import os
import shutil
import subprocess
import tempfile
import unittest

from program import ProgramTest

FOLDERS = sorted(glob.glob("/usr/lib/postgresql/*/bin"))
USER = "postgres" if os.getuid() == 0 else None  # the server refuses to run as root


def run(*arguments, **options):
    return subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=True,
                          timeout=120, text=True, user=USER, cwd="/", **options).stdout


@unittest.skipUnless(FOLDERS and shutil.which("psql"), "there is no PostgreSQL")
class PostgreSql(ProgramTest):
    @classmethod
    def setUpClass(cls):
        cls.server = tempfile.mkdtemp(prefix="mcbin-pg-")
        cls.addClassCleanup(shutil.rmtree, cls.server)
        if USER:
            shutil.chown(cls.server, USER)
        data = cls.server + "/data"
        run(FOLDERS[-1] + "/initdb", "-D", data, "--no-sync", "-A", "trust", "-E", "UTF8")
        control = [FOLDERS[-1] + "/pg_ctl", "-D", data, "-w", "-l", cls.server + "/log"]
        run(*control, "-o", f"-k {cls.server} -h '' -F", "start")
        cls.addClassCleanup(run, *control, "-m", "immediate", "stop")

    def query(self, sql):
        return run("psql", "-h", self.server, "-v", "ON_ERROR_STOP=1", "-qAt", "-d", "postgres",
                   "-c", sql)

    def check(self, type_, cells, *options):
        self.file("d.csv", "x,t\n" + "".join(f"{i},{'ab'[i > 9]}\n" for i in range(20)))
        self.succeed("fit", "d.csv", "-t", "t", "--missing", "x=99", "-o", "m.json", *options)
        data = self.file("cells.csv", "x\n" + "".join(f'"{cell}"\n' for cell in cells))
        for style in ("index", "interval", "woe"):
            applied = self.succeed("apply", "m.json", data, "--as", style, "-o", "binned.tsv")
            self.assertEqual(applied.stdout, "")
            lines = (self.directory / "binned.tsv").read_text().splitlines()[1:]
            sql = self.succeed("export", "m.json", "--to", "sql", "--dialect", "postgresql",
                               "--from", "s.t", "--as", style).stdout
            values = ", ".join(f"({i}, '{c}')" if type_ == "text" or c else f"({i}, NULL)"
                               for i, c in enumerate(cells))
            rows = self.query(f"DROP SCHEMA IF EXISTS s CASCADE; CREATE SCHEMA s; "
                              f"CREATE TABLE s.t (i int, x {type_}); "
                              f"INSERT INTO s.t VALUES {values}; {sql}").splitlines()
            found = [row.split("|")[2] for row in rows if "|" in row]
            expected = [line.rsplit("\t", 1)[1] for line in lines]
            if style != "interval":
                found, expected = list(map(float, found)), list(map(float, expected))
            self.assertEqual(found, expected, (type_, style))

    def test_texts(self):
        self.check("text", ["10", "9", "9.5", "1e1", "-3", " 12 ", "99", "99.0", "", "NA", "?",
                            "\t12", "3\t", "\t", " \tNA", "inf", "-Infinity", "+INF"])

    def test_numbers(self):
        numbers = ["10", "9", "9.000000000000002", "-1e-3", "99", "", "1e300", "inf", "-1"]
        self.check("double precision", numbers)
        self.check("double precision", numbers, "--left-closed", "--na", "-1")


if __name__ == "__main__":
    unittest.main()
