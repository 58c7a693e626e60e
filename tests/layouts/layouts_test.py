#!/usr/bin/env python3
"""Holds a ready layout to a file that is written without it, field by field and byte by byte.

usage: layouts_test.py CAMPOTIPO LAYOUTS NAME

The file is of formats/: its widths are those of other programs. The layout has to read each value
put in, find nothing wrong, and give the file back; where a rule is broken, check has to tell it.
"""

import csv
import datetime
import io
import json
import os
import subprocess
import sys
import tempfile
import tomllib
from decimal import Decimal

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from formats import cnab240, cnab400, cotahist, febraban150, sintegra  # noqa: E402

FILES = {
    "b3/cotahist": cotahist.file,
    "cnab240/cobranca-remessa": cnab240.sent,
    "cnab240/cobranca-retorno": cnab240.back,
    "cnab240/pagamentos": cnab240.paid,
    "cnab400/341-remessa": cnab400.sent,
    "cnab400/341-retorno": cnab400.back,
    "febraban150/debito-automatico": febraban150.file,
    "sintegra/convenio-57-95": sintegra.file,
}


class Broken(Exception):
    pass


def hold(condition, *what):
    if not condition:
        raise Broken(" ".join(str(part) for part in what))


def width(field):
    return field.get("bytes") or field.get("digits") or len(field["stored"])


class Tried:
    """One layout, its file and the command."""

    def __init__(self, tool, layouts, name, work):
        self.tool, self.name, self.work = tool, name, work
        with open(os.path.join(layouts, name + ".toml"), "rb") as stream:
            self.layout = tomllib.load(stream)
        self.kinds = {kind["name"]: kind["field"] for kind in self.layout["record"]}
        self.lines = FILES[name]()
        self.path = self.write("right.txt", [line.text for line in self.lines])

    def write(self, name, texts, end="\r\n"):
        path = os.path.join(self.work, name)
        with open(path, "w", encoding="iso-8859-1", newline="") as stream:
            stream.write("".join(text + end for text in texts))
        return path

    def run(self, *arguments, status=0, data=None):
        done = subprocess.run([self.tool, *arguments], input=data, capture_output=True)
        hold(done.returncode == status, arguments, "status", done.returncode, done.stderr.decode())
        return done.stdout.decode("utf-8")

    def places(self):
        """Each kind has the fields of the sheet, at its places, to its end."""
        hold(set(self.kinds) == {line.kind for line in self.lines}, "kinds", sorted(self.kinds))
        for sheet in {id(line.sheet): line.sheet for line in self.lines}.values():
            hold([(f.first, f.width) for f in sheet.fields]
                 == [(f["at"], width(f)) for f in self.kinds[sheet.kind]], "places of", sheet.kind)

    def values(self):
        """Each value is the one that was put in."""
        rows = self.run("dump", self.name, self.path, "--format", "ndjson").splitlines()
        hold(len(rows) == len(self.lines), len(rows), "rows of", len(self.lines))
        for number, (row, line) in enumerate(zip(rows, self.lines), 1):
            read = json.loads(row, parse_float=Decimal, parse_int=Decimal)
            hold(read["record"] == line.kind, "record", number, read["record"])
            for field in self.kinds[line.kind]:
                stored = line.text[field["at"] - 1:field["at"] - 1 + width(field)]
                told = expected(field, stored, line.values[field["at"]])
                hold(same(read[field["name"]], told), "record", number, field["name"], ":",
                     read[field["name"]], "of", repr(stored))

    def back(self):
        """The file comes back, also where load has to make what the layout tells."""
        table = self.run("dump", self.name, self.path, "--format", "csv")
        rows = list(csv.DictReader(io.StringIO(table)))
        made = 0
        for row in rows:
            for field in self.kinds[row["record"]]:
                if self.is_made(row["record"], field):
                    row[field["name"]] = ""
                    made += 1
        hold(made > len(rows), "only", made, "cells for load to fill")
        emptied = io.StringIO()
        writer = csv.DictWriter(emptied, rows[0].keys())
        writer.writeheader()
        writer.writerows(rows)
        for text, what in ((table, "as dumped"), (emptied.getvalue(), "with totals left out")):
            out = os.path.join(self.work, "back.txt")
            self.run("load", self.name, "-", "-o", out, data=text.encode())
            with open(out, "rb") as back, open(self.path, "rb") as first:
                hold(back.read() == first.read(), "the file does not come back,", what)

    def is_made(self, kind, field):
        when = next(k for k in self.layout["record"] if k["name"] == kind).get("when", {})
        return (isinstance(when.get(field["name"]), str) or isinstance(field.get("value"), str)
                or any(key in field for key in ("sequence", "same", "counts", "sums")))

    def faults(self):
        """A file without faults has no findings; each rule that is broken is told at its place."""
        self.run("check", self.name, self.path)
        tried = 0
        for kind in self.layout["record"]:
            place = max(n for n, line in enumerate(self.lines) if line.kind == kind["name"])
            for field in kind["field"]:
                for what, part in broken(kind, field, self.stored(place, field)):
                    self.told(place, field, what, part)
                    tried += 1
        hold(tried > 25, "only", tried, "faults")
        return tried

    def stored(self, place, field):
        return self.lines[place].text[field["at"] - 1:field["at"] - 1 + width(field)]

    def told(self, place, field, what, part):
        texts = [line.text for line in self.lines]
        first = field["at"] - 1
        texts[place] = texts[place][:first] + part + texts[place][first + width(field):]
        path = self.write("wrong.txt", texts)
        report = self.run("check", self.name, path, "--json", "--all", status=1)
        found = [f for f in map(json.loads, report.splitlines())
                 if f.get("_record") == place + 1 and f["field"] == field["name"]]
        hold(any(f["what"] == what for f in found), self.lines[place].kind, field["name"],
             repr(part), ": not told", what, "but", found)


