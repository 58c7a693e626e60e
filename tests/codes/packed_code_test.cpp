#include <campotipo/codes.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/reference/packed_code.hpp"
#include "tests/util/guarded_buffer.hpp"
#include "tests/util/random.hpp"

namespace {

using campotipo::test::GuardedBuffer;
using campotipo::test::Random;
namespace reference = campotipo::reference::packed;
using reference::Field;

// The operations of one width, behind which stand a member's functions or the engine's.
class Code {
 public:
  explicit Code(int positions) : n(positions) {}
  virtual ~Code() = default;
  virtual int save(unsigned char *dest, const char *text, int opc) const {
    return CODALFA_opc_salvou(dest, text, n, opc);
  }
  virtual void save_only(unsigned char *dest, const char *text, int opc) const {
    CODALFA_opc_salva(dest, text, n, opc);
  }
  virtual char *read(char *dest, const unsigned char *src, int opc, int width) const {
    CODALFA_opc_extrai(dest, src, n, opc, width);
    return dest;
  }
  virtual char *read_whole(char *dest, const unsigned char *src) const {
    CODALFA_extrai(dest, src, n);
    return dest;
  }
  virtual int compare(const unsigned char *a, const unsigned char *b) const {
    return CODALFA_compara(a, b, n);
  }
  virtual int equal(const unsigned char *a, const unsigned char *b) const {
    return CODALFA_compara(a, b, n) == 0;
  }
  virtual int has_content(const unsigned char *src, int opc) const {
    return CODALFA_nao_zero(src, n, opc);
  }
  const int n;
};

struct Member {
  int n;
  int text_size;
  int (*save)(unsigned char *, const char *, int);
  void (*save_only)(unsigned char *, const char *, int);
  char *(*read)(char *, const unsigned char *, int, int);
  char *(*read_whole)(char *, const unsigned char *);
  int (*compare)(const unsigned char *, const unsigned char *);
  int (*equal)(const unsigned char *, const unsigned char *);
  int (*has_content)(const unsigned char *, int);
};

constexpr Member kMembers[] = {
    {CODALF05_CHARACTERS, CODALF05_TEXT_SIZE, CODALF05_opc_salvou, CODALF05_opc_atob,
     CODALF05_opc_btoa, CODALF05_btoa, CODALF05_compara, CODALF05_igual, CODALF05_nao_zero},
    {CODALF12_CHARACTERS, CODALF12_TEXT_SIZE, CODALF12_opc_salvou, CODALF12_opc_atob,
     CODALF12_opc_btoa, CODALF12_btoa, CODALF12_compara, CODALF12_igual, CODALF12_nao_zero},
    {CODALF14_CHARACTERS, CODALF14_TEXT_SIZE, CODALF14_opc_salvou, CODALF14_opc_atob,
     CODALF14_opc_btoa, CODALF14_btoa, CODALF14_compara, CODALF14_igual, CODALF14_nao_zero},
    {CODALF17_CHARACTERS, CODALF17_TEXT_SIZE, CODALF17_opc_salvou, CODALF17_opc_atob,
     CODALF17_opc_btoa, CODALF17_btoa, CODALF17_compara, CODALF17_igual, CODALF17_nao_zero},
    {CODALF20_CHARACTERS, CODALF20_TEXT_SIZE, CODALF20_opc_salvou, CODALF20_opc_atob,
     CODALF20_opc_btoa, CODALF20_btoa, CODALF20_compara, CODALF20_igual, CODALF20_nao_zero},
    {CODALF32_CHARACTERS, CODALF32_TEXT_SIZE, CODALF32_opc_salvou, CODALF32_opc_atob,
     CODALF32_opc_btoa, CODALF32_btoa, CODALF32_compara, CODALF32_igual, CODALF32_nao_zero},
    {CODALF36_CHARACTERS, CODALF36_TEXT_SIZE, CODALF36_opc_salvou, CODALF36_opc_atob,
     CODALF36_opc_btoa, CODALF36_btoa, CODALF36_compara, CODALF36_igual, CODALF36_nao_zero},
    {CODALF40_CHARACTERS, CODALF40_TEXT_SIZE, CODALF40_opc_salvou, CODALF40_opc_atob,
     CODALF40_opc_btoa, CODALF40_btoa, CODALF40_compara, CODALF40_igual, CODALF40_nao_zero},
};

class MemberCode : public Code {
 public:
  explicit MemberCode(const Member &member) : Code(member.n), member_(member) {}
  int save(unsigned char *dest, const char *text, int opc) const override {
    return member_.save(dest, text, opc);
  }
  void save_only(unsigned char *dest, const char *text, int opc) const override {
    member_.save_only(dest, text, opc);
  }
  char *read(char *dest, const unsigned char *src, int opc, int width) const override {
    return member_.read(dest, src, opc, width);
  }
  char *read_whole(char *dest, const unsigned char *src) const override {
    return member_.read_whole(dest, src);
  }
  int compare(const unsigned char *a, const unsigned char *b) const override {
    return member_.compare(a, b);
  }
  int equal(const unsigned char *a, const unsigned char *b) const override {
    return member_.equal(a, b);
  }
  int has_content(const unsigned char *src, int opc) const override {
    return member_.has_content(src, opc);
  }

