"""The ``mcbin`` program on the path of the environment."""

import os
import sys
from pathlib import Path


def main() -> None:
    """Become the program."""
    program = Path(__file__).parent / "bin" / "mcbin"
    os.execv(program, ["mcbin", *sys.argv[1:]])
