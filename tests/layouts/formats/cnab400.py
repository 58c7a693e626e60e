"""CNAB 400 of bank 341, by the positions in which two public programs write and read it."""

from sheet import Inventor, Sheet

DATES = {6: "%d%m%y", 8: "%d%m%Y"}
BANK = dict(banco="341", nome_banco="BANCO 341")
COMPANY = dict(agencia="0123", conta="45678", dac="9")


def sheet(kind, text):
    return Sheet(kind, 400, DATES, text)


FIRST = """registro:9(1) sentido:9(1) palavra:X(7) servico:9(2) nome_servico:X(15) agencia:9(4)
    _:X(2) conta:9(5) dac:9(1) _:X(8) empresa:X(30) banco:9(3) nome_banco:X(15) dia:D(6) """
OWNER = "registro:9(1) tipo:9(2) numero:K(14) agencia:9(4) _:X(2) conta:9(5) dac:9(1) "
SENT_HEADER = sheet("header", FIRST + "_:X(294) ordem:9(6)")
SENT = sheet("titulo", OWNER + """
    _:X(4) instrucao:9(4) uso:X(25) nosso_numero:9(8) moeda:9(8)V9(5) carteira:9(3) uso_banco:X(21)
    letra:X(1) ocorrencia:9(2) documento:X(10) vencimento:D(6) valor:9(11)V9(2) banco:9(3)
    cobradora:9(5) especie:X(2) aceite:X(1) emissao:D(6) primeira:X(2) segunda:X(2)
    juros:9(11)V9(2) desconto_ate:D(6) desconto:9(11)V9(2) iof:9(11)V9(2) abatimento:9(11)V9(2)
    tipo_pagador:9(2) numero_pagador:K(14) pagador:X(30) _:X(10) rua:X(40) bairro:X(12) cep:9(8)
    cidade:X(15) uf:X(2) avalista:X(30) _:X(4) mora:D(6) prazo:9(2) _:X(1) ordem:9(6)""")
FINE = sheet("multa", "registro:9(1) codigo:X(1) dia:D(8) valor:9(11)V9(2) _:X(371) ordem:9(6)")
SENT_TRAILER = sheet("trailer", "registro:9(1) _:X(393) ordem:9(6)")
BACK_HEADER = sheet("header", FIRST + """
    densidade:9(5) unidade:X(3) arquivo:9(5) credito:D(6) _:X(275) ordem:9(6)""")
BACK = sheet("titulo", OWNER + """
    _:X(8) uso:X(25) nosso_numero:9(8) _:X(12) carteira:9(3) repetido:9(8) dv:9(1) _:X(13)
    letra:X(1) ocorrencia:9(2) dia:D(6) documento:X(10) confirmado:X(8) _:X(12) vencimento:D(6)
    valor:9(11)V9(2) cobrador:9(3) cobradora:9(4) cobradora_dv:X(1) especie:X(2) tarifa:9(11)V9(2)
    _:X(26) iof:9(11)V9(2) abatimento:9(11)V9(2) desconto:9(11)V9(2) principal:9(11)V9(2)
    juros:9(11)V9(2) outros:9(11)V9(2) dda:X(1) _:X(2) credito:D(6) cancelada:X(4) _:X(6) _:X(13)
    pagador:X(30) _:X(23) erros:X(8) _:X(7) liquidacao:X(2) ordem:9(6)""")
BACK_TRAILER = sheet("trailer", """
    registro:9(1) sentido:9(1) servico:9(2) banco:9(3) _:X(10) simples:9(8) simples_valor:9(12)V9(2)
    simples_aviso:X(8) _:X(10) vinculada:9(8) vinculada_valor:9(12)V9(2) vinculada_aviso:X(8)
    _:X(90) direta:9(8) direta_valor:9(12)V9(2) direta_aviso:X(8) controle:9(5) detalhes:9(8)
    informado:9(12)V9(2) _:X(160) ordem:9(6)""")


def owner(invent):
    return dict(registro=1, tipo="02", numero=invent.cnpj(), **COMPANY)


def sent():
    invent = Inventor("cnab400 sent")
    mine, lines = owner(invent), []
    lines.append(SENT_HEADER.line(
        registro=0, sentido=1, palavra="REMESSA", servico="01", nome_servico="COBRANCA", ordem=1,
        empresa=invent.name("EMPRESA"), dia=invent.day(), **COMPANY, **BANK))
    for number in range(150):
        kind, payer = invent.person()
        lines.append(SENT.line(
            **mine, uso=f"CONTROLE {number}", nosso_numero=invent.number(8), carteira="109",
            letra="I", ocorrencia="01", documento=f"NF{number:06}", vencimento=invent.day(),
            valor=invent.money(), banco="341", especie="01", aceite=invent.choice("AN"),
            emissao=invent.day(), primeira=invent.some("34"), juros=invent.some(invent.money()),
            desconto_ate=invent.some(invent.day()), desconto=invent.some(invent.money()),
            abatimento=invent.some(invent.money()), tipo_pagador=kind, numero_pagador=payer,
            pagador=invent.name("PAGADOR"), rua="RUA DAS INVENÇÕES 12", bairro="CENTRO",
            cep=invent.number(8), cidade="SÃO NUNCA", uf="SP", mora=invent.some(invent.day()),
            prazo=number % 30, avalista=invent.some("FIADOR INVENTADO"), ordem=len(lines) + 1))
        if number % 2:
            lines.append(FINE.line(registro=2, codigo="1", dia=invent.day(), valor=invent.money(),
                                   ordem=len(lines) + 1))
    return lines + [SENT_TRAILER.line(registro=9, ordem=len(lines) + 1)]


def back():
    invent = Inventor("cnab400 back")
    mine, total, lines = owner(invent), 0, []
    lines.append(BACK_HEADER.line(
        registro=0, sentido=2, palavra="RETORNO", servico="01", nome_servico="COBRANCA",
        empresa=invent.name("EMPRESA"), dia=invent.day(), densidade="01600", unidade="BPI",
        arquivo=321, credito=invent.day(), ordem=1, **COMPANY, **BANK))
    for number in range(250):
        ours, value, paid = invent.number(8), invent.money(), number % 3 == 0
        total += value
        lines.append(BACK.line(
            **mine, uso=f"CONTROLE {number}", nosso_numero=ours, carteira="109", repetido=ours,
            dv=number % 10, letra="I", ocorrencia="06" if paid else "02", dia=invent.day(),
            documento=f"NF{number:06}", confirmado=ours, vencimento=invent.day(), valor=value,
            cobrador="341", cobradora=invent.number(4), cobradora_dv=invent.some("7"),
            especie="01", tarifa=invent.money(1000), principal=value if paid else 0,
            juros=invent.some(invent.money(900)), credito=invent.day() if paid else None,
            cancelada="0000", pagador=invent.name("PAGADOR"), erros=invent.some("0307"),
            liquidacao="B1" if paid else "", ordem=len(lines) + 1))
    return lines + [BACK_TRAILER.line(
        registro=9, sentido=2, servico="01", banco="341", simples=250, simples_valor=total,
        simples_aviso="00000000", controle=321, detalhes=250, informado=total,
        ordem=len(lines) + 1)]
