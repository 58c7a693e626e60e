"""The file of the Convênio 57/95, by the widths of two public programs that write it."""

from collections import Counter

from sheet import Inventor, Sheet

DATES = {8: "%Y%m%d"}
WHO = "numero:K(14) ie:X(14) "
NOTE = "registro:9(2) " + WHO + "dia:D(8) uf:X(2) "


def sheet(kind, text):
    return Sheet(kind, 126, DATES, text)


SHEETS = {
    "10": sheet("estabelecimento", "registro:9(2) " + WHO + """empresa:X(35) municipio:X(30) uf:X(2)
        fax:9(10) de:D(8) ate:D(8) estrutura:9(1) natureza:9(1) finalidade:9(1)"""),
    "11": sheet("estabelecimento_complemento", """registro:9(2) rua:X(34) casa:9(5)
        complemento:X(22) bairro:X(15) cep:9(8) contato:X(28) telefone:9(12)"""),
    "50": sheet("nota", NOTE + """modelo:9(2) serie:X(3) nota:9(6) cfop:9(4) emitente:X(1)
        valor:9(11)V9(2) base:9(11)V9(2) icms:9(11)V9(2) isenta:9(11)V9(2) outras:9(11)V9(2)
        aliquota:9(2)V9(2) situacao:X(1)"""),
    "51": sheet("nota_ipi", NOTE + """serie:X(3) nota:9(6) cfop:9(4) valor:9(11)V9(2) ipi:9(11)V9(2)
        isenta:9(11)V9(2) outras:9(11)V9(2) _:X(20) situacao:X(1)"""),
    "53": sheet("nota_substituicao", NOTE + """modelo:9(2) serie:X(3) nota:9(6) cfop:9(4)
        emitente:X(1) base:9(11)V9(2) icms:9(11)V9(2) despesas:9(11)V9(2) situacao:X(1)
        antecipacao:X(1) _:X(29)"""),
    "54": sheet("item", """registro:9(2) numero:K(14) modelo:9(2) serie:X(3) nota:9(6) cfop:9(4)
        cst:X(3) item:9(3) produto:X(14) quantidade:9(8)V9(3) valor:9(10)V9(2) desconto:9(10)V9(2)
        base:9(10)V9(2) base_st:9(10)V9(2) ipi:9(10)V9(2) aliquota:9(2)V9(2)"""),
    "60M": sheet("cupom_mestre", """registro:9(2) letra:X(1) dia:D(8) ecf:X(20) ordem:9(3)
        modelo:X(2) coo_de:9(6) coo_ate:9(6) crz:9(6) cro:9(3) bruta:9(14)V9(2) total:9(14)V9(2)
        _:X(37)"""),
    "60A": sheet("cupom_analitico", """registro:9(2) letra:X(1) dia:D(8) ecf:X(20) st:X(4)
        valor:9(10)V9(2) _:X(79)"""),
    "60D": sheet("cupom_resumo_dia", """registro:9(2) letra:X(1) dia:D(8) ecf:X(20) produto:X(14)
        quantidade:9(10)V9(3) valor:9(14)V9(2) base:9(14)V9(2) st:X(4) icms:9(11)V9(2) _:X(19)"""),
    "60I": sheet("cupom_item", """registro:9(2) letra:X(1) dia:D(8) ecf:X(20) modelo:X(2) coo:9(6)
        item:9(3) produto:X(14) quantidade:9(10)V9(3) valor:9(11)V9(2) base:9(10)V9(2) st:X(4)
        icms:9(10)V9(2) _:X(16)"""),
    "60R": sheet("cupom_resumo_mes", """registro:9(2) letra:X(1) mes:9(6) produto:X(14)
        quantidade:9(10)V9(3) valor:9(14)V9(2) base:9(14)V9(2) st:X(4) _:X(54)"""),
    "61R": sheet("consumidor_resumo_mes", """registro:9(2) letra:X(1) mes:9(6) produto:X(14)
        quantidade:9(10)V9(3) valor:9(14)V9(2) base:9(14)V9(2) aliquota:9(2)V9(2) _:X(54)"""),
    "61": sheet("consumidor", """registro:9(2) _:X(14) _:X(14) dia:D(8) modelo:9(2) serie:X(3)
        subserie:X(2) de:9(6) ate:9(6) valor:9(11)V9(2) base:9(11)V9(2) icms:9(10)V9(2)
        isenta:9(11)V9(2) outras:9(11)V9(2) aliquota:9(2)V9(2) _:X(1)"""),
    "70": sheet("transporte", NOTE + """modelo:9(2) serie:X(1) subserie:X(2) nota:9(6) cfop:9(4)
        valor:9(11)V9(2) base:9(12)V9(2) icms:9(12)V9(2) isenta:9(12)V9(2) outras:9(12)V9(2)
        frete:9(1) situacao:X(1)"""),
    "74": sheet("inventario", """registro:9(2) dia:D(8) produto:X(14) quantidade:9(10)V9(3)
        valor:9(11)V9(2) posse:9(1) """ + WHO + "uf:X(2) _:X(45)"),
    "75": sheet("produto", """registro:9(2) de:D(8) ate:D(8) produto:X(14) ncm:X(8) descricao:X(53)
        unidade:X(6) ipi:9(3)V9(2) aliquota:9(2)V9(2) reducao:9(3)V9(2) base_st:9(11)V9(2)"""),
    "88EAN": sheet("codigo_barras", """registro:9(2) letra:X(3) versao:9(2) produto:X(14)
        descricao:X(53) unidade:X(6) barras:X(14) _:X(32)"""),
    "88SME": sheet("sem_movimento",
                   "registro:9(2) letra:X(3) numero:K(14) mensagem:X(34) _:X(73)"),
    "88STES": sheet("estoque_substituicao", """registro:9(2) letra:X(4) numero:K(14) dia:D(8)
        produto:X(60) quantidade:9(10)V9(3) icms_st:9(10)V9(2) icms:9(10)V9(2) _:X(1)"""),
    "88": sheet("informacao_estadual", "registro:9(2) letra:X(3) livre:X(121)"),
    "90": sheet("totais", "registro:9(2) " + WHO
                + " ".join(f"tipo{n}:9(2) total{n}:9(8)" for n in range(1, 10))
                + " _:X(5) registros:9(1)"),
}


