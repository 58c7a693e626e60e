#include <memory>

#include "commands/commands.hpp"
#include "commands/pipeline.hpp"
#include "files/failure.hpp"
#include "files/input.hpp"
#include "files/stream.hpp"
#include "layout/reader.hpp"
#include "rows/buffer.hpp"
#include "rows/program.hpp"
#include "terminal/aligned.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo dump bancos.toml bancos.dat --count 10\n"
    "  campotipo dump bancos.toml bancos.dat --format csv --fields compe,nome -o bancos.csv";

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
  int jobs = 1;
};

struct Block {
  RecordBlock in;
  Buffer out;
};

// A file that does not follow the layout is no use behind that place.
void refuse_faults(const Input &input, const RecordBlock &block) {
  if (!block.faults.empty()) throw Failure(input.name() + ": " + block.faults[0].text());
}

void dump_programs(const Request &request, const Layout &layout, Input &input, Output &output,
                   const std::vector<Program> &programs) {
  RecordStream stream(input, layout, false, request.range);
  Progress progress("dump", request.range.count == RecordStream::Range{}.count ? input.size() : 0);
  std::uint64_t records = 0;
  Pipeline<Block, std::function<bool(Block &)>, std::function<void(Block &)>,
           std::function<void(Block &)>>
      pipeline(
          request.jobs, [&](Block &block) { return stream.fill(block.in); },
          [&](Block &block) {
            block.out.clear();
            for (const RecordBlock::Record &record : block.in.records) {
              const auto kind = static_cast<std::size_t>(record.type - layout.types.data());
              programs[kind].run(block.in.record(record), block.out);
            }
          },
          [&](Block &block) {
            if (!block.out.empty()) output.write(block.out.view());
            records += block.in.records.size();
            progress.at(block.in.offset + block.in.bytes.size(), records);
            refuse_faults(input, block.in);
          });
  pipeline.run();
}

// The cells of a row, as a CSV file would hold them without its quotes.
class TableRows {
 public:
  TableRows(const Layout &layout, const std::vector<std::string> &columns, bool hex, Output &output)
      : layout_(&layout), columns_(&columns), hex_(hex), table_(headings(), output) {}

  void add(const RecordType &type, const unsigned char *record) {
    std::vector<std::string> row;
    if (layout_->several()) row.push_back(type.name);
    for (const std::string &name : *columns_) {
      std::string text;
      std::string bytes;
      for (const Column &column : type.columns) {
        if (column.name == name) fill(type, column, record, text, bytes);
      }
      row.push_back(text);
      if (hex_) row.push_back(bytes);
    }
    table_.add(std::move(row));
  }

  void finish() { table_.finish(); }

 private:
  static void fill(const RecordType &type, const Column &column, const unsigned char *record,
                   std::string &text, std::string &bytes) {
    for (const std::size_t place : column.fields) {
      const Field &field = type.fields[place];
      if (place != column.fields[0]) text += field.join;
      text += field_text(field, record);
      bytes += hex(record + field.offset, field.bytes);
    }
  }

  std::vector<AlignedTable::Heading> headings() const {
    std::vector<AlignedTable::Heading> all;
    if (layout_->several()) all.push_back({kKindColumn, false});
    for (const std::string &name : *columns_) {
      bool right = false;
      for (const RecordType &type : layout_->types) {
        for (const Field &field : type.fields) {
          right = right || (field.column == name && (field.type->traits & kRight) != 0);
        }
      }
      all.push_back({name, right});
      if (hex_) all.push_back({"hex", false});
    }
    return all;
  }

  const Layout *layout_;
  const std::vector<std::string> *columns_;
  bool hex_;
  AlignedTable table_;
};

void dump_table(const Request &request, const Layout &layout, Input &input, Output &output,
                const std::vector<std::string> &columns) {
  TableRows rows(layout, columns, request.hex, output);
  RecordStream stream(input, layout, false, request.range);
  RecordBlock block;
  while (stream.fill(block)) {
    for (const RecordBlock::Record &record : block.records) {
      rows.add(*record.type, block.record(record));
    }
    if (block.faults.empty()) continue;
    rows.finish();
    refuse_faults(input, block);
  }
  rows.finish();
}

int dump(const Request &request) {
  const Layout layout = read_layout(request.layout);
  const auto columns = chosen_columns(layout, request.fields);
  Input input(request.file);
  Output output(request.out);
  if (request.format == "table") {
    dump_table(request, layout, input, output, columns);
  } else if (request.format == "csv") {
    const std::string end = request.lf ? "\n" : "\r\n";
    if (!request.no_header) output.write(csv_header(layout, columns, request.hex, end));
    dump_programs(request, layout, input, output, csv_programs(layout, columns, request.hex, end));
  } else {
    dump_programs(request, layout, input, output, json_programs(layout, columns, request.hex));
  }
  output.commit();
  return kGood;
}

}  // namespace

void add_dump(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("dump", "Write the records of a file as text");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file")->required();
  command->add_option("FILE", request->file, "The file of records; standard input without it");
  command->add_option("-o,--output", request->out, "Write to this file, which appears when whole");
  command->add_option("--format", request->format, "table, csv (RFC 4180) or ndjson")
      ->check(CLI::IsMember({"table", "csv", "ndjson"}))
      ->capture_default_str();
  command->add_option("--fields", request->fields, "Only these fields, groups or columns")
      ->delimiter(',')
      ->allow_extra_args(false);
  command->add_option("--from", request->range.from, "Number of the first record, from 1")
      ->check(CLI::PositiveNumber);
  command->add_option("--count", request->range.count, "How many records");
  command->add_flag("--hex", request->hex, "Bytes beside the value");
  command->add_flag("--lf", request->lf, "CSV rows end in a line feed alone");
  command->add_flag("--no-header", request->no_header, "No row of names in CSV");
  command->add_option("--jobs", request->jobs, "Processors to use; the order stays")
      ->check(CLI::Range(1, 256));
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return dump(*request); }; });
}

}  // namespace campotipo::tool
