#include <campotipo/documents.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/idnumbers/comparison.hpp"
#include "tests/reference/documents.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

#ifdef WITH_CODES
#include <campotipo/codes.h>
#endif

namespace {

using campotipo::test::Comparison;
using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
namespace reference = campotipo::reference;

struct Document {
  const char *name;
  int bit;
  int (*validate)(char *, int);
  std::string (*made)(const std::string &);
  // A good number, and where capitals may stand in it.
  std::string good;
  std::size_t letters_from, letters_to;
  // Places where no single wrong digit goes by unnoticed.
  std::size_t safe_to;
  char *(*edit)(char *, const char *);
  int (*clean)(char *, const char *);
  std::size_t edited_size;
  std::string edited;
};

const Document kDocuments[] = {
    {"CPF", DOCUMENTO_BIT_CPF, ZALGORITM_valida_CPF, reference::made_cpf, "12345678909", 0, 0, 0,
     DOCUMENTO_edita_CPF, DOCUMENTO_limpa_CPF, DOCUMENTO_CPF_EDITADO_SIZE, "123.456.789-09"},
    {"CNPJ", DOCUMENTO_BIT_CNPJ, ZALGORITM_valida_CNPJ, reference::made_cnpj, "11222333000181", 0,
     0, 0, DOCUMENTO_edita_CNPJ, nullptr, DOCUMENTO_CNPJ_EDITADO_SIZE, "11.222.333/0001-81"},
    {"CNPJ_alfa", DOCUMENTO_BIT_CNPJ_ALFA, DOCUMENTO_valida_CNPJ_alfa, reference::made_cnpj_alfa,
     "12ABC34501DE35", 0, 12, 0, DOCUMENTO_edita_CNPJ, DOCUMENTO_limpa_CNPJ,
     DOCUMENTO_CNPJ_EDITADO_SIZE, "12.ABC.345/01DE-35"},
    {"PIS", DOCUMENTO_BIT_PIS, DOCUMENTO_valida_PIS, reference::made_pis, "12056874107", 0, 0, 0,
     DOCUMENTO_edita_PIS, DOCUMENTO_limpa_PIS, DOCUMENTO_PIS_EDITADO_SIZE, "120.56874.10-7"},
    {"RENAVAM", DOCUMENTO_BIT_RENAVAM, DOCUMENTO_valida_RENAVAM, reference::made_pis, "00639884962",
     0, 0, 0, nullptr, nullptr, 0, ""},
    {"chave_acesso", DOCUMENTO_BIT_CHAVE_ACESSO, DOCUMENTO_valida_chave_acesso,
     reference::made_access_key, "3526050X0J92JY000196570010000006041448679011", 6, 18, 0,
     DOCUMENTO_edita_chave_acesso, DOCUMENTO_limpa_chave_acesso,
     DOCUMENTO_CHAVE_ACESSO_EDITADO_SIZE, "3526 050X 0J92 JY00 0196 5700 1000 0006 0414 4867 9011"},
    {"boleto_barras", DOCUMENTO_BIT_BOLETO_BARRAS, DOCUMENTO_valida_boleto_barras,
     reference::made_bank_bars, "34195708800000020001790001043510049102015000", 0, 0, 0, nullptr,
     nullptr, 0, ""},
    {"boleto_linha", DOCUMENTO_BIT_BOLETO_LINHA, DOCUMENTO_valida_boleto_linha,
     reference::made_bank_line, "34191790010104351004791020150008570880000002000", 0, 0, 32,
     DOCUMENTO_edita_boleto_linha, DOCUMENTO_limpa_boleto_linha,
     DOCUMENTO_BOLETO_LINHA_EDITADO_SIZE, "34191.79001 01043.510047 91020.150008 5 70880000002000"},
    {"arrecadacao_barras", DOCUMENTO_BIT_ARRECADACAO_BARRAS, DOCUMENTO_valida_arrecadacao_barras,
     reference::made_utility_bars, "83640000001331201380008128846271108013618155", 0, 0, 44,
     nullptr, nullptr, 0, ""},
    {"arrecadacao_linha", DOCUMENTO_BIT_ARRECADACAO_LINHA, DOCUMENTO_valida_arrecadacao_linha,
     reference::made_utility_line, "836400000011331201380002812884627116080136181551", 0, 0, 48,
     DOCUMENTO_edita_arrecadacao_linha, DOCUMENTO_limpa_arrecadacao_linha,
     DOCUMENTO_ARRECADACAO_LINHA_EDITADO_SIZE,
     "83640000001-1 33120138000-2 81288462711-6 08013618155-1"},
    {"titulo", DOCUMENTO_BIT_TITULO, DOCUMENTO_valida_titulo, reference::made_voter, "102385010671",
     0, 0, 0, DOCUMENTO_edita_titulo, DOCUMENTO_limpa_titulo, DOCUMENTO_TITULO_EDITADO_SIZE,
     "1023 8501 0671"},
    {"cartao", DOCUMENTO_BIT_CARTAO, DOCUMENTO_valida_cartao, reference::made_card,
     "4111111111111111", 0, 0, 16, DOCUMENTO_edita_cartao, DOCUMENTO_limpa_cartao,
     DOCUMENTO_CARTAO_EDITADO_SIZE, "4111 1111 1111 1111"},
    {"CNS", DOCUMENTO_BIT_CNS, DOCUMENTO_valida_CNS, reference::made_health, "898000000043208", 0,
     0, 0, DOCUMENTO_edita_CNS, DOCUMENTO_limpa_CNS, DOCUMENTO_CNS_EDITADO_SIZE,
     "898 0000 0004 3208"},
    {"CNH", DOCUMENTO_BIT_CNH, DOCUMENTO_valida_CNH, reference::made_licence, "00641829409", 0, 0,
     0, nullptr, nullptr, 0, ""},
    {"processo", DOCUMENTO_BIT_PROCESSO, DOCUMENTO_valida_processo, reference::made_lawsuit,
     "00589677720168190000", 0, 0, 20, DOCUMENTO_edita_processo, DOCUMENTO_limpa_processo,
     DOCUMENTO_PROCESSO_EDITADO_SIZE, "0058967-77.2016.8.19.0000"},
};

class DocumentTest : public testing::TestWithParam<Document> {
 protected:
  auto comparison() const {
    return Comparison(GetParam().validate, [](std::string &text, int make) {
      return reference::validate(GetParam().made, text, make);
    });
  }

