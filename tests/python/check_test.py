"""Findings as a stream, held against what the command tells; records of ready layouts made of columns."""

import json
import os
import random
import subprocess
import sys
import tomllib

import pyarrow
import pytest

import c_face
from streams_test import ROUNDS, TOOL, File

ROOT = os.path.join(os.path.dirname(__file__), "..", "..")
sys.path.insert(0, os.path.join(ROOT, "tests", "layouts"))
from layouts_test import FILES  # noqa: E402

COLUMNS = pyarrow.schema([("_file", pyarrow.string()), ("_record", pyarrow.int64()),
                          ("line", pyarrow.int64()), ("byte", pyarrow.int64()),
                          ("kind", pyarrow.string()), ("field", pyarrow.string()),
                          ("what", pyarrow.string()), ("value", pyarrow.string())])


def told(toml_path, path, *options):
    done = subprocess.run([TOOL, "check", toml_path, path, "--json", "--all", *options],
                          capture_output=True)
    assert done.returncode in (0, 1), done.stderr
    lines = filter(None, done.stdout.decode(errors="replace").split("\n"))
    return [json.loads(line) for line in lines]


def rows_of(stream):
    table = stream.read_all()
    table.validate(full=True)
    assert table.schema == COLUMNS
    return table.to_pylist()


def in_any_order(rows):
    return sorted(map(str, rows))


def hold(columns, content, toml_path, path):
    """The stream says what the command says, and its parts together say the whole."""
    with open(path, "wb") as file:
        file.write(content)
    whole = told(toml_path, path)
    rows = rows_of(columns.check(content, file=path))
    assert rows == whole
    assert rows_of(columns.check(content, file=path, batch_rows=3)) == whole
    assert rows_of(columns.check(content, file=path, skip=True)) == \
        told(toml_path, path, "--skip-unknown")
    for wanted in (1, 3):
        parts = rows_of(columns.check(content, "file", file=path))
        ranges = columns.splits(content, wanted)
        for part in ranges:
            parts += rows_of(columns.check(content, "values", part, file=path))
        if ranges:
            assert in_any_order(parts) == in_any_order(whole)
    return whole


@pytest.mark.parametrize("seed", range(ROUNDS))
def test_findings_of_random_files(seed, tmp_path):
    file = File(seed, tmp_path)
    hold(file.columns, file.content, file.toml_path, file.path)


class Ready:
    def __init__(self, name):
        self.path = os.path.join(ROOT, "layouts", name + ".toml")
        with open(self.path, encoding="utf-8") as file:
            text = file.read()
        self.toml, self.columns = tomllib.loads(text), c_face.Layout(text)
        self.lines = [line.text.encode("latin-1") for line in FILES[name]()]
        self.content = b"".join(line + b"\r\n" for line in self.lines)

    def fields(self):
        """The keys of each field, by its kind and name."""
        return {(kind["name"], field["name"]): field for kind in self.toml["record"]
                for field in kind["field"] if "name" in field}


@pytest.fixture(params=sorted(FILES))
def ready(request):
    return Ready(request.param)


def spoiled(lines, chance):
    """A file with faults of each sort."""
    lines = list(lines)
    for _ in range(chance.randint(1, 4)):
        at = chance.randrange(len(lines))
        sort = chance.random()
        if sort < 0.5:
            place = chance.randrange(len(lines[at]))
            byte = chance.choice(b"0159A \xe7")
            lines[at] = lines[at][:place] + bytes([byte]) + lines[at][place + 1:]
        elif sort < 0.65:
            del lines[at]
        elif sort < 0.8:
            lines.insert(at, chance.choice(lines))
        elif sort < 0.9:
            lines[at] = lines[at][:chance.randrange(len(lines[at]))]
        else:
            lines[at] += b" "
        lines = lines or [b""]
    content = b"".join(line + chance.choice([b"\r\n", b"\r\n", b"\r\n", b"\n"]) for line in lines)
    return content + (b"\x1a" if chance.random() < 0.2 else b"")


def test_files_of_ready_layouts_are_in_order(ready, tmp_path):
    assert hold(ready.columns, ready.content, ready.path, str(tmp_path / "file")) == []


def test_findings_of_spoiled_files(ready, tmp_path):
    words = set()
    for seed in range(12):
        content = spoiled(ready.lines, random.Random(seed))
        words |= {row["what"] for row in hold(ready.columns, content, ready.path,
                                              str(tmp_path / "file"))}
    assert {"total", "line_length"} & words and len(words) > 2


def test_a_range_tells_its_values_alone(ready):
    part = c_face.Range(first=2)
    for wanted in ("all", "file"):
        with pytest.raises(c_face.Refused, match="CAMPOTIPO_CHECK_VALUES"):
            ready.columns.check(ready.content, wanted, part)
    assert rows_of(ready.columns.check(ready.content, "values", part)) == []


FOLLOWS = {"sequence", "same", "counts", "sums"}


def test_ready_layouts_come_back_from_columns(ready):
    """Each record of the file as a row of its kind, without what the layout fills in."""
    fields = ready.fields()
    tables, last = [], {}
    for kind in ready.toml["record"]:
        name = kind["name"]
        table = ready.columns.stream(ready.content, kind=name).read_all()
        for number, row in zip(table["_record"].to_pylist(), range(table.num_rows)):
            last[number] = (name, table.slice(row, 1))
    for number in sorted(last):
        name, row = last[number]
        filled = [column for column in row.column_names
                  if FOLLOWS & set(fields.get((name, column), {}))
                  or isinstance(fields.get((name, column), {}).get("value"), str)]
        tables.append((name, row.drop_columns(filled)))
    assert len(tables) == len(ready.lines)
    made, lost = ready.columns.write(tables)
    assert lost == []
    assert made == ready.content


def test_parts_of_a_file_need_what_only_the_whole_tells(ready):
    fields = ready.fields()
    for kind in ready.toml["record"]:
        name = kind["name"]
        follows = [field for (of, field), keys in fields.items() if of == name and FOLLOWS & set(keys)]
        table = ready.columns.stream(ready.content, kind=name).read_all()
        records, _ = ready.columns.encode(name, table)
        numbers = table["_record"].to_pylist()
        assert records == b"".join(ready.columns.records(ready.content, name, numbers))
        if follows and table.num_rows:
            with pytest.raises(c_face.Refused, match="only the whole file tells it"):
                ready.columns.encode(name, table.drop_columns(follows[:1]))
