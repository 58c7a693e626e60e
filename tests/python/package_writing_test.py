"""Records that the Python package writes, held against those that the command wrote."""

import decimal
import io
import os
import subprocess

import polars
import pyarrow
import pytest
from streams_test import TOOL

import campotipo

LAYOUT, CSV = "examples/bancos.toml", "examples/data/bancos.csv"
TOML = 'name = "x"\n[[field]]\nname = "n"\ntype = "BIN2"\n[[field]]\nname = "q"\ntype = "BINQ21"\ndecimals = 2\n'


@pytest.fixture
def banks(tmp_path):
    path = tmp_path / "bancos.reg"
    subprocess.run([TOOL, "load", LAYOUT, CSV, "--lossy", "-o", path], check=True, capture_output=True)
    return path


def test_what_is_read_is_written_again(banks, tmp_path):
    records = campotipo.open(LAYOUT, banks)
    once = tmp_path / "again.reg"
    for rows in (records, pyarrow.table(records), polars.DataFrame(records), list(records), iter(records)):
        assert campotipo.write(LAYOUT, once, rows) == (513, 0)
        assert once.read_bytes() == banks.read_bytes()
        once.unlink()
    file = io.BytesIO()
    assert campotipo.write(LAYOUT, file, records) == (513, 0)
    assert file.getvalue() == banks.read_bytes()


def test_a_file_is_whole_or_absent(tmp_path):
    path = tmp_path / "x.reg"
    good = {"n": 1, "q": decimal.Decimal("2.50")}

    class Own(Exception):
        pass

    def stops():
        yield good
        raise Own("mine")

    for rows, error in (([good, {"n": 70000}], campotipo.RecordError), ([{"m": 1}], campotipo.Error),
                        ([{"n": "x"}], (campotipo.Error, TypeError, pyarrow.ArrowException)),
                        (stops(), (Own, campotipo.Error)), ([1], (TypeError, campotipo.Error)),
                        (5, TypeError)):
        with pytest.raises(error):
            campotipo.write(TOML, path, rows)
        assert os.listdir(tmp_path) == []
    with pytest.raises(campotipo.RecordError) as caught:
        campotipo.write(TOML, path, [good, {"n": 70000}])
    assert (caught.value.record, caught.value.field) == (2, "n")
    assert campotipo.write(TOML, path, [good, {"n": 70000}], lossy=True) == (2, 1)
    assert path.stat().st_size == 2 * 23 and os.listdir(tmp_path) == ["x.reg"]
    (row, _) = campotipo.open(TOML, path)
    assert (row["n"], row["q"]) == (1, decimal.Decimal("2.50"))
    with pytest.raises(OSError):
        campotipo.write(TOML, tmp_path / "no" / "x", [good])
    with pytest.raises(campotipo.Error):
        campotipo.write(TOML, tmp_path / "y", [good], kind="y")
    assert os.listdir(tmp_path) == ["x.reg"]


def test_what_a_file_raises_comes_out():
    class Full(io.RawIOBase):
        def writable(self):
            return True

        def write(self, content):
            raise OSError("full")

    with pytest.raises(OSError, match="full"):
        campotipo.write(TOML, Full(), [{"n": 1}])
