"""Values of the Python package, held against Python's own arithmetic and calendar."""

import datetime
import decimal
import random
import uuid

import pytest

import campotipo

RANDOM = random.Random(20261123)
ALPHABET = " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!"
decimal.getcontext().prec = 100


def packed(text, positions):
    bits = "".join(f"{ALPHABET.index(c) + 1:06b}" for c in text).ljust(6 * positions, "0")
    size = positions - positions // 4
    return int(bits.ljust(8 * size, "0"), 2).to_bytes(size, "big")


def test_packed_codes():
    for _ in range(2000):
        positions = RANDOM.randint(1, 60)
        text = "".join(RANDOM.choices(ALPHABET, k=RANDOM.randint(0, positions))).rstrip(" ")
        field = campotipo.codalfa_salva(text.lower(), positions)
        assert field == packed(text, positions)
        assert campotipo.codalfa_extrai(field, positions) == text
    for text, positions in (("ABC", 2), ("a&b", 5), ("\0", 5), ("í", 9), ("A", 0), ("A", -1),
                            ("A", 10**6)):
        with pytest.raises(campotipo.Error):
            campotipo.codalfa_salva(text, positions)
    for field, positions in ((b"\xff" * 4, 5), (b"", 5), (b"\0" * 5, 5), (b"\x04\x20\x00\x01", 5)):
        with pytest.raises(campotipo.Error):
            campotipo.codalfa_extrai(field, positions)


