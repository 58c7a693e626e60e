"""Random layouts and files of records, with what a reader in Python knows of them."""

import datetime
import json
import re
import string
from decimal import Decimal, localcontext

FIRST = "aAbcdntvxzZéq$<'&" + "\x7f\u009b\u20ac"
NAMES = ["restrict", "or", "class", "template", "int", "a*/", "x-1", "a_hex", "ção", "record",
         "%s", "\\n", "</svg>", "2", "'", "`", "fill"]
CHARSETS = {"ISO-8859-1": "latin-1", "UTF-8": "utf-8", "CP850": "cp850", "windows-1252": "cp1252"}
JOINS = [" ", "T", ";", "|", "_"]


CHARACTERS = ("TEXT", "DIGITS", "NUM", "DATE", "TIME")
OVERPUNCH = {"{": "0", "}": "0", **{c: str(i + 1) for i, c in enumerate("ABCDEFGHI")},
             **{c: str(i + 1) for i, c in enumerate("JKLMNOPQR")}}


def form_of(date, form, pivot):
    """A date in a form of DD, MM and AAAA or AA."""
    year = f"{date.year:04}"
    parts = {"DD": f"{date.day:02}", "MM": f"{date.month:02}", "AAAA": year, "AA": year[2:]}
    return re.sub("DD|MM|AAAA|AA", lambda found: parts[found.group()], form)


