#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "columns/arrow_input.hpp"
#include "columns/encode_numbers.hpp"
#include "layout/layout.hpp"
#include "rows/made_records.hpp"

namespace campotipo::records {

// A value that its field does not hold whole.
struct EncodeLoss {
  std::size_t row = 0;     // in the block
  std::size_t column = 0;  // in the table
  const char *what = nullptr;
  std::string value;
};

// Records of a block, one behind the other, whose field is still of zeros.
struct EncodeRows {
  std::int64_t from = 0;  // first row in the column
  std::size_t count = 0;
  unsigned char *records = nullptr;
  std::size_t stride = 0;
};

// What becomes of the rows of a block beside their bytes.
struct EncodeNotes {
  std::vector<EncodeLoss> lost;
  std::vector<MadeRecords::Hole> holes;  // `record` is the row
};

// Puts the values of a column into a field, with what is lost as rows of texts lose it.
class FieldEncoder {
 public:
  // number: of the column in the table; empty: the stored form of no value; hole: the rules by which
  // another value is filled in later, or null. Throws an Error for a type that the field never holds.
  FieldEncoder(const Field &field, InputColumn column, std::size_t number, std::string empty,
               const FieldRules *hole);

  void run(const EncodeRows &rows, EncodeNotes &notes);
  const std::string &name() const { return column_.name(); }

 private:
  // What a day or time became: they come in runs, and few of them are different.
  struct Stored {
    std::int64_t value = 0;
    bool known = false;
    const char *what = nullptr;
    std::string bytes;
  };

  bool is_number() const;
  void put_empty(const EncodeRows &rows, std::size_t row, EncodeNotes &notes) const;
  void run_texts(const EncodeRows &rows, EncodeNotes &notes);
  void run_numbers(const EncodeRows &rows, EncodeNotes &notes);
  void load_numbers();
  std::string number_text(std::size_t row) const;
  void run_moments(const EncodeRows &rows, EncodeNotes &notes);
  void store_moment(Stored &stored, std::int64_t value) const;
  const char *moment_text(std::int64_t value, std::string &text) const;
  const char *take(unsigned char *field, std::string_view text);

  const Field *field_;
  InputColumn column_;
  std::size_t number_;
  std::string empty_;
  const FieldRules *hole_;
  bool empty_is_zeros_;
  StoreNumbers<std::int64_t> store64_ = nullptr;
  StoreNumbers<Int128> store128_ = nullptr;
  std::vector<std::int64_t> places_;
  std::vector<std::uint8_t> marks_;
  std::vector<std::int64_t> narrow_;
  std::vector<Int128> wide_;
  std::vector<std::string_view> texts_;
  std::vector<char> padded_;
  std::vector<Stored> moments_;
};

}  // namespace campotipo::records
