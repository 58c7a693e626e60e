"""The files of which docs/sql.md asks, made up: no person, company or price in them is real."""

import decimal
import random

from text_files import day, layout, record, write

D = decimal.Decimal
CODES = [("ABCD3", "ABC INDUSTRIA", "010"), ("EFGH4", "EFG ENERGIA", "010"),
         ("IJKL11", "IJK FUNDO", "010"), ("ABCDF3", "ABC INDUSTRIA", "020")]


def quotes(folder):
    """COTAHIST_A2024.TXT; gives the rows of its quotations."""
    told, some, rows = layout("b3/cotahist"), random.Random(2024), []
    for number, (code, name, market) in enumerate(CODES):
        price = 1000 * (number + 1)
        for date in ("2024-01-02", "2024-03-15", "2024-07-01", "2024-12-30"):
            price = max(100, price + some.randrange(-200, 300))
            count = some.randrange(100, 90000)
            rows.append(dict(pregao=day(date), codigo=code, nome=name[:12], mercado=market, bdi="02",
                             moeda="R$", abertura=D(price) / 100, maximo=D(price + 20) / 100,
                             minimo=D(price - 20) / 100, medio=D(price) / 100,
                             ultimo=D(price + some.randrange(-20, 20)) / 100, negocios=count // 90,
                             quantidade=count, volume=D(price * count) / 100, fator_cotacao=1))
    rows.sort(key=lambda row: (row["pregao"], row["codigo"]))
    same = dict(arquivo="COTAHIST.2024", geracao_data=day("2024-12-30"))
    write(folder / "COTAHIST_A2024.TXT",
          [record(told, "header", **same), *(record(told, "cotacao", **row) for row in rows),
           record(told, "trailer", registros=len(rows) + 2, **same)])
    return rows


def slips(folder):
    """retorno.ret, CNAB 240; gives pairs of the values of segments T and U."""
    told, pairs = layout("cnab240/cobranca-retorno"), []
    for number, (movement, value, paid, fee, payer, name) in enumerate([
            ("06", "1500.00", "1500.00", "2.10", "12345678909", "MARIA DE EXEMPLO"),
            ("06", "320.50", "327.88", "2.10", "00000000000191", "EXEMPLO COMERCIO LTDA"),
            ("09", "80.00", "0.00", "0.00", "12345678900", "JOAO DE EXEMPLO"),
            ("06", "999.99", "950.00", "2.10", "11222333000181", "OUTRO EXEMPLO SA"),
            ("02", "45.10", "0.00", "1.05", "11222333000182", "TERCEIRO EXEMPLO ME")], 1):
        tipo = "1" if len(payer) == 11 else "2"
        pairs.append((dict(nosso_numero=str(7000 + number), movimento=movement, carteira="1",
                           vencimento=day("2024-05-10"), valor=D(value), tarifa=D(fee),
                           pagador_inscricao_tipo=tipo, pagador_inscricao=payer, pagador=name),
                      dict(movimento=movement, pago=D(paid), liquido=D(paid),
                           ocorrencia_data=day("2024-05-13"))))
    lines = [record(told, "header_arquivo", banco="001", inscricao_tipo="2",
                    inscricao="00000000000191", geracao_data=day("2024-05-13")),
             record(told, "header_lote", banco="001", lote=1, inscricao_tipo="2",
                    inscricao="00000000000191", gravacao_data=day("2024-05-13"))]
    for number, (t, u) in enumerate(pairs):
        lines += [record(told, "segmento_t", banco="001", lote=1, sequencia=2 * number + 1, **t),
                  record(told, "segmento_u", banco="001", lote=1, sequencia=2 * number + 2, **u)]
    lines += [record(told, "trailer_lote", banco="001", lote=1, registros=len(lines),
                     simples_quantidade=len(pairs), simples_valor=sum(t["valor"] for t, _ in pairs)),
              record(told, "trailer_arquivo", banco="001", lotes=1, registros=len(lines) + 2)]
    write(folder / "retorno.ret", lines)
    return pairs


def titles(folder):
    """CB1305.RET and CB1405.RET, CNAB 400; gives (file, values of a title)."""
    told, rows = layout("cnab400/341-retorno"), []
    for file, date, values in (
            ("CB1305.RET", "2024-05-13", [("06", "100.00"), ("06", "250.75"), ("09", "80.00")]),
            ("CB1405.RET", "2024-05-14", [("02", "45.10"), ("06", "19.90")])):
        lines = [record(told, "header", agencia="1234", conta="56789", geracao_data=day(date),
                        sequencia=1)]
        mine = []
        for number, (event, value) in enumerate(values, 2):
            mine.append(dict(ocorrencia=event, ocorrencia_data=day(date), valor=D(value),
                             nosso_numero=str(number), sequencia=number))
            lines.append(record(told, "titulo", inscricao_tipo="02", inscricao="00000000000191",
                                **mine[-1]))
        lines.append(record(told, "trailer", titulos=len(mine), sequencia=len(lines) + 1,
                            total=sum(row["valor"] for row in mine)))
        write(folder / file, lines)
        rows += [(file, row) for row in mine]
    return rows


def debits(folder):
    """debito.ret, FEBRABAN 150; gives the values of its returns."""
    told = layout("febraban150/debito-automatico")
    rows = [dict(cliente_empresa=f"CLIENTE {number}", vencimento=day("2024-06-05"), valor=D(value),
                 retorno=code) for number, (code, value) in enumerate(
                     [("00", "59.90"), ("00", "59.90"), ("01", "120.00"), ("02", "35.00"),
                      ("01", "59.90")], 1)]
    write(folder / "debito.ret",
          [record(told, "header", remessa_retorno="2", geracao_data=day("2024-06-05"),
                  arquivo_sequencia=12), *(record(told, "retorno", **row) for row in rows),
           record(told, "trailer", registros=len(rows) + 2,
                  total=sum(row["valor"] for row in rows))])
    return rows


def invoices(folder):
    """sintegra.txt; gives the values of the invoices and of their items."""
    told = layout("sintegra/convenio-57-95")
    notes, items = [], []
    for number, (date, cfop, total, rate, parts) in enumerate([
            ("2024-04-02", "5102", "1000.00", "18.00", ["600.00", "400.00"]),
            ("2024-04-20", "6102", "500.00", "12.00", ["500.00"]),
            ("2024-05-03", "5102", "250.00", "18.00", ["100.00", "149.99"])], 1):
        tax = (D(total) * D(rate) / 100).quantize(D("0.01"))
        same = dict(inscricao="11222333000181", numero=str(number).zfill(6), cfop=cfop, serie="1",
                    modelo="55")
        notes.append(dict(same, data=day(date), uf="SP", emitente="P", situacao="N", valor=D(total),
                          base_icms=D(total), icms=tax, aliquota=D(rate)))
        items += [dict(same, item=at, valor=D(part)) for at, part in enumerate(parts, 1)]
    lines = [record(told, "estabelecimento", inscricao="00000000000191", empresa="EXEMPLO LTDA",
                    uf="SP", inicio=day("2024-04-01"), fim=day("2024-05-31"), estrutura="3",
                    natureza="3", finalidade="1")]
    lines += [record(told, "nota", **note) for note in notes]
    lines += [record(told, "item", **item) for item in items]
    lines.append(record(told, "totais", inscricao="00000000000191"))
    write(folder / "sintegra.txt", lines)
    return notes, items
