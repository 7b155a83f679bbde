"""Nothing less than the whole result ends with exit code 0."""

import json
import resource
import signal
import subprocess
import unittest

from program import LOANS, MCBIN, ProgramTest

FIT = ["fit", str(LOANS), "--target", "default"]


class TemporaryFiles(ProgramTest):
    def fit_with_files_up_to(self, size):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

        result = subprocess.run(
            [MCBIN, *FIT, "-o", self.directory / "m.json"], env=self.environment, check=False,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, preexec_fn=limit)
        self.assertEqual(list(self.temporary.iterdir()), [])
        return result

    def test_columns_that_do_not_fit_end_the_fit(self):
        """4,000 cases make files of 32,000 bytes."""
        for size in (0, 8, 31_999):
            with self.subTest(size):
                result = self.fit_with_files_up_to(size)
                self.assertEqual(result.returncode, 1)
                self.assertEqual(result.stdout, "")
                self.assertTrue(result.stderr.endswith(
                    f"mcbin: cannot bin column age: the temporary files in {self.temporary} are "
                    "not whole: is the disk full? TMPDIR names another directory\n"), result.stderr)
                self.assertFalse((self.directory / "m.json").exists())
        self.assertEqual(self.fit_with_files_up_to(32_000).returncode, 0)


class Models(ProgramTest):
    def test_a_model_without_bins_is_refused(self):
        model = self.fit(*FIT[1:])
        model["attributes"][2]["status"] = {
            "code": 3, "severity": "error", "reason": "not cut: status 3 of the binning library"}
        self.file("m.json", json.dumps(model))
        for arguments in (["show", "m.json"], ["apply", "m.json", LOANS],
                          ["export", "m.json", "--to", "csv"], ["report", "m.json"]):
            self.fail_with(1, 'm.json: attributes[2].status.severity is "error": no bins were '
                           "found; fit it again", *arguments)


if __name__ == "__main__":
    unittest.main()
