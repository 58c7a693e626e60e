// Texts, digits, dates and times that are stored as characters. Compiled as decode.cpp is: what is
// inlined here must not be shared.
#include <emmintrin.h>

#include "columns/decode_values.hpp"
#include "columns/digit_words.hpp"
#include "kinds/civil.hpp"

namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

// Sixteen bytes of a record, of which `size` belong to the field.
class Chunk {
 public:
  Chunk(std::size_t at, std::size_t size, std::size_t record_bytes)
      : at_(at), size_(size), exact_(size < 16 && at + 16 > record_bytes) {}

  __m128i read(const unsigned char *record) const {
    if (exact_) return read_exactly(record);
    __m128i bytes;
    __builtin_memcpy(&bytes, record + at_, sizeof bytes);
    return bytes;
  }

  unsigned valid() const { return size_ == 16 ? 0xFFFFU : (1U << size_) - 1; }

 private:
  // In words that overlap, or end with the field.
  __m128i read_exactly(const unsigned char *record) const {
    U64 low = 0;
    U64 high = 0;
    if (size_ > 8) {
      low = load<8>(record + at_);
      high = load<8>(record + at_ + size_ - 8) >> 8 * (16 - size_);
    } else if (at_ + size_ >= 8) {
      low = load<8>(record + at_ + size_ - 8) >> 8 * (8 - size_);
    } else {
      for (std::size_t i = size_; i-- > 0;) low = low << 8 | record[at_ + i];
    }
    return _mm_set_epi64x(static_cast<long long>(high), static_cast<long long>(low));
  }

  std::size_t at_;
  std::size_t size_;
  bool exact_;
};

inline unsigned mask(__m128i bytes) { return static_cast<unsigned>(_mm_movemask_epi8(bytes)); }

// NULs and bytes above 127, which another character set may write in another way.
struct Texts {
  static unsigned faults(__m128i bytes) {
    return mask(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, _mm_setzero_si128())));
  }
  // How many bytes there are up to the last one that is no blank.
  static std::size_t length(__m128i bytes, unsigned valid) {
    const unsigned other = ~mask(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' '))) & valid;
    return 32 - static_cast<std::size_t>(__builtin_clz(other << 1 | 1)) - 1;
  }
};

struct DigitTexts {
  static unsigned faults(__m128i bytes) {
    const __m128i nine = _mm_set1_epi8(9);
    const __m128i value = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    return ~mask(_mm_cmpeq_epi8(_mm_max_epu8(value, nine), nine));
  }
  static std::size_t length(__m128i, unsigned valid) {
    return valid == 0xFFFFU ? 16 : 32 - static_cast<std::size_t>(__builtin_clz(valid));
  }
};

// A text of another character set, or none, or one at fault; gives the end of what was written.
char *long_way(const DecodeInput &in, const DecodeOutput &out, std::size_t i, char *at, bool &any) {
  const unsigned char *field = in.records[i] + in.offset;
  if (at_fault(in, field)) {
    any = note(out, i, ValueState::kFault);
    return at;
  }
  char *end = in.type->put(at, field, *in.params);
  const bool nullable = (in.type->traits & kNullable) != 0;
  if (nullable && end == at) any = note(out, i, ValueState::kNull);
  return end;
}

template <class Kind>
bool short_texts(const DecodeInput &in, const DecodeOutput &out) {
  const Chunk chunk(in.offset, static_cast<std::size_t>(in.params->bytes), in.record_bytes);
  const unsigned valid = chunk.valid();
  const std::int32_t begin = out.begin;
  char *at = out.bytes;
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const __m128i bytes = chunk.read(in.records[i]);
    if ((Kind::faults(bytes) & valid) != 0) {
      at = long_way(in, out, i, at, any);
    } else {
      __builtin_memcpy(at, &bytes, sizeof bytes);
      at += Kind::length(bytes, valid);
    }
    out.offsets[i] = begin + static_cast<std::int32_t>(at - out.bytes);
  }
  return any;
}

// The last sixteen bytes overlap those in front of them.
template <class Kind>
bool long_texts(const DecodeInput &in, const DecodeOutput &out) {
  const auto size = static_cast<std::size_t>(in.params->bytes);
  const std::int32_t begin = out.begin;
  char *at = out.bytes;
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    std::size_t length = 0;
    unsigned wrong = 0;
    for (std::size_t place = 0; place < size; place += 16) {
      const std::size_t from = place + 16 <= size ? place : size - 16;
      __m128i bytes;
      __builtin_memcpy(&bytes, field + from, sizeof bytes);
      __builtin_memcpy(at + from, &bytes, sizeof bytes);
      wrong |= Kind::faults(bytes) & 0xFFFFU;
      const std::size_t inside = Kind::length(bytes, 0xFFFFU);
      length = inside != 0 ? from + inside : length;
    }
    at = wrong != 0 ? long_way(in, out, i, at, any) : at + length;
    out.offsets[i] = begin + static_cast<std::int32_t>(at - out.bytes);
  }
  return any;
}

