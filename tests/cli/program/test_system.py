"""Signals, pipes, databases and what killed runs leave behind."""

import gzip
import json
import os
import shutil
import signal
import sqlite3
import subprocess
import time
import unittest

from program import LOANS, MCBIN, ON_WINDOWS, STARTED, ProgramTest, repeated_when_lost

ENDING = ["INT"] if ON_WINDOWS else [
    "TERM", "HUP", "INT", "QUIT", "PIPE", "ALRM", "USR1", "USR2", "XCPU", "XFSZ"]
NO_PIPES = "files are no pipes there"
SLOW = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) AS c FROM n"


class Signals(ProgramTest):
    def check_ends(self, process, name):
        """The signal is heard within a second (three on a machine at work), nothing is left."""
        time.sleep(STARTED)
        self.assertIsNone(process.poll(), "the run ended before the signal")
        number = getattr(signal, "SIG" + name)
        sent = time.monotonic()
        _, stderr, code = self.signal(process, number)
        self.assertLess(time.monotonic() - sent, 3)
        self.assertEqual(code, 128 + number, (name, stderr))
        self.assertTrue(stderr.endswith(b"mcbin: interrupted\n"), stderr)
        self.assertEqual(self.left(), [])

    @unittest.skipIf(ON_WINDOWS, NO_PIPES)
    def test_every_ending_signal_while_a_pipe_is_silent(self):
        os.mkfifo(self.directory / "pipe")
        for name in ENDING:
            with self.subTest(name):
                self.check_ends(self.start("fit", "pipe", "-e", "-o", "m.json"), name)
        self.assertEqual(sorted(os.listdir(self.directory)), ["pipe", "tmp"])

    @repeated_when_lost
    def test_during_a_slow_query(self):
        sqlite3.connect(self.directory / "d.db").execute("CREATE TABLE t (a)").connection.close()
        for name in {"INT", "TERM"} & set(ENDING):
            self.check_ends(self.start("fit", "d.db", "-e", "--query", SLOW), name)

    @repeated_when_lost
    def test_during_a_long_line(self):
        with subprocess.Popen(["sh", "-c", "echo a; cat /dev/zero | tr '\\0' 1"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as writer:
            self.check_ends(self.start("fit", "-", "-e", stdin=writer.stdout), ENDING[0])
            writer.stdout.close()

    @repeated_when_lost
    def test_during_blank_lines(self):
        with gzip.open(self.directory / "d.csv.gz", "wb", compresslevel=1) as file:
            file.write(b"a,b\n" + b"\n" * 250_000_000)
        self.check_ends(self.start("fit", "d.csv.gz", "-e"), ENDING[0])

    @unittest.skipIf(ON_WINDOWS, NO_PIPES)
    def test_every_command_while_a_pipe_is_silent(self):
        self.succeed("fit", LOANS, "-e", "-o", "m.json")
        os.mkfifo(self.directory / "pipe")
        for command in (["show", "pipe"], ["report", "pipe"], ["export", "pipe", "--to", "sql"],
                        ["apply", "pipe", LOANS], ["apply", "m.json", "pipe"],
                        ["fit", LOANS, "-e", "--cuts", "pipe"]):
            with self.subTest(command):
                self.check_ends(self.start(*command), "INT")

    @unittest.skipIf(ON_WINDOWS, "it has no such signal")
    def test_ignored_signals_stay_ignored(self):
        process = self.start("fit", "-", "-e", stdin=subprocess.PIPE,
                             preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        time.sleep(0.3)
        process.send_signal(signal.SIGHUP)
        process.communicate(b"a\n1\n2\n3\n", timeout=60)
        self.assertEqual(process.returncode, 0)


class KilledRuns(ProgramTest):
    def test_a_later_run_removes_the_columns_of_a_killed_one(self):
        header, body = LOANS.read_text().split("\n", 1)
        self.file("big.csv", header + "\n" + body * 60)
        process = subprocess.Popen([MCBIN, "fit", "big.csv", "-t", "default"],
                                   env=self.environment, cwd=self.directory,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + 60
        while (len(list(self.temporary.glob("mcbin-*/*"))) < 2 and process.poll() is None
               and time.monotonic() < deadline):
            time.sleep(0.002)
        process.kill()
        process.wait()
        self.assertEqual(len(self.left()), 1)
        self.succeed("fit", LOANS, "-t", "default")  # checks that nothing is left


class Paths(ProgramTest):
    def test_long_paths_beyond_ascii(self):
        """Of all files; Windows once took no path of more than 259 characters."""
        folder = self.directory
        for name in ("größe", "数据", "мера", "😀"):
            folder /= name + "-" * 70
        self.temporary = folder / "tmp"
        self.temporary.mkdir(parents=True)
        self.environment["TMPDIR"] = str(self.temporary)
        data = shutil.copy(LOANS, folder / "дані.csv")
        model = folder / "modèle.json"
        self.succeed("fit", data, "-t", "default", "-o", model)
        self.assertEqual(json.loads(model.read_text())["attributes"],
                         self.fit(LOANS, "-t", "default")["attributes"])
        self.succeed("fit", data, "-e", "-x", "default", "--json")  # which reads the columns again
        self.fail_with(2, f"--output {data} is the file of the data: name another",
                       "fit", data, "-e", "-o", data)
        self.succeed("apply", model, data, "-o", folder / "out.csv")
        self.succeed("report", model, "-o", folder / "out.html")
        with sqlite3.connect(folder / "d.db") as database:
            database.execute("CREATE TABLE t (a)").executemany("INSERT INTO t VALUES (?)", "123")
        database.close()
        self.succeed("fit", folder / "d.db", "-e", "--bins", "2", "--table", "t")
        self.assertEqual({path.name for path in folder.iterdir()},
                         {"tmp", data.name, model.name, "out.csv", "out.html", "d.db"})


class Databases(ProgramTest):
    def database(self, journal="DELETE"):
        path = self.directory / "d.db"
        database = sqlite3.connect(path)
        database.execute(f"PRAGMA journal_mode={journal}")
        database.execute("CREATE TABLE t (a, c)")
        database.executemany("INSERT INTO t VALUES (?, ?)",
                             [(i, "xy"[i > 9]) for i in range(20)])
        database.commit()
        database.close()
        return path

    @unittest.skipIf(ON_WINDOWS, NO_PIPES)
    def test_through_a_pipe(self):
        self.database()
        os.mkfifo(self.directory / "pipe")
        with subprocess.Popen(["sh", "-c", "cat d.db > pipe"], cwd=self.directory):
            self.fail_with(1, "pipe: a database can only be read from a plain file: unpack or save "
                           "it first", "fit", "pipe", "-t", "c", "--table", "t")

    def test_nothing_is_left_beside_a_database_with_a_log(self):
        path = self.database("WAL")
        before = (sorted(os.listdir(self.directory)), path.read_bytes(), path.stat().st_mtime_ns)
        self.succeed("fit", "d.db", "-t", "c", "--table", "t")
        after = (sorted(os.listdir(self.directory)), path.read_bytes(), path.stat().st_mtime_ns)
        self.assertEqual(after, before)


if __name__ == "__main__":
    unittest.main()
