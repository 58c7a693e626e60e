"""Every ready layout: files that Python writes by its places, held against the command's rows."""

import glob
import json
import os
import random

import pytest
from conftest import ROOT, tool
from random_files import exact, expected, flatten, literal
from text_files import day, kind_of, layout, record, stored, write

FOLDER = os.path.join(ROOT, "layouts")
READY = sorted(os.path.relpath(path, FOLDER)[:-len(".toml")]
               for path in glob.glob(os.path.join(FOLDER, "**", "*.toml"), recursive=True))
LETTERS = "ABC xyz019.,-/çÃé"


def some_text(some, field):
    """The stored text of a field: mostly a value, at times nothing, at times any characters."""
    size = len(stored(field, None))
    choice = some.random()
    if choice < 0.1:
        return stored(field, None)
    if choice < 0.16:
        return "".join(some.choices(LETTERS, k=size))
    if field["type"] == "DATE":
        return stored(field, day(f"{some.choice((1980, 1999, 2024, 2079))}-0{some.randint(1, 9)}-28"))
    if field["type"] == "TIME":
        return "".join(f"{some.randrange(top):02}" for top in (24, 60, 60))[:size]
    if field["type"] in ("NUM", "DIGITS") or field.get("pad") == "0":
        return str(some.randrange(10 ** some.randint(1, size))).zfill(size)
    return "".join(some.choices(LETTERS, k=some.randint(1, size))).ljust(size)


def some_record(some, told, name):
    """A record whose kind is told by its constants; the other fields hold anything."""
    line, kind = record(told, name), kind_of(told, name)
    for field in kind["field"]:
        if field["name"] not in kind.get("when", {}):
            text = some_text(some, field)
            line = line[:field["at"] - 1] + text + line[field["at"] - 1 + len(text):]
    return line


def some_file(some, told, path):
    names = [kind["name"] for kind in told["record"]]
    first = next((kind["name"] for kind in told["record"] if kind.get("first")), None)
    last = next((kind["name"] for kind in told["record"] if kind.get("last")), None)
    middle = [name for name in names if name not in (first, last)]
    order = [first] + some.choices(middle, k=60) + middle + [last]
    order = [name for name in order if name is not None]
    write(path, [some_record(some, told, name) for name in order], some.choice(("\r\n", "\n")))
    return order


@pytest.mark.parametrize("seed", range(3))
@pytest.mark.parametrize("name", READY)
def test_every_kind_says_what_the_rows_say(sql, tmp_path, name, seed):
    told, some = layout(name), random.Random(f"{name} {seed}")
    path = str(tmp_path / "records.txt")
    some_file(some, told, path)
    rows = {}
    lines = tool("dump", "--format", "ndjson", name, path).decode().split("\n")
    for number, line in enumerate(filter(None, lines), 1):
        row = json.loads(line, parse_int=str, parse_float=str)
        rows.setdefault(row.pop("record"), []).append((number, flatten(row)))
    assert set(rows) == {kind["name"] for kind in told["record"]}
    values = 0
    for kind, wanted in rows.items():
        call = (f"read_campotipo({literal(path)}, layout := {literal(name)}, kind := {literal(kind)}, "
                "faults := 'null')")
        columns = [(column, sql_type) for column, sql_type, *_ in sql(f"describe from {call}")]
        found = sql(f"from {call}")
        assert [row[0] for row in found] == [number for number, _ in wanted]
        for row, (_, texts) in zip(found, wanted):
            faults = (row[-1] or "").split(",")
            for (column, sql_type), value, text in zip(columns[1:-1], row[1:], texts):
                known = None if column in faults else expected(text, sql_type)
                assert exact(value) == exact(known), (kind, column, row)
                values += value is not None
    assert values


def test_ready_layouts_are_listed(sql):
    assert [name for name, *_ in sql("select name from campotipo_layouts()")] == READY
    main = sql("select distinct kind from campotipo_layout('b3/cotahist') where main")
    assert main == [("cotacao",)]
