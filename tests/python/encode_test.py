"""Columns into records, held against what the command makes of the same values as texts."""

import csv
import datetime
import decimal
import io
import os
import random
import re
import subprocess

import pyarrow
import pyarrow.compute
import pytest

import c_face
from streams_test import ROUNDS, TOOL, File

HOSTILE = ["", " ", "0", "-0", "-1", "7", "007", "1.5", "1.25", "0.001", "99999999999", "9" * 19,
           "9" * 38, "9" * 50, "9" * 60, "-" + "9" * 18, "1.", ".5", "1e3", "+1", "1,5", "abc", "ABC",
           "ção", "a\0b", "\u20ac", "x" * 80, "31/12/2024", "29/02/2100", "31/02/2024", "99/99/9999",
           "31/12/24", "14:35", "14:35:07", "24:00", "00112233-4455-6677-8899-aabbccddeeff",
           "12%", "%", '"', "a,b", "a\r\nb", "true", "18446744073709551616"]


class Encodable(File):
    """Dates are stored in one encoding, so that a day tells the bytes; no columns are shared."""

    def __init__(self, seed, folder):
        super().__init__(seed, folder)
        toml = re.sub(r"(?m)^(column|join) = .*\n", "", self.toml)
        one = self.random.choice(["packed", "decimal"])
        toml = toml.replace('encoding = "both"\n', "")
        toml = re.sub(r'type = "DATAC"\n(?!encoding)', f'type = "DATAC"\nencoding = "{one}"\n', toml)
        self.toml = toml
        with open(self.toml_path, "w", encoding="utf-8") as file:
            file.write(toml)
        self.columns = c_face.Layout(toml)

    def load(self, text):
        """The file and the losses that the command makes of CSV."""
        path, out = self.path + ".csv", self.path + ".out"
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(text)
        done = subprocess.run([TOOL, "load", self.toml_path, path, "--lossy", "--all", "-o", out],
                              capture_output=True, check=True, text=True)
        losses = re.findall(r"record (\d+): field (\S+): (\".*\") (.*)", done.stderr)
        with open(out, "rb") as file:
            return file.read(), [(int(record), what) for record, _, _, what in losses]

    def dump(self, content):
        with open(self.path, "wb") as file:
            file.write(content)
        return subprocess.run([TOOL, "dump", "--format", "csv", self.toml_path, self.path],
                              capture_output=True).stdout.decode()

    def names(self, kind):
        return self.columns.stream(b"", kind=kind).schema.names[1:]

    def telling(self):
        """How many fields tell the kind: the first ones of each."""
        return len(self.layout.tells or []) if len(self.layout.kinds) > 1 else 0

    def is_rest(self, kind):
        """Whether records are of the kind because they are of no other."""
        return self.telling() and not next(k for k in self.layout.kinds if k.name == kind).when

    def header(self):
        return next(csv.reader(io.StringIO(self.dump(b""))))


@pytest.fixture(params=range(ROUNDS))
def file(request, tmp_path):
    return Encodable(request.param, tmp_path)


def whole(table):
    """The rows without a fault."""
    return table.filter(pyarrow.compute.is_null(table["_fault"])) if table.num_rows else table


def test_every_record_comes_back(file):
    content, _ = file.load(file.dump(file.content))
    for kind in file.kinds():
        table = whole(file.columns.stream(content, kind=kind, faults="null", file="a").read_all())
        numbers = table["_record"].to_pylist()
        made, lost = file.columns.encode(kind, table)
        assert lost == []
        assert made == b"".join(file.columns.records(content, kind, numbers))


def wider(values, random):
    """The same values in another type of Arrow that holds them."""
    kind = values.type
    if pyarrow.types.is_integer(kind):
        numbers = [value for value in values.to_pylist() if value is not None]
        fits = [other for other, least, most in [
            (pyarrow.int8(), -2 ** 7, 2 ** 7), (pyarrow.uint8(), 0, 2 ** 8),
            (pyarrow.int16(), -2 ** 15, 2 ** 15), (pyarrow.uint16(), 0, 2 ** 16),
            (pyarrow.uint32(), 0, 2 ** 32), (pyarrow.int64(), -2 ** 63, 2 ** 63),
            (pyarrow.uint64(), 0, 2 ** 64)]
            if all(least <= number < most for number in numbers)]
        fits += [pyarrow.decimal128(38, 5), pyarrow.decimal256(60, 0)]
        return values.cast(random.choice(fits))
    if pyarrow.types.is_decimal(kind):
        return values.cast(pyarrow.decimal256(70, kind.scale + random.choice([0, 3])))
    if pyarrow.types.is_boolean(kind):
        return values.cast(random.choice([pyarrow.uint8(), pyarrow.int64()]))
    if pyarrow.types.is_date(kind):
        others = [pyarrow.date64(), pyarrow.timestamp("s"), pyarrow.timestamp("ms"),
                  pyarrow.timestamp("us")]
        return values.cast(random.choice(others))
    if pyarrow.types.is_time(kind):
        return values.cast(random.choice([pyarrow.time32("ms"), pyarrow.time64("us"),
                                          pyarrow.time64("ns")]))
    return values.cast(random.choice([pyarrow.large_string(), pyarrow.string_view()]))


