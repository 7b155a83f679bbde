"""Signals, pipes, databases and what killed runs leave behind."""

import gzip
import os
import signal
import sqlite3
import subprocess
import time
import unittest

from program import LOANS, MCBIN, ProgramTest

ENDING = ["HUP", "INT", "QUIT", "PIPE", "ALRM", "TERM", "USR1", "USR2", "XCPU", "XFSZ"]
SLOW = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) AS c FROM n"


class Signals(ProgramTest):
    def start(self, *arguments, **options):
        return subprocess.Popen([MCBIN, *map(str, arguments)], env=self.environment,
                                cwd=self.directory, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, **options)

    def check_ends(self, process, name, delay=0.3):
        """The signal is heard within a second (three on a machine at work), nothing is left."""
        time.sleep(delay)
        self.assertIsNone(process.poll(), "the run ended before the signal")
        number = getattr(signal, "SIG" + name)
        sent = time.monotonic()
        process.send_signal(number)
        _, stderr = process.communicate(timeout=60)
        self.assertLess(time.monotonic() - sent, 3)
        self.assertEqual(process.returncode, 128 + number, (name, stderr))
        self.assertTrue(stderr.endswith(b"mcbin: interrupted\n"), stderr)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_every_ending_signal_while_a_pipe_is_silent(self):
        os.mkfifo(self.directory / "pipe")
        for name in ENDING:
            with self.subTest(name):
                self.check_ends(self.start("fit", "pipe", "-e", "-o", "m.json"), name)
        self.assertEqual(sorted(os.listdir(self.directory)), ["pipe", "tmp"])

    def test_during_a_slow_query(self):
        sqlite3.connect(self.directory / "d.db").execute("CREATE TABLE t (a)").connection.close()
        for name in ("INT", "TERM"):
            self.check_ends(self.start("fit", "d.db", "-e", "--query", SLOW), name)

    def test_during_a_long_line(self):
        os.mkfifo(self.directory / "pipe")
        with subprocess.Popen(["sh", "-c", "(echo a; cat /dev/zero | tr '\\0' 1) > pipe"],
                              cwd=self.directory, stderr=subprocess.DEVNULL):
            self.check_ends(self.start("fit", "pipe", "-e"), "TERM")

    def test_during_blank_lines(self):
        with gzip.open(self.directory / "d.csv.gz", "wb", compresslevel=1) as file:
            file.write(b"a,b\n" + b"\n" * 250_000_000)
        self.check_ends(self.start("fit", "d.csv.gz", "-e"), "TERM")

    def test_every_command_while_a_pipe_is_silent(self):
        self.succeed("fit", LOANS, "-e", "-o", "m.json")
        os.mkfifo(self.directory / "pipe")
        for command in (["show", "pipe"], ["report", "pipe"], ["export", "pipe", "--to", "sql"],
                        ["apply", "pipe", LOANS], ["apply", "m.json", "pipe"],
                        ["fit", LOANS, "-e", "--cuts", "pipe"]):
            with self.subTest(command):
                self.check_ends(self.start(*command), "INT")

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
        self.assertEqual(len(list(self.temporary.iterdir())), 1)
        self.succeed("fit", LOANS, "-t", "default")  # checks that nothing is left


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
