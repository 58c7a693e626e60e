"""read_campotipo over random layouts of every kind of field, held against the command's rows."""

import os

import duckdb
import pytest
from conftest import connect
from random_files import File, exact, expected, literal, quoted

ROUNDS = int(os.environ.get("CAMPOTIPO_ROUNDS", "40"))


@pytest.fixture(params=range(ROUNDS))
def file(request, tmp_path):
    return File(request.param, tmp_path)


def described(sql, call):
    return [(name, kind) for name, kind, *_ in sql(f"describe from {call}")]


def test_columns_say_what_rows_say(sql, file):
    for kind in file.kinds:
        call = file.call(kind, faults="null")
        columns = described(sql, call)
        assert columns[0] == ("_record", "BIGINT") and columns[-1] == ("_fault", "VARCHAR")
        found, rows = sql(f"from {call}"), file.rows(kind)
        assert [row[0] for row in found] == [number for number, _ in rows]
        fields = [name for name, *_ in sql(
            f"select field from campotipo_layout({literal(file.toml)}) "
            "where coalesce(kind = ?, true)", kind)]
        for row, (_, texts) in zip(found, rows):
            faults = set((row[-1] or "").split(",")) - {""}
            assert faults <= set(fields)
            for (name, sql_type), field, value, text in zip(columns[1:-1], fields, row[1:], texts):
                if text is None and value is not None and file.shares:
                    # Rows have null where none of the fields of a column has content.
                    assert not str(value).strip("0.:-"), (name, row)
                    continue
                wanted = None if field in faults else expected(text, sql_type)
                assert exact(value) == exact(wanted), (name, row)


def test_projected_columns_are_the_same(sql, file):
    for kind in file.kinds:
        call = file.call(kind, faults="null")
        names = [name for name, _ in described(sql, call)]
        whole = sql(f"from {call}")
        for _ in range(3):
            some = file.random.sample(names, file.random.randint(1, min(4, len(names))))
            found = sql(f"select {', '.join(map(quoted, some))} from {call}")
            at = [names.index(name) for name in some]
            assert found == [tuple(row[i] for i in at) for row in whole]
        assert sql(f"select count(*) from {call}") == [(len(whole),)]


def test_a_fault_ends_the_query_with_its_place(sql, file):
    for kind in file.kinds:
        faulty = sql(f"select _record, _fault from {file.call(kind, faults='null')} "
                     "where _fault is not null order by 1")
        if not faulty:
            assert sql(f"from {file.call(kind)}") == [
                row[:-1] for row in sql(f"from {file.call(kind, faults='null')}")]
            continue
        numbers = {str(number) for number, _ in faulty}
        with pytest.raises(duckdb.Error, match=r"records: record \d+, byte \d+: field ") as told:
            sql(f"from {file.call(kind)}")
        assert str(told.value).split("record ")[1].split(",")[0] in numbers


def test_ranges_count_records_of_all_kinds(sql, file):
    for kind in file.kinds:
        whole = sql(f"from {file.call(kind, faults='null')}")
        for first, count in ((1, 1), (2, 5), (7, 100), (40, 1), (41, 1), (1000, 3)):
            part = sql(f"from {file.call(kind, faults='null', first=first, count=count)}")
            assert part == [row for row in whole if first <= row[0] < first + count]


def test_files_several_times_are_rows_several_times(sql, file):
    kind = file.kinds[0]
    whole = sql(f"from {file.call(kind, faults='null')}")
    call = file.call(kind, faults="null").replace(literal(file.path), f"[{literal(file.path)}] || "
                                                  f"[{literal(file.path)}]", 1)
    assert sql(f"from {call}") == 2 * [(row[0], file.path) + row[1:] for row in whole]


@pytest.mark.parametrize("seed", range(12))
def test_many_threads_give_each_record_once(seed, tmp_path):
    """Files of several parts, some of which end inside a chunk, in any number of threads."""
    file = File(seed, tmp_path, count=60000 if seed % 3 else 200000)
    kind = file.kinds[-1]
    one = connect(threads=1).execute(
        f"select _record, hash(t) from {file.call(kind, faults='null')} t").fetchall()
    assert [number for number, _ in one] == sorted(number for number, _ in one)
    kinds = [record.name if record.name else kind for record, _ in file.records]
    assert [number for number, _ in one] == [n for n, name in enumerate(kinds, 1) if name == kind]
    for threads in (2, 4):
        several = connect(threads=threads)
        sums = several.execute(
            f"select count(*), sum(_record), bit_xor(hash(t)) from {file.call(kind, faults='null')} t"
        ).fetchall()
        count = several.execute(f"select count(*) from {file.call(kind)}").fetchall()
        xor = 0
        for _, value in one:
            xor ^= value
        assert sums == [(len(one), sum(n for n, _ in one) if one else None, xor if one else None)]
        assert count == [(len(one),)]


def test_wide_numbers_as_decimals(sql, file):
    for kind in file.kinds:
        try:
            columns = described(sql, file.call(kind, faults="null", wide="decimal128"))
        except duckdb.Error as error:
            assert "more than 38 decimals" in str(error)
            continue
        texts = sql(f"from {file.call(kind, faults='null')}")
        found = sql(f"from {file.call(kind, faults='null', wide='decimal128')}")
        for row, text in zip(found, texts):
            for (name, sql_type), value, known in zip(columns[1:-1], row[1:], text[1:]):
                if value is None:
                    # Null, at fault, or a number of more digits than the column holds.
                    assert known is None or len(known.replace(".", "").lstrip("0")) > 38
                    assert known is None or name in row[-1]
                else:
                    assert exact(value) == (exact(known) if sql_type.startswith("DECIMAL") else known)