  // A text of the document's length and characters, whose first places often are those of the good
  // one: they tell the kind.
  std::string candidate() {
    const Document &document = GetParam();
    std::size_t length = document.good.size();
    if (document.bit == DOCUMENTO_BIT_CARTAO) length = random_.between<std::size_t>(12, 19);
    std::string text = random_.digits(length);
    for (std::size_t i = document.letters_from; i < document.letters_to; ++i)
      if (random_.between(0, 1)) text[i] = static_cast<char>(random_.between<int>('A', 'Z'));
    if (random_.between(0, 3)) text[0] = document.good[0];
    if (random_.between(0, 3)) text[2] = static_cast<char>(random_.between<int>('5', '9'));
    if (document.bit == DOCUMENTO_BIT_TITULO) text[8] = "0012"[random_.between(0, 3)];
    if (random_.between(0, 9) == 0) std::fill(text.begin() + 3, text.end(), '0');
    return text;
  }

  std::string good_one() {
    for (;;) {
      const std::string made = GetParam().made(candidate());
      if (!made.empty()) return made;
    }
  }

  Random random_{7};
  GuardedBuffer in_, out_;
};

TEST_P(DocumentTest, FollowsTheRule) {
  auto compare = comparison();
  compare.expect_same(GetParam().good, 0);
  EXPECT_EQ(GetParam().made(GetParam().good), GetParam().good);
  for (int round = 0; round < 600; ++round) {
    const std::string text = candidate();
    compare.expect_same(text, 1);
    compare.expect_same(text, 0);
    std::string made = text;
    if (reference::validate(GetParam().made, made, 1)) compare.expect_same(made, 0);
  }
}

TEST_P(DocumentTest, RefusesWhatHasAnotherShape) {
  auto compare = comparison();
  // The elders take zeros away and in front.
  const bool elder = GetParam().bit == DOCUMENTO_BIT_CPF || GetParam().bit == DOCUMENTO_BIT_CNPJ;
  for (std::size_t length = 0; length <= 60 && !elder; ++length) {
    std::string text = GetParam().good + GetParam().good + GetParam().good + GetParam().good +
                       GetParam().good + GetParam().good;
    text.resize(length);
    for (int make : {0, 1}) compare.expect_same(text, make);
  }
  // Any other byte in each place, the one behind the last among them.
  const std::string good = GetParam().good;
  const std::size_t places = good.size() + (elder ? 0 : 1);
  for (std::size_t place = 0; place < places; ++place) {
    for (int byte = 1; byte < 256; ++byte) {
      std::string text = good, expected;
      text.resize(std::max(good.size(), place + 1));
      text[place] = static_cast<char>(byte);
      expected = text;
      const int result = reference::validate(GetParam().made, expected, byte % 2);
      EXPECT_EQ(GetParam().validate(text.data(), byte % 2), result) << place << ' ' << byte;
      EXPECT_EQ(text, expected);
    }
  }
}

TEST_P(DocumentTest, CatchesOneWrongDigitWhereTheMethodPromisesIt) {
  const Document &document = GetParam();
  for (int round = 0; round < 100; ++round) {
    std::string text = good_one();
    // By modulo 11 some utility slips do let one go by.
    const bool by_ten =
        document.good[0] != '8' || document.bit == DOCUMENTO_BIT_CNS || text[2] < '8';
    const std::size_t safe = by_ten ? std::min(document.safe_to, text.size()) : 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
      const char right = text[place];
      for (char digit = '0'; digit <= '9'; ++digit) {
        text[place] = digit;
        const int good = document.validate(text.data(), 0);
        EXPECT_EQ(good, document.made(text) == text) << text;
        // The third digit of a utility slip changes the method itself.
        if (place < safe && !(place == 2 && document.good[0] == '8') && digit != right) {
          EXPECT_EQ(good, 0) << text;
        }
      }
      text[place] = right;
    }
  }
}

