#include "rows.hpp"

#include <array>
#include <cstring>
#include <string_view>
#include <vector>

#include "objects.hpp"
#include "streams.hpp"

namespace campotipo::python {

namespace {

__extension__ typedef unsigned __int128 uint128;

constexpr int kDaysTo1970 = 719163;  // of date.toordinal()

struct Column {
  Ref name;
  enum Form { kBool, kInt32, kInt64, kText, kDate, kTime32, kTime64, kDecimal } form = kText;
  int words = 0;  // of a decimal, of 64 bits
  int scale = 0;
};

struct Rows {
  std::unique_ptr<Chain> chain;
  std::vector<Column> columns;
  ArrowArray batch = {};
  std::int64_t at = 0;
  bool busy = false;
  Ref date, time, decimal;

  ~Rows() {
    if (batch.release != nullptr) batch.release(&batch);
  }
};

bool column_of(const ArrowSchema &schema, Column &out) {
  const std::string_view format = schema.format;
  out.name = Ref(text_of(schema.name));
  if (format == "b") out.form = Column::kBool;
  if (format == "i") out.form = Column::kInt32;
  if (format == "l") out.form = Column::kInt64;
  if (format == "tdD") out.form = Column::kDate;
  if (format == "tts") out.form = Column::kTime32;
  if (format == "ttn") out.form = Column::kTime64;
  if (format.starts_with("d:")) {
    out.form = Column::kDecimal;
    out.scale = std::atoi(std::string(format.substr(format.find(',') + 1)).c_str());
    out.words = format.ends_with(",256") ? 4 : 2;
  }
  return static_cast<bool>(out.name);
}

// The digits of a signed number of some words, the lowest first, with its point.
std::string decimal_text(const std::uint64_t *words, int count, int scale) {
  std::array<std::uint64_t, 4> left = {};
  std::memcpy(left.data(), words, sizeof(std::uint64_t) * static_cast<std::size_t>(count));
  const bool negative = left[static_cast<std::size_t>(count) - 1] >> 63 != 0;
  if (negative) {
    bool carry = true;
    for (int i = 0; i < count; ++i) {
      std::uint64_t &word = left[static_cast<std::size_t>(i)];
      word = ~word + (carry ? 1 : 0);
      carry = carry && word == 0;
    }
  }
  std::string digits;
  while (left != std::array<std::uint64_t, 4>{} ||
         digits.size() <= static_cast<std::size_t>(scale)) {
    uint128 rest = 0;
    for (int i = count; i-- > 0;) {
      rest = rest << 64 | left[static_cast<std::size_t>(i)];
      left[static_cast<std::size_t>(i)] = static_cast<std::uint64_t>(rest / 10);
      rest %= 10;
    }
    digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest)));
  }
  if (scale > 0) digits.insert(digits.size() - static_cast<std::size_t>(scale), 1, '.');
  return negative ? "-" + digits : digits;
}

