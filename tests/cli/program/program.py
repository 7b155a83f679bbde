"""What the tests of the built program share."""

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
        # What runs a Windows program may have a temporary file of its own.
        left = [path for path in self.temporary.iterdir() if not path.name.startswith("wine-")]
        self.assertEqual(left, [], "temporary files were left behind")
        return result

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
