#include <gtest/gtest.h>

#include "tests/idnumbers/agreement.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::Document;
using campotipo::test::GuardedBuffer;
using campotipo::test::kDocuments;
using campotipo::test::Random;
using campotipo::test::TextMemory;
namespace reference = campotipo::reference;

class DocumentTest : public testing::TestWithParam<Document> {
 protected:
  // A text of the document's length and characters, whose first places often are those of the valid
  // one: they tell the kind.
  std::string candidate() {
    const Document &document = GetParam();
    std::size_t length = std::strlen(document.valid);
    if (document.bit == DOCUMENTO_BIT_CARTAO) length = random_.between<std::size_t>(12, 19);
    std::string text = random_.digits(length);
    for (std::size_t i = document.letters_from; i < document.letters_to; ++i)
      if (random_.between(0, 1)) text[i] = static_cast<char>(random_.between<int>('A', 'Z'));
    if (random_.between(0, 3)) text[0] = document.valid[0];
    if (random_.between(0, 3)) text[2] = static_cast<char>(random_.between<int>('5', '9'));
    if (document.bit == DOCUMENTO_BIT_TITULO) text[8] = "0012"[random_.between(0, 3)];
    if (random_.between(0, 9) == 0) std::fill(text.begin() + 3, text.end(), '0');
    return text;
  }

  std::string valid_one() {
    for (;;) {
      const std::string made = GetParam().made(candidate());
      if (!made.empty()) return made;
    }
  }

  void expect_agreement(const std::string &text, int make) {
    ASSERT_TRUE(campotipo::test::document_agrees(&memory_, GetParam(), text, make))
        << text << " make " << make;
  }

  Random random_{7};
  TextMemory memory_;
};

TEST_P(DocumentTest, FollowsTheRule) {
  EXPECT_EQ(GetParam().made(GetParam().valid), GetParam().valid);
  for (int round = 0; round < 600; ++round) {
    const std::string text = candidate();
    for (const int make : {1, 0}) expect_agreement(text, make);
    if (const std::string made = GetParam().made(text); !made.empty()) expect_agreement(made, 0);
  }
}

TEST_P(DocumentTest, RefusesWhatHasAnotherShape) {
  const std::string valid = GetParam().valid;
  std::string longer;
  while (longer.size() < 60) longer += valid;
  for (std::size_t length = 0; length <= 60; ++length)
    for (const int make : {0, 1}) expect_agreement(longer.substr(0, length), make);
  // Any other byte in each place, the one behind the last among them.
  for (std::size_t place = 0; place <= valid.size(); ++place)
    for (int byte = 1; byte < 256; ++byte) {
      std::string text = valid;
      text.resize(std::max(valid.size(), place + 1));
      text[place] = static_cast<char>(byte);
      expect_agreement(text, byte % 2);
    }
}

TEST_P(DocumentTest, CatchesOneWrongDigitWhereTheMethodPromisesIt) {
  const Document &document = GetParam();
  const bool utility = document.valid[0] == '8' && document.bit != DOCUMENTO_BIT_CNS;
  for (int round = 0; round < 100; ++round) {
    std::string text = valid_one();
    // By modulo 11 some utility slips do let one go by, and their third digit tells the method.
    if (utility && text[2] >= '8') continue;
    for (std::size_t place = 0; place < std::min(document.safe_to, text.size()); ++place) {
      if (utility && place == 2) continue;
      const char right = text[place];
      for (text[place] = '0'; text[place] <= '9'; ++text[place])
        EXPECT_EQ(document.validate(text.data(), 0), text[place] == right) << text;
      text[place] = right;
    }
  }
}

TEST_P(DocumentTest, IsEditedAndCleanedInItsShapeAlone) {
  const Document &document = GetParam();
  const auto expect = [&](const std::string &text) {
    ASSERT_TRUE(campotipo::test::punctuation_agrees(&memory_, document, text)) << text;
  };
  for (std::size_t length = 0; length <= 60; ++length) expect(random_.digits(length));
  for (std::size_t place = 0; place < std::strlen(document.valid); ++place)
    for (const char c : {'Q', 'q', ':', '/', '@', '[', '\x80'}) {
      std::string text = document.valid;
      text[place] = c;
      expect(text);
    }
  for (int round = 0; round < 300; ++round) {
    // Its own punctuation and any other, and then a character that is none.
    std::string text = campotipo::test::edited(document, candidate());
    for (int i = 0; i < round % 8; ++i)
      text.insert(random_.between<std::size_t>(0, text.size()), 1,
                  ".-/ \t\n\r"[random_.between(0, 6)]);
    expect(text);
    text.insert(random_.between<std::size_t>(0, text.size()), 1,
                "a;:\\,_\x80z+"[random_.between(0, 8)]);
    expect(text);
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
  TextMemory memory;
  for (int round = 0; round < 2000; ++round) {
    const std::string text = random.digits(14), made = reference::made_cnpj(text);
    for (const std::string &each : {text, made})
      for (const int make : {0, 1})
        ASSERT_TRUE(campotipo::test::same(
            &memory, each, make, DOCUMENTO_valida_CNPJ_alfa,
            [](std::string &t, int m) { return ZALGORITM_valida_CNPJ(t.data(), m); }))
            << each;
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
      const int valid = slip.made(bars) == bars;
      EXPECT_EQ(slip.to_line(line, in.text(bars)), valid);
      EXPECT_EQ(valid ? slip.line(bars) : "", line);
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
  TextMemory memory;
  for (const char *text : {"", " ", "-", "12ABC34501de35", "1", "123.456.789-08x"})
    EXPECT_TRUE(campotipo::test::identified(&memory, text)) << text;

  Random random(10);
  for (int round = 0; round < 4000; ++round) {
    const Document &like = kDocuments[random.between<std::size_t>(0, std::size(kDocuments) - 1)];
    std::string text = like.valid;
    for (int i = random.between(0, 2); i > 0; --i)
      text[random.between<std::size_t>(0, text.size() - 1)] =
          static_cast<char>(random.between<int>('0', '9'));
    if (const std::string made = like.made(text); !made.empty() && round % 2) text = made;
    for (int i = random.between(0, 4); i > 0; --i)
      text.insert(random.between<std::size_t>(0, text.size()), 1, ".-/ "[random.between(0, 3)]);
    EXPECT_TRUE(campotipo::test::identified(&memory, text)) << text;
  }
}

}  // namespace
