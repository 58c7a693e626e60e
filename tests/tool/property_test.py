#!/usr/bin/env python3
"""Holds the command to what is the same for every layout and file, by readers that are not ours.

usage: property_test.py TOOL [--rounds N] [--seed S] [--long]

Each round makes a layout and files of records from its seed. A round that fails tells the seed: the
same with --rounds 1 --seed S shows it again, and its files are left where the last line says.
"""

import argparse
import csv
import io
import json
import os
import pty
import random
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
from decimal import Decimal, InvalidOperation
from xml.etree import ElementTree

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from random_layouts import Layout, name_of  # noqa: E402

CONTROLS = re.compile("[\0-\x08\x0b\x0c\x0e-\x1f\x7f-\x9f]")
COLOURS = re.compile(r"\x1b\[[0-9;]*[mK]|\r")
csv.field_size_limit(1 << 30)
# A sanitizer that finds something ends the command with a status that is not one of its own.
for sanitizer in ("ASAN", "UBSAN", "TSAN"):
    os.environ[f"{sanitizer}_OPTIONS"] = "exitcode=99"


class Broken(Exception):
    pass


def hold(condition, what):
    if not condition:
        raise Broken(what)


def members(pairs):
    names = [name for name, _ in pairs]
    hold(len(set(names)) == len(names), f"members of one name: {names}")
    return dict(pairs)


def objects(text):
    """The objects of NDJSON, numbers as they are written."""
    lines = text.decode("utf-8").split("\n")
    hold(lines.pop() == "", "the last line of NDJSON has no end")
    return [json.loads(line, object_pairs_hook=members, parse_int=str, parse_float=str,
                       parse_constant=lambda word: hold(False, word)) for line in lines]


def document(text):
    return json.loads(text.decode("utf-8"), object_pairs_hook=members)


def rows_of(text):
    return list(csv.reader(io.StringIO(text.decode("utf-8"), newline=""), strict=True))


def values_of(node):
    """The values of an object in order, through groups and repeats."""
    if isinstance(node, dict):
        node = list(node.values())
    if not isinstance(node, list):
        return [node]
    return [value for inner in node for value in values_of(inner)]