TEST_P(DocumentTest, IsEditedAndCleanedBack) {
  const Document &document = GetParam();
  if (document.edit == nullptr) return;
  char *shown = out_.text_at_end(document.edited.size() + 1);
  EXPECT_EQ(document.edit(shown, in_.text(document.good)), shown);
  EXPECT_EQ(document.edited, shown);
  if (document.clean == nullptr) return;
  for (int round = 0; round < 300; ++round) {
    const std::string text = candidate();
    shown = out_.text_at_end(document.edited_size);
    document.edit(shown, in_.text(text));
    std::string loose = shown;
    ASSERT_EQ(document.clean(out_.text_at_end(text.size() + 1), in_.text(loose)), 1) << loose;
    // Any punctuation anywhere, and in place.
    for (int i = 0; i < round % 8; ++i)
      loose.insert(random_.between<std::size_t>(0, loose.size()), 1,
                   ".-/ \t\n\r"[random_.between(0, 6)]);
    char *place = out_.text_at_end(loose.size() + 1);
    std::strcpy(place, loose.c_str());
    EXPECT_EQ(document.clean(place, place), 1);
    EXPECT_EQ(text, place);

    const std::size_t at = random_.between<std::size_t>(0, loose.size() - 1);
    loose[at] = "a;:\\,_\x80z+"[random_.between(0, 8)];
    char *cleaned = out_.text_at_end(document.good.size() + 5);
    EXPECT_EQ(document.clean(cleaned, in_.text(loose)), 0) << loose;
    EXPECT_STREQ(cleaned, "");
  }
}

TEST_P(DocumentTest, IsNeitherEditedNorCleanedInAnotherShape) {
  const Document &document = GetParam();
  if (document.clean == nullptr) return;
  for (std::size_t length = 0; length <= 60; ++length) {
    const std::string text = random_.digits(length);
    const bool fits = document.bit == DOCUMENTO_BIT_CARTAO ? length >= 12 && length <= 19
                                                           : length == document.good.size();
    // No more is written than the document's own size, however long the text is.
    const std::size_t most = document.bit == DOCUMENTO_BIT_CARTAO ? 19 : document.good.size();
    char *cleaned = out_.text_at_end(most + 1);
    EXPECT_EQ(document.clean(cleaned, in_.text(text)), fits) << length;
    EXPECT_EQ(cleaned, fits ? text : "");
    char *shown = out_.text_at_end(document.edited_size);
    EXPECT_EQ(*document.edit(shown, in_.text(text)) != '\0', fits) << length;
  }
  for (std::size_t place = 0; place < document.good.size(); ++place) {
    std::string text = document.good;
    text[place] = 'Q';
    const bool letter = place >= document.letters_from && place < document.letters_to;
    char *cleaned = out_.text_at_end(document.edited_size);
    EXPECT_EQ(document.clean(cleaned, in_.text(text)), letter);
    EXPECT_EQ(*document.edit(cleaned, in_.text(text)) != '\0', letter);
    text[place] = 'q';
    EXPECT_EQ(document.clean(cleaned, in_.text(text)), 0);
    EXPECT_EQ(*document.edit(cleaned, in_.text(text)), '\0');
  }
}