def test_other_types_that_hold_the_values_give_the_same(file):
    content, _ = file.load(file.dump(file.content))
    for kind in file.kinds():
        table = whole(file.columns.stream(content, kind=kind, faults="null", wide="string").read_all())
        table = table.drop_columns(["_record", "_fault"]).combine_chunks()
        made, lost = file.columns.encode(kind, table)
        for _ in range(4):
            names = file.random.sample(table.column_names, table.num_columns)
            columns = []
            for name in names:
                values = wider(table[name].combine_chunks(), file.random)
                if file.random.random() < 0.3 and not pyarrow.types.is_string_view(values.type):
                    values = values.dictionary_encode()
                columns.append(values)
            other = pyarrow.table(columns, names=names)
            assert file.columns.encode(kind, other) == (made, lost)
            if table.num_rows > 2:
                first = file.random.randint(1, table.num_rows - 1)
                parts = [file.columns.encode(kind, part)[0]
                         for part in (other.slice(0, first), other.slice(first))]
                assert b"".join(parts) == made


def same_as_texts(file, kind, table, texts):
    """Columns and texts of the same values: the same records, and the same is lost."""
    rows = io.StringIO()
    writer = csv.writer(rows, lineterminator="\n")
    header = file.header()
    several = len(file.kinds()) > 1
    names = [name.replace(".", "_") for name in header]
    writer.writerow(header)
    for row in zip(*texts.values()):
        cells = dict(zip(texts, row))
        writer.writerow([kind if several and i == 0 else cells.get(name, "")
                         for i, name in enumerate(names)])
    loaded, losses = file.load(rows.getvalue())
    made, lost = file.columns.encode(kind, table, lossy=True)
    assert sorted((loss.record, loss.what) for loss in lost) == sorted(losses)
    if "line_end" in file.toml and b"\n" in made:
        return  # bytes of a field that end a line: the file does not read as it was written
    numbers = range(1, table.num_rows + 1)
    assert made == b"".join(file.columns.records(loaded, kind, numbers))


def test_texts_are_stored_as_load_stores_them(file):
    for kind in file.kinds():
        names = file.names(kind)
        count = 25
        texts = {name: file.random.choices(HOSTILE, k=count) for name in names}
        if file.is_rest(kind):
            continue
        for name in names[:file.telling()]:
            texts[name] = [""] * count
        if len(texts) == 1:
            texts[names[0]] = [text or "0" for text in texts[names[0]]]
        try:
            same_as_texts(file, kind, pyarrow.table(texts), texts)
        except subprocess.CalledProcessError as error:
            assert "does not tell the kind" in error.stderr


def test_numbers_are_stored_as_their_texts(file):
    for kind in file.kinds():
        schema = file.columns.stream(b"", kind=kind).schema
        names = [name for name in schema.names[1:]
                 if not pyarrow.types.is_date(schema.field(name).type) and
                 not pyarrow.types.is_time(schema.field(name).type)]
        if file.is_rest(kind):
            continue
        names = [name for name in names if name not in file.names(kind)[:file.telling()]]
        columns, texts = [], {}
        for name in names:
            scale = file.random.choice([0, 0, 1, 2, 5, 12])
            digits = file.random.choice([3, 9, 18, 20, 38, 60])
            numbers = [decimal.Decimal(file.random.randint(-10 ** d, 10 ** d)).scaleb(-scale)
                       for d in file.random.choices(range(1, digits - 1), k=20)]
            numbers = [abs(n) if file.random.random() < 0.7 else n for n in numbers]
            columns.append(pyarrow.array(numbers, pyarrow.decimal128(38, scale) if digits <= 38 else
                                         pyarrow.decimal256(70, scale)))
            texts[name] = [f"{number:.{scale}f}" for number in numbers]
            texts[name] = [re.sub(r"^-(0(\.0*)?)$", r"\1", text) for text in texts[name]]
        if columns:
            try:
                same_as_texts(file, kind, pyarrow.table(columns, names=names), texts)
            except subprocess.CalledProcessError as error:
                assert "does not tell the kind" in error.stderr