class Round:
    def __init__(self, tool, types, jobs, seed, folder, long):
        self.tool, self.jobs, self.folder, self.long, self.counts = tool, jobs, folder, long, {}
        self.random = random.Random(seed)
        self.layout = Layout(self.random, types, self.random.choice([4, 4, 0, 18]))
        self.toml = self.store("layout.toml", self.layout.toml.encode())

    def count(self, what):
        self.counts[what] = self.counts.get(what, 0) + 1

    def store(self, name, content):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(content)
        return path

    def run(self, *arguments, allowed=(0, 1, 2)):
        done = subprocess.run([self.tool, *arguments], stdin=subprocess.DEVNULL, capture_output=True)
        hold(done.returncode in allowed,
             f"status {done.returncode}: {' '.join(arguments)}\n{done.stderr.decode(errors='replace')}")
        return done

    def both(self, *arguments, allowed=(0, 1, 2)):
        """The same again, on another number of processors where the command can."""
        first = self.run(*arguments, allowed=allowed)
        more = ("--jobs", "2") if arguments[0] in self.jobs else ()
        second = self.run(*arguments, *more, allowed=allowed)
        hold((first.returncode, first.stdout, first.stderr) ==
             (second.returncode, second.stdout, second.stderr), f"two runs differ: {arguments}")
        return first

    def on_terminal(self, *arguments):
        """What reaches a terminal: text in lines and colours, nothing else."""
        near, far = pty.openpty()
        got = []

        def read():
            try:
                while block := os.read(near, 1 << 16):
                    got.append(block)
            except OSError:
                pass

        reader = threading.Thread(target=read)
        reader.start()
        environment = {**os.environ, "TERM": "xterm"}
        status = subprocess.run([self.tool, *arguments], stdin=subprocess.DEVNULL, stdout=far,
                                stderr=far, env=environment).returncode
        os.close(far)
        reader.join()
        os.close(near)
        hold(status in (0, 1, 2), f"status {status} on a terminal: {arguments}")
        text = COLOURS.sub("", b"".join(got).decode("utf-8"))
        wrong = CONTROLS.search(text)
        hold(not wrong, wrong and f"{wrong.group()!r} reaches a terminal, behind "
             f"{text[max(0, wrong.start() - 60):wrong.start()]!r}: {arguments}")

    def whole(self):
        """The layout is taken, and all that is drawn of it is what its reader takes."""
        if self.run("layout", self.toml).returncode != 0:
            self.count("refused")
            self.on_terminal("layout", self.toml)
            return False
        self.on_terminal("layout", self.toml)
        header = self.run("layout", self.toml, "--header", allowed=(0,)).stdout
        for language in ("c", "c++"):
            compiled = subprocess.run([os.environ.get("CC", "cc"), "-x", language, "-fsyntax-only",
                                       "-Werror", "-w", "-"], input=header, capture_output=True)
            hold(compiled.returncode == 0, compiled.stderr.decode())
        try:
            sqlite3.connect(":memory:").executescript(
                self.run("layout", self.toml, "--sql", allowed=(0,)).stdout.decode("utf-8"))
        except sqlite3.OperationalError as error:
            # The names of columns there do not differ in case alone, in whatever layout.
            hold("duplicate column" in str(error), f"SQL: {error}")
        for kind in self.layout.kinds:
            one = ("--kind", kind.name) if kind.name else ()
            ElementTree.fromstring(self.run("layout", self.toml, "--svg", *one, allowed=(0,)).stdout)
        return True

    def texts(self, path, records):
        """CSV and NDJSON of a whole file hold the same values, and those that Python reads."""
        table = self.both("dump", self.toml, path, "--format", "csv", allowed=(0,)).stdout
        rows, lines = rows_of(table), objects(
            self.both("dump", self.toml, path, "--format", "ndjson", allowed=(0,)).stdout)
        several = len(self.layout.kinds) > 1
        header = rows.pop(0)
        hold(len(header) == len(self.layout.columns) + several, "columns that are not the layout's")
        hold(len(set(header)) == len(header), f"two columns of one name: {header}")
        hold(len(rows) == len(lines) == len(records), "rows, objects and records are not as many")
        for row, line, (kind, record) in zip(rows, lines, records):
            hold(len(row) == len(header), f"{len(row)} cells, {len(header)} columns: {row}")
            told = values_of(line)
            if several:
                hold(row.pop(0) == told.pop(0) == kind.name, f"another kind than {kind.name}")
            hold(len(told) == len(kind.leaves), f"{len(told)} values, {len(kind.leaves)} fields")
            self.values(row, told, kind, record)
        return table

    def values(self, row, told, kind, record):
        cells = {}
        for value, leaf in zip(told, kind.leaves):
            text = "" if value is None else value
            own = leaf.text(record)
            # Nothing in all that a column holds is nothing in each.
            shared = [each.column for each in kind.leaves].count(leaf.column) > 1
            if own is not None and not (shared and text == ""):
                hold(own == text, f"{leaf.path}: {text!r}, read by Python: {own!r}")
            cells.setdefault(leaf.column, []).append((leaf.join or "", text))
        for column, cell in zip(self.layout.columns, row):
            parts = cells.get(column, [])
            joined = "".join(join + text for join, text in parts)
            absent = len(parts) > 1 and cell == ""
            hold(cell == joined or absent, f"{column}: CSV {cell!r}, NDJSON {joined!r}")

    def there_and_back(self, path, records):
        """A file that passes comes back byte for byte."""
        if self.both("check", self.toml, path).returncode != 0:
            return False
        table = self.texts(path, records)
        back = os.path.join(self.folder, "back")
        margins = ("--like", path) if self.layout.header or self.layout.trailer else ()
        for more in ((), ("--hex",), ("--lf",)):
            if more:
                table = self.run("dump", self.toml, path, "--format", "csv", *more, allowed=(0,)).stdout
            cells = self.store("table.csv", table)
            done = self.run("load", self.toml, cells, "-o", back, *margins, allowed=(0,))
            with open(path, "rb") as before, open(back, "rb") as after:
                hold(before.read() == after.read(),
                     f"dump {more} and load give another file\n{done.stderr.decode()}")
            os.unlink(back)
        self.count("came back")
        return True

    def well_formed(self, records):
        """The records without the values of the fields that have findings."""
        path = self.store("some", self.layout.file(records))
        found = self.run("check", self.toml, path, "--json").stdout
        wrong = {value for value in values_of(document(found)) if isinstance(value, str)}
        made = []
        for kind, record in records:
            record = bytearray(record)
            for leaf in kind.leaves:
                bare = "_".join(step for step in leaf.path if isinstance(step, str))
                names = {each for name in (bare, name_of(leaf.path))
                         for each in (name, f"{kind.name}.{name}")}
                if names & wrong and leaf.path not in self.layout.tells:
                    record[leaf.offset:leaf.offset + leaf.bytes] = leaf.nothing()
            made.append((kind, bytes(record)))
        return made

    def any_bytes(self):
        """Whatever the file holds, every command ends and what it writes can be read."""
        content = self.random.choice([b"", self.layout.header, self.random.randbytes(300),
                                      self.layout.file(self.records(4))[:-self.random.randint(1, 3)]])
        path = self.store("any", content)
        rows_of(self.both("dump", self.toml, path, "--format", "csv").stdout)
        objects(self.both("dump", self.toml, path, "--format", "ndjson").stdout)
        objects(self.both("dump", self.toml, path, "--format", "ndjson", "--hex").stdout)
        for command in ("check", "stats"):
            text = self.both(command, self.toml, path, "--json").stdout
            if text:
                document(text)
        self.both("dump", self.toml, path).stdout.decode("utf-8")
        self.run("report", self.toml, path).stdout.decode("utf-8")
        self.on_terminal(*self.random.choice([
            ("dump", self.toml, path), ("dump", self.toml, path, "--format", "csv"),
            ("dump", self.toml, path, "--format", "ndjson"), ("stats", self.toml, path),
            ("check", self.toml, path), ("dump", self.toml, path, "--hex")]))

    def any_cells(self):
        """A table that is loaded without a word holds the values that were given."""
        kind = self.random.choice(self.layout.kinds)
        shown = rows_of(self.run("dump", self.toml, self.store("none", self.layout.file([])),
                                 "--format", "csv", allowed=(0,)).stdout)
        given = {}
        for leaf in kind.leaves:
            given.setdefault(leaf.column, []).append((leaf.join or "") + self.cell(leaf))
        filled = self.random.choice([0.1, 0.3, 0.6])
        row = ["".join(given[c]) if c in given and self.random.random() < filled else ""
               for c in self.layout.columns]
        if len(self.layout.kinds) > 1:
            row.insert(0, kind.name)
        text = io.StringIO()
        csv.writer(text).writerows([shown[0], row])
        path = self.store("cells.csv", text.getvalue().encode("utf-8"))
        out = os.path.join(self.folder, "loaded")
        margins = ("--like", self.store("margins", self.layout.header + self.layout.trailer)) \
            if self.layout.header or self.layout.trailer else ()
        self.on_terminal("load", self.toml, path, "-o", out, *margins)
        done = self.both("load", self.toml, path, "-o", out, *margins)
        if done.returncode != 0:
            return
        self.count("loaded")
        back = rows_of(self.run("dump", self.toml, out, "--format", "csv", allowed=(0,)).stdout)
        hold(len(back) == 2 and back[0] == shown[0], "another number of rows than given")
        first = len(self.layout.kinds) > 1
        for column, cell, kept in zip(self.layout.columns, row[first:], back[1][first:]):
            leaves = [leaf for leaf in kind.leaves if leaf.column == column]
            if len(leaves) == 1 and cell != "":
                hold(same_value(leaves[0], cell, kept), f"{column}: given {cell!r}, kept {kept!r}")

    def cell(self, leaf):
        chosen = self.random
        number = "".join(chosen.choices("0123456789", k=chosen.choice([1, 2, 3, 4, 9, 12, 20])))
        return chosen.choice([
            number, "-" + number, number[:2] + "." + number, "1,50", "1e5", "1.234,50", "+7", " 12", "0x1F",
            "31/02/2024", "29/02/2024", "2024-02-29", "290224", "24:00", "23:59", "12:34:56", "12:34:60",
            "AB-1", "ab", "A B ", "\u00e7\u00e3o", "\u20ac", "\x1b[31m", "a\nb", "\u009b2J", "a,b", 'say "a"',
            "00112233-4455-6677-8899-aabbccddeeff", "9" * 60, "A" * 80, "5%", "\u0661"])

    def records(self, count, tame=0.8):
        kinds = self.layout.kinds
        chosen = [self.random.choice(kinds) for _ in range(count)]
        return [(kind, self.layout.record(kind, tame)) for kind in chosen]

    def go(self):
        if not self.whole():
            return
        for count in (1, self.random.choice([2, 5, 12])):
            records = self.records(count, self.random.choice([0.2, 0.9]))
            path = self.store("raw", self.layout.file(records))
            if not self.there_and_back(path, records):
                self.texts(path, records)
                records = self.well_formed(records)
                self.there_and_back(self.store("mended", self.layout.file(records)), records)
        if self.random.random() < (1 if self.long else 0.1):  # more than one block
            many = records * (1 + 300000 // max(1, sum(len(record) for _, record in records)))
            path = self.store("many", self.layout.file(many))
            self.both("stats", self.toml, path, "--json", allowed=(0,))
            self.there_and_back(path, many)
        self.any_bytes()
        self.any_cells()


def same_value(leaf, cell, kept):
    if leaf.type in ("TEXT", "DIGITS"):
        return kept.endswith(cell.rstrip(" "))
    if leaf.type == "DATE":
        given, kept = (re.sub("[^0-9]", "", text) for text in (cell, kept))
        return sorted(kept) in [sorted(given + century) for century in ("", "19", "20")]
    if leaf.type.startswith(("NUM", "BIN", "PORC", "QUANTIA", "PARCELA", "ZBTFIELD")):
        try:
            return Decimal(cell.removesuffix("%")) == Decimal(kept)
        except InvalidOperation:
            return False
    if leaf.type.startswith("BSTR"):
        return cell == kept.rstrip("0") or cell == kept or cell.strip("0") == kept.strip("0")
    if leaf.type.startswith("COD"):
        return leaf.options or cell == kept
    if leaf.type == "ZGUID":
        cell, kept = (re.sub("[^0-9a-f]", "", text.lower()) for text in (cell, kept))
    return cell == kept


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("tool")
    parser.add_argument("--rounds", type=int, default=60)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--long", action="store_true", help="a file of several blocks in each round")
    given = parser.parse_args()

    def told(*arguments):
        return subprocess.run([given.tool, *arguments], capture_output=True, text=True,
                              check=True).stdout

    types = {}
    for row in told("types").splitlines()[1:]:
        cells = re.split(" {2,}", row)
        if len(cells) >= 5 and cells[0] != "fill":
            size = re.sub(r"\D", "", cells[2]) or "0"
            types[cells[0]] = (int(size), cells[5].split(", ") if len(cells) > 5 else [])
    hold(len(types) > 40, "the list of types is not read")
    jobs = [c for c in ("dump", "load", "check", "stats") if "--jobs" in told(c, "--help")]
    sums, failed = {}, 0
    for seed in range(given.seed, given.seed + given.rounds):
        folder = tempfile.mkdtemp()
        this = Round(given.tool, types, jobs, seed, folder, given.long)
        try:
            this.go()
            shutil.rmtree(folder)
        except (Broken, ValueError, csv.Error, ElementTree.ParseError) as error:
            failed += 1
            print(f"--rounds 1 --seed {seed}: {type(error).__name__}: {error}\n  files: {folder}")
            if failed == 5:
                break
        for what, times in this.counts.items():
            sums[what] = sums.get(what, 0) + times
    print(f"{given.rounds} rounds: {sums}")
    if failed:
        sys.exit(f"{failed} rounds failed")
    # Most rounds have to reach what is held.
    if given.rounds >= 20:
        hold(sums.get("refused", 0) * 3 < given.rounds, "too many layouts are refused")
        hold(sums.get("came back", 0) > given.rounds, "too few files pass")
        hold(sums.get("loaded", 0) * 8 > given.rounds, "too few tables are loaded")


if __name__ == "__main__":
    main()
