#pragma once

#include <campotipo/bits.h>

#include <cstddef>
#include <cstdint>

#include "base/bytes.hpp"
#include "bits/bit_order.hpp"

// Fields of any width in a stream of bits, packed and unpacked in words.
namespace campotipo::bits::field {

// The low `count` bits, 1 to 64.
constexpr std::uint64_t ones(unsigned count) { return ~std::uint64_t{0} >> (64 - count); }

constexpr unsigned bytes_for(unsigned bits) { return (bits + 7) / 8; }

// An unpacked field of up to 64 bits, least significant byte first.
inline std::uint64_t load_field(const unsigned char *field, unsigned width) {
  std::uint64_t bits;
  if (width <= 8) {
    bits = field[0];
  } else if (width <= 16) {
    bits = bytes::load<std::uint16_t>(field);
  } else {
    bits = bytes::load_low_bytes(field, bytes_for(width));
  }
  return bits & ones(width);
}

// The low bits of one number and the others of another.
constexpr std::uint64_t merge(std::uint64_t low, std::uint64_t others, std::uint64_t mask) {
  return others ^ ((others ^ low) & mask);
}
static_assert(merge(0b00101, 0b11100000, ones(5)) == 0b11100101);

// Stores the low bits of a number. The bits of the last byte above the width keep what they held.
// Each common size is one store, so that the caller's load of the field finds it whole.
inline void store_field(unsigned char *field, std::uint64_t bits, unsigned width) {
  if (width <= 8) {
    const std::uint64_t mask = ~(~std::uint64_t{0} << width);
    field[0] = static_cast<unsigned char>(merge(bits, field[0], mask));
  } else if (width <= 16) {
    const std::uint64_t mask = ~(~std::uint64_t{0} << width);
    const std::uint64_t held = bytes::load<std::uint16_t>(field);
    bytes::store(field, static_cast<std::uint16_t>(merge(bits, held, mask)));
  } else {
    const unsigned count = bytes_for(width);
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): 17 bits or more, 3 bytes
    const std::uint64_t held = std::uint64_t{field[count - 1]} << (8 * (count - 1));
    const std::uint64_t word = merge(bits, held, ones(width));
    if (count == 8) {
      bytes::store(field, word);
    } else {
      bytes::store_low_bytes(field, word, count);
    }
  }
}

// A run of bits in the packed area that touches at most eight bytes. The five bits of a field abcde
// from position 6 on, in bytes 0 and 1:
//
//     little    de...... .....abc    at shift 6
//     big       ......ab cde.....    at shift 64 - 6 - 5, byte 0 weighing most
template <class Order>
struct Run {
  Run(std::size_t position, unsigned width_)
      : byte(position / 8),
        width(width_),
        count(bytes_for((position & 7) + width_)),
        shift(Order::shift(position & 7, width_)) {}

  std::uint64_t load(const unsigned char *packed) const {
    return Order::weigh(bytes::load_low_bytes(packed + byte, count)) >> shift & ones(width);
  }

  void store(unsigned char *packed, std::uint64_t value) const {
    const std::uint64_t others =
        Order::weigh(bytes::load_low_bytes(packed + byte, count)) & ~(ones(width) << shift);
    bytes::store_low_bytes(packed + byte, Order::weigh(others | value << shift), count);
  }

  std::size_t byte;
  unsigned width;
  unsigned count;
  unsigned shift;
};

// Hands a field to `move` in runs, each with its byte of the unpacked field.
template <class Order, class Move>
inline void for_each_run(std::size_t start, int width, Move move) {
  if (width <= 0) return;
  const auto all = static_cast<std::size_t>(width);
  for (std::size_t done = 0; done < all;) {
    const std::size_t left = all - done;
    // Seven bytes fit wherever they start, and the next run begins with a whole byte again.
    const bool fits = (Order::part(start, all, done, left) & 7) + left <= 64;
    const unsigned count = fits ? static_cast<unsigned>(left) : 56;
    move(Run<Order>(Order::part(start, all, done, count), count), done / 8);
    done += count;
  }
}

template <class Order>
inline void unpack(unsigned char *field, const unsigned char *packed, std::size_t start,
                   int width) {
  for_each_run<Order>(start, width, [=](const Run<Order> &run, std::size_t byte) {
    store_field(field + byte, run.load(packed), run.width);
  });
}

template <class Order>
inline void pack(const unsigned char *field, unsigned char *packed, std::size_t start, int width) {
  for_each_run<Order>(start, width, [=](const Run<Order> &run, std::size_t byte) {
    run.store(packed, load_field(field + byte, run.width));
  });
}

inline std::int64_t total_bits(const ZBTFIELD_CAMPO *entry) {
  std::int64_t total = 0;
  for (; entry->bits != 0; ++entry) total += entry->bits;
  return total;
}

// The fields of a table one by one, whatever their widths: a negative one moves the position back.
template <class Order>
[[gnu::noinline]] inline void unpack_each(unsigned char *record, const unsigned char *packed,
                                          const ZBTFIELD_CAMPO *entry, std::size_t position,
                                          const ZBTFIELD_CAMPO *end) {
  for (; entry != end && entry->bits != 0; ++entry) {
    unpack<Order>(record + entry->deslocamento, packed, position, entry->bits);
    position += static_cast<std::size_t>(entry->bits);
  }
}

