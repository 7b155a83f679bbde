#!/usr/bin/env python3
"""Fails when a file is longer than 400 lines, a function longer than 40, or the library's tests
longer than twice what they test; prints how long they are.

Functions of C++ are told by the layout that clang-format gives them: one ends at a line with only a
closing brace and starts at the line before it that is indented as far.
"""
from __future__ import annotations

import ast
import re
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LONGEST_FILE = 400
LONGEST_FUNCTION = 40
MOST_TEST_LINES = 2.0
LIBRARY = ('src/', 'include/', 'host/')
NOT_LIBRARY_TESTS = ('tests/cli/', 'tests/toolkit/', 'tests/python/')
SOURCES = ('.cpp', '.h', '.py', '.sh')
TABLES = ('src/numerics/log2_table.h',)  # numbers, not code
NO_FUNCTION = re.compile(r'(namespace|class|struct|enum|union|extern|if|else|for|while|do|switch|'
                         r'try|case|default|#|\}|//|public:|private:|protected:|template)\b|[{}#]')


def functions_of_cpp(lines: list[str]) -> Iterator[tuple[int, int]]:
    """First and last line of each, from 1."""
    for end, line in enumerate(lines):
        if line.strip() != '}':
            continue
        indent = len(line) - len(line.lstrip())
        begin = end - 1
        while begin > 0 and (not lines[begin].strip()
                             or len(lines[begin]) - len(lines[begin].lstrip()) > indent):
            begin -= 1
        if not NO_FUNCTION.match(lines[begin].strip()):
            yield begin + 1, end + 1


def functions_of_python(text: str) -> Iterator[tuple[int, int]]:
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, (ast.FunctionDef, ast.AsyncFunctionDef)):
            documented = ast.get_docstring(node, clean=False) is not None
            first = node.body[1] if documented and len(node.body) > 1 else node.body[0]
            yield first.lineno - 1, node.end_lineno or node.lineno


def too_long(name: str, text: str) -> list[str]:
    lines = text.splitlines()
    found = []
    if len(lines) > LONGEST_FILE:
        found.append(f'{name}: {len(lines)} lines')
    functions: Iterator[tuple[int, int]] = iter(())
    if name.endswith(('.cpp', '.h')):
        functions = functions_of_cpp(lines)
    elif name.endswith('.py'):
        functions = functions_of_python(text)
    found += [f'{name}:{begin}: a function of {end - begin + 1} lines'
              for begin, end in functions if end - begin + 1 > LONGEST_FUNCTION]
    return found


def main() -> int:
    listed = subprocess.run(['git', 'ls-files', '--cached', '--others', '--exclude-standard'],
                            cwd=ROOT, check=True, text=True, capture_output=True).stdout
    texts = {name: (ROOT / name).read_text() for name in listed.splitlines()
             if name.endswith(SOURCES) and name not in TABLES and (ROOT / name).exists()}

    def lines_of(names: list[str]) -> int:
        return sum(texts[name].count('\n') for name in names)

    code = [name for name in texts if name.endswith(('.cpp', '.h'))]
    tested = lines_of([name for name in code if name.startswith(LIBRARY)])
    tests = lines_of([name for name in code if name.startswith('tests/')
                      and not name.startswith(NOT_LIBRARY_TESTS)])
    found = [line for name, text in sorted(texts.items()) for line in too_long(name, text)]
    if tests > MOST_TEST_LINES * tested:
        found.append(f'tests/: more than {MOST_TEST_LINES} times the lines that they test')
    print(f'sizes: {tests} lines of tests for {tested} of the library, {tests / tested:.2f} times')
    if found:
        print('sizes: too long:', *found, sep='\n  ', file=sys.stderr)
        return 1
    print('sizes: ok')
    return 0


if __name__ == '__main__':
    sys.exit(main())
