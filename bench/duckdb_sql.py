"""Times SQL over a file of text records beside DuckDB's own ways to the same data, in one process.

duckdb_sql.py EXTENSION [RECORDS]

The file is COTAHIST, 245 bytes a record and its line end, with prices that do not repeat. Each answer
is compared before anything is timed. Times are the least of nine interleaved rounds, warm.
"""

import os
import random
import resource
import sys
import tempfile
import time

import duckdb

ROUNDS = 9
TABLE = "read_campotipo('{}/COTAHIST.TXT', layout := 'b3/cotahist')"
# What each place of a line means, for the ways that read lines: name, from, characters, decimals.
NUMBERS = [("abertura", 57, 13), ("maximo", 70, 13), ("minimo", 83, 13), ("medio", 96, 13),
           ("ultimo", 109, 13), ("melhor_compra", 122, 13), ("melhor_venda", 135, 13),
           ("volume", 171, 18), ("exercicio", 189, 13)]
TEXTS = [("bdi", 11, 2), ("codigo", 13, 12), ("mercado", 25, 3), ("nome", 28, 12),
         ("especificacao", 40, 10), ("moeda", 53, 4), ("indicador_correcao", 202, 1),
         ("isin", 231, 12), ("distribuicao", 243, 3)]
QUERIES = {
    "count(*)": "count(*)",
    "sum of one column": "sum(volume)",
    "group by, four columns": "mercado, sum(volume), sum(quantidade), max(ultimo)",
    "greatest of 21 columns": ", ".join(f"max({name})" for name, *_ in NUMBERS + TEXTS) +
                              ", max(pregao), max(quantidade), max(negocios)",
}


def write_records(path, count):
    some = random.Random(2026)
    codes = [f"{''.join(some.choices('ABCDEFGHIJKLMNOPQRSTUVWXYZ', k=4))}{some.randrange(3, 12)}"
             for _ in range(2000)]
    with open(path, "w", encoding="ascii", newline="") as file:
        file.write("00COTAHIST.2026BOVESPA 20260102".ljust(245) + "\r\n")
        for i in range(count):
            price = some.randrange(100, 10 ** 7)
            volume = some.randrange(10 ** 12)
            code = codes[some.randrange(2000)]
            prices = "".join(f"{price + step:013}" for step in (0, 90, -50, 20, some.randrange(80), -1, 3))
            file.write(
                f"01{20260101 + i * 28 // count}{some.choice(('02', '12', '96'))}{code:<12}"
                f"{some.choice(('010', '020', '030', '070', '080'))}{code[:4] + ' S.A.':<12}{'ON      NM':<10}"
                f"   R$  {prices}{some.randrange(10 ** 5):05}{some.randrange(10 ** 9):018}{volume:018}"
                f"{0:013}0{'99991231'}{1:07}{0:013}BR{code:<6}ACNO{100:03}\r\n")
        file.write(f"99COTAHIST.2026BOVESPA 20260102{count + 2:011}".ljust(245) + "\r\n")


def sources(folder, columns):
    """How each way gets at the columns, of which names and types are told."""
    cut = [f"substr(l, {at}, {size})::bigint as {name}" for name, at, size in NUMBERS]
    cut += [f"rtrim(substr(l, {at}, {size})) as {name}" for name, at, size in TEXTS]
    cut += ["strptime(substr(l, 3, 8), '%Y%m%d')::date as pregao",
            "substr(l, 153, 18)::bigint as quantidade", "substr(l, 148, 5)::integer as negocios"]
    return {
        "the records, read_campotipo": TABLE.format(folder),
        "the same file, read_csv and substr":
            f"(select {', '.join(cut)} from read_csv('{folder}/COTAHIST.TXT', columns = {{'l': 'VARCHAR'}}, "
            "header = false, auto_detect = false, delim = '\\x01', quote = '', escape = '') "
            "where l[1:2] = '01')",
        "CSV of the columns, read_csv": f"read_csv('{folder}/cotahist.csv', columns = {dict(columns)}, "
                                        "header = true, auto_detect = false)",
        "Parquet of the columns": f"'{folder}/cotahist.parquet'",
    }


def plain(rows, scaled):
    """Answers without the difference of a way that has hundredths as whole numbers."""
    def value(cell):
        if hasattr(cell, "scaleb"):
            return int(cell.scaleb(0 if scaled else 2))
        return cell
    return sorted([tuple(map(value, row)) for row in rows], key=repr)


def cpu():
    used = resource.getrusage(resource.RUSAGE_SELF)
    return used.ru_utime + used.ru_stime


def connect(extension, threads):
    connection = duckdb.connect(config={"allow_unsigned_extensions": "true", "threads": threads})
    connection.execute(f"load '{extension}'")
    return connection


def statement(query, source):
    group = " group by mercado" if query.startswith("mercado") else ""
    return f"select {query} from {source}{group}"


def main(extension, count):
    with tempfile.TemporaryDirectory() as folder:
        path = f"{folder}/COTAHIST.TXT"
        write_records(path, count)
        size = os.path.getsize(path)
        connections = {threads: connect(extension, threads) for threads in (1, 2)}
        for name in ("csv", "parquet"):
            connections[2].execute(f"copy (from {TABLE.format(folder)}) to '{folder}/cotahist.{name}'")
        columns = connections[1].execute(f"describe from {TABLE.format(folder)}").fetchall()
        ways = sources(folder, [column[:2] for column in columns])
        times = {}
        for title, query in QUERIES.items():
            answers = {way: plain(connections[1].execute(statement(query, source)).fetchall(),
                                  "substr" in way) for way, source in ways.items()}
            for way, answer in answers.items():
                assert answer == answers["the records, read_campotipo"], (title, way)
            for _ in range(ROUNDS):
                for way, source in ways.items():
                    for threads, connection in connections.items():
                        begin, spent = time.perf_counter(), cpu()
                        connection.execute(statement(query, source)).fetchall()
                        took = (time.perf_counter() - begin, cpu() - spent)
                        known = times.setdefault((title, way, threads), took)
                        times[title, way, threads] = tuple(map(min, known, took))
        report(times, ways, size, count)


def report(times, ways, size, count):
    ours = next(iter(ways))
    print(f"{count} records, {size / 1e6:.0f} MB, DuckDB {duckdb.__version__}; CSV and Parquet hold the same "
          "columns. MB/s are of the record file.\n")
    print("| question, and what is asked | ms, one thread | MB/s | as many times ours | ms, two threads | "
          "CPU ms, one thread |")
    print("|---|---|---|---|---|---|")
    for title in QUERIES:
        for way in ways:
            wall, spent = times[title, way, 1]
            name = f"**{title}**: {way}" if way == ours else f"&emsp;{way}"
            print(f"| {name} | {1e3 * wall:.1f} | {size / wall / 1e6:.0f} | "
                  f"{wall / times[title, ours, 1][0]:.1f}x | {1e3 * times[title, way, 2][0]:.1f} | "
                  f"{1e3 * spent:.1f} |")


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 800000)
