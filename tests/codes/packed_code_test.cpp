#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdlib>
#include <memory>
#include <string>

#include "tests/codes/agreement.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using namespace campotipo::test;
namespace reference = campotipo::reference::packed;

// Mostly characters that have codes, in the mixtures that take different ways through the library.
std::string random_text(Random &random, std::size_t length) {
  const std::string alphabet(reference::kAlphabet);
  const std::string sets[] = {"0123456789", alphabet.substr(1), alphabet,
                              alphabet + "abcdefghijklmnopqrstuvwxyz", "   0Aa`\x7F{@_"};
  const std::string &set = sets[random.between<std::size_t>(0, std::size(sets) - 1)];
  const int strange = random.between(0, 3) == 0 ? 4 : 0;
  std::string text;
  while (text.size() < length)
    text += random.between(1, 20) <= strange ? static_cast<char>(random.between(1, 255))
                                             : set[random.between<std::size_t>(0, set.size() - 1)];
  if (random.between(0, 3) == 0) text.append(random.between<std::size_t>(0, 6), ' ');
  return text;
}

class PackedCodeModel : public testing::Test {
 protected:
  // Both ends of a page in turn: a text may be looked at neither behind its NUL nor in front of it
  // where that is another page.
  const char *place(const std::string &text) {
    if ((++placed_ & 1) != 0) return text_.text(text);
    auto *copy = reinterpret_cast<char *>(text_.at_start(text.size() + 1));
    return static_cast<const char *>(std::memcpy(copy, text.c_str(), text.size() + 1));
  }

  void expect_saved(const PackedCode &code, const std::string &text, int opc) {
    const auto size = static_cast<std::size_t>(code.bytes);
    unsigned char *field = (placed_ & 2) != 0 ? field_.at_end(size) : field_.at_start(size);
    EXPECT_TRUE(save_agrees(code, place(text), opc, field))
        << code.name << " of " << code.n << ", opc " << opc << ": \"" << text << '"';
  }

  void run(const PackedCode &code, int rounds) {
    Random random(static_cast<std::uint64_t>(code.n));
    const auto size = static_cast<std::size_t>(code.bytes);
    EXPECT_EQ(size, (6 * static_cast<std::size_t>(code.n) + 7) / 8);
    EXPECT_EQ(code.text_size, code.n + 1);
    for (int round = 0; round < rounds; ++round) {
      const auto length = random.between<std::size_t>(0, static_cast<std::size_t>(code.n) + 6);
      const std::string text = random_text(random, length);
      // Only the low four bits count.
      const int opc = round % 16 | (round % 3 == 0 ? 0x7FFFFFF0 : 0);
      expect_saved(code, text, opc);

      Field field = reference::save(text, code.n, opc).field;
      Field other = field;
      for (auto &byte : field)
        if (random.between(0, 31) == 0) byte = static_cast<unsigned char>(random.word());
      if (round % 8 != 0)
        other[random.between<std::size_t>(0, size - 1)] ^=
            static_cast<unsigned char>(1 << random.between(0, 7));
      const unsigned char *a = field_.field(field);
      const unsigned char *b = other_.field(other);
      const int width = random.between(-1, code.n + 5);
      char *out = out_.text_at_end(static_cast<std::size_t>(std::max(code.n, width)) + 1);
      EXPECT_TRUE(read_agrees(code, a, opc, width, out)) << code.name << " of " << code.n << out;
      EXPECT_TRUE(order_agrees(code, a, b)) << code.name << " of " << code.n << ' ' << text;
      EXPECT_TRUE(form_agrees(code, a) && form_agrees(code, b)) << code.name << ' ' << text;
    }
  }

  GuardedBuffer text_, field_, other_, out_;
  unsigned placed_ = 0;
};

TEST_F(PackedCodeModel, AgreesWithEveryMemberAndTheEngineAtEveryWidth) {
  for (const PackedCode &code : kPackedCodes) run(code, 800);
  for (const PackedCode &code : kCodesUpTo<70>) run(code, 96);
  run(kCodeOf<1000>, 32);
}

