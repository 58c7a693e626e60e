"""Times the Python package beside what its users would pick instead, in one process on one core.

python_package.py [RECORDS]: writes a section in Markdown. The answers of all are compared first.
"""

import importlib.metadata
import os
import random
import subprocess
import sys
import tempfile
import threading
import time

os.sched_setaffinity(0, {max(os.sched_getaffinity(0))})
os.environ["POLARS_MAX_THREADS"] = "1"

import brutils  # noqa: E402
import duckdb  # noqa: E402
import pandas  # noqa: E402
import polars  # noqa: E402
import pyarrow  # noqa: E402
import stdnum.br.cpf  # noqa: E402
import validate_docbr  # noqa: E402
from duckdb_sql import write_records  # noqa: E402

import campotipo  # noqa: E402

# Name, from (1), characters, decimals (None: a text, -1: a date) of the columns of COTAHIST.
PRICES = ["abertura", "maximo", "minimo", "medio", "ultimo", "melhor_compra", "melhor_venda"]
COLUMNS = [("registro", 1, 2, None), ("pregao", 3, 8, -1), ("bdi", 11, 2, None), ("codigo", 13, 12, None),
           ("mercado", 25, 3, None), ("nome", 28, 12, None), ("especificacao", 40, 10, None),
           ("prazo", 50, 3, None), ("moeda", 53, 4, None),
           *((name, 57 + 13 * i, 13, 2) for i, name in enumerate(PRICES)),
           ("negocios", 148, 5, 0), ("quantidade", 153, 18, 0), ("volume", 171, 18, 2),
           ("exercicio", 189, 13, 2), ("indicador_correcao", 202, 1, None), ("fator_cotacao", 211, 7, 0),
           ("exercicio_pontos", 218, 13, 6), ("isin", 231, 12, None), ("distribuicao", 243, 3, None)]


def least(work, rounds=7, clock=time.process_time):
    """Processor time, all threads of the process together, which other programs have little say in."""
    times = []
    for _ in range(rounds):
        begin = clock()
        work()
        times.append(clock() - begin)
    return min(times)


def table(head, rows):
    print(f"| {' | '.join(head)} |\n|{'---|' * len(head)}")
    for row in rows:
        print(f"| {' | '.join(row)} |")
    print()


def documents():
    some = random.Random(1)
    numbers = []
    for _ in range(1000):
        nine = f"{some.randrange(10 ** 9):09}"
        for _ in range(2):
            rest = sum(int(d) * w for d, w in zip(nine, range(len(nine) + 1, 1, -1))) % 11
            nine += str(0 if rest < 2 else 11 - rest)
        numbers.append(nine if some.random() < 0.8 else nine[:-1] + str((int(nine[-1]) + 1) % 10))
    peer = validate_docbr.CPF()
    ways = {"python-stdnum": stdnum.br.cpf.is_valid, "validate-docbr": peer.validate,
            "brutils": brutils.is_valid_cpf}
    found = [campotipo.valida("CPF", number) for number in numbers]
    for name, way in ways.items():
        assert [bool(way(number)) for number in numbers] == found, name
    valida = campotipo.valida

    def each():
        for number in numbers:
            valida("CPF", number)

    ours = least(each, 50) / 1000
    column = pyarrow.array(numbers * 10_000)
    assert campotipo.valida("CPF", column).to_list()[:1000] == found
    whole = least(lambda: valida("CPF", column)) / len(column)
    rows = [["**campotipo**", f"**{ours * 1e9:.0f}**", "", f"**{whole * 1e9:.1f}**", ""]]
    for name, way in ways.items():
        peer_time = least(lambda way=way: [way(number) for number in numbers], 15) / 1000
        rows.append([f"{name} {importlib.metadata.version(name)}", f"{peer_time * 1e9:.0f}",
                     f"{peer_time / ours:.0f}x", "the same", f"{peer_time / whole:.0f}x"])
    print("CPF, 1,000 numbers, a fifth of them wrong, ns a number; a column of 10,000,000 of them:\n")
    table(["", "one", "peer / ours", "in a column", "peer / ours"], rows)


def by_polars(path):
    lines = polars.read_csv(path, has_header=False, new_columns=["l"], separator="\x01", quote_char=None,
                            encoding="utf8-lossy")
    lines = lines.filter(polars.col("l").str.starts_with("01"))
    made = []
    for name, at, size, decimals in COLUMNS:
        cut = polars.col("l").str.slice(at - 1, size)
        if decimals is None:
            cut = cut.str.strip_chars_end(" ")
        elif decimals < 0:
            cut = cut.str.to_date("%Y%m%d")
        else:
            cut = cut.cast(polars.Int64)  # in the smallest unit, which is less work than decimals
        made.append(cut.alias(name))
    return lines.select(made)


