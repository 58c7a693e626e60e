#include <memory>

#include "columns/plan.hpp"
#include "commands/commands.hpp"
#include "files/same_file.hpp"
#include "kinds/dates.hpp"
#include "layout/ready.hpp"
#include "pictures/drawings.hpp"
#include "terminal/aligned.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo layout bancos.toml\n"
    "  campotipo layout bancos.toml --header -o banco.h\n"
    "  campotipo layout bancos.toml --svg -o banco.svg\n"
    "  campotipo layout cnab240/cobranca-retorno --svg --kind segmento_t -o t.svg\n"
    "  campotipo layout cnab240/cobranca-retorno --toml > mine.toml";

struct Request {
  std::string layout;
  std::string out;
  std::string kind;
  bool header = false;
  bool toml = false;
  bool sql = false;
  bool svg = false;
};

std::string about(const Layout &layout) {
  std::string text;
  const auto add = [&](const Margin &margin, const char *where) {
    if (margin.bytes != 0) text += std::to_string(margin.bytes) + " bytes " + where + "\n";
  };
  add(layout.header, "in front of the records");
  add(layout.trailer, "behind the records");
  if (layout.prefix.bytes != 0) {
    text +=
        std::to_string(layout.prefix.bytes) + " bytes with its length in front of each record\n";
  }
  if (layout.lines()) {
    text += std::string("lines that end in ") +
            (layout.line_end == LineEnd::kCrLf ? "CR LF\n" : "LF\n");
  }
  return text;
}

// By which values a kind is told.
std::string told_by(const RecordType &type) {
  std::string text;
  for (const Condition &condition : type.when) {
    const Field &field = type.fields[condition.field];
    std::string values;
    for (const std::string &stored : condition.stored) {
      std::vector<unsigned char> record(type.bytes);
      std::copy(stored.begin(), stored.end(),
                record.begin() + static_cast<std::ptrdiff_t>(field.offset));
      values += (values.empty() ? "" : " or ") + field_text(field, record.data());
    }
    text += (text.empty() ? ", " : " and ") + field.name + " = " + values;
  }
  return text;
}

void draw(const Layout &layout, const std::string &kind, Output &output) {
  const Colours colours(output.is_terminal());
  const RecordType *only = kind.empty() ? nullptr : &kind_for(layout, kind);
  for (const RecordType &record : layout.types) {
    if (only != nullptr && only != &record) continue;
    output.write_coloured(colours.bold(printable(record.name)) + ": " +
                          std::to_string(record.bytes) + " bytes" + printable(told_by(record)) +
                          "\n");
    // Manuals of text files count places from 1.
    const std::size_t first = layout.lines() ? 1 : 0;
    AlignedTable table(
        {{first == 1 ? "at" : "offset", true}, {"bytes", true}, {"name"}, {"type"}, {"text"}},
        output);
    for (const Span &span : spans(record)) {
      const bool own = span.field->params.pattern != nullptr;
      table.add({std::to_string(first + span.offset), std::to_string(span.bytes), span.name,
                 type_text(span), own ? span.field->params.pattern->text : span.field->type->form});
    }
    table.finish();
    output.write("\n");
  }
  output.write(about(layout));
}

// The records that a picture is wanted of, one picture each.
std::string pictures(const Layout &layout, const std::string &wanted) {
  if (wanted.empty() && layout.several()) {
    throw Failure(layout.file + ": has several kinds of record, expected --kind NAME with --svg");
  }
  return svg(layout, kind_for(layout, wanted));
}

void list(Output &output) {
  AlignedTable table({{"name"}, {"bytes", true}, {"kinds", true}, {"lines"}}, output);
  for (std::size_t at = 0; const char *name = ready_layout_name(at); ++at) {
    const Layout layout = layout_at_place(name);
    const std::string bytes = std::to_string(layout.most_bytes());
    table.add({name, layout.one_length() ? bytes : "up to " + bytes,
               std::to_string(layout.types.size()),
               !layout.lines()                     ? "no"
               : layout.line_end == LineEnd::kCrLf ? "CR LF"
                                                   : "LF"});
  }
  table.finish();
}

// The text of a ready layout, to be changed by a user.
std::string text_of(const std::string &name) {
  const char *text = ready_layout(name);
  if (text != nullptr) return text;
  throw Failure(name + ": no ready layout has this name (campotipo layout lists them)");
}

int run(const Request &request) {
  if (request.layout.empty() && (request.header || request.sql || request.svg || request.toml)) {
    throw Failure("expected a layout");
  }
  if (request.layout.empty() || request.toml) {
    Output output(request.out);
    if (request.layout.empty()) {
      list(output);
    } else {
      output.write(text_of(request.layout));
    }
    output.commit();
    return kGood;
  }
  refuse_same_file(request.layout, request.out);
  const Layout layout = layout_at_place(request.layout);
  Output output(request.out);
  if (request.header) {
    output.write(c_header(layout));
  } else if (request.sql) {
    output.write(sql_tables(layout));
  } else if (request.svg) {
    output.write(pictures(layout, request.kind));
  } else {
    draw(layout, request.kind, output);
  }
  output.commit();
  return kGood;
}

}  // namespace

void add_layout(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("layout", "Draw a layout, or list those that are ready");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout,
                      "The layout file, or the name of a ready layout; without it they are listed");
  command->add_option("-o,--output", request->out, "Write to this file");
  CLI::Option *header = command->add_flag("--header", request->header, "A C header");
  CLI::Option *sql = command->add_flag("--sql", request->sql, "A table definition in SQL");
  CLI::Option *svg = command->add_flag("--svg", request->svg, "A picture of the bytes, to scale");
  CLI::Option *toml = command->add_flag("--toml", request->toml, "The text of a ready layout");
  header->excludes(sql)->excludes(svg)->excludes(toml);
  sql->excludes(svg)->excludes(toml);
  svg->excludes(toml);
  command->add_option("--kind", request->kind, "The kind to draw, where there are several")
      ->excludes(header)
      ->excludes(sql)
      ->excludes(toml);
  const auto refuse = [](const std::string &) { throw Failure("--record is now called --kind"); };
  command->add_option_function<std::string>("--record", refuse)->group("");
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return run(*request); }; });
}

}  // namespace campotipo::tool
