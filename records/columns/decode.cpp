// Compiled once for every x86-64 and once for x86-64-v3, each in a namespace of its own. What is
// inlined here must not be shared: a function of the standard library, compiled for the newer
// processors and merged by the linker, would run on the older ones too.
#include "columns/decode_values.hpp"

namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE {

namespace {

template <int Bytes, class Value>
bool whole(const DecodeInput &in, const DecodeOutput &out) {
  for (std::size_t i = 0; i < in.count; ++i) {
    put(out.values, i, static_cast<Value>(load<Bytes>(in.records[i] + in.offset)));
  }
  return false;
}

bool money(const DecodeInput &in, const DecodeOutput &out) {
  for (std::size_t i = 0; i < in.count; ++i) {
    const auto value = static_cast<std::int64_t>(load<8>(in.records[i] + in.offset));
    put(out.values, i, I128{value});
  }
  return false;
}

// Limbs of 19 digits, the lowest first; the last one has the bytes that are left.
constexpr U64 kLimb = 10000000000000000000U;

template <int Bytes>
bool limbs(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    U128 value = load<8>(field);
    bool fits = true;
    if constexpr (Bytes > 16) {
      value += U128{load<8>(field + 8)} * kLimb;
      fits = load<Bytes - 16>(field + 16) == 0;
    } else {
      value += U128{load<Bytes - 8>(field + 8)} * kLimb;
    }
    if (at_fault(in, field)) {
      any = note(out, i, ValueState::kFault);
      value = 0;
    } else if (!fits) {
      any = note(out, i, ValueState::kTooLarge);
      value = 0;
    }
    put(out.values, i, value);
  }
  return any;
}

template <int Bytes>
bool limbs256(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    Wide256 value = {};
    if (at_fault(in, field)) {
      any = note(out, i, ValueState::kFault);
    } else {
      if constexpr (Bytes > 16) value.word[0] = load<Bytes - 16>(field + 16);
      value = times_plus(value, kLimb, load<(Bytes > 16 ? 8 : Bytes - 8)>(field + 8));
      value = times_plus(value, kLimb, load<8>(field));
    }
    put(out.values, i, value);
  }
  return any;
}

template <class Value>
bool bits(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    Value value = 0;
    if (at_fault(in, field)) {
      any = note(out, i, ValueState::kFault);
    } else {
      value = static_cast<Value>(bit_part(field, *in.params));
    }
    put(out.values, i, value);
  }
  return any;
}

// Dates come in runs: one like the one before it is not worked out again.
bool dates(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  U64 last = ~U64{0};
  ValueState state = ValueState::kValue;
  std::int32_t day = 0;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    const U64 stored = load<3>(field);
    if (stored != last) {
      last = stored;
      day = 0;
      state = ValueState::kFault;
      if (!at_fault(in, field)) {
        const DayState found = civil_day(field, *in.type, *in.params, day);
        if (found == DayState::kDay) state = ValueState::kValue;
        if (found == DayState::kAbsent) state = ValueState::kNull;
      }
    }
    if (state != ValueState::kValue) any = note(out, i, state);
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
    Value value = 0;
    if (at_fault(in, field)) {
      any = note(out, i, ValueState::kFault);
    } else {
      value = static_cast<Value>(second_of_day(field, in.type->column, *in.params) * kUnit);
    }
    put(out.values, i, value);
  }
  return any;
}

template <class Value>
Decode whole_of(int bytes) {
  constexpr Decode kAll[] = {whole<1, Value>, whole<2, Value>, whole<3, Value>, whole<4, Value>,
                             whole<5, Value>, whole<6, Value>, whole<7, Value>, whole<8, Value>};
  return kAll[bytes - 1];
}

constexpr Decode kLimbs[] = {limbs<9>,  limbs<10>, limbs<11>, limbs<12>, limbs<13>,
                             limbs<14>, limbs<15>, limbs<16>, limbs<17>, limbs<18>,
                             limbs<19>, limbs<20>, limbs<21>};
constexpr Decode kLimbs256[] = {limbs256<9>,  limbs256<10>, limbs256<11>, limbs256<12>,
                                limbs256<13>, limbs256<14>, limbs256<15>, limbs256<16>,
                                limbs256<17>, limbs256<18>, limbs256<19>, limbs256<20>,
                                limbs256<21>};

Decode unsigned_of(int bytes, Physical physical) {
  if (physical == Physical::kInt32) return whole_of<std::int32_t>(bytes);
  if (physical == Physical::kInt64) return whole_of<std::int64_t>(bytes);
  return whole_of<U128>(bytes);
}

Decode bits_of(Physical physical) {
  if (physical == Physical::kBool) return bits<std::uint8_t>;
  if (physical == Physical::kInt32) return bits<std::int32_t>;
  if (physical == Physical::kInt64) return bits<std::int64_t>;
  return bits<U128>;
}

}  // namespace

bool texts(const DecodeInput &in, const DecodeOutput &out) {
  bool any = false;
  const bool nullable = (in.type->traits & kNullable) != 0;
  const std::int32_t begin = out.begin;
  char *at = out.bytes;
  for (std::size_t i = 0; i < in.count; ++i) {
    const unsigned char *field = in.records[i] + in.offset;
    if (at_fault(in, field)) {
      any = note(out, i, ValueState::kFault);
    } else {
      char *end = in.type->put(at, field, *in.params);
      if (nullable && end == at) any = note(out, i, ValueState::kNull);
      at = end;
    }
    out.offsets[i] = begin + static_cast<std::int32_t>(at - out.bytes);
  }
  return any;
}

Decode decode(const FieldType &type, const ColumnType &column) {
  if (const Decode characters = decode_characters(type, column)) return characters;
  const Physical physical = column.physical;
  if (physical == Physical::kUtf8) return texts;
  switch (type.column) {
    case ColumnForm::kUnsigned:
      return unsigned_of(type.bytes, physical);
    case ColumnForm::kSigned:
      return money;
    case ColumnForm::kLimbs:
      return physical == Physical::kDecimal256 ? kLimbs256[type.bytes - 9] : kLimbs[type.bytes - 9];
    case ColumnForm::kDate:
      return dates;
    case ColumnForm::kMinutes:
    case ColumnForm::kSeconds:
      return physical == Physical::kTime64 ? times<std::int64_t> : times<std::int32_t>;
    case ColumnForm::kBits:
      return bits_of(physical);
    default:
      break;
  }
  return texts;
}

}  // namespace campotipo::records::CAMPOTIPO_KERNELS_NAMESPACE
