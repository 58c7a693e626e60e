#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/scan.hpp"

namespace campotipo::records {

// A text that a NUL and scan::kPadding readable bytes follow: it can be given to the library, which
// looks for the NUL, and be scanned sixteen bytes at a time.
class PaddedText {
 public:
  PaddedText() = default;

  // The caller answers for the NUL and for the bytes behind it.
  static PaddedText followed_by_padding(const char *data, std::size_t size) {
    return PaddedText(data, size);
  }

  const char *data() const { return data_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  char back() const { return data_[size_ - 1]; }
  std::string_view view() const { return {data_, size_}; }

 private:
  PaddedText(const char *data, std::size_t size) : data_(data), size_(size) {}

  static constexpr char kNothing[1 + scan::kPadding] = {};
  const char *data_ = kNothing;
  std::size_t size_ = 0;
};

// Any text, copied to where padding follows it.
class PaddedString {
 public:
  explicit PaddedString(std::string_view text) : size_(text.size()), bytes_(text) {
    bytes_.resize(size_ + 1 + scan::kPadding);
  }

  PaddedText text() const { return PaddedText::followed_by_padding(bytes_.data(), size_); }

 private:
  std::size_t size_;
  std::string bytes_;
};

}  // namespace campotipo::records
