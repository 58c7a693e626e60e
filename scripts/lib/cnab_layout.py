"""Turns the CNAB descriptions of the npm package @banco-br/cnab_yaml into layouts.

usage: cnab_layout.py PACKAGE VERSION [NAME | --all FOLDER]

A bank's files stand on those of generic/: what a bank leaves open is taken from there, as the
package means it. Fields that overlap another are left out and told in comments; places that nothing
describes become reserved texts, so that every byte comes back.
"""

import re
import sys
from pathlib import Path

import yaml

# A note may stand behind it.
PICTURE = re.compile(r"([9X])\(0*(\d+)\)(?:V9\(0*(\d+)\))?(?=$| )", re.IGNORECASE)
DATES = {"%d%m%Y": ("DATE", "DDMMAAAA"), "%d%m%y": ("DATE", "DDMMAA"), "%H%M%S": ("TIME", "HHMMSS")}
COUNTED = re.compile(r"qtd|quantidade|valor|vlr|numero_sequencial|total")
WAYS = ("remessa", "retorno")
# Where a record tells its kind: first position, and the value of each description by its name.
KINDS = {240: (8, {"header_arquivo": "0", "header_lote": "1", "detalhe": "3", "trailer_lote": "5",
                   "trailer_arquivo": "9"}),
         400: (1, {"header_arquivo": "0", "detalhe_multa": "2", "detalhe": "1",
                   "trailer_arquivo": "9"})}
PLACES = {"header_arquivo": "first = true", "trailer_arquivo": "last = true",
          "trailer_lote": 'closes = "header_lote"', "detalhe": "main = true"}
ORDER = ("header_arquivo", "header_lote", "detalhe", "trailer_lote", "trailer_arquivo")


class Field:
    def __init__(self, name, node):
        entries = {key.value: value for key, value in node.value}
        self.name = re.sub(r"\W", "_", name.lower())
        self.first, self.last = (int(place.value) for place in entries["pos"].value)
        match = PICTURE.match(entries["picture"].value.strip())
        if not match:
            raise ValueError(f"{name}: the picture {entries['picture'].value!r} is unknown")
        self.letter, self.decimals = match[1].upper(), int(match[3] or 0)
        self.drawn = int(match[2]) + self.decimals
        self.default = entries["default"].value if "default" in entries else ""
        date = entries.get("date_format")
        self.date = DATES.get(date.value) if date else None
        if self.date and len(self.date[1]) != self.width:
            self.date = None

    @property
    def width(self):
        return self.last - self.first + 1

    def type(self):
        if self.date:
            empty = '["0", " "]' if self.date[0] == "DATE" else '" "'
            return f'type = "{self.date[0]}", stored = "{self.date[1]}", empty = {empty}'
        if self.letter == "X" or self.width > 50:
            return f'type = "TEXT", bytes = {self.width}'
        if self.decimals and self.drawn == self.width:
            return f'type = "NUM", digits = {self.width}, decimals = {self.decimals}, empty = " "'
        kind = "NUM" if COUNTED.match(self.name) else "DIGITS"
        return f'type = "{kind}", digits = {self.width}, empty = " "'


def fields_of(path):
    """The fields of one description, in its order; None for a table of codes."""
    data = path.read_bytes()
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = data.decode("windows-1252")
    node = yaml.compose(text)
    if not all(isinstance(value, yaml.MappingNode) for _, value in node.value):
        return None
    return [Field(key.value, value) for key, value in node.value]


def size_of(name):
    return int(name.split("/")[0][len("cnab"):])


def base_name(path):
    return path.name.rsplit(".", 1)[0]


def layers(package, name, record, way):
    """The descriptions of a record, the bank's own variant first, the generic one last."""
    parts = [part for part in name.split("/") if part not in WAYS]
    folders = [package / "/".join(parts[:depth]) for depth in range(len(parts), 1, -1)]
    folders.append(package / parts[0] / "generic")
    for folder in dict.fromkeys(folders):
        for place in (folder / way, folder):
            for ending in (".yml", ".yaml"):
                if (place / (record + ending)).is_file():
                    yield place / (record + ending)


def marks(record, size):
    """The position and value of what tells the kind, as a dictionary."""
    first, values = KINDS[size]
    key = next((key for key in values if record.startswith(key)), None)
    if key is None:
        raise SystemExit(f"error: {record} is no kind of record that is known")
    wanted = {first: values[key]}
    if size == 240 and "segmento_" in record:
        wanted[14] = record.rsplit("_", 1)[1].upper()
    return wanted


def merge(descriptions, size, wanted=()):
    """Fields that do not overlap, in order, and what was left out; wanted places go first."""
    chosen, left_out = [], []

    def free(field):
        return field.last <= size and field.first <= field.last and all(
            field.last < other.first or other.last < field.first for other in chosen)

    everything = [field for fields in descriptions for field in fields]
    for place in wanted:
        found = [f for f in everything if f.first == f.last == place]
        if found:
            chosen.append(found[0])
    # Places that do not agree with the picture are a slip of the pen: they come last.
    for exact in (True, False):
        for fields in descriptions:
            replaced = {field.name for field in chosen if field not in fields}
            for field in fields:
                if (field.drawn == field.width) is not exact or field in chosen:
                    continue
                if free(field) and field.name not in replaced:
                    chosen.append(field)
                elif fields is descriptions[0]:
                    left_out.append(field)
    return sorted(chosen, key=lambda f: f.first), left_out


