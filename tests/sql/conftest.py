"""What the tests of the DuckDB extension start with.

The environment names the command (CAMPOTIPO_TOOL) and the extension (CAMPOTIPO_DUCKDB).
"""

import os
import subprocess
import sys

import duckdb
import pytest

HERE = os.path.dirname(__file__)
ROOT = os.path.join(HERE, "..", "..")
TOOL = os.environ["CAMPOTIPO_TOOL"]
EXTENSION = os.environ["CAMPOTIPO_DUCKDB"]
sys.path[:0] = [HERE, os.path.join(HERE, "..", "tool")]


def connect(**config):
    connection = duckdb.connect(config={"allow_unsigned_extensions": "true", **config})
    connection.execute(f"load '{EXTENSION}'")
    return connection


def tool(*arguments, **options):
    return subprocess.run([TOOL, *arguments], capture_output=True, check=True, **options).stdout


@pytest.fixture
def sql():
    """A connection with the extension; sql(text, parameters) gives all rows."""
    connection = connect()

    def run(text, *parameters):
        return connection.execute(text, parameters or None).fetchall()

    run.connection = connection
    return run


@pytest.fixture(scope="session")
def banks(tmp_path_factory):
    """A folder with the file of banks, made by the command, and its layout beside it."""
    folder = tmp_path_factory.mktemp("banks")
    layout = os.path.join(ROOT, "examples", "bancos.toml")
    with open(layout, "rb") as text, open(folder / "bancos.toml", "wb") as beside:
        beside.write(text.read())
    tool("load", layout, os.path.join(ROOT, "examples", "data", "bancos.csv"), "--lossy",
         "-o", str(folder / "bancos.reg"))
    return folder
