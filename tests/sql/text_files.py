"""Files of text records, written by Python from nothing but the places that a ready layout tells."""

import datetime
import os
import tomllib

from conftest import ROOT


def layout(name):
    with open(os.path.join(ROOT, "layouts", name + ".toml"), "rb") as file:
        return tomllib.load(file)


def kind_of(told, name):
    return next(kind for kind in told["record"] if kind["name"] == name)


def stored(field, value):
    """The text of a value as the field holds it."""
    kind = field["type"]
    size = field.get("bytes") or field.get("digits") or len(field.get("stored", ""))
    if value is None:
        return (" " if kind in ("TEXT", "TIME") else "0") * size
    if kind == "DATE":
        text = field["stored"]
        for mark, part in (("AAAA", "%Y"), ("AA", "%y"), ("MM", "%m"), ("DD", "%d")):
            text = text.replace(mark, value.strftime(part))
        return text
    if kind == "TIME":
        return value.strftime("%H%M%S")[:size]
    if kind == "NUM":
        return str(int(value.scaleb(field.get("decimals", 0)) if hasattr(value, "scaleb")
                       else value)).zfill(size)
    if kind == "DIGITS" or field.get("pad") == "0":
        return str(value).zfill(size)
    return str(value).ljust(size)


def record(told, name, **values):
    kind = kind_of(told, name)
    constants = {key: told_value if isinstance(told_value, str) else told_value[0]
                 for key, told_value in kind.get("when", {}).items()}
    line = []
    for field in kind["field"]:
        constant = field.get("value") if isinstance(field.get("value"), str) else None
        value = values.pop(field["name"], constants.get(field["name"], constant))
        text = stored(field, value)
        assert sum(map(len, line)) == field["at"] - 1, field
        line.append(text)
    assert not values, values
    line = "".join(line)
    assert len(line) == told["size"], (name, len(line))
    return line


def write(path, lines, end="\r\n"):
    with open(path, "wb") as file:
        file.write("".join(line + end for line in lines).encode("iso-8859-1"))


def day(text):
    return datetime.date.fromisoformat(text)
