"""Turns readings into the tables and charts of docs/.

report.py times TIMES.json FOOTPRINT.tsv RECORD_TOOL.txt INSTRUCTIONS.tsv OUT.md
report.py instructions BASE_FOLDER V3_FOLDER TABLE.tsv [--compare]
report.py section TITLE TEXT.md OUT.md     a section that another program measured, in the place of the old
"""

import collections
import json
import math
import pathlib
import platform
import re
import statistics
import subprocess
import sys

INPUTS = 512  # operations in one iteration of a benchmark
OURS = "campotipo"

# Why an operation does not get nearer to its goal, or to a peer; told with the reading where it is missed.
REASONS = {
    "quantities/parse": "each limb of 19 digits is converted by a number service, a call by name of its own (two, "
                        "or three for 50 digits); a service stops only at a NUL, so the upper limbs' digits are "
                        "first copied apart",
    "codes/12 characters": "the length, the page test, the look-up of all 128 ASCII characters and the packing take "
                           "one way for every alphabet; there is none of its own for digits and capitals",
    "codes/12 characters to 9 bytes, small letters too":
        "whether every small letter has its own capital is asked of the process's locale, which can change between two "
        "calls",
    "calendar/build a date": "whether the date exists is looked up, because one that does not is stored otherwise, "
                             "and the form in force is a variable that a program may replace",
    "calendar/compare": "both numbers are read by the service that reads dates, two calls by name",
    "calendar/day count of a date": "the number is read and the days are counted by services, two calls by name",
    "calendar/advance 30 days": "the number is read by a service; a date that does not exist must stay as it is, and "
                                "any step up to 2^31 days is taken in one product of 128 bits",
    "bits/make a GUID": "the kernel's file of random GUIDs is opened, read and closed, three calls of the kernel; "
                        "libuuid makes one, for random bytes",
}


