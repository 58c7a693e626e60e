#include "findings/statistics.hpp"

#include <algorithm>
#include <bit>
#include <cmath>

#include "text/utf8.hpp"

namespace campotipo::tool {

namespace {

// FNV-1a over the bytes, then a mix that spreads every bit (the finalizer of splitmix64).
std::uint64_t hash_of(const unsigned char *bytes, std::size_t count) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (std::size_t i = 0; i < count; ++i) hash = (hash ^ bytes[i]) * 0x100000001B3;
  hash ^= hash >> 30;
  hash *= 0xBF58476D1CE4E5B9;
  hash ^= hash >> 27;
  hash *= 0x94D049BB133111EB;
  return hash ^ hash >> 31;
}

}  // namespace

void DistinctCount::note(std::uint64_t hash) {
  const std::size_t index = hash >> (64 - kIndexBits);
  const int rank = std::countl_zero(hash << kIndexBits | 1) + 1;
  registers_[index] = std::max(registers_[index], static_cast<std::uint8_t>(rank));
}

void DistinctCount::add(const unsigned char *bytes, std::size_t count) {
  const std::uint64_t hash = hash_of(bytes, count);
  if (estimated_) return note(hash);
  known_.insert(hash);
  if (known_.size() <= kExact) return;
  estimated_ = true;
  registers_.resize(std::size_t{1} << kIndexBits);
  for (const std::uint64_t known : known_) note(known);
  known_ = {};
}

// The estimate of HyperLogLog (Flajolet, Fusy, Gandouet, Meunier, 2007).
std::uint64_t DistinctCount::value() const {
  if (!estimated_) return known_.size();
  const auto registers = static_cast<double>(registers_.size());
  double sum = 0;
  double zeros = 0;
  for (const std::uint8_t rank : registers_) {
    sum += std::ldexp(1.0, -rank);
    zeros += rank == 0 ? 1 : 0;
  }
  const double estimate = 0.7213 / (1 + 1.079 / registers) * registers * registers / sum;
  const bool small = estimate <= 2.5 * registers && zeros > 0;
  return static_cast<std::uint64_t>(
      std::llround(small ? registers * std::log(registers / zeros) : estimate));
}

std::string FieldStatistics::text_of(const std::vector<unsigned char> &bytes) const {
  if (bytes.empty()) return "";
  std::vector<unsigned char> record(field_->offset);
  record.insert(record.end(), bytes.begin(), bytes.end());
  return field_text(*field_, record.data());
}

void FieldStatistics::add_order(const unsigned char *bytes) {
  const unsigned char *end = bytes + field_->bytes;
  const auto order = [&](const std::vector<unsigned char> &kept) {
    return field_->type->compare(bytes, kept.data(), field_->params);
  };
  if (least_.empty() || order(least_) < 0) least_.assign(bytes, end);
  if (greatest_.empty() || order(greatest_) > 0) greatest_.assign(bytes, end);
}

void FieldStatistics::add_text(const unsigned char *record) {
  const std::string text = field_text(*field_, record);
  if ((field_->type->traits & kText) != 0) ++lengths_[std::min(kLongest, utf8::length(text))];
  if (many_) return;
  ++few_[text];
  if (few_.size() <= kFew) return;
  few_.clear();
  many_ = true;
}

void FieldStatistics::add(const unsigned char *record) {
  const unsigned char *bytes = record + field_->offset;
  ++count_;
  const bool empty = field_empty(*field_, record);
  if (empty) ++empty_;
  if (is_bit_area(*field_->type)) {
    const std::string text = field_text(*field_, record);
    distinct_.add(reinterpret_cast<const unsigned char *>(text.data()), text.size());
  } else {
    distinct_.add(bytes, field_->bytes);
  }
  add_text(record);
  // Nothing is a number like any other, but no date, code or text.
  const bool number = (field_->type->traits & kRight) != 0;
  if (empty && !number) return;
  add_order(bytes);
  if (field_->type->measure == nullptr) return;
  const double value = field_->type->measure(bytes, field_->params);
  if (value < 0 && !number) return;
  low_ = measured_ ? std::min(low_, value) : value;
  high_ = measured_ ? std::max(high_, value) : value;
  measured_ = true;
}

}  // namespace campotipo::tool
