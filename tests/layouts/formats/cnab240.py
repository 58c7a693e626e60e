"""CNAB 240, by the field numbers and widths of FEBRABAN as four public programs hold them."""

from sheet import Inventor, Sheet

DATES = {8: "%d%m%Y"}
START = "banco:9(3) lote:9(4) registro:9(1) "
DETAIL = START + "ordem:9(5) segmento:X(1) "
ACCOUNT = "agencia:9(5) agencia_dv:X(1) conta:9(12) conta_dv:X(1) dv:X(1) "
ADDRESS = "rua:X(30) casa:9(5) complemento:X(15) "


def sheet(kind, text):
    return Sheet(kind, 240, DATES, text)


FILE = sheet("header_arquivo", START + """_:X(9) tipo:9(1) numero:K(14)
    convenio:X(20) """ + ACCOUNT + """empresa:X(30) nome_banco:X(30) _:X(10) sentido:9(1) dia:D(8) hora:T(6) arquivo:9(6) versao:9(3)
    densidade:9(5) uso_banco:X(20) uso_empresa:X(20) _:X(29)""")
FILE_END = sheet("trailer_arquivo", START + "_:X(9) lotes:9(6) registros:9(6) contas:9(6) _:X(205)")
LOT = sheet("header_lote", START + """
    operacao:X(1) servico:9(2) _:X(2) versao:9(3) _:X(1) tipo:9(1) numero:K(15) convenio:X(20)
    """ + ACCOUNT + """empresa:X(30) mensagem_1:X(40) mensagem_2:X(40) remessa:9(8) gravacao:D(8)
    credito:D(8) _:X(33)""")
LOT_END = sheet("trailer_lote", START + """
    _:X(9) registros:9(6) n1:9(6) v1:9(15)V9(2) n2:9(6) v2:9(15)V9(2) n3:9(6) v3:9(15)V9(2)
    n4:9(6) v4:9(15)V9(2) aviso:X(8) _:X(117)""")
T = sheet("segmento_t", DETAIL + "_:X(1) movimento:9(2) " + ACCOUNT + """
    nosso_numero:X(20) carteira:9(1) documento:X(15) vencimento:D(8) valor:9(13)V9(2) cobrador:9(3)
    cobradora:9(5) cobradora_dv:X(1) uso:X(25) moeda:9(2) tipo:9(1) numero:K(15) pagador:X(40)
    contrato:9(10) tarifa:9(13)V9(2) motivos:X(10) _:X(17)""")
U = sheet("segmento_u", DETAIL + """_:X(1) movimento:9(2)
    acrescimos:9(13)V9(2) desconto:9(13)V9(2) abatimento:9(13)V9(2) iof:9(13)V9(2) pago:9(13)V9(2)
    liquido:9(13)V9(2) despesas:9(13)V9(2) creditos:9(13)V9(2) dia:D(8) credito:D(8) codigo:X(4)
    outro_dia:B(8) outro_valor:9(13)V9(2) outro_texto:X(30) banco_2:9(3) numero_2:X(20) _:X(7)""")
P = sheet("segmento_p", DETAIL + "_:X(1) movimento:9(2) " + ACCOUNT + """
    nosso_numero:X(20) carteira:9(1) cadastramento:9(1) tipo_documento:X(1) emissao_boleto:9(1)
    distribuicao:X(1) documento:X(15) vencimento:D(8) valor:9(13)V9(2) cobradora:9(5)
    cobradora_dv:X(1) especie:9(2) aceite:X(1) emissao:D(8) juros_codigo:9(1) juros_dia:D(8)
    juros:9(13)V9(2) desconto_codigo:9(1) desconto_dia:D(8) desconto:9(13)V9(2) iof:9(13)V9(2)
    abatimento:9(13)V9(2) uso:X(25) protesto:9(1) protesto_dias:9(2) baixa:9(1) baixa_dias:X(3)
    moeda:9(2) contrato:9(10) livre:X(1)""")
Q = sheet("segmento_q", DETAIL + """_:X(1) movimento:9(2)
    tipo:9(1) numero:K(15) pagador:X(40) rua:X(40) bairro:X(15) cep:9(5) sufixo:9(3) cidade:X(15)
    uf:X(2) tipo_avalista:9(1) numero_avalista:K(15) avalista:X(40) banco_2:9(3) numero_2:X(20)
    _:X(8)""")
