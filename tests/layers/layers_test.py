"""An include that points up is found, whichever folder it stands in."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CHECKED = ["cli", "examples", "host", "include", "python/ext", "src", "toolkit"]

# A folder or file, and what it must not include: the layers next above it first.
POINTING_UP = {
    "host": ["mcbinning/status.h", "status/status_codes.h"],
    "include/mcbinning/status.h": ["mcbinning/variables.h", "status/status_codes.h"],
    "include/mcbinning/variables.h": ["mcbinning/settings.h", "model/held_user_missing.h"],
    "include/mcbinning/settings.h": ["mcbinning/rounds.h", "api/version_banner.h"],
    "src/numerics": ["platform/process.h", "status/status_codes.h", "mcbinning/status.h"],
    "src/platform": ["status/status_codes.h", "numerics/log2.h", "mcbinning/status.h"],
    "src/status": ["model/held_user_missing.h", "mcbinning/variables.h"],
    "src/model": ["api/version_banner.h", "data/row_key.h", "mcbinning/settings.h"],
    "src/api": ["data/row_key.h", "supervised/bins.h", "mcbinning/rounds.h"],
    "src/data": ["api/version_banner.h", "supervised/bins.h", "mcbinning/settings.h"],
    "src/supervised": ["ef/ef_bin_algorithm.h", "rounds/answer.h", "mcbinning/rounds.h"],
    "src/ef": ["rounds/answer.h", "toolkit/errors.h"],
    "src/rounds": ["ef/ef_bin_algorithm.h", "toolkit/errors.h", "support/table_run.h"],
    "toolkit/errors.h": ["toolkit/text/number_text.h", "mcbinning/mcbinning.h"],
    "toolkit/text": ["toolkit/system/files.h", "status/status_codes.h"],
    "toolkit/system": ["toolkit/input/cells.h"],
    "toolkit/input": ["toolkit/columns/column.h"],
    "toolkit/columns": ["toolkit/model/model.h"],
    "toolkit/model": ["toolkit/tables/table.h"],
    "toolkit/tables": ["toolkit/fit/fit_model.h"],
    "toolkit/fit": ["toolkit/rounds/round_engine.h", "supervised/bins.h"],
    "toolkit/rounds": ["toolkit/apply/column_binner.h", "rounds/answer.h"],
    "toolkit/apply": ["toolkit/export/formats.h"],
    "toolkit/export": ["toolkit/report/report.h"],
    "toolkit/report": ["toolkit/score/score_model.h"],
    "toolkit/score": ["cli/text/help_format.h", "python/ext/bind.h"],
    "cli/system": ["cli/text/help_format.h", "cli/commands/fit.h"],
    "cli/text": ["cli/commands/fit.h", "model/held_user_missing.h"],
    "cli/commands": ["api/version_banner.h", "python/ext/bind.h"],
    "python/ext": ["cli/text/help_format.h", "mcbinning/mcbinning.h"],
    "examples": ["toolkit/errors.h", "status/status_codes.h"],
}


class Layers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.tree = Path(scratch.name)
        for folder in [*CHECKED, "scripts"]:
            shutil.copytree(ROOT / folder, cls.tree / folder)

    def check(self):
        return subprocess.run([self.tree / "scripts/check_layers.sh"], text=True,
                              capture_output=True, check=False)

    def test_the_tree_as_it_is_passes(self):
        self.assertEqual(self.check().returncode, 0)

    def test_every_folder_is_in_the_table(self):
        for top in ("src", "toolkit", "cli"):
            for folder in filter(Path.is_dir, (ROOT / top).iterdir()):
                self.assertIn(f"{top}/{folder.name}", POINTING_UP)

    def test_one_include_that_points_up_fails(self):
        self.plant("src/status", ["model/held_user_missing.h"])
        self.assertEqual(self.check().returncode, 1)

    def test_every_include_that_points_up_is_found(self):
        planted = [line for place, headers in POINTING_UP.items()
                   for line in self.plant(place, [*headers, "../above.h"])]
        found = self.check().stderr.splitlines()
        self.assertEqual([line for line in planted if line not in found], [])

    def test_operating_system_code_belongs_into_its_folders(self):
        lines = ["#ifdef _WIN32", "# if defined(__linux__)", "#elif __MINGW32__",
                 "#include <windows.h>", "#include <unistd.h>", "#include <sys/stat.h>"]
        planted = [line for place in ("include", "src/data", "src/status", "toolkit/fit", "cli/text")
                   for line in self.plant_lines(place, lines)]
        self.plant_lines("src/platform/windows", lines)
        self.plant_lines("toolkit/system/posix", lines[3:])
        found = self.check().stderr.splitlines()[1:]
        self.assertEqual(sorted(found), sorted(planted))

    def plant(self, place, headers):
        return self.plant_lines(place, [f'#include "{header}"' for header in headers])

    def plant_lines(self, place, lines):
        """Puts lines first into a file, for the time of a test; what is to be found."""
        path = self.tree / place
        path = path / "planted.h" if path.is_dir() else path
        before = path.read_text() if path.exists() else ""
        path.write_text("\n".join([*lines, before]))
        self.addCleanup(path.write_text, before)
        return [f"{path.relative_to(self.tree)}:{number}:{line}"
                for number, line in enumerate(lines, 1)]


if __name__ == "__main__":
    unittest.main()