 private:
  const Member &member_;
};

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

  void expect_saved(const Code &code, const std::string &text, int opc) {
    const reference::Saved expected = reference::save(text, code.n, opc);
    const char *guarded = place(text);
    unsigned char *field = field_.at_end(expected.field.size());
    EXPECT_EQ(code.save(field, guarded, opc), expected.result) << message(code, text, opc);
    EXPECT_TRUE(std::equal(expected.field.begin(), expected.field.end(), field))
        << message(code, text, opc);
    field = field_.at_start(expected.field.size());
    code.save_only(field, guarded, opc);
    EXPECT_TRUE(std::equal(expected.field.begin(), expected.field.end(), field))
        << message(code, text, opc);
  }

  void expect_read(const Code &code, const Field &field, int opc, int width) {
    const std::string expected = reference::extract(field, code.n, opc, width);
    const unsigned char *src = field_.field(field);
    char *out = out_.text_at_end(static_cast<std::size_t>(std::max(code.n, width)) + 1);
    EXPECT_EQ(code.read(out, src, opc, width), out);
    EXPECT_EQ(expected, out) << message(code, expected, opc) << " width " << width;
    EXPECT_EQ(code.has_content(src, opc), reference::has_content(field, code.n, opc));
    const std::string whole = reference::text_of(field, code.n);
    out = out_.text_at_end(whole.size() + 1);
    EXPECT_EQ(whole, code.read_whole(out, src)) << "no byte behind the NUL is written";
  }

  void expect_order(const Code &code, const Field &a, const Field &b) {
    const int expected = reference::compare(a, b, code.n);
    const unsigned char *left = field_.field(a);
    const unsigned char *right = out_.field(b);
    EXPECT_EQ(code.compare(left, right), expected);
    EXPECT_EQ(code.compare(right, left), -expected);
    EXPECT_EQ(code.equal(left, right), expected == 0);
    // An end sorts before every character, so the texts have the same order.
    const int texts = reference::text_of(a, code.n).compare(reference::text_of(b, code.n));
    EXPECT_EQ(expected, (texts > 0) - (texts < 0));
  }

  void run(const Code &code, int rounds) {
    Random random(static_cast<std::uint64_t>(code.n));
    const auto size = reference::size_of(code.n);
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
            static_cast<unsigned char>(random.word());
      expect_read(code, field, opc, random.between(-1, code.n + 5));
      expect_order(code, field, other);
    }
  }

  static std::string message(const Code &code, const std::string &text, int opc) {
    return "n " + std::to_string(code.n) + " opc " + std::to_string(opc) + " \"" + text + '"';
  }

  GuardedBuffer text_, field_, out_;
  unsigned placed_ = 0;
};

TEST_F(PackedCodeModel, AgreesWithEveryMember) {
  for (const Member &member : kMembers) {
    EXPECT_EQ(member.text_size, member.n + 1);
    run(MemberCode(member), 800);
  }
}

TEST_F(PackedCodeModel, AgreesWithTheEngineAtEveryWidth) {
  for (int n = 1; n <= 70; ++n) run(Code(n), 96);
  run(Code(1000), 32);
}

// What decides may stand behind the last position, or behind blanks in front of it.
TEST_F(PackedCodeModel, LooksBehindTheLastPosition) {
  const char *const tails[] = {"",    " ",    "   ",   "X",      "x",
                               "  X", "\x01", "\x01X", "  \x01", "X  \x01"};
  const auto look = [&](const Code &code) {
    for (int blanks = 0; blanks <= std::min(code.n, 20); ++blanks) {
      for (const char *tail : tails) {
        std::string text(static_cast<std::size_t>(code.n - blanks), blanks % 2 == 0 ? 'A' : 'z');
        text += std::string(static_cast<std::size_t>(blanks), ' ') + tail;
        for (int opc = 0; opc < 16; ++opc) expect_saved(code, text, opc);
      }
    }
  };
  for (int n = 1; n <= 70; ++n) look(Code(n));
  for (const Member &member : kMembers) look(MemberCode(member));
}

