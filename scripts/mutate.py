#!/usr/bin/python3
"""Measures what the library's tests notice: changes the library in one small place, runs the tests,
and counts the changes that some test fails on.

    scripts/mutate.py --sample 600 --seed 1           as many mutants, drawn with a seed
    scripts/mutate.py supervised/split_scan           those whose names contain one of the words
    scripts/mutate.py --sample 600 --seed 1 src/data  a part of the sample
    scripts/mutate.py --list                          prints them only

scripts/mutation/points.py says what mutants there are and how they are named. All of them are built
into one copy of the library, in build/mutation, and switched on by an environment variable, but for
those that the compiler wants as constants, which are built one by one. Each gets the tests that
reach it, the quick ones first; what noticed it in an earlier call comes before those.

tests/mutation/explained.txt says why no test notices a mutant, and which are not drawn at all. Ends
with status 1 when less than 97 % are noticed or a survivor is not in that list, with status 2 when
the tests fail without any change.
"""
from __future__ import annotations

import argparse
import fnmatch
import random
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / 'scripts/mutation'))
try:
    from points import Mutant, Point, SourceReader, number_mutants
except ImportError:
    sys.exit('mutate: needs the Debian package python3-clang; scripts/setup.sh installs it')
from judge import Judge  # noqa: E402
from switched_copy import SwitchedCopy  # noqa: E402

WORK = ROOT / 'build/mutation'
NOTICED_BY = WORK / 'noticed_by.txt'
EXPLAINED = ROOT / 'tests/mutation/explained.txt'
WANTED_PERCENTAGE = 97.0


def read_points() -> tuple[list[Point], dict[str, bytes]]:
    reader = SourceReader(ROOT)
    folders = ['include', 'src', 'host/mccomvor/include', 'host/vorlwcom/include']
    arguments = ['-std=c++20', *(f'-I{ROOT / folder}' for folder in folders)]
    for source in sorted((ROOT / 'src').rglob('*.cpp')):
        if 'windows' not in source.parts:
            reader.read(source, arguments)
    return reader.points, reader.texts


class Trial:
    """Judges mutants, and remembers over calls what noticed them."""

    def __init__(self, copy: SwitchedCopy, judge: Judge) -> None:
        self.copy = copy
        self.judge = judge
        lines = NOTICED_BY.read_text().splitlines() if NOTICED_BY.exists() else []
        self.noticed_by = dict(line.split('\t') for line in lines)

    def run(self, mutants: list[Mutant], n_jobs: int) -> list[Mutant]:
        """Those that survived. Mutants without a switch share one build, and go one by one."""
        survivors = []
        switched = [mutant for mutant in mutants if self.copy.is_switched(mutant)]
        with ThreadPoolExecutor(n_jobs) as pool:
            survivors += [mutant for mutant, failure in
                          zip(switched, pool.map(self._judge_switched, switched)) if not failure]
        survivors += [mutant for mutant in mutants
                      if not self.copy.is_switched(mutant) and not self._judge_alone(mutant)]
        return survivors

    def _judge_switched(self, mutant: Mutant) -> str:
        return self._judge(mutant, mutant.number)

    def _judge_alone(self, mutant: Mutant) -> str:
        try:
            if self.copy.put_in(mutant):
                return self._note(mutant, 'the compiler', 0.0)
            return self._judge(mutant, 0)
        finally:
            self.copy.take_out(mutant)

    def _judge(self, mutant: Mutant, number: int) -> str:
        start = time.monotonic()
        earlier = self.noticed_by.get(mutant.name, '')
        return self._note(mutant, self.judge.first_failure(mutant, number, earlier),
                          time.monotonic() - start)

    def _note(self, mutant: Mutant, failure: str, seconds: float) -> str:
        verdict = 'noticed ' if failure else 'survived'
        print(f'{verdict}  {mutant.name}  {failure}  ({seconds:.1f} s)\n', end='', flush=True)
        if failure and self.noticed_by.get(mutant.name) != failure:
            self.noticed_by[mutant.name] = failure
            with NOTICED_BY.open('a') as file:
                file.write(f'{mutant.name}\t{failure}\n')
        return failure


def explanations() -> dict[str, str]:
    """Of single mutants by their names, and of classes that are not drawn by names with a *."""
    lines = EXPLAINED.read_text().splitlines() if EXPLAINED.exists() else []
    return dict(line.split(': ', 1) for line in lines if line and not line.startswith('#'))


def choose(mutants: list[Mutant], options: argparse.Namespace) -> list[Mutant]:
    left_out = [name for name in explanations() if '*' in name]
    chosen = [mutant for mutant in mutants
              if not any(fnmatch.fnmatchcase(mutant.name, name) for name in left_out)]
    print(f'mutate: {len(mutants)} mutants, {len(mutants) - len(chosen)} of them not drawn')
    if options.sample and options.sample < len(chosen):
        chosen = random.Random(options.seed).sample(chosen, options.sample)
    return [mutant for mutant in chosen
            if not options.words or any(word in mutant.name for word in options.words)]


def report(chosen: list[Mutant], survivors: list[Mutant]) -> int:
    reasons = explanations()
    print(f'\nmutate: {len(survivors)} survivors')
    for mutant in survivors:
        print(f'  {mutant.name}: {reasons.get(mutant.name, "NOT EXPLAINED")}')
    noticed = len(chosen) - len(survivors)
    percentage = 100.0 * noticed / len(chosen) if chosen else 100.0
    print(f'mutate: {noticed} of {len(chosen)} mutants noticed ({percentage:.1f} %)')
    is_explained = all(mutant.name in reasons for mutant in survivors)
    return 0 if is_explained and percentage >= WANTED_PERCENTAGE else 1


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('words', nargs='*', help='parts of the names of the mutants to judge')
    parser.add_argument('--sample', type=int, help='judge only so many, drawn at random')
    parser.add_argument('--seed', type=int, default=1, help='of the drawing (1)')
    parser.add_argument('--jobs', type=int, default=2, help='test programs at the same time (2)')
    parser.add_argument('--list', action='store_true', help='print the mutants, judge none')
    options = parser.parse_args()

    points, texts = read_points()
    mutants = number_mutants(points)
    chosen = choose(mutants, options)
    if options.list:
        for mutant in chosen:
            print(f'{mutant.name}  (line {mutant.line}: {mutant.before} -> {mutant.after})')
        return 0
    copy = SwitchedCopy(ROOT, WORK, points, texts)
    copy.make()
    alone = sum(not copy.is_switched(mutant) for mutant in chosen)
    print(f'mutate: {len(chosen)} to judge, {alone} of them built one by one', flush=True)
    judge = Judge(WORK / 'build', len(mutants))
    if judge.failing:
        print('mutate: fails without a change:', *judge.failing, sep='\n  ')
        return 2
    return report(chosen, Trial(copy, judge).run(chosen, options.jobs))


if __name__ == '__main__':
    sys.exit(main())