// What decides may stand behind the last position, or behind blanks in front of it.
TEST_F(PackedCodeModel, LooksBehindTheLastPosition) {
  const char *const tails[] = {"",    " ",    "   ",   "X",      "x",
                               "  X", "\x01", "\x01X", "  \x01", "X  \x01"};
  for (const PackedCode &code : kCodesUpTo<70>)
    for (int blanks = 0; blanks <= std::min(code.n, 20); ++blanks)
      for (const char *tail : tails) {
        std::string text(static_cast<std::size_t>(code.n - blanks), blanks % 2 == 0 ? 'A' : 'z');
        text += std::string(static_cast<std::size_t>(blanks), ' ') + tail;
        for (int opc = 0; opc < 16; ++opc) expect_saved(code, text, opc);
      }
}

TEST_F(PackedCodeModel, AgreesOnEveryTextAndFieldOfTwoBytes) {
  unsigned char made[2];
  char out[4];
  for (int value = 0; value < 65536; ++value) {
    const unsigned char field[] = {static_cast<unsigned char>(value >> 8),
                                   static_cast<unsigned char>(value)};
    const unsigned char turned[] = {field[1], field[0]};
    const char text[] = {static_cast<char>(field[0]), static_cast<char>(field[1]), '\0'};
    EXPECT_TRUE(save_agrees(kCodeOf<2>, text, 0, made)) << value;
    EXPECT_TRUE(read_agrees(kCodeOf<2>, field, value & 15, value >> 4 & 3, out)) << value;
    EXPECT_TRUE(order_agrees(kCodeOf<2>, field, turned)) << value;
    EXPECT_TRUE(form_agrees(kCodeOf<2>, field)) << value;
  }
}

