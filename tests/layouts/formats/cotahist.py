"""COTAHIST, by the widths of the package rb3 and the pages of the exchange."""

from decimal import Decimal

from sheet import Inventor, Sheet

DATES = {8: "%Y%m%d"}
HEADER = Sheet("header", 245, DATES, "registro:X(2) arquivo:X(13) origem:X(8) dia:D(8) _:X(214)")
QUOTE = Sheet("cotacao", 245, DATES, """
    registro:X(2) dia:D(8) bdi:X(2) papel:X(12) mercado:9(3) empresa:X(12) especificacao:X(10)
    prazo:X(3) moeda:X(4) abertura:9(11)V9(2) maximo:9(11)V9(2) minimo:9(11)V9(2) medio:9(11)V9(2)
    ultimo:9(11)V9(2) compra:9(11)V9(2) venda:9(11)V9(2) negocios:9(5) titulos:9(18)
    volume:9(16)V9(2) exercicio:9(11)V9(2) correcao:9(1) vencimento:F(8) fator:9(7)
    pontos:9(7)V9(6) isin:X(12) distribuicao:9(3)""")
TRAILER = Sheet("trailer", 245, DATES, """
    registro:X(2) arquivo:X(13) origem:X(8) dia:D(8) registros:9(11) _:X(203)""")


def file():
    invent = Inventor("cotahist")
    ends = dict(arquivo="COTAHIST.2024", origem="BOVESPA", dia=invent.day())
    lines = [HEADER.line(registro="00", **ends)]
    for number in range(400):
        low = invent.money()
        high = low + invent.money(1000)
        option = invent.random.random() < 0.3
        lines.append(QUOTE.line(
            registro="01", dia=invent.day(), bdi=invent.choice(["02", "96", "78"]),
            papel=f"INVE{number % 90 + 3}{'F' if number % 7 == 0 else ''}",
            mercado=invent.choice(["010", "020", "070", "030"]), empresa=f"INVENTADA {number % 99}",
            especificacao=invent.choice(["ON      NM", "PN  EJ  N1", "CI"]),
            prazo=invent.choice(["", "000", "030"]), moeda="R$", abertura=low, maximo=high,
            minimo=low, medio=low, ultimo=high, compra=invent.some(low), venda=invent.some(high),
            negocios=invent.random.randrange(100000), titulos=invent.random.randrange(10**18),
            volume=Decimal(invent.random.randrange(10**18)) / 100,
            exercicio=invent.money() if option else 0, vencimento=invent.day() if option else None,
            correcao=invent.choice([0, 1]), fator=invent.choice([1, 1000]),
            pontos=Decimal(invent.random.randrange(10**13)).scaleb(-6) if option else 0,
            isin=f"BRINVE{number:05}0", distribuicao=invent.number(3)))
    return lines + [TRAILER.line(registro="99", registros=len(lines) + 1, **ends)]
