#!/usr/bin/env python3
"""Compares two builds of one benchmark, which are run in turn.

    bench/compare.py BEFORE AFTER [RUNS [ARGUMENT...]]

BEFORE and AFTER are programs that print rows as mcbinning_ratios does; the arguments go to both.
Of the first figure of each row this prints the medians, their quotient, and how far the figures of
a program lie apart, as a share of their median.
"""

import statistics
import subprocess
import sys


def figures(program, arguments):
    """The first figure of each row."""
    output = subprocess.run([program, *arguments], check=True, capture_output=True, text=True)
    rows = {}
    for line in output.stdout.splitlines():
        cells = [cell.strip() for cell in line.split("|")[1:]]
        if len(cells) > 1 and cells[1].replace(".", "", 1).isdigit():
            rows[cells[0]] = float(cells[1])
    return rows


def spread(values):
    return (max(values) - min(values)) / statistics.median(values)


def main():
    programs = sys.argv[1:3]
    runs = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    measured = ([], [])
    for _ in range(runs):
        for program, all_rows in zip(programs, measured):
            all_rows.append(figures(program, sys.argv[4:]))
    print(f"| {f'medians of {runs}':58} | before | spread | after  | spread | after / before |")
    print("|---|---|---|---|---|---|")
    for name in measured[0][0]:
        before, after = ([rows[name] for rows in all_rows] for all_rows in measured)
        medians = statistics.median(before), statistics.median(after)
        print(
            f"| {name:58} | {medians[0]:6.1f} | {spread(before):6.1%} | {medians[1]:6.1f} "
            f"| {spread(after):6.1%} | {medians[1] / medians[0]:14.3f} |"
        )


if __name__ == "__main__":
    main()
