"""Fields, numbers, dates and GUIDs of the library as values of Python, exact."""

from __future__ import annotations

from . import _core
from ._errors import Error

TYPE_CHECKING = False
if TYPE_CHECKING:
    from datetime import date
    from decimal import Decimal
    from typing import Literal

    Regra = Literal["trunc", "5sobe", "nbr"]

_RULES = ("trunc", "5sobe", "nbr")
_MOST = 2**63 - 1


def _rule(regra: str) -> int:
    if regra not in _RULES:
        raise Error(f"regra: one of {', '.join(_RULES)}, not {regra!r}")
    return _RULES.index(regra)


def _decimal(value: Decimal | int | str, name: str) -> Decimal:
    """The number as it is: no float, which is not the number that was meant."""
    from decimal import Decimal, InvalidOperation

    if isinstance(value, bool) or not isinstance(value, (Decimal, int, str)):
        raise TypeError(f"{name}: a Decimal, an int or a str is needed, not {type(value).__name__}")
    try:
        made = Decimal(value)
    except InvalidOperation:
        raise Error(f"{name}: {value!r} is no number") from None
    if not made.is_finite():
        raise Error(f"{name}: {value!r} is no number")
    return made


def _units(value: Decimal | int | str, decimals: int, name: str) -> int:
    """The number of units of 10**-decimals; what is finer is refused."""
    sign, digits, exponent = _decimal(value, name).as_tuple()
    assert isinstance(exponent, int)
    shift = exponent + decimals
    if abs(shift) > 100 or len(digits) > 200:
        if not any(digits):
            return 0
        raise Error(f"{name}: {value!r} is out of range")
    number = int("".join(map(str, digits)) or "0")
    if shift < 0:
        number, rest = divmod(number, 10**-shift)
        if rest:
            raise Error(f"{name}: {value!r} has more than {decimals} decimals")
    else:
        number *= int(10**shift)
    return -number if sign else number


def _number(units: int, decimals: int) -> Decimal:
    from decimal import Decimal

    digits = tuple(map(int, str(abs(units))))
    return Decimal((int(units < 0), digits, -decimals))


def _in_range(units: int, name: str) -> int:
    if abs(units) > _MOST:
        raise Error(f"{name}: out of range: money has 64 bits")
    return units


# ------------------------------------------------------------------------------- packed codes


def codalfa_salva(texto: str, posicoes: int) -> bytes:
    """A text in the six bits a character of a packed code of so many positions.

    Small letters become capitals and blanks at the end go. A character outside the alphabet and a
    text that is too long raise Error.

    >>> codalfa_salva("ab-1", 5).hex()
    '30d98300'
    >>> codalfa_salva("ação", 5)
    Traceback (most recent call last):
    campotipo._errors.Error: codalfa: byte 2 of the text is outside the alphabet
    """
    return _core.code_pack(texto, posicoes)


def codalfa_extrai(campo: bytes, posicoes: int) -> str:
    """The text of a packed code.

    >>> codalfa_extrai(bytes.fromhex("30d98300"), 5)
    'AB-1'
    """
    return _core.code_unpack(campo, posicoes)


# --------------------------------------------------------------------------------- quantities


def zbinario_salva(valor: Decimal | int | str, largura: int, casas: int = 0) -> bytes:
    """A number from 0 in a field of 1 to 21 bytes, of 50 digits at most, `casas` of which stand
    behind the point. What does not fit, and what is finer, raises Error.

    >>> zbinario_salva("1234.5", 9, casas=2).hex()
    '3ae201000000000000'
    >>> zbinario_salva(256, 1)
    Traceback (most recent call last):
    campotipo._errors.Error: zbinario: 256 does not fit 1 bytes
    """
    units = _units(valor, casas, "zbinario")
    if units < 0:
        raise Error(f"zbinario: {valor!r}: a field holds no number below zero")
    return _core.number_pack(str(units), largura)


