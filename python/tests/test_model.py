"""What a model is turned into."""

import numpy as np
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


def test_events_and_cuts_of_every_kind_are_those_of_the_program(mcbin, tmp_path):
    path = tmp_path / "data.csv"
    lines = [f"{i},{i % 7},{int(i > 9)},{str(i % 3 > 0).lower()}" for i in range(20)]
    path.write_text("\n".join(["x,y,t,u", *lines, ""]))
    saved = tmp_path / "model.json"
    mcbin("fit", path, "--target=t", "--cuts=x=4,12.5", f"--output={saved}")
    (tmp_path / "cuts.txt").write_text("x=4,12.5\n")
    given = mb.load(saved)
    for target, event in (("t", 0), ("t", 1.0), ("t", "0"), ("t", np.int8(0)), ("u", False)):
        word = str(event).lower() if event is False else event
        arguments = ["fit", path, "--json", f"--target={target}", f"--event={word}"]
        for cuts, text in (
            ({"x": [4, 12.5]}, "x=4,12.5"),
            ({"x": np.array([4, 12.5], np.float32)}, "x=4,12.5"),
            (str(tmp_path / "cuts.txt"), tmp_path / "cuts.txt"),
            (given, saved),
            (saved, saved),
        ):
            model = mb.fit(str(path), target=target, event=event, cuts=cuts)
            assert model.to_json() == mcbin(*arguments, f"--cuts={text}")
