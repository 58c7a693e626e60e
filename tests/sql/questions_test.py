"""The ten questions of docs/sql.md, each on made up files, its answer worked out in Python."""

import collections
import decimal
import os
import re

import pytest
import questions_data
from conftest import ROOT, connect

QUESTIONS = re.findall(r"(?ms)^(\d+)\. .*?^```sql\n(.*?)^```",
                       open(os.path.join(ROOT, "docs", "sql.md"), encoding="utf-8").read())


def by_code(rows):
    groups = collections.defaultdict(list)
    for row in rows:
        if row["mercado"] == "010":
            groups[row["codigo"]].append(row)
    return groups


def most_traded(data):
    groups = [(code, sum(row["volume"] for row in rows), len(rows))
              for code, rows in by_code(data["quotes"]).items()]
    return sorted(groups, key=lambda group: -group[1])


def gains(data):
    def gain(first, last):
        # As DuckDB divides: in binary, and then to six decimals.
        exact = decimal.Decimal(100 * (float(last) / float(first) - 1))
        return exact.quantize(decimal.Decimal("1e-6"), decimal.ROUND_HALF_UP).quantize(
            decimal.Decimal("0.01"), decimal.ROUND_HALF_EVEN)

    return [(code, rows[0]["ultimo"], rows[-1]["ultimo"], gain(rows[0]["ultimo"], rows[-1]["ultimo"]))
            for code, rows in sorted(by_code(data["quotes"]).items())]


def events(data):
    groups = collections.defaultdict(list)
    for file, row in data["titles"]:
        groups[file, row["ocorrencia"]].append(row["valor"])
    return [(*key, len(values), sum(values)) for key, values in sorted(groups.items())]


def wrong_sums(data):
    notes, items = data["invoices"]
    for note in notes:
        total = sum(item["valor"] for item in items if item["numero"] == note["numero"])
        if total != note["valor"]:
            yield note["numero"], note["valor"], total


ANSWERS = {
    "1": most_traded,
    "2": gains,
    "3": lambda data: [(len(data["quotes"]) + 2,) * 2],
    "4": lambda data: [(t["nosso_numero"], t["pagador"], t["valor"], u["pago"], u["pago"] - t["valor"])
                       for t, u in data["slips"] if t["movimento"] == "06"],
    "5": lambda data: [2 * (len(data["slips"]), sum(t["valor"] for t, _ in data["slips"]))],
    "6": lambda data: [("JOAO DE EXEMPLO", "123.456.789-00"),
                       ("TERCEIRO EXEMPLO ME", "11.222.333/0001-82")],
    "7": events,
    "8": lambda data: [(row["cliente_empresa"], row["valor"], row["vencimento"].replace(month=7))
                       for row in data["debits"] if row["retorno"] != "00"],
    "9": lambda data: list(wrong_sums(data)),
    "10": lambda data: [(0,)],
}


@pytest.fixture(scope="module")
def data(tmp_path_factory):
    folder = tmp_path_factory.mktemp("questions")
    made = {name: getattr(questions_data, name)(folder)
            for name in ("quotes", "slips", "titles", "debits", "invoices")}
    before = os.getcwd()
    os.chdir(folder)
    yield made
    os.chdir(before)


def test_the_manual_asks_ten_questions():
    assert [number for number, _ in QUESTIONS] == list(ANSWERS)


@pytest.mark.parametrize("number, question", QUESTIONS, ids=[number for number, _ in QUESTIONS])
def test_the_answer_is_right(data, number, question):
    connection = connect()
    for statement in filter(str.strip, question.split(";")):
        found = connection.execute(statement)
    answer = found.fetchall()
    assert answer and answer == ANSWERS[number](data)
