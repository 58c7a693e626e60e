"""Documents of the Python package: every one, as texts and as columns in every shape that they come
in, held against rules written here anew."""

import random
import string

import numpy
import pandas
import polars
import pyarrow
import pytest

import campotipo

RANDOM = random.Random(20261123)
DIGITS = string.digits


def modulo11(digits, weights, low=0):
    rest = sum(int(d) * w for d, w in zip(digits, weights)) % 11
    return str(low if rest < 2 else 11 - rest)


def cpf(nine):
    ten = nine + modulo11(nine, range(10, 1, -1))
    return ten + modulo11(ten, range(11, 1, -1))


def cnpj(twelve):
    values = [ord(c) - 48 for c in twelve]
    for _ in range(2):
        weights = ([9, 8, 7, 6, 5, 4, 3, 2] * 2)[-len(values):]
        rest = sum(v * w for v, w in zip(values, weights)) % 11
        values.append(0 if rest < 2 else 11 - rest)
    return twelve + "".join(str(v) for v in values[12:])


def luhn(digits):
    total = sum(sum(divmod(int(d) * (2 - i % 2), 10)) for i, d in enumerate(reversed(digits)))
    return digits + str(-total % 10)


def processo(number, year, rest):
    check = 98 - int(number + year + rest + "00") % 97
    return f"{number}{check:02}{year}{rest}"


def digits(count):
    return "".join(RANDOM.choices(DIGITS, k=count))


# The documents whose rule stands above: good numbers, and the form with punctuation.
def made(doc):
    if doc == "CPF":
        d = cpf("1" + digits(8))
        return d, f"{d[:3]}.{d[3:6]}.{d[6:9]}-{d[9:]}"
    if doc in ("CNPJ", "CNPJ_alfa"):
        letters = DIGITS + string.ascii_uppercase if doc == "CNPJ_alfa" else DIGITS
        d = cnpj("1" + "".join(RANDOM.choices(letters, k=11)))
        return d, f"{d[:2]}.{d[2:5]}.{d[5:8]}/{d[8:12]}-{d[12:]}"
    if doc == "cartao":
        d = luhn("4" + digits(RANDOM.randint(10, 17)))
        return d, " ".join(d[i:i + 4] for i in range(0, len(d), 4))
    if doc == "PIS":
        d = "1" + digits(9)
        d += modulo11(d, [3, 2, 9, 8, 7, 6, 5, 4, 3, 2])
        return d, f"{d[:3]}.{d[3:8]}.{d[8:10]}-{d[10:]}"
    d = processo("0" + digits(6), "2016", "8" + "19" + digits(4))
    return d, f"{d[:7]}-{d[7:9]}.{d[9:13]}.{d[13]}.{d[14:16]}.{d[16:]}"


MODELLED = ["CPF", "CNPJ", "CNPJ_alfa", "cartao", "PIS", "processo"]
# Good numbers of the others, from their manuals, as they are shown.
FORMS = {
    "RENAVAM": "00639884962",
    "CNS": "898 0000 0004 3208",
    "titulo": "1023 8501 0671",
    "boleto_linha": "34191.79001 01043.510047 91020.150008 5 70880000002000",
    "arrecadacao_linha": "83640000001-1 33120138000-2 81288462711-6 08013618155-1",
}
KNOWN = {doc: ("".join(filter(str.isdigit, form)), form) for doc, form in FORMS.items()}


def wrong(number, at):
    return number[:at] + str((int(number[at]) + 1) % 10) + number[at + 1:]


@pytest.mark.parametrize("doc", MODELLED)
def test_numbers_of_the_rule(doc):
    for _ in range(300):
        number, form = made(doc)
        for text in (number, form, f" {number} ", form.replace("-", ""), form.replace(".", " ")):
            assert campotipo.valida(doc, text) is True, text
            assert campotipo.limpa(doc, text) == number
            assert campotipo.edita(doc, text) == form
            assert doc in campotipo.identifica(text)
        assert campotipo.valida(doc, wrong(number, len(number) - 1)) is False
        assert doc not in campotipo.identifica(wrong(number, len(number) - 1))


@pytest.mark.parametrize("doc", KNOWN)
def test_numbers_of_the_manuals(doc):
    number, form = KNOWN[doc]
    for text in (number, form):
        assert campotipo.valida(doc, text)
        assert campotipo.limpa(doc, text) == number
        assert campotipo.edita(doc, text) == form
    assert not campotipo.valida(doc, wrong(number, len(number) - 2))


def test_the_names_are_those_of_the_command():
    assert len(set(campotipo.documentos())) == 15
    for doc in campotipo.documentos():
        for name in (doc, doc.lower(), doc.upper()):
            assert campotipo.valida(name, "") is False


HOSTILE = ["", " ", "\0", "1\0" * 9, "12345678909\0", "1234567890\0", "é" * 11, "９" * 11, "1" * 10**6,
           "-" * 127, "." * 128, "0" * 11, "0" * 14, "\ud800", "123.456.789-0", "a" * 44, "\t\n"]


