"""Random layouts with files of them, and their values as the command's rows say them."""

import datetime
import decimal
import json
import random
import re

from conftest import tool
from random_layouts import Layout

decimal.getcontext().prec = 100


def types_of_the_tool():
    """Names of the field types with their bytes and keys, as the command lists them."""
    lines = tool("types").decode().split("\n\n")[0].split("\n")
    begins = [match.start() for match in re.finditer(r"\S+(?: \S+)*", lines[0])]
    types = {}
    for line in filter(None, lines[1:]):
        cells = [line[a:b].strip() for a, b in zip(begins, begins[1:] + [None])]
        size = re.search(r"\d+", line[begins[1]:begins[3]])
        types[cells[0]] = (int(size.group()) if size else 0, cells[-1])
    types.pop("fill", None)
    return types


TYPES = types_of_the_tool()


class File:
    """A file of a random layout, with valid and invalid values."""

    def __init__(self, seed, folder, count=None):
        self.random = random.Random(seed)
        layout = Layout(self.random, TYPES, self.random.choice([4, 0, 18]))
        # One way to write a date, so that its text tells the day.
        toml = re.sub(r"(?m)^format = .*\n", "", layout.toml)
        count = self.random.choice([0, 1, 3, 40]) if count is None else count
        some = [(kind, layout.record(kind, self.random.choice([0.9, 1])))
                for kind in self.random.choices(layout.kinds, k=min(count, 500))]
        self.records = self.random.choices(some, k=count) if count > 500 else some
        self.shares = "\njoin = " in toml
        self.kinds = [kind.name for kind in layout.kinds]
        self.path, self.toml = str(folder / "records"), str(folder / "layout.toml")
        with open(self.path, "wb") as file:
            file.write(layout.file(self.records))
        with open(self.toml, "w", encoding="utf-8") as file:
            file.write(toml)

    def rows(self, kind):
        """(number, values as text) of each record of the kind."""
        out = tool("dump", "--format", "ndjson", self.toml, self.path).decode(errors="replace")
        rows = []
        for number, line in enumerate(filter(None, out.split("\n")), 1):
            row = json.loads(line, parse_int=str, parse_float=str)
            if len(self.kinds) > 1 and row.pop("record") != kind:
                continue
            rows.append((number, flatten(row)))
        return rows

    def call(self, kind, **arguments):
        """A call of read_campotipo in SQL."""
        told = {"layout": self.toml, **({"kind": kind} if len(self.kinds) > 1 else {}), **arguments}
        named = ", ".join(f"{name} := {literal(value)}" for name, value in told.items())
        return f"read_campotipo({literal(self.path)}, {named})"


def literal(value):
    if isinstance(value, (bool, int)):
        return str(value).lower()
    return "'" + value.replace("'", "''") + "'"


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def flatten(node):
    if not isinstance(node, (dict, list)):
        return [node]
    inner = node.values() if isinstance(node, dict) else node
    return [value for each in inner for value in flatten(each)]


def expected(text, sql_type):
    """The value of a column of this type whose row says `text`."""
    if text is None:
        return None
    if sql_type in ("INTEGER", "BIGINT"):
        return int(text)
    if sql_type == "BOOLEAN":
        return {"0": False, "1": True}[text]
    if sql_type.startswith("DECIMAL"):
        return decimal.Decimal(text)
    if sql_type == "DATE":
        day, month, year = (int(part) for part in text.split("/"))
        if len(text) == 8:
            year += 2000 if year < 80 else 1900
        return datetime.date(year, month, day)
    if sql_type == "TIME":
        return datetime.time(*(int(part) for part in re.findall(r"\d+", text)))
    return text


def exact(value):
    """A decimal with its digits behind the point, which == does not look at."""
    return str(value) if isinstance(value, decimal.Decimal) else value
