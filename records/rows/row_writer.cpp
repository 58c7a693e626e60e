#include "rows/row_writer.hpp"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "errors/error.hpp"
#include "text/ascii.hpp"
#include "text/nearest.hpp"
#include "text/quote.hpp"
#include "text/scan.hpp"

namespace campotipo::records {

namespace {

bool is_json(RowWriter::Style style) {
  return style == RowWriter::Style::kJson || style == RowWriter::Style::kJsonOrNull ||
         style == RowWriter::Style::kNumberOrNull;
}

// Whether JSON takes it for a number: of what a field shows, bytes that are none may be digits too.
bool is_number(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view rest = text.substr(point);
  return !whole.empty() && (whole[0] != '0' || whole.size() == 1) && ascii::all_digits(whole) &&
         (rest.empty() || (rest.size() > 1 && ascii::all_digits(rest.substr(1))));
}

}  // namespace

namespace {

// Whether the cells of a row of CSV hold nothing but what needs no quotes: its commas are those
// between them. Sixteen bytes behind its end may be written.
bool is_plain_row(const char *row, char *end, std::size_t commas) {
  const __m128i none = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i *>(end), none);
  __m128i other = none;
  __m128i count = none;
  for (; row < end; row += 16) {
    const __m128i bytes = scan::load(row);
    other = _mm_or_si128(
        other, _mm_or_si128(scan::equal(bytes, '"'),
                            _mm_or_si128(scan::equal(bytes, '\n'), scan::equal(bytes, '\r'))));
    const __m128i comma = _mm_and_si128(scan::equal(bytes, ','), _mm_set1_epi8(1));
    count = _mm_add_epi64(count, _mm_sad_epu8(comma, none));
  }
  const __m128i both = _mm_add_epi64(count, _mm_unpackhi_epi64(count, count));
  return scan::mask(other) == 0 && static_cast<std::size_t>(_mm_cvtsi128_si64(both)) == commas;
}

}  // namespace

char *RowWriter::put_prefix(const Step &step, char *out) const {
  if (step.prefix_length == 1) {
    *out = literals_[step.prefix];
    return out + 1;
  }
  std::memcpy(out, literals_.data() + step.prefix, step.prefix_length);
  return out + step.prefix_length;
}

void RowWriter::run(const unsigned char *record, Buffer &buffer) const {
  char *const begin = buffer.reserve(room_);
  char *out = begin;
  if (plain_) {
    for (const Step &step : steps_) {
      out = put_prefix(step, out);
      out = step.put(out, record + step.offset, *step.params);
    }
    if (!is_plain_row(begin, out, commas_)) out = run_quoted(record, begin);
  } else {
    out = run_quoted(record, begin);
  }
  const std::string_view rest = std::string_view(literals_).substr(told_);
  buffer.end(std::copy(rest.begin(), rest.end(), out));
}

char *RowWriter::run_quoted(const unsigned char *record, char *out) const {
  for (const Step &step : steps_) {
    out = put_prefix(step, out);
    out = step.style == Style::kRaw ? step.put(out, record + step.offset, *step.params)
                                    : run_styled(step, record, out);
  }
  return out;
}

char *RowWriter::run_styled(const Step &step, const unsigned char *record, char *out) const {
  const auto null = [out] {
    std::memcpy(out, "null", 4);
    return out + 4;
  };
  if (step.style == Style::kHex) {
    const std::string digits = ascii::hex(record + step.offset, step.bytes);
    return std::copy(digits.begin(), digits.end(), out);
  }
  const bool json = is_json(step.style);
  if (step.shared != 0 && is_empty(step, record, out)) {
    if (step.put != nullptr) return null();
    return step.style == Style::kCsvAlone ? quote_csv(out, out) : out;
  }
  char *text = json ? out + 1 : out;
  char *end = step.put == nullptr ? run_shared(step, record, text)
                                  : step.put(text, record + step.offset, *step.params);
  const auto length = static_cast<std::size_t>(end - text);
  if (step.style == Style::kNumber) return end;
  if (!json) {
    const bool quotes =
        scan::needs_quotes(text, length) || (length == 0 && step.style == Style::kCsvAlone);
    return quotes ? quote_csv(text, end) : end;
  }
  if (length == 0 && step.style != Style::kJson) return null();
  if (step.style == Style::kNumberOrNull && is_number({text, length})) {
    std::memmove(out, text, length);
    return out + length;
  }
  *out = '"';
  if (scan::needs_escapes(text, length)) end = escape_json(text, end);
  *end = '"';
  return end + 1;
}

char *RowWriter::run_shared(const Step &step, const unsigned char *record, char *out) const {
  const auto &fields = shared_[step.shared - 1];
  for (const Field *field : fields) {
    if (field != fields[0]) out = std::copy(field->join.begin(), field->join.end(), out);
    out = field->type->put(out, record + field->offset, field->params);
  }
  return out;
}

