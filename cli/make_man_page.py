#!/usr/bin/env python3
"""Writes the manual page of the given mcbin to standard output, made from its help texts."""

import re
import subprocess
import sys

SECTIONS = """\
.SH EXIT STATUS
.TP
0
Done.
.TP
1
The data, a file or a model cannot be used.
.TP
2
The command line is wrong.
.TP
3
Internal error.
.TP
128 + N
Stopped by signal N: 130 for an interrupt, 143 for a termination signal.
.SH ENVIRONMENT
.TP
TMPDIR
Directory of temporary files, by default the system's. None is left behind.
.TP
NO_COLOR
When set to anything, messages on a terminal are not coloured.
.TP
TERM
With the value dumb no progress is shown.
"""


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, check=True, text=True).stdout


def roff(text):
    """The text with everything that the formatter would take for its own escaped."""
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return re.sub(r"(?m)^(?=[.'])", r"\\&", text)


def literal(text):
    return f".nf\n{roff(text.strip())}\n.fi\n"


def page(program):
    text = output_of(program, "--help")
    summary = text.split("Usage:")[0].strip()
    version = output_of(program, "--version").strip()
    commands = re.findall(r"(?m)^  ([a-z]+) ", text.split("Subcommands:")[1])
    result = f'.TH MCBIN 1 "" "{roff(version)}"\n'
    result += ".SH NAME\nmcbin \\- cut the scale columns of a table into bins\n"
    result += ".SH SYNOPSIS\n.B mcbin\n.I COMMAND\n[\\fIOPTIONS\\fR]\n"
    result += f".SH DESCRIPTION\n{roff(summary)}\n"
    for command in commands:
        result += f".SH {command.upper()}\n" + literal(output_of(program, command, "--help"))
    return result + SECTIONS


if __name__ == "__main__":
    sys.stdout.write(page(sys.argv[1]))
