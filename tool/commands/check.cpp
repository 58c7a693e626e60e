#include <memory>

#include "commands/commands.hpp"
#include "commands/numbers.hpp"
#include "commands/pipeline.hpp"
#include "files/input.hpp"
#include "findings/validator.hpp"
#include "layout/ready.hpp"
#include "terminal/aligned.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"
#include "text/quote.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo check bancos.toml bancos.dat\n"
    "  campotipo check bancos.toml bancos.dat --all\n"
    "  campotipo check bancos.toml bancos.dat --json | jq .findings";

struct Request {
  std::string layout;
  std::string file;
  bool json = false;
  bool all = false;
  bool skip_unknown = false;
  int jobs = 1;
};

struct Block {
  RecordBlock in;
  std::vector<Finding> findings;
};

std::string where(const Location &place) {
  std::string text = place.record == 0 ? "" : "record " + std::to_string(place.record) + ", ";
  text += "byte " + std::to_string(place.offset);
  return place.value.empty() ? text : text + ": " + place.value;
}

void write_summary(const Validator &validator, Output &output) {
  const Colours colours(output.is_terminal());
  const std::string summary = printable(validator.summary());
  output.write_coloured(
      (validator.findings().empty() ? colours.green(summary) : colours.red(summary)) + "\n");
}

// Field by field, with the first places of each.
void write_findings(const Validator &validator, Output &output) {
  if (validator.findings().empty()) return;
  AlignedTable table({{"field"}, {"what is wrong"}, {"values", true}, {"first places"}}, output);
  for (const FindingCounts::Line &line : validator.findings().lines()) {
    const auto &places = line.entry.places;
    table.add({line.field, line.what, std::to_string(line.entry.count), where(places[0])});
    for (std::size_t i = 1; i < places.size(); ++i) table.add({"", "", "", where(places[i])});
    const std::uint64_t more = line.entry.count - places.size();
    if (more != 0) table.add({"", "", "", std::to_string(more) + " more (--all shows each)"});
  }
  table.finish();
  output.write("\n");
}

// Values are looked at one by one, in any thread; what follows from others, in their order.
void examine(const Request &request, Input &input, const Layout &layout, Validator &validator) {
  Progress progress("check", input.size());
  RecordStream stream(input, layout);
  Pipeline<Block>(
      request.jobs, [&](Block &block) { return stream.read(block.in); },
      [&](Block &block) { block.findings = validator.examine(block.in); },
      [&](Block &block) {
        validator.add(block.in, std::move(block.findings));
        progress.at(block.in.offset + block.in.size(), validator.records());
      })
      .run();
  validator.finish();
}

// Every place, as it is found.
void check_all(const Request &request, Input &input, const Layout &layout, Output &output,
               Validator &validator) {
  if (request.json) {
    validator.each(
        [&](const Finding &finding) { output.write(finding.json(layout, input.name())); });
    return examine(request, input, layout, validator);
  }
  AlignedTable table({{"record", true}, {"byte", true}, {"field"}, {"what is wrong"}, {"value"}},
                     output);
  validator.each([&](const Finding &finding) {
    const Location &place = finding.place;
    table.add({place.record == 0 ? "" : std::to_string(place.record), std::to_string(place.offset),
               finding.label(layout), finding.text, place.value});
  });
  examine(request, input, layout, validator);
  if (!validator.findings().empty()) {
    table.finish();
    output.write("\n");
  }
  write_summary(validator, output);
}

int check(const Request &request) {
  const Layout layout = layout_at_place(request.layout);
  Input input(request.file);
  Output output("");
  Validator validator(layout, input.name());
  if (request.skip_unknown) validator.skip_unknown();
  if (request.all) {
    check_all(request, input, layout, output, validator);
  } else {
    examine(request, input, layout, validator);
    if (request.json) {
      output.write(validator.json());
    } else {
      write_findings(validator, output);
      write_summary(validator, output);
    }
  }
  output.commit();
  return validator.findings().empty() ? kGood : kFound;
}

}  // namespace

void add_check(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand(
      "check", "Report the invalid values and incomplete records; status 1 if there are any");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file, or the name of a ready layout")
      ->required();
  command->add_option("FILE", request->file, "The file of records; standard input without it");
  command->add_flag("--json", request->json, "One object of JSON; with --all one for each place");
  command->add_flag("--skip-unknown", request->skip_unknown,
                    "Pass over records of no kind, and count them");
  command->add_flag("--all", request->all, "Every place, not the first ones of each finding");
  command->add_option("--jobs", request->jobs, "Processors to use; the order stays")
      ->transform(whole_number(1, 256));
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return check(*request); }; });
}

}  // namespace campotipo::tool
