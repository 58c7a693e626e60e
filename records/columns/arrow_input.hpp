#pragma once

#include <campotipo-records/arrow.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Columns that another program hands over by the Arrow C data interface.
namespace campotipo::records {

__extension__ typedef __int128 Int128;

// What the values of a column are.
enum class InputForm : std::uint8_t {
  kNull,  // none
  kBool,
  kInteger,
  kDecimal,
  kText,
  kDate,
  kTime,
  kTimestamp,  // of no zone
};

// How they lie in memory.
enum class InputStorage : std::uint8_t {
  kNone,
  kBits,
  kInt8,
  kUint8,
  kInt16,
  kUint16,
  kInt32,
  kUint32,
  kInt64,
  kUint64,
  kInt128,
  kInt256,
  kOffsets32,
  kOffsets64,
  kViews,
};

struct InputType {
  InputForm form = InputForm::kNull;
  InputStorage storage = InputStorage::kNone;
  int scale = 0;              // of a decimal: digits behind the point
  std::int64_t per_unit = 1;  // of a time: units in a second; of a date or timestamp: in a day
  std::string name;           // as messages say it

  // Throws an Error, beginning with `column`, for a type that is not taken.
  static InputType of(const ArrowSchema &schema, const std::string &column);
};

// A column of a table, which has to outlive it.
class InputColumn {
 public:
  // Throws an Error for a type that is not taken, and for arrays that do not follow their type.
  InputColumn(const ArrowSchema &schema, const ArrowArray &array, std::string name);

  const std::string &name() const { return name_; }
  const InputType &type() const { return type_; }
  std::int64_t length() const { return outer_->length; }

  // Where the values of some rows stand: the same place again for values that a dictionary shares.
  // A row that has none is told by `nulls`, and stands at a place of no meaning. Gives whether there
  // is one. Throws an Error for a place that the dictionary does not have.
  bool locate(std::int64_t from, std::span<std::int64_t> places, std::uint8_t *nulls) const;

  // Values at those places, where any row has one.
  void numbers(std::span<const std::int64_t> places, std::int64_t *out) const;  // up to 64 bits
  void numbers(std::span<const std::int64_t> places, Int128 *out) const;        // up to 128
  bool is_wide() const;  // more than a signed number of 64 bits
  bool is_widest() const { return type_.storage == InputStorage::kInt256; }
  void texts(std::span<const std::int64_t> places, const std::uint8_t *nulls,
             std::string_view *out) const;

  // The number at a place as 256 bits, lowest word first.
  void number256(std::int64_t place, std::uint64_t (&words)[4]) const;

 private:
  void check(const ArrowArray &array, const InputType &type) const;
  [[noreturn]] void refuse(const std::string &what) const;
  std::string_view view_at(std::int64_t place) const;
  template <class Offset>
  std::string_view text_at(std::int64_t place) const;

  std::string name_;
  InputType type_;     // of the values
  InputType indices_;  // of a dictionary
  const ArrowArray *outer_;
  const ArrowArray *values_;
};

}  // namespace campotipo::records