// Texts against the locale's capitals. The locales are made when the tests are built.
class PackedCodeLocale : public PackedCodeModel, public testing::WithParamInterface<const char *> {
 protected:
  void SetUp() override {
#ifdef CAMPOTIPO_TEST_LOCALES
    setenv("LOCPATH", CAMPOTIPO_TEST_LOCALES, 1);
#endif
    if (std::setlocale(LC_ALL, GetParam()) == nullptr) GTEST_SKIP() << "no such locale here";
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_P(PackedCodeLocale, FoldsAsTheLocaleSays) {
  for (int byte = 1; byte < 256; ++byte)
    for (int opc : {0, CODALFA_OPC_ZEROS})
      expect_saved(kCodeOf<5>, {'A', static_cast<char>(byte), 'b'}, opc);
  for (const PackedCode &code : kPackedCodes) run(code, 160);
  // Known answers: Turkish has no capital for "i" in the alphabet, but one for the "i" without a dot.
  const std::string locale = GetParam();
  unsigned char field[CODALF05_BYTES];
  char text[CODALF05_TEXT_SIZE];
  EXPECT_EQ(CODALF05_opc_salvou(field, "aib", 0), locale[0] != 't');
  EXPECT_STREQ(CODALF05_btoa(text, field), locale[0] != 't' ? "AIB" : "AB");
  EXPECT_EQ(CODALF05_opc_salvou(field,
                                "\xFD"
                                "a",
                                0),
            locale == "tr_TR.ISO-8859-9");
  EXPECT_STREQ(CODALF05_btoa(text, field), locale == "tr_TR.ISO-8859-9" ? "IA" : "A");
}

INSTANTIATE_TEST_SUITE_P(Locales, PackedCodeLocale,
                         testing::Values("C", "tr_TR.ISO-8859-9", "tr_TR.UTF-8",
                                         "pt_BR.ISO-8859-1"));

// Known answers, which hold the model too.
TEST(PackedCode, StoresTheseBytesAndGivesTheseTextsBack) {
  constexpr struct {
    const char *text;
    int opc;
    unsigned char bytes[CODALF05_BYTES];
    int result, read_opc, width;
    const char *read;
  } kCases[] = {
      {"ab-1  ", 0, {0x30, 0xD9, 0x83, 0x00}, 1, 0, 8, "AB-1    "},
      {"  A", 0, {0x04, 0x13, 0x00, 0x00}, 1, 2, 5, "00  A"},
      {"A B", 0, {0x30, 0x13, 0x40, 0x00}, 1, 10, 5, "A B  "},
      {"     ", 2, {0x08, 0x20, 0x82, 0x08}, 1, 2, 0, ""},
      {"", 10, {0x00, 0x00, 0x00, 0x00}, 1, 10, 3, "   "},
      {"007", 0, {0x08, 0x22, 0x40, 0x00}, 1, 2, -9, "7"},
      {"7", 2, {0x08, 0x20, 0x82, 0x24}, 1, 10, 0, "00007"},
      {"A7", 2, {0x08, 0x20, 0x8C, 0x24}, 1, 2, 0, "A7"},
      {"12  ", 10, {0x08, 0x20, 0x83, 0x10}, 1, 10, 6, "000012"},
      {" 12", 10, {0x04, 0x31, 0x00, 0x00}, 1, 0, 0, " 12"},
      {"HELLO WORLD", 0, {0x4D, 0x05, 0xD7, 0x68}, 1, 0, 2, "HELLO"},
      {"HELLO WORLD", 4, {0x89, 0xA7, 0x57, 0x3C}, 1, 4, 2, "LD"},
      {"A\001B", 0, {0x30, 0xD0, 0x00, 0x00}, 0, 0, 0, "AB"},
      {"AB\001", 0, {0x30, 0xD0, 0x00, 0x00}, 1, 0, 0, "AB"},
  };
  for (const auto &c : kCases) {
    unsigned char field[CODALF05_BYTES];
    char text[16];
    EXPECT_EQ(CODALF05_opc_salvou(field, c.text, c.opc), c.result) << c.text << ' ' << c.opc;
    EXPECT_EQ(std::memcmp(field, c.bytes, sizeof field), 0) << c.text << ' ' << c.opc;
    EXPECT_STREQ(CODALF05_opc_btoa(text, field, c.read_opc, c.width), c.read);
    EXPECT_TRUE(save_agrees(kPackedCodes[0], c.text, c.opc, field)) << c.text << ' ' << c.opc;
  }
}

TEST(PackedCode, WithoutPositionsIsNotTouched) {
  GuardedBuffer nothing;
  unsigned char *field = nothing.at_end(0);
  char text[4];
  for (int n : {0, -1, -70}) {
    EXPECT_EQ(CODALFA_opc_salvou(field, "\001", n, CODALFA_OPC_ZEROS), 1);
    EXPECT_EQ(CODALFA_nao_zero(field, n, 0), 0);
    EXPECT_EQ(CODALFA_nao_zero(field, n, CODALFA_OPC_ZERO_VAZIO), 0);
    EXPECT_EQ(CODALFA_compara(field, field, n), 0);
    EXPECT_EQ(CODALFA_bem_formado(field, n), 1);
    CODALFA_opc_extrai(text, field, n, 0, 3);
    EXPECT_STREQ(text, "   ");
  }
}

// More bytes than six times the positions could be counted in an int.
TEST(PackedCode, CountsBytesAsFarAsAnIntCountsPositions) {
  constexpr int n = 400000003;
  constexpr std::size_t size = (std::size_t{6} * n + 7) / 8;
  static_assert(CODALFA_BYTES(n) == size && CODALFA_BYTES(INT_MAX) == 1610612736);
  std::unique_ptr<unsigned char, decltype(&std::free)> field(
      static_cast<unsigned char *>(std::malloc(size)), std::free);
  if (field == nullptr) GTEST_SKIP() << "no memory for it";
  field.get()[size - 1] = 0xFF;
  char text[8];
  EXPECT_EQ(CODALFA_opc_salvou(field.get(), "ab-1", n, 0), 1);
  EXPECT_EQ(std::memcmp(field.get(), "\x30\xD9\x83\0\0", 5), 0);
  EXPECT_EQ(field.get()[size - 1], 0);
  for (int positions : {n, INT_MAX}) {
    CODALFA_extrai(text, field.get(), positions);
    EXPECT_STREQ(text, "AB-1");
    EXPECT_EQ(CODALFA_nao_zero(field.get(), positions, 0), 1);
    EXPECT_EQ(CODALFA_compara(field.get(), field.get(), positions), 0);
  }
}

TEST(PackedCode, KnowsTheEndsOfItsAlphabet) {
  const std::string alphabet(reference::kAlphabet);
  EXPECT_EQ(alphabet, CODALFA_ALFABETO);
  EXPECT_EQ(CODALFA_menor_caracter(), *std::min_element(alphabet.begin(), alphabet.end()));
  for (int call = 0; call < 2; ++call)
    EXPECT_EQ(CODALFA_maior_caracter(), *std::max_element(alphabet.begin(), alphabet.end()));
  EXPECT_EQ(CODALFA_menor_carac_para_trailler(), '0');
}

}  // namespace
