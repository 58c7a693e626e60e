"""Columns of random layouts and files, held against the rows that the command writes.

The environment names the command (CAMPOTIPO_TOOL) and the library (CAMPOTIPO_RECORDS_LIBRARY).
"""

import datetime
import decimal
import json
import os
import random
import re
import subprocess
import sys

import duckdb
import polars
import pyarrow
import pytest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "tool"))
import c_face  # noqa: E402
from random_layouts import Layout as RandomLayout  # noqa: E402

TOOL = os.environ["CAMPOTIPO_TOOL"]
ROUNDS = int(os.environ.get("CAMPOTIPO_ROUNDS", "60"))
decimal.getcontext().prec = 100


def types_of_the_tool():
    """Names of the field types with their bytes and keys, as the command lists them."""
    table = subprocess.run([TOOL, "types"], capture_output=True, check=True, text=True).stdout
    lines = table.split("\n\n")[0].split("\n")
    begins = [match.start() for match in re.finditer(r"\S+(?: \S+)*", lines[0])]
    types = {}
    for line in filter(None, lines[1:]):
        cells = [line[a:b].strip() for a, b in zip(begins, begins[1:] + [None])]
        size = re.search(r"\d+", line[begins[1]:begins[3]])
        types[cells[0]] = (int(size.group()) if size else 0, cells[-1])
    types.pop("fill", None)
    return types


TYPES = types_of_the_tool()


class File:
    """A random layout, and a file of it with valid and invalid values."""

    def __init__(self, seed, folder):
        self.random = random.Random(seed)
        self.columns = None
        while self.columns is None:
            self.draw()
        count = self.random.choice([0, 1, 3, 40])
        kinds = self.random.choices(self.layout.kinds, k=count)
        tame = self.random.choice([0.9, 1])
        self.records = [(kind, self.layout.record(kind, tame)) for kind in kinds]
        self.content = self.layout.file(self.records)
        self.path = os.path.join(folder, "records")
        self.toml_path = os.path.join(folder, "layout.toml")
        with open(self.path, "wb") as file:
            file.write(self.content)
        with open(self.toml_path, "w", encoding="utf-8") as file:
            file.write(self.toml)

    def draw(self):
        """A layout; some names are refused, of which other tests tell."""
        self.layout = RandomLayout(self.random, TYPES, self.random.choice([4, 0, 18]))
        # One way to write a date, so that its text tells the day.
        self.toml = re.sub(r"(?m)^format = .*\n", "", self.layout.toml)
        try:
            self.columns = c_face.Layout(self.toml)
        except c_face.Refused as refused:
            assert "does not begin with" in str(refused)

    def dumped(self):
        """The values of each record in order, as the rows say them, with the kind."""
        out = subprocess.run([TOOL, "dump", "--format", "ndjson", self.toml_path, self.path],
                             capture_output=True, check=True).stdout.decode(errors="replace")
        rows = []
        for line in filter(None, out.split("\n")):
            row = json.loads(line, parse_int=str, parse_float=str)
            kind = row.pop("record") if len(self.layout.kinds) > 1 else self.layout.kinds[0].name
            rows.append((kind, flatten(row)))
        return rows

    def shares(self, kind, at):
        """Whether a field stands in a column with others."""
        leaves = next(each.leaves for each in self.layout.kinds if each.name == kind)
        return [leaf.column for leaf in leaves].count(leaves[at].column) > 1

    def kinds(self):
        return [kind.name for kind in self.layout.kinds]


def flatten(node):
    if not isinstance(node, (dict, list)):
        return [node]
    inner = node.values() if isinstance(node, dict) else node
    return [value for each in inner for value in flatten(each)]


def expected(text, kind):
    """The value of a column whose row says `text`."""
    if text is None:
        return None
    if pyarrow.types.is_integer(kind):
        return int(text)
    if pyarrow.types.is_boolean(kind):
        return {"0": False, "1": True}[text]
    if pyarrow.types.is_decimal(kind):
        return decimal.Decimal(text)
    if pyarrow.types.is_date(kind):
        day, month, year = (int(part) for part in text.split("/"))
        if len(text) == 8:
            year += 2000 if year < 80 else 1900
        return datetime.date(year, month, day)
    if pyarrow.types.is_time(kind):
        return datetime.time(*(int(part) for part in re.findall(r"\d+", text)))
    return text


def exact(value):
    """A decimal with its digits behind the point, which == does not look at."""
    return str(value) if isinstance(value, decimal.Decimal) else value


@pytest.fixture(params=range(ROUNDS))
def file(request, tmp_path):
    return File(request.param, tmp_path)