// Whether no field of the column has a value.
bool RowWriter::is_empty(const Step &step, const unsigned char *record, char *scratch) const {
  const auto &fields = shared_[step.shared - 1];
  return std::all_of(fields.begin(), fields.end(), [&](const Field *field) {
    const char *end = field->type->put(scratch, record + field->offset, field->params);
    return field->empty == std::string_view(scratch, end);
  });
}

void RowWriter::text(std::string_view text) {
  literals_ += text;
  room_ += text.size();
}

void RowWriter::add(Step step, std::size_t room) {
  step.prefix = static_cast<std::uint32_t>(told_);
  step.prefix_length = static_cast<std::uint32_t>(literals_.size() - told_);
  const std::string_view prefix = std::string_view(literals_).substr(told_);
  commas_ += static_cast<std::size_t>(std::count(prefix.begin(), prefix.end(), ','));
  plain_ = plain_ && step.style <= Style::kCsv && step.shared == 0 &&
           prefix.find_first_of("\"\r\n") == std::string_view::npos;
  told_ = literals_.size();
  steps_.push_back(step);
  // Quotes of CSV double a text, escapes of JSON are up to six bytes long.
  const bool json = is_json(step.style);
  room_ += (json ? 6 : 2) * (room + 2) + scan::kPadding;
}

RowWriter::Step RowWriter::step_of(const Field &field, Style style) const {
  Step step;
  step.put = field.type->put;
  step.params = &field.params;
  step.offset = static_cast<std::uint32_t>(field.offset);
  step.bytes = static_cast<std::uint32_t>(field.bytes);
  step.style = style;
  return step;
}

void RowWriter::value(const Field &field, Style style) {
  add(step_of(field, style), style == Style::kHex ? field.bytes : field.type->room(field.params));
}

// Gives the room that the texts of the column take together.
std::size_t RowWriter::share(Step &step, const RecordType &type, const Column &column) {
  std::vector<const Field *> fields;
  std::size_t room = 0;
  for (const std::size_t place : column.fields) {
    const Field &field = type.fields[place];
    fields.push_back(&field);
    room += field.type->room(field.params) + field.join.size();
  }
  shared_.push_back(std::move(fields));
  step.shared = static_cast<std::uint32_t>(shared_.size());
  return room;
}

void RowWriter::member(const RecordType &type, const Column &column, const Field &field,
                       Style style) {
  if (column.fields.size() == 1) return value(field, style);
  Step step = step_of(field, style == Style::kRaw ? Style::kNumber : style);
  const std::size_t room = share(step, type, column);
  add(step, room);
}

void RowWriter::cell(const RecordType &type, const Column &column, Style style) {
  if (column.fields.size() == 1) {
    const Field &field = type.fields[column.fields[0]];
    const bool quoted = (field.type->traits & (kText | kShown)) != 0 || style == Style::kCsvAlone;
    return value(field, quoted ? style : Style::kRaw);
  }
  Step step;
  step.style = style;
  const std::size_t room = share(step, type, column);
  add(step, room);
}

namespace {

// The columns that each name calls: that of a column, of a field with or without its places in
// arrays, or of a group around it.
std::map<std::string, std::vector<const std::string *>> columns_by_name(const Layout &layout,
                                                                        const RecordType *kind) {
  std::map<std::string, std::vector<const std::string *>> known;
  const auto add = [&](const std::string &name, const std::string &column) {
    auto &columns = known[name];
    if (columns.empty() || columns.back() != &column) columns.push_back(&column);
  };
  for (const RecordType &type : layout.types) {
    for (const Field &field : type.fields) {
      if (kind != nullptr && &type != kind) continue;
      add(field.column, field.column);
      for (std::size_t depth = 1; depth <= field.path.size(); ++depth) {
        const auto begin = field.path.begin();
        const std::vector<PathStep> path(begin, begin + static_cast<std::ptrdiff_t>(depth));
        for (const bool places : {true, false}) add(path_name(path, places), field.column);
      }
    }
  }
  return known;
}

}  // namespace

std::vector<std::string> chosen_columns(const Layout &layout, const std::vector<std::string> &names,
                                        const RecordType *kind) {
  std::vector<std::string> chosen;
  if (names.empty() && kind == nullptr) return layout.columns;
  if (names.empty()) {
    for (const Column &column : kind->columns) chosen.push_back(column.name);
    return chosen;
  }
  const auto known = columns_by_name(layout, kind);
  std::set<std::string_view> taken;
  for (const std::string &name : names) {
    const auto found = known.find(name);
    if (found == known.end()) {
      std::vector<std::string> all;
      for (const auto &[each, columns] : known) all.emplace_back(each);
      const std::string near = nearest(name, all);
      throw Error(ErrorCode::kArgument, layout.file + ": no field or column is called \"" + name +
                                            "\"" +
                                            (near.empty() ? "" : ", expected \"" + near + "\"?"));
    }
    for (const std::string *column : found->second) {
      if (taken.insert(*column).second) chosen.push_back(*column);
    }
  }
  return chosen;
}

