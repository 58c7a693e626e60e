"""Times whole files read as columns and rows beside their peers, in one run, on one processor.

usage: whole_files.py LIBRARY COMMAND [MIB]      prints the tables of docs/benchmarks.md

LIBRARY is libcampotipo-records.so, COMMAND the tool; the file of quotes has MIB mebibytes (190), the
one of banks a sixth of it. Sums are compared before anything is timed. Every time is the least of
five interleaved repetitions with a warm page cache, and counts input bytes; what is too slow for the
whole file is timed on its beginning, and the table says so.
"""
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

os.environ["CAMPOTIPO_RECORDS_LIBRARY"] = sys.argv[1]
os.environ.update(POLARS_MAX_THREADS="1", OMP_NUM_THREADS="1", ARROW_IO_THREADS="1")
os.sched_setaffinity(0, {0})
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/python"))

import duckdb  # noqa: E402
import numpy  # noqa: E402
import pandas  # noqa: E402
import polars  # noqa: E402
import pyarrow  # noqa: E402
from c_face import Layout  # noqa: E402

COMMAND = sys.argv[2]
MIB = int(sys.argv[3]) if len(sys.argv) > 3 else 190
REPEATS = 5
# Name, first position from 1, bytes, decimals of a number, or what else it is.
QUOTES = [("registro", 1, 2, "t"), ("pregao", 3, 8, "d"), ("bdi", 11, 2, "t"), ("codigo", 13, 12, "t"),
          ("mercado", 25, 3, "t"), ("nome", 28, 12, "t"), ("especificacao", 40, 10, "t"),
          ("prazo", 50, 3, "t"), ("moeda", 53, 4, "t"), ("abertura", 57, 13, 2), ("maximo", 70, 13, 2),
          ("minimo", 83, 13, 2), ("medio", 96, 13, 2), ("ultimo", 109, 13, 2),
          ("melhor_compra", 122, 13, 2), ("melhor_venda", 135, 13, 2), ("negocios", 148, 5, 0),
          ("quantidade", 153, 18, 0), ("volume", 171, 18, 2), ("exercicio", 189, 13, 2),
          ("indicador_correcao", 202, 1, "t"), ("vencimento", 203, 8, "d"),
          ("fator_cotacao", 211, 7, 0), ("exercicio_pontos", 218, 13, 6), ("isin", 231, 12, "t"),
          ("distribuicao", 243, 3, "t")]
THREE = ["codigo", "pregao", "volume"]
ONE = ["quantidade"]


def quotes(path):
    """A file of quotes as the exchange publishes them, of invented papers and prices."""
    rng = random.Random(7)
    papers = ["".join(rng.choices("ABCDEGILMPRSTV", k=4)) + rng.choice("3456") for _ in range(400)]
    lines = []
    for _ in range(4000):
        paper, base = rng.choice(papers), rng.randrange(100, 9_000_000)
        prices = "".join(f"{base + rng.randrange(0, 500):013}" for _ in range(7))
        lines.append(f"01{{day}}02{paper:12}010{paper[:4] + ' SA':12}{'ON      NM':10}   R$  {prices}"
                     f"{rng.randrange(1, 99999):05}{rng.randrange(10**9):018}{rng.randrange(10**12):018}"
                     f"{0:013}099991231{1:07}{0:013}BR{paper:9}1{rng.randrange(100, 200):03}")
    records = MIB * (1 << 20) // 247
    with open(path, "w", newline="", encoding="ascii") as out:
        out.write(f"{'00COTAHIST.2025BOVESPA 20251230':245}\r\n")
        for start in range(0, records, len(lines)):
            day = f"2025{start // len(lines) % 12 + 1:02}{start // len(lines) // 12 % 28 + 1:02}"
            out.write("".join(line.replace("{day}", day) + "\r\n" for line in lines[:records - start]))
        out.write(f"{f'99COTAHIST.2025BOVESPA 20251230{records + 2:011}':245}\r\n")
    return records


def best(*ways):
    """The least seconds of each way, in turns."""
    least = [float("inf")] * len(ways)
    for _ in range(REPEATS):
        for i, way in enumerate(ways):
            begin = time.perf_counter()
            way()
            least[i] = min(least[i], time.perf_counter() - begin)
    return least


def drain(layout, content, **options):
    rows = 0
    for batch in layout.stream(content, **options):
        rows += batch.num_rows
    return rows


def polars_frame(path, names):
    line = polars.scan_csv(path, has_header=False, new_columns=["x"], separator="\x01", quote_char=None,
                           skip_rows=1, encoding="utf8-lossy")
    picked = []
    for name, at, size, what in QUOTES:
        if name not in names:
            continue
        cut = polars.col("x").str.slice(at - 1, size)
        if what == "d":
            cut = cut.str.to_date("%Y%m%d")
        elif what == "t":
            cut = cut.str.strip_chars_end(" ")
        else:
            cut = cut.cast(polars.Int64)
        picked.append(cut.alias(name))
    return line.filter(polars.col("x").str.starts_with("01")).select(picked).collect()


