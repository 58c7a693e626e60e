#pragma once

#include <cctype>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Packed codes told plainly: one character and one bit at a time, in the order of the rules.
namespace campotipo::reference::packed {

inline constexpr std::string_view kAlphabet = " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-._/+,:#@*$%!";
inline constexpr char kEnd = '~';

using Field = std::vector<unsigned char>;
using FieldView = std::span<const unsigned char>;

inline std::size_t size_of(int n) { return (6 * static_cast<std::size_t>(n) + 7) / 8; }

inline int code_of(char c) {
  const int upper = std::toupper(static_cast<signed char>(c));
  for (std::size_t place = 0; place < kAlphabet.size(); ++place)
    if (kAlphabet[place] == upper) return static_cast<int>(place) + 1;
  return -1;
}

inline bool is_digit(char c) { return c >= '0' && c <= '9'; }

inline bool all_digits(const std::string &text) {
  std::size_t digits = 0;
  for (char c : text) digits += is_digit(c);
  return digits >= 1 && digits == text.size();
}

// The characters of a text that have a code, without the blanks that end it.
inline std::string counted(const std::string &text) {
  std::string kept;
  for (char c : text)
    if (code_of(c) >= 0) kept += c;
  while (!kept.empty() && kept.back() == ' ') kept.pop_back();
  return kept;
}

inline void put_code(Field &field, int position, int code) {
  for (int bit = 0; bit < 6; ++bit) {
    const auto at = static_cast<std::size_t>(6 * position + bit);
    if ((code >> (5 - bit) & 1) != 0)
      field[at / 8] = static_cast<unsigned char>(field[at / 8] | 1 << (7 - at % 8));
  }
}

inline int code_at(FieldView field, int position) {
  int code = 0;
  for (int bit = 0; bit < 6; ++bit) {
    const auto at = static_cast<std::size_t>(6 * position + bit);
    code = 2 * code + (field[at / 8] >> (7 - at % 8) & 1);
  }
  return code;
}

struct Saved {
  Field field;
  int result;
};

inline Saved save(const std::string &text, int n, int opc) {
  const std::string kept = counted(text);
  const auto positions = static_cast<std::size_t>(n);
  std::size_t cut = 0, fill = 0, taken = 0;
  if ((opc & 4) != 0 && kept.size() > positions) cut = kept.size() - positions;
  if ((opc & 2) != 0 && kept.size() < positions && ((opc & 8) == 0 || all_digits(kept)))
    fill = positions - kept.size();
  Saved saved{Field(size_of(n)), 1};
  const char *next = text.c_str();
  for (int position = 0; position < n; ++position) {
    if (fill > 0) {
      put_code(saved.field, position, 2);
      --fill;
      continue;
    }
    while (taken < kept.size()) {
      const int code = code_of(*next++);
      if (code < 0) {
        saved.result = 0;
        continue;
      }
      ++taken;
      if (cut == 0) {
        put_code(saved.field, position, code);
        break;
      }
      --cut;
    }
  }
  return saved;
}

inline char character_at(FieldView field, int position) {
  const int code = code_at(field, position);
  return code >= 1 && code <= 50 ? kAlphabet[static_cast<std::size_t>(code) - 1] : kEnd;
}

inline std::string text_of(FieldView field, int n) {
  std::string text;
  for (int position = 0; position < n && character_at(field, position) != kEnd; ++position)
    text += character_at(field, position);
  return text;
}

inline std::string extract(FieldView field, int n, int opc, int width) {
  std::string text = text_of(field, n);
  const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
  const bool fills = (opc & 2) != 0 && text.size() < wanted && ((opc & 8) == 0 || all_digits(text));
  if ((opc & 4) != 0 && wanted > 0 && text.size() > wanted) text.erase(0, text.size() - wanted);
  if (fills) text.insert(0, wanted - text.size(), '0');
  if (text.size() < wanted) text.append(wanted - text.size(), ' ');
  if (wanted == 0 && (opc & 2) != 0 && (opc & 8) == 0)
    while (!text.empty() && text.front() == '0') text.erase(0, 1);
  return text;
}

inline int has_content(FieldView field, int n, int opc) {
  for (int position = 0; position < n; ++position) {
    const char c = character_at(field, position);
    if (c == kEnd) return 0;
    if ((opc & 1) == 0 || c != '0') return 1;
  }
  return 0;
}

inline int compare(FieldView a, FieldView b, int n) {
  for (int position = 0; position < n; ++position) {
    const char left = character_at(a, position);
    const char right = character_at(b, position);
    if (left == kEnd || right == kEnd) return (right == kEnd) - (left == kEnd);
    if (left != right) return left > right ? 1 : -1;
  }
  return 0;
}

}  // namespace campotipo::reference::packed
