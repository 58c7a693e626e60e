#include "kinds/exact.hpp"

#include <emmintrin.h>

#include <cstring>

#include "kinds/characters.hpp"
#include "kinds/dates.hpp"

namespace campotipo::records {

namespace {

// Printable ASCII, which every character set has at its place, and not blanks alone.
bool is_plain_text(const unsigned char *field, std::size_t size) {
  unsigned other = 0;
  unsigned filled = 0;
  for (std::size_t at = 0; at < size; at += 16) {
    const std::size_t left = std::min<std::size_t>(16, size - at);
    const __m128i bytes = characters::load(field + at, left);
    const unsigned valid = scan::first(left);
    // Bytes from 0x80 on are below zero.
    other |= scan::mask(_mm_cmplt_epi8(bytes, _mm_set1_epi8(' '))) & valid;
    filled |= scan::mask(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(' '))) & valid;
  }
  return other == 0 && filled != 0;
}

// Of the forms that mean no value the first is written.
bool is_other_absence(const unsigned char *field, const Params &p) {
  return p.empties.size() > 1 && characters::is_absent(field, p) &&
         std::memcmp(field, p.empties[0].data(), p.empties[0].size()) != 0;
}

Look digits(const unsigned char *field, const Params &p) {
  if (is_other_absence(field, p)) return Look::kTry;
  const bool good = characters::all_digits(field, static_cast<std::size_t>(p.bytes));
  return good ? Look::kGood : Look::kComesBack;
}

}  // namespace

Look look_at(const FieldType &type, const unsigned char *field, const Params &p) {
  switch (type.column) {
    case ColumnForm::kUnsigned:
    case ColumnForm::kLimbs:
      return (type.keys & kDecimals) != 0 && p.decimals <= type.count ? Look::kComesBack
                                                                      : Look::kTry;
    case ColumnForm::kCharacters:
      return p.pad == '\0' && is_plain_text(field, static_cast<std::size_t>(p.bytes)) &&
                     !is_other_absence(field, p)
                 ? Look::kGood
                 : Look::kTry;
    case ColumnForm::kDigitString:
      return digits(field, p);
    case ColumnForm::kNumber:
      return p.sign == Sign::kNone && p.pad != ' ' ? digits(field, p) : Look::kTry;
    case ColumnForm::kTextTime:
      return is_other_absence(field, p) ? Look::kTry : Look::kComesBack;
    case ColumnForm::kTextDate:
      return (p.pattern->has_century || !p.stored->has_century) && !is_other_absence(field, p)
                 ? Look::kComesBack
                 : Look::kTry;
    default:
      return Look::kTry;
  }
}

}  // namespace campotipo::records
