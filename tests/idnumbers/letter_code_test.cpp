#include <campotipo/idnumbers.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

// A set is the characters of its numbers, from 0 on.
struct Set {
  std::string characters;
  int (*to_number)(int);
  int (*to_character)(int);
  int (*well_formed)(int);
};

const std::string kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

const Set kSets[] = {
    {kLetters, LETRABIN_para_binario, LETRABIN_para_letra, LETRABIN_bem_formado},
    {" " + kLetters, LETR0BIN_para_binario, LETR0BIN_para_letra, LETR0BIN_bem_formado},
    {kLetters + "0123456789", LETRNBIN_para_binario, LETRNBIN_para_letra, LETRNBIN_bem_formado},
    {" " + kLetters + "0123456789", LETR0NBIN_para_binario, LETR0NBIN_para_letra,
     LETR0NBIN_bem_formado},
};

TEST(LetterCode, EveryCharacterHasItsNumber) {
  for (const Set &set : kSets) {
    for (int code = -300; code < 600; ++code) {
      const bool lower = code >= 'a' && code <= 'z';
      const auto at = code < 1 || code > 255
                          ? std::string::npos
                          : set.characters.find(static_cast<char>(lower ? code - 32 : code));
      EXPECT_EQ(set.to_number(code), at == std::string::npos ? 0 : static_cast<int>(at)) << code;
    }
    for (int code : {INT_MIN, INT_MAX, 0x10041, INT_MIN + 'A'}) EXPECT_EQ(set.to_number(code), 0);
  }
}

TEST(LetterCode, EveryNumberHasItsCharacterAndComesBack) {
  for (const Set &set : kSets) {
    const auto size = static_cast<int>(set.characters.size());
    for (int number = -300; number < 600; ++number) {
      const bool known = number >= 0 && number < size;
      EXPECT_EQ(set.to_character(number), set.characters[known ? static_cast<size_t>(number) : 0]);
      EXPECT_EQ(set.well_formed(number), known) << number;
      if (known) {
        EXPECT_EQ(set.to_number(set.to_character(number)), number);
      }
    }
    for (int number : {INT_MIN, INT_MIN + 1, INT_MAX}) {
      EXPECT_EQ(set.to_character(number), set.characters[0]);
      EXPECT_EQ(set.well_formed(number), 0);
    }
  }
}

}  // namespace
