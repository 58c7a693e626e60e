"""Lines and branches reached, a row for each file and folder, from the JSON of gcovr for each build.

usage: coverage.py TOGETHER.json BUILD.json...
"""
import collections
import itertools
import json
import os
import sys


def add_line(left, right):
    left["count"] += right["count"]
    left["gcovr/noncode"] &= right["gcovr/noncode"]
    pairs = itertools.zip_longest(left["branches"], right["branches"])
    left["branches"] = [dict(a or b, count=sum(way["count"] for way in (a, b) if way)) for a, b in pairs]
    return left


def together(paths):
    """The builds differ in which of two functions of a name they take: those are left out."""
    for path in paths:
        with open(path, encoding="utf-8") as source:
            report = json.load(source)
        for file in report["files"]:
            lines = files.setdefault(file["file"], {})
            for line in file["lines"]:
                number = line["line_number"]
                lines[number] = add_line(lines[number], line) if number in lines else line
    report["files"] = [{"file": name, "functions": [], "lines": [lines[n] for n in sorted(lines)]}
                       for name, lines in sorted(files.items())]
    return report


def percent(reached, total):
    return f"{100 * reached / total:6.1f}%" if total else "      -"


def row(name, counts, missed=""):
    lines, lines_hit, branches, branches_hit = counts
    print(f"{name:36} {lines_hit:5}/{lines:<5} {percent(lines_hit, lines)} "
          f"{branches_hit:6}/{branches:<6} {percent(branches_hit, branches)}  {missed}".rstrip())


files = {}
merged = together(sys.argv[2:])
with open(sys.argv[1], "w", encoding="utf-8") as target:
    json.dump(merged, target)
folders = collections.defaultdict(lambda: [0, 0, 0, 0])
print(f"{'file':36} {'lines':>11} {'':7} {'branches':>13} {'':7}   lines not reached; ways not taken at")
for file in merged["files"]:
    counts, missed, partly = [0, 0, 0, 0], [], []
    for line in file["lines"]:
        if line["gcovr/noncode"]:
            continue
        number, ways = line["line_number"], line["branches"]
        taken = sum(way["count"] > 0 for way in ways)
        for i, value in enumerate((1, line["count"] > 0, len(ways), taken)):
            counts[i] += value
        if not line["count"]:
            missed.append(str(number))
        elif taken < len(ways):
            partly.append(str(number))
    total = folders[os.path.dirname(file["file"])]
    total[:] = [a + b for a, b in zip(total, counts)]
    row(file["file"], counts, " ".join(missed) + ("; " + " ".join(partly) if partly else ""))
print()
for name in sorted(folders):
    row(name, folders[name])