class Leaf:
    """One value of a record: what the layout told of it, and where it lies."""

    def __init__(self, **known):
        self.__dict__.update(known)

    def text(self, record):
        """Its text by an independent reader; None where there is none or it is not well formed."""
        field = record[self.offset:self.offset + self.bytes]
        kind = self.type
        if kind in CHARACTERS:
            return self.characters(field)
        if kind == "ZBTFIELD":
            order = "big" if self.big else "little"
            shift = 8 * self.bytes - self.start - self.bits if self.big else self.start
            return str(int.from_bytes(field, order) >> shift & (1 << self.bits) - 1)
        if kind.startswith("CODSTR"):
            raw, _, rest = field.partition(b"\0")
            try:
                return None if rest.strip(b"\0") else raw.decode(CHARSETS[self.charset])
            except UnicodeDecodeError:
                return None
        if kind.startswith("BIN") and not kind.startswith("BINQ"):
            number = int.from_bytes(field, "little")
        elif kind in ("QUANTIA", "PARCELA"):
            number = int.from_bytes(field, "little", signed=True)
        else:
            return None
        digits = str(abs(number)).rjust(self.decimals + 1, "0")
        point = len(digits) - self.decimals
        return "-" * (number < 0) + digits[:point] + "." * (self.decimals > 0) + digits[point:]


    def characters(self, field):
        """The text of a field that is stored as characters."""
        if field in self.empties:
            return ""
        try:
            text = field.decode(CHARSETS[self.charset])
        except UnicodeDecodeError:
            return None
        if self.type == "TEXT":
            blank = text.strip(" ") == ""
            return None if "\0" in text else "" if blank else text if self.pad else text.rstrip(" ")
        if self.type == "DIGITS":
            return text if re.fullmatch("[0-9]+", text) else None
        if self.type == "NUM":
            return self.number(text)
        if self.type == "TIME":
            parts = re.fullmatch("([01][0-9]|2[0-3])" + "([0-5][0-9])" * (self.bytes // 2 - 1), text)
            return self.separator.join(parts.groups()) if parts else None
        pattern = re.escape(self.stored).replace("DD", "(?P<d>[0-9]{2})").replace(
            "MM", "(?P<m>[0-9]{2})").replace("AAAA", "(?P<y>[0-9]{4})").replace("AA", "(?P<s>[0-9]{2})")
        found = re.fullmatch(pattern, text)
        if not found:
            return None
        parts = {name: int(part) for name, part in found.groupdict().items()}
        year = parts.get("y", parts.get("s", 0) + (2000 if parts.get("s", 0) < self.pivot else 1900))
        try:
            return form_of(datetime.date(year, parts["m"], parts["d"]), self.format, self.pivot)
        except ValueError:
            return None

    def number(self, text):
        negative, digits = False, text
        if self.sign == "leading":
            sign, digits = text[0], text[1:]
        elif self.sign == "trailing":
            sign, digits = text[-1], text[:-1]
        elif self.sign == "overpunch":
            sign = "-" if text[-1] in "}JKLMNOPQR" else "+"
            digits = text[:-1] + OVERPUNCH.get(text[-1], text[-1])
        else:
            sign = "+"
        if self.pad == " ":
            digits = digits.lstrip(" ").rjust(1, " ")
        if sign not in "+- " or not re.fullmatch("[0-9]+", digits):
            return None
        with localcontext() as context:
            context.prec = 60
            value = Decimal(digits).scaleb(-self.decimals)
            return format(-value if sign == "-" and value else value, "f")

    def store(self, digits, negative):
        """A number's digits as they stand in a field."""
        if self.pad == " ":
            digits = (digits.lstrip("0") or "0").rjust(len(digits), " ")
        if self.sign == "overpunch":
            digits = digits[:-1] + ("}JKLMNOPQR" if negative else "{ABCDEFGHI")[int(digits[-1])]
        sign = "-" if negative else "+"
        return (sign * (self.sign == "leading") + digits + sign * (self.sign == "trailing")).encode()

    def nothing(self):
        """The stored form of no text."""
        if self.type not in CHARACTERS:
            return bytes(self.bytes)
        if self.empties:
            return self.empties[0]
        return self.store("0" * self.digits, False) if self.type == "NUM" else b"0" * self.bytes

    def something(self, random):
        """The stored form of some value."""
        if self.type == "TEXT":
            return bytes(random.choices(b"Az 09,\"\xe9" if self.charset != "UTF-8" else b"Az 09,;",
                                        k=self.bytes))
        if self.type == "DIGITS":
            return "".join(random.choices(string.digits, k=self.bytes)).encode()
        if self.type == "NUM":
            zeros = random.randint(0, self.digits)
            digits = "0" * zeros + "".join(random.choices(string.digits, k=self.digits - zeros))
            return self.store(digits, bool(self.sign) and digits.strip("0") != "" and
                              random.random() < 0.4)
        if self.type == "TIME":
            return (f"{random.randint(0, 23):02}" + "".join(
                f"{random.randint(0, 59):02}" for _ in range(self.bytes // 2 - 1))).encode()
        day = datetime.date.fromordinal(random.choice([
            random.randint(1, 3652059), random.randint(719163, 750000)]))
        return form_of(day, self.stored, self.pivot).encode()


class Kind:
    def __init__(self, name):
        self.name, self.leaves, self.fills, self.size, self.when = name, [], [], 0, []


class Layout:
    """A layout with its TOML text; `types` maps the name of a type to its bytes and keys."""

    def __init__(self, random, types, parcela_decimals):
        self.random, self.types, self.lines = random, types, []
        self.line("name", "r" + self.name())
        self.charset = random.choice(list(CHARSETS))
        if random.random() < 0.5:
            self.line("encoding", self.charset)
        else:
            self.charset = "ISO-8859-1"
        self.parcela = parcela_decimals
        self.line("parcela_decimals", parcela_decimals)
        self.header = self.trailer = self.end = b""
        self.prefix = None
        self.chosen = list(types)
        if random.random() < 0.25:
            self.end = random.choice([b"\n", b"\r\n"])
            self.line("line_end", "crlf" if b"\r" in self.end else "lf")
            self.chosen = list(CHARACTERS)
        else:
            self.header, self.trailer = self.margin("header"), self.margin("trailer")
        if not self.end and random.random() < 0.3:
            self.prefix = (random.choice([2, 3, 8]), random.choice(["little", "big"]),
                           random.random() < 0.5)
            self.lines.append('length = { bytes = %d, order = "%s", counts_itself = %s }' %
                              (*self.prefix[:2], str(self.prefix[2]).lower()))
        self.tells = []
        if random.random() < 0.65:
            self.kinds = [Kind(None)]
            self.fields(self.kinds[0], "field", (), "", 0, 0, 6)
            if not self.kinds[0].leaves:
                self.lines += ["[[field]]", 'name = "only"']
                self.value(self.kinds[0], ("only",), "", random.choice(self.chosen))
        else:
            self.several()
        self.columns = list(dict.fromkeys(leaf.column for k in self.kinds for leaf in k.leaves))

    toml = property(lambda self: "\n".join(self.lines) + "\n")

    def line(self, key, value):
        self.lines.append(f"{key} = {json.dumps(value, ensure_ascii=False)}".replace("\x7f", "\\u007f"))

    def name(self):
        random = self.random
        if random.random() < 0.08:
            return random.choice(NAMES)
        return random.choice(FIRST if random.random() < 0.1 else string.ascii_lowercase) + "".join(
            random.choices(string.ascii_lowercase + string.digits + "_", k=random.randint(2, 6)))

    def margin(self, key):
        if self.random.random() < 0.75:
            return b""
        content = self.random.randbytes(self.random.randint(1, 5))
        if self.random.random() < 0.5:
            self.line(key, len(content))
        else:
            self.lines.append('%s = { hex = "%s" }' % (key, content.hex()))
        return content

    def several(self):
        """Kinds told by a field, or by that and another: the values of the last one differ."""
        random = self.random
        self.tells = [("sel" + self.name(),), ("sub" + self.name(),)][:random.randint(1, 2)]
        self.kinds = []
        kinds_of = [random.choice(["CODSTR"] if self.end else ["BIN1", "BIN2", "CODSTR"])
                    for _ in self.tells]
        values = random.sample(range(10, 90), 12)
        shared = random.sample(range(10, 90), 2)
        lead = random.randint(0, 3)
        count = random.randint(1, 4)

        def stored(value, kind_of):
            return (str(value).encode() if kind_of == "CODSTR" else
                    value.to_bytes(int(kind_of[3]), "little"))

        for number in range(count):
            self.lines.append("[[record]]")
            kind = Kind(f"{self.name()}{number}")
            self.line("name", kind.name)
            if number < count - 1 or random.random() < 0.5:
                mine = [values.pop() for _ in range(random.randint(1, 2))]
                told = [[random.choice(shared)], mine][-len(self.tells):]
                kind.when = [[stored(value, kind_of) for value in each]
                             for each, kind_of in zip(told, kinds_of)]
                self.lines.append("when = { %s }" % ", ".join(
                    json.dumps(path[0], ensure_ascii=False).replace("\x7f", "\\u007f") + " = " +
                    json.dumps(list(map(str, each)) if len(each) > 1 or random.random() < 0.5
                               else str(each[0]))
                    for path, each in zip(self.tells, told)))
            if lead:
                self.lines += ["[[record.field]]", 'type = "fill"', f"bytes = {lead}"]
                kind.fills.append((0, bytes(lead)))
                kind.size = lead
            for path, kind_of in zip(self.tells, kinds_of):
                self.lines.append("[[record.field]]")
                self.line("name", path[0])
                self.value(kind, path, "", kind_of, 2)
            self.fields(kind, "record.field", (), "", number > 0 and random.randint(0, 1), 0, 4)
            self.kinds.append(kind)
        self.selects = [slice(leaf.offset, leaf.offset + leaf.bytes)
                        for leaf in self.kinds[0].leaves[:len(self.tells)]]

    def fields(self, kind, key, path, suffix, depth, least, most):
        """Some fields; a group that repeats is told once and lies there as often."""
        random = self.random
        for _ in range(random.randint(least, most)):
            name = self.name() + str(len(self.lines))
            self.lines.append(f"[[{key}]]")
            choice = random.random()
            if choice < 0.1:
                self.fill(kind)
                continue
            self.line("name", name)
            places = [None]
            if random.random() < 0.2:
                places = list(range(random.randint(1, 3)))
                self.line("count", len(places))
            group = choice < 0.25 and depth < 3
            told = random.choice(self.chosen)
            begin, state = len(self.lines), random.getstate()
            for place in places:
                # Each place is made from the same random numbers, and its lines stand once.
                del self.lines[begin:]
                random.setstate(state)
                inner = path + ((name,) if place is None else (name, place))
                behind = suffix + ("" if place is None else f"_{place + 1}")
                if group:
                    self.fields(kind, key + ".field", inner, behind, depth + 1, 1, 3)
                else:
                    self.value(kind, inner, behind, told)

    def fill(self, kind):
        self.line("type", "fill")
        content = (bytes(self.random.choices(b" 0x", k=self.random.randint(1, 3))) if self.end else
                   self.random.randbytes(self.random.randint(1, 3)))
        if self.random.random() < 0.5:
            self.line("hex", content.hex())
        else:
            content = content[:1] * self.random.randint(1, 4)
            self.lines += [f"bytes = {len(content)}", f"value = {content[0]}"]
        kind.fills.append((kind.size, content))
        kind.size += len(content)

    def value(self, kind, path, suffix, type_name, told_bytes=None):
        random = self.random
        size, keys = self.types[type_name]
        self.line("type", type_name)
        leaf = Leaf(path=path, type=type_name, offset=kind.size, bytes=size, decimals=0,
                    charset=self.charset, options=False, sign="", pad="", stored="",
                    separator=":", format="DD/MM/AAAA", pivot=80, empties=[],
                    column=name_of(path), join=None)
        if type_name.startswith("CODALFA") and "positions" in keys:
            positions = random.randint(1, 60)
            self.line("positions", positions)
            leaf.bytes = (6 * positions + 7) // 8
        elif type_name in CHARACTERS:
            self.character_keys(leaf, keys)
        elif "bytes" in keys:
            leaf.bytes = told_bytes or random.randint(1, 30)
            self.line("bytes", leaf.bytes)
        if type_name == "NUM":
            pass
        elif "decimals" in keys and told_bytes is None and random.random() < 0.4:
            leaf.decimals = random.choice([1, 2, 5, 30])
            self.line("decimals", leaf.decimals)
        leaf.decimals = {"QUANTIA": 2, "PARCELA": self.parcela}.get(type_name, leaf.decimals)
        if "options" in keys and random.random() < 0.3:
            known = (["zeros", "cut_left", "digits_only"] if "fold" in keys else
                     ["cut_left"] if "encoding" in keys else ["dashes", "capitals", "braces"])
            self.line("options", random.sample(known, random.randint(1, len(known))))
            leaf.options = True
        if "fold" in keys and random.random() < 0.2:
            self.lines.append("fold = true")
            leaf.options = True
        if "separator" in keys and random.random() < 0.3:
            leaf.separator = random.choice(".-h;'")
            self.line("separator", leaf.separator)
        if "pivot" in keys:
            pass
        elif "format" in keys:
            if random.random() < 0.5:
                self.line("format", random.choice(["AAAA-MM-DD", "DDMMAAAA", "AA/MM/DD", "DD.MM.AA"]))
            if random.random() < 0.5:
                self.line("encoding", random.choice(["packed", "decimal", "both"]))
        elif "encoding" in keys and random.random() < 0.3:
            leaf.charset = random.choice(list(CHARSETS))
            self.line("encoding", leaf.charset)
        if type_name in CHARACTERS:
            self.empties(leaf)
        if "bits" in keys:
            return self.parts(kind, leaf, suffix)
        self.share(kind, leaf, suffix)
        kind.size += leaf.bytes
        kind.leaves.append(leaf)

    def character_keys(self, leaf, keys):
        """What tells the size and the form of a field that is stored as characters."""
        random = self.random
        if "stored" in keys:
            date = "pivot" in keys
            leaf.stored = random.choice(["DDMMAAAA", "AAAAMMDD", "DDMMAA", "AAMMDD", "AAAA-MM-DD",
                                         "DD/MM/AA"] if date else ["HHMM", "HHMMSS"])
            self.line("stored", leaf.stored)
            leaf.bytes = len(leaf.stored)
            if date and random.random() < 0.3:
                leaf.pivot = random.choice([0, 20, 50, 100])
                self.line("pivot", leaf.pivot)
            if date and random.random() < 0.5:
                leaf.format = random.choice(["AAAA-MM-DD", "DDMMAAAA", "DD.MM.AAAA"])
                self.line("format", leaf.format)
            return
        leaf.bytes = random.choice([random.randint(1, 9), random.randint(1, 50)])
        self.line("digits" if "digits" in keys else "bytes", leaf.bytes)
        leaf.digits = leaf.bytes
        if "decimals" in keys and random.random() < 0.5:
            leaf.decimals = random.randint(0, leaf.digits)
            self.line("decimals", leaf.decimals)
        if "sign" in keys and random.random() < 0.5:
            leaf.sign = random.choice(["leading", "trailing", "overpunch"])
            self.line("sign", leaf.sign)
            leaf.bytes += leaf.sign != "overpunch"
        if "pad" in keys and random.random() < 0.3:
            leaf.pad = random.choice("0 *" if leaf.type == "TEXT" else "0 ")
            self.line("pad", leaf.pad)

    def empties(self, leaf):
        random = self.random
        told = {"TEXT": [" "], "TIME": [" "], "DATE": ["0"]}.get(leaf.type, [])
        if random.random() < 0.3:
            told = random.sample(["0", " ", "9", "*"], random.randint(1, 3))
            self.line("empty", told if len(told) > 1 or random.random() < 0.5 else told[0])
        for character in told:
            form = character * leaf.bytes
            if leaf.type == "DATE" and character.isdigit():
                form = re.sub("[DMA]", character, leaf.stored)
            leaf.empties.append(form.encode())

    def share(self, kind, leaf, suffix):
        """Sometimes a column of another name; sometimes that of the field in front."""
        random = self.random
        before = kind.leaves[-1] if kind.leaves else None
        if random.random() < 0.25:
            leaf.told = "c" + str(len(self.lines))
            if (before is not None and getattr(before, "told", None) and before.suffix == suffix and
                    before.type.startswith(("BIN", "PORC")) and random.random() < 0.7):
                leaf.told, leaf.join = before.told, random.choice(JOINS)
                self.line("join", leaf.join)
            leaf.suffix = suffix
            leaf.column = leaf.told + suffix
            self.line("column", leaf.told)

    def parts(self, kind, area, suffix):
        random = self.random
        widths = [random.choice([1, 2, 3, 7, 8, 13, 31, 63, 64]) for _ in range(random.randint(1, 4))]
        area.big = random.random() < 0.5
        if area.big:
            self.line("order", "big")
        area.bytes = (sum(widths) + 7) // 8
        told, start = [], 0
        for number, width in enumerate(widths):
            name = f"parte{number + 1}"
            if random.random() < 0.5:
                told.append(str(width))
            else:
                name = f"p{number}"
                told.append('{ name = "%s", bits = %d }' % (name, width))
            path = area.path + (name,)
            kind.leaves.append(Leaf(**{**area.__dict__, "path": path, "start": start, "bits": width,
                                       "column": name_of(path)}))
            start += width
        kind.leaves[-1].spare = 8 * area.bytes - start
        self.lines.append(f"bits = [{', '.join(told)}]")
        kind.size += area.bytes

    def record(self, kind, tame):
        """Any bytes; in tame fields many of them small, so that more are well formed."""
        random = self.random
        record = bytearray()
        for leaf in kind.leaves:
            record = record.ljust(leaf.offset + leaf.bytes, b"\0")
            if leaf.type == "ZBTFIELD" and getattr(leaf, "start") != 0:
                continue
            mode = random.random()
            if mode < 0.15:
                record[leaf.offset:leaf.offset + leaf.bytes] = leaf.nothing()
                continue
            if leaf.type in CHARACTERS:
                some = bytearray(leaf.something(random))
                if mode >= tame:
                    some[random.randrange(leaf.bytes)] = random.choice(b"\0 0A-+}/\xe9")
                record[leaf.offset:leaf.offset + leaf.bytes] = some
                continue
            some = (bytes(random.choices(b"\0\1\2\3\x05\x0a\x0c\x11\x17\x20\x22\x2cAz\xe9", k=leaf.bytes))
                    if mode < tame else random.randbytes(leaf.bytes))
            record[leaf.offset:leaf.offset + leaf.bytes] = some
        record = record.ljust(kind.size, b"\0")
        for leaf in kind.leaves:
            spare = getattr(leaf, "spare", 0)
            if spare and random.random() < 0.9:
                at = leaf.offset + leaf.bytes - 1
                record[at] &= 255 << spare & 255 if leaf.big else 255 >> spare
        for offset, content in kind.fills:
            record[offset:offset + len(content)] = content
        for number, place in enumerate(self.selects if self.tells else []):
            size = place.stop - place.start
            known = [value for each in self.kinds if each.when for value in each.when[number]]
            others = [each for each in (b"\0\0", b"\1\0", b"\3\0") if each[:size] not in known]
            record[place] = random.choice(kind.when[number] if kind.when else others)[:size]
        return bytes(record)

    def file(self, records):
        """The bytes of a file with records given as pairs of a kind and its bytes."""
        out = [self.header]
        for _, record in records:
            if self.prefix:
                size, order, itself = self.prefix
                out.append((len(record) + size * itself).to_bytes(size, order))
            out.append(record + self.end)
        return b"".join(out) + self.trailer


def name_of(path):
    """A path in one word, places counted from 1."""
    return "_".join(str(step + 1) if isinstance(step, int) else step for step in path)