INSTANTIATE_TEST_SUITE_P(Documents, DocumentTest, testing::ValuesIn(kDocuments),
                         [](const auto &document) { return std::string(document.param.name); });

// Numbers that were published, with where they stand.
TEST(Documents, PublishedNumbers) {
  struct Case {
    int (*validate)(char *, int);
    std::string text;
    int result;
  };
  const Case kCases[] = {
      // Receita Federal, material on the numbers with letters.
      {DOCUMENTO_valida_CNPJ_alfa, "12ABC34501DE35", 1},
      {DOCUMENTO_valida_CNPJ_alfa, "1345C3A5000106", 1},
      {DOCUMENTO_valida_CNPJ_alfa, "R55231B3000757", 1},
      {DOCUMENTO_valida_CNPJ_alfa, "90021382000122", 1},
      {DOCUMENTO_valida_CNPJ_alfa, "90025108000121", 1},
      {DOCUMENTO_valida_CNPJ_alfa, "R55231B3000700", 0},
      {DOCUMENTO_valida_CNPJ_alfa, "1345c3A5000106", 0},
      {DOCUMENTO_valida_CNPJ_alfa, "00000000000000", 0},
      // clubedainformatica.com.br (PIS), poliquin/brazilnum.
      {DOCUMENTO_valida_PIS, "12345678919", 1},
      {DOCUMENTO_valida_PIS, "12561241310", 1},
      {DOCUMENTO_valida_PIS, "11161241310", 0},
      // Example of most public routines; brazilian-utils.
      {DOCUMENTO_valida_RENAVAM, "00639884962", 1},
      {DOCUMENTO_valida_RENAVAM, "86769597308", 1},
      // ajuda.maino.com.br; NF-e manual; a CT-e of 2026 with letters (wmixvideo/nfe, 1164).
      {DOCUMENTO_valida_chave_acesso, "33150308370779000149550010001100931002410775", 1},
      {DOCUMENTO_valida_chave_acesso, "42100484684182000157550010000000020108042108", 1},
      {DOCUMENTO_valida_chave_acesso, "3526050X0J92JY000196570010000006041448679011", 1},
      {DOCUMENTO_valida_chave_acesso, "3526050X0J92JY000196570010000006041448679012", 0},
      // Banco do Brasil and Itau, in brazilian-utils and others.
      {DOCUMENTO_valida_boleto_linha, "00190500954014481606906809350314337370000000100", 1},
      {DOCUMENTO_valida_boleto_linha, "34191790010104351004791020150008570880000002000", 1},
      {DOCUMENTO_valida_boleto_linha, "00190500954014481606906809350314437370000000100", 0},
      // One by modulo 10, one by modulo 11 (npm, boleto de convenio).
      {DOCUMENTO_valida_arrecadacao_linha, "836400000011331201380002812884627116080136181551", 1},
      {DOCUMENTO_valida_arrecadacao_linha, "858900004609524601791605607593050865831483000010", 1},
      {DOCUMENTO_valida_arrecadacao_linha, "858900004609524601791605607593050865831483000011", 0},
      // OBMEP, twice; exceldoseujeito.com.br; brazilian-utils, twice.
      {DOCUMENTO_valida_titulo, "004356870906", 1},
      {DOCUMENTO_valida_titulo, "102385010671", 1},
      {DOCUMENTO_valida_titulo, "106644440302", 1},
      {DOCUMENTO_valida_titulo, "690847092828", 1},
      {DOCUMENTO_valida_titulo, "163204010922", 1},
      {DOCUMENTO_valida_titulo, "123456789011", 0},
      // Minas Gerais, a remainder of 0 for the second digit; Sao Paulo, one digit off.
      {DOCUMENTO_valida_titulo, "162749070141", 1},
      {DOCUMENTO_valida_titulo, "007202350108", 0},
      // The digits fit, but there is no serial number.
      {DOCUMENTO_valida_titulo, "000000000302", 0},
      // Test numbers of the card brands.
      {DOCUMENTO_valida_cartao, "4111111111111111", 1},
      {DOCUMENTO_valida_cartao, "5555555555554444", 1},
      {DOCUMENTO_valida_cartao, "378282246310005", 1},
      {DOCUMENTO_valida_cartao, "30569309025904", 1},
      {DOCUMENTO_valida_cartao, "4111111111111112", 0},
      // Anvisa; a definitive card (brado).
      {DOCUMENTO_valida_CNS, "898000000043208", 1},
      {DOCUMENTO_valida_CNS, "144082627260004", 1},
      {DOCUMENTO_valida_CNS, "898000000043209", 0},
      // Licences that holders reported, the last four with a first digit of 10: js-brasil 65,
      // Respect/Validation 679, go-documents 20, validator-docs 53.
      {DOCUMENTO_valida_CNH, "59796888141", 1},
      {DOCUMENTO_valida_CNH, "00641829409", 1},
      {DOCUMENTO_valida_CNH, "01101314000", 1},
      {DOCUMENTO_valida_CNH, "04463004100", 1},
      {DOCUMENTO_valida_CNH, "04463004101", 0},
      // Business::BR::CNJ.
      {DOCUMENTO_valida_processo, "00589677720168190000", 1},
      {DOCUMENTO_valida_processo, "00589677720168190001", 0},
  };
  for (const Case &c : kCases) {
    std::string text = c.text;
    EXPECT_EQ(c.validate(text.data(), 0), c.result) << c.text;
    EXPECT_EQ(text, c.text);
  }
}