def values_of(sheet, invent, number):
    """Something for each field, by its name."""
    made = dict(
        numero=invent.person()[1], ie=invent.choice(["ISENTO", "110042490114"]), uf="SP",
        modelo="55" if sheet.kind != "cupom_mestre" else "2D", serie="1", nota=number, cfop="5102",
        emitente=invent.choice("PT"), situacao=invent.choice("NSEX24"), cst="000", item=number % 99,
        produto=f"PROD {number:05}", frete=number % 3, posse=1 + number % 3, mes="012024",
        st=invent.choice(["1800", "CANC", "F"]), ecf=f"ECF{number:010}", ncm="84713012",
        descricao="MERCADORIA INVENTADA", unidade="UN", barras=invent.number(13), versao="13",
        mensagem="SEM MOVIMENTO DE ENTRADAS", livre="TEXTO LIVRE DO ESTADO", aliquota=18)
    names = {field.name for field in sheet.fields}
    values = {name: value for name, value in made.items() if name in names}
    for field in sheet.fields:
        if field.what == "D":
            values[field.name] = invent.day()
        elif field.decimals and field.name not in values:
            values[field.name] = invent.some(invent.money(10**5))
        elif field.what == "9" and field.name not in values and field.name != "registro":
            values[field.name] = invent.number(field.width)
    return values


def totals(lines, owner):
    """Records 90: nine totals each, that of all records (99) behind the others."""
    count = Counter(line.text[:2] for line in lines)
    pairs = [(kind, count[kind]) for kind in sorted(count) if kind > "11"]
    files = (len(pairs) + 1 + 8) // 9
    pairs.append(("99", len(lines) + files))
    for first in range(0, len(pairs), 9):
        nine = pairs[first:first + 9] + [(None, None)] * 9
        values = {}
        for place, (kind, total) in enumerate(nine[:9], 1):
            values |= {f"tipo{place}": kind, f"total{place}": total}
        yield SHEETS["90"].line(registro="90", registros=files, **owner, **values)


def file():
    invent = Inventor("sintegra")
    owner = dict(numero=invent.cnpj(), ie="110042490114")
    lines = [SHEETS["10"].line(registro="10", empresa=invent.name("EMPRESA"), municipio="SÃO NUNCA",
                               uf="SP", de=invent.day(), ate=invent.day(), estrutura=3, natureza=3,
                               finalidade=1, **owner)]
    for key, sheet in SHEETS.items():
        for number in range(0 if key in ("10", "90") else 1 if key == "11" else 15):
            values = values_of(sheet, invent, number)
            if any(field.name == "letra" for field in sheet.fields):
                values["letra"] = key[2:] or "C12"
            lines.append(sheet.line(registro=key[:2], **values))
    return lines + list(totals(lines, owner))
