// campotipo_arredonda, campotipo_soma_meses.
#include <campotipo/campotipo.h>

#include <algorithm>
#include <string>

#include "scalar.hpp"

namespace campotipo::duckdb {

namespace {

__extension__ typedef __int128 Int128;

constexpr int kMostDigits = 38;
constexpr int kResultScale = 10;

struct Powers {
  Int128 of_ten[kMostDigits + 1];
};

constexpr Powers kPowers = [] {
  Powers powers = {{1}};
  for (int i = 1; i <= kMostDigits; ++i) powers.of_ten[i] = 10 * powers.of_ten[i - 1];
  return powers;
}();

Int128 power_of_ten(int exponent) { return kPowers.of_ten[exponent]; }

// ABNT NBR 5891: up from above one half, and from one half where the digit kept is odd; as in the
// library's money, a value below zero is cut. Gives the number of units.
Int128 round_nbr(Int128 value, Int128 unit) {
  const Int128 kept = value / unit;
  if (value < 0) return kept;
  const Int128 rest = value % unit;
  // Twice the rest may be more than fits.
  const bool up = rest > unit - rest || (rest == unit - rest && kept % 2 != 0);
  return kept + (up ? 1 : 0);
}

// Exact numbers of any width, as they lie in a vector.
class Numbers {
 public:
  Numbers(duckdb_data_chunk chunk, idx_t at) : values_(chunk, at) {
    const Type type(duckdb_vector_get_column_type(duckdb_data_chunk_get_vector(chunk, at)));
    stored_ = duckdb_get_type_id(type.get());
    if (stored_ != DUCKDB_TYPE_DECIMAL) return;
    scale_ = duckdb_decimal_scale(type.get());
    stored_ = duckdb_decimal_internal_type(type.get());
  }

  int scale() const { return scale_; }
  bool is_null(idx_t row) const { return stored_ == DUCKDB_TYPE_SQLNULL || values_.is_null(row); }

  Int128 value(idx_t row) const {
    switch (stored_) {
      case DUCKDB_TYPE_TINYINT:
        return values_.value<std::int8_t>(row);
      case DUCKDB_TYPE_SMALLINT:
        return values_.value<std::int16_t>(row);
      case DUCKDB_TYPE_INTEGER:
        return values_.value<std::int32_t>(row);
      case DUCKDB_TYPE_BIGINT:
        return values_.value<std::int64_t>(row);
      case DUCKDB_TYPE_HUGEINT: {
        const auto stored = values_.value<duckdb_hugeint>(row);
        return static_cast<Int128>(stored.upper) << 64 | stored.lower;
      }
      default:
        throw Failure(
            "campotipo_arredonda: takes a DECIMAL or a whole number with a sign, which are exact: "
            "cast another number to a DECIMAL");
    }
  }

 private:
  Argument values_;
  duckdb_type stored_ = DUCKDB_TYPE_INVALID;
  int scale_ = 0;
};

// The type of a result is known before its decimals are: there is room for ten.
Int128 rounded(Int128 value, int scale, int places) {
  if (places < 0 || places > kResultScale) {
    throw Failure("campotipo_arredonda: 0 to 10 decimals, not " + std::to_string(places));
  }
  if (places < scale) {
    value = round_nbr(value, power_of_ten(scale - places));
    scale = places;
  }
  const Int128 unit = power_of_ten(kResultScale - scale);
  const Int128 most = (power_of_ten(kMostDigits) - 1) / unit;
  if (value > most || value < -most) {
    throw Failure("campotipo_arredonda: the result has more than 28 digits in front of the point");
  }
  return value * unit;
}

void arredonda(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  const Numbers values(chunk, 0);
  const Argument places(chunk, 1);
  Result result(out);
  for_rows(info, chunk, [&](idx_t row) {
    if (values.is_null(row) || places.is_null(row)) return result.null(row);
    const Int128 value =
        rounded(values.value(row), values.scale(), places.value<std::int32_t>(row));
    result.value(row, duckdb_hugeint{static_cast<std::uint64_t>(value),
                                     static_cast<std::int64_t>(value >> 64)});
  });
}

// Where the library's calendar and the civil one are the same.
constexpr std::int32_t kFirstDay = -25508;  // 1900-03-01
constexpr std::int32_t kLastDay = 47540;    // 2100-02-28

[[noreturn]] void refuse_date(const char *what) {
  throw Failure(std::string("campotipo_soma_meses: ") + what +
                " is not from 1900-03-01 to 2100-02-28, where the library's calendar is the civil "
                "one");
}

std::int32_t add_months(std::int32_t day, std::int32_t months) {
  constexpr std::int32_t kMostMonths = 12 * 201;
  if (day < kFirstDay || day > kLastDay) refuse_date("the date");
  if (months < -kMostMonths || months > kMostMonths) refuse_date("the result");
  const duckdb_date_struct from = duckdb_from_date({day});
  unsigned char field[DATAC_BYTES];
  DATAC_fmt_monta(field, DATAC_FORMATO_COMPACTO, from.day, from.month, from.year);
  DATAC_avanca_meses_dentro(field, months);
  const duckdb_date_struct to = {DATAC_ano1(field), static_cast<std::int8_t>(DATAC_mes(field)),
                                 static_cast<std::int8_t>(DATAC_dia(field))};
  // 29/02 of 1900 and 2100 are days of the library alone.
  const bool civil = to.month != 2 || to.day != 29 || (to.year != 1900 && to.year != 2100);
  const std::int32_t result = civil ? duckdb_to_date(to).days : kLastDay + 1;
  if (result < kFirstDay || result > kLastDay) refuse_date("the result");
  return result;
}

void soma_meses(duckdb_function_info info, duckdb_data_chunk chunk, duckdb_vector out) {
  const Argument dates(chunk, 0);
  const Argument months(chunk, 1);
  Result result(out);
  for_rows(info, chunk, [&](idx_t row) {
    if (dates.is_null(row) || months.is_null(row)) return result.null(row);
    result.value(row, add_months(dates.value<std::int32_t>(row), months.value<std::int32_t>(row)));
  });
}

}  // namespace

void add_arithmetic(duckdb_connection connection) {
  add_scalar(connection, "campotipo_arredonda",
             {{duckdb_create_logical_type(DUCKDB_TYPE_ANY),
               duckdb_create_logical_type(DUCKDB_TYPE_INTEGER)},
              duckdb_create_decimal_type(kMostDigits, kResultScale),
              arredonda});
  add_scalar(connection, "campotipo_soma_meses",
             {{duckdb_create_logical_type(DUCKDB_TYPE_DATE),
               duckdb_create_logical_type(DUCKDB_TYPE_INTEGER)},
              duckdb_create_logical_type(DUCKDB_TYPE_DATE),
              soma_meses});
}

}  // namespace campotipo::duckdb
