"""Finds in the syntax of the library's sources what a mutant can change, and changes it.

A mutant is known by its file, its function, its operator and its ordinal among those of the same
operator in that function, so that an edit elsewhere leaves its name alone:

    src/supervised/entropy.cpp Entropy comparison 2

comparison  < and <= and their like change places, a comparison is negated, && and || change places,
            ! is dropped
constant    a number is one more, a truth value the other one
statement   an expression statement, a break, a continue or an empty return is dropped
sign        + and -, * and /, << and >>, & and | change places, a minus is dropped
"""
from __future__ import annotations

import re
from collections import Counter
from collections.abc import Iterable
from dataclasses import dataclass, field
from pathlib import Path

from clang.cindex import Cursor, CursorKind, Index, TypeKind

FUNCTIONS = {
    CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR,
    CursorKind.DESTRUCTOR, CursorKind.FUNCTION_TEMPLATE, CursorKind.CONVERSION_FUNCTION,
}
NO_CODE = {CursorKind.ENUM_DECL, CursorKind.STATIC_ASSERT, CursorKind.USING_DECLARATION,
           CursorKind.TYPE_ALIAS_DECL, CursorKind.TYPEDEF_DECL}
LITERALS = {CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL,
            CursorKind.CXX_BOOL_LITERAL_EXPR}
STATEMENTS = {
    CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.UNARY_OPERATOR,
    CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CXX_DELETE_EXPR,
    CursorKind.UNEXPOSED_EXPR, CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT,
}
ORDERED = {'<': ('less', '<=', '>='), '<=': ('lessOrEqual', '<', '>'),
           '>': ('greater', '>=', '<='), '>=': ('greaterOrEqual', '>', '<')}
EQUALITIES = {'==': ('equal', '!='), '!=': ('notEqual', '==')}
ARITHMETIC = {'+': ('add', '-'), '-': ('subtract', '+'), '*': ('multiply', '/'),
              '/': ('divide', '*'), '<<': ('shiftLeft', '>>'), '>>': ('shiftRight', '<<'),
              '&': ('bitAnd', '|'), '|': ('bitOr', '&')}
# Without them everything only takes longer.
MAKES_ROOM = re.compile(r'\b(reserve|shrink_to_fit)\(')


@dataclass
class Edit:
    """Text put in the place of the bytes from `begin` to before `end`."""

    begin: int
    end: int
    text: str
    is_suffix: bool = False


@dataclass
class Mutant:
    file: str
    function: str
    operator: str
    line: int
    before: str
    after: str
    direct: Edit  # the mutant alone
    group: int  # those of one group share what makes them switchable
    number: int = 0
    ordinal: int = 0

    @property
    def name(self) -> str:
        return f'{self.file} {self.function} {self.operator} {self.ordinal}'


@dataclass
class Point:
    """A place of the source with its mutants and what makes them switchable, with {0}, {1} for
    their numbers; nothing where the compiler wants a constant."""

    mutants: list[Mutant]
    switch: list[Edit] = field(default_factory=list)


class SourceReader:
    """Collects the points of the files below `root`/src that translation units bring up."""

    def __init__(self, root: Path) -> None:
        self.root = root
        self.points: list[Point] = []
        self.texts: dict[str, bytes] = {}
        self.files_done: set[str] = set()

    def read(self, source: Path, arguments: list[str]) -> None:
        unit = Index.create().parse(str(source), args=arguments)
        errors = [d for d in unit.diagnostics if d.severity >= 3]
        if errors:
            raise SystemExit(f'mutate: {source}: {errors[0].spelling}')
        found = set()
        for cursor in unit.cursor.get_children():
            file = self._file_of(cursor)
            if file and file not in self.files_done:
                found.add(file)
                FileReader(self, file).visit(cursor)
        self.files_done |= found

    def _file_of(self, cursor: Cursor) -> str:
        location = cursor.location.file
        if location is None:
            return ''
        path = Path(location.name).resolve()
        if not path.is_relative_to(self.root / 'src'):
            return ''
        name = path.relative_to(self.root).as_posix()
        self.texts.setdefault(name, path.read_bytes())
        return name


