"""Records of fixed width by their pictures, as the manuals of banks and tax offices print them.

A sheet is a text of fields, name:picture, one behind the other:

    9(5)        a number, zeros in front        X(20)   a text, blanks behind
    9(13)V9(2)  the same with two decimals      K(14)   digits or letters, zeros in front
    D(8)        a date, zeros for none          B(8)    a date, blanks for none
    T(6)        a time, blanks for none

The name _ is a reserved area. Nothing here knows the layouts that are tried with it.
"""

import datetime
import random
import re
from decimal import Decimal

FIELD = re.compile(r"(\w+):([9XKDBTF])\((\d+)\)(?:V9\((\d+)\))?$")


class Field:
    def __init__(self, text, first):
        self.name, self.what, width, decimals = FIELD.match(text).groups()
        self.decimals = int(decimals or 0)
        self.first, self.width = first, int(width) + self.decimals

    def stored(self, value, dates):
        if value is None:
            return {"D": "0", "K": "0"}.get(self.what, " ") * self.width if self.what != "F" \
                else "99991231"
        if isinstance(value, datetime.date):
            return value.strftime(dates[self.width])
        if self.what == "T":
            return value.strftime("%H%M%S")
        if self.what == "X":
            return value.ljust(self.width)
        if self.what == "9" and not isinstance(value, str):
            value = str(int(Decimal(value).scaleb(self.decimals)))
        return value.rjust(self.width, "0")


class Line:
    """One record: its kind, its text and the value that stands at each first position."""

    def __init__(self, sheet, values):
        self.kind, self.sheet, self.values, text = sheet.kind, sheet, {}, ""
        left = dict(values)
        for field in sheet.fields:
            value = left.pop(field.name, sheet.empty(field))
            part = field.stored(value, sheet.dates)
            assert len(part) == field.width, (sheet.kind, field.name, value)
            self.values[field.first] = value
            text += part
        assert not left, (sheet.kind, left)
        self.text = text


class Sheet:
    def __init__(self, kind, size, dates, text):
        self.kind, self.dates, self.fields, first = kind, dates, [], 1
        for word in text.split():
            self.fields.append(Field(word, first))
            first += self.fields[-1].width
        assert first - 1 == size, (kind, first - 1)

    @staticmethod
    def empty(field):
        return {"9": 0, "X": ""}.get(field.what)

    def line(self, **values):
        return Line(self, values)


class Inventor:
    """Names, numbers and days that belong to nobody, the same in every run."""

    def __init__(self, seed):
        self.random = random.Random(seed)

    def choice(self, values):
        return self.random.choice(values)

    def money(self, most=10**7):
        return Decimal(self.random.randrange(1, most)) / 100

    def some(self, value, part=0.5):
        """The value, or now and then nothing: zero, an empty text, no date."""
        if self.random.random() < part:
            return value
        return {Decimal: Decimal(0), int: 0, str: ""}.get(type(value))

    def number(self, digits):
        return "".join(self.random.choice("0123456789") for _ in range(digits))

    def day(self, first=datetime.date(2024, 1, 1)):
        return first + datetime.timedelta(self.random.randrange(700))

    def time(self):
        return datetime.time(*(self.random.randrange(n) for n in (24, 60, 60)))

    def name(self, word, width=30):
        ends = ["LTDA", "S.A.", "& FILHOS", "CONFECÇÕES", "ÁGUAS"]
        return f"{word} {self.random.randrange(1000):03} {self.choice(ends)}"[:width].strip()

    def cpf(self):
        return with_digits(self.number(9), lambda n: range(n + 1, 1, -1))

    def cnpj(self):
        letters = "ABCDEFGHJKLMNPRSTUVXYZ" if self.random.random() < 0.2 else ""
        number = "".join(self.choice("0123456789" + letters) for _ in range(12))
        return with_digits(number, lambda n: [(n - 1 - i) % 8 + 2 for i in range(n)])

    def person(self):
        """The kind of number, 1 or 2, and the number."""
        return (1, self.cpf()) if self.random.random() < 0.5 else (2, self.cnpj())


def with_digits(number, weights):
    """Two check digits modulo 11; a letter counts its code less that of 0."""
    for _ in range(2):
        total = sum((ord(c) - 48) * w for c, w in zip(number, weights(len(number))))
        digit = 11 - total % 11
        number += str(0 if digit > 9 else digit)
    return number
