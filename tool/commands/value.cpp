#include <algorithm>
#include <memory>
#include <sstream>

#include "commands/commands.hpp"
#include "files/failure.hpp"
#include "layout/layout.hpp"
#include "layout/reader.hpp"
#include "terminal/output.hpp"
#include "text/quote.hpp"
#include "text/scan.hpp"

namespace campotipo::tool {

namespace {

constexpr const char *kShowExample =
    "Examples:\n"
    "  campotipo show DATAC 9FD18F\n"
    "  campotipo show BIN4 E2040000 --set decimals=2\n"
    "  campotipo show ZBTFIELD B390 --set 'bits=[3,5,4]' --set 'order=\"big\"'";
constexpr const char *kMakeExample =
    "Examples:\n"
    "  campotipo make CODALF12 BANCO-001\n"
    "  campotipo make BIN4 12.50 --set decimals=2";

struct Request {
  std::string type;
  std::string value;
  std::vector<std::string> settings;
  bool strict = false;
};

std::vector<unsigned char> bytes_of(const std::string &digits) {
  std::vector<unsigned char> bytes;
  std::string pair;
  for (const char c : digits) {
    if (c == ' ' || c == ':') continue;
    if (std::string_view("0123456789abcdefABCDEF").find(c) == std::string_view::npos) {
      throw Failure("\"" + digits + "\": expected bytes in hexadecimal digits");
    }
    pair += c;
    if (pair.size() < 2) continue;
    bytes.push_back(static_cast<unsigned char>(std::stoi(pair, nullptr, 16)));
    pair.clear();
  }
  if (!pair.empty() || bytes.empty()) {
    throw Failure("\"" + digits + "\": expected pairs of hexadecimal digits");
  }
  return bytes;
}

bool is_set(const Request &request, const std::string &key) {
  for (const std::string &setting : request.settings) {
    if (setting.starts_with(key + "=") || setting.starts_with(key + " ")) return true;
  }
  return false;
}

// One field as a layout of its own, so that every key of a layout file can be told. A size that is
// not told is that of the value.
Layout layout_of(const Request &request, std::size_t bytes, std::size_t characters) {
  std::string toml =
      "name = \"value\"\n[[field]]\nname = \"value\"\ntype = " + json_string(request.type) + "\n";
  const FieldType *type = field_type(request.type);
  if (type != nullptr && (type->keys & kPositions) != 0 && !is_set(request, "positions")) {
    toml += "positions = " + std::to_string(std::max<std::size_t>(1, characters)) + "\n";
  } else if (type != nullptr && type->bytes == 0 && (type->keys & kBytes) != 0 &&
             !is_set(request, "bytes")) {
    toml += "bytes = " + std::to_string(std::max<std::size_t>(1, bytes)) + "\n";
  }
  for (const std::string &setting : request.settings) toml += setting + "\n";
  return parse_layout(toml, "value");
}

std::string label(const Layout &layout, const Field &field) {
  return layout.types[0].fields.size() == 1 ? "" : field.path.back().key + ": ";
}

void write_values(const Layout &layout, const unsigned char *record, Output &output) {
  for (const Field &field : layout.types[0].fields) {
    const bool percent = std::string_view(field.type->family) == "percent";
    output.write(label(layout, field) + printable(field_text(field, record)) +
                 (percent ? "%\n" : "\n"));
  }
}

int show(const Request &request) {
  const auto bytes = bytes_of(request.value);
  const Layout layout = layout_of(request, bytes.size(), bytes.size() * 8 / 6);
  const RecordType &type = layout.types[0];
  if (bytes.size() != type.bytes) {
    throw Failure(request.type + ": " + std::to_string(bytes.size()) + " bytes, expected " +
                  std::to_string(type.bytes));
  }
  Output output("");
  write_values(layout, bytes.data(), output);
  output.commit();
  bool found = false;
  for (const Field &field : type.fields) {
    const char *fault = field_fault(field, bytes.data());
    if (fault == nullptr) continue;
    tell("not well formed: " + label(layout, field) + fault);
    found = true;
  }
  return found && request.strict ? kFound : kGood;
}

// The parts of a bit area stand in one text, with blanks between them.
std::vector<std::string> parts_of(const std::string &text, std::size_t count) {
  if (count == 1) return {text};
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; in >> part;) parts.push_back(part);
  if (parts.size() != count) {
    throw Failure("\"" + text + "\": expected " + std::to_string(count) +
                  " numbers with blanks between them");
  }
  return parts;
}

int make(const Request &request) {
  const Layout layout = layout_of(request, request.value.size(), request.value.size());
  const RecordType &type = layout.types[0];
  const auto parts = parts_of(request.value, type.fields.size());
  std::vector<unsigned char> record(type.bytes);
  std::vector<std::string> lost;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const Field &field = type.fields[i];
    std::string text = parts[i];
    text.resize(parts[i].size() + 1 + scan::kPadding);
    const char *what = field.type->take(record.data() + field.offset,
                                        {text.data(), parts[i].size()}, field.params);
    if (what == nullptr && field.check != nullptr && !holds(*field.check, parts[i])) {
      what = field.check->fault;
    }
    if (what != nullptr) {
      lost.push_back("\"" + parts[i] + "\": " + what + "; stored: \"" +
                     printable(field_text(field, record.data())) + "\"");
    }
  }
  Output output("");
  output.write(hex(record.data(), record.size()) + "\n");
  output.commit();
  for (const std::string &message : lost) tell(message);
  return lost.empty() || !request.strict ? kGood : kFound;
}

void add(CLI::App &app, Action &action, const char *name, const char *about, const char *value,
         const char *example, int (*run)(const Request &)) {
  CLI::App *command = app.add_subcommand(name, about);
  auto request = std::make_shared<Request>();
  command->add_option("TYPE", request->type, "A field type, as campotipo types lists them")
      ->required();
  command->add_option(value, request->value, "The value")->required();
  command
      ->add_option("--set", request->settings,
                   "A key of a layout file for the field, as in decimals=2")
      ->take_all()
      ->allow_extra_args(false);
  command->add_flag("--strict", request->strict, "Status 1 for a value that is told to be bad");
  command->footer(example);
  command->callback([&action, request, run] { action = [request, run] { return run(*request); }; });
}

}  // namespace

void add_show(CLI::App &app, Action &action) {
  add(app, action, "show", "Text of a stored value, and what is wrong with it", "HEX", kShowExample,
      show);
}

void add_make(CLI::App &app, Action &action) {
  add(app, action, "make", "Stored form of a text, and what of it did not survive", "TEXT",
      kMakeExample, make);
}

}  // namespace campotipo::tool
