"""Direct debit of 150 positions, version 04, by the widths of two programs for it."""

from sheet import Inventor, Sheet

DATES = {8: "%Y%m%d"}
CLIENT = "registro:X(1) cliente:X(25) agencia:X(4) conta:X(14) "


def sheet(kind, text):
    return Sheet(kind, 150, DATES, text)


HEADER = sheet("header", """registro:X(1) sentido:9(1) convenio:X(20) empresa:X(20) banco:9(3)
    nome_banco:X(20) dia:D(8) nsa:9(6) versao:9(2) servico:X(17) _:X(52)""")
OPTION = sheet("cadastramento", CLIENT + "dia:D(8) _:X(97) movimento:9(1)")
REFUSED = sheet("cadastramento_ocorrencia",
                CLIENT + "ocorrencia:X(40) mais:X(40) _:X(25) movimento:9(1)")
CHANGE = sheet("alteracao", CLIENT + "novo:X(25) ocorrencia:X(60) _:X(20) movimento:9(1)")
DEBIT = sheet("debito", CLIENT + """vencimento:D(8) valor:9(13)V9(2) moeda:X(2) livre:X(60)
    _:X(20) movimento:9(1)""")
RETURN = sheet("retorno", CLIENT + """vencimento:D(8) valor:9(13)V9(2) codigo:X(2) livre:X(70)
    _:X(10) movimento:9(1)""")
CHANGED = sheet("alteracao_ocorrencia",
                CLIENT + "novo:X(25) ocorrencia:X(58) _:X(22) movimento:9(1)")
DONE = sheet("processamento", """registro:X(1) nsa:9(6) dia:D(8) registros:9(6) valor:9(15)V9(2)
    feito:D(8) _:X(104)""")
TRAILER = sheet("trailer", "registro:X(1) registros:9(6) valor:9(15)V9(2) _:X(126)")


def file():
    """Kinds of both directions in one file, so that each stands in it."""
    invent = Inventor("febraban150")
    lines = [HEADER.line(registro="A", sentido=2, convenio="00012345", nsa=77, versao="04",
                         empresa=invent.name("EMPRESA", 20), banco="999", dia=invent.day(),
                         nome_banco="BANCO INVENTADO", servico="DEBITO AUTOMATICO")]
    total = 0
    for number in range(400):
        letter = "BCDEFH"[number % 6]
        client = dict(registro=letter, cliente=f"CLIENTE {number:06}", agencia=invent.number(4),
                      conta=invent.number(invent.choice([6, 14])))
        new = dict(novo=f"CLIENTE {number + 500:06}", ocorrencia="NUMERO NOVO",
                   movimento=number % 2)
        money = dict(vencimento=invent.day(), valor=invent.money(), movimento=number % 2,
                     livre=invent.some("NOTA 12"))
        if letter == "B":
            line = OPTION.line(**client, dia=invent.some(invent.day()), movimento=1 + number % 2)
        elif letter == "C":
            line = REFUSED.line(**client, ocorrencia="CONTA INEXISTENTE", movimento=1)
        elif letter in "DH":
            line = (CHANGE if letter == "D" else CHANGED).line(**client, **new)
        elif letter == "E":
            line = DEBIT.line(**client, **money, moeda="03")
        else:
            line = RETURN.line(**client, **money, codigo=invent.choice(["00", "01", "AA"]))
        total += money["valor"] if letter in "EF" else 0
        lines.append(line)
    lines.append(DONE.line(registro="J", nsa=76, dia=invent.day(), registros=12,
                           valor=invent.money(), feito=invent.day()))
    return lines + [TRAILER.line(registro="Z", registros=len(lines) + 1, valor=total)]
