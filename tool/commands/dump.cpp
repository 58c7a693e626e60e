#include <memory>
#include <set>

#include "columns/plan.hpp"
#include "commands/commands.hpp"
#include "commands/faults.hpp"
#include "commands/numbers.hpp"
#include "commands/pipeline.hpp"
#include "files/input.hpp"
#include "files/same_file.hpp"
#include "files/stream.hpp"
#include "layout/ready.hpp"
#include "rows/buffer.hpp"
#include "rows/cells.hpp"
#include "rows/row_writer.hpp"
#include "terminal/aligned.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo dump bancos.toml bancos.dat --count 10\n"
    "  campotipo dump bancos.toml bancos.dat --format csv --fields compe,nome -o bancos.csv\n"
    "  campotipo dump cnab240/cobranca-retorno retorno.ret --kind segmento_t";

struct Request {
  std::string layout;
  std::string file;
  std::string out;
  std::string format = "table";
  std::vector<std::string> fields;
  RecordStream::Range range;
  bool hex = false;
  bool lf = false;
  bool no_header = false;
  std::string kind;
  bool skip_unknown = false;
  int jobs = 1;
};

struct Block {
  RecordBlock in;
  Buffer out;
};

// What is shown: of one kind where `kind` is not null.
struct Shown {
  const Layout &layout;
  const RecordType *kind;
  std::vector<std::string> columns;
};

int dump_programs(const Request &request, const Shown &shown, Input &input, Output &output,
                  const std::vector<RowWriter> &writers) {
  const Layout &layout = shown.layout;
  RecordStream stream(input, layout, request.range);
  Progress progress("dump", request.range.count == RecordStream::Range{}.count ? input.size() : 0);
  FaultTeller faults(input.name(), progress, request.skip_unknown);
  std::uint64_t records = 0;
  const auto write_rows = [&](Block &block) {
    block.out.clear();
    for (const RecordBlock::Record &record : block.in.records) {
      if (shown.kind != nullptr && record.type != shown.kind) continue;
      const auto kind = static_cast<std::size_t>(record.type - layout.types.data());
      writers[kind].run(block.in.record(record), block.out);
    }
  };
  const auto drain = [&](Block &block) {
    if (!block.out.empty()) output.write(block.out.view());
    records += block.in.records.size();
    progress.at(block.in.offset + block.in.size(), records);
    faults.tell_all(block.in);
  };
  Pipeline<Block>(
      request.jobs, [&](Block &block) { return stream.read(block.in); }, write_rows, drain)
      .run();
  output.commit();
  return faults.status();
}

std::vector<AlignedTable::Heading> headings(const Shown &shown, bool hex) {
  std::set<std::string> right;
  for (const RecordType &type : shown.layout.types) {
    if (shown.kind != nullptr && shown.kind != &type) continue;
    for (const Field &field : type.fields) {
      if ((field.type->traits & kRight) != 0) right.insert(field.column);
    }
  }
  std::vector<AlignedTable::Heading> all;
  if (shown.layout.several() && shown.kind == nullptr) all.push_back({kKindColumn, false});
  for (const std::string &name : shown.columns) {
    all.push_back({name, right.contains(name)});
    if (hex) all.push_back({"hex", false});
  }
  return all;
}

int dump_table(const Request &request, const Shown &shown, Input &input, Output &output) {
  AlignedTable table(headings(shown, request.hex), output);
  Cells cells(shown.layout, shown.columns, request.hex, shown.kind);
  Progress progress("dump", 0);
  FaultTeller faults(input.name(), progress, request.skip_unknown);
  RecordStream stream(input, shown.layout, request.range);
  RecordBlock block;
  while (stream.read(block)) {
    for (const RecordBlock::Record &record : block.records) {
      if (shown.kind != nullptr && record.type != shown.kind) continue;
      table.add(cells.of(*record.type, block.record(record)));
    }
    faults.tell_all(block);
  }
  table.finish();
  output.commit();
  return faults.status();
}

int dump(const Request &request) {
  refuse_same_file(request.layout, request.out);
  refuse_same_file(request.file, request.out);
  const Layout layout = layout_at_place(request.layout);
  const RecordType *kind = request.kind.empty() ? nullptr : &kind_for(layout, request.kind);
  const Shown shown{layout, kind, chosen_columns(layout, request.fields, kind)};
  Input input(request.file);
  Output output(request.out);
  if (request.format == "table") return dump_table(request, shown, input, output);
  if (request.format == "ndjson") {
    return dump_programs(request, shown, input, output,
                         json_writers(layout, shown.columns, request.hex, kind));
  }
  const std::string end = request.lf ? "\n" : "\r\n";
  if (!request.no_header) output.write(csv_header(layout, shown.columns, request.hex, end, kind));
  return dump_programs(request, shown, input, output,
                       csv_writers(layout, shown.columns, request.hex, end, kind));
}

}  // namespace

void add_dump(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("dump", "Write the records of a file as text");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file, or the name of a ready layout")
      ->required();
  command->add_option("FILE", request->file, "The file of records; standard input without it");
  command->add_option("-o,--output", request->out,
                      "Write to this file, which appears when complete");
  command->add_option("--format", request->format, "table, csv (RFC 4180) or ndjson")
      ->check(CLI::IsMember({"table", "csv", "ndjson"}))
      ->capture_default_str();
  command->add_option("--fields", request->fields, "Only these fields, groups or columns")
      ->delimiter(',')
      ->allow_extra_args(false);
  command->add_option("--from", request->range.from, "Number of the first record, from 1")
      ->transform(whole_number(1));
  command->add_option("--count", request->range.count, "How many records")
      ->transform(whole_number(0));
  command->add_option("--kind", request->kind, "Only the records of this kind, as one table");
  command->add_flag("--skip-unknown", request->skip_unknown,
                    "Pass over records of no kind, and count them");
  command->add_flag("--hex", request->hex, "Bytes beside the value");
  command->add_flag("--lf", request->lf, "CSV rows end in a line feed alone");
  command->add_flag("--no-header", request->no_header, "No row of names in CSV");
  command->add_option("--jobs", request->jobs, "Processors to use; the order stays")
      ->transform(whole_number(1, 256));
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return dump(*request); }; });
}

}  // namespace campotipo::tool