PyObject *time_of(const Rows &rows, std::int64_t second) {
  return PyObject_CallFunction(rows.time.get(), "iii", static_cast<int>(second / 3600),
                               static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
}

template <class Number>
Number number_at(const ArrowArray &array, std::int64_t at) {
  return static_cast<const Number *>(array.buffers[1])[at];
}

PyObject *value_of(const Rows &rows, const Column &column, const ArrowArray &array,
                   std::int64_t at) {
  const auto *validity = static_cast<const std::uint8_t *>(array.buffers[0]);
  if (validity != nullptr && (validity[at / 8] >> at % 8 & 1) == 0) Py_RETURN_NONE;
  switch (column.form) {
    case Column::kBool:
      return PyBool_FromLong(number_at<std::uint8_t>(array, at / 8) >> at % 8 & 1);
    case Column::kInt32:
      return PyLong_FromLong(number_at<std::int32_t>(array, at));
    case Column::kInt64:
      return PyLong_FromLongLong(number_at<std::int64_t>(array, at));
    case Column::kDate:
      return PyObject_CallMethod(rows.date.get(), "fromordinal", "i",
                                 number_at<std::int32_t>(array, at) + kDaysTo1970);
    case Column::kTime32:
      return time_of(rows, number_at<std::int32_t>(array, at));
    case Column::kTime64:
      return time_of(rows, number_at<std::int64_t>(array, at) / 1000000000);
    case Column::kDecimal: {
      const auto *words = static_cast<const std::uint64_t *>(array.buffers[1]);
      const std::string text = decimal_text(words + at * column.words, column.words, column.scale);
      return PyObject_CallFunction(rows.decimal.get(), "s", text.c_str());
    }
    case Column::kText: {
      const std::int32_t begin = number_at<std::int32_t>(array, at);
      const std::int32_t end = number_at<std::int32_t>(array, at + 1);
      return PyUnicode_DecodeUTF8(static_cast<const char *>(array.buffers[2]) + begin, end - begin,
                                  "replace");
    }
  }
  Py_RETURN_NONE;
}

// The next batch; false at the end, and with an exception.
bool advance(Rows &rows) {
  if (rows.batch.release != nullptr) rows.batch.release(&rows.batch);
  rows.at = 0;
  rows.batch = {};
  return next_batch(*rows.chain, rows.busy, &rows.batch);
}

PyObject *next_row(Rows &rows) {
  if (rows.busy) return refuse("these records are being read by another thread");
  while (rows.at >= rows.batch.length) {
    if (!advance(rows)) return nullptr;
  }
  Ref row(PyDict_New());
  for (std::size_t i = 0; row && i < rows.columns.size(); ++i) {
    const ArrowArray &array = *rows.batch.children[i];
    const Ref value(value_of(rows, rows.columns[i], array, rows.at));
    if (!value || PyDict_SetItem(row.get(), rows.columns[i].name.get(), value.get()) != 0) {
      return nullptr;
    }
  }
  ++rows.at;
  return row.release();
}

bool fill(Rows &rows, PyObject *arguments) {
  rows.chain = chain_of(arguments);
  if (rows.chain == nullptr) return false;
  ArrowSchema schema = {};
  if (rows.chain->schema(&schema) != 0) {
    raise(rows.chain->error());
    return false;
  }
  bool good = true;
  for (std::int64_t i = 0; good && i < schema.n_children; ++i) {
    Column column;
    good = column_of(*schema.children[i], column);
    rows.columns.push_back(std::move(column));
  }
  schema.release(&schema);
  const Ref datetime(PyImport_ImportModule("datetime"));
  const Ref decimal(PyImport_ImportModule("decimal"));
  if (!good || !datetime || !decimal) return false;
  rows.date = Ref(PyObject_GetAttrString(datetime.get(), "date"));
  rows.time = Ref(PyObject_GetAttrString(datetime.get(), "time"));
  rows.decimal = Ref(PyObject_GetAttrString(decimal.get(), "Decimal"));
  return rows.date && rows.time && rows.decimal;
}

PyObject *iternext(PyObject *self) noexcept {
  try {
    return next_row(inside_of<Rows>(self));
  } catch (const std::bad_alloc &) {
    return PyErr_NoMemory();
  }
}

}  // namespace

PyObject *make_rows_type(PyObject *module) {
  static PyType_Slot slots[] = {
      {Py_tp_doc, const_cast<char *>("Records as dicts, in their order.")},
      {Py_tp_dealloc, slot(destroy<Rows>)},
      {Py_tp_iter, slot(PyObject_SelfIter)},
      {Py_tp_iternext, slot(iternext)},
      {0, nullptr}};
  static PyType_Spec spec = {"campotipo._core.Rows", sizeof(Holder<Rows>), 0,
                             Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};
  return PyType_FromModuleAndSpec(module, &spec, nullptr);
}

PyObject *rows(PyObject *type, PyObject *arguments) {
  auto made = std::make_unique<Rows>();
  if (!fill(*made, arguments)) return nullptr;
  return hold(type, std::move(made));
}

}  // namespace campotipo::python
