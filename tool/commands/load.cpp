#include <algorithm>
#include <memory>
#include <optional>

#include "columns/plan.hpp"
#include "commands/commands.hpp"
#include "commands/numbers.hpp"
#include "commands/pipeline.hpp"
#include "files/input.hpp"
#include "files/same_file.hpp"
#include "layout/ready.hpp"
#include "rows/filler.hpp"
#include "rows/loader.hpp"
#include "rules/field_rules.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"
#include "terminal/spool.hpp"
#include "terminal/tell.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo load bancos.toml bancos.csv -o bancos.dat\n"
    "  campotipo load bancos.toml bancos.csv --lossy --ignore obs -o bancos.dat";

struct Request {
  std::string layout;
  std::string file;
  std::string out;
  std::string like;
  std::string kind;
  std::vector<std::string> ignored;
  bool lossy = false;
  bool all = false;
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

// Where the records go: nothing of them is seen before the whole file is loaded, unless what they
// lose is taken.
class Records {
 public:
  // at_once: they may go to a pipe while they are made.
  Records(Output &output, bool at_once) : output_(&output) {
    if (!at_once && !output.is_held()) spool_.emplace();
  }

  void write(std::string_view bytes) {
    if (spool_) {
      spool_->write(bytes);
    } else {
      output_->write(bytes);
    }
  }

  // Over what was written.
  void patch(std::uint64_t place, std::string_view bytes) {
    if (spool_) {
      spool_->patch(place, bytes);
    } else {
      output_->patch(place, bytes);
    }
  }

  void commit() {
    if (spool_) spool_->copy_to(*output_);
    output_->commit();
  }

 private:
  Output *output_;
  std::optional<Spool> spool_;
};

class Load {
 public:
  Load(const Request &request, const Layout &layout, Input &input, Output &output)
      : request_(&request),
        layout_(&layout),
        name_(input.name()),
        records_(output, request.lossy && !Filler::patches(layout)),
        filler_(layout),
        stream_(input),
        progress_("load", input.size()) {}

  int run() {
    std::vector<std::string> header;
    if (!stream_.header(header)) {
      throw Failure(name_ + ": is empty, expected a row with the names of the columns");
    }
    lines_ = stream_.header_lines();
    const RecordType *kind = request_->kind.empty() ? nullptr : &kind_for(*layout_, request_->kind);
    const Loader loader(*layout_, header, request_->ignored, name_, kind);
    tell_missing(loader.missing());
    const Margins around = margins(*request_, *layout_);
    records_.write(around.header);
    written_ = around.header.size();
    const std::size_t places = request_->all ? FindingCounts::kEveryPlace : FindingCounts::kPlaces;
    Pipeline<LoadedBlock>(
        request_->jobs, [&](LoadedBlock &block) { return stream_.read(block.csv); },
        [&](LoadedBlock &block) { loader.load(block, places); },
        [&](LoadedBlock &block) { drain(block); })
        .run();
    finish(around.trailer);
    return kGood;
  }

 private:
  // Whether all fields of the column get their values without it.
  bool follows(const std::string &column) const {
    for (const RecordType &type : layout_->types) {
      for (const Field &field : type.fields) {
        if (field.column == column && !is_filled(type, field)) return false;
      }
    }
    return true;
  }

  // A bank's layout has many columns that a table need not have.
  void tell_missing(const std::vector<std::string> &columns) const {
    std::string names;
    std::size_t told = 0;
    for (const std::string &column : columns) {
      if (follows(column)) continue;
      if (++told <= FindingCounts::kPlaces) names += (told > 1 ? ", \"" : "\"") + column + "\"";
    }
    if (told == 1) tell(name_ + ": has no column " + names + ": the field stays empty");
    if (told <= 1) return;
    const std::size_t more = told - std::min(told, FindingCounts::kPlaces);
    tell(name_ + ": has no columns " + names +
         (more == 0 ? "" : " and " + std::to_string(more) + " more") + ": the fields stay empty");
  }

  std::string where(std::uint64_t line, std::uint64_t record) const {
    return name_ + ":" + std::to_string(line) + ": record " + std::to_string(record) + ": ";
  }

  void tell_loss(const FindingCounts::Line &loss, const Location &place) {
    progress_.clear();
    tell(where(place.line, place.record) + "field " + loss.field + ": \"" + shortened(place.value) +
         "\" " + loss.what);
  }

