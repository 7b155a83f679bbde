"""The examples of the guide: every console block prints what stands there."""

import os
import re
import subprocess
import unittest

from program import MCBIN, ROOT, TIMEOUT, ProgramTest

GUIDE = ROOT / "docs" / "mcbin.md"


def examples(text):
    """Pairs of command and output, in order."""
    for block in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        for example in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            command, _, output = example.partition("\n")
            while command.endswith("\\"):
                more, _, output = output.partition("\n")
                command = command[:-1] + more
            yield command, output


class Guide(ProgramTest):
    def test_every_example_prints_what_the_guide_says(self):
        (self.directory / "bin").mkdir()
        (self.directory / "bin" / "mcbin").symlink_to(MCBIN)
        (self.directory / "examples").symlink_to(ROOT / "examples")
        self.environment["PATH"] = f"{self.directory / 'bin'}:{os.environ['PATH']}"
        found = list(examples(GUIDE.read_text(encoding="utf-8")))
        self.assertTrue(found)
        for command, output in found:
            with self.subTest(command):
                result = subprocess.run(
                    ["bash", "-o", "pipefail", "-c", command], cwd=self.directory,
                    env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                    check=False, timeout=TIMEOUT, text=True)
                self.assertEqual((result.stdout, result.returncode), (output, 0), result.stderr)


if __name__ == "__main__":
    unittest.main()
