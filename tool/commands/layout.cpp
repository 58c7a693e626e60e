#include <memory>

#include "commands/commands.hpp"
#include "files/same_file.hpp"
#include "kinds/dates.hpp"
#include "layout/reader.hpp"
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
    "  campotipo layout bancos.toml --svg -o banco.svg";

struct Request {
  std::string layout;
  std::string out;
  std::string record;
  bool header = false;
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
  return text;
}

void draw(const Layout &layout, Output &output) {
  const Colours colours(output.is_terminal());
  for (const RecordType &record : layout.types) {
    output.write_coloured(colours.bold(printable(record.name)) + ": " +
                          std::to_string(record.bytes) + " bytes\n");
    AlignedTable table({{"offset", true}, {"bytes", true}, {"name"}, {"type"}, {"text"}}, output);
    for (const Span &span : spans(record)) {
      const bool own = span.field->params.pattern != nullptr;
      table.add({std::to_string(span.offset), std::to_string(span.bytes), span.name,
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
    throw Failure(layout.file + ": has several records, expected --record NAME with --svg");
  }
  const RecordType *record = wanted.empty() ? layout.types.data() : layout.type_named(wanted);
  if (record == nullptr) throw Failure(layout.file + ": has no record \"" + wanted + "\"");
  return svg(layout, *record);
}

int run(const Request &request) {
  refuse_same_file(request.layout, request.out);
  const Layout layout = read_layout(request.layout);
  Output output(request.out);
  if (request.header) {
    output.write(c_header(layout));
  } else if (request.sql) {
    output.write(sql_tables(layout));
  } else if (request.svg) {
    output.write(pictures(layout, request.record));
  } else {
    draw(layout, output);
  }
  output.commit();
  return kGood;
}

}  // namespace

void add_layout(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("layout", "Draw a record");
  auto request = std::make_shared<Request>();
  command->add_option("FILE", request->layout, "The layout file")->required();
  command->add_option("-o,--output", request->out, "Write to this file");
  CLI::Option *header = command->add_flag("--header", request->header, "A C header");
  CLI::Option *sql = command->add_flag("--sql", request->sql, "A table definition in SQL");
  CLI::Option *svg = command->add_flag("--svg", request->svg, "A picture of the bytes, to scale");
  header->excludes(sql)->excludes(svg);
  sql->excludes(svg);
  command->add_option("--record", request->record, "The record to draw, where there are several")
      ->needs(svg);
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return run(*request); }; });
}

}  // namespace campotipo::tool