def read_times(path):
    """{family: {task: {contender: (min ns, median ns, goal)}}} in the order of the file."""
    readings = collections.OrderedDict()
    data = json.loads(pathlib.Path(path).read_text())
    for run in data["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        family, task, contender = split_name(run["run_name"])
        reading = readings.setdefault((family, task, contender), [run["goal"]])
        reading.append(run["cpu_time"] / INPUTS)
    families = collections.OrderedDict()
    for (family, task, contender), (goal, *values) in readings.items():
        row = (min(values), statistics.median(values), goal)
        families.setdefault(family, collections.OrderedDict()).setdefault(task, {})[contender] = row
    # Random interleaving leaves them in any order.
    families = {family: dict(sorted(tasks.items())) for family, tasks in families.items()}
    return data["context"], families


def split_name(name):
    name = re.sub(r"/(repeats|iterations|min_time):[^/]*", "", name)
    family, rest = name.split("/", 1)
    task, contender = rest.rsplit("/", 1)
    return family, task, contender


def read_instructions(folder):
    """{task: instructions an operation} from callgrind's dumps."""
    counts = {}
    for path in sorted(pathlib.Path(folder).glob("out*"), key=dump_number):
        text = path.read_text(errors="replace")
        name = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
        total = re.search(r"^totals: (\d+)", text, re.M)
        if name and total:
            counts[name.group(1)] = int(total.group(1)) / INPUTS
    return counts


def dump_number(path):
    return int(path.suffix[1:] or 0) if path.suffix[1:].isdigit() else 0


def write_instructions(base, v3, table, compare):
    base, v3 = read_instructions(base), read_instructions(v3)
    if not base or base.keys() != v3.keys():
        sys.exit("error: the dumps of the two builds do not name the same tasks")
    if compare:
        return compare_instructions(base, v3, table)
    lines = ["task\tbaseline\tx86-64-v3"]
    lines += [f"{task}\t{base[task]:.1f}\t{v3[task]:.1f}" for task in base]
    pathlib.Path(table).write_text("\n".join(lines) + "\n")
    print(f"{len(base)} tasks counted, {table} written")


def compare_instructions(base, v3, table):
    worse = 0
    kept = load_table(table)
    for task, (old_base, old_v3) in kept.items():
        for build, old, new in (("baseline", old_base, base.get(task)), ("x86-64-v3", old_v3, v3.get(task))):
            if new is None:
                print(f"{task}: kept, but no longer counted")
                worse += 1
            elif new > old * 1.05 + 0.5:
                print(f"{task}, {build}: {old:.1f} instructions kept, {new:.1f} now")
                worse += 1
    missing = [task for task in base if task not in kept]
    for task in missing:
        print(f"{task}: counted, but not kept; run scripts/bench --instructions")
    print(f"{len(kept)} tasks compared, {worse + len(missing)} findings")
    sys.exit(1 if worse or missing else 0)


def load_table(path):
    rows = [line.split("\t") for line in pathlib.Path(path).read_text().splitlines()[1:]]
    return {task: (float(base), float(v3)) for task, base, v3 in rows}


def table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|" + "---|" * len(header)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def family_table(tasks, call):
    rows = []
    for task, contenders in tasks.items():
        ours, median, goal = contenders[OURS]
        met = "" if not goal else f"{goal:g}" + ("" if round(ours, 1) <= goal else " (not met)")
        rows.append([f"**{task}**", f"**{ours:.1f}**", f"{median:.1f}", "", f"{ours - call:+.1f}", met])
        for name, (least, middle, _) in contenders.items():
            if name != OURS:
                rows.append([f"&emsp;{name}", f"{least:.1f}", f"{middle:.1f}", f"{least / ours:.1f}x", "", ""])
    return table(["task, and who does it", "min ns", "median ns", "peer / ours", "above an empty call", "goal"], rows)


def missed_goals(families):
    """A line for each goal that was missed, with the reason."""
    lines = []
    for family, tasks in families.items():
        for task, contenders in tasks.items():
            ours, _, goal = contenders[OURS]
            name = f"{family}/{task}"
            reason = max((key for key in REASONS if name.startswith(key)), key=len, default=None)
            if goal and round(ours, 1) > goal:
                why = REASONS[reason] if reason else "no reason is known but the spread of the readings"
                lines.append(f"- **{task}**, {ours:.1f} ns for {goal:g}: {why}.")
            elif reason and any(least < ours for peer, (least, _, _) in contenders.items()
                                if peer != OURS and "(inline)" not in peer and not peer.startswith("floor")):
                lines.append(f"- **{task}**, slower than a peer: {REASONS[reason]}.")
    return "\n".join(lines) or "None."


def growth_table(tasks):
    series = collections.OrderedDict()
    for task, contenders in tasks.items():
        name, size = task.rsplit("/", 1)
        series.setdefault(name, []).append((int(size), contenders[OURS][0]))
    return "\n".join(
        table([name] + [f"{size}" for size, _ in sorted(points)],
              [["min ns"] + [f"{value:.1f}" for _, value in sorted(points)]])
        for name, points in series.items())


def chart(families):
    """Bars of peer / ours for each task's fastest and slowest peer, on a logarithmic scale."""
    bars = []
    for family, tasks in families.items():
        for task, contenders in tasks.items():
            peers = [(least / contenders[OURS][0], name) for name, (least, _, _) in contenders.items()
                     if name != OURS and not name.startswith("floor")]
            if peers and family != "growth":
                bars.append((family, task, min(peers), max(peers)))
    left, width, row = 330, 520, 22
    height = row * len(bars) + 50
    most = max(bar[3][0] for bar in bars)

    place = lambda ratio: left + width * max(0.0, math.log10(ratio) + 0.5) / (math.log10(most) + 0.5)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {left + width + 210} {height}" '
           'font-family="system-ui, sans-serif" font-size="12" role="img" '
           'aria-label="How many times the time of the library each peer takes">',
           '<style>text{fill:#24292f}.g{stroke:#d0d7de}.n{fill:#57606a}'
           '@media(prefers-color-scheme:dark){text{fill:#e6edf3}.g{stroke:#30363d}.n{fill:#8d96a0}}</style>']
    for ratio in (1, 2, 5, 10, 20, 50, 100, 200, 500):
        if ratio <= most:
            x = place(ratio)
            out.append(f'<line class="g" x1="{x:.0f}" x2="{x:.0f}" y1="24" y2="{height - 16}"/>'
                       f'<text class="n" x="{x:.0f}" y="16" text-anchor="middle">{ratio}x</text>')
    for i, (family, task, least, greatest) in enumerate(bars):
        y = 30 + row * i
        out.append(f'<text x="{left - 8}" y="{y + 11}" text-anchor="end">{task.replace("&", "&amp;")}</text>')
        out.append(f'<rect x="{place(least[0]):.0f}" y="{y + 2}" rx="3" height="11" fill="#2da44e" '
                   f'width="{max(3, place(greatest[0]) - place(least[0])):.0f}"/>')
        label = least[1] if least == greatest else f"{least[1]} … {greatest[1]}"
        out.append(f'<text class="n" font-size="11" x="{place(greatest[0]) + 6:.0f}" y="{y + 11}">{label}</text>')
    return "\n".join(out + ["</svg>"]) + "\n"


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.processor()


