#!/usr/bin/env python3
"""Measures what the library's tests notice: makes one small change to a copy of the library, builds
and runs the tests, and counts the changes that some test fails on.

    scripts/mutate.py                      all changes of tests/mutation/mutants.txt
    scripts/mutate.py split_scan ef/       those of the files whose path contains one of the words
    scripts/mutate.py src/model/encoders.cpp:3    the third one of a file
    scripts/mutate.py --list               prints them only

The copy and its build are in build/mutation, your own tree is never changed. The first build takes
minutes, a change about ten seconds; with CMAKE_CXX_COMPILER_LAUNCHER=ccache in the environment a
second run is faster. Ends with status 1 when fewer than 95 % are noticed or a change does not
compile or no longer fits its file, with status 2 when the tests fail without any change.

A file's changes follow its name in brackets. A change is the old text, which must stand exactly
once in the file, and the new one, whole lines or a part of one, under a line that says what it is;
without a new text the old one is dropped. One that no test can notice says why and is not counted:

    [src/status/status.cpp]
    = an error is taken for a warning
    - IsError() const noexcept { return severity_ < 0; }
    + IsError() const noexcept { return severity_ <= 0; }
    = a change of no consequence
    ~ why nobody can notice it
    - old
    + new
"""
import argparse
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LIST = ROOT / 'tests/mutation/mutants.txt'
TREE = ROOT / 'build/mutation/tree'
BUILD = ROOT / 'build/mutation/build'
COPIED = ['CMakeLists.txt', 'cmake', 'include', 'host', 'src', 'tests']
TARGETS = ['library_tests', 'plain_model_tests']
WANTED_PERCENTAGE = 95.0
MOST_MEMORY = 8 << 30  # a change can make a loop endless


@dataclass
class Mutant:
    file: str
    number: int
    note: str
    reason: str = ''  # why no test can notice it
    old: list = field(default_factory=list)
    new: list = field(default_factory=list)

    @property
    def name(self):
        return f'{self.file}:{self.number}'

    def apply(self, text):
        """The changed text; None when the old one does not stand exactly once in it."""
        old = '\n'.join(self.old)
        return text.replace(old, '\n'.join(self.new)) if text.count(old) == 1 else None


def read_list():
    mutants = []
    file, number = '', 0
    for line in LIST.read_text().splitlines():
        kind, text = line[:1], line[2:]
        if kind == '[':
            file, number = line.strip('[]'), 0
        elif kind == '=':
            number += 1
            mutants.append(Mutant(file, number, text))
        elif kind == '~':
            mutants[-1].reason = text
        elif kind == '-':
            mutants[-1].old.append(text)
        elif kind == '+':
            mutants[-1].new.append(text)
        elif kind not in ('', '#'):
            sys.exit(f'mutate: not understood: {line}')
    return mutants


def copy_tree():
    """Brings the copy up to date; files that stay the same are not touched, nor built again."""
    wanted = set()
    for name in COPIED:
        top = ROOT / name
        files = [top] if top.is_file() else [path for path in top.rglob('*') if path.is_file()]
        for source in files:
            copy = TREE / source.relative_to(ROOT)
            wanted.add(copy)
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, copy)
                shutil.copymode(source, copy)
    for copy in [path for path in TREE.rglob('*') if path.is_file() and path not in wanted]:
        copy.unlink()


def configure():
    subprocess.run(
        ['cmake', '-S', TREE, '-B', BUILD, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=',
         '-DCMAKE_CXX_FLAGS=-O1 -w -D_GLIBCXX_ASSERTIONS', '-DMCBINNING_BUILD_CLI=OFF',
         '-DMCBINNING_BUILD_EXAMPLES=OFF', '-DMCBINNING_TEST_CONSUMERS=OFF',
         '-DMCBINNING_INSTALL=OFF', '-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST'],
        check=True, stdout=subprocess.DEVNULL)


