#include "text/quote.hpp"

#include <algorithm>
#include <cstring>

#include "text/scan.hpp"
#include "text/utf8.hpp"

namespace campotipo::records {

namespace {

void add_escaped(std::string &out, char c) {
  switch (c) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  if (static_cast<unsigned char>(c) >= 0x20) {
    out += c;
    return;
  }
  constexpr char kDigits[] = "0123456789abcdef";
  out += "\\u00";
  out += kDigits[static_cast<unsigned char>(c) >> 4];
  out += kDigits[c & 15];
}

constexpr std::string_view kShownPoint = "\xC2\xB7";

// Control characters, the ends of lines and the marks that turn the direction of a text.
bool steers(char32_t point) {
  return point == utf8::kBad || point < 0x20 || (point >= 0x7F && point < 0xA0) ||
         point == 0x061C || point == 0x200E || point == 0x200F ||
         (point >= 0x2028 && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
}

}  // namespace

char *quote_csv(char *text, char *end) {
  const std::string bytes(text, end);
  *text++ = '"';
  for (const char c : bytes) {
    if (c == '"') *text++ = '"';
    *text++ = c;
  }
  *text++ = '"';
  return text;
}

char *escape_json(char *text, char *end) {
  std::string escaped;
  for (const char *at = text; at != end; ++at) add_escaped(escaped, *at);
  return std::copy(escaped.begin(), escaped.end(), text);
}

std::string csv_cell(std::string_view text) {
  // A byte order mark in front of a file belongs to no cell, unless it stands in quotes.
  if (text.find_first_of(",\"\r\n") == std::string_view::npos &&
      !text.starts_with("\xEF\xBB\xBF")) {
    return std::string(text);
  }
  std::string cell(2 * text.size() + 2, '\0');
  std::copy(text.begin(), text.end(), cell.begin());
  cell.resize(
      static_cast<std::size_t>(quote_csv(cell.data(), cell.data() + text.size()) - cell.data()));
  return cell;
}

std::string json_string(std::string_view text) {
  std::string out = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    if (utf8::next(text, at) == utf8::kBad) {
      out += "\\ufffd";
    } else if (at - start == 1) {
      add_escaped(out, text[start]);
    } else {
      out += text.substr(start, at - start);
    }
  }
  return out + "\"";
}

std::string html(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    const char32_t point = utf8::next(text, at);
    if (point == '&') {
      out += "&amp;";
    } else if (point == '<') {
      out += "&lt;";
    } else if (point == '>') {
      out += "&gt;";
    } else if (point == '"') {
      out += "&quot;";
    } else {
      out += steers(point) ? kShownPoint : text.substr(start, at - start);
    }
  }
  return out;
}

std::string printable(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    out += steers(utf8::next(text, at)) ? kShownPoint : text.substr(start, at - start);
  }
  return out;
}

std::string printable_lines(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\n\t");
    std::string_view part = text.substr(0, end);
    const bool carriage = end < text.size() && text[end] == '\n' && part.ends_with('\r');
    if (carriage) part.remove_suffix(1);
    out += printable(part);
    if (carriage) out += '\r';
    if (end == std::string_view::npos) break;
    out += text[end];
    text.remove_prefix(end + 1);
  }
  return out;
}

}  // namespace campotipo::records
