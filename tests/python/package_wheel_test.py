"""The wheel itself: its name, its size, what it asks of a system, its types and its examples."""

import doctest
import os
import pathlib
import re
import subprocess
import sys
import zipfile

import pytest
from streams_test import TOOL

import campotipo
import campotipo._layout
import campotipo._records
import campotipo._scan
import campotipo._values
import campotipo._writing

WHEEL = os.environ.get("CAMPOTIPO_WHEEL", "")
ROOT = pathlib.Path(__file__).parents[2]
wheel = pytest.mark.skipif(not WHEEL, reason="CAMPOTIPO_WHEEL names no wheel")


def run(*command, **options):
    done = subprocess.run([sys.executable, *command], capture_output=True, text=True, timeout=300, **options)
    return done.returncode, done.stdout + done.stderr


@wheel
def test_name_size_and_content():
    assert re.fullmatch(r"campotipo-[0-9.]+-cp311-abi3-manylinux_2_17_x86_64\.whl", os.path.basename(WHEEL))
    assert os.path.getsize(WHEEL) <= 10**6
    with zipfile.ZipFile(WHEEL) as content:
        names = content.namelist()
        version = campotipo.__version__
        assert f"campotipo-{version}.dist-info/licenses/LICENSE" in names
        metadata = content.read(f"campotipo-{version}.dist-info/METADATA").decode()
    assert "campotipo/py.typed" in names and "campotipo/_core.pyi" in names
    assert "Requires-Dist" not in metadata
    assert len([name for name in names if name.endswith(".so")]) == 1


@wheel
def test_abi3audit_and_auditwheel():
    status, told = run("-m", "abi3audit", "--strict", "--assume-minimum-abi3", "3.11", WHEEL)
    assert status == 0, told
    status, told = run("-m", "auditwheel", "show", WHEEL)
    assert status == 0 and 'platform tag to "manylinux_2_17_x86_64"' in " ".join(told.split()), told


@wheel
def test_a_bare_environment_without_an_index(tmp_path):
    assert run("-m", "venv", str(tmp_path / "bare"))[0] == 0
    python = str(tmp_path / "bare" / "bin" / "python")
    subprocess.run([python, "-m", "pip", "install", "-q", "--no-index", WHEEL], check=True)
    told = subprocess.run([python, "-I", "-c", "import campotipo, sys; print(campotipo.valida('CPF', "
                           "'12345678909'), len(campotipo.layouts()), 'numpy' in sys.modules)"],
                          check=True, capture_output=True, text=True).stdout.split()
    assert told[0] == "True" and int(told[1]) == len(campotipo.layouts()) and told[2] == "False"


def test_an_import_brings_little():
    code = ("import sys; before = set(sys.modules); import campotipo; "
            "print(*sorted(set(sys.modules) - before))")
    status, told = run("-I", "-c", code)
    assert status == 0
    more = {name for name in told.split() if not name.startswith("campotipo")}
    assert more <= {"__future__", "operator", "_operator"}


@pytest.mark.parametrize("module", [campotipo, campotipo._layout, campotipo._records,
                                    campotipo._scan, campotipo._values, campotipo._writing])
def test_examples_of_the_manual_run(module, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "examples").symlink_to(ROOT / "examples")
    subprocess.run([TOOL, "load", "examples/bancos.toml", "examples/data/bancos.csv", "--lossy", "-o",
                    "bancos.reg"], check=True, capture_output=True)
    found = doctest.testmod(module)
    assert found.attempted > 0 and found.failed == 0
    for name in ("valida", "limpa", "edita", "identifica", "documentos"):
        function = getattr(campotipo, name)
        test = doctest.DocTestParser().get_doctest(function.__doc__, vars(campotipo), name, None, 0)
        assert test.examples
        assert doctest.DocTestRunner().run(test).failed == 0


def test_everything_public_is_told():
    for name in campotipo.__all__:
        assert name == "__version__" or getattr(campotipo, name).__doc__, name


USES = '''
import datetime
import decimal
import pathlib
from typing import Any

import campotipo

one: bool = campotipo.valida("CPF", "1")
many: campotipo.Column = campotipo.valida("CPF", ["1", None])
text: str = campotipo.edita("CPF", "12345678909")
names: tuple[str, ...] = campotipo.identifica("1")
records = campotipo.open(campotipo.layout("x"), pathlib.Path("x"), fields=["a"], wide="decimal256")
rows: list[dict[str, Any]] = list(records)
parts: list[campotipo.Records] = records.splits(2)
number: decimal.Decimal = campotipo.arredonda("1.5", 0, "5sobe")
day: datetime.date = campotipo.soma_meses(datetime.date(2024, 1, 31), 1)
read: datetime.date | None = campotipo.datac_extrai(b"")
'''
MISUSES = ['campotipo.valida("CPF", 1)', 'campotipo.open("a", "b", wide="long")',
           'campotipo.arredonda(1.5, 0)', 'campotipo.soma_dias("2024-01-01", 1)',
           'campotipo.layout(1)', 'campotipo.arredonda("1", 0, "para cima")', 'campotipo.nothing']


@pytest.mark.parametrize("checker", ["mypy", "pyright"])
def test_types(checker, tmp_path):
    def check(*arguments):
        if checker == "mypy":
            return run("-m", "mypy", "--strict", *arguments, cwd=tmp_path)
        return run("-m", "pyright", "--pythonpath", sys.executable, *arguments, cwd=tmp_path)

    (tmp_path / "uses.py").write_text(USES)
    (tmp_path / "misuses.py").write_text("import campotipo\n" + "\n".join(MISUSES) + "\n")
    status, told = check("uses.py")
    assert status == 0, told
    status, told = check("misuses.py")
    for line, misuse in enumerate(MISUSES, 2):
        assert re.search(rf"misuses\.py:{line}(:\d+)?:? *-? *error|misuses\.py:{line}:\d+ - error", told), \
            (misuse, told)


def test_the_package_is_typed_itself():
    folder = ROOT / "bindings" / "python"
    status, told = run("-m", "mypy", "--cache-dir", os.devnull, cwd=folder)
    assert status == 0, told
    status, told = run("-m", "pyright", "--pythonpath", sys.executable, cwd=folder)
    assert status == 0, told
