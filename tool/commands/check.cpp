#include <memory>

#include "commands/commands.hpp"
#include "files/failure.hpp"
#include "files/input.hpp"
#include "findings/examiner.hpp"
#include "layout/reader.hpp"
#include "terminal/aligned.hpp"
#include "terminal/output.hpp"
#include "terminal/progress.hpp"

namespace campotipo::tool {

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo check bancos.toml bancos.dat\n"
    "  campotipo check bancos.toml bancos.dat --json | jq .findings";

struct Request {
  std::string layout;
  std::string file;
  bool json = false;
};

std::string where(const Place &place) {
  std::string text = place.record == 0 ? "" : "record " + std::to_string(place.record) + ", ";
  text += "byte " + std::to_string(place.offset);
  return place.value.empty() ? text : text + ": " + place.value;
}

void write_findings(const Examiner &examiner, Output &output) {
  const Colours colours(output.is_terminal());
  if (!examiner.findings().empty()) {
    AlignedTable table({{"field"}, {"what is wrong"}, {"values", true}, {"first places"}}, output);
    for (const Tally::Line &line : examiner.findings().lines()) {
      const auto &places = line.entry.places;
      table.add({line.field, line.what, std::to_string(line.entry.count), where(places[0])});
      for (std::size_t i = 1; i < places.size(); ++i) table.add({"", "", "", where(places[i])});
    }
    table.finish();
    output.write("\n");
  }
  const std::string summary = examiner.summary();
  output.write((examiner.findings().empty() ? colours.green(summary) : colours.red(summary)) +
               "\n");
}

int check(const Request &request) {
  const Layout layout = read_layout(request.layout);
  Input input(request.file);
  Output output("");
  Examiner examiner(layout, input.name());
  {
    Progress progress("check", input.size());
    RecordStream stream(input, layout, true);
    RecordBlock block;
    while (stream.fill(block)) {
      examiner.add(block);
      progress.at(block.offset + block.bytes.size(), examiner.records());
    }
  }
  if (request.json) {
    output.write(examiner.json());
  } else {
    write_findings(examiner, output);
  }
  output.commit();
  return examiner.findings().empty() ? kGood : kFound;
}

}  // namespace

void add_check(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand(
      "check", "Report the values that are not well formed; status 1 if there are any");
  auto request = std::make_shared<Request>();
  command->add_option("LAYOUT", request->layout, "The layout file")->required();
  command->add_option("FILE", request->file, "The file of records; standard input without it");
  command->add_flag("--json", request->json, "One object of JSON");
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return check(*request); }; });
}

}  // namespace campotipo::tool
