#include "rows/program.hpp"

#include <algorithm>
#include <cstring>

#include "files/failure.hpp"
#include "text/quote.hpp"
#include "text/scan.hpp"

namespace campotipo::tool {

namespace {

// The text of a field that was loaded from an empty cell.
std::string empty_text(const Field &field) {
  std::vector<unsigned char> record(field.offset + field.bytes);
  const char no_text[1 + scan::kPadding] = {};
  field.type->take(record.data() + field.offset, {no_text, 0}, field.params);
  return field_text(field, record.data());
}

}  // namespace

void Program::run(const unsigned char *record, Buffer &buffer) const {
  char *out = buffer.reserve(room_);
  for (const Step &step : steps_) {
    if (step.prefix_length == 1) {
      *out++ = literals_[step.prefix];
    } else if (step.prefix_length != 0) {
      std::memcpy(out, literals_.data() + step.prefix, step.prefix_length);
      out += step.prefix_length;
    }
    out = step.style == Style::kRaw ? step.put(out, record + step.offset, *step.params)
                                    : run_styled(step, record, out);
  }
  std::memcpy(out, suffix_.data(), suffix_.size());
  buffer.end(out + suffix_.size());
}

char *Program::run_styled(const Step &step, const unsigned char *record, char *out) const {
  if (step.style == Style::kHex) {
    const std::string digits = hex(record + step.offset, step.bytes);
    return std::copy(digits.begin(), digits.end(), out);
  }
  const bool json = step.style == Style::kJson || step.style == Style::kJsonOrNull;
  char *text = json ? out + 1 : out;
  char *end = step.style == Style::kShared ? run_shared(step, record, text)
                                           : step.put(text, record + step.offset, *step.params);
  const auto length = static_cast<std::size_t>(end - text);
  if (!json) {
    const bool quotes =
        scan::needs_quotes(text, length) || (length == 0 && step.style == Style::kCsvAlone);
    return quotes ? quote_csv(text, end) : end;
  }
  if (length == 0 && step.style == Style::kJsonOrNull) {
    std::memcpy(out, "null", 4);
    return out + 4;
  }
  *out = '"';
  if (scan::needs_escapes(text, length)) end = escape_json(text, end);
  *end = '"';
  return end + 1;
}

// No text where no field has a value.
char *Program::run_shared(const Step &step, const unsigned char *record, char *out) const {
  char *const start = out;
  bool empty = true;
  for (const Shared &shared : shared_[step.shared]) {
    const Field &field = *shared.field;
    if (&shared != shared_[step.shared].data()) {
      out = std::copy(field.join.begin(), field.join.end(), out);
    }
    char *text = out;
    out = field.type->put(out, record + field.offset, field.params);
    empty = empty && std::string_view(text, out) == shared.empty;
  }
  return empty ? start : out;
}

void Program::add_literal(Step &step, const std::string &prefix) {
  step.prefix = static_cast<std::uint32_t>(literals_.size());
  step.prefix_length = static_cast<std::uint32_t>(prefix.size());
  literals_ += prefix;
  room_ += prefix.size();
}

void Program::add(const Field &field, const std::string &prefix, Style style, std::size_t growth) {
  Step step;
  step.put = field.type->put;
  step.params = &field.params;
  step.offset = static_cast<std::uint32_t>(field.offset);
  step.bytes = static_cast<std::uint32_t>(field.bytes);
  step.style = style;
  add_literal(step, prefix);
  steps_.push_back(step);
  room_ += growth * (field.type->room(field.params) + 2) + 2 * field.bytes + scan::kPadding;
}

void Program::add_shared(const RecordType &type, const Column &column, const std::string &prefix,
                         Style style) {
  if (column.fields.size() == 1) {
    const Field &field = type.fields[column.fields[0]];
    const bool quoted = (field.type->traits & kText) != 0 || style == Style::kCsvAlone;
    return add(field, prefix, quoted ? style : Style::kRaw, 2);
  }
  std::vector<Shared> fields;
  std::size_t room = 0;
  for (const std::size_t place : column.fields) {
    const Field &field = type.fields[place];
    fields.push_back({&field, empty_text(field)});
    room += field.type->room(field.params) + field.join.size();
  }
  Step step;
  step.style = Style::kShared;
  step.shared = static_cast<std::uint32_t>(shared_.size());
  add_literal(step, prefix);
  steps_.push_back(step);
  shared_.push_back(std::move(fields));
  room_ += 2 * room + 2 + scan::kPadding;
}

std::vector<std::string> chosen_columns(const Layout &layout,
                                        const std::vector<std::string> &names) {
  if (names.empty()) return layout.columns;
  std::vector<std::string> chosen;
  const auto add = [&](const std::string &column) {
    if (std::find(chosen.begin(), chosen.end(), column) == chosen.end()) chosen.push_back(column);
  };
  for (const std::string &name : names) {
    bool found = false;
    for (const RecordType &type : layout.types) {
      for (const Field &field : type.fields) {
        const bool wanted = field.column == name || field.name == name || field.base == name ||
                            field.name.starts_with(name + ".") ||
                            field.base.starts_with(name + ".");
        if (wanted) add(field.column);
        found = found || wanted;
      }
    }
    if (!found) throw Failure(layout.file + ": no field or column is called \"" + name + "\"");
  }
  return chosen;
}

class CsvProgram {
 public:
  CsvProgram(const Layout &layout, const RecordType &type, bool hex) : type_(&type), hex_(hex) {
    if (layout.several()) before_ = csv_cell(type.name);
    first_ = !layout.several();
  }

