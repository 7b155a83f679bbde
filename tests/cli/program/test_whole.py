"""Nothing less than the whole result ends with exit code 0."""

import json
import os
import resource
import shutil
import signal
import subprocess
import tempfile
import unittest

from program import LOANS, MCBIN, ON_WINDOWS, ROOT, ProgramTest, attribute
from schema import violations

SCHEMA = json.loads((ROOT / "docs" / "model.schema.json").read_text())
FIT = ["fit", str(LOANS), "--target", "default"]


@unittest.skipIf(ON_WINDOWS, "it knows no limits of a process's files")
class TemporaryFiles(ProgramTest):
    def fit_with_files_up_to(self, size, *arguments):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

        result = subprocess.run(
            [MCBIN, *(arguments or FIT), "-o", self.directory / "m.json"], env=self.environment, check=False,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, preexec_fn=limit)
        self.assertEqual(self.left(), [])
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
                    "not whole: File too large; TMPDIR names another directory\n"), result.stderr)
                self.assertFalse((self.directory / "m.json").exists())
        self.assertEqual(self.fit_with_files_up_to(32_000).returncode, 0)

    def test_columns_of_many_cases_that_do_not_fit_end_the_fit(self):
        self.file("d.csv", "a\n" + "1\n2\n" * 10_000)
        result = self.fit_with_files_up_to(80_000, "fit", self.directory / "d.csv", "-e")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.endswith(
            f"mcbin: cannot write temporary files in {self.temporary}: File too large; TMPDIR "
            "names another directory\n"), result.stderr)
        self.assertFalse((self.directory / "m.json").exists())

    def test_a_limit_of_open_files_is_called_by_its_name(self):
        arguments = {"fit": FIT, "equal frequency": ["fit", str(LOANS), "-e"],
                     "apply": ["apply", "m.json", str(LOANS), "-o", "out"]}
        self.succeed(*FIT, "-o", "m.json")
        for name, command in arguments.items():
            for limit in range(4, 16):  # with 3 the program cannot be loaded
                result = subprocess.run(
                    [MCBIN, *command], env=self.environment, cwd=self.directory,
                    capture_output=True, text=True, check=False,
                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (limit, limit)))
                if result.returncode == 0:
                    break
                self.assertEqual(result.returncode, 1, (name, limit, result.stderr))
                self.assertIn("Too many open files", result.stderr.splitlines()[-1], (name, limit))
                self.assertEqual(self.left(), [])
            self.assertEqual(result.returncode, 0, name)
            self.assertGreater(limit, 5, name)


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