def lines_of(chosen, size):
    """The lines of a record, with reserved texts where nothing is described."""
    names, rows, place = set(), [], 1

    def add(first, name, kind, note=""):
        unique = name if name not in names else f"{name}_{first}"
        names.add(unique)
        rows.append(f'  {{ at = {first}, name = "{unique}", {kind} }},{note}')

    for field in [*chosen, None]:
        first = field.first if field else size + 1
        if first > place:
            add(place, f"reservado_{place}", f'type = "TEXT", bytes = {first - place}')
        if field:
            odd = "" if field.drawn == field.width else f"  # drawn with {field.drawn} positions"
            add(first, field.name, field.type(), odd)
            place = field.last + 1
    return ["field = [", *rows, "]"]


def head(title, name, size, version):
    short = re.sub(r"\W", "-", re.sub(r"\.ya?ml$", "", name))
    return [f"# {title}", f"# Source: npm @banco-br/cnab_yaml {version} (MIT), {name}", "",
            f'name = "{short}"', f"size = {size}", 'encoding = "ISO-8859-1"', 'line_end = "crlf"',
            ""]


def one_record(package, name, version):
    fields, size = fields_of(package / name), size_of(name)
    if fields is None:
        return None
    chosen, left_out = merge([fields], size)
    notes = [f"# left out, overlaps: {f.name}, {f.first} to {f.last}" for f in left_out]
    return head("One kind of record.", name, size, version) + notes + lines_of(chosen, size)


def record_names(package, name, way):
    """The kinds of a file: those that the bank or its variant describes, and what frames them."""
    own = {base_name(path) for path in (package / name).glob("*.y*ml")}
    frame = {base_name(path) for path in (package / name.split("/")[0] / "generic").glob("*.y*ml")}
    generic = package / name.split("/")[0] / "generic" / way
    frame |= {base_name(path) for path in generic.glob("*_arquivo.y*ml")}
    names = {record for record in own | frame if record != "codigo_ocorrencia"}
    if "header_lote_captura" in names:  # another service in the folder of returns
        names.remove("header_lote_captura")
    # A kind with fewer conditions stands behind those with more.
    def place(record):
        group = next(i for i, key in enumerate(ORDER) if record.startswith(key))
        return group, -record.count("_"), record

    return sorted(names, key=place)


def whole_file(package, name, version):
    way, size = name.split("/")[-1], size_of(name)
    lines = head("A whole file.", name, size, version)
    for record in record_names(package, name, way):
        wanted = marks(record, size)
        descriptions = [fields_of(path) for path in layers(package, name, record, way)]
        chosen, left_out = merge(descriptions, size, wanted)
        when = []
        for place, value in wanted.items():
            field = next((f for f in chosen if f.first == f.last == place), None)
            if field is None:
                raise SystemExit(f"error: {record}: nothing tells the kind at position {place}")
            default = field.default if size == 400 and record == "detalhe" else ""
            when.append(f'{field.name} = "{default or value}"')
        lines += ["[[record]]", f'name = "{record.removeprefix("detalhe_")}"']
        lines += [f"when = {{ {', '.join(when)} }}"]
        lines += [PLACES[record]] if record in PLACES else []
        lines += [f"# left out, overlaps: {f.name}, {f.first} to {f.last}" for f in left_out]
        lines += lines_of(chosen, size) + [""]
    return lines


def layout(package, name, version):
    """The text of a layout; None for a table of codes."""
    make = whole_file if name.split("/")[-1] in WAYS else one_record
    lines = make(package, name, version)
    return None if lines is None else "\n".join(lines).rstrip("\n") + "\n"


def known(package):
    """Every name that can be asked for: folders of whole files, then single records."""
    files = sorted(path.relative_to(package) for path in package.glob("cnab*/**/*.y*ml"))
    folders = {str(path.parent) for path in files if path.parent.name in WAYS}
    return sorted(folders) + [str(path) for path in files]


def main():
    package, version, names = Path(sys.argv[1]), sys.argv[2], sys.argv[3:]
    if not names:
        print("\n".join(known(package)))
        return
    if names[0] == "--all":
        for name in known(package):
            target = Path(names[1]) / re.sub(r"(\.ya?ml)?$", ".toml", name, count=1)
            target.parent.mkdir(parents=True, exist_ok=True)
            text = layout(package, name, version)
            if text is not None:
                target.write_text(text, encoding="utf-8")
        return
    name = names[0].rstrip("/")
    if name not in known(package):
        raise SystemExit(f"error: there is no {name}; without it all names are listed")
    text = layout(package, name, version)
    if text is None:
        raise SystemExit(f"error: {name} is a table of codes, not a record")
    print(text, end="")


if __name__ == "__main__":
    main()
