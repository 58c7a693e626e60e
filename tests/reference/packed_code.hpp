#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Packed codes told plainly: whole texts, and fields as texts of "0" and "1".
namespace campotipo::reference::packed {

inline constexpr std::string_view kAlphabet = " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!";

using Field = std::vector<unsigned char>;

inline std::size_t code_of(char c) {
  const int upper = std::toupper(static_cast<signed char>(c));
  return upper < 0 || upper > 127 ? 0 : kAlphabet.find(static_cast<char>(upper)) + 1;
}

inline bool all_digits(const std::string &text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

// The texts of a field's codes, six bits each, one behind the other and cut every eight.
inline Field packed(std::string_view characters, int n) {
  std::string bits;
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
    for (std::size_t bit = 6; bit-- > 0;)
      bits += i < characters.size() && (code_of(characters[i]) >> bit & 1) != 0 ? '1' : '0';
  bits.append((8 - bits.size() % 8) % 8, '0');
  Field field;
  for (std::size_t at = 0; at < bits.size(); at += 8)
    field.push_back(static_cast<unsigned char>(std::stoi(bits.substr(at, 8), nullptr, 2)));
  return field;
}

// The characters in front of the first code that is none.
inline std::string text_of(std::span<const unsigned char> field, int n) {
  std::string bits;
  for (const unsigned byte : field)
    for (int bit = 8; bit-- > 0;) bits += (byte >> bit & 1) != 0 ? '1' : '0';
  std::string text;
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i) {
    const auto code = static_cast<std::size_t>(std::stoi(bits.substr(6 * i, 6), nullptr, 2));
    if (code == 0 || code > kAlphabet.size()) break;
    text += kAlphabet[code - 1];
  }
  return text;
}

struct Saved {
  Field field;
  int result;
};

inline Saved save(const std::string &text, int n, int opc) {
  const auto positions = static_cast<std::size_t>(n);
  // The characters that count: those with a code, without the blanks that end them.
  std::string kept;
  for (const char c : text)
    if (code_of(c) != 0) kept += c;
  kept.resize(kept.find_last_not_of(' ') + 1);
  // Up to which of them the text is looked at, and what of them is stored.
  const std::size_t cut = (opc & 4) != 0 && kept.size() > positions ? kept.size() - positions : 0;
  std::string stored = kept.substr(cut);
  if ((opc & 2) != 0 && kept.size() < positions && ((opc & 8) == 0 || all_digits(kept)))
    stored.insert(0, positions - kept.size(), '0');
  stored.resize(std::min(stored.size(), positions));
  int result = 1;
  std::size_t needed = std::min(kept.size(), cut + positions);
  for (auto c = text.begin(); needed > 0; ++c) {
    if (code_of(*c) != 0)
      --needed;
    else
      result = 0;
  }
  return {packed(stored, n), result};
}

inline std::string extract(std::string text, int opc, int width) {
  const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
  if ((opc & 4) != 0 && wanted > 0 && text.size() > wanted) text.erase(0, text.size() - wanted);
  if ((opc & 2) != 0 && text.size() < wanted && ((opc & 8) == 0 || all_digits(text)))
    text.insert(0, wanted - text.size(), '0');
  if (text.size() < wanted) text.append(wanted - text.size(), ' ');
  if (wanted == 0 && (opc & 2) != 0 && (opc & 8) == 0) text.erase(0, text.find_first_not_of('0'));
  return text;
}

inline int has_content(const std::string &text, int opc) {
  return (opc & 1) == 0 ? !text.empty() : text.find_first_not_of('0') != std::string::npos;
}

}  // namespace campotipo::reference::packed
