#include <algorithm>
#include <memory>
#include <sstream>

#include "commands/commands.hpp"
#include "errors/error.hpp"
#include "layout/layout.hpp"
#include "layout/reader.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/tell.hpp"
#include "text/ascii.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

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
  bool lossy = false;
};

std::vector<unsigned char> bytes_of(const std::string &told) {
  std::string digits;
  for (const char c : told) {
    if (c != ' ' && c != ':') digits += c;
  }
  std::string bytes;
  if (!ascii::from_hex(digits, bytes) || bytes.empty()) {
    throw Failure("\"" + told + "\": expected bytes as pairs of hexadecimal digits");
  }
  return {bytes.begin(), bytes.end()};
}

bool is_set(const Request &request, const std::string &key) {
  for (const std::string &setting : request.settings) {
    if (setting.starts_with(key + "=") || setting.starts_with(key + " ")) return true;
  }
  return false;
}

// Bytes of a stored number that hold its sign alone.
std::size_t signs_in(const std::string &text) {
  return text.find_first_of("+-") == std::string::npos ? 0 : 1;
}

// One field as a layout of its own, so that every key of a layout file can be told. A size that is
// not told is that of the value.
Layout layout_of(const Request &request, std::size_t bytes, std::size_t characters,
                 std::size_t digits) {
  std::string toml =
      "name = \"value\"\n[[field]]\nname = \"value\"\ntype = " + json_string(request.type) + "\n";
  const FieldType *type = field_type(request.type);
  if (type != nullptr && (type->keys & kPositions) != 0 && !is_set(request, "positions")) {
    toml += "positions = " + std::to_string(std::max<std::size_t>(1, characters)) + "\n";
  } else if (type != nullptr && type->bytes == 0 && (type->keys & kBytes) != 0 &&
             !is_set(request, "bytes")) {
    toml += "bytes = " + std::to_string(std::max<std::size_t>(1, bytes)) + "\n";
  } else if (type != nullptr && (type->keys & kDigits) != 0 && !is_set(request, "digits")) {
    toml += "digits = " + std::to_string(std::max<std::size_t>(1, digits)) + "\n";
  }
  for (const std::string &setting : request.settings) toml += setting + "\n";
  try {
    return parse_layout(toml, request.type);
  } catch (const Error &error) {
    // Location and name are those of a text that nobody has seen.
    constexpr std::string_view kField = "field \"value\": ";
    const std::string &reason = error.reason;
    throw Failure(request.type + ": " +
                  (reason.starts_with(kField) ? reason.substr(kField.size()) : reason));
  }
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
  const std::string text(bytes.begin(), bytes.end());
  const Layout layout =
      layout_of(request, bytes.size(), bytes.size() * 8 / 6, text.size() - signs_in(text));
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

// Bytes of which a part of the text is missing are not written, unless that is asked for; those with
// check digits that fail are.
int make(const Request &request) {
  const std::string &text = request.value;
  const auto digits =
      static_cast<std::size_t>(std::count_if(text.begin(), text.end(), ascii::is_digit));
  const Layout layout = layout_of(request, text.size(), text.size(), digits);
  const RecordType &type = layout.types[0];
  const auto parts = parts_of(request.value, type.fields.size());
  std::vector<unsigned char> record(type.bytes);
  bool whole = true;
  bool holding = true;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const Field &field = type.fields[i];
    const char *lost =
        field.type->take(record.data() + field.offset, PaddedString(parts[i]).text(), field.params);
    if (lost != nullptr) {
      tell("\"" + parts[i] + "\": " + lost + "; " + (request.lossy ? "stored: \"" : "left: \"") +
           printable(field_text(field, record.data())) + "\"");
    } else if (field.check != nullptr && !holds(*field.check, parts[i])) {
      tell("\"" + parts[i] + "\": " + field.check->fault);
      holding = false;
    }
    whole = whole && lost == nullptr;
  }
  if (!whole && !request.lossy) {
    tell("nothing is written (--lossy writes what is left)");
    return kFound;
  }
  Output output("");
  output.write(ascii::hex(record.data(), record.size()) + "\n");
  output.commit();
  return holding ? kGood : kFound;
}

CLI::App *add(CLI::App &app, Action &action, const char *name, const char *about, const char *value,
              const std::shared_ptr<Request> &request, int (*run)(const Request &)) {
  CLI::App *command = app.add_subcommand(name, about);
  command->add_option("TYPE", request->type, "A field type, as campotipo types lists them")
      ->required();
  command->add_option(value, request->value, "The value")->required();
  command
      ->add_option("--set", request->settings,
                   "A key of a layout file for the field, as in decimals=2")
      ->take_all()
      ->allow_extra_args(false);
  command->callback([&action, request, run] { action = [request, run] { return run(*request); }; });
  return command;
}

}  // namespace

void add_show(CLI::App &app, Action &action) {
  auto request = std::make_shared<Request>();
  CLI::App *command = add(app, action, "show", "Text of a stored value, and what is wrong with it",
                          "HEX", request, show);
  command->add_flag("--strict", request->strict, "Status 1 for a value that is told to be bad");
  command->footer(kShowExample);
}

void add_make(CLI::App &app, Action &action) {
  auto request = std::make_shared<Request>();
  CLI::App *command = add(app, action, "make", "Stored form of a text; status 1 if it does not fit",
                          "TEXT", request, make);
  command->add_flag("--lossy", request->lossy, "Write what is left of a text that does not fit");
  refuse_strict(*command);
  command->footer(kMakeExample);
}

}  // namespace campotipo::tool