R = sheet("segmento_r", DETAIL + """_:X(1) movimento:9(2)
    codigo_2:9(1) dia_2:D(8) desconto_2:9(13)V9(2) codigo_3:9(1) dia_3:D(8) desconto_3:9(13)V9(2)
    multa_codigo:9(1) multa_dia:D(8) multa:9(13)V9(2) informacao:X(10) mensagem_3:X(40)
    mensagem_4:X(40) _:X(20) ocorrencias:X(8) debito_banco:9(3) """ + ACCOUNT + "aviso:9(1) _:X(9)")
PAID_LOT = sheet("header_lote", START + """
    operacao:X(1) servico:9(2) forma:9(2) versao:9(3) _:X(1) tipo:9(1) numero:K(14) convenio:X(20)
    """ + ACCOUNT + "empresa:X(30) mensagem:X(40) " + ADDRESS + """cidade:X(20) cep:9(5) sufixo:9(3)
    uf:X(2) indicativo:9(2) _:X(6) ocorrencias:X(10)""")
A = sheet("segmento_a", DETAIL + """
    movimento:9(1) instrucao:9(2) camara:9(3) banco_favorecido:9(3)
    """ + ACCOUNT + """favorecido:X(30) documento:X(20) dia:D(8) moeda:X(3) quantidade:9(10)V9(5) valor:9(13)V9(2) nosso_numero:X(20)
    dia_real:D(8) valor_real:9(13)V9(2) informacao:X(40) doc:X(2) ted:X(5) complementar:X(2) _:X(3)
    aviso:9(1) ocorrencias:X(10)""")
B = sheet("segmento_b", DETAIL + "_:X(3) tipo:9(1) numero:K(14) " + ADDRESS + """
    bairro:X(15) cidade:X(20) cep:9(5) sufixo:9(3) uf:X(2) vencimento:D(8) documento:9(13)V9(2)
    abatimento:9(13)V9(2) desconto:9(13)V9(2) mora:9(13)V9(2) multa:9(13)V9(2) favorecido:X(15)
    aviso:9(1) unidade:9(6) ispb:9(8)""")
PAID_LOT_END = sheet("trailer_lote", START + """
    _:X(9) registros:9(6) total:9(16)V9(2) quantidade:9(13)V9(5) aviso:9(6) _:X(165)
    ocorrencias:X(10)""")


class Writer:
    """Lots between the header and the trailer of a file."""

    def __init__(self, name, way):
        self.invent = invent = Inventor(name)
        self.bank = dict(banco="999")
        self.account = dict(agencia=invent.number(5), agencia_dv="1", conta=invent.number(12),
                            conta_dv="X", dv="")
        self.company = dict(tipo=2, numero=invent.cnpj(), empresa=invent.name("EMPRESA"),
                            convenio="CONV 123", **self.account)
        self.lots, self.place = 0, {}
        self.lines = [FILE.line(
            lote="0000", registro=0, nome_banco="BANCO INVENTADO", sentido=way, dia=invent.day(),
            hora=invent.time(), arquivo=17, versao="087", densidade="01600", uso_empresa="TESTE",
            **self.bank, **self.company)]

    def open(self, sheet, **values):
        self.lots += 1
        self.place = dict(lote=self.lots, **self.bank)
        self.begin, self.order = len(self.lines), 0
        self.lines.append(sheet.line(registro=1, **self.place, **self.company, **values))

    def detail(self, sheet, **values):
        self.order += 1
        segment = sheet.kind[-1].upper()
        self.lines.append(sheet.line(registro=3, ordem=self.order, segmento=segment, **self.place,
                                     **values))

    def close(self, sheet, **values):
        count = len(self.lines) - self.begin + 1
        self.lines.append(sheet.line(registro=5, registros=count, **self.place, **values))

    def end(self):
        last = FILE_END.line(lote="9999", registro=9, lotes=self.lots,
                             registros=len(self.lines) + 1, **self.bank)
        return self.lines + [last]


