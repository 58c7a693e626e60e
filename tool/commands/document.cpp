#include <algorithm>
#include <memory>

#include "commands/commands.hpp"
#include "kinds/checks.hpp"
#include "terminal/aligned.hpp"
#include "terminal/failure.hpp"
#include "terminal/output.hpp"
#include "text/ascii.hpp"

namespace campotipo::tool {

using namespace campotipo::records;

namespace {

constexpr const char *kExample =
    "Examples:\n"
    "  campotipo document 12.ABC.345/01DE-35\n"
    "  campotipo document 12345678909";

struct Request {
  std::string text;
  bool strict = false;
};

int document(const Request &request) {
  const std::string text = without_punctuation(request.text);
  Output output("");
  AlignedTable table({{"document"}, {"digits"}, {"usual form"}, {"what it is"}}, output);
  bool any = false;
  bool good = false;
  for (const NamedCheck &check : named_checks()) {
    if (!can_be(check, text)) continue;
    std::string copy = text;
    const bool fits = check.holds(copy.data(), 0) != 0;
    table.add({check.name, fits ? "hold" : "fail", usual_form(check, text), check.title});
    any = true;
    good = good || fits;
  }
  if (any) table.finish();
  output.commit();
  if (!any) tell("\"" + request.text + "\": no document has its length and characters");
  return good || !request.strict ? kGood : kFound;
}

}  // namespace

void add_document(CLI::App &app, Action &action) {
  CLI::App *command = app.add_subcommand(
      "document", "Tell which documents a text can be, and whether its check digits hold");
  auto request = std::make_shared<Request>();
  command->add_option("TEXT", request->text, "The text, with any punctuation")->required();
  command->add_flag("--strict", request->strict, "Status 1 unless the digits of one hold");
  command->footer(kExample);
  command->callback([&action, request] { action = [request] { return document(*request); }; });
}

}  // namespace campotipo::tool