class OddBins(ProgramTest):
    """What the library's rules leave odd at the ends of the scale is said."""

    INFINITE = "a,t\n" + "1,x\n" * 3 + "2,y\n" * 3 + "inf,y\n" * 2

    def test_no_number_but_stated_infinities_is_written(self):
        self.file("d.csv", "a\n-inf\n-inf\ninf\ninf\n")
        model = self.fit("d.csv", "-e", "--bins", "2")
        self.assertEqual(violations(model, SCHEMA), [])
        self.assertEqual(attribute(model, "a")["bins"], [{"weight": 4, "classWeights": []}])
        self.assertEqual(
            attribute(model, "a")["status"],
            {"code": 0, "severity": "warning",
             "reason": "not cut: the middle of two values is no number or too large for one"})

    def test_weight_in_no_bin_is_said(self):
        """An infinite value lies beyond the last pre-bin."""
        self.file("d.csv", self.INFINITE)
        arguments = ["d.csv", "-t", "t", "--threshold", "2", "--bins", "2"]
        model = self.fit(*arguments)
        self.assertEqual(violations(model, SCHEMA), [])
        a = attribute(model, "a")
        unbinned = a["unbinnedCases"]
        self.assertEqual((unbinned["weight"], unbinned["classWeights"]), (2, [0, 2]))
        self.assertEqual(a["totalWeight"], 2 + sum(b["weight"] for b in a["bins"]))
        self.assertIn("; weight 2 lies in no bin", a["status"]["reason"])
        self.file("m.json", json.dumps(model))
        for text in (self.succeed("fit", *arguments).stdout, self.succeed("show", "m.json").stdout):
            self.assertIn("weight 2 lies in no bin", text)
            self.assertRegex(text, r"\n +in no bin +2 +25.0% +0 +0.0% +2 +100.0% +-1.0986 +0.4394\n")
        self.assertIn("<span>in no bin</span>", self.succeed("report", "m.json").stdout)
        self.assertIn("\na,in no bin,,,,2,0,2,1,-1.0986",
                      self.succeed("export", "m.json", "--to", "csv").stdout)

    def test_it_is_not_hidden_where_nothing_is_cut(self):
        self.file("d.csv", "a,t\n" + "1,x\n1,y\n2,x\n2,y\n" * 3 + "inf,x\ninf,y\n")
        status = attribute(self.fit("d.csv", "-t", "t", "--threshold", "2", "--bins", "2"), "a")["status"]
        self.assertEqual(status["code"], 120017)
        self.assertEqual(status["reason"],
                         "not cut: no cut tells the target's categories apart well enough; weight 2 "
                         "lies in no bin")

    def test_cases_counted_in_another_bin_than_their_own_are_said(self):
        """0.1 + 0.2 is next to 0.3: the middle of both is the greater, which then is a cut."""
        self.file("d.csv", "a\n0.1\n0.3\n0.30000000000000004\n0.7\n")
        arguments = ["d.csv", "-e", "--bins", "2"]
        model = self.fit(*arguments)
        self.assertEqual(violations(model, SCHEMA), [])
        a = attribute(model, "a")
        self.assertEqual([b["weight"] for b in a["bins"]], [2, 2])
        self.assertEqual(a["miscountedWeight"], 1)
        self.file("m.json", json.dumps(model))
        applied = self.succeed("apply", "m.json", "d.csv").stdout.split()
        self.assertEqual([row[-1] for row in applied[1:]], ["0", "0", "0", "1"])
        said = "weight 1 is counted in another bin than it lies in: a cut fell on a value"
        self.assertEqual(a["status"]["reason"], said)
        for command in (["fit", *arguments], ["show", "m.json"], ["report", "m.json"]):
            self.assertIn(said, self.succeed(*command).stdout)

    def test_fewer_bins_than_asked_for_are_said(self):
        self.file("d.csv", "a\n" + "1\n" * 9 + "2\n" * 9 + "3\n")
        self.assertIn("3 bins in place of 5: the values are too few or too unevenly spread",
                      self.succeed("fit", "d.csv", "-e", "--bins", "5").stdout)


@unittest.skipIf(ON_WINDOWS, "the processor time would be that of what runs the program")
class Wide(ProgramTest):
    def setUp(self):
        super().setUp()
        # Thousands of files: on a disk their making takes ten times the time of the rest.
        if os.access("/dev/shm", os.W_OK):
            self.environment["TMPDIR"] = tempfile.mkdtemp(prefix="mcbin-test-", dir="/dev/shm")
            self.addCleanup(shutil.rmtree, self.environment["TMPDIR"])

    def seconds(self, columns):
        """Processor time of the program itself in a fit."""
        self.file("d.csv", ",".join(f"column_number_{i}" for i in range(columns)) + ",t\n"
                  + "".join(f"{'1,' * columns}{t}\n" for t in "xyxy"))
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        self.succeed("fit", "d.csv", "-t", "t", "-o", "m.json")
        return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before

    def test_time_grows_with_the_columns_not_with_their_square(self):
        """For four times the columns; where names are searched for it takes ten times the time."""
        self.assertLess(self.seconds(10_000), 8 * min(self.seconds(2_500) for _ in range(3)))


class Notes(ProgramTest):
    def test_declared_values_that_are_not_there_are_said(self):
        self.file("d.csv", "a,b,w,t\n1,1,1,x\n9,1,1,\n3,-5,2,y\n4,2,8,q\n")
        result = self.succeed(
            "fit", "d.csv", "-t", "t", "-w", "w", "--missing", "a=9,99", "--missing-range",
            "a=50:60", "--missing-range", "b=-9:0", "--missing", "w=8,88", "--missing", "t=q,r")
        self.assertEqual([line for line in result.stderr.splitlines() if line.startswith("note")], [
            "note: column a: no case has the declared missing value 99",
            "note: column a: no case lies in the declared missing range 50 to 60",
            "note: column w: no case has the declared missing value 88",
            "note: column t: no case has the declared missing value r"])


if __name__ == "__main__":
    unittest.main()