# Sections that other programs measure and this one keeps when it writes the rest.
KEPT = ["SQL over a file of records"]


def section_of(text, title):
    """(begin, end) of a section in a page; both its end where it is not there."""
    begin = text.find(f"\n## {title}\n")
    if begin < 0:
        return len(text), len(text)
    end = text.find("\n## ", begin + 1)
    return begin, end if end >= 0 else len(text)


def put_section(title, body, out):
    page = pathlib.Path(out)
    text = page.read_text()
    begin, end = section_of(text, title)
    page.write_text(text[:begin] + f"\n## {title}\n\n{body.strip()}\n" + text[end:])


def kept_sections(out):
    page = pathlib.Path(out)
    text = page.read_text() if page.exists() else ""
    return "".join(text[slice(*section_of(text, title))] for title in KEPT)


def write_report(times, footprint, record_tool, instructions, out):
    context, families = read_times(times)
    call = families["floor"]["call"][OURS][0]
    text = f"""# Benchmarks

Written by `scripts/bench`. Each operation is called through the installed shared library, as an
application calls it, beside peers that do the same job, in one process and on the same 512 varied
inputs. Every peer's answer is compared with the library's before anything is timed. Repetitions are
interleaved; **min** is the least of 18, **median** the middle one, in ns an operation.

How to read it: compare min with min, in one run. "peer / ours" says how many times the library's
time the peer takes; below 1.0x the peer is faster. "(inline)" marks peers that the compiler builds
into the caller, without a call: they save the cost of the empty call, {call:.1f} ns here, that every
operation of a shared library pays. "above an empty call" is what is left of ours. A peer marked
"not exact" gives another answer for some inputs. Goals marked "(not met)" were missed in this run.

Machine: {processor()}, {context["num_cpus"]} processors, the x86-64-v3 build of the library (taken by
the loader), g++ {gxx_version()}. Peers are Debian's packages.

![How many times the time of the library each peer takes](benchmarks.svg)

"""
    for family, tasks in families.items():
        if family == "growth":
            continue
        text += f"## {family}\n\n{family_table(tasks, call)}\n"
    text += ("## Goals missed in this run, and peers that are ahead\n\n" + missed_goals(families) +
             "\n\n## the record tool\n\nThe command `campotipo` beside plain C that does the same work, the outputs "
             "compared first (`bench/record_tool.sh`). The plain C takes every value for good; the command tells "
             "each one that cannot be stored whole.\n\n```\n" +
             pathlib.Path(record_tool).read_text() + "```\n\n")
    text += "## growth\n\nCost over the size of what is done: flat where the size is only a number, linear in text.\n\n"
    text += growth_table(families["growth"])
    text += "\n## memory and loading\n\n" + footprint_table(footprint)
    kept = load_table(instructions)
    text += ("\n## instructions\n\nCounted by callgrind, the same in every run; kept in `instructions.tsv`, and "
             "`scripts/check instructions` fails where one grows by more than 5%.\n\n")
    text += table(["task", "baseline", "x86-64-v3"],
                  [[task, f"{base:.1f}", f"{v3:.1f}"] for task, (base, v3) in kept.items() if not task.startswith("growth/")])
    path = pathlib.Path(out)
    path.write_text(text + kept_sections(out))
    path.with_suffix(".svg").write_text(chart(families))


def footprint_table(path):
    lines = [line.split("\t") for line in pathlib.Path(path).read_text().splitlines()]
    rows = [line for line in lines[1:] if line[0] != "load"]
    with_both, without = next((int(line[1]), int(line[2])) for line in lines if line[0] == "load")
    return (table(lines[0], rows) +
            f"\nThe loader spends {with_both - without:,} processor cycles more on a program that needs both libraries "
            f"than on one that needs none ({with_both:,} and {without:,}, the least of 300 starts). Nothing allocates "
            "on a timed path; nothing runs at load.\n")


def gxx_version():
    return subprocess.run(["g++", "-dumpfullversion"], capture_output=True, text=True, check=True).stdout.strip()


if __name__ == "__main__":
    if sys.argv[1:2] == ["times"] and len(sys.argv) == 7:
        write_report(*sys.argv[2:])
    elif sys.argv[1:2] == ["instructions"] and len(sys.argv) in (5, 6):
        write_instructions(*sys.argv[2:5], compare="--compare" in sys.argv)
    elif sys.argv[1:2] == ["section"] and len(sys.argv) == 5:
        put_section(sys.argv[2], pathlib.Path(sys.argv[3]).read_text(), sys.argv[4])
    else:
        sys.exit(__doc__)
