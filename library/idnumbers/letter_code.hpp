#pragma once

// Letters, and where the set has them digits, as small numbers.
namespace campotipo::idnumbers {

template <bool kBlank, bool kDigits>
struct LetterCode {
  static constexpr int to_number(int character) {
    const auto code = static_cast<unsigned>(character);
    // One bit is all that lower case differs in.
    const unsigned letter = (code | 0x20) - 'a';
    if (letter < 26) return static_cast<int>(letter) + kBlank;
    if (kDigits && code - '0' < 10) return static_cast<int>(code - '0') + 26 + kBlank;
    return 0;
  }

  static constexpr int to_character(int number) {
    const unsigned code = static_cast<unsigned>(number) - kBlank;
    // In a set with a blank, only 0 and numbers out of range wrap or reach past the last one.
    if (code < 26) return static_cast<int>('A' + code);
    if (kDigits && code - 26 < 10) return static_cast<int>('0' + (code - 26));
    return kBlank ? ' ' : 'A';
  }

  static constexpr bool has(int number) {
    return static_cast<unsigned>(number) < 26 + kBlank + (kDigits ? 10 : 0);
  }
};

}  // namespace campotipo::idnumbers