TEST_F(PackedCodeModel, AgreesOnEveryTextOfTwoBytes) {
  const Code code(2);
  for (int first = 1; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      std::string text{static_cast<char>(first), static_cast<char>(second)};
      if (second == 0) text.resize(1);
      const reference::Saved expected = reference::save(text, 2, 0);
      unsigned char field[2];
      EXPECT_EQ(code.save(field, text.c_str(), 0), expected.result) << first << ' ' << second;
      EXPECT_TRUE(std::equal(field, field + 2, expected.field.begin())) << first << ' ' << second;
    }
  }
}

TEST_F(PackedCodeModel, AgreesOnEveryFieldOfTwoPositions) {
  const Code code(2);
  char out[3];
  for (int value = 0; value < 65536; ++value) {
    const Field field = {static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)};
    EXPECT_EQ(reference::text_of(field, 2), code.read_whole(out, field.data())) << value;
    for (int opc : {0, CODALFA_OPC_ZERO_VAZIO})
      EXPECT_EQ(code.has_content(field.data(), opc), reference::has_content(field, 2, opc))
          << value;
    const Field next = {field[1], field[0]};
    EXPECT_EQ(code.compare(field.data(), next.data()), reference::compare(field, next, 2)) << value;
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
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text{'A', static_cast<char>(byte), 'b'};
    for (int opc : {0, CODALFA_OPC_ZEROS}) expect_saved(Code(5), text, opc);
  }
  for (const Member &member : kMembers) run(MemberCode(member), 160);
}

INSTANTIATE_TEST_SUITE_P(Locales, PackedCodeLocale,
                         testing::Values("C", "tr_TR.ISO-8859-9", "tr_TR.UTF-8",
                                         "pt_BR.ISO-8859-1"));

TEST(PackedCode, HasNoCapitalForTheTurkishSmallI) {
#ifdef CAMPOTIPO_TEST_LOCALES
  setenv("LOCPATH", CAMPOTIPO_TEST_LOCALES, 1);
#endif
  if (std::setlocale(LC_ALL, "tr_TR.ISO-8859-9") == nullptr) GTEST_SKIP() << "no such locale here";
  unsigned char field[CODALF05_BYTES];
  char text[CODALF05_TEXT_SIZE];
  EXPECT_EQ(CODALF05_opc_salvou(field, "aib", 0), 0);
  EXPECT_STREQ(CODALF05_btoa(text, field), "AB");
  EXPECT_EQ(CODALF05_opc_salvou(field, "a\xFD", 0), 1) << "the i without a dot";
  EXPECT_STREQ(CODALF05_btoa(text, field), "AI");
  std::setlocale(LC_ALL, "C");
}

struct SaveCase {
  const char *text;
  int opc;
  unsigned char bytes[4];
  int result;
};

TEST(PackedCode, StoresTheseBytes) {
  const SaveCase cases[] = {
      {"AB-1", 0, {0x30, 0xD9, 0x83, 0x00}, 1},
      {"ab-1  ", 0, {0x30, 0xD9, 0x83, 0x00}, 1},
      {"  A", 0, {0x04, 0x13, 0x00, 0x00}, 1},
      {"A B", 0, {0x30, 0x13, 0x40, 0x00}, 1},
      {"", 0, {0x00, 0x00, 0x00, 0x00}, 1},
      {"     ", 0, {0x00, 0x00, 0x00, 0x00}, 1},
      {"", 2, {0x08, 0x20, 0x82, 0x08}, 1},
      {"", 10, {0x00, 0x00, 0x00, 0x00}, 1},
      {"007", 0, {0x08, 0x22, 0x40, 0x00}, 1},
      {"7", 2, {0x08, 0x20, 0x82, 0x24}, 1},
      {"A7", 2, {0x08, 0x20, 0x8C, 0x24}, 1},
      {"A7", 10, {0x30, 0x90, 0x00, 0x00}, 1},
      {"12  ", 10, {0x08, 0x20, 0x83, 0x10}, 1},
      {" 12", 2, {0x08, 0x20, 0x43, 0x10}, 1},
      {" 12", 10, {0x04, 0x31, 0x00, 0x00}, 1},
      {"HELLO WORLD", 0, {0x4D, 0x05, 0xD7, 0x68}, 1},
      {"HELLO WORLD", 4, {0x89, 0xA7, 0x57, 0x3C}, 1},
      {"A\001B", 0, {0x30, 0xD0, 0x00, 0x00}, 0},
      {"AB\001", 0, {0x30, 0xD0, 0x00, 0x00}, 1},
  };
  for (const SaveCase &c : cases) {
    unsigned char field[CODALF05_BYTES];
    EXPECT_EQ(CODALF05_opc_salvou(field, c.text, c.opc), c.result) << c.text << ' ' << c.opc;
    EXPECT_EQ(std::memcmp(field, c.bytes, sizeof field), 0) << c.text << ' ' << c.opc;
    EXPECT_EQ(CODALFA_opc_salvou(field, c.text, 5, c.opc), c.result) << c.text << ' ' << c.opc;
    EXPECT_EQ(std::memcmp(field, c.bytes, sizeof field), 0) << c.text << ' ' << c.opc;
  }
}

