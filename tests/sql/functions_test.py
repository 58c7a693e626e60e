"""Scalar functions, held against the command, Python's decimals and Python's calendar."""

import calendar
import datetime
import decimal
import random
import re

import duckdb
import pytest
from conftest import tool

decimal.getcontext().prec = 100
FIRST, LAST = datetime.date(1900, 3, 1), datetime.date(2100, 2, 28)
# As documents are written, with the words that the command calls them by.
DOCUMENTS = {
    "CPF": "123.456.789-09",
    "CNPJ": "00.000.000/0001-91",
    "CNPJ_alfa": "12.ABC.345/01DE-35",
    "PIS": "120.56874.10-7",
    "chave_acesso": "5206 0433 0099 1100 2506 5501 2000 0007 8002 6730 1615",
    "titulo": "1023 8501 0671",
    "cartao": "4111 1111 1111 1111",
    "CNS": "898 0000 0004 3208",
    "processo": "0058967-77.2016.8.19.0000",
    "boleto_linha": "34191.79001 01043.510047 91020.150008 5 70880000002000",
    "arrecadacao_linha": "83640000001-1 33120138000-2 81288462711-6 08013618155-1",
}


def told_by_the_tool(text):
    """{document: (whether its digits hold, its usual form)} as the command says it."""
    header, *lines = tool("document", text).decode().splitlines() or [""]
    begins = [match.start() for match in re.finditer(r"\S+(?: \S+)*", header)]
    told = {}
    for line in lines:
        name, digits, form, _ = (line[a:b].strip() for a, b in zip(begins, begins[1:] + [None]))
        told[name] = (digits == "hold", form)
    return told


@pytest.mark.parametrize("name", DOCUMENTS)
def test_documents_are_told_as_the_command_tells_them(sql, name):
    text = DOCUMENTS[name]
    clean = re.sub(r"[-./ ]", "", text)
    assert name in sql("select campotipo_identifica(?)", text)[0][0]
    some = random.Random(name)
    for _ in range(20):
        at = some.randrange(len(clean))
        typed = clean[:at] + some.choice("0123456789AZ") + clean[at + 1:]
        told = told_by_the_tool(typed)
        held = [known for known, (holds, _) in told.items() if holds]
        assert sql("select campotipo_identifica(?)", typed) == [(held,)]
        for known, (holds, form) in told.items():
            assert sql("select campotipo_valida(?, $2), campotipo_edita($1, $2), "
                       "campotipo_limpa($1, $2)".replace("?", "$1"), known, typed) == [
                           (holds, form or None, typed if form else None)]
        if name not in told:
            assert sql("select campotipo_valida($1, $2), campotipo_edita($1, $2), "
                       "campotipo_limpa($1, $2)", name, typed) == [(False, None, None)]


def test_punctuation_does_not_count(sql):
    for name, text in DOCUMENTS.items():
        clean = re.sub(r"[-./ ]", "", text)
        assert sql("select campotipo_valida($1, $2), campotipo_limpa($1, $2), "
                   "campotipo_edita($1, $2)", name, f" {text}\n") == [(True, clean, text)]


def test_what_is_no_document(sql):
    for text in ("", " ", "0", "1" * 100000, "123.456.789-0x", "123456789\u00e309", "1234\x005678909"):
        assert sql("select campotipo_valida('CPF', $1), campotipo_limpa('CPF', $1), "
                   "campotipo_edita('CPF', $1), campotipo_identifica($1)", text) == [
                       (False, None, None, [])]


def test_words_that_are_no_document_are_refused(sql):
    for word in ("CPFs", "", "modulo11", "CEP"):
        with pytest.raises(duckdb.Error, match=f"'{word}', expected one of CPF, "):
            sql("select campotipo_valida(?, '1')", word)


def test_words_are_known_in_letters_of_either_case(sql):
    assert sql("select campotipo_valida(w, t) from (values ('cpf', '12345678909'), "
               "('Cnpj_Alfa', '12ABC34501DE35'), ('cns', '1')) v(w, t)") == [(True,), (True,), (False,)]