class FileReader:
    def __init__(self, reader: SourceReader, file: str) -> None:
        self.reader = reader
        self.file = file
        self.text = reader.texts[file]
        self.function = ''
        self.is_constant = False

    def visit(self, cursor: Cursor) -> None:
        if cursor.kind in NO_CODE:
            return
        outer = self.function, self.is_constant
        if cursor.kind in FUNCTIONS:
            self.function = qualified_name(cursor)
        if cursor.kind in FUNCTIONS or cursor.kind == CursorKind.VAR_DECL:
            head = self._slice(cursor.extent.start.offset, cursor.location.offset)
            self.is_constant |= b'constexpr' in head
            if not self.function:
                self.function = qualified_name(cursor)
        self._mutate(cursor)
        children = list(cursor.get_children())
        for index, child in enumerate(children):
            if cursor.kind == CursorKind.CASE_STMT and index == 0:
                continue
            if cursor.kind in (CursorKind.COMPOUND_STMT, CursorKind.CASE_STMT):
                self._mutate_statement(child)
            is_constant = self.is_constant
            # What stands before a variable's name belongs to its type.
            self.is_constant |= (cursor.kind == CursorKind.VAR_DECL
                                 and child.extent.end.offset <= cursor.location.offset)
            self.visit(child)
            self.is_constant = is_constant
        self.function, self.is_constant = outer

    def _slice(self, begin: int, end: int) -> bytes:
        return self.text[begin:end]

    def _add(self, operator: str, cursor: Cursor, changes: list[tuple[str, str, Edit]],
             switch: list[Edit]) -> None:
        group = len(self.reader.points)
        mutants = [Mutant(self.file, self.function, operator, cursor.extent.start.line, before,
                          after, edit, group) for before, after, edit in changes]
        self.reader.points.append(Point(mutants, [] if self.is_constant else switch))

    def _mutate(self, cursor: Cursor) -> None:
        begin, end = cursor.extent.start.offset, cursor.extent.end.offset
        if not self.function or not self.text[begin:end]:
            return
        kind = cursor.kind
        if kind in LITERALS:
            self._mutate_literal(cursor, begin, end)
        elif kind == CursorKind.UNARY_OPERATOR:
            self._mutate_unary(cursor, begin, end)
        elif kind == CursorKind.BINARY_OPERATOR or is_overloaded(cursor):
            operands = list(cursor.get_children())
            if kind != CursorKind.BINARY_OPERATOR:
                operands = [operands[0], operands[-1]]
            self._mutate_binary(cursor, operands, begin, end)
        elif kind == CursorKind.COMPOUND_ASSIGNMENT_OPERATOR:
            self._mutate_assignment(cursor)

    def _mutate_literal(self, cursor: Cursor, begin: int, end: int) -> None:
        literal = self.text[begin:end].decode()
        if literal in ('true', 'false'):
            other = 'false' if literal == 'true' else 'true'
        elif re.match(r"[0-9.][0-9a-fA-FxXpPeEuUlL.'+-]*$", literal):
            if literal.startswith('0x1p') and float.fromhex(literal) >= 2.0**53:
                return  # one more is the same double
            other = f'({literal} + 1)'
        else:
            return  # from a macro
        self._add('constant', cursor, [(literal, other, Edit(begin, end, other))],
                  [Edit(begin, begin, '::mutation::constant({0}, '), Edit(end, end, ')', True)])

    def _mutate_unary(self, cursor: Cursor, begin: int, end: int) -> None:
        sign = self.text[begin:begin + 1]
        operand = next(cursor.get_children())
        # `a != b` of objects is read as the negation of their ==, one that begins at the sign.
        if sign == b'!' and self.text[begin:begin + 2] != b'!=':
            self._add('comparison', cursor, [('!', '', Edit(begin, begin + 1, ''))],
                      [Edit(begin, begin + 1, '!::mutation::flip({0}, '),
                       Edit(end, end, ')', True)])
        elif sign == b'-' and operand.extent.start.offset == begin + 1 and is_number(operand):
            self._add('sign', cursor, [('-', '', Edit(begin, begin + 1, ''))],
                      [Edit(begin, begin + 1, '::mutation::minus({0}, '),
                       Edit(end, end, ')', True)])

    def _mutate_binary(self, cursor: Cursor, operands: list[Cursor], begin: int, end: int) -> None:
        left, right = operands
        middle = left.extent.end.offset, right.extent.start.offset
        sign = self.text[middle[0]:middle[1]].decode().strip()
        at = self.text.find(sign.encode(), middle[0])
        if left.extent.start.offset != begin or right.extent.end.offset != end or not sign:
            return  # from a macro

        def replaced(other: str) -> tuple[str, str, Edit]:
            return sign, other, Edit(at, at + len(sign), other)

        def call(head: str) -> list[Edit]:
            return [Edit(begin, begin, f'::mutation::{head}, '), Edit(at, at + len(sign), ','),
                    Edit(end, end, ')', True)]

        if sign in ORDERED:
            name, boundary, negated = ORDERED[sign]
            self._add('comparison', cursor, [replaced(boundary), replaced(negated)],
                      call(name + '({0}, {1}'))
        elif sign in EQUALITIES:
            name, other = EQUALITIES[sign]
            self._add('comparison', cursor, [replaced(other)], call(name + '({0}'))
        elif sign in ('&&', '||'):
            flip = '::mutation::flip({0}, '
            self._add('comparison', cursor, [replaced('||' if sign == '&&' else '&&')],
                      [Edit(begin, begin, flip + flip), Edit(middle[0], middle[0], ')', True),
                       Edit(middle[1], middle[1], flip), Edit(end, end, '))', True)])
        elif sign in ARITHMETIC and all(is_number(operand) for operand in operands):
            name, other = ARITHMETIC[sign]
            self._add('sign', cursor, [replaced(other)], call(name + '({0}'))

    def _mutate_assignment(self, cursor: Cursor) -> None:
        left, right = cursor.get_children()
        begin, end = right.extent.start.offset, right.extent.end.offset
        at = self.text.find(b'=', left.extent.end.offset)
        sign = self.text[left.extent.end.offset:at + 1].decode().strip()
        if sign in ('+=', '-=') and is_number(left) and is_number(right):
            other = '-=' if sign == '+=' else '+='
            self._add('sign', cursor, [(sign, other, Edit(at - 1, at + 1, other))],
                      [Edit(begin, begin, '::mutation::amount({0}, '),
                       Edit(end, end, ')', True)])

    def _mutate_statement(self, cursor: Cursor) -> None:
        begin, end = cursor.extent.start.offset, cursor.extent.end.offset
        is_empty_return = (cursor.kind == CursorKind.RETURN_STMT
                           and self.text[begin:end] == b'return')
        semicolon = re.match(rb'\s*;', self.text[end:])
        statement = self.text[begin:end].decode()
        if (cursor.kind not in STATEMENTS and not is_empty_return) or semicolon is None \
                or MAKES_ROOM.search(statement) or statement.startswith('static_cast<void>'):
            return
        end += semicolon.end()
        self._add('statement', cursor, [(statement + ';', '', Edit(begin, end, ';'))],
                  [Edit(begin, begin, '{{ if (!::mutation::on({0})) '),
                   Edit(end, end, ' }}', True)])