struct ReadCase {
  const char *text;
  int saved;
  int opc;
  int width;
  const char *read;
};

TEST(PackedCode, GivesTheseTextsBack) {
  const ReadCase cases[] = {
      {"AB  ", 0, 0, 0, "AB"},      {"AB", 0, 0, 8, "AB      "}, {"AB", 0, 2, 8, "000000AB"},
      {"AB", 0, 10, 8, "AB      "}, {"007", 0, 0, 0, "007"},     {"007", 0, 2, 0, "7"},
      {"000", 0, 2, 0, ""},         {"7", 2, 0, 0, "00007"},     {"7", 2, 2, 0, "7"},
      {"7", 2, 10, 0, "00007"},     {"A7", 2, 2, 0, "A7"},       {"12", 0, 10, 6, "000012"},
      {"ABCDE", 0, 0, 2, "ABCDE"},  {"ABCDE", 0, 4, 2, "DE"},    {"7", 2, 2, -9, "7"},
  };
  for (const ReadCase &c : cases) {
    unsigned char field[CODALF05_BYTES];
    char text[16];
    CODALF05_opc_atob(field, c.text, c.saved);
    EXPECT_STREQ(CODALF05_opc_btoa(text, field, c.opc, c.width), c.read) << c.text << ' ' << c.opc;
  }
}

TEST(PackedCode, OrdersByCharacterNotByCode) {
  const char *const ascending[] = {"",  " A", "!A", "-",  "0", "00", "9",
                                   ":", "@",  "A",  "AB", "Z", "_"};
  unsigned char a[CODALF12_BYTES], b[CODALF12_BYTES];
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      CODALF12_opc_atob(a, ascending[i], 0);
      CODALF12_opc_atob(b, ascending[j], 0);
      EXPECT_EQ(CODALF12_compara(a, b), (i > j) - (i < j)) << ascending[i] << ' ' << ascending[j];
    }
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
  CODALFA_extrai(text, field.get(), n);
  EXPECT_STREQ(text, "AB-1");
  EXPECT_EQ(CODALFA_nao_zero(field.get(), n, 0), 1);
  EXPECT_EQ(CODALFA_compara(field.get(), field.get(), n), 0);
}

TEST(PackedCode, KnowsTheEndsOfItsAlphabet) {
  const std::string alphabet(reference::kAlphabet);
  EXPECT_EQ(alphabet, CODALFA_ALFABETO);
  EXPECT_EQ(CODALFA_menor_caracter(), *std::min_element(alphabet.begin(), alphabet.end()));
  for (int call = 0; call < 2; ++call)
    EXPECT_EQ(CODALFA_maior_caracter(), *std::max_element(alphabet.begin(), alphabet.end()));
  EXPECT_EQ(CODALFA_menor_carac_para_trailler(), '0');
}

TEST(PackedCode, ExampleOfTheManual) {
  unsigned char field[CODALF05_BYTES];
  char text[CODALF05_TEXT_SIZE];
  CODALF05_opc_atob(field, "ab-1  ", 0);
  EXPECT_STREQ(CODALF05_btoa(text, field), "AB-1");
  CODALF05_opc_atob(field, "7", CODALFA_OPC_ZEROS);
  EXPECT_STREQ(CODALF05_btoa(text, field), "00007");
}

}  // namespace