def duckdb_table(path, names):
    picked = []
    for name, at, size, what in QUOTES:
        if name not in names:
            continue
        cut = f"substr(x, {at}, {size})"
        picked.append({"d": f"strptime({cut}, '%Y%m%d')::date", "t": f"rtrim({cut})"}.get(
            what, f"{cut}::bigint" if what in ("t", "d", 0) else
            f"({cut}::bigint)::decimal(18, 0)") + f" as {name}")
    link = duckdb.connect()
    link.execute("set threads = 1")
    return link.sql(f"select {', '.join(picked)} from read_csv('{path}', columns = {{'x': 'varchar'}}, "
                        "delim = '\x01', quote = '', header = false, auto_detect = false) "
                        "where x[1:2] = '01'").to_arrow_table()


def pandas_frame(path, rows):
    return pandas.read_fwf(path, colspecs=[(at - 1, at - 1 + size) for _, at, size, _ in QUOTES],
                           names=[name for name, *_ in QUOTES], header=None, skiprows=1, nrows=rows,
                           encoding="latin-1")


def awk_sum(path):
    return subprocess.run(["mawk", "{ s += substr($0, 153, 18) } END { printf \"%.0f\", s }", path],
                          check=True, capture_output=True).stdout


def row(name, size, seconds, beside):
    ratio = f"{seconds / size / beside:.1f} x" if beside else ""
    print(f"| {name} | {size / seconds / 1e6:,.0f} | {ratio} |")


def columns(path):
    content = pathlib.Path(path).read_bytes()
    layout = Layout((ROOT / "layouts/b3/cotahist.toml").read_text(encoding="utf-8"))
    size = len(content)
    words = numpy.frombuffer(content, dtype=numpy.uint64, count=size // 8)
    total = sum(pyarrow.compute.sum(batch.column(0)).as_py() for batch in layout.stream(content, fields=ONE))
    assert total == polars_frame(path, ONE)["quantidade"].sum()
    part = size // 40 // 247
    assert total == duckdb_table(path, ONE).column(0).to_pandas().sum()
    all_names = [name for name, *_ in QUOTES]
    print(f"\n### {size / 1e6:.0f} MB of quotes, records of 245 bytes and a line end, to Arrow\n")
    print("| What, on one processor | MB/s of input | times campotipo's |\n|---|---|---|")
    floor, *_ = best(lambda: int(words.sum()))
    row("floor: the file's words added up", size, floor, 0)
    for what, names in (("all 26 columns", all_names), ("3 columns", THREE), ("1 column", ONE)):
        ways = [lambda n=names: drain(layout, content, fields=n), lambda n=names: polars_frame(path, n),
                lambda n=names: duckdb_table(path, n)]
        ours, by_polars, by_duckdb = best(*ways)
        row(f"{what}: campotipo", size, ours, 0)
        row(f"{what}: polars, slice and cast", size, by_polars, ours / size)
        row(f"{what}: DuckDB, read_csv, substr and cast", size, by_duckdb, ours / size)
        if what.startswith("all"):
            row(f"{what}: pandas.read_fwf, of {part} records", part * 247, best(lambda: pandas_frame(path, part))[0],
                ours / size)
    row("1 column: mawk, sum of a substr", size, best(lambda: awk_sum(path))[0], ours / size)


def tool(layout, path, *arguments):
    ended = subprocess.run([COMMAND, arguments[0], layout, path, *arguments[1:]], stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=False)
    assert ended.returncode < 2, arguments


def rows(title, layout, path):
    size = os.path.getsize(path)
    os.sched_setaffinity(0, range(os.cpu_count()))
    print(f"\n### {title}: the command\n")
    print("| What | MB/s, one job | two jobs | times as fast |\n|---|---|---|---|")
    for verb in (("dump", "--format", "csv"), ("dump", "--format", "table"), ("check",), ("stats",), ("report",)):
        jobs = ("1", "2") if verb[0] == "dump" else ("",)
        spent = best(*(lambda v=verb, j=j: tool(layout, path, *v, *(("--jobs", j) if j else ())) for j in jobs))
        two = f"{size / spent[1] / 1e6:,.0f} | {spent[0] / spent[1]:.2f}" if len(spent) > 1 else "|"
        print(f"| {' '.join(verb)} | {size / spent[0] / 1e6:,.0f} | {two} |")


def banks(folder):
    layout_path = str(ROOT / "examples/bancos.toml")
    once, path = f"{folder}/bancos.dat", f"{folder}/banks.dat"
    subprocess.run([COMMAND, "load", layout_path, str(ROOT / "examples/data/bancos.csv"), "--lossy", "-o", once],
                   check=True, stderr=subprocess.DEVNULL)
    content = pathlib.Path(once).read_bytes()
    pathlib.Path(path).write_bytes(content * (MIB * (1 << 20) // 6 // len(content)))
    return layout_path, path


with tempfile.TemporaryDirectory() as work:
    file = f"{work}/COTAHIST_A2025.TXT"
    quotes(file)
    columns(file)
    rows("Quotes", str(ROOT / "layouts/b3/cotahist.toml"), file)
    bank_layout, bank_file = banks(work)
    data = pathlib.Path(bank_file).read_bytes()
    banks_layout = Layout(pathlib.Path(bank_layout).read_text(encoding="utf-8"))
    os.sched_setaffinity(0, {0})
    print(f"\n### {len(data) / 1e6:.0f} MB of banks, records of 288 bytes, to Arrow\n")
    print("| What, on one processor | MB/s of input | |\n|---|---|---|")
    row("all columns: campotipo", len(data), best(lambda: drain(banks_layout, data))[0], 0)
    rows("Banks", bank_layout, bank_file)
