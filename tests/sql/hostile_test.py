"""What may happen to a query from outside: an answer or an error, and the connection lives on."""

import gzip
import os
import random
import shutil
import threading
import time

import duckdb
import pytest
from conftest import connect
from random_files import File, literal


@pytest.fixture
def big(banks, tmp_path):
    """A file of several parts, 48 MB, with its layout beside it."""
    with open(banks / "bancos.reg", "rb") as file:
        content = file.read()
    with open(tmp_path / "big.reg", "wb") as file:
        for _ in range(325):
            file.write(content)
    shutil.copy(banks / "bancos.toml", tmp_path / "big.toml")
    return tmp_path / "big.reg"


def works(connection, banks):
    path = literal(str(banks / "bancos.reg"))
    return connection.execute(f"select count(*) from {path}").fetchall() == [(513,)]


def test_queries_at_the_same_time(banks, big):
    connection = connect(threads=4)
    queries = [
        f"select count(*), sum(_record) from {literal(str(big))}",
        f"select tipo, count(*), min(nome) from {literal(str(big))} group by all order by all",
        f"select bit_xor(hash(t)) from {literal(str(big))} t",
        f"select max(inicio_pix), count(hora_pix) from {literal(str(banks / 'bancos.reg'))}",
        f"select field, sql from campotipo_layout({literal(str(banks / 'bancos.toml'))})",
        "select sum(campotipo_valida('CPF', lpad(i::varchar, 11, '0'))::integer) from range(20000) t(i)",
    ]
    wanted = [connection.execute(query).fetchall() for query in queries]
    wrong = []

    def ask(seed):
        own, some = connection.cursor(), random.Random(seed)
        for _ in range(8):
            at = some.randrange(len(queries))
            if own.execute(queries[at]).fetchall() != wanted[at]:
                wrong.append(queries[at])

    threads = [threading.Thread(target=ask, args=(seed,)) for seed in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


def test_a_query_that_is_cancelled(banks, big):
    connection = connect(threads=2)
    files = [str(big)] * 400
    for query in ("select sum(length(nome)) + count(cnpj)", "select count(distinct nome || _record)"):
        ended = []

        def ask(text=query, ended=ended):
            try:
                connection.execute(f"{text} from read_campotipo({files})")
                ended.append("an answer")
            except duckdb.InterruptException:
                ended.append("interrupted")

        thread = threading.Thread(target=ask)
        thread.start()
        while not ended:
            time.sleep(0.05)
            connection.interrupt()
        thread.join()
        assert ended == ["interrupted"]
        assert works(connection, banks)


def test_rows_that_nobody_fetches(banks, big):
    for _ in range(20):
        connection = connect(threads=4)
        connection.execute(f"from {literal(str(big))}").fetchone()
        connection.close()
    connection = connect(threads=4)
    assert len(connection.execute(f"select nome from {literal(str(big))} limit 3").fetchall()) == 3
    assert works(connection, banks)


def test_a_file_that_vanishes_or_changes_between_planning_and_reading(sql, banks, big):
    path = str(big)
    size = os.path.getsize(path)
    layout = literal(str(banks / "bancos.toml"))
    sql(f"prepare total as select count(*), count(nome) from read_campotipo({literal(path)}, "
        f"layout := {layout})")
    assert sql("execute total") == [(size // 288, size // 288)]
    os.truncate(path, 288 * 1000)
    assert sql("execute total") == [(1000, 1000)]
    os.truncate(path, 288 * 1000 + 5)
    with pytest.raises(duckdb.Error, match="record 1001, byte 288000: incomplete record"):
        sql("execute total")
    os.truncate(path, 0)
    assert sql("execute total") == [(0, 0)]
    os.remove(path)
    with pytest.raises(duckdb.Error, match="cannot be opened: No such file"):
        sql("execute total")
    os.mkdir(path)
    with pytest.raises(duckdb.Error, match="is a directory|no file is there"):
        sql("execute total")
    assert works(sql.connection, banks)


def test_a_file_that_changes_while_it_is_read(banks, big):
    """Truncated, grown, overwritten and replaced all the while; each query has an answer or an error."""
    connection = connect(threads=4)
    content = big.read_bytes()
    done = threading.Event()

    def change():
        some = random.Random(1)
        while not done.is_set():
            what = some.randrange(5)
            if what == 0:
                os.truncate(big, some.randrange(len(content)))
            elif what == 1:
                with open(big, "r+b") as file:
                    file.seek(some.randrange(len(content)))
                    file.write(some.randbytes(4096))
            elif what == 2:
                other = big.with_name("other")
                other.write_bytes(content[:some.randrange(len(content)) // 288 * 288])
                os.replace(other, big)
            elif what == 3:
                big.unlink()
                time.sleep(0.002)
                big.write_bytes(content)
            else:
                big.write_bytes(content)

    changer = threading.Thread(target=change)
    changer.start()
    answers = errors = 0
    end = time.monotonic() + 8
    try:
        while time.monotonic() < end:
            try:
                connection.execute(f"select count(*), count(nome), max(inicio_pix), max(_record) from "
                                   f"read_campotipo({literal(str(big))}, faults := 'null')").fetchall()
                answers += 1
            except duckdb.Error as error:
                assert "big.reg" in str(error)
                errors += 1
    finally:
        done.set()
        changer.join()
    assert answers and errors
    assert works(connection, banks)


def test_ten_thousand_files(sql, banks, tmp_path):
    content = (banks / "bancos.reg").read_bytes()
    for i in range(10000):
        (tmp_path / f"{i:05}.reg").write_bytes(content[288 * (i % 500):288 * (i % 500 + 1 + i % 3)])
    layout = f"layout := {literal(str(banks / 'bancos.toml'))}"
    call = f"read_campotipo({literal(str(tmp_path / '*.reg'))}, {layout})"
    rows = sum(1 + i % 3 for i in range(10000))
    assert sql(f"select count(*), count(distinct _file), max(_record) from {call}") == [
        (rows, 10000, 3)]
    (tmp_path / "05000.reg").write_bytes(content[:300])
    with pytest.raises(duckdb.Error, match="05000.reg: record 2, byte 288: incomplete record"):
        sql(f"select count(cnpj) from {call}")
    skipped = call.replace(layout, layout + ", skip := true")
    assert sql(f"select count(*) from {skipped}") == [(rows - 5000 % 3,)]


def test_a_compressed_file_is_refused_in_one_line(sql, banks, tmp_path):
    path = tmp_path / "bancos.reg.gz"
    path.write_bytes(gzip.compress((banks / "bancos.reg").read_bytes()))
    shutil.copy(banks / "bancos.toml", tmp_path / "bancos.reg.toml")
    with pytest.raises(duckdb.Error, match="bancos.reg.gz: is compressed by gzip") as told:
        sql(f"from {literal(str(path))}")
    assert len(str(told.value).split("\n\nLINE")[0].splitlines()) == 1


def test_a_pipe_is_read_once(sql, banks, tmp_path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    content = (banks / "bancos.reg").read_bytes()
    writer = threading.Thread(target=lambda: pipe.write_bytes(20 * content))
    writer.start()
    layout = literal(str(banks / "bancos.toml"))
    assert sql(f"select count(*), count(cnpj) from read_campotipo({literal(str(pipe))}, "
               f"layout := {layout})") == [(20 * 513, 20 * 513)]
    writer.join()


def test_any_bytes_are_records_or_an_error(sql, tmp_path):
    """Random bytes in the place of a file, and damaged files, of random layouts."""
    for seed in range(40):
        file = File(seed, tmp_path)
        some = random.Random(seed)
        content = bytearray(open(file.path, "rb").read())
        if seed % 2 or not content:
            content = bytearray(some.randbytes(some.randrange(5000)))
        else:
            for _ in range(3):
                content[some.randrange(len(content))] = some.randrange(256)
            del content[some.randrange(len(content) + 1):]
        with open(file.path, "wb") as out:
            out.write(content)
        for kind in file.kinds:
            for options in ({}, {"faults": "null"}, {"faults": "null", "skip": True},
                            {"wide": "decimal128", "skip": True}):
                try:
                    sql(f"from {file.call(kind, **options)}")
                except duckdb.Error as error:
                    assert "records: " in str(error) or "decimals" in str(error)


def test_any_text_is_a_layout_or_an_error(sql, banks):
    path = literal(str(banks / "bancos.reg"))
    text = (banks / "bancos.toml").read_text()
    some = random.Random(7)
    for _ in range(200):
        begin = some.randrange(len(text))
        broken = text[:begin] + some.choice(["", "]", "=", "9" * 30, "é"]) + \
            text[begin + some.randrange(20):] + "\n"
        try:
            sql(f"select * from read_campotipo({path}, layout := ?)", broken)
        except duckdb.Error as error:
            assert "layout:" in str(error) or "bancos.reg: " in str(error)
