#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts that hold what the form around them uses itself.
namespace campotipo::records {

// Puts quotes around the text from `text` to `end`, in place, as RFC 4180 wants them; gives the new
// end. Twice the length and 2 bytes have to fit.
char *quote_csv(char *text, char *end);

// Escapes the text from `text` to `end`, in place, for a string of JSON. Six times the length has
// to fit.
char *escape_json(char *text, char *end);

// A cell of CSV, between quotes where it needs them.
std::string csv_cell(std::string_view text);

// A string of JSON with its quotes. What is no UTF-8 is replaced.
std::string json_string(std::string_view text);

// A text of a page or a picture.
std::string html(std::string_view text);

// A text for a terminal: what steers it or turns the order of its letters becomes a point.
std::string printable(std::string_view text);

// The same of a text of several lines, which keep their ends and tabs.
std::string printable_lines(std::string_view text);

}  // namespace campotipo::records
