#include "kinds/texts.hpp"

#include "text/scan.hpp"

namespace campotipo::tool::texts {

namespace {

constexpr int kGreatestCode = 50;
constexpr int kBlank = 1;

// The code at a position: six bits, the most significant bit of each byte first.
int code_at(const unsigned char *field, int position) {
  const int bit = 6 * position;
  const int low_byte = (bit + 5) / 8;
  const int pair = field[bit / 8] << 8 | field[low_byte];
  return low_byte == bit / 8 ? field[low_byte] >> (2 - bit % 8) & 63 : pair >> (10 - bit % 8) & 63;
}

}  // namespace

const char *code_fault(const unsigned char *field, const Params &p) {
  int end = p.n;
  for (int i = 0; i < p.n; ++i) {
    const int code = code_at(field, i);
    if (code > kGreatestCode) return "a code without a character";
    if (code == 0 && end == p.n) end = i;
    if (code != 0 && i > end) return "codes past the end mark";
  }
  const int spare = 8 * code_bytes(p.n) - 6 * p.n;
  if ((field[code_bytes(p.n) - 1] & ((1 << spare) - 1)) != 0) return "spare bits set";
  if (end > 0 && code_at(field, end - 1) == kBlank) return "a blank before the end mark";
  return nullptr;
}

char *put_any_code(char *out, const unsigned char *field, const Params &p) {
  CODALFA_extrai(out, field, p.n);
  return out + std::strlen(out);
}

const char *take_any_code(unsigned char *field, std::string_view text, const Params &p) {
  const bool known = CODALFA_opc_salvou(field, text.data(), p.n, p.options) != 0;
  std::string back(static_cast<std::size_t>(p.n) + 1, '\0');
  CODALFA_extrai(back.data(), field, p.n);
  if (judge::same(text, back.c_str())) return nullptr;
  return judge::code(text, back.c_str(), known, (p.options & CODALFA_OPC_ZEROS) != 0, p.fold);
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

const char *take_string(unsigned char *field, std::string_view text, const Params &p) {
  const auto room = static_cast<std::size_t>(p.n);
  if (p.charset->keeps_ascii() && !scan::has_high(text.data(), text.size())) {
    CODSTR_opc_salva(field, text.data(), p.n, p.options);
    return text.size() > room ? "too long: cut to the bytes of the field" : nullptr;
  }
  bool whole = true;
  const std::string bytes = p.charset->from_utf8(text, whole);
  CODSTR_opc_salva(field, bytes.c_str(), p.n, p.options);
  if (!whole) return "characters that the record's character set does not have";
  return bytes.size() > room ? "too long: cut to the bytes of the field" : nullptr;
}

const char *string_fault(const unsigned char *field, const Params &p) {
  const auto *text = reinterpret_cast<const char *>(field);
  const std::size_t length = strnlen(text, static_cast<std::size_t>(p.n));
  for (auto i = static_cast<int>(length); i < p.n; ++i) {
    if (field[i] != 0) return "bytes behind the end of the text";
  }
  return p.charset->knows({text, length}) ? nullptr : "a byte that is no character";
}

const char *digits_fault(const unsigned char *field, int greatest, int bytes) {
  const int count = field[0];
  if (count > greatest) return "more digits counted than the field holds";
  const unsigned char *number = field + 1;
  const std::uint64_t low = numbers::limb(number, 8);
  const std::uint64_t high = numbers::limb(number + 8, bytes - 8);
  if (low >= numbers::power_of_ten(19) || high >= numbers::power_of_ten(greatest - 19)) {
    return "digits past a limb";
  }
  const bool fits = count <= 19 ? high == 0 && (count == 19 || low < numbers::power_of_ten(count))
                                : high < numbers::power_of_ten(count - 19);
  return fits ? nullptr : "a number longer than its count of digits";
}

}  // namespace campotipo::tool::texts
