#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

// Sixteen bytes at a time: what kinds of bytes a text holds.
namespace campotipo::records::scan {

// Texts given to these functions are followed by this many bytes that may be read (a PaddedText
// is).
constexpr std::size_t kPadding = 16;

inline __m128i load(const char *at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
}

inline __m128i equal(__m128i bytes, char value) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(value));
}

inline unsigned mask(__m128i bytes) { return static_cast<unsigned>(_mm_movemask_epi8(bytes)); }

// The lowest `count` bits, all sixteen from 16 on.
inline unsigned first(std::size_t count) { return (1U << (count < 16 ? count : 16)) - 1; }

// True if some byte within the length satisfies the test, which gives a mask for 16 bytes.
template <class Test>
inline bool any(const char *text, std::size_t length, Test test) {
  for (std::size_t at = 0; at < length; at += 16) {
    if ((test(load(text + at)) & first(length - at)) != 0) return true;
  }
  return false;
}

inline bool has_high(const char *text, std::size_t length) {
  return any(text, length, [](__m128i bytes) { return mask(bytes); });
}

// Letters that have a capital, and bytes that may have one in some locale.
inline bool has_small_or_high(const char *text, std::size_t length) {
  return any(text, length, [](__m128i bytes) {
    const __m128i above = _mm_cmpgt_epi8(bytes, _mm_set1_epi8('a' - 1));
    const __m128i small = _mm_and_si128(above, _mm_cmplt_epi8(bytes, _mm_set1_epi8('z' + 1)));
    return mask(_mm_or_si128(small, bytes));
  });
}

// Bytes that a CSV cell may hold only between quotes.
inline bool needs_quotes(const char *text, std::size_t length) {
  return any(text, length, [](__m128i bytes) {
    return mask(_mm_or_si128(_mm_or_si128(equal(bytes, ','), equal(bytes, '"')),
                             _mm_or_si128(equal(bytes, '\n'), equal(bytes, '\r'))));
  });
}

// Bytes that a JSON string may hold only as an escape.
inline bool needs_escapes(const char *text, std::size_t length) {
  return any(text, length, [](__m128i bytes) {
    const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
    return mask(_mm_or_si128(_mm_or_si128(equal(bytes, '\\'), equal(bytes, '"')), control));
  });
}

inline unsigned not_digits(__m128i bytes) {
  const __m128i nine = _mm_set1_epi8(9);
  const __m128i value = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  return ~mask(_mm_cmpeq_epi8(_mm_max_epu8(value, nine), nine)) & 0xFFFF;
}

// The NUL of a text that sixteen readable bytes follow: short texts, so no call is made for them.
inline char *text_end(char *text) {
  for (;; text += 16) {
    const unsigned end = mask(_mm_cmpeq_epi8(load(text), _mm_setzero_si128()));
    if (end != 0) return text + std::countr_zero(end);
  }
}

// Digits with at most one point among them: how many digits, and how many behind the point.
struct Number {
  bool plain = false;
  int digits = 0;
  int behind = 0;
};

inline Number number(const char *text, std::size_t length) {
  Number found;
  std::size_t point = length;
  for (std::size_t at = 0; at < length; at += 16) {
    unsigned other = not_digits(load(text + at)) & first(length - at);
    if (other == 0) continue;
    const std::size_t place = at + static_cast<std::size_t>(std::countr_zero(other));
    if (text[place] != '.' || point != length || (other & (other - 1)) != 0) return found;
    point = place;
  }
  const bool has_point = point != length;
  found.digits = static_cast<int>(length - (has_point ? 1 : 0));
  found.behind = has_point ? static_cast<int>(length - point - 1) : 0;
  found.plain = found.digits > 0;
  return found;
}

}  // namespace campotipo::records::scan
