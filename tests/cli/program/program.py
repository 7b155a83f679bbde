"""What the tests of the built program share."""

import functools
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

MCBIN = os.environ["MCBIN"]
ROOT = pathlib.Path(os.environ["MCBIN_SOURCE"])
LOANS = ROOT / "examples" / "data" / "loans.csv"
TIMEOUT = 300
ON_WINDOWS = os.environ.get("MCBIN_ON_WINDOWS") == "1"
STARTED = 2.0 if ON_WINDOWS else 0.3  # seconds after which the program surely runs


class LostByEmulator(Exception):
    """Wine at times ends a process that gets a signal, before the program hears of it."""


def repeated_when_lost(test):
    @functools.wraps(test)
    def run(self):
        for _ in range(10):
            try:
                return test(self)
            except LostByEmulator:
                for path in self.left():
                    shutil.rmtree(path) if path.is_dir() else path.unlink()
        self.fail("no run was left to the program")

    return run


class ProgramTest(unittest.TestCase):
    """Each test gets an empty directory, which is also where temporary files go."""

    maxDiff = None

    def setUp(self):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="mcbin-test-"))
        self.addCleanup(shutil.rmtree, self.directory)
        self.temporary = self.directory / "tmp"
        self.temporary.mkdir()
        self.environment = dict(os.environ, TMPDIR=str(self.temporary))

    def file(self, name, content):
        path = self.directory / name
        path.write_bytes(content.encode() if isinstance(content, str) else content)
        return path

    def run_program(self, *arguments, stdin=b"", cwd=None):
        result = subprocess.run(
            [MCBIN, *map(str, arguments)],
            input=stdin.encode() if isinstance(stdin, str) else stdin,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            cwd=cwd or self.directory,
            env=self.environment,
            timeout=TIMEOUT,
            check=False,
        )
        result.stdout = result.stdout.decode()
        result.stderr = result.stderr.decode()
        self.assertEqual(self.left(), [], "temporary files were left behind")
        return result

    def start(self, *arguments, **options):
        """A run under way. What runs Windows programs does so already, lest it take the longest."""
        if ON_WINDOWS:
            self.succeed("--version")
        return subprocess.Popen([MCBIN, *map(str, arguments)], cwd=self.directory,
                                env=self.environment, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, **options)

    def signal(self, process, number):
        """What the run writes once it has got the signal, and its exit code."""
        process.send_signal(number)
        process.wait(timeout=60)
        stdout, stderr = process.communicate()
        if ON_WINDOWS and (stdout, stderr, process.returncode) == (b"", b"", 0):
            raise LostByEmulator
        return stdout, stderr, process.returncode

    def left(self):
        """Temporary files, but for those that what runs a Windows program has itself."""
        return [path for path in self.temporary.iterdir() if not path.name.startswith("wine-")]

    def succeed(self, *arguments, **options):
        result = self.run_program(*arguments, **options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result

    def fail_with(self, code, message, *arguments, **options):
        """The program ends with this code, prints nothing and says exactly this message."""
        result = self.run_program(*arguments, **options)
        self.assertEqual(result.stdout, "")
        errors = [line for line in result.stderr.splitlines() if line.startswith("mcbin: ")]
        self.assertEqual(errors, ["mcbin: " + message], result.stderr)
        self.assertEqual(result.returncode, code)
        return result

    def fit(self, *arguments, **options):
        """The model that fit prints with --json."""
        return json.loads(self.succeed("fit", *arguments, "--json", **options).stdout)


def attribute(model, name):
    return next(a for a in model["attributes"] if a["name"] == name)
