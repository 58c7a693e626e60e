"""The Python package over random layouts and files, held against the rows that the command writes and
the columns that the C face gives."""

import bz2
import datetime
import decimal
import gzip
import io
import mmap
import pathlib
import pickle

import pyarrow
import pytest
from streams_test import ROUNDS, File, exact, expected

import campotipo

fsspec = pytest.importorskip("fsspec")


@pytest.fixture(params=range(ROUNDS))
def file(request, tmp_path):
    return File(request.param, tmp_path)


def opened(file, kind, source=None, **options):
    return campotipo.open(file.toml_path, file.path if source is None else source, kind=kind,
                          faults="null", skip=True, **options)


def test_columns_are_those_of_the_c_face(file):
    for kind in file.kinds():
        wanted = file.columns.stream(file.content, kind=kind, faults="null", skip=True).read_all()
        records = opened(file, kind)
        table = pyarrow.table(records)
        table.validate(full=True)
        assert table.schema.equals(pyarrow.schema(records))
        assert table.equals(wanted)
        assert len(records) == wanted.num_rows
        assert pyarrow.table(records).equals(wanted)  # again


def test_every_way_to_give_the_bytes(file, tmp_path):
    kind = file.kinds()[-1]
    wanted = pyarrow.table(opened(file, kind))
    zipped = tmp_path / "records.gz"
    zipped.write_bytes(gzip.compress(file.content))
    ways = [pathlib.Path(file.path), file.content, bytearray(file.content), str(zipped),
            memoryview(file.content), io.BytesIO(file.content), open(file.path, "rb"),
            open(file.path, "rb", buffering=0), bz2.open(io.BytesIO(bz2.compress(file.content))),
            fsspec.filesystem("file").open(file.path), fsspec.open(file.path),
            fsspec.open(zipped, compression="gzip")]
    if file.content:
        with open(file.path, "rb") as mapped:
            ways.append(mmap.mmap(mapped.fileno(), 0, access=mmap.ACCESS_READ))
    for way in ways:
        records = opened(file, kind, way)
        for _ in range(2):
            assert pyarrow.table(records).equals(wanted), way
        assert len(records) == wanted.num_rows
        if hasattr(way, "seek"):
            way.seek(0)  # a file is read from where it stands
        part = opened(file, kind, way, first=2, count=5)
        numbers = [n for n in wanted["_record"].to_pylist() if 2 <= n < 7]
        assert pyarrow.table(part)["_record"].to_pylist() == numbers, way


def test_rows_are_exact_values(file):
    dumped = file.dumped()
    for kind in file.kinds():
        numbers = [i + 1 for i, (name, _) in enumerate(dumped) if name == kind]
        rows = list(opened(file, kind, wide="decimal256"))
        types = pyarrow.schema(opened(file, kind, wide="decimal256"))
        assert [row["_record"] for row in rows] == numbers
        for row, number in zip(rows, numbers):
            faults = (row.pop("_fault") or "").split(",")
            del row["_record"]
            for (name, value), text in zip(row.items(), dumped[number - 1][1]):
                if name in faults:
                    assert value is None
                else:
                    assert exact(value) == exact(expected(text, types.field(name).type)), name
        # What columns show as text is a number in rows.
        for one, other in zip(rows, opened(file, kind)):
            assert {name: other[name] for name in one} == one


def test_splits_hold_each_record_once_and_travel(file):
    if "line_end" in file.toml and file.content.count(b"\n") > len(file.records):
        return  # a value that is the end of a line: parts of such a file are refused
    kind = file.kinds()[0]
    # Lines of unlike length are not counted past the end of the file in parts.
    some = () if "line_end" in file.toml else ({"first": 2, "count": 9},)
    for options in ({}, {"first": 3}, *some, {"count": 0}):
        whole = pyarrow.table(opened(file, kind, **options))
        for wanted in (1, 2, 3, 50):
            parts = pickle.loads(pickle.dumps(opened(file, kind, **options).splits(wanted)))
            assert 1 <= len(parts) <= wanted
            tables = [pyarrow.table(part) for part in parts]
            assert pyarrow.concat_tables(tables).equals(whole), (options, wanted)


def test_batches_are_shared_memory(file):
    kind = file.kinds()[0]
    whole = pyarrow.table(opened(file, kind))
    batches = list(opened(file, kind).batches(7))
    assert all(len(batch) <= 7 for batch in batches)
    first = [pyarrow.record_batch(batch) for batch in batches]
    again = [pyarrow.record_batch(batch) for batch in batches]
    del batches
    assert pyarrow.Table.from_batches(first, whole.schema).combine_chunks().equals(
        whole.combine_chunks())
    for one, other in zip(first, again):
        other.validate(full=True)
        assert [column.buffers()[1].address for column in one.columns] == \
            [column.buffers()[1].address for column in other.columns]


def test_several_files_are_one(file, tmp_path):
    kind = file.kinds()[0]
    folder = tmp_path / "many"
    folder.mkdir()
    for name in ("b.reg", "a.reg", "c.reg"):
        (folder / name).write_bytes(file.content)
    one = pyarrow.table(opened(file, kind))
    for way in (folder, str(folder), str(folder / "*.reg"), sorted(folder.iterdir())):
        table = pyarrow.table(opened(file, kind, way))
        assert table.column_names[:2] == ["_record", "_file"]
        names = [str(folder / name) for name in ("a.reg", "b.reg", "c.reg")]
        assert table["_file"].to_pylist() == [name for name in names for _ in range(one.num_rows)]
        for column in one.column_names:
            assert table[column].to_pylist() == one[column].to_pylist() * 3
        for wanted in (1, 2, 3, 7):
            tables = [pyarrow.table(part) for part in opened(file, kind, way).splits(wanted)]
            assert len(tables) <= wanted
            assert pyarrow.concat_tables(tables).equals(table)


def test_a_fault_raises_with_its_place(file):
    for kind in file.kinds():
        faults = pyarrow.table(opened(file, kind))
        rows = campotipo.open(file.toml_path, file.path, kind=kind, skip=True)
        if faults["_fault"].null_count == faults.num_rows:
            assert len(list(rows)) == faults.num_rows
            continue
        with pytest.raises(campotipo.RecordError) as caught:
            list(rows)
        told = caught.value
        told_faults = dict(zip(faults["_record"].to_pylist(), faults["_fault"].to_pylist()))
        assert told.field in told_faults[told.record].split(",")
        assert told.kind == rows.kind
        assert told.byte < len(file.content)
        assert isinstance(told, ValueError)
        same = pickle.loads(pickle.dumps(told))
        assert (str(same), same.record, same.field) == (str(told), told.record, told.field)


def test_types_of_rows():
    toml = ('name = "x"\n[[field]]\nname = "n"\ntype = "BINQ21"\ndecimals = 3\n'
            '[[field]]\nname = "d"\ntype = "DATAC"\n[[field]]\nname = "h"\ntype = "HHMMSS"\n'
            '[[field]]\nname = "b"\ntype = "ZBTFIELD"\nbits = [1]\n')
    content = campotipo.zbinario_salva(12345, 21) + \
        campotipo.datac_salva(datetime.date(2024, 2, 29)) + bytes([23, 59, 58]) + b"\x01"
    (row,) = campotipo.open(toml, content)
    assert exact(row["n"]) == exact(decimal.Decimal("12.345"))
    assert row["d"] == datetime.date(2024, 2, 29)
    assert row["h"] == datetime.time(23, 59, 58)
    assert row["_record"] == 1