def zbinario_extrai(campo: bytes, casas: int | None = None) -> Decimal | int:
    """The number of a field: an int, or a Decimal where `casas` is told.

    >>> zbinario_extrai(bytes.fromhex("3ae201000000000000"), casas=2)
    Decimal('1234.50')
    >>> zbinario_extrai(b"\\xff")
    255
    """
    number = int(_core.number_unpack(campo))
    return number if casas is None else _number(number, casas)


def zbinario_digitos(largura: int) -> int:
    """How many digits any number may have and still fit a field of so many bytes.

    >>> zbinario_digitos(16)
    38
    """
    return _core.number_digits(largura)


# -------------------------------------------------------------------------- rounding, percents


def arredonda(valor: Decimal | int | str, casas: int, regra: Regra = "nbr") -> Decimal:
    """A number with so many decimals: cut ("trunc"), five goes up ("5sobe"), or by ABNT NBR 5891
    ("nbr"), where one half goes to the even neighbour. Below zero every rule cuts toward zero.

    >>> arredonda("0.125", 2), arredonda("0.135", 2), arredonda("0.125", 2, "5sobe")
    (Decimal('0.12'), Decimal('0.14'), Decimal('0.13'))
    """
    if not 0 <= casas <= 18:
        raise Error("casas: 0 to 18")
    rule = _rule(regra)
    exponent = _decimal(valor, "arredonda").as_tuple().exponent
    assert isinstance(exponent, int)
    decimals = max(0, -exponent)
    if decimals <= casas:
        return _number(_units(valor, casas, "arredonda"), casas)
    units = _in_range(_units(valor, decimals, "arredonda"), "arredonda")
    return _number(_core.round_number(units, decimals - casas, rule), casas)


def porc_multiplica(
    base: Decimal | int | str,
    percentual: Decimal | int | str,
    casas: int = 2,
    regra: Regra = "trunc",
) -> Decimal:
    """A percent of an amount of money, which has two decimals; `casas`, 0, 1, 2 or 4, are those of
    the percent.

    >>> porc_multiplica("1234.60", "12.5")
    Decimal('154.32')
    >>> porc_multiplica("1234.60", "12.5", regra="5sobe")
    Decimal('154.33')
    """
    units = _in_range(_units(base, 2, "base"), "base")
    percent = _in_range(_units(percentual, casas, "percentual"), "percentual")
    return _number(_core.percent_times(casas, _rule(regra), False, units, percent), 2)


def porc_inv_multiplica(
    alvo: Decimal | int | str,
    percentual: Decimal | int | str,
    casas: int = 2,
    regra: Regra = "trunc",
) -> Decimal:
    """An amount whose percent, under the same rule, reaches the target: see
    PORC2_inv_multiplica in the library's manual for which one it is.

    >>> porc_inv_multiplica("154.32", "12.5", regra="nbr")
    Decimal('1234.52')
    """
    units = _in_range(_units(alvo, 2, "alvo"), "alvo")
    percent = _in_range(_units(percentual, casas, "percentual"), "percentual")
    return _number(_core.percent_times(casas, _rule(regra), True, units, percent), 2)


def porc_divide(
    numerador: Decimal | int | str, denominador: Decimal | int | str, casas: int = 2
) -> Decimal:
    """What percent one amount is of another, cut to the decimals told.

    >>> porc_divide(1, 3)
    Decimal('33.33')
    """
    above = _in_range(_units(numerador, 2, "numerador"), "numerador")
    below = _in_range(_units(denominador, 2, "denominador"), "denominador")
    return _number(_core.percent_of(casas, above, below), casas)


def porc_inverte(percentual: Decimal | int | str, casas: int = 2) -> Decimal:
    """The percent that undoes another, cut to the decimals told.

    >>> porc_inverte(80)
    Decimal('125.00')
    """
    percent = _in_range(_units(percentual, casas, "percentual"), "percentual")
    return _number(_core.percent_inverse(casas, percent), casas)


# -------------------------------------------------------------------------------------- dates


