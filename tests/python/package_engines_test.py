"""Records in pyarrow, pandas, polars, DuckDB, DataFusion and NumPy, held against `campotipo dump`."""

import datetime
import json
import subprocess

import datafusion
import duckdb
import numpy
import pandas
import polars
import pyarrow
import pytest
from streams_test import TOOL

import campotipo

LAYOUT, CSV = "examples/bancos.toml", "examples/data/bancos.csv"


@pytest.fixture(scope="module")
def banks(tmp_path_factory):
    path = tmp_path_factory.mktemp("banks") / "bancos.reg"
    subprocess.run([TOOL, "load", LAYOUT, CSV, "--lossy", "-o", path], check=True, capture_output=True)
    return path


@pytest.fixture(scope="module")
def dumped(banks):
    """Rows as the command tells them: the dates and times that share a column are apart."""
    out = subprocess.run([TOOL, "dump", LAYOUT, banks, "--format", "ndjson"], check=True,
                         capture_output=True).stdout.decode()
    rows = []
    for number, line in enumerate(out.splitlines(), 1):
        row = {"_record": number, **json.loads(line)}
        if "nome_curto" in row:  # the field of the column
            row["nome_reduzido"] = row.pop("nome_curto")
        day, _, hour = (row.pop("inicio_pix", None) or "").partition(" ")
        row["inicio_pix"], row["hora_pix"] = day or None, row.pop("hora_pix", None) or hour or None
        for name in ("inicio_operacao", "inicio_pix"):
            row[name] = row[name] and datetime.date.fromisoformat(row[name])
        # Midnight is what the field holds where the column shows no date.
        row["hora_pix"] = datetime.time.fromisoformat(row["hora_pix"] or "00:00:00")
        rows.append(row)
    return rows


def plain(rows):
    return [{name: None if value is None or value is pandas.NaT or value != value else value
             for name, value in row.items()} for row in rows]


def test_every_engine_reads_what_dump_tells(banks, dumped):
    records = campotipo.open(LAYOUT, banks)
    assert list(records) == dumped
    assert pyarrow.table(records).to_pylist() == dumped
    assert polars.DataFrame(records).to_dicts() == dumped
    assert polars.concat(polars.DataFrame(batch) for batch in records.batches(100)).to_dicts() == dumped
    frame = pandas.DataFrame.from_arrow(records)
    assert plain(frame.astype(object).to_dict("records")) == dumped
    typed = pyarrow.table(records).to_pandas(types_mapper=pandas.ArrowDtype)
    assert plain(typed.astype(object).to_dict("records")) == dumped
    names = list(dumped[0])
    for _ in range(2):  # an object gives a new stream each time
        found = duckdb.sql("select * from records order by _record").fetchall()
        assert [dict(zip(records_names(records), row)) for row in found] == \
            [{name: row[name] for name in records_names(records)} for row in dumped]
    context = datafusion.SessionContext()
    table = context.from_arrow(records)
    assert sorted(table.to_pylist(), key=lambda row: row["_record"]) == dumped
    assert set(names) == set(records_names(records))


def records_names(records):
    return pyarrow.schema(records).names


def test_numpy_reads_columns(banks, dumped):
    table = pyarrow.table(campotipo.open(LAYOUT, banks, fields=["_record", "cnpj"]))
    numbers = numpy.asarray(table["_record"])
    assert numbers.tolist() == [row["_record"] for row in dumped]
    good = numpy.asarray(campotipo.valida("CNPJ", table["cnpj"]))
    assert good.dtype == bool and good.all()


def test_lazy_frames_decode_what_a_query_uses(banks, dumped):
    scan = campotipo.scan_polars(LAYOUT, banks)
    assert scan.collect_schema().names() == records_names(campotipo.open(LAYOUT, banks))
    assert scan.collect().to_dicts() == dumped
    assert scan.select(polars.len()).collect().item() == len(dumped)
    chosen = scan.filter(polars.col("compe") > "500").select("nome", "compe").head(7).collect()
    assert chosen.to_dicts() == [{"nome": row["nome"], "compe": row["compe"]}
                                 for row in dumped if row["compe"] and row["compe"] > "500"][:7]
    assert scan.head(3).select("cnpj").collect()["cnpj"].to_list() == [r["cnpj"] for r in dumped[:3]]
    assert scan.slice(5, 4).collect()["_record"].to_list() == [6, 7, 8, 9]
    assert scan.head(0).collect().height == 0
    groups = scan.group_by("tipo").len().collect()
    assert groups["len"].sum() == len(dumped)


def test_a_query_passes_over_faults_in_columns_it_does_not_use(banks, tmp_path):
    content = bytearray(banks.read_bytes())
    content[288 * 4 + 270] = 0xFF  # a date
    path = tmp_path / "broken.reg"
    path.write_bytes(content)
    scan = campotipo.scan_polars(LAYOUT, path)
    assert scan.select("compe").collect().height == 513
    with pytest.raises(Exception, match="record 5, byte 1422: field"):
        scan.collect()
    assert campotipo.scan_polars(LAYOUT, path, faults="null").collect()["_fault"].drop_nulls().to_list() \
        == ["inicio_operacao"]