  // Every loss of a block, in the order of its lines.
  void tell_all(const FindingCounts &lost) {
    std::vector<std::pair<const FindingCounts::Line *, const Location *>> all;
    for (const FindingCounts::Line &loss : lost.lines()) {
      for (const Location &place : loss.entry.places) all.emplace_back(&loss, &place);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const auto &a, const auto &b) { return a.second->line < b.second->line; });
    for (const auto &[loss, place] : all) tell_loss(*loss, *place);
  }

  void drain(LoadedBlock &block) {
    FindingCounts lost(request_->all ? FindingCounts::kEveryPlace : FindingCounts::kPlaces);
    lost.merge(block.lost, rows_, lines_);
    if (request_->all) tell_all(lost);
    lost_.merge(lost, 0, 0);
    // What will be refused need not be written.
    if (request_->lossy || lost_.empty()) {
      filler_.fill(block, written_);
      records_.write(block.records.view());
      written_ += block.records.view().size();
    }
    rows_ += block.rows;
    if (!block.fault.empty()) {
      progress_.clear();
      report();
      throw Failure(where(lines_ + block.fault_line, rows_ + 1) + block.fault);
    }
    lines_ += block.lines;
    bytes_ += block.csv.size;
    progress_.at(bytes_, rows_);
  }

  // The first losses of each field, where not every one has been told.
  void report() {
    if (request_->all) return;
    for (const FindingCounts::Line &loss : lost_.lines()) {
      for (const Location &place : loss.entry.places) tell_loss(loss, place);
      const std::uint64_t more = loss.entry.count - loss.entry.places.size();
      if (more == 0) continue;
      tell(name_ + ": field " + loss.field + ": " + std::to_string(more) + " more, " + loss.what +
           " (--all tells each)");
    }
  }

  void finish(const std::string &trailer) {
    progress_.clear();
    report();
    const std::string values =
        std::to_string(lost_.total()) + (lost_.total() == 1 ? " value" : " values") + " incomplete";
    if (!lost_.empty() && !request_->lossy) {
      throw Failure(name_ + ": " + values + ", nothing is written (--lossy stores what is left)",
                    kFound);
    }
    for (const Filler::Patch &patch : filler_.finish()) records_.patch(patch.place, patch.bytes);
    records_.write(trailer);
    records_.commit();
    if (lost_.empty()) return;
    tell(name_ + ": " + std::to_string(rows_) + " records stored, " + values);
  }

  const Request *request_;
  const Layout *layout_;
  std::string name_;
  Records records_;
  Filler filler_;
  std::uint64_t written_ = 0;
  CsvStream stream_;
  Progress progress_;
  FindingCounts lost_;
  std::uint64_t rows_ = 0;
  std::uint64_t lines_ = 0;
  std::uint64_t bytes_ = 0;
};

int load(const Request &request) {
  refuse_same_file(request.layout, request.out);
  refuse_same_file(request.file, request.out);
  if (!request.like.empty()) refuse_same_file(request.like, request.out);
  const Layout layout = layout_at_place(request.layout);
  Input input(request.file);
  Output output(request.out);
  if (output.is_terminal()) throw Failure("standard output is a terminal, expected -o FILE");
  return Load(request, layout, input, output).run();
}

}  // namespace

void refuse_strict(CLI::App &command) {
  const auto refuse = [](std::int64_t) {
    throw Failure(
        "--strict is gone: a value that does not fit whole is refused, unless --lossy is "
        "given");
  };
  command.add_flag_function("--strict", refuse)->group("");
}

void add_load(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand("load", "Write records from CSV");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file, or the name of a ready layout")
      ->required();
  command->add_option("CSV", request->file, "The CSV file; standard input without it");
  command->add_option("-o,--output", request->out, "Write to this file, which appears when whole");
  command->add_flag("--lossy", request->lossy,
                    "Store values that do not fit whole as far as they go, and tell how many");
  command->add_flag("--all", request->all, "Tell every such value, not the first of each kind");
  refuse_strict(*command);
  command->add_option("--ignore", request->ignored, "Columns of the CSV file to leave out")
      ->delimiter(',')
      ->allow_extra_args(false);
  command->add_option("--kind", request->kind, "The rows are of this kind, and do not tell it");
  command->add_option("--like", request->like, "Copy header and trailer from this file")
      ->check(CLI::ExistingFile);
  command->add_option("--jobs", request->jobs, "Processors to use; the order stays")
      ->transform(whole_number(1, 256));
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return load(*request); }; });
}

}  // namespace campotipo::tool
