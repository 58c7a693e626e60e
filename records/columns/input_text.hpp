#pragma once

#include <string>

#include "columns/arrow_input.hpp"
#include "kinds/type.hpp"

// Values of columns as the texts that a row would hold for them.
namespace campotipo::records {

std::string decimal_text(Int128 number, int scale);
std::string decimal_text(const std::uint64_t (&words)[4], int scale);

// A day since 1970-01-01 in the form of a date field, with its whole year where the form has one.
// Empty for years that have no four digits.
std::string day_text(std::int64_t day, const Params &p);

// A second of the day: hours and minutes alone where that says all of it and the field keeps no more.
std::string time_text(std::int64_t second, bool minutes, const Params &p);

}  // namespace campotipo::records