TEST(Documents, NumericCnpjHasOneAnswerFromBoth) {
  Random random(8);
  for (int round = 0; round < 4000; ++round) {
    std::string text = random.digits(14), elder;
    if (round % 2) DOCUMENTO_valida_CNPJ_alfa(text.data(), 1);
    for (int make : {0, 1}) {
      elder = text;
      EXPECT_EQ(DOCUMENTO_valida_CNPJ_alfa(text.data(), make),
                ZALGORITM_valida_CNPJ(elder.data(), make));
      EXPECT_EQ(text, elder);
    }
  }
}

TEST(Documents, SlipsTurnIntoLinesAndBack) {
  struct Slip {
    int (*to_bars)(char *, const char *), (*to_line)(char *, const char *);
    std::string (*bars)(const std::string &), (*line)(const std::string &),
        (*made)(const std::string &);
    std::size_t line_length;
    const char *kinds;
  };
  static constexpr Slip kSlips[] = {
      {DOCUMENTO_boleto_para_barras, DOCUMENTO_boleto_para_linha, reference::bank_bars,
       reference::bank_line, reference::made_bank_bars, 47, "012345679"},
      {DOCUMENTO_arrecadacao_para_barras, DOCUMENTO_arrecadacao_para_linha, reference::utility_bars,
       reference::utility_line, reference::made_utility_bars, 48, "8"}};
  Random random(9);
  GuardedBuffer in, out;
  for (const Slip &slip : kSlips) {
    for (int round = 0; round < 1000; ++round) {
      std::string bars = random.digits(44);
      bars[0] = slip.kinds[random.between<std::size_t>(0, std::strlen(slip.kinds) - 1)];
      bars[2] = static_cast<char>(random.between<int>('6', '9'));
      bars = slip.made(bars);
      char *line = out.text_at_end(slip.line_length + 1);
      EXPECT_EQ(slip.to_line(line, in.text(bars)), 1);
      EXPECT_EQ(slip.line(bars), line);
      char *back = in.text_at_end(45);
      EXPECT_EQ(slip.to_bars(back, line), 1);
      EXPECT_EQ(bars, back);
      EXPECT_EQ(slip.bars(line), bars);

      // One digit more than it should be, wherever it stands.
      const std::size_t at = random.between<std::size_t>(1, 43);
      bars[at] = bars[at] == '9' ? '0' : static_cast<char>(bars[at] + 1);
      const int good = slip.made(bars) == bars;
      EXPECT_EQ(slip.to_line(line, in.text(bars)), good);
      EXPECT_EQ(good ? slip.line(bars) : "", line);
    }
    char text[64] = "12345";
    EXPECT_EQ(slip.to_bars(text, text), 0);
    EXPECT_STREQ(text, "");
  }
}