  void add(const std::string &name, bool alone) {
    const auto &columns = type_->columns;
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Column &column) { return column.name == name; });
    separate();
    if (found == columns.end()) {
      if (hex_) before_ += ",";
      return;
    }
    program_.add_shared(*type_, *found, before_,
                        alone ? Program::Style::kCsvAlone : Program::Style::kCsv);
    before_.clear();
    if (!hex_) return;
    before_ = ",";
    for (const std::size_t place : found->fields) {
      program_.add(type_->fields[place], before_, Program::Style::kHex, 0);
      before_.clear();
    }
  }

  Program done(const std::string &line_end) {
    program_.suffix_ = before_ + line_end;
    program_.room_ += program_.suffix_.size();
    return std::move(program_);
  }

 private:
  void separate() {
    if (!first_) before_ += ",";
    first_ = false;
  }

  const RecordType *type_;
  bool hex_;
  bool first_ = true;
  std::string before_;
  Program program_;
};

std::vector<Program> csv_programs(const Layout &layout, const std::vector<std::string> &columns,
                                  bool hex, const std::string &line_end) {
  std::vector<Program> programs;
  const bool alone = columns.size() == 1 && !layout.several() && !hex;
  for (const RecordType &type : layout.types) {
    CsvProgram program(layout, type, hex);
    for (const std::string &column : columns) program.add(column, alone);
    programs.push_back(program.done(line_end));
  }
  return programs;
}

std::string csv_header(const Layout &layout, const std::vector<std::string> &columns, bool hex,
                       const std::string &line_end) {
  std::string row = layout.several() ? kKindColumn : "";
  for (const std::string &column : columns) {
    if (!row.empty()) row += ",";
    row += csv_cell(column);
    if (hex) row += "," + csv_cell(column + "_hex");
  }
  return row + line_end;
}

// Members are opened and closed by the difference between the path of one field and the next.
class JsonProgram {
 public:
  explicit JsonProgram(bool hex) : hex_(hex) {}

  void begin(const std::string &kind) {
    if (!kind.empty()) before_ = "{\"record\":" + json_string(kind);
    open_ = !kind.empty();
  }

  void add(const Field &field) {
    step_to(field.path);
    const unsigned traits = field.type->traits;
    program_.add(field, before_,
                 (traits & kJsonNumber) != 0 ? Program::Style::kRaw
                 : (traits & kNullable) != 0 ? Program::Style::kJsonOrNull
                                             : Program::Style::kJson,
                 6);
    before_.clear();
    if (!hex_) return;
    std::vector<PathStep> path = field.path;
    // A place in an array has no name for a second member beside it.
    if (path.back().index >= 0) return;
    path.back().key += "_hex";
    step_to(path);
    program_.add(field, before_ + "\"", Program::Style::kHex, 0);
    before_ = "\"";
  }

  Program done() {
    if (!open_) before_ += "{";
    close_to(0);
    program_.suffix_ = before_ + "}\n";
    program_.room_ += program_.suffix_.size();
    return std::move(program_);
  }

 private:
  static std::string opening(const PathStep &step) {
    return step.index < 0 ? "{" + json_string(step.key) + ":" : "[";
  }

  void close_to(std::size_t depth) {
    for (std::size_t i = path_.size(); i > depth + 1; --i) {
      before_ += path_[i - 1].index < 0 ? "}" : "]";
    }
  }

  void step_to(const std::vector<PathStep> &path) {
    std::size_t same = 0;
    while (same < path.size() && same < path_.size() && path[same] == path_[same]) ++same;
    if (path_.empty() && !open_) {
      before_ += opening(path[0]);
    } else {
      close_to(same);
      before_ += ",";
      if (path[same].index < 0) before_ += json_string(path[same].key) + ":";
    }
    for (std::size_t i = same + 1; i < path.size(); ++i) before_ += opening(path[i]);
    open_ = true;
    path_ = path;
  }

  bool hex_;
  bool open_ = false;
  std::string before_;
  std::vector<PathStep> path_;
  Program program_;
};

std::vector<Program> json_programs(const Layout &layout, const std::vector<std::string> &columns,
                                   bool hex) {
  std::vector<Program> programs;
  for (const RecordType &type : layout.types) {
    JsonProgram program(hex);
    program.begin(layout.several() ? type.name : "");
    for (const Field &field : type.fields) {
      if (std::find(columns.begin(), columns.end(), field.column) != columns.end()) {
        program.add(field);
      }
    }
    programs.push_back(program.done());
  }
  return programs;
}

}  // namespace campotipo::tool