template <class Kind>
bool texts_of(const DecodeInput &in, const DecodeOutput &out) {
  return in.params->bytes <= 16 ? short_texts<Kind>(in, out) : long_texts<Kind>(in, out);
}

bool characters(const DecodeInput &in, const DecodeOutput &out) {
  return is_plain_text(*in.params) ? texts_of<Texts>(in, out) : texts(in, out);
}

bool digit_strings(const DecodeInput &in, const DecodeOutput &out) {
  return has_empties_of_digits(*in.params) ? texts(in, out) : texts_of<DigitTexts>(in, out);
}

// Dates of digits alone, by their places in a word.
class DateWords {
 public:
  explicit DateWords(const DecodeInput &in)
      : form_(digit_date(*in.params)),
        size_(static_cast<std::size_t>(in.params->bytes)),
        exact_(size_ != 8 && in.offset + 8 > in.record_bytes),
        mask_(size_ >= 8 ? ~U64{0} : (U64{1} << 8 * size_) - 1) {
    for (int i = 0; i < 8; ++i) shifts_[i] = 8U * form_.places[i];
  }

  bool is_plain() const { return form_.is_plain; }

  U64 read(const unsigned char *field) const {
    if (!exact_) return load<8>(field) & mask_;
    U64 word = 0;
    for (std::size_t i = size_; i-- > 0;) word = word << 8 | field[i];
    return word;
  }

  DayState day(U64 word, std::int32_t &day) const {
    const U64 digits = word ^ (kZeros & mask_);
    if ((faults(digits) & kHighs) != 0) return DayState::kNoDay;
    const int of_month = pair(digits, 0);
    const int month = pair(digits, 2);
    int year = pair(digits, 6);
    if (form_.has_century) {
      year += 100 * pair(digits, 4);
    } else {
      year += year < form_.pivot ? 2000 : 1900;
    }
    if (!civil::exists(of_month, month, year)) return DayState::kNoDay;
    day = civil::days(of_month, month, year);
    return DayState::kDay;
  }

 private:
  int pair(U64 digits, int at) const {
    return static_cast<int>(10 * (digits >> shifts_[at] & 0xF) + (digits >> shifts_[at + 1] & 0xF));
  }

  DigitDate form_;
  std::size_t size_;
  bool exact_;
  U64 mask_;
  unsigned shifts_[8];
};

bool any_dates(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    std::int32_t day = 0;
    const DayState found = text_day(in.records[i] + in.offset, *in.params, day);
    if (found == DayState::kAbsent) any = note(out, i, ValueState::kNull);
    if (found == DayState::kNoDay) any = note(out, i, ValueState::kFault);
    put(out.values, i, day);
  }
  return any;
}

// Dates come in runs: one like the one before it is not worked out again.
bool dates(const DecodeInput &in, const DecodeOutput &out) {
  const DateWords words(in);
  if (!words.is_plain()) return any_dates(in, out);
  bool any = false;
  U64 last = 0;
  bool known = false;
  std::int32_t day = 0;
  DayState state = DayState::kNoDay;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    const U64 word = words.read(field);
    if (word != last || !known) {
      last = word;
      known = true;
      day = 0;
      state = is_none(field, *in.params) ? DayState::kAbsent : words.day(word, day);
    }
    if (state == DayState::kAbsent) any = note(out, i, ValueState::kNull);
    if (state == DayState::kNoDay) any = note(out, i, ValueState::kFault);
    put(out.values, i, day);
  }
  return any;
}

template <class Value>
bool times(const DecodeInput &in, const DecodeOutput &out) {
  constexpr std::int64_t kUnit = sizeof(Value) == 8 ? 1000000000 : 1;
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    std::int64_t second = 0;
    if (is_none(field, *in.params)) {
      any = note(out, i, ValueState::kNull);
    } else {
      second = second_of_day(field, in.type->column, *in.params);
      if (second < 0) {
        any = note(out, i, ValueState::kFault);
        second = 0;
      }
    }
    put(out.values, i, static_cast<Value>(second * kUnit));
  }
  return any;
}

}  // namespace

Decode decode_characters(const FieldType &type, const ColumnType &column) {
  switch (type.column) {
    case ColumnForm::kCharacters:
      return characters;
    case ColumnForm::kDigitString:
      return digit_strings;
    case ColumnForm::kNumber:
      return column.physical == Physical::kUtf8 ? texts : decode_digits(column.physical);
    case ColumnForm::kTextDate:
      return dates;
    case ColumnForm::kTextTime:
      return column.physical == Physical::kTime64 ? times<std::int64_t> : times<std::int32_t>;
    default:
      return nullptr;
  }
}

}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
