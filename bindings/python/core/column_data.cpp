#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "column.hpp"

namespace campotipo::python {

namespace {

constexpr std::size_t kMostBytes = std::numeric_limits<std::int32_t>::max();

std::unique_ptr<std::uint8_t[]> all_valid(std::size_t size) {
  auto bits = std::make_unique_for_overwrite<std::uint8_t[]>((size + 7) / 8 + 1);
  std::memset(bits.get(), 0xFF, (size + 7) / 8 + 1);
  return bits;
}

}  // namespace

ColumnData::ColumnData(std::size_t size)
    : size_(size),
      validity_(all_valid(size)),
      truths_(std::make_unique_for_overwrite<std::uint8_t[]>(size + 1)) {}

ColumnData::ColumnData(std::size_t size, std::size_t width, std::size_t room)
    : size_(size),
      width_(width),
      validity_(all_valid(size)),
      bytes_(std::make_unique_for_overwrite<char[]>(size * std::max(width, room) + 1)) {
  if (size * std::max(width, room) <= kMostBytes) {
    ends_ = std::make_unique_for_overwrite<std::int32_t[]>(size + 1);
    ends_[0] = 0;
  } else {
    long_ends_ = std::make_unique_for_overwrite<std::int64_t[]>(size + 1);
    long_ends_[0] = 0;
  }
}

ColumnData::ColumnData(std::size_t size, OfLists)
    : size_(size),
      validity_(all_valid(size)),
      ends_(std::make_unique_for_overwrite<std::int32_t[]>(size + 1)),
      item_ends_(1, 0) {
  ends_[0] = 0;
}

void ColumnData::add_item(std::string_view text) {
  if (item_text_.size() + text.size() > kMostBytes) throw std::bad_alloc();
  item_text_ += text;
  item_ends_.push_back(static_cast<std::int32_t>(item_text_.size()));
}

void ColumnData::add_list() { ends_[++at_] = static_cast<std::int32_t>(items_size()); }

std::string_view ColumnData::item(std::size_t at) const {
  const auto begin = static_cast<std::size_t>(item_ends_[at]);
  return std::string_view(item_text_)
      .substr(begin, static_cast<std::size_t>(item_ends_[at + 1]) - begin);
}

void ColumnData::add_null() {
  validity_[at_ / 8] = static_cast<std::uint8_t>(validity_[at_ / 8] & ~(1U << at_ % 8));
  ++nulls_;
  if (lists()) {
    add_list();
  } else if (texts()) {
    add(std::string_view());
  } else {
    add(false);
  }
}

void ColumnData::add(std::string_view text) {
  const std::size_t length = width_ != 0 ? width_ : text.size();
  char *dest = bytes_.get() + used_;
  if (!text.empty()) std::memcpy(dest, text.data(), text.size());
  std::memset(dest + text.size(), 0, length - text.size());
  used_ += length;
  ++at_;
  if (ends_ != nullptr) {
    ends_[at_] = static_cast<std::int32_t>(used_);
  } else {
    long_ends_[at_] = static_cast<std::int64_t>(used_);
  }
}

std::string_view ColumnData::text(std::size_t at) const {
  const auto end = [&](std::size_t i) {
    return ends_ != nullptr ? static_cast<std::size_t>(ends_[i])
                            : static_cast<std::size_t>(long_ends_[i]);
  };
  return {bytes_.get() + end(at), end(at + 1) - end(at)};
}

const char *ColumnData::format() const {
  if (lists()) return "+l";
  if (!texts()) return "b";
  return ends_ != nullptr ? "u" : "U";
}

const void *ColumnData::first() {
  if (truths_ == nullptr)
    return ends_ != nullptr ? static_cast<const void *>(ends_.get()) : long_ends_.get();
  if (bits_ == nullptr) {
    auto bits = std::make_unique<std::uint8_t[]>((size_ + 7) / 8 + 1);
    for (std::size_t i = 0; i < size_; ++i) {
      bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | truths_[i] << i % 8);
    }
    bits_ = std::move(bits);
  }
  return bits_.get();
}

}  // namespace campotipo::python
