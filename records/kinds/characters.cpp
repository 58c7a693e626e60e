#include "kinds/characters.hpp"

#include <string>

#include "text/utf8.hpp"

namespace campotipo::records::characters {

namespace {

constexpr char kNul[] = "a NUL byte, which no text holds";

std::size_t size_of(const Params &p) { return static_cast<std::size_t>(p.bytes); }

// What a copy of bytes found in them.
struct Copied {
  std::size_t length = 0;  // up to the last one that is no blank
  unsigned nuls = 0;
  unsigned high = 0;
};

Copied copy(char *out, const unsigned char *field, std::size_t size) {
  Copied found;
  for (std::size_t at = 0; at < size; at += 16) {
    const std::size_t left = std::min<std::size_t>(16, size - at);
    const __m128i bytes = left == 16 ? scan::load(reinterpret_cast<const char *>(field + at))
                                     : load(field + at, left);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out + at), bytes);
    const unsigned valid = scan::first(left);
    const unsigned other = ~scan::mask(scan::equal(bytes, ' ')) & valid;
    if (other != 0) found.length = at + static_cast<std::size_t>(std::bit_width(other));
    found.nuls |= scan::mask(_mm_cmpeq_epi8(bytes, _mm_setzero_si128())) & valid;
    found.high |= scan::mask(bytes);
  }
  return found;
}

// Rare bytes, so in no hurry.
char *without_nuls(char *text, char *end) {
  const std::string bytes(text, end);
  for (const char c : bytes) text = c == '\0' ? utf8::put(text, 0xFFFD) : &(*text = c) + 1;
  return text;
}

char *finish(char *out, std::size_t length, const Copied &found, const Params &p) {
  char *end = out + length;
  if (found.high != 0) end = p.charset->to_utf8(out, length);
  return found.nuls == 0 ? end : without_nuls(out, end);
}

}  // namespace

char *put_bytes(char *out, const unsigned char *field, std::size_t size, const Params &p) {
  return finish(out, size, copy(out, field, size), p);
}

namespace {

// Up to sixteen bytes at once; null where some of them are not ASCII, or NULs.
char *put_short(char *out, const unsigned char *field, const Params &p) {
  const std::size_t size = size_of(p);
  const __m128i bytes = load(field, size);
  _mm_storeu_si128(reinterpret_cast<__m128i *>(out), bytes);
  const unsigned valid = scan::first(size);
  const __m128i nul = _mm_cmpeq_epi8(bytes, _mm_setzero_si128());
  if ((scan::mask(_mm_or_si128(bytes, nul)) & valid) != 0) return nullptr;
  const unsigned other = ~scan::mask(scan::equal(bytes, ' ')) & valid;
  if (other == 0 || is_absent(field, p)) return out;
  return out + (p.pad == '\0' ? static_cast<std::size_t>(std::bit_width(other)) : size);
}

}  // namespace

// With something that fills it in front, no character is left out: zeros and blanks may be its own.
char *put_text(char *out, const unsigned char *field, const Params &p) {
  if (p.bytes <= 16) {
    if (char *end = put_short(out, field, p)) return end;
  }
  const Copied found = copy(out, field, size_of(p));
  if (found.length == 0 || is_absent(field, p)) return out;
  return finish(out, p.pad == '\0' ? found.length : size_of(p), found, p);
}

const char *text_fault(const unsigned char *field, const Params &p) {
  if (is_absent(field, p)) return nullptr;
  const std::string_view text(reinterpret_cast<const char *>(field), size_of(p));
  if (std::memchr(field, '\0', text.size()) != nullptr) return kNul;
  return p.charset->knows(text) ? nullptr : "a byte that is no character";
}

namespace {

std::string_view without_blanks_behind(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The beginning of a text that is too long, without half a character.
std::string_view beginning(std::string_view text, std::size_t room, const Charset &charset) {
  const auto inside = [&](std::size_t at) {
    return charset.is_utf8() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  };
  while (room > 0 && inside(room)) --room;
  return text.substr(0, room);
}

const char *store(unsigned char *field, std::string_view bytes, const Params &p) {
  const std::size_t room = size_of(p);
  const char *lost = nullptr;
  if (bytes.size() > room) {
    bytes = beginning(bytes, room, *p.charset);
    lost = "too long: cut to the bytes of the field";
  }
  const std::size_t rest = room - bytes.size();
  std::memset(field, p.pad == '\0' ? ' ' : p.pad, room);
  std::memcpy(field + (p.pad == '\0' ? 0 : rest), bytes.data(), bytes.size());
  return lost;
}

}  // namespace

const char *take_text(unsigned char *field, PaddedText text, const Params &p) {
  const std::string_view bare = without_blanks_behind(text.view());
  if (bare.empty()) {
    store_absent(field, p);
    return nullptr;
  }
  const std::string_view given = p.pad == '\0' ? bare : text.view();
  const char *lost = nullptr;
  if (given.find('\0') != std::string_view::npos) {
    std::string other(given);
    std::replace(other.begin(), other.end(), '\0', '?');
    take_text(field, PaddedString(other).text(), p);
    return kNul;
  }
  if (!scan::has_high(text.data(), given.size())) {
    lost = store(field, given, p);
  } else {
    bool whole = true;
    lost = store(field, p.charset->from_utf8(given, whole), p);
    if (!whole) lost = "characters that the record's character set does not have";
  }
  if (!is_absent(field, p)) return lost;
  store_absent(field, p);
  return kMeansNone;
}

char *put_digits(char *out, const unsigned char *field, const Params &p) {
  if (is_absent(field, p)) return out;
  const std::size_t size = size_of(p);
  if (size > 16) return put_bytes(out, field, size, p);
  const __m128i bytes = load(field, size);
  _mm_storeu_si128(reinterpret_cast<__m128i *>(out), bytes);
  const bool good = (scan::not_digits(bytes) & scan::first(size)) == 0;
  return good ? out + size : put_bytes(out, field, size, p);
}

const char *take_digits(unsigned char *field, PaddedText text, const Params &p) {
  store_absent(field, p);
  if (text.empty()) return nullptr;
  const auto *digits = reinterpret_cast<const unsigned char *>(text.data());
  if (!all_digits(digits, text.size())) return "has characters that are no digits";
  if (text.size() > size_of(p)) return "more digits than the field holds";
  const std::size_t rest = size_of(p) - text.size();
  std::memset(field, '0', rest);
  std::memcpy(field + rest, digits, text.size());
  if (!is_absent(field, p)) return nullptr;
  store_absent(field, p);
  return kMeansNone;
}

const char *digits_fault(const unsigned char *field, const Params &p) {
  if (all_digits(field, size_of(p)) || is_absent(field, p)) return nullptr;
  return "a character that is no digit";
}

}  // namespace campotipo::records::characters
