#include "text/charset.hpp"

#include <iconv.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>

#include "text/scan.hpp"
#include "text/utf8.hpp"

namespace campotipo::records {

namespace {

constexpr char32_t kNone = utf8::kBad;

std::string plain_name(const std::string &name) {
  std::string plain;
  for (const char c : name) {
    if (c != '-' && c != '_') plain += static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
  }
  return plain;
}

// One byte by iconv; kNone where it is no character of its own.
char32_t point_of(iconv_t map, unsigned char byte) {
  char in = static_cast<char>(byte);
  char out[16];
  char *from = &in;
  char *to = out;
  std::size_t left = 1;
  std::size_t room = sizeof out;
  iconv(map, nullptr, nullptr, nullptr, nullptr);
  if (iconv(map, &from, &left, &to, &room) == static_cast<std::size_t>(-1)) return kNone;
  if (sizeof out - room != sizeof(char32_t)) return kNone;
  char32_t point = 0;
  std::memcpy(&point, out, sizeof point);
  return point;
}

}  // namespace

Charset::Charset(const std::string &name) : name_(name) {
  const std::string plain = plain_name(name);
  utf8_ = plain == "UTF8";
  latin_ = plain == "ISO88591" || plain == "LATIN1";
  if (utf8_) return;
  // To iconv no name is the character set of the process's locale, and a slash begins options.
  const bool own = !name.empty() && name.find('/') == std::string::npos;
  const iconv_t map = own ? iconv_open("UTF-32LE", name.c_str()) : reinterpret_cast<iconv_t>(-1);
  if (map == reinterpret_cast<iconv_t>(-1)) {
    throw std::invalid_argument("a character set that iconv knows, such as \"ISO-8859-1\"");
  }
  for (unsigned byte = 0; byte < 256; ++byte) {
    points_[byte] = point_of(map, static_cast<unsigned char>(byte));
    if (byte < 0x80 && points_[byte] != byte) keeps_ascii_ = false;
    if (points_[byte] != kNone) bytes_.emplace_back(points_[byte], byte);
  }
  iconv_close(map);
  std::sort(bytes_.begin(), bytes_.end());
  // The first pass over a character set of several bytes a character finds few of its own.
  if (bytes_.size() < 96 || points_[0] != 0) {
    throw std::invalid_argument("a character set of one byte a character, or \"UTF-8\"");
  }
}

char *Charset::to_utf8(char *text, std::size_t length) const {
  if (utf8_) return utf8::valid({text, length}) ? text + length : replace_bad(text, length);
  if (latin_) return scan::has_high(text, length) ? widen_latin(text, length) : text + length;
  const std::string bytes(text, length);
  for (const char byte : bytes) {
    const char32_t point = points_[static_cast<unsigned char>(byte)];
    text = utf8::put(text, point == kNone ? 0xFFFD : point);
  }
  return text;
}

char *Charset::replace_bad(char *text, std::size_t length) {
  const std::string bytes(text, length);
  for (std::size_t at = 0; at < length;) {
    const char32_t point = utf8::next(bytes, at);
    text = utf8::put(text, point == utf8::kBad ? 0xFFFD : point);
  }
  return text;
}

// From the end, so that no byte is overwritten before it is read.
char *Charset::widen_latin(char *text, std::size_t length) const {
  const auto is_high = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  char *end = text + length + std::count_if(text, text + length, is_high);
  char *to = end;
  for (const char *from = text + length; from != text;) {
    const auto byte = static_cast<unsigned char>(*--from);
    if (byte < 0x80) {
      *--to = static_cast<char>(byte);
    } else {
      *--to = static_cast<char>(0x80 | (byte & 0x3F));
      *--to = static_cast<char>(0xC0 | byte >> 6);
    }
  }
  return end;
}

std::string Charset::from_utf8(std::string_view text, bool &whole) const {
  whole = true;
  if (utf8_) {
    whole = utf8::valid(text);
    return std::string(text);
  }
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (keeps_ascii_) {
      const std::size_t begin = at;
      while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
      bytes.append(text, begin, at - begin);
      if (at == text.size()) break;
    }
    const char32_t point = utf8::next(text, at);
    if (latin_ && point < 0x100) {
      bytes += static_cast<char>(point);
      continue;
    }
    const auto found = std::lower_bound(bytes_.begin(), bytes_.end(),
                                        std::pair<char32_t, unsigned char>(point, 0));
    const bool known = found != bytes_.end() && found->first == point;
    whole = whole && known;
    bytes += known ? static_cast<char>(found->second) : '?';
  }
  return bytes;
}

bool Charset::knows(std::string_view bytes) const {
  if (utf8_) return utf8::valid(bytes);
  return latin_ || std::all_of(bytes.begin(), bytes.end(), [&](char byte) {
           return points_[static_cast<unsigned char>(byte)] != kNone;
         });
}

std::shared_ptr<const Charset> charset_named(const std::string &name) {
  static std::mutex mutex;
  static std::map<std::string, std::shared_ptr<const Charset>> known;
  const std::lock_guard lock(mutex);
  auto &charset = known[name];
  if (!charset) charset = std::make_shared<const Charset>(name);
  return charset;
}

}  // namespace campotipo::records