@pytest.mark.parametrize("doc", campotipo.documentos())
def test_wrong_texts_have_an_outcome(doc):
    for text in HOSTILE:
        try:
            assert campotipo.valida(doc, text) is False, repr(text[:30])
        except UnicodeEncodeError:
            continue
        for function in (campotipo.limpa, campotipo.edita):
            try:
                assert len(function(doc, text)) < 64  # zeros have the form
            except campotipo.Error as error:
                assert doc in str(error)


def columns(texts):
    """The texts as every column that is taken."""
    array = pyarrow.array(texts, pyarrow.string())
    yield "list", list(texts)
    yield "tuple", tuple(texts)
    yield "array", array
    yield "large", array.cast(pyarrow.large_string())
    yield "view", array.cast(pyarrow.string_view())
    yield "binary", array.cast(pyarrow.binary())
    yield "binary view", array.cast(pyarrow.binary()).cast(pyarrow.binary_view())
    yield "dictionary", array.dictionary_encode()
    yield "chunks", pyarrow.chunked_array([array[:2], array[2:2], array[2:]])
    yield "sliced", pyarrow.concat_arrays([array, array])[len(array):]
    yield "sliced dictionary", pyarrow.concat_arrays(
        [array.dictionary_encode()] * 2)[len(array):]
    yield "polars", polars.Series(texts, dtype=polars.String)
    yield "category", polars.Series(texts, dtype=polars.Categorical)
    yield "pandas", pandas.Series(texts, dtype="str")
    yield "pandas Arrow", pandas.Series(texts, dtype=pandas.ArrowDtype(pyarrow.string()))
    yield "objects", numpy.array(texts, dtype=object)
    if None not in texts:
        yield "NumPy", numpy.array([text.encode() for text in texts])


@pytest.mark.parametrize("doc", campotipo.documentos())
def test_columns_are_their_values(doc):
    texts = [made(d)[i % 2] for i, d in enumerate(MODELLED * 7)] + [t for k in KNOWN.values() for t in k]
    texts += [wrong(text, len(text) - 1) for text in texts if text[-1].isdigit()] + ["x", "1" * 200]

    def one(function, text):
        try:
            return None if text is None else function(doc, text)
        except campotipo.Error:
            return None

    for holes in (texts, [None, *texts, None, texts[0]]):
        wanted = {f: [one(f, text) for text in holes]
                  for f in (campotipo.valida, campotipo.limpa, campotipo.edita)}
        found = [None if text is None else list(campotipo.identifica(text)) for text in holes]
        for name, column in columns(holes):
            for function, values in wanted.items():
                made_of = function(doc, column)
                assert made_of.to_list() == values, (name, function)
                array = pyarrow.array(made_of)
                array.validate(full=True)
                assert array.to_pylist() == values
                assert polars.Series(made_of).to_list() == values
                assert len(made_of) == len(values) and list(made_of) == values
            listed = campotipo.identifica(column)
            pyarrow.array(listed).validate(full=True)
            assert listed.to_list() == pyarrow.array(listed).to_pylist() == found, name


def test_a_column_goes_to_numpy_without_a_copy():
    numbers = [made("CPF")[0] for _ in range(1000)] + ["1"]
    good = campotipo.valida("CPF", numbers)
    assert numpy.asarray(good).dtype == bool and numpy.asarray(good).tolist() == good.to_list()
    forms = campotipo.edita("CPF", numbers[:-1])
    assert numpy.asarray(forms).dtype == "S14"
    assert [form.decode() for form in numpy.asarray(forms)] == forms.to_list()
    assert not numpy.asarray(forms).flags.writeable
    with pytest.raises(BufferError, match="null"):
        memoryview(campotipo.limpa("CPF", numbers))
    with pytest.raises(BufferError, match="length"):
        memoryview(campotipo.limpa("cartao", [made("cartao")[0], "4" * 12]))
    address = pyarrow.array(forms).buffers()[2].address
    assert address == numpy.asarray(forms).__array_interface__["data"][0]


def test_a_result_outlives_its_column():
    array = pyarrow.array(campotipo.edita("CPF", ["12345678909"] * 100))
    view = memoryview(campotipo.valida("CPF", ["12345678909"] * 100))
    assert array.to_pylist() == ["123.456.789-09"] * 100 and bytes(view) == b"\1" * 100


@pytest.mark.parametrize("arguments", [
    (), ("CPF",), ("CPF", "1", "2"), (1, "1"), ("CPF", None), ("CPF", 1), ("CPF", 1.5), (None, "1"),
    ("CPF", [1]), ("CPF", ["1", 2]), ("CPF", numpy.array([1])), ("CPF", numpy.array(["1"])),
    ("CPF", pyarrow.array([1])), ("CPF", pyarrow.table({"a": ["1"]})), ("CPF", b"12345678909"),
    ("CPF", object())])
def test_wrong_arguments_raise_type_errors(arguments):
    for function in (campotipo.valida, campotipo.limpa, campotipo.edita):
        with pytest.raises(TypeError):
            function(*arguments)


def test_an_unknown_document_names_the_known_ones():
    with pytest.raises(campotipo.Error, match='"RG": no such document; there are CPF, CNPJ'):
        campotipo.valida("RG", "1")