def test_nulls_stay_nulls(sql):
    assert sql("select campotipo_valida(NULL, '1'), campotipo_valida('CPF', NULL), "
               "campotipo_limpa('CPF', NULL), campotipo_edita(NULL, NULL), "
               "campotipo_identifica(NULL), campotipo_arredonda(NULL, 2), "
               "campotipo_arredonda(1.5, NULL), campotipo_soma_meses(NULL, 1), "
               "campotipo_soma_meses(date '2020-01-01', NULL)") == [(None,) * 9]
    rows = sql("select x, campotipo_valida('CPF', x), campotipo_identifica(x), "
               "campotipo_arredonda((i * 0.125)::decimal(9, 3), 2) from (select i, case when i % 3 = 0 "
               "then NULL else '12345678909' end x from range(9000) t(i))")
    assert [row[1] for row in rows] == [None if i % 3 == 0 else True for i in range(9000)]
    assert [row[2] for row in rows] == [None if i % 3 == 0 else ["CPF"] for i in range(9000)]


def test_rounding_is_half_to_even_and_cuts_below_zero(sql):
    some = random.Random(5891)
    for width in (4, 9, 18, 38):
        for scale in {0, 1, width // 2, min(width, 12), width}:
            values = [some.randrange(-10 ** width + 1, 10 ** width) for _ in range(60)]
            ties = [(some.randrange(-50, 50) * 10 + 5) * 10 ** max(0, scale - places - 1)
                    for places in range(min(scale, 11)) for _ in range(6)]
            for value in values + [tie for tie in ties if abs(tie) < 10 ** width]:
                exact = decimal.Decimal(value).scaleb(-scale)
                places = some.randrange(11)
                rule = decimal.ROUND_DOWN if value < 0 else decimal.ROUND_HALF_EVEN
                wanted = exact.quantize(decimal.Decimal(1).scaleb(-min(places, scale)), rule)
                query = (f"select campotipo_arredonda('{exact:f}'::decimal({width}, {scale}), "
                         f"{places})")
                if abs(wanted) >= 10 ** 28:
                    with pytest.raises(duckdb.Error, match="28 digits"):
                        sql(query)
                else:
                    assert sql(query) == [(wanted,)], query


def test_rounding_takes_exact_numbers_alone(sql):
    assert sql("select campotipo_arredonda(7, 2), campotipo_arredonda(7::tinyint, 0), "
               "campotipo_arredonda(-7::smallint, 0), campotipo_arredonda(7::hugeint, 10)") == [
                   (7, 7, -7, 7)]
    for value in ("1.5::double", "'1.5'", "true", "7::ubigint"):
        with pytest.raises(duckdb.Error, match="takes a DECIMAL"):
            sql(f"select campotipo_arredonda({value}, 1)")
    for places in (-1, 11, 2 ** 31 - 1):
        with pytest.raises(duckdb.Error, match="0 to 10 decimals"):
            sql(f"select campotipo_arredonda(1.5, {places})")


def months_later(date, months):
    year, month = divmod(date.year * 12 + date.month - 1 + months, 12)
    try:
        last = calendar.monthrange(year, month + 1)[1]
        return datetime.date(year, month + 1, min(date.day, last))
    except ValueError:
        return datetime.date.max


def test_months_end_within_the_month(sql):
    some = random.Random(12)
    days = (LAST - FIRST).days
    dates = [FIRST, LAST, datetime.date(2024, 2, 29), datetime.date(1980, 1, 31)]
    dates += [FIRST + datetime.timedelta(some.randrange(days + 1)) for _ in range(400)]
    for date in dates:
        months = some.choice([0, 1, -1, 12, some.randrange(-2500, 2500), 2 ** 31 - 1, -2 ** 31])
        wanted = months_later(date, months)
        if FIRST <= wanted <= LAST:
            assert sql("select campotipo_soma_meses($1::date, $2)", date, months) == [(wanted,)]
        else:
            with pytest.raises(duckdb.Error, match="the result is not from 1900-03-01"):
                sql("select campotipo_soma_meses($1::date, $2)", date, months)
    for date in ("1900-02-28", "2100-03-01", "infinity", "5881580-07-10", "0001-01-01"):
        with pytest.raises(duckdb.Error, match="the date is not from 1900-03-01"):
            sql(f"select campotipo_soma_meses(date '{date}', 0)")


def test_every_day_of_the_calendar(sql):
    """The library's own step by a month against DuckDB's, for every day on which both agree."""
    assert sql(f"""
      select count(*) from (select date '{FIRST}' + i::integer as d from range(0, 73018) t(i))
      where campotipo_soma_meses(d::date, 1) <> d + interval 1 month""") == [(0,)]
