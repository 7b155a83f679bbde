#!/usr/bin/env python3
"""Writes the table of src/numerics/log2.cpp, or with --check compares it with the one in the tree.

All arithmetic is of whole numbers and fractions, so every machine writes the same file.
"""

import argparse
import sys
from fractions import Fraction
from pathlib import Path

TABLE = Path(__file__).resolve().parent.parent / "src/numerics/log2_table.h"
INTERVALS = 512  # of the mantissa, from 1 to 2
FACTOR_BITS = 11  # of a factor after the point
HIGH_BITS = 42  # of the first part of a logarithm after the point
LARGEST_REST = Fraction(5, 4096)  # what the bounds in log2.cpp assume
NEAR_ONE = Fraction(1, 1024)  # arguments nearer to 1 do without the table
LOG2_E_ABOVE = Fraction(1443, 1000)

HEADER = """\
// Written by scripts/make_log2_table.py.
#ifndef MCBINNING_NUMERICS_LOG2_TABLE_H
#define MCBINNING_NUMERICS_LOG2_TABLE_H

#include <array>

namespace MCBinning {

/// -log2(factor) = high + low; high is a multiple of 2^-42.
struct Log2TableEntry {
  double factor;
  double high;
  double low;
};

/// Entry i is for mantissas from 1 + i / 512 to 1 + (i + 1) / 512.
constexpr std::array<Log2TableEntry, 512> kLog2Table = {{
"""

FOOTER = """\
}};

}  // namespace MCBinning

#endif
"""


def log2(value: Fraction, bits: int) -> Fraction:
    """The logarithm of a value from 1 to below 2, cut off after so many bits.

    The logarithm of the square has the same bits, moved by one place.
    """
    precision = 2 * bits + 8
    mantissa = (value.numerator << precision) // value.denominator
    digits = 0
    for _ in range(bits):
        mantissa = mantissa * mantissa >> precision
        digit = mantissa >> (precision + 1)
        mantissa >>= digit
        digits = 2 * digits + digit
    return Fraction(digits, 1 << bits)


def factor_of(interval: int) -> Fraction:
    """About 1 / mantissa in the middle of an interval."""
    middle = 1 + Fraction(2 * interval + 1, 2 * INTERVALS)
    return Fraction(round((1 << FACTOR_BITS) / middle), 1 << FACTOR_BITS)


def check_bounds(interval: int, factor: Fraction, high: Fraction) -> None:
    """Fails where log2.cpp would be wrong about an interval."""
    begin = 1 + Fraction(interval, INTERVALS)
    end = begin + Fraction(1, INTERVALS)
    assert max(abs(factor * begin - 1), abs(factor * end - 1)) <= LARGEST_REST
    # Of the sum exponent + high + rest * log2(e) the first two outweigh the last.
    for exponent, first, last in (
        (0, max(begin, 1 + NEAR_ONE), end),
        (-1, begin, min(end, 2 * (1 - NEAR_ONE))),
    ):
        rest = max(abs(factor * first - 1), abs(factor * last - 1))
        assert first >= last or abs(exponent + high) >= rest * LOG2_E_ABOVE


def table() -> str:
    """The text of the header."""
    lines = [HEADER]
    for interval in range(INTERVALS):
        factor = factor_of(interval)
        logarithm = 1 - log2(2 * factor, 140) if factor > Fraction(1, 2) else Fraction(1)
        high = Fraction(round(logarithm * 2**HIGH_BITS), 2**HIGH_BITS)
        check_bounds(interval, factor, high)
        entry = [float(part).hex() for part in (factor, high, logarithm - high)]
        lines.append(f"    {{{', '.join(entry)}}},\n")
    return "".join(lines) + FOOTER


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true", help="write nothing, compare")
    if parser.parse_args().check:
        return 0 if TABLE.read_text(encoding="ascii") == table() else "the table differs"
    TABLE.write_text(table(), encoding="ascii")
    return 0


if __name__ == "__main__":
    sys.exit(main())
