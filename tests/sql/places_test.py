"""Which files and layouts a query means: paths, globs, lists, folders, layouts beside files."""

import os
import shutil

import duckdb
import pytest
from random_files import literal


def test_a_name_beside_which_a_layout_lies_is_a_table(sql, banks, tmp_path):
    for layout in ("vendas.toml", "vendas.reg.toml"):
        folder = tmp_path / layout
        folder.mkdir()
        shutil.copy(banks / "bancos.reg", folder / "vendas.reg")
        shutil.copy(banks / "bancos.toml", folder / layout)
        table = literal(str(folder / "vendas.reg"))
        assert sql(f"select count(*), sum(_record) from {table}") == [(513, 513 * 514 // 2)]
        glob = literal(str(folder / "v*.reg"))
        assert sql(f"select distinct _file from {glob}") == [(str(folder / "vendas.reg"),)]


def test_other_names_are_left_to_duckdb(sql, tmp_path):
    with open(tmp_path / "x.csv", "w", encoding="utf-8") as file:
        file.write("a,b\n1,2\n")
    with open(tmp_path / "x.toml", "w", encoding="utf-8") as file:
        file.write("name = 'not a layout'\n")
    assert sql(f"from {literal(str(tmp_path / 'x.csv'))}") == [(1, 2)]
    for name in ("missing.reg", "x.dat", "no*.reg"):
        with pytest.raises(duckdb.CatalogException, match="does not exist"):
            sql(f'from "{name}"')


def test_the_name_of_the_file_in_full_comes_first(sql, banks, tmp_path):
    shutil.copy(banks / "bancos.reg", tmp_path / "a.reg")
    shutil.copy(banks / "bancos.toml", tmp_path / "a.reg.toml")
    (tmp_path / "a.toml").write_text("no layout")
    assert sql(f"select count(*) from {literal(str(tmp_path / 'a.reg'))}") == [(513,)]


def test_globs_lists_and_folders(sql, banks, tmp_path):
    names = ["b.reg", "a.reg", "c[1].reg", "á.reg"]
    for name in names:
        shutil.copy(banks / "bancos.reg", tmp_path / name)
    for passed_over in (".hidden", "_SUCCESS", "bancos.toml"):
        shutil.copy(banks / "bancos.toml", tmp_path / passed_over)
    os.mkdir(tmp_path / "folder.reg")
    layout = f"layout := {literal(str(tmp_path / 'bancos.toml'))}"
    paths = sorted(str(tmp_path / name) for name in names)

    def files(told):
        return sql(f"select _file, count(*), max(_record) from read_campotipo({told}, {layout}) "
                   "group by all order by 1")

    everything = [(path, 513, 513) for path in paths]
    assert files(literal(str(tmp_path))) == everything
    assert files(literal(str(tmp_path) + "/")) == [(path, 513, 513) for path in paths]
    assert files(literal(str(tmp_path / "*.reg"))) == everything
    assert files(literal(str(tmp_path / "[ab].reg"))) == everything[:2]
    assert files([paths[1], str(tmp_path / "a*")]) == everything[:2]
    assert files([paths[0], paths[0]]) == [(paths[0], 1026, 513)]
    # A file that is called so is not taken for a pattern.
    call = f"read_campotipo({literal(str(tmp_path / 'c[1].reg'))}, {layout})"
    assert sql(f"select count(*) from {call}") == [(513,)]
    with pytest.raises(duckdb.Error, match="_file"):
        sql(f"select _file from {call}")
    order = sql(f"select _file from read_campotipo({literal(str(tmp_path))}, {layout})")
    assert [path for path, in order] == [path for path in paths for _ in range(513)]


@pytest.mark.parametrize("call, message", [
    ("'{}/none.reg', layout := '{}/bancos.toml'", "none.reg: cannot be opened: No such file"),
    ("'{}/none*.reg', layout := '{}/bancos.toml'", "none\\*.reg: no file is there"),
    ("'{}/bancos.reg', layout := '{}/none.toml'", "none.toml"),
    ("'{}/bancos.reg', layout := 'b3/cotahistt'", "b3/cotahist"),
    ("'{}/bancos.reg', layout := E'name = \"x\"\\nsize = 1\\n[[field]]\\nname = \"a\"\\n'", "layout:3:1: field"),
    ("'{}/bancos.reg', kind := 'bank'", 'no kind of record is called "bank", expected one of banco'),
    ("'{}/bancos.reg', faults := 'nul'", "faults is 'error' or 'null', not 'nul'"),
    ("'{}/bancos.reg', wide := 'decimal256'", "wide is 'string' or 'decimal128'"),
    ("'{}/bancos.reg', first := 0", "first is 1 or more"),
    ("'{}/bancos.reg', count := -1", "count is 1 or more"),
    ("'{}/other.csv'", "other.csv: which layout\\?"),
    ("NULL", "path is null"),
    ("[]", "the list of files is empty|neither a text nor a list"),
    ("[NULL]", "a path of the list is null|neither a text nor a list"),
    ("12", "neither a text nor a list"),
    ("['{}/bancos.reg', '{}/none.reg']", "none.reg: cannot be opened"),
    ("'{}/bancos.reg', nome := 1", "nome"),
])
def test_a_wrong_call_says_what_is_wrong(sql, banks, call, message):
    with pytest.raises(duckdb.Error, match=message):
        sql(f"from read_campotipo({call.replace('{}', str(banks))})")


def test_null_arguments_are_as_if_not_given(sql, banks):
    path = literal(str(banks / "bancos.reg"))
    names = ["layout", "kind", "first", "count", "faults", "skip", "wide"]
    given = ", ".join(f"{name} := NULL" for name in names)
    assert sql(f"from read_campotipo({path}, {given})") == sql(f"from {path}")


def test_layouts_are_listed(sql, banks):
    rows = sql(f"from campotipo_layout({literal(str(banks / 'bancos.toml'))})")
    assert rows[0] == ("banco", True, "compe", "BSTR21", "VARCHAR", 0, 10, "digit string")
    described = sql(f"select column_name, column_type from (describe from "
                    f"{literal(str(banks / 'bancos.reg'))}) offset 1")
    assert [(row[2], row[4]) for row in rows] == described
    for name, kinds, text in sql("from campotipo_layouts()"):
        listed = sql("select count(distinct kind) from campotipo_layout(?)", name)
        assert listed == [(kinds,)]
        assert sql("from campotipo_layout(?)", name) == sql("from campotipo_layout(?)", text)