DAYS = c_face.Layout("""name = "d"
[[field]]
name = "packed"
type = "DATAC"
encoding = "packed"
[[field]]
name = "decimal"
type = "DATAC"
encoding = "decimal"
[[field]]
name = "short"
type = "DATAC"
encoding = "decimal"
format = "DD/MM/AA"
[[field]]
name = "both"
type = "DATAC"
[[field]]
name = "minute"
type = "HORAC"
[[field]]
name = "second"
type = "HHMMSS"
""")


def test_every_day_that_the_field_holds_comes_back():
    first, last = datetime.date(1, 1, 1), datetime.date(9999, 12, 31)
    days = random.Random(1).sample(range(first.toordinal(), last.toordinal() + 1), 20000)
    days += range(datetime.date(1979, 12, 1).toordinal(), datetime.date(2080, 2, 1).toordinal())
    dates = [datetime.date.fromordinal(day) for day in days]
    for name, least, most in (("packed", 1, 4095), ("both", 1, 4095), ("decimal", 1980, 2079),
                              ("short", 1980, 2079)):
        table = pyarrow.table({name: pyarrow.array(dates, pyarrow.date32())})
        made, lost = DAYS.encode("d", table, lossy=True)
        held = [least <= date.year <= most for date in dates]
        assert [loss.record for loss in lost] == [i + 1 for i, holds in enumerate(held) if not holds]
        back = DAYS.stream(made, fields=[name]).read_all()[name].to_pylist()
        assert back == [date if holds else None for date, holds in zip(dates, held)]


def test_every_second_of_the_day():
    seconds = list(range(86400))
    table = pyarrow.table({"second": pyarrow.array(seconds, pyarrow.time32("s")),
                           "minute": pyarrow.array([s // 60 * 60 for s in seconds],
                                                   pyarrow.time32("s"))})
    made, lost = DAYS.encode("d", table)
    assert lost == []
    back = DAYS.stream(made, fields=["second", "minute"]).read_all()
    assert back.equals(table)


@pytest.mark.parametrize("name, values, what", [
    ("second", pyarrow.array([1500], pyarrow.time32("ms")), "parts of a second"),
    ("minute", pyarrow.array([61], pyarrow.time32("s")), "is no time of day"),
    ("second", pyarrow.array([86400], pyarrow.int32()).view(pyarrow.time32("s")),
     "is no time of day"),
    ("second", pyarrow.array([-1], pyarrow.int32()).view(pyarrow.time32("s")), "is no time of day"),
    ("packed", pyarrow.array([86401], pyarrow.timestamp("s")), "has a time"),
    ("packed", pyarrow.array([-1], pyarrow.timestamp("us")), "has a time"),
    ("packed", pyarrow.array([-719163], pyarrow.int32()).view(pyarrow.date32()), "is no day"),
    ("packed", pyarrow.array([2 ** 31 - 1], pyarrow.int32()).view(pyarrow.date32()), "is no day"),
])
def test_moments_that_are_refused(name, values, what):
    with pytest.raises(c_face.Refused, match=f"record 1: column {name}: .*{what}") as refused:
        DAYS.encode("d", pyarrow.table({name: values}))
    assert (refused.value.record, refused.value.kind, refused.value.field) == (1, "d", name)
    made, lost = DAYS.encode("d", pyarrow.table({name: values}), lossy=True)
    assert len(lost) == 1
    assert made == DAYS.encode("d", pyarrow.table({name: values.slice(0, 0)}))[0] or len(made) == 17


@pytest.mark.parametrize("table, what", [
    ({"packed": pyarrow.array([1.5])}, "floating number"),
    ({"packed": pyarrow.array([5])}, "int64 is never stored in a field of DATAC"),
    ({"second": pyarrow.array([0], pyarrow.date32())}, "date32 is never stored"),
    ({"packed": pyarrow.array([0], pyarrow.timestamp("s", "UTC"))}, "time zone"),
    ({"packed": pyarrow.array([[1]])}, "is not stored"),
    ({"packet": pyarrow.array([""])}, 'expected "packed"'),
])
def test_tables_that_are_refused(table, what):
    with pytest.raises(c_face.Refused, match=what):
        DAYS.encode("d", pyarrow.table(table))


def test_columns_beside_the_fields_are_passed_over():
    table = pyarrow.table({"_record": [4], "_file": ["x"], "_fault": ["packed"], "extra": [1.5],
                           "second": pyarrow.array([61], pyarrow.time32("s"))})
    made, lost = DAYS.encode("d", table, ignored=["extra"])
    assert lost == [] and made[-3:] == b"\0\1\1"