def qualified_name(cursor: Cursor) -> str:
    names = [cursor.spelling]
    parent = cursor.semantic_parent
    while parent is not None and parent.kind not in (CursorKind.TRANSLATION_UNIT,
                                                     CursorKind.NAMESPACE):
        names.insert(0, parent.spelling)
        parent = parent.semantic_parent
    return '::'.join(re.sub(r'[\s<].*', '', name) for name in names)


def is_overloaded(cursor: Cursor) -> bool:
    return (cursor.kind == CursorKind.CALL_EXPR and cursor.spelling in ('operator==', 'operator!=')
            and len(list(cursor.get_children())) == 3)


def is_number(cursor: Cursor) -> bool:
    kind = cursor.type.get_canonical().kind
    return TypeKind.BOOL.value <= kind.value <= TypeKind.LONGDOUBLE.value


def number_mutants(points: Iterable[Point]) -> list[Mutant]:
    """All mutants, in the order of the files, with their numbers and ordinals."""
    mutants = [mutant for point in points for mutant in point.mutants]
    mutants.sort(key=lambda mutant: (mutant.file, mutant.direct.begin, mutant.operator))
    ordinals: Counter[tuple[str, str, str]] = Counter()
    for number, mutant in enumerate(mutants, 1):
        key = mutant.file, mutant.function, mutant.operator
        ordinals[key] += 1
        mutant.ordinal = ordinals[key]
        mutant.number = number
    return mutants


def switchable(text: bytes, points: Iterable[Point]) -> bytes:
    """The text with all its mutants in it, each switched off."""
    edits = [Edit(edit.begin, edit.end,
                  edit.text.format(*(mutant.number for mutant in point.mutants)), edit.is_suffix)
             for point in points for edit in point.switch]
    return apply_edits(text, edits)


def apply_edits(text: bytes, edits: list[Edit]) -> bytes:
    """At one place the suffixes come first, the inner ones before the outer ones, then what is put
    in front, the outer before the inner; edits are given with the outer ones first."""
    order = sorted(enumerate(edits), key=lambda item: (
        item[1].begin, not item[1].is_suffix, -item[0] if item[1].is_suffix else item[0]))
    parts, position = [], 0
    for _, edit in order:
        parts += [text[position:edit.begin], edit.text.encode()]
        position = max(position, edit.end)
    return b''.join([*parts, text[position:]])