def build(targets):
    """An empty text, or the compiler's message."""
    done = subprocess.run(['cmake', '--build', BUILD, '--target', *targets], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    return done.stdout if done.returncode != 0 else ''


def limit_process():
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(program, timeout):
    """None when all its tests pass, else what failed first."""
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch, \
            tempfile.TemporaryFile('w+') as output:
        os.chmod(scratch, 0o1777)  # some tests give up the rights of root
        process = subprocess.Popen(
            [program, '--gtest_fail_fast'], stdin=subprocess.DEVNULL, stdout=output,
            stderr=subprocess.STDOUT, cwd=scratch, env=dict(os.environ, TMPDIR=scratch),
            start_new_session=True, preexec_fn=limit_process)
        ending = ''
        try:
            if process.wait(timeout) == 0:
                return None
        except subprocess.TimeoutExpired:
            ending = ' (time is up)'
        except KeyboardInterrupt:
            os.killpg(process.pid, signal.SIGKILL)
            raise
        if ending:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        elif process.returncode < 0:
            ending = f' ({signal.Signals(-process.returncode).name})'
        output.seek(0)
        text = output.read()
    failed = re.findall(r'^\[  FAILED  \] ([^ ,]+)', text, re.M)
    started = re.findall(r'^\[ RUN      \] (\S+)', text, re.M)
    test = failed[0] if failed else started[-1] if started else 'before the first test'
    return f'{program.name} {test}{ending}'


def measure_programs():
    """The seconds that each test program takes without a change."""
    for program in (BUILD / 'tests').rglob('*_tests'):
        program.unlink()  # its tests may be gone
    message = build(TARGETS)
    if message:
        sys.exit(message)
    seconds = {}
    for program in sorted((BUILD / 'tests').rglob('*_tests')):
        start = time.monotonic()
        failure = run(program, 600)
        if failure is not None:
            print(f'mutate: fails without a change: {failure}')
            sys.exit(2)
        seconds[program] = time.monotonic() - start
    return seconds


def in_order(seconds, file):
    """The programs, those that mirror the changed file's folder first, else the quick ones."""
    folder = file.split('/')[1]
    return sorted(seconds, key=lambda program: (program.parent.name != folder, seconds[program]))


def verdict_on(mutant, seconds):
    """Answers 'killed', 'survived' or 'error', and the killer or the reason."""
    path = TREE / mutant.file
    original = path.read_text()
    changed = mutant.apply(original)
    if changed is None:
        return 'error', f'the old text must stand in {mutant.file} exactly once'
    try:
        path.write_text(changed)
        for program in in_order(seconds, mutant.file):
            message = build([program.name])
            if message:
                return 'error', message
            failure = run(program, 20 + 10 * seconds[program])
            if failure is not None:
                return 'killed', failure
        return 'survived', ''
    finally:
        path.write_text(original)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('words', nargs='*', help='parts of the names of the changes to make')
    parser.add_argument('--list', action='store_true', help='print the changes, make none')
    options = parser.parse_args()

    chosen = [mutant for mutant in read_list()
              if not options.words or any(word in mutant.name if ':' not in word
                                          else mutant.name.endswith(word)
                                          for word in options.words)]
    if options.list:
        for mutant in chosen:
            print(f'{mutant.name}  {mutant.note}' + ('  (equivalent)' if mutant.reason else ''))
        return 0
    copy_tree()
    configure()
    seconds = measure_programs()
    counts = {'killed': 0, 'survived': 0, 'error': 0}
    for mutant in chosen:
        if mutant.reason:
            continue
        start = time.monotonic()
        verdict, detail = verdict_on(mutant, seconds)
        counts[verdict] += 1
        print(f'{verdict:8}  {mutant.name}  {mutant.note}  {detail}  '
              f'({time.monotonic() - start:.0f} s)', flush=True)
    made = counts['killed'] + counts['survived']
    percentage = 100.0 * counts['killed'] / made if made else 100.0
    left_out = sum(1 for mutant in chosen if mutant.reason)
    print(f'mutate: {counts["killed"]} of {made} changes noticed ({percentage:.1f} %), '
          f'{counts["error"]} in error, {left_out} that cannot be noticed left out')
    return 1 if counts['error'] or percentage < WANTED_PERCENTAGE else 0


if __name__ == '__main__':
    sys.exit(main())
