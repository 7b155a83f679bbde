"""What several tests need."""

import subprocess
import sys
from pathlib import Path

import pytest

LOANS = Path(__file__).parents[2] / "examples" / "data" / "loans.csv"
MCBIN = Path(sys.executable).with_name("mcbin")


def pytest_addoption(parser):
    parser.addoption(
        "--random-tables", type=int, default=25, help="random tables for each kind of input"
    )


@pytest.fixture
def loans() -> str:
    return str(LOANS)


@pytest.fixture
def mcbin():
    """Run the program of the wheel and give what it prints."""

    def run(*arguments: object) -> str:
        command = [str(MCBIN), *map(str, arguments)]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    return run
