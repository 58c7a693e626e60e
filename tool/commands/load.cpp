#include <memory>

#include "commands/commands.hpp"
#include "commands/numbers.hpp"
#include "commands/pipeline.hpp"
#include "files/failure.hpp"
#include "files/input.hpp"
#include "layout/reader.hpp"
#include "rows/loader.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo load bancos.toml bancos.csv -o bancos.dat\n"
    "  campotipo load bancos.toml bancos.csv --strict --ignore obs -o bancos.dat";

struct Request {
  std::string layout;
  std::string file;
  std::string out;
  std::string like;
  std::vector<std::string> ignored;
  bool strict = false;
  int jobs = 1;
};

// The bytes in front of and behind the records: what the layout tells, else those of another file,
// else zeros.
struct Margins {
  std::string header;
  std::string trailer;
};

Margins margins(const Request &request, const Layout &layout) {
  Margins bytes{layout.header.content, layout.trailer.content};
  bytes.header.resize(layout.header.bytes);
  bytes.trailer.resize(layout.trailer.bytes);
  const bool open = layout.header.content.size() < layout.header.bytes ||
                    layout.trailer.content.size() < layout.trailer.bytes;
  if (request.like.empty()) {
    if (open) tell("header and trailer are written as zeros (--like FILE copies them)");
    return bytes;
  }
  Input like(request.like);
  const std::size_t both = layout.header.bytes + layout.trailer.bytes;
  if (like.size() < both) {
    throw Failure(like.name() + ": expected a file with a header and trailer of " +
                  std::to_string(both) + " bytes");
  }
  like.read(bytes.header.data(), bytes.header.size());
  like.skip(like.size() - both);
  like.read(bytes.trailer.data(), bytes.trailer.size());
  return bytes;
}

class Load {
 public:
  Load(const Request &request, const Layout &layout, Input &input, Output &output)
      : request_(&request),
        layout_(&layout),
        input_(&input),
        output_(&output),
        stream_(input),
        progress_("load", input.size()) {}

  int run() {
    std::vector<std::string> header;
    if (!stream_.header(header)) {
      throw Failure(input_->name() + ": is empty, expected a row with the names of the columns");
    }
    const Loader loader(*layout_, header, request_->ignored, input_->name());
    for (const std::string &column : loader.missing()) {
      tell(input_->name() + ": has no column \"" + column + "\": the field stays empty");
    }
    const Margins around = margins(*request_, *layout_);
    output_->write(around.header);
    Pipeline<LoadedBlock>(
        request_->jobs, [&](LoadedBlock &block) { return stream_.fill(block.csv); },
        [&](LoadedBlock &block) { loader.load(block, request_->strict); },
        [&](LoadedBlock &block) { drain(block); })
        .run();
    output_->write(around.trailer);
    output_->commit();
    progress_.clear();
    report();
    return kGood;
  }

 private:
  std::string where(std::uint64_t record, std::uint64_t offset) const {
    return input_->name() + ": record " + std::to_string(record) + ", byte " +
           std::to_string(offset) + ": ";
  }

  std::string message(const std::string &field, const std::string &what, const Place &place) const {
    return where(place.record, place.offset) + "field " + field + ": \"" + shortened(place.value) +
           "\" " + what;
  }

  void drain(LoadedBlock &block) {
    output_->write(block.records.view());
    lost_.merge(block.lost, records_);
    if (block.stopped) {
      const Tally::Line &line = block.lost.lines()[0];
      Place place = line.entry.places[0];
      place.record += records_;
      throw Failure(message(line.field, line.what, place) + "; nothing is stored", kFound);
    }
    records_ += block.rows;
    if (!block.fault.empty()) throw Failure(where(records_ + 1, block.fault_at) + block.fault);
    progress_.at(block.csv.offset + block.csv.size, records_);
  }

  void report() const {
    for (const Tally::Line &line : lost_.lines()) {
      for (const Place &place : line.entry.places) tell(message(line.field, line.what, place));
      const std::uint64_t more = line.entry.count - line.entry.places.size();
      if (more != 0) {
        tell(input_->name() + ": field " + line.field + ": " + std::to_string(more) +
             " more values of which: " + line.what);
      }
    }
    if (lost_.empty()) return;
    tell(input_->name() + ": " + std::to_string(records_) + " records stored, " +
         std::to_string(lost_.total()) + " values not whole");
  }

  const Request *request_;
  const Layout *layout_;
  Input *input_;
  Output *output_;
  CsvStream stream_;
  Progress progress_;
  Tally lost_;
  std::uint64_t records_ = 0;
};

int load(const Request &request) {
  const Layout layout = read_layout(request.layout);
  Input input(request.file);
  Output output(request.out);
  if (output.is_terminal()) throw Failure("standard output is a terminal, expected -o FILE");
  return Load(request, layout, input, output).run();
}

}  // namespace

void add_load(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("load", "Write records from CSV");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file")->required();
  command->add_option("CSV", request->file, "The CSV file; standard input without it");
  command->add_option("-o,--output", request->out, "Write to this file, which appears when whole");
  command->add_flag("--strict", request->strict,
                    "Stop at the first value that cannot be stored whole, with status 1");
  command->add_option("--ignore", request->ignored, "Columns of the CSV file to leave out")
      ->delimiter(',')
      ->allow_extra_args(false);
  command->add_option("--like", request->like, "Copy header and trailer from this file")
      ->check(CLI::ExistingFile);
  command->add_option("--jobs", request->jobs, "Processors to use; the order stays")
      ->transform(whole_number(1, 256));
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return load(*request); }; });
}

}  // namespace campotipo::tool
