#include "kinds/texts.hpp"

#include "text/ascii.hpp"
#include "text/scan.hpp"

namespace campotipo::records::texts {

char *put_any_code(char *out, const unsigned char *field, const Params &p) {
  CODALFA_extrai(out, field, p.n);
  return out + std::strlen(out);
}

PaddedString in_c_locale(PaddedText text) {
  constexpr char kUnknown = '?';
  std::string folded = ascii::capitals(text.view());
  for (char &c : folded) c = static_cast<unsigned char>(c) >= 0x80 ? kUnknown : c;
  return PaddedString(folded);
}

const char *take_any_code(unsigned char *field, PaddedText text, const Params &p) {
  const bool plain = !scan::has_small_or_high(text.data(), text.size());
  const bool known =
      CODALFA_opc_salvou(field, plain ? text.data() : in_c_locale(text).text().data(), p.n,
                         p.options) != 0;
  if (plain && known && plain_code(text, p.n)) return nullptr;
  std::string back(static_cast<std::size_t>(p.n) + 1, '\0');
  CODALFA_extrai(back.data(), field, p.n);
  if (conversion::same(text.view(), back.c_str())) return nullptr;
  return conversion::code(text.view(), back.c_str(), known, (p.options & CODALFA_OPC_ZEROS) != 0,
                          p.fold);
}

// What CODSTR_extrai does, with the search for the end and for characters that UTF-8 writes
// otherwise in the same pass over the bytes.
char *put_string(char *out, const unsigned char *field, const Params &p) {
  const auto *from = reinterpret_cast<const char *>(field);
  const auto size = static_cast<std::size_t>(p.n);
  unsigned high = p.charset->keeps_ascii() ? 0 : 1;
  for (std::size_t at = 0; at < size; at += 16) {
    __m128i bytes;
    if (size - at >= 16) {
      bytes = scan::load(from + at);
    } else {
      char last[16] = {};
      std::memcpy(last, from + at, size - at);
      bytes = scan::load(last);
    }
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out + at), bytes);
    const unsigned end = scan::mask(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()));
    high |= scan::mask(bytes) & (end == 0 ? ~0U : (end & (0U - end)) - 1);
    if (end == 0) continue;
    const std::size_t length = at + static_cast<std::size_t>(std::countr_zero(end));
    return high == 0 ? out + length : p.charset->to_utf8(out, length);
  }
  return high == 0 ? out + size : p.charset->to_utf8(out, size);
}

const char *take_string(unsigned char *field, PaddedText text, const Params &p) {
  const auto room = static_cast<std::size_t>(p.n);
  if (p.charset->keeps_ascii() && !scan::has_high(text.data(), text.size())) {
    CODSTR_opc_salva(field, text.data(), p.n, p.options);
    return text.size() > room ? "too long: cut to the bytes of the field" : nullptr;
  }
  bool whole = true;
  const std::string bytes = p.charset->from_utf8(text.view(), whole);
  CODSTR_opc_salva(field, bytes.c_str(), p.n, p.options);
  if (!whole) return "characters that the record's character set does not have";
  return bytes.size() > room ? "too long: cut to the bytes of the field" : nullptr;
}

const char *string_fault(const unsigned char *field, const Params &p) {
  if (CODSTR_bem_formado(field, p.n) == 0) return "bytes behind the end of the text";
  const auto *text = reinterpret_cast<const char *>(field);
  const std::size_t length = strnlen(text, static_cast<std::size_t>(p.n));
  return p.charset->knows({text, length}) ? nullptr : "a byte that is no character";
}

}  // namespace campotipo::records::texts