def _checked(data: date) -> tuple[int, int, int]:
    from datetime import date

    if not isinstance(data, date):
        raise TypeError(f"a date is needed, not {type(data).__name__}")
    return data.day, data.month, data.year


def datac_salva(data: date | None, formato: Literal["compacto", "decimal"] = "compacto") -> bytes:
    """A date in three bytes, or the zero date for None. The decimal form holds 1980 to 2079.

    >>> from datetime import date
    >>> datac_salva(date(2024, 12, 31)).hex()
    '9fd18f'
    >>> datac_salva(date(1979, 12, 31), "decimal")
    Traceback (most recent call last):
    campotipo._errors.Error: datac: the field cannot hold this date
    """
    formats = ("decimal", "compacto")
    if formato not in formats:
        raise Error(f"formato: one of {', '.join(formats)}, not {formato!r}")
    day, month, year = (0, 0, 0) if data is None else _checked(data)
    return _core.date_pack(formats.index(formato), day, month, year)


def datac_extrai(campo: bytes) -> date | None:
    """The date of a field in either form; None for a zero date. One that does not exist, or that the
    civil calendar does not have, raises Error.

    >>> datac_extrai(bytes.fromhex("9fd18f"))
    datetime.date(2024, 12, 31)
    """
    from datetime import date

    read = _core.date_unpack(campo)
    if read is None:
        return None
    day, month, year = read
    try:
        return date(year, month, day)
    except ValueError:
        raise Error(f"datac: {day:02}/{month:02}/{year:04} is not in the civil calendar") from None


def _stepped(data: date, how: int, step: int) -> date:
    from datetime import date

    first, last = date(1900, 3, 1), date(2100, 2, 28)
    day, month, year = _checked(data)
    told = "dates are stepped from 01/03/1900 to 28/02/2100"
    if not first <= date(year, month, day) <= last:
        raise Error(f"{day:02}/{month:02}/{year:04}: {told}")
    # No step that stays in these years is longer.
    if abs(step) > 100_000:
        raise Error(f"a step of {step}: {told}")
    day, month, year = _core.date_step(how, step, day, month, year)
    try:
        made = date(year, month, day)
    except ValueError:
        made = None
    if made is None or not first <= made <= last:
        raise Error(f"{day:02}/{month:02}/{year:04}: {told}")
    return made


def soma_dias(data: date, dias: int) -> date:
    """The date so many days later, or earlier.

    >>> from datetime import date
    >>> soma_dias(date(2024, 2, 28), 2)
    datetime.date(2024, 3, 1)
    """
    return _stepped(data, 0, dias)


def soma_meses(data: date, meses: int, dentro: bool = True) -> date:
    """The date so many months later, or earlier. Where the month has no such day: its last, or with
    `dentro=False` the first of the next.

    >>> from datetime import date
    >>> soma_meses(date(2023, 1, 31), 1), soma_meses(date(2023, 1, 31), 1, dentro=False)
    (datetime.date(2023, 2, 28), datetime.date(2023, 3, 1))
    """
    return _stepped(data, 2 if dentro else 1, meses)


# -------------------------------------------------------------------------------------- GUIDs


def zguid_parse(texto: str) -> bytes:
    """The 16 bytes of a GUID: 32 digits, with dashes or without, in braces or not.

    >>> zguid_parse("{00112233-4455-6677-8899-AABBCCDDEEFF}").hex()
    '00112233445566778899aabbccddeeff'
    """
    return _core.guid_parse(texto)


def zguid_string(
    guid: bytes, hifens: bool = True, maiusculas: bool = False, chaves: bool = False
) -> str:
    """The text of a GUID.

    >>> zguid_string(bytes(range(16)))
    '00010203-0405-0607-0809-0a0b0c0d0e0f'
    """
    return _core.guid_text(guid, hifens * 1 + maiusculas * 2 + chaves * 4)


def zguid_gera() -> bytes:
    """A new random GUID.

    >>> len(zguid_gera())
    16
    """
    return _core.guid_new()
