#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace campotipo::records {

// The characters of the texts inside a record: one byte each, as iconv maps them to Unicode, or
// UTF-8. Immutable, so that threads share it.
class Charset {
 public:
  // A name that iconv knows; throws std::invalid_argument, with what was expected, for others.
  explicit Charset(const std::string &name);

  const std::string &name() const { return name_; }
  bool is_utf8() const { return utf8_; }

  // Whether bytes below 128 are the characters that they are in ASCII.
  bool keeps_ascii() const { return keeps_ascii_; }

  // Bytes of UTF-8 that one byte of a record may become.
  std::size_t growth() const { return utf8_ ? 3 : 4; }

  // Turns the `length` bytes at `text`, where there is room for growth(), into UTF-8, in place;
  // gives the end. What is no character becomes U+FFFD.
  char *to_utf8(char *text, std::size_t length) const;

  // UTF-8 to bytes of a record, a "?" for what has no byte; `whole` tells if there was none.
  std::string from_utf8(std::string_view text, bool &whole) const;

  // True if every byte is a character.
  bool knows(std::string_view bytes) const;

 private:
  char *widen_latin(char *text, std::size_t length) const;
  static char *replace_bad(char *text, std::size_t length);

  std::string name_;
  bool utf8_ = false;
  bool latin_ = false;
  bool keeps_ascii_ = true;
  std::array<char32_t, 256> points_ = {};
  std::vector<std::pair<char32_t, unsigned char>> bytes_;
};

// Charsets by name, each made once and kept.
std::shared_ptr<const Charset> charset_named(const std::string &name);

}  // namespace campotipo::records