def stored(number, width):
    if width <= 8:
        return number.to_bytes(width, "little")
    low, rest = number % 10**19, number // 10**19
    if width <= 16:
        return low.to_bytes(8, "little") + rest.to_bytes(width - 8, "little")
    return low.to_bytes(8, "little") + (rest % 10**19).to_bytes(8, "little") + \
        (rest // 10**19).to_bytes(width - 16, "little")


def test_quantities_of_every_width():
    for width in range(1, 22):
        digits = campotipo.zbinario_digitos(width)
        for _ in range(200):
            number = RANDOM.randrange(10 ** RANDOM.randint(0, digits))
            for value, casas in ((number, 0), (str(number), 0), (decimal.Decimal(number).scaleb(-3), 3)):
                field = campotipo.zbinario_salva(value, width, casas)
                assert field == stored(number, width)
            assert campotipo.zbinario_extrai(field) == number
            read = campotipo.zbinario_extrai(field, 3)
            assert isinstance(read, decimal.Decimal)
            assert read == decimal.Decimal(number).scaleb(-3) and read.as_tuple().exponent == -3
        above = 256**width if width <= 8 else 10**digits
        assert campotipo.zbinario_extrai(campotipo.zbinario_salva(above - 1, width)) == above - 1
        for wrong in (above, -1, above * 10**60, "0.5", "x", "NaN", "Infinity", "", "1e400", "１x"):
            with pytest.raises(campotipo.Error):
                campotipo.zbinario_salva(wrong, width)
    for wrong in (1.5, None, b"1", True):
        with pytest.raises(TypeError):
            campotipo.zbinario_salva(wrong, 4)
    for field in (b"", b"\0" * 22, b"\xff" * 16):
        with pytest.raises(campotipo.Error):
            campotipo.zbinario_extrai(field)


RULES = {"trunc": decimal.ROUND_DOWN, "5sobe": decimal.ROUND_HALF_UP, "nbr": decimal.ROUND_HALF_EVEN}


@pytest.mark.parametrize("rule", RULES)
def test_rounding_is_that_of_decimal(rule, tmp_path, monkeypatch):
    # What lies in a working directory has no say.
    monkeypatch.chdir(tmp_path)
    (tmp_path / "NBR_COM_ERRO.TXT").touch()
    for _ in range(3000):
        places = RANDOM.randint(0, 6)
        number = decimal.Decimal(RANDOM.randrange(10 ** RANDOM.randint(1, 11))).scaleb(
            -RANDOM.randint(0, 9))
        if RANDOM.random() < 0.3:  # ties
            number = number.quantize(decimal.Decimal(1).scaleb(-places), decimal.ROUND_DOWN) + \
                decimal.Decimal(5).scaleb(-places - 1)
        found = campotipo.arredonda(number, places, rule)
        wanted = number.quantize(decimal.Decimal(1).scaleb(-places), RULES[rule])
        assert (found, found.as_tuple().exponent) == (wanted, -places), number
    assert campotipo.arredonda("-1.75", 1, rule) == decimal.Decimal("-1.7")


@pytest.mark.parametrize("casas", [0, 1, 2, 4])
def test_percents(casas):
    unit = decimal.Decimal(1).scaleb(-casas)
    most = {0: 2**8, 1: 2**16, 2: 2**16, 4: 2**32}[casas] - 1
    cent = decimal.Decimal("0.01")
    for _ in range(1500):
        base = decimal.Decimal(RANDOM.randrange(10 ** RANDOM.randint(1, 11))) * cent
        percent = RANDOM.randint(0, most) * unit
        whole = base * percent / 100
        for rule, seen in (("trunc", 2), ("5sobe", 3), ("nbr", 4)):
            # A rule looks at so many decimals of the product, the others are cut before.
            looked = whole.quantize(decimal.Decimal(1).scaleb(-seen), decimal.ROUND_DOWN)
            wanted = looked.quantize(cent, RULES[rule])
            assert campotipo.porc_multiplica(base, percent, casas, rule) == wanted
            if percent and base < 10**9:
                found = campotipo.porc_inv_multiplica(wanted, percent, casas, rule)
                assert campotipo.porc_multiplica(found, percent, casas, rule) >= wanted
        other = decimal.Decimal(RANDOM.randint(1, 10**9)) * cent
        ratio = (base * 100 / other).quantize(unit, decimal.ROUND_DOWN)
        if ratio <= most * unit:
            assert campotipo.porc_divide(base, other, casas) == ratio
        else:
            with pytest.raises(campotipo.Error):
                campotipo.porc_divide(base, other, casas)
        if percent:
            inverse = (decimal.Decimal(10000) / percent).quantize(unit, decimal.ROUND_DOWN)
            if inverse <= most * unit:
                assert campotipo.porc_inverte(percent, casas) == inverse
            else:
                with pytest.raises(campotipo.Error):
                    campotipo.porc_inverte(percent, casas)
    for wrong in ("-1", most * unit + unit, "0.00001", 10**30):
        with pytest.raises(campotipo.Error):
            campotipo.porc_multiplica(1, wrong, casas)
    with pytest.raises(campotipo.Error):
        campotipo.porc_multiplica(2**63, 1, casas)
    with pytest.raises(campotipo.Error):  # a product outside the range is none at its end
        campotipo.porc_multiplica(decimal.Decimal(2**63 - 1) * cent, 200, casas)
    with pytest.raises(ZeroDivisionError):
        campotipo.porc_divide(1, 0, casas)
    for wrong in (3, -1, 9):
        with pytest.raises(campotipo.Error):
            campotipo.porc_multiplica(1, 1, wrong)


def added_months(day, months, within):
    month = day.year * 12 + day.month - 1 + months
    first = datetime.date(month // 12, month % 12 + 1, 1)
    behind = datetime.date((month + 1) // 12, (month + 1) % 12 + 1, 1)
    length = (behind - first).days
    if day.day <= length:
        return first.replace(day=day.day)
    return behind - datetime.timedelta(1) if within else behind


def test_dates_are_those_of_the_civil_calendar():
    first, last = datetime.date(1900, 3, 1), datetime.date(2100, 2, 28)
    for _ in range(5000):
        day = first + datetime.timedelta(RANDOM.randrange((last - first).days + 1))
        field = campotipo.datac_salva(day)
        assert int.from_bytes(field, "little") == 1 << 23 | day.year << 9 | day.month << 5 | day.day
        assert campotipo.datac_extrai(field) == day
        if 1980 <= day.year <= 2079:
            plain = campotipo.datac_salva(day, "decimal")
            assert int.from_bytes(plain, "little") == int(day.strftime("%d%m%y"))
            assert campotipo.datac_extrai(plain) == day
        days = RANDOM.randint(-80000, 80000)
        months = RANDOM.randint(-2500, 2500)
        for step, wanted in (
                (lambda: campotipo.soma_dias(day, days), lambda: day + datetime.timedelta(days)),
                (lambda: campotipo.soma_meses(day, months), lambda: added_months(day, months, True)),
                (lambda: campotipo.soma_meses(day, months, dentro=False),
                 lambda: added_months(day, months, False))):
            expected = wanted()
            if first <= expected <= last:
                assert step() == expected
            else:
                with pytest.raises(campotipo.Error):
                    step()


def test_dates_outside_are_errors():
    assert campotipo.datac_extrai(campotipo.datac_salva(None)) is None
    assert campotipo.datac_extrai(b"\0\0\0") is None
    assert campotipo.datac_salva(None, "decimal") == b"\0\0\0"
    for call in (lambda: campotipo.datac_salva(datetime.date(4096, 1, 1)),
                 lambda: campotipo.datac_salva(datetime.date(2080, 1, 1), "decimal"),
                 lambda: campotipo.datac_extrai(b"\xff\xff\xff"),
                 lambda: campotipo.datac_extrai(b"\0\0"),
                 lambda: campotipo.datac_extrai((1 << 23 | 2100 << 9 | 2 << 5 | 29).to_bytes(3, "little")),
                 lambda: campotipo.soma_dias(datetime.date(1899, 1, 1), 1),
                 lambda: campotipo.soma_meses(datetime.date(2000, 1, 1), 2**40),
                 lambda: campotipo.soma_dias(datetime.date(2000, 1, 1), -2**31),
                 lambda: campotipo.datac_salva(datetime.date(2000, 1, 1), "longo")):
        with pytest.raises(campotipo.Error):
            call()
    with pytest.raises(TypeError):
        campotipo.soma_dias("2000-01-01", 1)


def test_guids_are_those_of_uuid():
    seen = set()
    for _ in range(300):
        guid = uuid.UUID(int=RANDOM.getrandbits(128))
        text = str(guid)
        for form in (text, text.upper(), guid.hex, "{" + text + "}", "{" + guid.hex.upper() + "}"):
            assert campotipo.zguid_parse(form) == guid.bytes
        assert campotipo.zguid_string(guid.bytes) == text
        assert campotipo.zguid_string(guid.bytes, False, True, True) == "{" + guid.hex.upper() + "}"
        seen.add(campotipo.zguid_gera())
    assert len(seen) == 300 and all(len(guid) == 16 for guid in seen)
    for wrong in ("", "x", guid.hex[:-1], guid.hex + "0", text.replace("-", ".", 1), "{" + text,
                  text + "\0", "g" + text[1:]):
        with pytest.raises(campotipo.Error):
            campotipo.zguid_parse(wrong)
    with pytest.raises(campotipo.Error):
        campotipo.zguid_string(b"\0" * 15)
