#include "findings/statistics.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "text/utf8.hpp"

namespace campotipo::records {

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

// x + sum of 2^(k-1) x^(2^k) for k from 1 on.
double sigma(double x) {
  double sum = x;
  for (double weight = 1, before = -1; sum != before; weight *= 2) {
    before = sum;
    x *= x;
    sum += weight * x;
  }
  return sum;
}

// (1 - x - sum of 2^-k (1 - x^(2^-k))^2 for k from 1 on) / 3.
double tau(double x) {
  double sum = 1 - x;
  for (double weight = 0.5, before = -1; sum != before; weight /= 2) {
    before = sum;
    x = std::sqrt(x);
    sum -= weight * (1 - x) * (1 - x);
  }
  return sum / 3;
}

}  // namespace

void DistinctCount::note(std::uint64_t hash) {
  const std::size_t index = hash >> kRankBits;
  const int rank = std::countl_zero(hash << kIndexBits | 1ULL << (kIndexBits - 1)) + 1;
  registers_[index] = std::max(registers_[index], static_cast<std::uint8_t>(rank));
}

void DistinctCount::add(const unsigned char *bytes, std::size_t count) {
  ++added_;
  const std::uint64_t hash = hash_of(bytes, count);
  if (estimated_) return note(hash);
  known_.insert(hash);
  if (known_.size() <= kExact) return;
  estimated_ = true;
  registers_.resize(std::size_t{1} << kIndexBits);
  for (const std::uint64_t known : known_) note(known);
  known_ = {};
}

// The estimator of Ertl (New cardinality estimation algorithms for HyperLogLog sketches, 2017),
// which has no bias at any size: each rank counts by how many registers have it, and the ends, no
// rank and the greatest, by the two series.
double DistinctCount::estimate() const {
  constexpr double kRegisters = 1 << kIndexBits;
  std::array<double, kRankBits + 2> share = {};
  for (const std::uint8_t rank : registers_) share[rank] += 1 / kRegisters;
  double sum = tau(1 - share[kRankBits + 1]);
  for (int rank = kRankBits; rank >= 1; --rank) sum = 0.5 * (sum + share[rank]);
  sum += sigma(share[0]);
  return kRegisters / (2 * std::numbers::ln2 * sum);
}

std::uint64_t DistinctCount::value() const {
  if (!estimated_) return known_.size();
  return std::min(added_, static_cast<std::uint64_t>(std::llround(estimate())));
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
  // Nothing is a number like any other where none can be absent, but no date, code or text.
  const bool number = (field_->type->traits & (kRight | kNullable)) == kRight;
  if (empty && !number) return;
  add_order(bytes);
  if (field_->type->measure == nullptr) return;
  const double value = field_->type->measure(bytes, field_->params);
  if (value < 0 && !number) return;
  low_ = measured_ ? std::min(low_, value) : value;
  high_ = measured_ ? std::max(high_, value) : value;
  measured_ = true;
}

}  // namespace campotipo::records