def by_duckdb(path):
    cut = []
    for name, at, size, decimals in COLUMNS:
        text = f"substr(l, {at}, {size})"
        if decimals is None:
            cut.append(f"rtrim({text}) as {name}")
        elif decimals < 0:
            cut.append(f"strptime({text}, '%Y%m%d')::date as {name}")
        else:
            cut.append(f"{text}::bigint as {name}")
    session = duckdb.connect(config={"threads": 1})
    return session.sql(f"select {', '.join(cut)} from read_csv('{path}', columns={{'l': 'varchar'}}, "
                       "delim='\\x01', quote='', escape='', header=false, auto_detect=false) "
                       "where l[1:2] = '01'").to_arrow_table()


def by_fwf(path, rows):
    return pandas.read_fwf(path, colspecs=[(at - 1, at - 1 + size) for _, at, size, _ in COLUMNS],
                           names=[name for name, *_ in COLUMNS], skiprows=1, nrows=rows, dtype=str)


def files(folder, count):
    path = os.path.join(folder, "COTAHIST.TXT")
    write_records(path, count)
    size = os.path.getsize(path) / 1e6
    wanted = [name for name, *_ in COLUMNS]
    records = campotipo.open("b3/cotahist", path, fields=wanted)
    frame = polars.DataFrame(records)
    volume = int(frame["volume"].sum() * 100)
    assert volume == by_polars(path)["volume"].sum()
    assert volume == int(by_duckdb(path)["volume"].to_numpy().sum())
    assert list(by_fwf(path, 9)["codigo"]) == frame["codigo"].to_list()[:9]
    every = campotipo.open("b3/cotahist", path)
    few = campotipo.open("b3/cotahist", path, fields=["codigo", "ultimo", "volume"])
    some = min(count, 20_000)
    ours = {"to polars, all columns": least(lambda: polars.DataFrame(every)),
            "to pandas, Arrow types": least(
                lambda: pyarrow.table(every).to_pandas(types_mapper=pandas.ArrowDtype)),
            "to pyarrow, 3 columns": least(lambda: pyarrow.table(few))}
    peers = {f"polars {polars.__version__}, read_csv, slice, cast": least(lambda: by_polars(path), 3),
             f"DuckDB {duckdb.__version__}, read_csv, substr, cast": least(lambda: by_duckdb(path), 3),
             f"pandas {pandas.__version__}, read_fwf, texts":
                 least(lambda: by_fwf(path, some), 2) * count / some}
    first = ours["to polars, all columns"]
    rows = [[f"**campotipo, {name}**", f"**{size / took:.0f}**", ""] for name, took in ours.items()]
    rows += [[name, f"{size / took:.0f}", f"{took / first:.0f}x"] for name, took in peers.items()]
    print(f"COTAHIST, {count:,} records of 247 bytes, MB of the file a second of the processor, warm; the others "
          f"against all columns to polars ({len(COLUMNS)} columns; read_fwf over {some:,} lines):\n")
    table(["", "MB/s", "peer / ours"], rows)
    threads(every)


def threads(records):
    """Two ranges by two threads, on two cores."""
    os.sched_setaffinity(0, range(os.cpu_count() or 1))
    if len(os.sched_getaffinity(0)) < 2:
        return

    def read(parts):
        running = [threading.Thread(target=lambda part=part: pyarrow.table(part)) for part in parts]
        for thread in running:
            thread.start()
        for thread in running:
            thread.join()

    parts = records.splits(2)
    one = least(lambda: [read([part]) for part in parts], 15, time.perf_counter)
    two = least(lambda: read(parts), 15, time.perf_counter)
    print(f"Two threads read two ranges {one / two:.2f} times as fast as one thread both.\n")


def imports():
    code = ("import time, sys; a = time.process_time(); import campotipo; "
            "print(time.process_time() - a)")
    took = min(float(subprocess.run([sys.executable, "-c", code], capture_output=True, check=True,
                                    text=True).stdout) for _ in range(20))
    print(f"`import campotipo` takes {took * 1e3:.1f} ms, the least of 20 fresh interpreters.\n")


if __name__ == "__main__":
    imports()
    documents()
    with tempfile.TemporaryDirectory() as place:
        files(place, int(sys.argv[1]) if len(sys.argv) > 1 else 400_000)