def back():
    """A return: 150 slips in three lots, T and U of each, totals by the kind of collection."""
    writer = Writer("cnab240 back", 2)
    invent = writer.invent
    for _ in range(3):
        writer.open(LOT, operacao="T", servico="01", versao="045", remessa=5,
                    gravacao=invent.day(), credito=invent.some(invent.day()))
        totals = {kind: [0, 0] for kind in range(1, 6)}
        for number in range(50):
            kind, payer = invent.person()
            value, carteira, paid = invent.money(), number % 5 + 1, number % 3 == 0
            totals[carteira][0] += 1
            totals[carteira][1] += value
            writer.detail(T, movimento="06" if paid else "02", nosso_numero=invent.number(17),
                          carteira=carteira, documento=f"NF{number:06}", vencimento=invent.day(),
                          valor=value, cobrador="999", cobradora=invent.number(5), moeda="09",
                          uso=f"CONTROLE {number}", tipo=kind, numero=payer,
                          tarifa=invent.money(900), pagador=invent.name("PAGADOR", 40), motivos=invent.some("0103"),
                          **writer.account)
            writer.detail(U, movimento="06" if paid else "02", pago=value if paid else 0,
                          liquido=value if paid else 0, acrescimos=invent.some(invent.money(900)),
                          dia=invent.day(), credito=invent.day() if paid else None)
        sums = {f"{letter}{kind}": totals[kind][place] for kind in range(1, 5)
                for place, letter in enumerate("nv")}
        writer.close(LOT_END, **sums)
    return writer.end()


def sent():
    """Slips in two lots: P and Q of each, R of every third."""
    writer = Writer("cnab240 sent", 1)
    invent = writer.invent
    for _ in range(2):
        writer.open(LOT, operacao="R", servico="01", versao="045", remessa=6,
                    mensagem_1="NÃO RECEBER APÓS O VENCIMENTO", gravacao=invent.day())
        for number in range(80):
            kind, payer = invent.person()
            other, friend = invent.choice([(0, None), invent.person()])
            writer.detail(P, movimento="01", nosso_numero=invent.number(11), carteira=1,
                          tipo_documento="2", distribuicao="2", documento=f"NF{number:06}",
                          vencimento=invent.day(), valor=invent.money(), especie="02",
                          aceite=invent.choice("AN"), emissao=invent.day(), juros_codigo=1,
                          juros_dia=invent.some(invent.day()), juros=invent.some(invent.money(900)),
                          desconto_codigo=number % 3, desconto=invent.some(invent.money(900)),
                          uso=f"CONTROLE {number}", protesto=3, baixa=1, baixa_dias="060",
                          moeda="09", **writer.account)
            writer.detail(Q, movimento="01", tipo=kind, numero=payer, uf="RJ",
                          pagador=invent.name("PAGADOR", 40), rua="RUA DAS INVENÇÕES 12",
                          bairro="CENTRO", cep=invent.number(5), sufixo=invent.number(3),
                          cidade="CIDADE NOVA", tipo_avalista=other, numero_avalista=friend,
                          avalista="FIADOR INVENTADO" if other else "")
            if number % 3 == 0:
                writer.detail(R, movimento="01", codigo_2=1, dia_2=invent.some(invent.day()),
                              desconto_2=invent.some(invent.money(900)), multa_codigo=2,
                              multa_dia=invent.day(), multa=2, mensagem_3="MULTA DE 2%",
                              debito_banco="999", **writer.account)
        writer.close(LOT_END)
    return writer.end()


def paid():
    """Payments in three lots: A of each, B of every second."""
    writer = Writer("cnab240 paid", 1)
    invent = writer.invent
    where = dict(rua="AV INVENTADA", casa=12, cep="01310", sufixo="100", uf="SP",
                 cidade="SÃO NUNCA")
    for form in ("01", "03", "41"):
        writer.open(PAID_LOT, operacao="C", servico="20", forma=form, versao="046",
                    mensagem="PAGAMENTO", indicativo="01", **where)
        total = coins = 0
        for number in range(70):
            kind, owner = invent.person()
            value, coin = invent.money(), invent.some(invent.money() / 1000)
            total, coins = total + value, coins + coin
            account = dict(agencia=invent.number(5), conta=invent.number(12), conta_dv="0")
            writer.detail(A, movimento=invent.choice([0, 5, 9]), instrucao="00", camara="018",
                          banco_favorecido="998", favorecido=invent.name("FAVORECIDO"), moeda="BRL",
                          documento=f"DOC {number}", dia=invent.day(), quantidade=coin, valor=value,
                          dia_real=invent.some(invent.day()), ted="00010", complementar="CC",
                          **account)
            if number % 2:
                writer.detail(B, tipo=kind, numero=owner, bairro="CENTRO", vencimento=invent.day(),
                              documento=value, multa=invent.some(invent.money(900)), **where)
        writer.close(PAID_LOT_END, total=total, quantidade=coins)
    return writer.end()