TEST(Documents, TablesServeTheEngine) {
  struct Case {
    const ZALGORITM_TABELA &table;
    std::string text;
  };
  const Case kCases[] = {
      {DOCUMENTO_tabela_PIS, "12056874107"},
      {DOCUMENTO_tabela_chave_acesso, "33150308370779000149550010001100931002410775"},
      {DOCUMENTO_tabela_modulo10, "3419179001"},
      {DOCUMENTO_tabela_modulo11, "858900004609"},
      {DOCUMENTO_tabela_boleto, "34195708800000020001790001043510049102015000"},
      {DOCUMENTO_tabela_arrecadacao10, "83640000001331201380008128846271108013618155"},
      {DOCUMENTO_tabela_arrecadacao11, "85890000460524601791606075930508683148300001"},
      {DOCUMENTO_tabela_titulo_1, "102385010671"},
      {DOCUMENTO_tabela_titulo_2, "102385010671"},
      {DOCUMENTO_tabela_titulo_1_SP_MG, "000000140116"},
      {DOCUMENTO_tabela_titulo_2_SP_MG, "000000140116"},
      {DOCUMENTO_tabela_cartao, "79927398713"},
      {DOCUMENTO_tabela_CNS, "898000000043208"},
  };
  for (const Case &c : kCases) {
    std::string text = c.text;
    EXPECT_EQ(ZALGORITM_trata(text.data(), &c.table, 0), 1) << text;
    EXPECT_EQ(reference::treat(text, c.table, 0), 1) << text;
  }
}

TEST(Documents, AreIdentifiedWhereTheirDigitsFit) {
  EXPECT_EQ(DOCUMENTO_identifica("123.456.789-09"), DOCUMENTO_BIT_CPF);
  EXPECT_EQ(DOCUMENTO_identifica("12.ABC.345/01DE-35"), DOCUMENTO_BIT_CNPJ_ALFA);
  EXPECT_EQ(DOCUMENTO_identifica("11.222.333/0001-81"),
            DOCUMENTO_BIT_CNPJ | DOCUMENTO_BIT_CNPJ_ALFA);
  for (const char *text : {"", " ", "-", "12ABC34501de35", "1", "123.456.789-08x"})
    EXPECT_EQ(DOCUMENTO_identifica(text), 0) << text;

  Random random(10);
  GuardedBuffer buffer;
  for (int round = 0; round < 6000; ++round) {
    const Document &like = kDocuments[random.between<std::size_t>(0, std::size(kDocuments) - 1)];
    std::string text = like.good;
    for (int i = random.between(0, 2); i > 0; --i)
      text[random.between<std::size_t>(0, text.size() - 1)] =
          static_cast<char>(random.between<int>('0', '9'));
    if (round % 5 == 0) text = random.digits(random.between<std::size_t>(0, 60));
    if (const std::string made = like.made(text); !made.empty() && round % 2) text = made;
    int expected = 0;
    for (const Document &document : kDocuments)
      if (!text.empty() && document.made(text) == text) expected |= document.bit;
    std::string typed = text;
    for (int i = random.between(0, 4); i > 0; --i)
      typed.insert(random.between<std::size_t>(0, typed.size()), 1, ".-/ "[random.between(0, 3)]);
    EXPECT_EQ(DOCUMENTO_identifica(buffer.text(typed)), expected) << typed;
  }
}

#ifdef WITH_CODES
TEST(Documents, ExampleOfTheManual) {
  char number[DOCUMENTO_CNPJ_TEXT_SIZE], shown[DOCUMENTO_CNPJ_EDITADO_SIZE];
  unsigned char field[CODALF14_BYTES];
  EXPECT_EQ(DOCUMENTO_limpa_CNPJ(number, "12.ABC.345/01DE-35"), 1);
  EXPECT_STREQ(number, "12ABC34501DE35");
  EXPECT_EQ(DOCUMENTO_valida_CNPJ_alfa(number, 0), 1);
  CODALF14_opc_atob(field, number, 0);
  EXPECT_STREQ(CODALF14_btoa(number, field), "12ABC34501DE35");
  EXPECT_STREQ(DOCUMENTO_edita_CNPJ(shown, number), "12.ABC.345/01DE-35");
}
#endif

}  // namespace