// The first eight bytes of a packed area, or all where there are fewer.
template <class Order>
inline std::uint64_t load_front(const unsigned char *packed, const ZBTFIELD_CAMPO *entry) {
  unsigned total = 0;
  for (; entry->bits > 0 && total <= 56; ++entry) total += static_cast<unsigned>(entry->bits);
  if (total > 56) [[likely]]
    return Order::weigh(bytes::load<std::uint64_t>(packed));
  return Order::weigh(bytes::load_low_bytes(packed, bytes_for(total)));
}

template <class Order>
inline void unpack_all(unsigned char *record, const unsigned char *packed,
                       const ZBTFIELD_CAMPO *entry) {
  std::uint64_t word = load_front<Order>(packed, entry);
  std::size_t word_end = 64;
  std::size_t position = 0;
  for (; entry->bits != 0; ++entry) {
    const int width = entry->bits;
    if (width < 0) [[unlikely]]
      return unpack_each<Order>(record, packed, entry, position, nullptr);
    const std::size_t end = position + static_cast<std::size_t>(width);
    if (end > word_end) {
      // A word that ends with the field lies inside the area, wherever that ends.
      word_end = (end + 7) / 8 * 8;
      word = Order::weigh(bytes::load<std::uint64_t>(packed + word_end / 8 - 8));
      if (word_end - position > 64) [[unlikely]] {
        unpack_each<Order>(record, packed, entry, position, entry + 1);
        position = end;
        continue;
      }
    }
    const unsigned shift = Order::shift_in(word_end, position, end);
    store_field(record + entry->deslocamento, word >> shift, static_cast<unsigned>(width));
    position = end;
  }
}

// The packed area as it is filled: words are stored once and never read back.
template <class Order>
class Packer {
 public:
  explicit Packer(unsigned char *packed) : to_(packed) {}

  // Adds a value of 1 to 64 bits.
  void add(std::uint64_t value, unsigned width) {
    const unsigned end = fill_ + width;
    if (end < 64) {
      word_ |= value << Order::shift(fill_, width);
      fill_ = end;
      return;
    }
    const unsigned over = end - 64;
    bytes::store(to_, Order::weigh(word_ | Order::head(value, fill_, over)));
    to_ += 8;
    word_ = over == 0 ? 0 : Order::tail(value, width, over);
    fill_ = over;
  }

  // The spare bits of the last byte keep what they held.
  void flush() {
    if (fill_ == 0) return;
    const unsigned count = bytes_for(fill_);
    const std::uint64_t last = std::uint64_t{to_[count - 1]} << (8 * (count - 1));
    const std::uint64_t others = Order::weigh(last) & ~Order::first(fill_);
    bytes::store_low_bytes(to_, Order::weigh(word_ | others), count);
  }

  // Goes on at another position, behind what was flushed.
  void seek(unsigned char *packed, std::size_t position) {
    to_ = packed + position / 8;
    fill_ = position & 7;
    word_ = fill_ == 0 ? 0 : Order::weigh(to_[0]) & Order::first(fill_);
  }

 private:
  unsigned char *to_;
  std::uint64_t word_ = 0;
  unsigned fill_ = 0;
};

template <class Order>
inline void pack_all(unsigned char *packed, const ZBTFIELD_CAMPO *entry,
                     const unsigned char *record) {
  Packer<Order> packer(packed);
  std::size_t position = 0;
  for (; entry->bits != 0; ++entry) {
    const unsigned char *field = record + entry->deslocamento;
    const auto width = static_cast<unsigned>(entry->bits);
    if (width <= 64) [[likely]] {
      packer.add(load_field(field, width), width);
      position += width;
    } else {
      packer.flush();
      pack<Order>(field, packed, position, entry->bits);
      position += static_cast<std::size_t>(entry->bits);
      packer.seek(packed, position);
    }
  }
  packer.flush();
}

template <class Order>
inline void set_bit(unsigned char *packed, int position) {
  packed[position >> 3] = static_cast<unsigned char>(packed[position >> 3] | Order::bit(position));
}

template <class Order>
inline void clear_bit(unsigned char *packed, int position) {
  packed[position >> 3] = static_cast<unsigned char>(packed[position >> 3] & ~Order::bit(position));
}

template <class Order>
inline int test_bit(const unsigned char *packed, std::int64_t position) {
  return (packed[position >> 3] & Order::bit(position)) != 0;
}

// Whether nothing is set behind the fields.
template <class Order>
inline bool is_clear_behind(const unsigned char *packed, int bytes, const ZBTFIELD_CAMPO *entry) {
  std::int64_t position = total_bits(entry);
  const std::int64_t whole = (position + 7) / 8 * 8;
  const std::int64_t end = std::int64_t{8} * bytes > whole ? std::int64_t{8} * bytes : whole;
  while (position < end && test_bit<Order>(packed, position) == 0) ++position;
  return position >= end;
}

}  // namespace campotipo::bits::field