def expected(field, stored, value):
    """What a field has to show; None for nothing."""
    empty = field.get("empty", {"DATE": "0", "TEXT": " ", "TIME": " "}.get(field["type"], []))
    empty = [empty] if isinstance(empty, str) else empty
    if stored in [word * len(stored) if len(word) == 1 else word for word in empty]:
        return None
    if field["type"] in ("TEXT", "DIGITS"):
        return stored if "pad" in field else stored.rstrip(" ")
    return Decimal(value) if field["type"] == "NUM" else value


def same(read, told):
    if told is None:
        return read is None or read == ""
    if isinstance(told, datetime.date):
        return read == told.strftime("%d/%m/%Y")
    if isinstance(told, datetime.time):
        return read == told.strftime("%H:%M:%S")
    if isinstance(told, str):
        return read == told
    return Decimal(read) == Decimal(told)


def broken(kind, field, stored):
    """Ways to break a field, and the word for each."""
    size = width(field)
    if field["name"] in kind.get("when", {}):
        return
    if field["type"] in ("NUM", "DIGITS"):
        yield "invalid", "x".rjust(size, "0")
    if field["type"] == "DATE":
        yield "invalid", stored_date(field["stored"], 31, 2)
        yield "invalid", "1" * (size - 1) + " "
    if field.get("required"):
        yield "required", ("0" if field["type"] == "DATE" else " ") * size
    if isinstance(field.get("value"), str):
        yield "constant", ("7" if field["type"] == "DIGITS" else "Q") * size
    if isinstance(field.get("value"), (list, dict)):
        yield "not_allowed", "8" * size
    for key, word in (("sequence", "sequence"), ("same", "not_same"), ("counts", "total"),
                      ("sums", "total")):
        if key in field and stored.strip():
            yield word, stored[:-1] + ("1" if stored[-1] != "1" else "2")
    if "check" in field and stored.strip(" 0"):
        yield "check_digit", stored[:-1] + ("1" if stored[-1] != "1" else "2")


def stored_date(drawing, day, month):
    text = drawing.replace("DD", f"{day:02}").replace("MM", f"{month:02}")
    return text.replace("AAAA", "2024").replace("AA", "24")


def main():
    tool, layouts, name = sys.argv[1:]
    with tempfile.TemporaryDirectory() as work:
        tried = Tried(tool, layouts, name, work)
        try:
            tried.places()
            tried.values()
            tried.back()
            faults = tried.faults()
        except Broken as fault:
            sys.exit(f"{name}: {fault}")
    print(f"{name}: {len(tried.lines)} records, {faults} faults told")


if __name__ == "__main__":
    main()
