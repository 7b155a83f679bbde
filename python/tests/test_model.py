"""What a model is turned into."""

import pytest

import mcbinning as mb


def test_sql_is_that_of_the_program(loans, mcbin, tmp_path):
    model = mb.fit(loans, target="default", attributes=["age", "income"])
    model.save(tmp_path / "model.json")
    for dialect in ("sqlite", "postgresql", "duckdb", "spark", "ansi"):
        for intervals, style in ((False, "index"), (True, "interval")):
            expected = mcbin(
                *("export", tmp_path / "model.json", "--to=sql", "--from=s.t"),
                *(f"--dialect={dialect}", f"--as={style}"),
            )
            assert model.to_sql("s.t", intervals=intervals, dialect=dialect) == expected
    assert model.to_sql() == mcbin("export", tmp_path / "model.json", "--to=sql")
    with pytest.raises(mb.OptionError, match="there is no dialect cobol"):
        model.to_sql(dialect="cobol")
