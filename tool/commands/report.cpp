#include <memory>

#include "commands/commands.hpp"
#include "commands/faults.hpp"
#include "files/input.hpp"
#include "files/same_file.hpp"
#include "files/stream.hpp"
#include "findings/validator.hpp"
#include "layout/ready.hpp"
#include "report/page.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Example:\n"
    "  campotipo report bancos.toml bancos.dat -o bancos.html";
constexpr std::size_t kSamples = 12;

struct Request {
  std::string layout;
  std::string file;
  std::string out;
  bool skip_unknown = false;
};

// Gives what the command ends with.
int first_reading(const Request &request, const Layout &layout, Input &input, Validator &validator,
                  Report &report) {
  for (const RecordType &type : layout.types) {
    report.kinds.push_back({&type, 0, {type.fields.begin(), type.fields.end()}, {}, {}});
  }
  Progress progress("report", input.size());
  FaultTeller faults(input.name(), progress, request.skip_unknown);
  RecordStream stream(input, layout);
  RecordBlock block;
  while (stream.read(block)) {
    validator.add(block);
    faults.tell_all(block);
    for (const RecordBlock::Record &record : block.records) {
      KindReport &kind = report.kinds[static_cast<std::size_t>(record.type - layout.types.data())];
      ++kind.records;
      for (FieldStatistics &field : kind.fields) field.add(block.record(record));
      if (kind.samples.size() >= kSamples) continue;
      std::vector<std::string> texts;
      for (const Field &field : record.type->fields) {
        texts.push_back(field_text(field, block.record(record)));
      }
      kind.samples.push_back(std::move(texts));
    }
    report.bytes = block.offset + block.size();
    progress.at(report.bytes, validator.records());
  }
  validator.finish();
  return faults.status();
}

void second_reading(const Layout &layout, Input &input, Report &report) {
  for (KindReport &kind : report.kinds) {
    for (const FieldStatistics &field : kind.fields) kind.histograms.emplace_back(field);
  }
  RecordStream stream(input, layout);
  RecordBlock block;
  while (stream.read(block)) {
    for (const RecordBlock::Record &record : block.records) {
      KindReport &kind = report.kinds[static_cast<std::size_t>(record.type - layout.types.data())];
      for (Histogram &histogram : kind.histograms) histogram.add(block.record(record));
    }
  }
}

int run(const Request &request) {
  refuse_same_file(request.layout, request.out);
  refuse_same_file(request.file, request.out);
  const Layout layout = layout_at_place(request.layout);
  Report report;
  Input input(request.file, Input::Use::kTwice);
  Output output(request.out);
  Validator validator(layout, input.name());
  if (request.skip_unknown) validator.skip_unknown();
  report.layout = &layout;
  report.file = input.name();
  report.validator = &validator;
  const int status = first_reading(request, layout, input, validator, report);
  input.rewind();
  second_reading(layout, input, report);
  output.write(report_page(report));
  output.commit();
  return status;
}

}  // namespace

void add_report(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand(
      "report", "Write one page of HTML: layout, findings, statistics and first records");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file, or the name of a ready layout")
      ->required();
  command->add_option("FILE", request->file, "The file of records: no pipe, it is read twice")
      ->required()
      ->check(CLI::ExistingFile);
  command->add_option("-o,--output", request->out,
                      "Write to this file, which appears when complete");
  command->add_flag("--skip-unknown", request->skip_unknown,
                    "Pass over records of no kind, and count them");
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return run(*request); }; });
}

}  // namespace campotipo::tool
