"""Runs the tests over one mutant after the other, those first that are quick and reach it."""
from __future__ import annotations

import hashlib
import itertools
import os
import pickle
import re
import resource
import signal
import subprocess
import tempfile
import threading
from collections import defaultdict
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from pathlib import Path

from points import Mutant

MOST_MEMORY = 8 << 30  # a change can make a loop endless
SLOW = 1.0  # seconds; such a test goes with few random runs first
FEW_RUNS = '50'
NOTING = 5.0  # seconds
FIRST_BATCH = 0.25  # seconds of tests in one process; later ones are four times as long


@dataclass
class Outcome:
    """`failed` is the first test that failed, empty when all passed."""

    failed: str
    seconds: float
    output: str


def run_tests(program: Path, tests: Iterable[str], limit: float,
              variables: dict[str, str]) -> Outcome:
    """Stops at the first failure, or when `limit` seconds of processor time are used up."""
    def limit_process() -> None:
        resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_CPU, (int(limit) + 1, int(limit) + 1))

    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch, \
            tempfile.TemporaryFile('w+') as output:
        os.chmod(scratch, 0o1777)  # some tests give up the rights of root
        process = subprocess.Popen(
            [program, '--gtest_fail_fast', '--gtest_filter=' + ':'.join(tests)],
            stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, cwd=scratch,
            env=dict(os.environ, TMPDIR=scratch, **variables), start_new_session=True,
            preexec_fn=limit_process)
        # The machine may be busy with other things, and the mutant may wait for ever.
        timer = threading.Timer(6 * limit + 10, os.killpg, (process.pid, signal.SIGKILL))
        timer.start()
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        timer.cancel()
        output.seek(0)
        text = output.read()
    failed = re.findall(r'^\[  FAILED  \] ([^ ,]+)', text, re.M)
    started = re.findall(r'^\[ RUN      \] (\S+)', text, re.M)
    first = failed[0] if failed else started[-1] if started else '*'
    return Outcome(first if process.returncode != 0 else '', used.ru_utime + used.ru_stime, text)


@dataclass
class Test:
    program: Path
    name: str
    seconds: float
    reached: bytes  # a byte for every mutant
    runs: str = ''  # of a random test, when not those that it has by itself


class Judge:
    """Knows the tests, how long they take and what they reach."""

    def __init__(self, folder: Path, n_mutants: int) -> None:
        self.tests: list[Test] = []
        self.failing: list[str] = []  # without any change
        library = ''.join(digest(path) for path in sorted((folder / 'src').glob('*.so*')))
        measured = folder / 'measured.pickle'
        known = pickle.loads(measured.read_bytes()) if measured.exists() else {}
        programs: dict[tuple[Path, str, str], list[Test]] = {}
        with tempfile.NamedTemporaryFile() as reached:
            os.chmod(reached.name, 0o666)
            for program in sorted((folder / 'tests').rglob('*_tests')):
                key = program, digest(program), library
                programs[key] = known.get(key) or [
                    test for name in names_of_tests(program)
                    for test in self._measure(program, name, Path(reached.name), n_mutants + 1)]
                if not self.failing:
                    measured.write_bytes(pickle.dumps(known | programs))
        self.tests = sorted(itertools.chain.from_iterable(programs.values()),
                            key=lambda test: test.seconds)

    def _measure(self, program: Path, name: str, reached: Path, size: int) -> Iterator[Test]:
        for runs in ('', FEW_RUNS):
            variables = {'MCB_RUNS': runs} if runs else {}
            outcome = run_tests(program, [name], 600, variables)
            if outcome.failed:
                self.failing.append(f'{program.name} {name}')
            # Taking notes is slow; in so many seconds a test reaches what it reaches.
            reached.write_bytes(bytes(size))
            run_tests(program, [name], NOTING, dict(variables, MCB_MUTANTS_REACHED=str(reached)))
            yield Test(program, name, outcome.seconds, reached.read_bytes(), runs)
            if outcome.seconds < SLOW or 'MCB_RUNS=' not in outcome.output:
                return

    def first_failure(self, mutant: Mutant, number: int, earlier: str) -> str:
        """The program and the test that notice it; empty if none does. `earlier` did so before."""
        for batch in self._batches(mutant, number, earlier):
            limit = 5 * sum(test.seconds for test in batch) + 1
            variables = {'MCB_MUTANT': str(number)}
            if batch[0].runs:
                variables['MCB_RUNS'] = batch[0].runs
            outcome = run_tests(batch[0].program, [test.name for test in batch], limit, variables)
            if outcome.failed:
                return f'{batch[0].program.name} {outcome.failed}'
        return ''

    def _batches(self, mutant: Mutant, number: int, earlier: str) -> Iterator[list[Test]]:
        """The tests of one process each: the one of last time, then the quick ones, those of the
        source's folder before others."""
        chosen = [test for test in self.tests if self._reaches(test, mutant, number)]
        yield from ([test] for test in chosen
                    if f'{test.program.name} {test.name}' == earlier)
        longest, position = FIRST_BATCH, 0
        while position < len(chosen):
            together: dict[tuple[bool, Path, str], list[Test]] = defaultdict(list)
            seconds = 0.0
            while position < len(chosen) and (seconds == 0.0 or seconds < longest):
                test = chosen[position]
                is_far = test.program.parent.name != Path(mutant.file).parts[1]
                together[is_far, test.program, test.runs].append(test)
                seconds += test.seconds
                position += 1
            yield from (together[key] for key in sorted(together))
            longest *= 4

    def _reaches(self, test: Test, mutant: Mutant, number: int) -> bool:
        """Of a mutant without a switch nothing is known."""
        return number == 0 or test.reached[number] != 0


def digest(path: Path) -> str:
    return hashlib.sha256(path.read_bytes()).hexdigest()


def names_of_tests(program: Path) -> list[str]:
    listed = subprocess.run([program, '--gtest_list_tests'], check=True, text=True,
                            stdout=subprocess.PIPE).stdout
    names, suite = [], ''
    for line in listed.splitlines():
        if re.match(r'\S+\.(\s|$)', line):
            suite = line.split()[0]
        elif line.startswith('  '):
            names.append(suite + line.split()[0])
    return [name for name in names if 'DISABLED_' not in name]