namespace {

RowWriter csv_writer(const RecordType &type, const std::vector<std::string> &columns, bool hex,
                     bool tells_kind) {
  std::map<std::string_view, const Column *> known;
  for (const Column &column : type.columns) known.emplace(column.name, &column);
  const bool alone = columns.size() == 1 && !tells_kind && !hex;
  RowWriter writer;
  const char *separator = "";
  const auto separate = [&] {
    writer.text(separator);
    separator = ",";
  };
  if (tells_kind) {
    separate();
    writer.text(csv_cell(type.name));
  }
  for (const std::string &name : columns) {
    const auto found = known.find(name);
    const Column *column = found == known.end() ? nullptr : found->second;
    separate();
    if (column != nullptr) {
      writer.cell(type, *column, alone ? RowWriter::Style::kCsvAlone : RowWriter::Style::kCsv);
    }
    if (!hex) continue;
    separate();
    if (column == nullptr) continue;
    for (const std::size_t place : column->fields) {
      writer.value(type.fields[place], RowWriter::Style::kHex);
    }
  }
  return writer;
}

}  // namespace

std::vector<RowWriter> csv_writers(const Layout &layout, const std::vector<std::string> &columns,
                                   bool hex, const std::string &line_end, const RecordType *kind) {
  std::vector<RowWriter> writers;
  for (const RecordType &type : layout.types) {
    writers.push_back(csv_writer(type, columns, hex, layout.several() && kind == nullptr));
    writers.back().text(line_end);
  }
  return writers;
}

std::string csv_header(const Layout &layout, const std::vector<std::string> &columns, bool hex,
                       const std::string &line_end, const RecordType *kind) {
  std::string row = layout.several() && kind == nullptr ? kKindColumn : "";
  for (const std::string &column : columns) {
    if (!row.empty()) row += ",";
    row += csv_cell(column);
    if (hex) row += "," + csv_cell(column + std::string(kHexEnd));
  }
  return row + line_end;
}

namespace {

// Members are opened and closed by the difference between the path of one field and the next.
class JsonWriter {
 public:
  // kind: none where it is the only one.
  JsonWriter(const std::string &kind, bool hex) : hex_(hex), open_(!kind.empty()) {
    if (open_) writer_.text("{" + json_string(kKindColumn) + ":" + json_string(kind));
  }

  void add(const RecordType &type, const Column &column, const Field &field) {
    step_to(field.path);
    writer_.member(type, column, field, style_of(field));
    // A place in an array has no name for a second member beside it.
    if (!hex_ || field.path.back().index >= 0) return;
    std::vector<PathStep> path = field.path;
    path.back().key += kHexEnd;
    step_to(path);
    writer_.text("\"");
    writer_.value(field, RowWriter::Style::kHex);
    writer_.text("\"");
  }

  RowWriter done() {
    if (!open_) writer_.text("{");
    close_to(0);
    writer_.text("}\n");
    return std::move(writer_);
  }

 private:
  static RowWriter::Style style_of(const Field &field) {
    const unsigned traits = field.type->traits;
    const bool nullable = (traits & kNullable) != 0;
    if ((traits & kJsonNumber) == 0 || (nullable && field.params.n > kJsonDigits)) {
      return nullable ? RowWriter::Style::kJsonOrNull : RowWriter::Style::kJson;
    }
    return nullable ? RowWriter::Style::kNumberOrNull : RowWriter::Style::kRaw;
  }

  void open(const PathStep &step) {
    writer_.text(step.index < 0 ? "{" + json_string(step.key) + ":" : "[");
  }

  void close_to(std::size_t depth) {
    for (std::size_t i = path_.size(); i > depth + 1; --i) {
      writer_.text(path_[i - 1].index < 0 ? "}" : "]");
    }
  }

  void step_to(const std::vector<PathStep> &path) {
    std::size_t same = 0;
    while (same < path.size() && same < path_.size() && path[same] == path_[same]) ++same;
    if (path_.empty() && !open_) {
      open(path[0]);
    } else {
      close_to(same);
      writer_.text(",");
      if (path[same].index < 0) writer_.text(json_string(path[same].key) + ":");
    }
    for (std::size_t i = same + 1; i < path.size(); ++i) open(path[i]);
    open_ = true;
    path_ = path;
  }

  bool hex_;
  bool open_;
  std::vector<PathStep> path_;
  RowWriter writer_;
};

}  // namespace

std::vector<RowWriter> json_writers(const Layout &layout, const std::vector<std::string> &columns,
                                    bool hex, const RecordType *kind) {
  const std::set<std::string_view> chosen(columns.begin(), columns.end());
  std::vector<RowWriter> writers;
  for (const RecordType &type : layout.types) {
    JsonWriter writer(layout.several() && kind == nullptr ? type.name : "", hex);
    std::map<std::string_view, const Column *> known;
    for (const Column &column : type.columns) known.emplace(column.name, &column);
    for (const Field &field : type.fields) {
      if (chosen.contains(field.column)) writer.add(type, *known.at(field.column), field);
    }
    writers.push_back(writer.done());
  }
  return writers;
}

}  // namespace campotipo::records