def test_columns_say_what_rows_say(file):
    rows = file.dumped()
    for kind in file.kinds():
        stream = file.columns.stream(file.content, kind=kind, faults="null", file="a", wide="string")
        table = stream.read_all()
        table.validate(full=True)
        assert table.column_names[:2] == ["_record", "_file"]
        assert table.column_names[-1] == "_fault"
        numbers = [i + 1 for i, (name, _) in enumerate(rows) if name == kind]
        assert table["_record"].to_pylist() == numbers
        names = table.column_names[2:-1]
        faults = [set((text or "").split(",")) - {""} for text in table["_fault"].to_pylist()]
        for at, name in enumerate(names):
            column = table[name]
            for row, value in enumerate(column.to_pylist()):
                text = rows[numbers[row] - 1][1][at]
                if name in faults[row]:
                    assert value is None
                elif text is None and file.shares(kind, at):
                    # A row leaves out what means nothing in all fields of its column.
                    assert str(value).strip("0.:") in ("", "None", "False")
                else:
                    assert exact(value) == exact(expected(text, column.type)), (name, row)


def test_a_fault_ends_the_stream_with_its_place(file):
    for kind in file.kinds():
        table = file.columns.stream(file.content, kind=kind, faults="null").read_all()
        first = next((n for n, f in zip(table["_record"].to_pylist(), table["_fault"].to_pylist())
                      if f is not None), None)
        stream = file.columns.stream(file.content, kind=kind)
        if first is None:
            assert stream.read_all().num_rows == table.num_rows
            continue
        with pytest.raises(pyarrow.ArrowInvalid, match=r"record \d+, byte \d+: field "):
            stream.read_all()


def test_wide_numbers_in_each_form(file):
    for kind in file.kinds():
        texts = file.columns.stream(file.content, kind=kind, faults="null").read_all()
        wide = file.columns.stream(file.content, kind=kind, faults="null", wide="decimal256").read_all()
        wide.validate(full=True)
        for name in wide.column_names:
            if not pyarrow.types.is_decimal256(wide[name].type):
                continue
            for text, value in zip(texts[name].to_pylist(), wide[name].to_pylist()):
                assert (text is None) == (value is None)
                if text is not None:
                    assert str(decimal.Decimal(text)) == str(value)
        try:
            narrow = file.columns.stream(file.content, kind=kind, faults="null", wide="decimal128")
        except c_face.Refused as refused:
            assert "decimal128 holds at most 38" in str(refused)
            continue
        narrow = narrow.read_all()
        narrow.validate(full=True)
        for name in narrow.column_names:
            kind_of = narrow[name].type
            if not pyarrow.types.is_decimal256(wide[name].type):
                continue
            assert pyarrow.types.is_decimal128(kind_of)
            for full, value, fault in zip(wide[name].to_pylist(), narrow[name].to_pylist(),
                                          narrow["_fault"].to_pylist()):
                if value is None:
                    assert name in fault.split(",")
                    assert full is None or full.scaleb(kind_of.scale) >= 10 ** 38
                else:
                    assert str(full) == str(value)


def test_splits_give_each_record_once(file):
    kind = file.kinds()[0]
    whole = file.columns.stream(file.content, kind=kind, faults="null", skip=True).read_all()
    for wanted in (1, 2, 3, 7, 100):
        parts = file.columns.splits(file.content, wanted)
        assert len(parts) <= wanted
        tables = [file.columns.stream(file.content, kind=kind, faults="null", part=part, skip=True)
                  .read_all() for part in parts]
        if tables:
            assert pyarrow.concat_tables(tables).equals(whole)
        else:
            assert whole.num_rows == 0


def test_batches_of_any_size_are_the_same(file):
    kind = file.kinds()[0]
    whole = file.columns.stream(file.content, kind=kind, faults="null").read_all()
    for rows in (1, 7, 64):
        stream = file.columns.stream(file.content, kind=kind, faults="null", batch_rows=rows)
        batches = list(stream)
        assert all(batch.num_rows <= rows for batch in batches)
        again = pyarrow.Table.from_batches(batches, stream.schema)
        assert again.combine_chunks().equals(whole.combine_chunks())


def test_fields_that_are_named_come_in_that_order(file):
    kind = file.kinds()[0]
    whole = file.columns.stream(file.content, kind=kind, faults="null").read_all()
    names = file.random.sample(whole.column_names, min(4, whole.num_columns))
    some = file.columns.stream(file.content, kind=kind, fields=names, faults="null").read_all()
    assert some.column_names == names
    for name in names:
        # What is not asked for is not decoded, so its faults are not told.
        if name != "_fault":
            assert some[name].equals(whole[name])


def test_engines_read_the_same(file):
    kind = file.kinds()[0]

    def stream():
        return file.columns.stream(file.content, kind=kind, faults="null", times="ns")

    table = stream().read_all()
    frame = polars.DataFrame(stream())
    assert [tuple(map(exact, row)) for row in frame.rows()] == \
        [tuple(map(exact, row.values())) for row in table.to_pylist()]
    relation = stream()
    found = duckdb.connect().execute("select * from relation").fetchall()
    assert [tuple(map(exact, row)) for row in found] == \
        [tuple(map(exact, row.values())) for row in table.to_pylist()]
