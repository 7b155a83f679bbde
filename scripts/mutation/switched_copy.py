"""A copy of the library and its tests with every mutant in it, and its build."""
from __future__ import annotations

import re
import shutil
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

from points import Mutant, Point, apply_edits, switchable

COPIED = ['CMakeLists.txt', 'cmake', 'include', 'host', 'src', 'tests']
TARGETS = ['library_tests', 'plain_model_tests', 'property_tests']


class SwitchedCopy:
    """`work`/tree and `work`/build hold what `root` has, with the mutants of the points."""

    def __init__(self, root: Path, work: Path, points: list[Point],
                 texts: dict[str, bytes]) -> None:
        self.root = root
        self.tree = work / 'tree'
        self.build_folder = work / 'build'
        self.texts = texts
        self.points: dict[str, list[Point]] = defaultdict(list)
        for point in points:
            self.points[point.mutants[0].file].append(point)

    def make(self) -> None:
        self._bring_up_to_date()
        switch = Path(__file__).parent / 'switch.h'
        subprocess.run(
            ['cmake', '-S', self.tree, '-B', self.build_folder, '-G', 'Ninja',
             '-DCMAKE_BUILD_TYPE=',
             f'-DCMAKE_CXX_FLAGS=-O1 -w -Wno-narrowing -D_GLIBCXX_ASSERTIONS -include {switch}',
             '-DMCBINNING_BUILD_CLI=OFF', '-DMCBINNING_BUILD_EXAMPLES=OFF',
             '-DMCBINNING_TEST_CONSUMERS=OFF', '-DMCBINNING_INSTALL=OFF',
             '-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST'],
            check=True, stdout=subprocess.DEVNULL)
        message = self._build()
        while message:
            if not self._give_up_switches(message):
                sys.exit(message)
            message = self._build()

    def is_switched(self, mutant: Mutant) -> bool:
        return any(mutant in point.mutants and point.switch for point in self.points[mutant.file])

    def put_in(self, mutant: Mutant) -> str:
        """Builds the mutant alone; an empty text, or the compiler's message."""
        write(self.tree / mutant.file, apply_edits(self.texts[mutant.file], [mutant.direct]))
        return self._build()

    def take_out(self, mutant: Mutant) -> None:
        write(self.tree / mutant.file, self._text_of(mutant.file))

    def _bring_up_to_date(self) -> None:
        """Files that stay the same are not touched, nor built again."""
        wanted = set()
        for name in COPIED:
            top = self.root / name
            for source in [top] if top.is_file() else sorted(top.rglob('*')):
                relative = source.relative_to(self.root).as_posix()
                if source.is_file():
                    wanted.add(self.tree / relative)
                    write(self.tree / relative, self._text_of(relative) if relative in self.texts
                          else source.read_bytes())
                    shutil.copymode(source, self.tree / relative)
        for copy in self.tree.rglob('*'):
            if copy.is_file() and copy not in wanted:
                copy.unlink()

    def _text_of(self, file: str) -> bytes:
        return switchable(self.texts[file], self.points[file])

    def _give_up_switches(self, message: str) -> int:
        """Takes the switches out of the lines that the compiler names; how many there were."""
        given_up = 0
        for file, line in set(re.findall(r'(src/[\w/.]+):(\d+)', message)):
            for point in self.points.get(file, []):
                if point.switch and point.mutants[0].line == int(line):
                    point.switch = []
                    given_up += 1
            if file in self.points:
                write(self.tree / file, self._text_of(file))
        return given_up

    def _build(self) -> str:
        done = subprocess.run(
            ['cmake', '--build', self.build_folder, '--target', *TARGETS, '--', '-k', '0'],
            text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.stdout if done.returncode != 0 else ''


def write(path: Path, content: bytes) -> None:
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
